// What the help of a command says, for tests that compare other texts with it.
#ifndef TESTS_DOCS_HELPTESTING_H_
#define TESTS_DOCS_HELPTESTING_H_

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "CommandsTesting.h"

// An option as the help has it: "--format FORMAT:{text,json} How to ...".
struct HelpOption {
  std::string value;                 // "FORMAT"; empty: a flag
  std::vector<std::string> choices;  // "text", "json"; empty: anything
};

struct Help {
  std::vector<std::string> commands;  // of the help of the program itself
  std::map<std::string, HelpOption> options;
  std::map<std::string, std::string> statuses;
  std::string example;  // the first
};

inline std::vector<std::string> linesOf(const std::string &text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

inline std::vector<std::string> split(const std::string &text, char separator) {
  std::vector<std::string> parts;
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, separator);) {
    parts.push_back(part);
  }
  return parts;
}

// The option of a line "  --name VALUE:{a,b} ...".
inline HelpOption helpOptionOf(std::string value) {
  HelpOption option;
  const auto brace = value.find(":{");
  if (brace != std::string::npos) {
    option.choices =
        split(value.substr(brace + 2, value.find('}') - brace - 2), ',');
  }
  value = value.substr(0, value.find_first_of(":="));
  // A flag has no value, but the beginning of its description there.
  const bool isValue =
      value.size() > 1 &&
      value.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ-,.") ==
          std::string::npos;
  option.value = isValue ? value : "";
  return option;
}

// The help of a command, or of the program itself, if `command` is empty.
inline Help helpOf(const std::string &command) {
  Arguments arguments = {"--help"};
  if (!command.empty()) {
    arguments.insert(arguments.begin(), command);
  }
  const CommandResult result = runCommand("/", arguments);
  EXPECT_EQ(result.status, 0);
  Help help;
  std::string section;
  for (const std::string &line : linesOf(result.out)) {
    if (!line.empty() && line.front() != ' ') {
      section = line;
    } else if (line.size() > 2 && line[2] != ' ') {
      std::istringstream words(line);
      std::string word;
      std::string next;
      words >> word >> next;
      if (section == "Options:") {
        help.options[word] = helpOptionOf(next);
      } else if (section == "Subcommands:") {
        help.commands.push_back(word);
      } else if (section == "Exit status:") {
        help.statuses[word] = line.substr(4);
      } else if (section == "Example:" && help.example.empty()) {
        help.example = line.substr(2);
      }
    }
  }
  EXPECT_FALSE(help.options.empty());
  EXPECT_FALSE(help.statuses.empty());
  return help;
}

#endif  // TESTS_DOCS_HELPTESTING_H_
