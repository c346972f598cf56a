// Helpers of the tests of the commands that only read.
#ifndef TESTS_MIGRATE_COMMANDSTESTING_H_
#define TESTS_MIGRATE_COMMANDSTESTING_H_

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>
#include <vector>

#include "ExitStatus.h"
#include "MigrateTesting.h"

using Arguments = std::vector<std::string>;

// What ends the help of a command. `found`: the lines of the statuses 1 and 2.
inline std::string exitStatusHelp(const std::string &found) {
  return "Exit status:\n"
         "  0 done\n" +
         found +
         "  3 bad input: a file whose content cannot be used\n"
         "  4 a file, a directory, an output or the memory fails or is in the "
         "way\n"
         "  5 wrong usage\n"
         "  6 a fault of the command itself\n";
}

// The options that each command has first.
constexpr char kCommonOptionsHelp[] =
    "Options:\n"
    "  -h,--help                   Print this help message and exit\n"
    "  --trace FILE                File for a trace of the library's "
    "operations\n"
    "  --trace-events MASK Needs: --trace\n"
    "                              What to trace, as a mask of event bits: "
    "0x1000 and 0x10000 operations (0x2000 and 0x20000 their ends alone), "
    "0x4000000 messages\n";

// Behind them, the option of a command whose result can be had as JSON.
constexpr char kFormatHelp[] =
    "  --format FORMAT:{text,json} How to print the result: text (the "
    "default), or json: one document in the form that a schema in "
    "share/doc/schema-migrate/json states\n";

// The other options of a command that reads two directories.
constexpr char kBothOptionsHelp[] =
    "  --old DIR REQUIRED          Schema directory of the old installation\n"
    "  --new DIR REQUIRED          Schema directory of the new release\n"
    "  --excluded-oids FILE        List of OIDs that are not to be carried\n"
    "\n";

// For run(), where definitions repeat: those are never freed, which is the
// library's contract, and so none of the leak checker's business.
inline void withoutLeakCheck() {
  const char *options = getenv("ASAN_OPTIONS");
  const std::string before = options == nullptr ? "" : options;
  setenv("ASAN_OPTIONS", (before + ":detect_leaks=0").c_str(), 1);
}

// Expects all that a run of the command leaves.
inline void expectResult(const CommandResult &result, int status,
                         const std::string &out, const std::string &error) {
  EXPECT_EQ(result.status, status);
  EXPECT_EQ(result.out, out);
  EXPECT_EQ(result.error, error);
}

// What the command says when it is used wrongly.
inline std::string usageError(const std::string &message) {
  return message + "\nRun with --help for more information.\n";
}

// What the command says of a directory that has one schema file alone.
inline std::string onlyThere(const std::string &directory,
                             const std::string &present) {
  std::string text = directory + ": warning: not there:";
  for (const SchemaFile &file : kSchemaFiles) {
    text += file.name == present ? "" : std::string(" ") + file.name;
  }
  return text + '\n';
}

// Runs the command in the directory of the examples.
inline CommandResult runOnExamples(const Arguments &arguments) {
  return runCommand(SCHEMA_EXAMPLES_DIR, arguments);
}

// A test that also makes sure that the command has changed nothing. Before each
// run, a directory that has schema files gets those that it lacks, empty.
class ReadingCommandTest : public MigrateTest {
 protected:
  CommandResult runReading(const Arguments &arguments) const {
    for (const std::string directory : {"old", "new"}) {
      if (!namesIn(path(directory)).empty()) {
        writeMissing(directory);
      }
    }
    return runAsItIs(arguments);
  }

  // The same without the files that are not there.
  CommandResult runAsItIs(const Arguments &arguments) const {
    const auto before = snapshotOf(root());
    CommandResult result = run(arguments, withoutLeakCheck);
    EXPECT_EQ(snapshotOf(root()), before);
    return result;
  }

  void writeMissing(const std::string &directory) const {
    for (const SchemaFile &file : kSchemaFiles) {
      const std::string name = directory + '/' + file.name;
      if (!std::filesystem::exists(path(name))) {
        write(name, "");
      }
    }
  }
};

#endif  // TESTS_MIGRATE_COMMANDSTESTING_H_
