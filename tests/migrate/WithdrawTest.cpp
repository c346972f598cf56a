// The command apply with a list of modified OIDs, as a user runs it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CommandsTesting.h"

namespace {

const Arguments kApply = {"apply", "--old", "old", "--new",
                          "new",   "--out", "out", "--modified-oids",
                          "list"};

class WithdrawTest : public MigrateTest {
 protected:
  WithdrawTest() {
    write("old/V3.user.at",
          "attributetypes=( 1.1 NAME 'carried' SYNTAX 9.1 )\n");
    write("new/V3.modifiedschema",
          "attributetypes=( 2.1 NAME ( 't' 'u' ) SYNTAX 9.1 )\n"
          "QORAttributetypes=( 2.1 LENGTH 4 )\n"
          "objectclasses=( 2.2 NAME 'c' ABSTRACT )\n"
          "objectclasses=( 2.3 NAME 'd' ABSTRACT )\n");
    write("new/V3.system.oc", "objectclasses=( 2.4 NAME 'sys' ABSTRACT )\n");
    write("new/V3.config.at",
          "attributetypes=( 2.5 NAME 'conf' SYNTAX 9.1 )\n");
  }

  // Expects a migration that succeeds and says this of the list.
  void expectWithdrawals(const std::string &said,
                         const std::string &warnings = "") const {
    std::filesystem::remove_all(path("out"));
    Arguments arguments = kApply;
    if (!m_accepted.empty()) {
      arguments.insert(arguments.end(), {"--accept", m_accepted});
    }
    const CommandResult result = run(arguments, withoutLeakCheck);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, warnings);
    const std::size_t at = result.out.find("\n\nmodified schema: ");
    EXPECT_EQ(at == std::string::npos ? "" : result.out.substr(at + 2), said);
  }

  // The codes of errors that do not matter.
  std::string m_accepted;

 private:
  const FixedDate m_date;
};

const char kType[] =
    "attributetypes=( 2.1 NAME ( 't' 'u'  ) SYNTAX 9.1 USAGE userApplications  "
    ")\n";
const char kTypesStorage[] = "QORAttributetypes=( 2.1 LENGTH 4 )\n";
const char kC[] = "objectclasses=( 2.2 NAME 'c' ABSTRACT )\n";
const char kD[] = "objectclasses=( 2.3 NAME 'd' ABSTRACT )\n";

TEST_F(WithdrawTest, WhatAListOfNoneWithdraws) {
  for (const char *text : {"", "\n", "# 2.1\n"}) {
    write("list", text);
    expectWithdrawals("modified schema: list\n  no OID in the list\n");
    EXPECT_EQ(read("out/V3.modifiedschema"),
              std::string(kHeaderLine) + kType + kTypesStorage + kC + kD);
  }
}

TEST_F(WithdrawTest, TheReportInFull) {
  write("list", "9.9 2.3\n2.1 # 2.2\n2.3\n");
  expectResult(
      run(kApply), 0,
      R"(old installation: old
  not there: V3.user.oc V3.qor.at V3.qor.oc V3.system.at V3.system.oc V3.config.at V3.config.oc V3.modifiedschema
                                              read  identical   excluded      added   replaced
  V3.user.at        attribute types              1          0          0          1          0
  all                                            1          0          0          1          0

new release: new
  not there: V3.user.at V3.user.oc V3.qor.at V3.qor.oc V3.system.at V3.config.oc
result: out
                                           release     result
  V3.user.at        attribute types              0          1
  V3.system.oc      object classes               1          1
  V3.config.at      attribute types              1          1
  V3.modifiedschema attribute types              1          0
                    object classes               2          1
                    storage definitions          1          0
  all                                            6          4

modified schema: list
  attribute type 't' (2.1) with its storage definition was withdrawn
  object class 'd' (2.3) was withdrawn
  no definition has the OID 9.9
)",
      R"(list:1:1: warning: [LIST-UNKNOWN] expected the OID of a definition, found 9.9, which no definition has
9.9 2.3
^
list:3:1: warning: [LIST-REPEATED] expected each OID once, found 2.3 again; it stands on line 1 already
2.3
^
)");
  EXPECT_EQ(read("out/V3.modifiedschema"), std::string(kHeaderLine) + kC);
  EXPECT_EQ(
      read("out/V3.system.oc"),
      std::string(kHeaderLine) + "objectclasses=( 2.4 NAME 'sys' ABSTRACT )\n");
  EXPECT_EQ(read("out/V3.config.at"), read("new/V3.config.at"));
}

TEST_F(WithdrawTest, EverythingLeavesAnEmptyFile) {
  write("list", "2.1 2.2 2.3\n");
  expectWithdrawals(
      "modified schema: list\n"
      "  attribute type 't' (2.1) with its storage definition was withdrawn\n"
      "  object class 'c' (2.2) was withdrawn\n"
      "  object class 'd' (2.3) was withdrawn\n");
  EXPECT_EQ(read("out/V3.modifiedschema"), "");
}

TEST_F(WithdrawTest, AStorageDefinitionWithoutType) {
  m_accepted = "STORAGE-WITHOUT-TYPE";
  write("new/V3.modifiedschema", "QORAttributetypes=( 2.6 LENGTH 4 )\n");
  write("list", "2.6\n");
  expectWithdrawals(
      "modified schema: list\n"
      "  storage definition (2.6) was withdrawn\n");
  EXPECT_EQ(read("out/V3.modifiedschema"), "");
}

TEST_F(WithdrawTest, ADefinitionWithoutName) {
  m_accepted = "NAMELESS-CLASS";
  write("new/V3.modifiedschema", "objectclasses=( 2.6 ABSTRACT )\n");
  write("list", "2.6\n");
  expectWithdrawals(
      "modified schema: list\n"
      "  object class (2.6) was withdrawn\n");
  EXPECT_EQ(read("out/V3.modifiedschema"), "");
}

TEST_F(WithdrawTest, OneThatOnlyItsOidLeadsTo) {
  m_accepted = "SHADOWED";
  write("new/V3.modifiedschema",
        std::string(kC) + "objectclasses=( 2.6 NAME 'C' AUXILIARY )\n");
  write("list", "2.6\n");
  expectWithdrawals(
      "modified schema: list\n"
      "  object class 'C' (2.6) was withdrawn\n",
      "new/V3.modifiedschema:2: warning: object class 'C' (2.6) is found by "
      "its OID only: "
      "new/V3.modifiedschema:1 defines the same first name\n");
  EXPECT_EQ(read("out/V3.modifiedschema"), std::string(kHeaderLine) + kC);
}

TEST_F(WithdrawTest, WhatAnotherFileHoldsStaysThere) {
  write("list", "2.4 2.5\n");
  expectWithdrawals(
      "modified schema: list\n"
      "  object class 'sys' (2.4) is not in V3.modifiedschema, and stays in "
      "V3.system.oc\n"
      "  attribute type 'conf' (2.5) is not in V3.modifiedschema, and stays in "
      "V3.config.at\n");
  EXPECT_EQ(read("out/V3.modifiedschema"),
            std::string(kHeaderLine) + kType + kTypesStorage + kC + kD);
  EXPECT_EQ(read("out/V3.user.at"),
            std::string(kHeaderLine) +
                "attributetypes=( 1.1 NAME ( 'carried'  ) SYNTAX 9.1 USAGE "
                "userApplications  )\n");
}

// A second migration is not to undo what the first has withdrawn.
TEST_F(WithdrawTest, WhatTheReleaseLacksIsNotBroughtBack) {
  write("old/V3.user.oc", "objectclasses=( 1.2 NAME 'k' ABSTRACT )\n");
  write("old/V3.system.at",
        "QORAttributetypes=( 1.1 LENGTH 4 )\n"
        "QORAttributetypes=( 1.3 LENGTH 4 )\n");
  write("list", "1.1 1.2 1.3\n");
  expectWithdrawals(
      "modified schema: list\n"
      "  attribute type 'carried' (1.1) with its storage definition is not "
      "carried: the release lacks it\n"
      "  object class 'k' (1.2) is not carried: the release lacks it\n"
      "  storage definition (1.3) is not carried: the release lacks it\n");
  EXPECT_EQ(read("out/V3.user.at"), "");
  EXPECT_EQ(read("out/V3.user.oc"), "");
  EXPECT_EQ(read("out/V3.system.at"), "");
}

TEST_F(WithdrawTest, WhereTheObjectClassStaysAndNotATypeWithItsOid) {
  m_accepted = "OID-OF-TWO-KINDS";
  write("new/V3.config.at", "attributetypes=( 2.4 NAME 'x' SYNTAX 9.1 )\n");
  write("list", "2.4\n");
  expectWithdrawals(
      "modified schema: list\n"
      "  object class 'sys' (2.4) is not in V3.modifiedschema, and stays in "
      "V3.system.oc\n");
}

TEST_F(WithdrawTest, AnOidThatIsAlsoRecordedForAnotherFileLeavesThisOne) {
  write("new/V3.system.oc", kC);
  write("list", "2.2\n");
  expectWithdrawals(
      "modified schema: list\n"
      "  object class 'c' (2.2) was withdrawn from V3.modifiedschema, and "
      "stays "
      "in V3.system.oc\n",
      "new/V3.modifiedschema:3: warning: object class 'c' (2.2) is ignored: "
      "new/V3.system.oc:1 defines the same first name\n");
  EXPECT_EQ(read("out/V3.modifiedschema"),
            std::string(kHeaderLine) + kType + kTypesStorage + kD);
  EXPECT_EQ(read("out/V3.system.oc"), std::string(kHeaderLine) + kC);
}

TEST_F(WithdrawTest, AStorageDefinitionStaysWithItsType) {
  write("new/V3.system.at", kType);
  write("list", "2.1\n");
  expectWithdrawals(
      "modified schema: list\n"
      "  attribute type 't' (2.1) with its storage definition was withdrawn "
      "from V3.modifiedschema, and stays in V3.system.at\n",
      "new/V3.modifiedschema:1: warning: attribute type 't' (2.1) is ignored: "
      "new/V3.system.at:1 defines the same first name\n");
  EXPECT_EQ(read("out/V3.modifiedschema"), std::string(kHeaderLine) + kC + kD);
  EXPECT_EQ(read("out/V3.system.at"),
            std::string(kHeaderLine) + kType + kTypesStorage);
}

TEST_F(WithdrawTest, AnObjectClassWithTheOidOfATypeLeavesTheStorageUnnamed) {
  m_accepted = "OID-OF-TWO-KINDS";
  write("new/V3.modifiedschema",
        std::string(kType) + kTypesStorage +
            "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n");
  write("list", "2.1\n");
  expectWithdrawals(
      "modified schema: list\n"
      "  object class 'k' (2.1) was withdrawn\n");
  EXPECT_EQ(read("out/V3.modifiedschema"), "");
}

TEST_F(WithdrawTest, ABadListIsTroubleAndNothingIsWritten) {
  const auto fail = [this](ExitStatus status, const std::string &error) {
    const auto before = snapshotOf(root());
    expectResult(run(kApply), status, "", error);
    EXPECT_EQ(snapshotOf(root()), before);
  };
  fail(
      kFileError,
      "list: error: [UNREADABLE-FILE] expected a file that can be read, found: "
      "No such file or directory\n");
  write("list", "2.1\n2.2");
  fail(kBadInput,
       "list:2:1: error: [LIST-UNTERMINATED] expected a newline behind '2.2', "
       "found the end of the file; the library ignores the word\n"
       "2.2\n^\n");
  std::filesystem::remove(path("list"));
  std::filesystem::create_directory(path("list"));
  fail(kFileError,
       "list: error: [NOT-A-FILE] expected a regular file, found a "
       "directory\n");
}

TEST_F(WithdrawTest, ABadListIsReportedBeforeConflicts) {
  write("old/V3.user.oc", "objectclasses=( 1.2 NAME 'sys' ABSTRACT )\n");
  expectResult(run(kApply), kFileError, "",
               "list: error: [UNREADABLE-FILE] expected a file that can be "
               "read, found: No such file or directory\n");
}

TEST_F(WithdrawTest, TheListOfTheExamples) {
  const CommandResult result = runOnExamples(
      {"apply", "--old", "old-installation", "--new", "new-release", "--out",
       path("out").string(), "--excluded-oids", "excluded-oids.txt",
       "--modified-oids", "modified-oids.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.out.substr(result.out.find("\n\nmodified schema: ") + 2),
            "modified schema: modified-oids.txt\n"
            "  attribute type 'drink' (0.9.2342.19200300.100.1.5) with its "
            "storage definition was withdrawn\n"
            "  attribute type 'userClass' (0.9.2342.19200300.100.1.8) with its "
            "storage definition was withdrawn\n"
            "  object class 'documentSeries' (0.9.2342.19200300.100.4.9) was "
            "withdrawn\n");
}

}  // namespace
