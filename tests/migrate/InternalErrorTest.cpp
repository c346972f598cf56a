// What the command does when the library has done something else than planned.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <string>

#include "CommandsTesting.h"
#include "support/Child.h"

namespace {

class InternalErrorTest : public MigrateTest {
 protected:
  // Runs apply. While the library reads old/V3.user.at, after the sum of the
  // file was taken and the plan made, the file holds `text`.
  CommandResult applyWhileChanged(const std::string &text) const {
    write("old/V3.user.at.changed", text);
    const auto before = snapshotOf(root());
    CommandResult result =
        run({"apply", "--old", "old", "--new", "new", "--out", "out"}, [] {
          setenv("LD_PRELOAD", SCHEMA_CHANGED_FILE_LIBRARY, 1);
          setenv("CHANGED_FILE", "old/V3.user.at", 1);
          setenv("CHANGED_OPENING", "3", 1);
        });
    EXPECT_EQ(snapshotOf(root()), before);
    return result;
  }

  void SetUp() override {
    if (isSanitized()) {
      GTEST_SKIP() << "the sanitizer's library would have to be loaded first";
    }
    write("old/V3.user.at",
          "attributetypes=( 1.1 NAME 'a' DESC 'old' )\n"
          "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n");
    write("new/V3.user.at",
          "attributetypes=( 1.1 NAME 'a' DESC 'new' )\n"
          "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n");
  }
};

constexpr char kEnd[] =
    "\nnothing was written; please report this with the input\n";

TEST_F(InternalErrorTest, WhatIsPlannedIsNotCarried) {
  expectResult(
      applyWhileChanged("attributetypes=( 1.1 NAME 'a' DESC 'new' )\n"
                        "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n"),
      kInternal, "",
      std::string("internal error: old/V3.user.at:1: attribute type 'a' (1.1) "
                  "is planned to be carried, and is not") +
          kEnd);
}

TEST_F(InternalErrorTest, WhatIsNotPlannedWouldBeCarried) {
  expectResult(
      applyWhileChanged("attributetypes=( 1.1 NAME 'a' DESC 'old' )\n"
                        "attributetypes=( 1.2 NAME 'b' DESC 'y' )\n"),
      kInternal, "",
      std::string("internal error: old/V3.user.at:2: attribute type 'b' (1.2) "
                  "would be carried, and is not planned to be") +
          kEnd);
}

TEST_F(InternalErrorTest, AFileThatHoldsLessIsNone) {
  expectResult(
      applyWhileChanged("attributetypes=( 1.1 NAME 'a' DESC 'old' )\n"),
      kFileError, "",
      "old/V3.user.at: error: cannot read the file; was it changed just "
      "now?\n");
}

TEST_F(InternalErrorTest, AFileThatDoesNotParseAnyMoreIsNone) {
  expectResult(applyWhileChanged("attributetypes\n"), kFileError, "",
               "old/V3.user.at: error: cannot read the file; was it changed "
               "just now?\n");
}

}  // namespace
