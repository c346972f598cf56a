// Whose definition is taken where both sides have one.
#include <gtest/gtest.h>

#include <string>

#include "PlanTesting.h"

using schemaplan::Preference;
using schemaplan::Rules;
using schemaplan::Side;

namespace {

class PlanPreferenceTest : public PlanTest {};

Rules preferring(Preference preference) {
  Rules rules;
  rules.preference = preference;
  return rules;
}

Rules deciding(const std::string &oid, Side side,
               Preference preference = Preference::kOld) {
  Rules rules = preferring(preference);
  rules.decisions[oid] = side;
  return rules;
}

const Files kDiffering = {
    {"old/V3.user.at", type("1.1", "a", "old") + type("1.2", "b")},
    {"new/V3.user.at", type("1.1", "a", "new")},
};

TEST_F(PlanPreferenceTest, OldIsWhatTheLibraryDoes) {
  write(kDiffering);
  EXPECT_EQ(planned(preferring(Preference::kOld)),
            "V3.user.at:1 attribute type 'a' (1.1): replaces the release's "
            "V3.user.at:1, DESC neutral\n"
            "V3.user.at:2 attribute type 'b' (1.2): added\n");
}

TEST_F(PlanPreferenceTest, NewExcludesWhatDiffers) {
  write(kDiffering);
  EXPECT_EQ(planned(preferring(Preference::kNew)),
            "V3.user.at:1 attribute type 'a' (1.1): excluded V3.user.at:1, "
            "DESC neutral: the release's is preferred\n"
            "V3.user.at:2 attribute type 'b' (1.2): added\n"
            "excluded: 1.1\n");
}

TEST_F(PlanPreferenceTest, NewSettlesWhatCannotBeCarried) {
  write({{"old/V3.user.at", type("1.1", "a") + type("1.2", "b")},
         {"new/V3.user.at", type("1.9", "a") + type("1.2", "c")}});
  EXPECT_EQ(planned(preferring(Preference::kNew)),
            "V3.user.at:1 attribute type 'a' (1.1): excluded V3.user.at:1, "
            "OID narrowing: the release's is preferred\n"
            "V3.user.at:2 attribute type 'b' (1.2): excluded V3.user.at:2: the "
            "release's is preferred\n"
            "excluded: 1.1 1.2\n");
}

const Files kPart = {
    {"old/V3.user.at", type("1.1", "a", "old") + storage("1.1")},
    {"new/V3.user.at", type("1.1", "a", "new")},
};

TEST_F(PlanPreferenceTest, NewDoesNotLoseWhatGoesWithIt) {
  write(kPart);
  EXPECT_EQ(planned(preferring(Preference::kNew)),
            "V3.user.at:1 attribute type 'a' (1.1): cannot be carried "
            "V3.user.at:1, DESC neutral [PREFERENCE-SPLIT] stops\n"
            "V3.user.at:2 storage definition (1.1): cannot be carried "
            "[PREFERENCE-SPLIT] stops\n");
  EXPECT_EQ(stoppers(preferring(Preference::kNew)),
            "./old/V3.user.at:1:18: error: [PREFERENCE-SPLIT] expected the "
            "release to have all that has this OID, found that it has only a "
            "part; decide on 1.1\n"
            "attributetypes=( 1.1 NAME 'a' DESC 'old' )\n"
            "                 ^\n"
            "./old/V3.user.at:2:21: error: [PREFERENCE-SPLIT] expected the "
            "release to have all that has this OID, found that it has only a "
            "part; decide on 1.1\n"
            "QORAttributetypes=( 1.1 LENGTH 4 )\n"
            "                    ^\n");
}

TEST_F(PlanPreferenceTest, ADecisionSettlesIt) {
  write(kPart);
  EXPECT_EQ(planned(deciding("1.1", Side::kNew, Preference::kNew)),
            "V3.user.at:1 attribute type 'a' (1.1): excluded V3.user.at:1, "
            "DESC neutral: decided for the release's side\n"
            "V3.user.at:2 storage definition (1.1): excluded: decided for the "
            "release's side\n"
            "excluded: 1.1\n");
  EXPECT_EQ(planned(deciding("1.1", Side::kOld, Preference::kNew)),
            "V3.user.at:1 attribute type 'a' (1.1): replaces the release's "
            "V3.user.at:1, DESC neutral\n"
            "V3.user.at:2 storage definition (1.1): added\n");
}

// A list of excluded OIDs takes the word for a comment.
TEST_F(PlanPreferenceTest, WhatCannotBeListedStops) {
  write({{"old/V3.user.at", "attributetypes=( 'x#' NAME 'a' DESC 'old' )\n"},
         {"new/V3.user.at", "attributetypes=( 'x#' NAME 'a' DESC 'new' )\n"}});
  const char expected[] =
      "V3.user.at:1 attribute type 'a' (x#): cannot be carried V3.user.at:1, "
      "DESC neutral [PREFERENCE-SPLIT] stops\n";
  EXPECT_EQ(planned(preferring(Preference::kNew)), expected);
  EXPECT_EQ(planned(deciding("x#", Side::kNew)), expected);
}

TEST_F(PlanPreferenceTest, WhatBothHaveChangedStopsWithoutAnOid) {
  write({{"base/V3.user.at", "attributetypes=( NAME 'a' DESC 'base' )\n"},
         {"old/V3.user.at", "attributetypes=( NAME 'a' DESC 'old' )\n"},
         {"new/V3.user.at", "attributetypes=( NAME 'a' DESC 'new' )\n"}});
  EXPECT_EQ(stoppers(preferring(Preference::kChanged)),
            "./old/V3.user.at:1:16: error: [CHANGED-BY-BOTH] expected one side "
            "to have changed what has this OID since the old release, found "
            "that both have; decide on \n"
            "attributetypes=( NAME 'a' DESC 'old' )\n"
            "               ^\n");
}

TEST_F(PlanPreferenceTest, ADecisionIsForItsOidOnly) {
  write(
      {{"old/V3.user.at", type("1.1", "a", "old") + type("1.2", "b", "old")},
       {"new/V3.user.at", type("1.1", "a", "new") + type("1.2", "b", "new")}});
  EXPECT_EQ(planned(deciding("1.2", Side::kNew)),
            "V3.user.at:1 attribute type 'a' (1.1): replaces the release's "
            "V3.user.at:1, DESC neutral\n"
            "V3.user.at:2 attribute type 'b' (1.2): excluded V3.user.at:2, "
            "DESC neutral: decided for the release's side\n"
            "excluded: 1.2\n");
}

TEST_F(PlanPreferenceTest, ADecisionForTheReleaseLeavesTheIdenticalHalf) {
  write({{"old/V3.user.at", type("1.1", "a") + storage("1.1", "5")},
         {"new/V3.user.at", type("1.1", "a") + storage("1.1")}});
  EXPECT_EQ(planned(deciding("1.1", Side::kNew)),
            "V3.user.at:1 attribute type 'a' (1.1): identical V3.user.at:1\n"
            "V3.user.at:2 storage definition (1.1): excluded V3.user.at:2, "
            "LENGTH widening: decided for the release's side\n"
            "excluded: 1.1\n");
}

// Of five attribute types, with the old release in "base".
const Files kChanged = {
    {"base/V3.user.at", type("1.1", "a") + type("1.2", "b") + type("1.3", "c") +
                            type("1.4", "d") + type("1.5", "e")},
    {"old/V3.user.at", type("1.1", "a", "old") + type("1.2", "b") +
                           type("1.3", "c", "old") + type("1.4", "d") +
                           type("1.5", "e") + type("1.6", "f")},
    {"new/V3.user.at", type("1.1", "a") + type("1.2", "b", "new") +
                           type("1.3", "c", "new") + type("1.4", "d")},
};

TEST_F(PlanPreferenceTest, ChangedTakesTheSideThatHasChanged) {
  write(kChanged);
  EXPECT_EQ(
      planned(preferring(Preference::kChanged)),
      "V3.user.at:1 attribute type 'a' (1.1): replaces the release's "
      "V3.user.at:1 by the administrator, DESC neutral by the administrator\n"
      "V3.user.at:2 attribute type 'b' (1.2): excluded V3.user.at:2 by the "
      "release, DESC neutral by the release: the release has changed it\n"
      "V3.user.at:3 attribute type 'c' (1.3): cannot be carried V3.user.at:3 "
      "by both, DESC neutral by both [CHANGED-BY-BOTH] stops\n"
      "V3.user.at:4 attribute type 'd' (1.4): identical V3.user.at:4\n"
      "V3.user.at:5 attribute type 'e' (1.5): added by the release\n"
      "V3.user.at:6 attribute type 'f' (1.6): added by the administrator\n"
      "excluded: 1.2\n");
  EXPECT_EQ(stoppers(preferring(Preference::kChanged)),
            "./old/V3.user.at:3:18: error: [CHANGED-BY-BOTH] expected one side "
            "to have changed what has this OID since the old release, found "
            "that both have; decide on 1.3\n"
            "attributetypes=( 1.3 NAME 'c' DESC 'old' )\n"
            "                 ^\n");
}

TEST_F(PlanPreferenceTest, ChangedIsDecided) {
  write(kChanged);
  Rules rules = preferring(Preference::kChanged);
  rules.decisions = {{"1.1", Side::kNew},
                     {"1.2", Side::kOld},
                     {"1.3", Side::kOld},
                     {"1.5", Side::kNew}};
  EXPECT_EQ(
      planned(rules),
      "V3.user.at:1 attribute type 'a' (1.1): excluded V3.user.at:1 by the "
      "administrator, DESC neutral by the administrator: decided for the "
      "release's side\n"
      "V3.user.at:2 attribute type 'b' (1.2): replaces the release's "
      "V3.user.at:2 by the release, DESC neutral by the release\n"
      "V3.user.at:3 attribute type 'c' (1.3): replaces the release's "
      "V3.user.at:3 by both, DESC neutral by both\n"
      "V3.user.at:4 attribute type 'd' (1.4): identical V3.user.at:4\n"
      "V3.user.at:5 attribute type 'e' (1.5): excluded by the release: decided "
      "for the release's side\n"
      "V3.user.at:6 attribute type 'f' (1.6): added by the administrator\n"
      "excluded: 1.1 1.5\n");
}

// One side has changed the type, the other its storage, and only both together
// can be excluded.
TEST_F(PlanPreferenceTest, ChangedStopsWhereTheHalvesDisagree) {
  write({{"base/V3.user.at", type("1.1", "a") + storage("1.1")},
         {"old/V3.user.at", type("1.1", "a", "old") + storage("1.1")},
         {"new/V3.user.at", type("1.1", "a") + storage("1.1", "5")}});
  EXPECT_EQ(
      planned(preferring(Preference::kChanged)),
      "V3.user.at:1 attribute type 'a' (1.1): cannot be carried V3.user.at:1 "
      "by the administrator, DESC neutral by the administrator "
      "[CHANGED-BY-BOTH] stops\n"
      "V3.user.at:2 storage definition (1.1): cannot be carried V3.user.at:2 "
      "by the release, LENGTH narrowing by the release [CHANGED-BY-BOTH] "
      "stops\n");
}

}  // namespace
