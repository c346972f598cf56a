// The manual says what --help says.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "HelpTesting.h"

namespace {

using Entries = std::map<std::string, std::string>;

std::string pageOf(const std::string &command) {
  return std::string(SCHEMA_MANUAL_DIR "/schema-migrate") +
         (command.empty() ? "" : "-" + command) + ".1.scd";
}

// The entries of a section of a page: the lines ahead of an indented text, each
// with the first line of that text.
Entries entriesOf(const std::string &page, const std::string &section) {
  Entries entries;
  std::string current;
  std::string last;
  for (const std::string &line : linesOf(readText(page))) {
    if (line.rfind("# ", 0) == 0) {
      current = line.substr(2);
    } else if (current == section && !line.empty() && line[0] == '\t' &&
               !last.empty()) {
      EXPECT_TRUE(entries.emplace(last, line.substr(1)).second) << last;
    }
    last = line.empty() || line[0] == '\t' ? "" : line;
  }
  return entries;
}

std::vector<std::string> keysOf(const Entries &entries) {
  std::vector<std::string> keys;
  keys.reserve(entries.size());
  for (const auto &[key, text] : entries) {
    keys.push_back(key);
  }
  return keys;
}

// The line of a page ahead of the description of an option.
std::string headOf(const std::string &name, const HelpOption &option) {
  if (name == "-h,--help") {
    return "*-h*, *--help*";
  }
  std::string value = option.value.empty() ? "" : "_" + option.value + "_";
  for (const std::string &choice : option.choices) {
    value = (choice == option.choices.front() ? "" : value + "|") + "*" +
            choice + "*";
  }
  return "*" + name + "*" + (value.empty() ? "" : " ") + value;
}

void expectSame(const std::string &command) {
  SCOPED_TRACE(pageOf(command));
  const Help help = helpOf(command);
  Entries options;
  for (const auto &[name, option] : help.options) {
    options[headOf(name, option)] = "";
  }
  EXPECT_EQ(keysOf(entriesOf(pageOf(command), "OPTIONS")), keysOf(options));
  Entries statuses;
  for (const auto &[number, meaning] : help.statuses) {
    statuses["*" + number + "*"] = meaning;
  }
  EXPECT_EQ(entriesOf(pageOf(command), "EXIT STATUS"), statuses);
}

// The first command of the examples of a page, on one line.
std::string exampleOf(const std::string &page) {
  const std::string fence = "```\n";
  const std::string text = replaceAll(readText(page), "\\\\\n    ", "");
  const auto examples = text.find("# EXAMPLES");
  const auto from = text.find(fence, examples) + fence.size();
  return text.substr(from, text.find('\n', from) - from);
}

TEST(ManualTest, HasTheOptionsAndExitStatusesOfTheHelp) {
  expectSame("");
  for (const std::string &command : helpOf("").commands) {
    expectSame(command);
  }
}

TEST(ManualTest, NamesTheCommandsOfTheHelp) {
  Entries commands;
  for (const std::string &command : helpOf("").commands) {
    commands["*" + command + "*"] = "";
  }
  EXPECT_EQ(keysOf(entriesOf(pageOf(""), "COMMANDS")), keysOf(commands));
}

TEST(ManualTest, BeginsWithTheExampleOfTheHelp) {
  std::vector<std::string> commands = helpOf("").commands;
  commands.emplace_back();
  for (const std::string &command : commands) {
    const std::string expected = helpOf(command).example;
    EXPECT_EQ(expected.rfind("schema-migrate ", 0), 0U) << expected;
    EXPECT_EQ(exampleOf(pageOf(command)), expected);
  }
}

TEST(ManualTest, PagesBeginWithTheirNameAndTheVersion) {
  std::vector<std::string> commands = helpOf("").commands;
  ASSERT_EQ(commands.size(), 8U);
  commands.emplace_back();
  for (const std::string &command : commands) {
    const std::string name =
        "schema-migrate" + (command.empty() ? "" : "-" + command);
    EXPECT_EQ(linesOf(readText(pageOf(command))).front(),
              name + "(1) \"schema-migrate " SCHEMA_MIGRATE_VERSION "\"");
  }
}

}  // namespace
