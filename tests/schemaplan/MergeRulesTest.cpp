// What stands against carrying definitions.
#include <gtest/gtest.h>

#include <string>

#include "PlanTesting.h"

namespace {

class MergeRulesTest : public PlanTest,
                       public testing::WithParamInterface<CheckCase> {};

TEST_P(MergeRulesTest, Finds) {
  write(GetParam().files);
  EXPECT_EQ(stoppers(), GetParam().text);
}

// Each of the definitions that are found has one of these.
TEST_P(MergeRulesTest, FindsNothingThatIsExcluded) {
  write(GetParam().files);
  schemaplan::Rules rules;
  rules.excludedOids = {"", "1.1", "1.2", "2.1"};
  EXPECT_EQ(stoppers(rules), "");
}

const Files kRelease = {
    {"new/V3.user.at", type("9.1", "r")},
    {"old/V3.user.at", type("9.1", "r")},
};

Files with(Files files) {
  files.insert(kRelease.begin(), kRelease.end());
  return files;
}

const CheckCase kClean[] = {
    {"WhatTheReleaseLacks",
     {{"old/V3.user.at", type("1.1", "a") + storage("1.1")},
      {"old/V3.qor.oc", objectClass("2.1", "k")},
      {"new/V3.user.at", type("9.1", "r")}},
     ""},
    {"WhatTheReleaseHasInAnotherForm",
     {{"old/V3.user.at", type("1.1", "A", "x") + storage("1.1", "4")},
      {"new/V3.system.at", type("1.1", "a", "y") + storage("1.1", "5")},
      {"old/V3.user.oc", objectClass("2.1", "k", "ABSTRACT")},
      {"new/V3.user.oc", objectClass("2.1", "k", "AUXILIARY")}},
     ""},
    {"WhatTheReleaseHasInTheSameFormAnywhere",
     {{"old/V3.config.at", type("1.1", "a") + storage("1.1")},
      {"old/V3.modifiedschema", objectClass("2.1", "k")},
      {"new/V3.config.at", type("1.1", "a") + storage("1.1")},
      {"new/V3.config.oc", objectClass("2.1", "k")}},
     ""},
    {"TheTypeOfStorageThatTheReleaseHasAlready",
     {{"old/V3.user.at", type("1.1", "a") + storage("1.1")},
      {"new/V3.user.at", storage("1.1")}},
     ""},
    {"WhatTheReleaseHasInAWrittenFile",
     {{"old/V3.config.oc", objectClass("2.1", "k", "AUXILIARY")},
      {"new/V3.modifiedschema", objectClass("2.1", "k")}},
     ""},
};

const CheckCase kNotMergeable[] = {
    {"OnlyStorageOfAnIdenticalType",
     {{"old/V3.user.at", type("1.1", "a") + storage("1.1")},
      {"new/V3.user.at", type("1.1", "a")}},
     "./old/V3.user.at:2:21: error: [NOT-MERGEABLE] expected storage "
     "definition (1.1) in the release, found none; its attribute type is not "
     "carried; the storage definition cannot be carried\n"
     "QORAttributetypes=( 1.1 LENGTH 4 )\n"
     "                    ^\n"},
    {"TypeFromConfigAt", with({{"old/V3.config.at", type("1.1", "a")}}),
     "./old/V3.config.at:1:27: error: [NOT-MERGEABLE] expected attribute type "
     "'a' (1.1) in the release, found none; nothing from V3.config.at can be "
     "added; the attribute type cannot be carried\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
     "                          ^\n"},
    {"StorageFromConfigAt",
     {{"old/V3.config.at", type("1.1", "a") + storage("1.1")},
      {"new/V3.config.at", type("1.1", "a")}},
     "./old/V3.config.at:2:21: error: [NOT-MERGEABLE] expected storage "
     "definition (1.1) in the release, found none; nothing from V3.config.at "
     "can be added; the storage definition cannot be carried\n"
     "QORAttributetypes=( 1.1 LENGTH 4 )\n"
     "                    ^\n"},
    {"ClassFromModifiedSchema",
     with({{"old/V3.modifiedschema", objectClass("2.1", "k")}}),
     "./old/V3.modifiedschema:1:26: error: [NOT-MERGEABLE] expected object "
     "class 'k' (2.1) in the release, found none; nothing from "
     "V3.modifiedschema can be added; the object class cannot be carried\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"
     "                         ^\n"},
};

const CheckCase kNames[] = {
    {"TypeWithTheNameOfAnother",
     {{"old/V3.user.at", type("1.1", "Mail")},
      {"new/V3.system.at", "# first\n" + type("1.3", "mail")}},
     "./old/V3.user.at:1:18: error: [NAME-OTHER-OID] expected the OID of the "
     "release, 1.3, found 1.1; the release has the name at "
     "./new/V3.system.at:2, attribute type 'mail' (1.3); the attribute type "
     "cannot be carried\n"
     "attributetypes=( 1.1 NAME 'Mail' DESC 'x' )\n"
     "                 ^\n"},
    {"ClassWithTheNameOfAnother",
     {{"old/V3.user.oc", objectClass("2.1", "TOP")},
      {"new/V3.system.oc", objectClass("2.3", "top")}},
     "./old/V3.user.oc:1:17: error: [NAME-OTHER-OID] expected the OID of the "
     "release, 2.3, found 2.1; the release has the name at "
     "./new/V3.system.oc:1, object class 'top' (2.3); the object class cannot "
     "be carried\n"
     "objectclasses=( 2.1 NAME 'TOP' ABSTRACT )\n"
     "                ^\n"},
    {"TypeThatTheReleaseHasTwice",
     {{"old/V3.user.at", type("1.1", "a", "y")},
      {"new/V3.user.at", type("1.1", "a") + type("1.0", "A")}},
     "./old/V3.user.at:1:27: error: [NAME-OTHER-OID] expected one definition "
     "of the name in the release, found ./new/V3.user.at:1, attribute type 'a' "
     "(1.1), and ./new/V3.user.at:2, attribute type 'A' (1.0), which may come "
     "before this one in the result; the attribute type cannot be carried\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'y' )\n"
     "                          ^\n"},
    {"TypeThatIsInConfigAt",
     {{"old/V3.user.at", type("1.1", "a", "y")},
      {"new/V3.config.at", type("1.1", "a", "x")}},
     "./old/V3.user.at:1:27: error: [IN-COPIED-FILE] expected the definition "
     "as the release has it in a file that is copied, ./new/V3.config.at:1, "
     "attribute type 'a' (1.1), found one that differs in DESC; the attribute "
     "type cannot be carried\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'y' )\n"
     "                          ^\n"},
    {"StorageThatIsInConfigAt",
     {{"old/V3.user.at", type("1.1", "a") + storage("1.1", "5")},
      {"new/V3.config.at", type("1.1", "a") + storage("1.1", "4")}},
     "./old/V3.user.at:2:21: error: [IN-COPIED-FILE] expected the definition "
     "as the release has it in a file that is copied, ./new/V3.config.at:2, "
     "storage definition (1.1), found one that differs in LENGTH; the storage "
     "definition cannot be carried\n"
     "QORAttributetypes=( 1.1 LENGTH 5 )\n"
     "                    ^\n"},
};

const CheckCase kOids[] = {
    {"TypeWithTheOidOfAnother",
     {{"old/V3.user.at", type("1.1", "a")},
      {"new/V3.user.at", type("1.1", "b")}},
     "./old/V3.user.at:1:18: error: [OID-OTHER-NAME] expected an OID that the "
     "release does not have, found that of ./new/V3.user.at:1, attribute type "
     "'b' (1.1); the attribute type cannot be carried\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
     "                 ^\n"},
    {"TypeWithTheOidOfAClass",
     {{"old/V3.user.at", type("1.1", "a")},
      {"new/V3.user.oc", objectClass("1.1", "a")}},
     "./old/V3.user.at:1:18: error: [OID-OTHER-NAME] expected an OID that the "
     "release does not have, found that of ./new/V3.user.oc:1, object class "
     "'a' (1.1); the attribute type cannot be carried\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
     "                 ^\n"},
    {"ClassWithTheOidOfAType",
     {{"old/V3.user.oc", objectClass("2.1", "k")},
      {"new/V3.user.at", type("2.1", "b")}},
     "./old/V3.user.oc:1:17: error: [OID-OTHER-NAME] expected an OID that the "
     "release does not have, found that of ./new/V3.user.at:1, attribute type "
     "'b' (2.1); the object class cannot be carried\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"
     "                ^\n"},
    {"StorageWithTheOidOfAClass",
     {{"old/V3.user.at", type("1.1", "a") + storage("1.1", "5")},
      {"new/V3.user.at", type("1.1", "a") + storage("1.1")},
      {"new/V3.user.oc", objectClass("1.1", "k")}},
     "./old/V3.user.at:2:21: error: [OID-OTHER-NAME] expected an OID that the "
     "release does not have, found that of ./new/V3.user.oc:1, object class "
     "'k' (1.1); the storage definition cannot be carried\n"
     "QORAttributetypes=( 1.1 LENGTH 5 )\n"
     "                    ^\n"},
    {"TwoThatAreCarried",
     with({{"old/V3.system.at", type("1.1", "a") + type("1.1", "b")},
           {"old/V3.user.oc", objectClass("1.1", "k")}}),
     "./old/V3.system.at:1:18: error: [OID-OTHER-NAME] expected an OID that no "
     "other definition is carried with, found that of ./old/V3.user.oc:1, "
     "object class 'k' (1.1); the attribute type cannot be carried\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
     "                 ^\n"
     "./old/V3.system.at:2:18: error: [OID-OTHER-NAME] expected an OID that no "
     "other definition is carried with, found that of ./old/V3.user.oc:1, "
     "object class 'k' (1.1); the attribute type cannot be carried\n"
     "attributetypes=( 1.1 NAME 'b' DESC 'x' )\n"
     "                 ^\n"},
    {"NamelessClass",
     with({{"old/V3.user.oc", "objectclasses=( 2.1 ABSTRACT )\n"}}),
     "./old/V3.user.oc:1:17: error: [NAMELESS-CLASS] expected a name of the "
     "object class, found none; the object class cannot be carried\n"
     "objectclasses=( 2.1 ABSTRACT )\n"
     "                ^\n"},
    {"StorageWithoutType",
     with({{"old/V3.system.at", storage("1.1")},
           {"old/V3.user.oc", objectClass("1.1", "k")}}),
     "./old/V3.system.at:1:21: error: [STORAGE-WITHOUT-TYPE] expected an "
     "attribute type with the OID 1.1 in the release or to be carried, found "
     "none; the storage definition cannot be carried\n"
     "QORAttributetypes=( 1.1 LENGTH 4 )\n"
     "                    ^\n"},
};

INSTANTIATE_TEST_SUITE_P(Nothing, MergeRulesTest, testing::ValuesIn(kClean),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(NotMergeable, MergeRulesTest,
                         testing::ValuesIn(kNotMergeable), nameOf);
INSTANTIATE_TEST_SUITE_P(Names, MergeRulesTest, testing::ValuesIn(kNames),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Oids, MergeRulesTest, testing::ValuesIn(kOids),
                         nameOf);

}  // namespace
