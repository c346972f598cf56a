#include "Plan.h"

#include <gtest/gtest.h>

#include <string>

#include "PlanTesting.h"

using schemaplan::Rules;

namespace {

TEST_F(PlanTest, OfNothingIsNothing) {
  write({{"old/V3.user.at", ""}, {"new/V3.user.at", type("1.1", "a")}});
  EXPECT_EQ(planned(), "");
  EXPECT_FALSE(PlanOfFiles(path(), {}).plan.changesAnything());
}

TEST_F(PlanTest, HasOneVerdictForEachDefinition) {
  write(
      {{"old/V3.user.at",
        type("1.1", "same") + type("1.2", "Other", "old") +
            type("1.3", "mine") + storage("1.3") + type("1.4", "listed") +
            type("1.5", "SAME", "again") + type("1.1", "same")},
       {"old/V3.user.oc", objectClass("2.1", "withdrawn")},
       {"old/V3.config.oc", objectClass("2.2", "stuck")},
       {"new/V3.system.at", type("1.1", "Same") + type("1.2", "other", "new")},
       {"new/V3.modifiedschema", objectClass("2.1", "withdrawn")}});
  Rules rules;
  rules.excludedOids = {"1.4", "9.9"};
  rules.modifiedOids = {"2.1"};
  EXPECT_EQ(
      planned(rules),
      "V3.user.at:1 attribute type 'same' (1.1): identical V3.system.at:1\n"
      "V3.user.at:2 attribute type 'Other' (1.2): replaces the release's "
      "V3.system.at:2, DESC neutral\n"
      "V3.user.at:3 attribute type 'mine' (1.3): added\n"
      "V3.user.at:4 storage definition (1.3): added\n"
      "V3.user.at:5 attribute type 'listed' (1.4): excluded: its OID is in the "
      "list of excluded ones\n"
      "V3.user.at:6 attribute type 'SAME' (1.5): shadowed V3.user.at:1 "
      "[SHADOWED] stops\n"
      "V3.user.at:7 attribute type 'same' (1.1): shadowed V3.user.at:1\n"
      "V3.user.oc:1 object class 'withdrawn' (2.1): withdrawn "
      "V3.modifiedschema:1\n"
      "V3.config.oc:1 object class 'stuck' (2.2): cannot be carried "
      "[NOT-MERGEABLE] stops\n"
      "excluded: 1.4 9.9\n");
}

TEST_F(PlanTest, CountsByKindAndVerdict) {
  write({{"old/V3.user.at", type("1.1", "a") + type("1.2", "b") +
                                type("1.3", "c") + storage("1.1")},
         {"old/V3.user.oc", objectClass("2.1", "k")},
         {"new/V3.user.at", type("1.1", "a") + type("1.2", "b", "y")}});
  using Row = std::array<std::size_t, schemaplan::kVerdicts>;
  const schemaplan::VerdictCounts expected = {Row{1, 0, 0, 0, 1, 1, 0},
                                              Row{0, 0, 0, 0, 1, 0, 0},
                                              Row{0, 0, 0, 0, 0, 0, 1}};
  EXPECT_EQ(PlanOfFiles(path(), {}).plan.counts(), expected);
}

TEST_F(PlanTest, ListsTheResult) {
  write({{"old/V3.user.at", type("1.1", "a") + type("1.2", "b") +
                                type("1.3", "c") + type("1.5", "e", "mine") +
                                storage("1.5")},
         {"new/V3.user.at", type("1.1", "a") + type("1.2", "b", "y") +
                                type("1.4", "d") + type("1.4", "D") +
                                storage("1.4") + type("1.5", "e")},
         {"new/V3.modifiedschema", type("1.6", "f") + storage("1.6")}});
  Rules rules;
  rules.excludedOids = {"1.3"};
  rules.modifiedOids = {"1.6"};
  const PlanOfFiles files(path(), rules);
  std::string text;
  for (const schemaplan::SidedDefinition &one : files.plan.result) {
    const bool isOld = one.side == &files.old.installation;
    EXPECT_TRUE(isOld || one.side == &files.release.installation);
    text += (isOld ? "old " : "new ") + one.statement->inWords() + '\n';
  }
  EXPECT_EQ(text,
            "new attribute type 'a' (1.1)\n"
            "new attribute type 'd' (1.4)\n"
            "new storage definition (1.4)\n"
            "old attribute type 'b' (1.2)\n"
            "old attribute type 'e' (1.5)\n"
            "old storage definition (1.5)\n");
}

// The library drops matching rules by name, so that it does not see these
// differ, and sees a difference where the files have none.
TEST_F(PlanTest, GoesByWhatTheLibraryKeeps) {
  write({{"old/V3.user.at",
          "attributetypes=( 1.1 NAME 'a' EQUALITY caseIgnoreMatch SYNTAX 1.2 "
          ")\n"
          "attributetypes=( 1.2 NAME 'b' EQUALITY caseExactMatch SYNTAX 1.2 "
          ")\n"},
         {"new/V3.user.at",
          "attributetypes=( 1.1 NAME 'a' EQUALITY caseExactMatch SYNTAX 1.2 "
          ")\n"
          "attributetypes=( 1.2 NAME 'b' EQUALITY 2.5.13.5 SYNTAX 1.2 )\n"}});
  EXPECT_EQ(planned(),
            "V3.user.at:1 attribute type 'a' (1.1): identical V3.user.at:1\n"
            "V3.user.at:2 attribute type 'b' (1.2): replaces the release's "
            "V3.user.at:2, EQUALITY narrowing\n");
}

// The library takes the word for the OID of the definition.
TEST_F(PlanTest, CannotCarryWhatTheLibraryDoesNotRead) {
  write({{"old/V3.user.at",
          "attributetypes=( 1.1 NAME 'a' DESC 'x' X-ORIGIN 'me' )\n" +
              type("1.2", "b")},
         {"new/V3.user.at", type("9.1", "r")}});
  const char expected[] =
      "V3.user.at:1 attribute type 'a' (1.1): cannot be carried [UNREADABLE] "
      "stops\n"
      "V3.user.at:2 attribute type 'b' (1.2): added\n";
  EXPECT_EQ(planned(), expected);
  Rules rules;
  rules.accepted = {schemacheck::Code::kUnreadable,
                    schemacheck::Code::kUnknownField};
  EXPECT_EQ(planned(rules), expected);
}

TEST_F(PlanTest, CannotCarryWhatHasNoOid) {
  write({{"old/V3.user.at",
          "attributetypes { ( NAME 'a' DESC 'x' ) }\n"
          "attributetypes=( NAME 'b' DESC 'x' )\n"},
         {"new/V3.user.at", type("9.1", "r")}});
  EXPECT_EQ(planned(),
            "V3.user.at:1 attribute type 'a' (): cannot be carried [NO-OID] "
            "stops\n"
            "V3.user.at:2 attribute type 'b' (): cannot be carried [NO-OID] "
            "stops\n");
  Rules rules;
  rules.accepted = {schemacheck::Code::kNoOid};
  EXPECT_EQ(planned(rules),
            "V3.user.at:1 attribute type 'a' (): cannot be carried [NO-OID]\n"
            "V3.user.at:2 attribute type 'b' (): cannot be carried [NO-OID] "
            "stops\n")
      << "the second has no OID that could be excluded";
}

TEST_F(PlanTest, LetsStorageGoWithATypeThatCannotBeCarried) {
  write({{"old/V3.user.at", type("1.1", "a") + storage("1.1")},
         {"new/V3.user.at", type("1.9", "a")}});
  EXPECT_EQ(planned(),
            "V3.user.at:1 attribute type 'a' (1.1): cannot be carried "
            "V3.user.at:1, OID narrowing [NAME-OTHER-OID] stops\n"
            "V3.user.at:2 storage definition (1.1): cannot be carried: its "
            "attribute type cannot be carried\n");
}

// It is merged before it is withdrawn, so that the modified schema's copy of it
// is the old installation's.
TEST_F(PlanTest, WhatDiffersAndIsWithdrawnIsMerged) {
  write({{"old/V3.user.oc", objectClass("2.1", "k", "AUXILIARY")},
         {"new/V3.modifiedschema", objectClass("2.1", "k")}});
  Rules rules;
  rules.modifiedOids = {"2.1"};
  const PlanOfFiles files(path(), rules);
  ASSERT_EQ(files.plan.definitions.size(), 1U);
  EXPECT_EQ(lineOf(files.plan.definitions[0]),
            "V3.user.oc:1 object class 'k' (2.1): withdrawn "
            "V3.modifiedschema:1, kind narrowing\n");
  EXPECT_TRUE(files.plan.isMerged(files.plan.definitions[0]));
  rules.excludedOids = {"2.1"};
  const PlanOfFiles excluded(path(), rules);
  ASSERT_EQ(excluded.plan.definitions.size(), 1U);
  EXPECT_FALSE(excluded.plan.isMerged(excluded.plan.definitions[0]));
}

// It keeps the description, and drops the matching rule.
TEST_F(PlanTest, ComparesTheDescriptionThatTheLibraryKeeps) {
  write({{"old/V3.user.at",
          "attributetypes=( 1.1 NAME 'a' DESC 'x y' EQUALITY caseIgnoreMatch "
          ")\n"
          "attributetypes=( 1.2 NAME 'b' DESC 'x y' EQUALITY caseIgnoreMatch "
          ")\n"},
         {"new/V3.user.at",
          "attributetypes=( 1.1 NAME 'a' DESC 'x y' )\n"
          "attributetypes=( 1.2 NAME 'b' DESC 'y' )\n"}});
  EXPECT_EQ(planned(),
            "V3.user.at:1 attribute type 'a' (1.1): identical V3.user.at:1\n"
            "V3.user.at:2 attribute type 'b' (1.2): replaces the release's "
            "V3.user.at:2, DESC neutral\n");
}

TEST_F(PlanTest, AnotherAfterItsOwnResultChangesNothing) {
  write({{"old/V3.user.at", type("1.1", "a", "old") + type("1.2", "b") +
                                storage("1.2") + type("1.3", "c")},
         {"old/V3.system.oc", objectClass("2.1", "k")},
         {"new/V3.user.at",
          type("1.1", "a", "old") + type("1.2", "b") + storage("1.2")}});
  Rules rules;
  rules.excludedOids = {"1.3"};
  rules.modifiedOids = {"2.1"};  // what was withdrawn is not brought back
  EXPECT_FALSE(PlanOfFiles(path(), rules).plan.changesAnything());
  EXPECT_EQ(planned(rules),
            "V3.user.at:1 attribute type 'a' (1.1): identical V3.user.at:1\n"
            "V3.user.at:2 attribute type 'b' (1.2): identical V3.user.at:2\n"
            "V3.user.at:3 storage definition (1.2): identical V3.user.at:3\n"
            "V3.user.at:4 attribute type 'c' (1.3): excluded: its OID is in "
            "the list of excluded ones\n"
            "V3.system.oc:1 object class 'k' (2.1): withdrawn\n"
            "excluded: 1.3 2.1\n");
}

}  // namespace
