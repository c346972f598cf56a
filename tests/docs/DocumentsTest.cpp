// The documents show what the command prints, and lead somewhere.
//
// A block of the form ```console is run: behind "$ " stand command lines, which
// go on behind a backslash and, with "> " ahead, up to the EOF of a "<<'EOF'".
// Below each stands what it prints. There, a line "..." stands for any lines,
// and at the end of a line for more of it. All blocks of a document share one
// directory, which holds examples/.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <map>
#include <ostream>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "HelpTesting.h"
#include "ShellTesting.h"

namespace fs = std::filesystem;

namespace {

using Lines = std::vector<std::string>;

const fs::path kSources = SCHEMA_SOURCE_DIR;

struct Example {
  std::string command;
  Lines shown;
};

// How many commands a document shows at least; the others show none. Without
// this, one in which no command is recognised any more would pass.
const std::map<std::string, std::size_t> kLeastExamples = {
    {"README.md", 8},
    {"examples/README.md", 2},
    {"docs/file-format.md", 10},
    {"docs/migration.md", 19},
    {"docs/trace-ids.md", 2},
};

// The READMEs, and the documents in docs/.
std::vector<std::string> documents() {
  std::vector<std::string> names = {"README.md", "CHANGELOG.md",
                                    "CONTRIBUTING.md", "examples/README.md",
                                    "examples/embed/README.md"};
  for (const auto &entry : fs::directory_iterator(kSources / "docs")) {
    if (entry.path().extension() == ".md") {
      names.push_back("docs/" + entry.path().filename().string());
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<Example> examplesIn(const std::string &document) {
  std::vector<Example> examples;
  bool isInBlock = false;
  bool isCommand = false;
  bool isHere = false;  // in a text for the command
  for (const std::string &line : linesOf(readText(kSources / document))) {
    if (line.rfind("```", 0) == 0) {
      isInBlock = line == "```console";
    } else if (isInBlock && isHere) {
      examples.back().command += line.substr(2) + '\n';
      isHere = line != "> EOF";
    } else if (isInBlock && (isCommand || line.rfind("$ ", 0) == 0)) {
      if (!isCommand) {
        examples.push_back({});
      }
      examples.back().command += line.substr(isCommand ? 0 : 2) + '\n';
      isCommand = line.back() == '\\';
      isHere = line.find("<<'EOF'") != std::string::npos;
    } else if (isInBlock && !examples.empty()) {
      examples.back().shown.push_back(line);
    }
  }
  return examples;
}

bool isCut(const std::string &line) {
  return line.size() >= 3 && line.compare(line.size() - 3, 3, "...") == 0;
}

bool isShownAs(const std::string &printed, const std::string &shown) {
  return isCut(shown) ? printed.rfind(shown.substr(0, shown.size() - 3), 0) == 0
                      : printed == shown;
}

void expectShown(const Example &example, const Lines &printed) {
  SCOPED_TRACE(example.command);
  auto line = printed.begin();
  bool maySkip = false;
  for (const std::string &shown : example.shown) {
    if (shown.find_first_not_of(' ') == shown.find("...") && isCut(shown)) {
      maySkip = true;
      continue;
    }
    const auto from = line;
    while (maySkip && line != printed.end() && !isShownAs(*line, shown)) {
      ++line;
    }
    ASSERT_TRUE(line != printed.end() && isShownAs(*line, shown))
        << "expected " << shown << "\nfound "
        << (from == printed.end() ? "the end" : *from);
    ++line;
    maySkip = false;
  }
  EXPECT_TRUE(maySkip || line == printed.end())
      << "expected the end\nfound " << *line;
}

class DocumentsTest : public testing::TestWithParam<std::string> {};

TEST_P(DocumentsTest, ShowWhatTheCommandPrints) {
  const std::vector<Example> examples = examplesIn(GetParam());
  const auto least = kLeastExamples.find(GetParam());
  if (least == kLeastExamples.end()) {
    EXPECT_TRUE(examples.empty()) << examples.size();
  } else {
    EXPECT_GE(examples.size(), least->second);
  }
  const TemporaryDirectory directory;
  fs::copy(SCHEMA_EXAMPLES_DIR, directory.path() / "examples",
           fs::copy_options::recursive);
  const std::string end = "\001\n";
  std::string script =
      "cd " + quoted(directory.string()) + "; exec 2>&1 </dev/null; " +
      "export NO_COLOR=1 PATH=" +
      quoted(fs::path(SCHEMA_MIGRATE_COMMAND).parent_path().string()) +
      ":$PATH\n";
  for (const Example &example : examples) {
    script += example.command + "s=$?; printf '\\001\\n'; (exit $s)\n";
  }
  std::string printed = replaceAll(outputOf(script), directory.string(), "...");
  for (const Example &example : examples) {
    const auto length = printed.find(end);
    ASSERT_NE(length, std::string::npos) << example.command << printed;
    expectShown(example, linesOf(printed.substr(0, length)));
    printed.erase(0, length + end.size());
  }
}

// The headings of a document as a link names them.
std::set<std::string> placesIn(const fs::path &document) {
  std::set<std::string> places;
  for (const std::string &line : linesOf(readText(document))) {
    const auto start = line.find_first_not_of('#');
    if (start == 0 || start == std::string::npos || line[start] != ' ') {
      continue;
    }
    std::string place = "#";
    for (const char c : line.substr(start + 1)) {
      if (isalnum(c) != 0 || c == '-') {
        place += static_cast<char>(tolower(c));
      } else if (c == ' ') {
        place += '-';
      }
    }
    places.insert(place);
  }
  return places;
}

// [text](path) and [text](path#place).
TEST_P(DocumentsTest, LinkToWhatIsThere) {
  const std::string text = readText(kSources / GetParam());
  const std::regex link("\\]\\(([^)#]+)(#[^)]*)?\\)");
  for (std::sregex_iterator match(text.begin(), text.end(), link), last;
       match != last; ++match) {
    const std::string target = (*match)[1];
    if (target.find("://") == std::string::npos) {
      const fs::path path = (kSources / GetParam()).parent_path() / target;
      ASSERT_TRUE(fs::exists(path)) << target;
      const std::string place = (*match)[2];
      EXPECT_TRUE(place.empty() || placesIn(path).count(place) == 1)
          << target << place;
    }
  }
}

TEST(ExamplesTest, AMigrationTakesLessThan60Lines) {
  const fs::path program = kSources / "examples/embed/migrate.cpp";
  EXPECT_LT(linesOf(readText(program)).size(), 60U);
}

// Tables and output that is shown may be wider.
TEST_P(DocumentsTest, Have80Columns) {
  bool isInBlock = false;
  for (const std::string &line : linesOf(readText(kSources / GetParam()))) {
    isInBlock = isInBlock != (line.rfind("```", 0) == 0);
    EXPECT_TRUE(line.size() <= 80 || line[0] == '|' || isInBlock) << line;
  }
}

INSTANTIATE_TEST_SUITE_P(All, DocumentsTest, testing::ValuesIn(documents()),
                         [](const auto &document) {
                           std::string name;
                           for (const char c : document.param) {
                             name += isalnum(c) != 0 ? c : '_';
                           }
                           return name;
                         });

}  // namespace
