// docs/trace-ids.md is made from the sources.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "HelpTesting.h"
#include "TraceFile.h"

namespace fs = std::filesystem;

namespace {

const fs::path kLibrary =
    fs::path(SCHEMA_SOURCE_DIR) / "src" / "libraries" / "libschema";

// The lines of all files, without those that are comments.
std::string textOf(const fs::path &directory) {
  std::set<fs::path> files;
  for (const auto &entry : fs::recursive_directory_iterator(directory)) {
    if (entry.is_regular_file()) {
      files.insert(entry.path());
    }
  }
  std::string text;
  for (const fs::path &file : files) {
    for (const std::string &line : linesOf(readText(file))) {
      if (line.find("//") != line.find_first_not_of(' ')) {
        text += line + '\n';
      }
    }
  }
  return text;
}

std::vector<std::smatch> matchesOf(const std::string &text,
                                   const std::string &pattern) {
  const std::regex regex(pattern);
  return {std::sregex_iterator(text.begin(), text.end(), regex),
          std::sregex_iterator()};
}

// The rows of the tables of the document, in order, that begin with `begin`.
std::vector<std::string> rowsOf(const std::string &begin) {
  std::vector<std::string> rows;
  for (const std::string &line :
       linesOf(readText(SCHEMA_SOURCE_DIR "/docs/trace-ids.md"))) {
    if (line.rfind("| `" + begin, 0) == 0) {
      rows.push_back(line);
    }
  }
  return rows;
}

TEST(TraceIdsTest, AreThoseOfTheSources) {
  const std::string header = readText(kLibrary / "internal" / "Trace.h");
  const std::string sources = textOf(kLibrary);
  std::vector<std::string> expected;
  for (const std::smatch &match :
       matchesOf(header, "\\b(k\\w+) = (0x53[0-9A-F]{6}),")) {
    const auto id =
        static_cast<unsigned int>(std::stoul(match[2], nullptr, 16));
    const bool isWalk = sources.find("Function::" + match[1].str() +
                                     ", kTableWalk") != std::string::npos;
    expected.push_back("| `" + match[2].str() + "` | `" + functionName(id) +
                       "` | " + (isWalk ? "walk" : "call") + " |");
  }
  ASSERT_EQ(expected.size(), 61U);
  EXPECT_EQ(rowsOf("0x53"), expected);
}

TEST(TraceIdsTest, MessagesAreThoseOfTheSources) {
  // What the compiler joins is one message.
  const std::string sources =
      std::regex_replace(textOf(kLibrary), std::regex("\"\\s*\\n\\s*\""), "");
  std::set<std::string> expected;
  for (const std::smatch &match :
       matchesOf(sources,
                 "debug\\(\\s*(?:libschema::)?kDebugLevel,\\s*"
                 "\"((\\w+): [^\"]*)\"")) {
    expected.insert("| `" + match[1].str() + "` |");
  }
  EXPECT_EQ(expected.size(), 14U);
  std::set<std::string> listed;
  for (const std::string &row : rowsOf("")) {
    if (row.find(": ") != std::string::npos) {
      listed.insert(row);
    }
  }
  EXPECT_EQ(listed, expected);
}

}  // namespace
