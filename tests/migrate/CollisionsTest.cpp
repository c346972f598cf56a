// The command collisions, as a user runs it.
#include <gtest/gtest.h>

#include <string>

#include "CommandsTesting.h"

namespace {

const Arguments kCollisions = {"collisions", "--old", "old", "--new", "new"};

constexpr char kNoClass[] = "No objectClasses definition collisions found.\n";
constexpr char kNoType[] = "No attributeTypes definition collisions found.\n";
constexpr char kNoStorage[] =
    "No QORAttributeTypes definition collisions found.\n";
constexpr char kClasses[] =
    "The following objectClasses definition collisions found:\n";
constexpr char kTypes[] = "The following attributeTypes collisions found:\n";
constexpr char kStorage[] =
    "The following QORAttributeTypes definition collisions found:\n";

// The paragraph of a definition.
std::string one(const std::string &oid, const std::string &names) {
  return "OID --> " + oid + "\nName --> " + names + "\n\n";
}

class CollisionsTest : public ReadingCommandTest {
 protected:
  void writeBoth(const std::string &oldText, const std::string &newText) const {
    write("old/V3.user.at", oldText);
    write("new/V3.system.at", newText);
  }
};

TEST_F(CollisionsTest, HelpHoldsAnExample) {
  expectResult(
      runReading({"collisions", "--help"}), 0,
      std::string("Report the definitions of an old installation that collide "
                  "with a new release.\n"
                  "Usage: schema-migrate collisions [OPTIONS]\n\n") +
          kCommonOptionsHelp + kFormatHelp +
          replaceAll(kBothOptionsHelp, "carried\n\n",
                     "carried\n"
                     "  --all                       Also list every two "
                     "definitions that share a name or an OID\n\n") +
          "No collision does not mean that apply goes through: it also refuses "
          "a\n"
          "definition whose OID the release has under another name, which need "
          "not be\n"
          "a collision to the library; --all shows those.\n\n"
          "Example:\n"
          "  schema-migrate collisions --old /srv/old/schema --new "
          "/srv/new/schema\n\n" +
          exitStatusHelp("  2 collisions found\n"),
      "");
}

TEST_F(CollisionsTest, WrongUsageAndBadInputAreTrouble) {
  write("old/V3.user.at", "");
  write("list", "1.1");
  const struct {
    Arguments arguments;
    ExitStatus status;
    std::string error;
  } kCases[] = {
      {{"collisions", "--old", "old"}, kUsage, usageError("--new is required")},
      {{"collisions", "--new", "old"}, kUsage, usageError("--old is required")},
      {{"collisions", "--old", "old", "--new", "new"},
       kBadInput,
       "new: error: expected schema files (V3.user.at and so on), found "
       "none\n"},
      {{"collisions", "--old", "old", "--new", "old", "--excluded-oids",
        "list"},
       kBadInput,
       "list:1: error: expected a newline at the end of the file, found none; "
       "the last word would be ignored\n"},
  };
  for (const auto &[arguments, status, error] : kCases) {
    SCOPED_TRACE(error);
    expectResult(runReading(arguments), status, "", error);
  }
}

TEST_F(CollisionsTest, NoneOfEmptyFiles) {
  writeBoth("", "");
  expectResult(runReading(kCollisions), 0,
               std::string(kNoClass) + kNoType + kNoStorage, "");
}

TEST_F(CollisionsTest, NoneOfWhatIsIdenticalOrOnOneSide) {
  writeBoth(
      "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )\n"
      "objectclasses=( 1.2 NAME 'c' ABSTRACT )\n"
      "QORAttributetypes=( 1.1 LENGTH 4 )\n"
      "attributetypes=( 1.3 NAME 'mine' DESC 'x' )\n",
      "attributetypes=( 1.1 NAME ( 'A' 'B' ) DESC 'x' )\n"
      "objectclasses=( 1.2 NAME 'C' ABSTRACT )\n"
      "QORAttributetypes=( 1.1 LENGTH 4 )\n"
      "attributetypes=( 1.4 NAME 'theirs' DESC 'x' )\n");
  expectResult(runReading(kCollisions), 0,
               std::string(kNoClass) + kNoType + kNoStorage, "");
}

TEST_F(CollisionsTest, OneKindIsEnough) {
  const struct {
    const char *oldText;
    const char *newText;
    std::string out;
  } kCases[] = {
      {"objectclasses=( 1.2 NAME ( 'c' 'd' ) ABSTRACT )",
       "objectclasses=( 1.9 NAME 'C' AUXILIARY )",
       kClasses + one("1.2", "c, d") + kNoType + kNoStorage},
      {"attributetypes=( 1.1 NAME ( 'A' 'b' ) DESC 'x' )",
       "attributetypes=( 1.1 NAME 'a' DESC 'y' )",
       kNoClass + (kTypes + one("1.1", "A, b")) + kNoStorage},
      {"QORAttributetypes=( 1.1 DBNAME ( 'a' 'b' ) LENGTH 4 )",
       "QORAttributetypes=( 1.1 LENGTH 5 )",
       std::string(kNoClass) + kNoType + kStorage + one("1.1", "")},
      // Its OID is the key of a definition of another kind.
      {"attributetypes=( 1.1 NAME 'a' DESC 'x' )",
       "QORAttributetypes=( 1.1 LENGTH 5 )",
       kNoClass + (kTypes + one("1.1", "a")) + kNoStorage},
  };
  for (const auto &[oldText, newText, out] : kCases) {
    SCOPED_TRACE(oldText);
    writeBoth(oldText, newText);
    expectResult(runReading(kCollisions), kFindings, out, "");
  }
}

TEST_F(CollisionsTest, AllKindsInTheOrderOfTheirKeys) {
  writeBoth(
      "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n"
      "attributetypes=( 1.1 NAME 'C' DESC 'x' )\n"
      "attributetypes=( 1.3 NAME 'a' DESC 'x' )\n"
      "objectclasses=( 1.5 NAME 'd' ABSTRACT )\n"
      "objectclasses=( 1.4 NAME 'e' ABSTRACT )\n"
      "QORAttributetypes=( 1.2 LENGTH 4 )\n"
      "QORAttributetypes=( 1.1 LENGTH 4 )\n",
      "attributetypes=( 1.1 NAME 'c' DESC 'y' )\n"
      "attributetypes=( 1.2 NAME 'b' DESC 'y' )\n"
      "attributetypes=( 1.3 NAME 'a' DESC 'y' )\n"
      "objectclasses=( 1.4 NAME 'e' AUXILIARY )\n"
      "objectclasses=( 1.5 NAME 'd' AUXILIARY )\n"
      "QORAttributetypes=( 1.1 LENGTH 5 )\n"
      "QORAttributetypes=( 1.2 LENGTH 5 )\n");
  const std::string out = kClasses + one("1.5", "d") + one("1.4", "e") +
                          kTypes + one("1.3", "a") + one("1.2", "b") +
                          one("1.1", "C") + kStorage + one("1.1", "") +
                          one("1.2", "");
  expectResult(runReading(kCollisions), kFindings, out, "");
}

TEST_F(CollisionsTest, WhatIsExcludedDoesNotCollide) {
  write("list", "1.1\n1.2 # 1.3\n");
  writeBoth(
      "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
      "QORAttributetypes=( 1.1 LENGTH 4 )\n"
      "objectclasses=( 1.2 NAME 'c' ABSTRACT )\n"
      "objectclasses=( 1.3 NAME 'd' ABSTRACT )\n",
      "attributetypes=( 1.1 NAME 'a' DESC 'y' )\n"
      "QORAttributetypes=( 1.1 LENGTH 5 )\n"
      "objectclasses=( 1.2 NAME 'c' AUXILIARY )\n"
      "objectclasses=( 1.3 NAME 'd' AUXILIARY )\n");
  Arguments arguments = kCollisions;
  arguments.insert(arguments.end(), {"--excluded-oids", "list"});
  expectResult(runReading(arguments), kFindings,
               kClasses + one("1.3", "d") + kNoType + kNoStorage, "");
  write("list", "1.1\n1.2\n1.3\n");
  expectResult(runReading(arguments), 0,
               std::string(kNoClass) + kNoType + kNoStorage, "");
}

TEST_F(CollisionsTest, WarnsOfWhatIsIgnored) {
  writeBoth("",
            "QORAttributetypes=( 1.1 LENGTH 4 )\n"
            "QORAttributetypes=( 1.1 LENGTH 5 )\n");
  expectResult(runReading(kCollisions), 0,
               std::string(kNoClass) + kNoType + kNoStorage,
               "new/V3.system.at:2: warning: storage definition (1.1) is "
               "ignored: new/V3.system.at:1 defines the same OID\n");
}

TEST_F(CollisionsTest, NamesTheFilesThatAreNotThere) {
  writeBoth("",
            "QORAttributetypes=( 1.1 LENGTH 4 )\n"
            "QORAttributetypes=( 1.1 LENGTH 5 )\n");
  expectResult(
      runAsItIs(kCollisions), 0, std::string(kNoClass) + kNoType + kNoStorage,
      onlyThere("old", "V3.user.at") + onlyThere("new", "V3.system.at") +
          "new/V3.system.at:2: warning: storage definition (1.1) is "
          "ignored: new/V3.system.at:1 defines the same OID\n");
  writeMissing("old");
  EXPECT_EQ(runAsItIs({"collisions", "--old", "old", "--new", "old"}).error,
            "");
}

TEST_F(CollisionsTest, OfTheExamples) {
  expectResult(
      runOnExamples({"collisions", "--old", "old-installation", "--new",
                     "new-release", "--excluded-oids", "excluded-oids.txt"}),
      kFindings,
      kClasses + one("2.5.6.14", "device") +
          one("1.3.6.1.4.1.1466.101.120.111", "extensibleObject") +
          one("2.5.6.17", "groupOfUniqueNames") +
          one("1.3.6.1.4.1.250.3.15", "labeledUriObject") +
          one("0.9.2342.19200300.100.4.14", "rFC822LocalPart") + kTypes +
          one("1.3.6.1.4.1.1466.101.120.6", "altServer") +
          one("2.5.4.13", "description") +
          one("1.3.6.1.4.1.250.1.57", "labeledUri") +
          one("0.9.2342.19200300.100.1.40", "personalTitle") +
          one("2.5.4.20", "telephoneNumber") + one("2.5.4.12", "title") +
          kStorage + one("0.9.2342.19200300.100.1.3", "") +
          one("1.3.6.1.4.1.250.1.57", "") + one("2.5.4.13", "") +
          one("2.5.4.20", "") + one("2.5.4.3", ""),
      "");
}

}  // namespace
