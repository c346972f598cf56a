#include "Conflicts.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "MigrateTesting.h"
#include "Schemas.h"
#include "support/ContractLeaks.h"

namespace {

using Files = std::vector<std::pair<std::string, std::string>>;
using Lines = std::vector<std::string>;

constexpr char kHint[] =
    "nothing was written; to leave a definition of the old installation out, "
    "list its OID in the file of excluded OIDs";

// Definitions of an attribute type, an object class and a storage definition.
std::string type(const std::string &oid, const std::string &name,
                 const std::string &description = "x") {
  return "attributetypes=( " + oid + " NAME '" + name + "' DESC '" +
         description + "' )\n";
}

std::string objectClass(const std::string &oid, const std::string &name) {
  return "objectclasses=( " + oid + " NAME '" + name + "' ABSTRACT )\n";
}

std::string storage(const std::string &oid, const std::string &length = "4") {
  return "QORAttributetypes=( " + oid + " LENGTH " + length + " )\n";
}

class ConflictsTest : public MigrateTest {
 protected:
  ConflictsTest() { writeSmallRelease(); }

  void writeAll(const Files &files) const {
    for (const auto &[name, text] : files) {
      write(name, text);
    }
  }

  Lines conflicts() const {
    Schemas schemas(path("old"), path("new"));
    if (std::filesystem::exists(path("excluded"))) {
      schemas.readExcludedOids(path("excluded"));
    }
    schemas.compare();
    return relative(findConflicts(&schemas));
  }
};

struct ConflictCase {
  const char *name;
  Files files;
  Lines lines;
  const char *excluded;  // OIDs that resolve it
};

void PrintTo(const ConflictCase &conflictCase, std::ostream *out) {
  *out << conflictCase.name;
}

class ConflictsReasonTest : public ConflictsTest,
                            public testing::WithParamInterface<ConflictCase> {};

TEST_P(ConflictsReasonTest, IsGivenAndNothingIsWritten) {
  writeAll(GetParam().files);
  EXPECT_EQ(conflicts(), GetParam().lines);
  EXPECT_EQ(applyTrouble(), lines(GetParam().lines) + kHint);
}

TEST_P(ConflictsReasonTest, IsResolvedByExcludingTheOid) {
  writeAll(GetParam().files);
  write("excluded", std::string(GetParam().excluded) + '\n');
  EXPECT_EQ(conflicts(), Lines());
  const ApplyResult result = runApply();
  EXPECT_EQ(result.warnings, Lines());
  EXPECT_EQ(result.written, result.newRead);
}

const ConflictCase kCases[] = {
    {"OnlyStorageOfAnIdenticalType",
     {{"old/V3.user.at", type("1.1", "a") + storage("1.1")},
      {"new/V3.user.at", type("1.1", "a")}},
     {"old/V3.user.at:2: error: storage definition (1.1) cannot be carried: "
      "the release lacks it, and its attribute type is not carried"},
     "1.1"},
    {"TypeFromConfigAt",
     {{"old/V3.config.at", type("1.1", "a")}},
     {"old/V3.config.at:1: error: attribute type 'a' (1.1) cannot be carried: "
      "the release lacks it, and nothing from V3.config.at can be added to a "
      "release"},
     "1.1"},
    {"StorageFromConfigAt",
     {{"old/V3.config.at", "\n" + type("1.1", "a") + storage("1.1")},
      {"new/V3.config.at", type("1.1", "a")}},
     {"old/V3.config.at:3: error: storage definition (1.1) cannot be carried: "
      "the release lacks it, and nothing from V3.config.at can be added to a "
      "release"},
     "1.1"},
    {"ClassFromConfigOc",
     {{"old/V3.config.oc", objectClass("2.1", "k")}},
     {"old/V3.config.oc:1: error: object class 'k' (2.1) cannot be carried: "
      "the release lacks it, and nothing from V3.config.oc can be added to a "
      "release"},
     "2.1"},
    {"ClassFromModifiedSchema",
     {{"old/V3.modifiedschema", objectClass("2.1", "k")}},
     {"old/V3.modifiedschema:1: error: object class 'k' (2.1) cannot be "
      "carried: the release lacks it, and nothing from V3.modifiedschema can "
      "be added to a release"},
     "2.1"},
    {"TypeWithTheNameOfAnother",
     {{"old/V3.user.at", type("1.1", "Mail")},
      {"new/V3.system.at", "# first\n" + type("1.2", "mail")}},
     {"old/V3.user.at:1: error: attribute type 'Mail' (1.1) cannot be carried: "
      "the release has this name with another OID: new/V3.system.at:2, "
      "attribute type 'mail' (1.2)"},
     "1.1"},
    {"ClassWithTheNameOfAnother",
     {{"old/V3.user.oc", objectClass("2.1", "TOP")}},
     {"old/V3.user.oc:1: error: object class 'TOP' (2.1) cannot be carried: "
      "the release has this name with another OID: new/V3.system.oc:1, object "
      "class 'top' (2.5.6.0)"},
     "2.1"},
    {"TypeThatIsInConfigAt",
     {{"old/V3.user.at", type("1.1", "a", "y")},
      {"new/V3.config.at", type("1.1", "a", "x")}},
     {"old/V3.user.at:1: error: attribute type 'a' (1.1) cannot be carried: "
      "the release has it in a file that is copied unchanged: "
      "new/V3.config.at:1, attribute type 'a' (1.1)"},
     "1.1"},
    {"ClassThatIsInConfigOc",
     {{"old/V3.config.oc", "objectclasses=( 2.1 NAME 'k' AUXILIARY )\n"},
      {"new/V3.config.oc", objectClass("2.1", "k")}},
     {"old/V3.config.oc:1: error: object class 'k' (2.1) cannot be carried: "
      "the release has it in a file that is copied unchanged: "
      "new/V3.config.oc:1, object class 'k' (2.1)"},
     "2.1"},
    {"StorageThatIsInConfigAt",
     {{"old/V3.user.at", type("1.1", "a") + storage("1.1", "5")},
      {"new/V3.config.at", type("1.1", "a") + storage("1.1", "4")}},
     {"old/V3.user.at:2: error: storage definition (1.1) cannot be carried: "
      "the release has it in a file that is copied unchanged: "
      "new/V3.config.at:2, storage definition (1.1)"},
     "1.1"},
    {"TypeWithTheOidOfAnotherType",
     {{"old/V3.user.at", type("1.1", "a")},
      {"new/V3.qor.at", type("1.1", "b")}},
     {"old/V3.user.at:1: error: attribute type 'a' (1.1) cannot be carried: "
      "the release has this OID with another definition: new/V3.qor.at:1, "
      "attribute type 'b' (1.1)"},
     "1.1"},
    {"TypeWithTheOidOfAClass",
     {{"old/V3.user.at", type("2.5.6.0", "a")}},
     {"old/V3.user.at:1: error: attribute type 'a' (2.5.6.0) cannot be "
      "carried: the release has this OID with another definition: "
      "new/V3.system.oc:1, object class 'top' (2.5.6.0)"},
     "2.5.6.0"},
    {"TypeWithTheOidAndNameOfAClass",
     {{"old/V3.user.at", type("2.5.6.0", "top")}},
     {"old/V3.user.at:1: error: attribute type 'top' (2.5.6.0) cannot be "
      "carried: the release has this OID with another definition: "
      "new/V3.system.oc:1, object class 'top' (2.5.6.0)"},
     "2.5.6.0"},
    {"ClassWithTheOidOfAType",
     {{"old/V3.user.oc", objectClass("1.1", "k")},
      {"new/V3.user.at", type("1.1", "a")}},
     {"old/V3.user.oc:1: error: object class 'k' (1.1) cannot be carried: the "
      "release has this OID with another definition: new/V3.user.at:1, "
      "attribute type 'a' (1.1)"},
     "1.1"},
    {"ClassWithTheOidOfAClass",
     {{"old/V3.user.oc", objectClass("2.5.6.0", "k")}},
     {"old/V3.user.oc:1: error: object class 'k' (2.5.6.0) cannot be carried: "
      "the release has this OID with another definition: new/V3.system.oc:1, "
      "object class 'top' (2.5.6.0)"},
     "2.5.6.0"},
    {"TwoTypesWithOneOid",
     {{"old/V3.user.at", type("1.1", "a") + type("1.1", "b")},
      {"old/V3.qor.at", type("1.1", "c")}},
     {"old/V3.user.at:2: error: attribute type 'b' (1.1) cannot be carried: "
      "another definition has the same OID: old/V3.user.at:1, attribute type "
      "'a' (1.1)",
      "old/V3.qor.at:1: error: attribute type 'c' (1.1) cannot be carried: "
      "another definition has the same OID: old/V3.user.at:1, attribute type "
      "'a' (1.1)"},
     "1.1"},
    {"ATypeAndAClassWithOneOid",
     {{"old/V3.user.oc", objectClass("1.1", "k")},
      {"old/V3.user.at", type("1.1", "a")}},
     {"old/V3.user.oc:1: error: object class 'k' (1.1) cannot be carried: "
      "another definition has the same OID: old/V3.user.at:1, attribute type "
      "'a' (1.1)"},
     "1.1"},
    {"StorageWithoutType",
     {{"old/V3.user.at", storage("1.1")}},
     {"old/V3.user.at:1: error: storage definition (1.1) cannot be carried: "
      "there is no attribute type with its OID"},
     "1.1"},
    {"StorageOfAClassOfTheRelease",
     {{"old/V3.user.oc", storage("2.5.6.0")}},
     {"old/V3.user.oc:1: error: storage definition (2.5.6.0) cannot be "
      "carried: there is no attribute type with its OID"},
     "2.5.6.0"},
    {"StorageOfACarriedClass",
     {{"old/V3.user.oc", storage("2.1") + objectClass("2.1", "k")}},
     {"old/V3.user.oc:1: error: storage definition (2.1) cannot be carried: "
      "there is no attribute type with its OID"},
     "2.1"},
    {"SeveralInOrder",
     {{"old/V3.modifiedschema", storage("1.3")},
      {"old/V3.user.oc", objectClass("2.1", "top")},
      {"old/V3.user.at", storage("1.1") + type("1.2", "a") + storage("1.2")}},
     {"old/V3.user.at:1: error: storage definition (1.1) cannot be carried: "
      "there is no attribute type with its OID",
      "old/V3.user.oc:1: error: object class 'top' (2.1) cannot be carried: "
      "the release has this name with another OID: new/V3.system.oc:1, object "
      "class 'top' (2.5.6.0)",
      "old/V3.modifiedschema:1: error: storage definition (1.3) cannot be "
      "carried: the release lacks it, and nothing from V3.modifiedschema can "
      "be added to a release"},
     "1.1 1.2 2.1 1.3"},
};

std::string caseName(const testing::TestParamInfo<ConflictCase> &info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Reasons, ConflictsReasonTest,
                         testing::ValuesIn(kCases), caseName);

// There is no OID that could be excluded.
TEST_F(ConflictsTest, TwoDefinitionsWithoutOidAreOne) {
  write("old/V3.user.at",
        "attributetypes=( NAME 'a' DESC 'x' )\n"
        "attributetypes=( NAME 'b' DESC 'x' )\n");
  EXPECT_EQ(conflicts(),
            (Lines{"old/V3.user.at:2: error: attribute type 'b' () cannot be "
                   "carried: another definition has the same OID: "
                   "old/V3.user.at:1, attribute type 'a' ()"}));
}

TEST_F(ConflictsTest, TheStorageOfARepeatedTypeIsOne) {
  write("old/V3.user.at", type("1.1", "a") + type("1.2", "a") + storage("1.2"));
  const Lines found = leaksDefinitions([this] { return conflicts(); });
  EXPECT_EQ(found,
            (Lines{"old/V3.user.at:3: error: storage definition (1.2) cannot "
                   "be carried: there is no attribute type with its OID"}));
}

// Of an OID that both have, only the object class is written.
TEST_F(ConflictsTest, TheStorageOfATypeThatAClassHidesIsOne) {
  writeAll({{"old/V3.user.at", storage("1.1")},
            {"new/V3.user.at", type("1.1", "a") + objectClass("1.1", "k")}});
  EXPECT_EQ(conflicts(),
            (Lines{"old/V3.user.at:1: error: storage definition (1.1) cannot "
                   "be carried: the release has this OID with another "
                   "definition: new/V3.user.at:2, object class 'k' (1.1)"}));
}

TEST_F(ConflictsTest, OfTwoDefinitionsInTheWayTheAttributeTypeIsNamed) {
  writeAll(
      {{"old/V3.user.at", type("1.1", "b")},
       {"old/V3.user.oc", objectClass("1.2", "l")},
       {"new/V3.user.oc", objectClass("1.1", "k") + type("1.1", "a") +
                              objectClass("1.2", "m") + type("1.2", "c")}});
  EXPECT_EQ(conflicts(),
            (Lines{"old/V3.user.at:1: error: attribute type 'b' (1.1) cannot "
                   "be carried: the release has this OID with another "
                   "definition: new/V3.user.oc:2, attribute type 'a' (1.1)",
                   "old/V3.user.oc:1: error: object class 'l' (1.2) cannot be "
                   "carried: the release has this OID with another definition: "
                   "new/V3.user.oc:4, attribute type 'c' (1.2)"}));
}

TEST_F(ConflictsTest, WhatTheReleaseCanTakeIsNone) {
  writeAll({
      {"old/V3.user.at", type("1.1", "added") + storage("1.1") +
                             storage("1.2", "7") +
                             type("1.2", "replaced", "y")},
      {"old/V3.user.oc", objectClass("2.1", "added")},
      {"old/V3.config.at", type("1.4", "modified", "y")},
      {"old/V3.modifiedschema", type("1.3", "identical")},
      {"new/V3.user.at",
       type("1.2", "replaced") + storage("1.2") + type("1.3", "identical")},
      {"new/V3.modifiedschema", type("1.4", "modified")},
  });
  EXPECT_EQ(conflicts(), Lines());
}

// Written, its NAME would take what stands behind it for names.
TEST_F(ConflictsTest, AnObjectClassWithoutNameIsOne) {
  writeAll({{"old/V3.user.oc", "objectclasses=( 1.1 ABSTRACT )\n"},
            {"old/V3.user.at", "attributetypes=( 1.2 OBSOLETE )\n"}});
  EXPECT_EQ(conflicts(), (Lines{"old/V3.user.oc:1: error: object class (1.1) "
                                "cannot be carried: it has no name"}));
  writeAll({{"new/V3.user.oc", "objectclasses=( 1.1 ABSTRACT )\n"}});
  EXPECT_EQ(conflicts(), Lines());
}

// What is copied or withdrawn is not written, and a second one without name is.
TEST_F(ConflictsTest, OfTheReleaseOnlyWhatIsWrittenNeedsAName) {
  const auto nameless = [](const std::string &oid) {
    return "objectclasses=( " + oid + " ABSTRACT )\n";
  };
  writeAll({{"old/V3.user.at", ""},
            {"new/V3.user.oc", nameless("1.1") + nameless("1.2")},
            {"new/V3.config.oc", nameless("1.3")},
            {"new/V3.modifiedschema", nameless("1.4") + nameless("1.5")},
            {"list", "1.2 1.4\n"}});
  const Lines found = leaksDefinitions([this] {
    Schemas schemas(path("old"), path("new"));
    schemas.compare();
    schemas.merge();
    schemas.withdraw(path("list"));
    return relative(findUnwritable(schemas));
  });
  const std::string end = " cannot be written: it has no name";
  EXPECT_EQ(found, (Lines{"new/V3.user.oc:1: error: object class (1.1)" + end,
                          "new/V3.user.oc:2: error: object class (1.2)" + end,
                          "new/V3.modifiedschema:2: error: object class (1.5)" +
                              end}));
}

TEST_F(ConflictsTest, TheNamesOfOtherKindsAreFree) {
  writeAll({{"old/V3.user.at", type("1.1", "top") + storage("1.1")},
            {"old/V3.user.oc", objectClass("2.1", "a")},
            {"new/V3.user.at", type("1.2", "a")}});
  EXPECT_EQ(conflicts(), Lines());
}

// What is not carried cannot be in the way of anything.
TEST_F(ConflictsTest, WhatIsNotCarriedIsNone) {
  writeAll({{"old/V3.config.at", type("1.1", "a") + storage("1.1")},
            {"old/V3.user.at", type("1.2", "b") + type("1.3", "b")},
            {"new/V3.config.at", type("1.1", "a") + storage("1.1")},
            {"new/V3.user.at", type("1.2", "b")}});
  const Lines found = leaksDefinitions([this] { return conflicts(); });
  EXPECT_EQ(found, Lines());
}

TEST_F(ConflictsTest, TheStorageOfAnExcludedTypeIsExcludedWithIt) {
  writeAll({{"old/V3.user.at", type("1.1", "a") + storage("1.1")},
            {"excluded", "1.1\n"}});
  EXPECT_EQ(conflicts(), Lines());
}

}  // namespace
