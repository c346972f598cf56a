// The command line of schema-migrate.
#ifndef SCHEMA_MIGRATE_COMMANDLINE_H_
#define SCHEMA_MIGRATE_COMMANDLINE_H_

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "Commands.h"

// Knows the commands and their options; fills in what the arguments say, and
// runs the command that they name.
class CommandLine {
 public:
  CommandLine();

  // Does what the arguments say, and returns the exit status. Throws Trouble
  // when the command does, and when the output cannot be written.
  ExitStatus run(int argc, char **argv);

 private:
  using Run = ExitStatus (*)(const Options &);

  void addApply();
  void addCheck();
  void addCollisions();
  void addCompare();
  void addDump();
  void addPlan();
  void addRestore();
  void addShow();

  // `found`: what the exit statuses 1 and 2 say, where the command has them: a
  // line each of the table in its help.
  CLI::App *add(const std::string &name, const std::string &description,
                const std::string &example, Run action, const char *found = "");

  // Options that several commands have.
  void addTrace(CLI::App *command);
  void addBoth(CLI::App *command);
  void addPlanning(CLI::App *command);
  void addSizeLimit(CLI::App *command);
  void addFormat(CLI::App *command);

  void requireSense() const;
  ExitStatus runTraced();

  CLI::App m_app;
  Options m_options;
  Run m_run = nullptr;
};

#endif  // SCHEMA_MIGRATE_COMMANDLINE_H_
