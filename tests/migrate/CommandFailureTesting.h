// Helpers of the tests of what the command says when it fails.
#ifndef TESTS_MIGRATE_COMMANDFAILURETESTING_H_
#define TESTS_MIGRATE_COMMANDFAILURETESTING_H_

#include <functional>
#include <string>
#include <vector>

#include "ExitStatus.h"
#include "MigrateTesting.h"

using Arguments = std::vector<std::string>;

// What stands behind the findings of a migration that is refused.
constexpr char kAdvice[] =
    "nothing was written; mend the files, or leave out what is not to be "
    "carried: with --excluded-oids, --decisions, --leave-out, or --accept for "
    "errors that are acceptable\n";

inline Arguments applying(const std::string &oldDirectory,
                          const std::string &newDirectory,
                          const std::string &out) {
  return {"apply", "--old", oldDirectory, "--new", newDirectory, "--out", out};
}

class CommandFailureTest : public MigrateTest {
 protected:
  CommandFailureTest() {
    write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
    writeSmallRelease();
  }

  // Runs the command, which must fail with the status and change nothing; its
  // error.
  std::string failure(
      ExitStatus status,
      const Arguments &arguments = applying("old", "new", "out"),
      const std::function<void()> &prepare = [] {}) const {
    const auto before = snapshotOf(root());
    const CommandResult result = run(arguments, prepare);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(snapshotOf(root()), before);
    return result.error;
  }
};

// "DIR: error: ..." for a directory that cannot be read.
inline std::string noDirectory(const std::string &directory,
                               const std::string &reason) {
  return directory +
         ": error: [NOT-A-DIRECTORY] expected a directory that can be read, "
         "found: " +
         reason + '\n';
}

#endif  // TESTS_MIGRATE_COMMANDFAILURETESTING_H_
