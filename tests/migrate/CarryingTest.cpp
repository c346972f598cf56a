#include "Carrying.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "MigrateTesting.h"
#include "Plan.h"
#include "support/ContractLeaks.h"

namespace fs = std::filesystem;

using schemacheck::Code;
using schemaplan::PlannedDefinition;

namespace {

using Texts = std::vector<std::string>;

class CarryingTest : public MigrateTest {
 protected:
  static Texts verdictsOf(const Migration &migration) {
    Texts texts;
    for (const PlannedDefinition &planned : migration.plan().definitions) {
      texts.push_back(planned.statement->inWords() + ": " +
                      verdictName(planned.verdict));
    }
    return texts;
  }

  // What is planned for each definition of the old installation.
  Texts verdicts() const { return verdictsOf(Migration(options().migration)); }

  // What the steps throw as InternalError when `change` is made to the files
  // between the plan and its execution.
  std::string faultAfter(const std::function<void()> &change) const {
    const Migration migration(options().migration);
    EXPECT_EQ(migration.stoppers().size(), 0U);
    change();
    try {
      Carrying carrying(migration);
      carrying.compare();
      carrying.merge();
    } catch (const InternalError &error) {
      return relative(std::string(error.what()));
    }
    ADD_FAILURE() << "no InternalError was thrown";
    return "";
  }
};

// The library leaves the same definitions for the merge as the plan does.
TEST_F(CarryingTest, CarriesWhatIsPlanned) {
  write("excluded", "1.4 1.5 1.6\n2.4 2.5 2.6\n");
  write("old/V3.user.at",
        "attributetypes {\n"
        "  ( 1.1 NAME 'a' DESC 'x' )\n"
        "  ( 1.2 NAME 'b' DESC 'y' )\n"
        "  ( 1.3 NAME 'c' DESC 'x' )\n"
        "  ( 1.4 NAME 'd' DESC 'x' )\n"
        "  ( 1.5 NAME 'e' DESC 'y' )\n"
        "  ( 1.6 NAME 'f' DESC 'x' )\n"
        "  ( 1.4 NAME 'A' DESC 'x' )\n"
        "  ( NAME 'g' DESC 'x' )\n"
        "}\n");
  write("old/V3.qor.oc",
        "objectclasses {\n"
        "  ( 2.1 NAME 'a' STRUCTURAL )\n"
        "  ( 2.2 NAME 'b' AUXILIARY )\n"
        "  ( 2.3 NAME 'c' STRUCTURAL )\n"
        "  ( 2.4 NAME 'd' STRUCTURAL )\n"
        "  ( 2.5 NAME 'e' AUXILIARY )\n"
        "  ( 2.6 NAME 'f' STRUCTURAL )\n"
        "  ( 2.4 NAME 'A' STRUCTURAL )\n"
        "  ( NAME 'g' STRUCTURAL )\n"
        "}\n");
  write("old/V3.system.at",
        "QORAttributetypes {\n"
        "  ( 1.1 LENGTH 4 ) ( 1.2 LENGTH 5 ) ( 1.3 LENGTH 4 )\n"
        "  ( 1.4 LENGTH 4 ) ( 1.5 LENGTH 5 ) ( 1.6 LENGTH 4 )\n"
        "  ( 1.1 LENGTH 4 ) ( LENGTH 4 )\n"
        "}\n");
  write("new/V3.user.at",
        "attributetypes {\n"
        "  ( 1.1 NAME 'A' DESC 'x' ) ( 1.2 NAME 'b' DESC 'x' )\n"
        "  ( 1.5 NAME 'e' DESC 'x' ) ( 1.6 NAME 'f' DESC 'x' )\n"
        "}\n"
        "objectclasses {\n"
        "  ( 2.1 NAME 'a' STRUCTURAL ) ( 2.2 NAME 'b' STRUCTURAL )\n"
        "  ( 2.5 NAME 'e' STRUCTURAL ) ( 2.6 NAME 'f' STRUCTURAL )\n"
        "}\n"
        "QORAttributetypes {\n"
        "  ( 1.1 LENGTH 4 ) ( 1.2 LENGTH 4 ) ( 1.5 LENGTH 4 )\n"
        "  ( 1.6 LENGTH 4 )\n"
        "}\n");
  MigrationOptions inputs = options().migration;
  inputs.accepted = {Code::kShadowed, Code::kNoOid};
  const Migration migration(inputs);
  leaksDefinitions([&migration] {
    Carrying carrying(migration);
    carrying.compare();
    return 0;
  });
  EXPECT_EQ(verdictsOf(migration),
            (Texts{"attribute type 'a' (1.1): identical",
                   "attribute type 'b' (1.2): replaces the release's",
                   "attribute type 'c' (1.3): added",
                   "attribute type 'd' (1.4): excluded",
                   "attribute type 'e' (1.5): excluded",
                   "attribute type 'f' (1.6): excluded",
                   "attribute type 'A' (1.4): excluded",
                   "attribute type 'g' (): cannot be carried",
                   "object class 'a' (2.1): identical",
                   "object class 'b' (2.2): replaces the release's",
                   "object class 'c' (2.3): added",
                   "object class 'd' (2.4): excluded",
                   "object class 'e' (2.5): excluded",
                   "object class 'f' (2.6): excluded",
                   "object class 'A' (2.4): excluded",
                   "object class 'g' (): cannot be carried",
                   "storage definition (1.1): identical",
                   "storage definition (1.2): replaces the release's",
                   "storage definition (1.3): added",
                   "storage definition (1.4): excluded",
                   "storage definition (1.5): excluded",
                   "storage definition (1.6): excluded",
                   "storage definition (1.1): shadowed",
                   "storage definition (): cannot be carried"}));
}

// Attribute types and object classes meet by name, storage definitions by OID.
TEST_F(CarryingTest, ADefinitionMeetsThatOfItsNameWhateverItsOid) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.4 NAME 'b' DESC 'x' )\n");
  write("new/V3.user.at",
        "attributetypes=( 1.2 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.3 NAME ( 'c' 'b' ) DESC 'x' )\n");
  EXPECT_EQ(verdicts(), (Texts{"attribute type 'a' (1.1): cannot be carried",
                               "attribute type 'b' (1.4): added"}));
}

TEST_F(CarryingTest, WhatCanBeAddedIsWhatAUserQorOrSystemFileRecords) {
  for (const SchemaFile &file : kSchemaFiles) {
    write(std::string("old/") + file.name, std::string("attributetypes=( '") +
                                               file.name + "' NAME '" +
                                               file.name + "' DESC 'x' )\n");
  }
  writeSmallRelease();
  const Migration migration(options().migration);
  Texts addable;
  for (const PlannedDefinition &planned : migration.plan().definitions) {
    if (planned.verdict == schemaplan::Verdict::kAdded) {
      addable.push_back(planned.statement->oid());
    }
  }
  EXPECT_EQ(addable, (Texts{"V3.user.at", "V3.user.oc", "V3.qor.at",
                            "V3.qor.oc", "V3.system.at", "V3.system.oc"}));
}

TEST_F(CarryingTest, TheMergeMakesTheReleaseTheResult) {
  const FixedDate date;
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'old' )\n"
        "attributetypes=( 1.2 NAME 'b' DESC 'old' )\n");
  write("new/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'new' )\n"
        "attributetypes=( 1.3 NAME 'c' DESC 'new' )\n");
  const Migration migration(options().migration);
  Carrying carrying(migration);
  carrying.compare();
  carrying.merge();
  carrying.withdraw();
  fs::create_directory(path("out"));
  fs::create_directory(path("scratch"));
  carrying.write(path("out"), path("scratch"));
  const std::string end = " USAGE userApplications  )\n";
  EXPECT_EQ(read("out/V3.user.at"),
            kHeaderLine +
                ("attributetypes=( 1.1 NAME ( 'a'  )  DESC 'old'" + end) +
                "attributetypes=( 1.2 NAME ( 'b'  )  DESC 'old'" + end +
                "attributetypes=( 1.3 NAME ( 'c'  )  DESC 'new'" + end);
}

TEST_F(CarryingTest, SaysSoWhenTheLibraryDoesSomethingElse) {
  const std::string a = "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n";
  const std::string other = "attributetypes=( 1.1 NAME 'a' DESC 'y' )\n";
  write("old/V3.user.at", a);
  writeSmallRelease();
  write("new/V3.user.at", other);
  EXPECT_EQ(faultAfter([&] { write("old/V3.user.at", other); }),
            "old/V3.user.at:1: attribute type 'a' (1.1) is planned to be "
            "carried, and is not");
  EXPECT_EQ(faultAfter([&] { write("old/V3.user.at", a); }),
            "old/V3.user.at:1: attribute type 'a' (1.1) would be carried, and "
            "is not planned to be");
  write("new/V3.user.at", "");
  write("old/V3.config.at", "");
  EXPECT_EQ(faultAfter([this, &a] {
              write("old/V3.user.at", "");
              write("old/V3.config.at", a);
            }),
            "the merge of the two schemas failed");
}

TEST_F(CarryingTest, SaysSoWhenAFileChangesBetweenItsTwoReadings) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("old/V3.system.at", "");
  writeSmallRelease();
  const Migration migration(options().migration);
  const auto readAgain = [&migration] {
    return leaksAnalyser([&migration] {
      return leaksDefinitions([&migration] {
        const Carrying carrying(migration);
        return 0;
      });
    });
  };
  write("old/V3.user.at", "attributetypes=( 1.1 DESC 'x'\n");
  EXPECT_EQ(relative(troubleOf(readAgain)),
            "old/V3.user.at: error: cannot read the file; was it changed just "
            "now?");
  write("old/V3.user.at", "");
  fs::remove(path("old/V3.system.at"));
  EXPECT_EQ(relative(troubleOf(readAgain)),
            "old/V3.system.at: error: cannot read the file; was it changed "
            "just now?");
}

}  // namespace
