#include "UnknownWords.h"

#include <algorithm>
#include <optional>
#include <set>
#include <vector>

#include "Nearest.h"
#include "Trouble.h"

namespace {

using Names = std::vector<std::string>;

std::vector<const CLI::App *> commandsOf(const CLI::App &app) {
  return app.get_subcommands([](const CLI::App *) { return true; });
}

// The options of a command, without those that have no "--".
Names optionsOf(const CLI::App &command) {
  Names names;
  for (const CLI::Option *option : command.get_options()) {
    for (const std::string &name : option->get_lnames()) {
      names.push_back("--" + name);
    }
  }
  return names;
}

// "a, b or c".
std::string listOf(const Names &names) {
  std::string list;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const bool isLast = i + 1 == names.size();
    list += (i == 0 ? "" : isLast ? " or " : ", ") + names[i];
  }
  return list;
}

Trouble wrongUsage(const std::string &what) {
  return {kUsage, "error: " + what + "\nRun with --help for more information."};
}

// "what; did you mean ...?", or with all that is possible if nothing is near.
Trouble unknown(const std::string &what, const std::string &word,
                const Names &possible) {
  const std::string question =
      didYouMean(word, std::set<std::string>(possible.begin(), possible.end()));
  return wrongUsage(
      what + (question.empty() ? "; expected " + listOf(possible) : question));
}

// The first word behind `command` that has the form of an option and is none,
// without its value.
std::optional<std::string> unknownOption(const CLI::App &command) {
  for (const std::string &word : command.remaining()) {
    if (word == "--") {
      break;  // behind it are no options
    }
    if (word[0] == '-') {
      return word.substr(0, word.find('='));
    }
  }
  return std::nullopt;
}

}  // namespace

void requireCommand(const CLI::App &app, const std::string &word) {
  Names names;
  for (const CLI::App *command : commandsOf(app)) {
    names.push_back(command->get_name());
  }
  if (std::find(names.begin(), names.end(), word) == names.end()) {
    throw unknown("no command is called '" + word + "'", word, names);
  }
}

void requireOptionsOf(const CLI::App &app) {
  const auto option = unknownOption(app);
  if (!option) {
    return;
  }
  for (const CLI::App *command : commandsOf(app)) {
    const Names names = optionsOf(*command);
    if (std::find(names.begin(), names.end(), *option) != names.end()) {
      throw wrongUsage("expected a command ahead of '" + *option + "'");
    }
  }
  throw unknown("no option is called '" + *option + "'", *option,
                optionsOf(app));
}

void requireOptionsOfCommand(const CLI::App &app) {
  for (const CLI::App *command : app.get_subcommands()) {
    if (const auto option = unknownOption(*command)) {
      throw unknown(command->get_name() + " has no option '" + *option + "'",
                    *option, optionsOf(*command));
    }
  }
}
