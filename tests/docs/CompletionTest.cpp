// What the shells complete is what --help lists.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "FindingCodes.h"
#include "HelpTesting.h"
#include "Migration.h"
#include "ShellTesting.h"

namespace {

using Words = std::set<std::string>;

struct Shell {
  std::string name;
  std::string script;
};

void PrintTo(const Shell &shell, std::ostream *out) { *out << shell.name; }

Words wordsOf(const std::vector<std::string> &list) {
  return Words(list.begin(), list.end());
}

class CompletionTest : public MigrateTest,
                       public testing::WithParamInterface<Shell> {
 protected:
  CompletionTest() {
    std::filesystem::remove_all(path("old"));
    std::filesystem::remove_all(path("new"));
    std::filesystem::create_directory(path("folder"));
    write("list", "");
  }

  void SetUp() override {
    if (outputOf("command -v " + GetParam().name).empty()) {
      GTEST_SKIP() << "there is no " << GetParam().name;
    }
  }

  // What the shell offers behind each of the lines, in a directory that holds a
  // folder and a file.
  std::vector<Words> candidates(const std::vector<std::string> &lines) const {
    const std::string sources = SCHEMA_SOURCE_DIR;
    std::string command =
        "cd " + quoted(root().string()) + " && HOME=$PWD " +
        quoted(sources + "/tests/docs/complete." + GetParam().name) + " " +
        quoted(sources + "/src/tools/schema-migrate/completion/" +
               GetParam().script);
    for (const std::string &line : lines) {
      command += " " + quoted("schema-migrate " + line);
    }
    std::vector<Words> all(1);
    for (std::string word : linesOf(outputOf(command + " </dev/null"))) {
      if (word == "=") {
        all.emplace_back();
      } else if (!word.empty()) {
        all.back().insert(word.back() == '/' ? word.substr(0, word.size() - 1)
                                             : word);
      }
    }
    all.pop_back();
    EXPECT_EQ(all.size(), lines.size());
    all.resize(lines.size());
    return all;
  }

  void expectAll(const std::map<std::string, Words> &expected) const {
    std::vector<std::string> lines;
    lines.reserve(expected.size());
    for (const auto &[line, words] : expected) {
      lines.push_back(line);
    }
    const std::vector<Words> all = candidates(lines);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      EXPECT_EQ(all[i], expected.at(lines[i])) << lines[i];
    }
  }
};

Words codesToAccept() {
  Words codes;
  for (const schemacheck::CodeDescription &code : schemacheck::allCodes()) {
    if (code.severity == schemacheck::Severity::kError &&
        canBeAccepted(code.code)) {
      codes.insert(code.name);
    }
  }
  return codes;
}

// What can stand behind an option.
Words valuesOf(const HelpOption &option) {
  if (option.value == "DIR") {
    return {"folder"};
  }
  if (option.value == "FILE") {
    return {"folder", "list"};
  }
  return option.value == "CODE,..." ? codesToAccept() : wordsOf(option.choices);
}

TEST_P(CompletionTest, OffersTheCommands) {
  expectAll({{"", wordsOf(helpOf("").commands)},
             {"pl", {"plan"}},
             {"co", {"collisions", "compare"}},
             {"x", {}}});
}

TEST_P(CompletionTest, OffersTheOptionsOfTheHelpAndTheirValues) {
  std::map<std::string, Words> expected = {{"--v", {"--version"}},
                                           {"check ", {"folder"}},
                                           {"plan --le", {"--leave-out"}},
                                           {"dump --table c", {"classes"}},
                                           {"x --", {}}};
  std::set<std::string> options;
  for (const std::string &command : helpOf("").commands) {
    for (const auto &[name, option] : helpOf(command).options) {
      const bool isHelp = name == "-h,--help";
      expected[command + " --"].insert(isHelp ? "--help" : name);
      if (!option.value.empty() && options.insert(name).second) {
        expected[command + " " + name + " "] = valuesOf(option);
      }
    }
  }
  if (GetParam().name == "fish") {
    expected["x --"] = {"--help"};
  }
  if (GetParam().name == "bash") {  // the others see to that themselves
    expected["plan --old="] = {"folder"};
    expected["plan --old=fo"] = {"folder"};
    expected["plan --format=j"] = {"json"};
  }
  expectAll(expected);
}

TEST_P(CompletionTest, OffersFurtherCodes) {
  const std::string before = GetParam().name == "zsh" ? "" : "TAB,NON-ASCII,";
  expectAll({{"plan --accept NAMES", {"NAMES-LAST"}},
             {"plan --accept TAB,NON-ASCII,NAMES", {before + "NAMES-LAST"}}});
}

INSTANTIATE_TEST_SUITE_P(Shells, CompletionTest,
                         testing::Values(Shell{"bash", "schema-migrate.bash"},
                                         Shell{"zsh", "_schema-migrate"},
                                         Shell{"fish", "schema-migrate.fish"}),
                         [](const auto &shell) { return shell.param.name; });

}  // namespace
