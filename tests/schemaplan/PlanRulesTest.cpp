// What the rules leave out, accept and withdraw.
#include <gtest/gtest.h>

#include <string>

#include "PlanTesting.h"

using schemacheck::Code;
using schemaplan::Rules;

namespace {

class PlanRulesTest : public PlanTest {};

Rules accepting(Code code) {
  Rules rules;
  rules.accepted = {code};
  return rules;
}

Rules leavingOut() {
  Rules rules;
  rules.leaveOut = true;
  return rules;
}

Rules withdrawing(const std::string &oid) {
  Rules rules;
  rules.modifiedOids = {oid};
  return rules;
}

const Files kStuck = {
    {"old/V3.config.at", type("1.1", "a") + storage("1.1")},
    {"old/V3.config.oc", objectClass("2.1", "k")},
    {"old/V3.modifiedschema", objectClass("2.2", "l")},
    {"new/V3.user.at", type("9.1", "r")},
};

TEST_F(PlanRulesTest, NothingIsLeftOutByItself) {
  write(kStuck);
  EXPECT_EQ(planned(),
            "V3.config.at:1 attribute type 'a' (1.1): cannot be carried "
            "[NOT-MERGEABLE] stops\n"
            "V3.config.at:2 storage definition (1.1): cannot be carried "
            "[NOT-MERGEABLE] stops\n"
            "V3.config.oc:1 object class 'k' (2.1): cannot be carried "
            "[NOT-MERGEABLE] stops\n"
            "V3.modifiedschema:1 object class 'l' (2.2): cannot be carried "
            "[NOT-MERGEABLE] stops\n");
}

TEST_F(PlanRulesTest, WhatAMergeCannotAddIsLeftOut) {
  write(kStuck);
  EXPECT_EQ(planned(leavingOut()),
            "V3.config.at:1 attribute type 'a' (1.1): excluded "
            "[NOT-MERGEABLE]: left out: a merge cannot add it\n"
            "V3.config.at:2 storage definition (1.1): excluded "
            "[NOT-MERGEABLE]: left out: a merge cannot add it\n"
            "V3.config.oc:1 object class 'k' (2.1): excluded "
            "[NOT-MERGEABLE]: left out: a merge cannot add it\n"
            "V3.modifiedschema:1 object class 'l' (2.2): excluded "
            "[NOT-MERGEABLE]: left out: a merge cannot add it\n"
            "excluded: 1.1 2.1 2.2\n");
}

TEST_F(PlanRulesTest, WhatAMergeCannotAddIsNotLeftOutByAccepting) {
  write(kStuck);
  EXPECT_EQ(planned(accepting(Code::kNotMergeable)), planned());
}

// The storage definition replaces the release's.
TEST_F(PlanRulesTest, WhatCanBeCarriedIsNotLeftOutAlong) {
  write({{"old/V3.config.oc", objectClass("1.1", "k")},
         {"old/V3.config.at", storage("1.1", "5")},
         {"new/V3.user.at", type("1.1", "a") + storage("1.1")}});
  EXPECT_EQ(planned(leavingOut()),
            "V3.config.at:1 storage definition (1.1): replaces the release's "
            "V3.user.at:2, LENGTH widening\n"
            "V3.config.oc:1 object class 'k' (1.1): cannot be carried "
            "V3.user.at:1 [NOT-MERGEABLE] stops\n");
}

TEST_F(PlanRulesTest, StorageWithoutItsTypeIsAccepted) {
  write({{"old/V3.user.at", type("1.1", "a") + storage("1.1")},
         {"new/V3.user.at", type("1.1", "a")}});
  EXPECT_EQ(planned(accepting(Code::kNotMergeable)),
            "V3.user.at:1 attribute type 'a' (1.1): identical V3.user.at:1\n"
            "V3.user.at:2 storage definition (1.1): cannot be carried "
            "[NOT-MERGEABLE]\n"
            "excluded: 1.1\n");
}

TEST_F(PlanRulesTest, AnAcceptedTypeTakesItsStorageAlong) {
  write({{"old/V3.user.at", type("1.1", "a") + storage("1.1")},
         {"new/V3.user.at", type("1.9", "a")}});
  EXPECT_EQ(planned(accepting(Code::kNameOtherOid)),
            "V3.user.at:1 attribute type 'a' (1.1): cannot be carried "
            "V3.user.at:1, OID narrowing [NAME-OTHER-OID]\n"
            "V3.user.at:2 storage definition (1.1): cannot be carried: its "
            "attribute type cannot be carried\n"
            "excluded: 1.1\n");
}

TEST_F(PlanRulesTest, AcceptingOneOfTwoErrorsOfAnOidIsNotEnough) {
  write({{"old/V3.user.at", type("1.1", "a") + type("1.1", "b")},
         {"new/V3.user.at", type("1.9", "a")}});
  const Rules rules = accepting(Code::kNameOtherOid);
  EXPECT_EQ(planned(rules),
            "V3.user.at:1 attribute type 'a' (1.1): cannot be carried "
            "V3.user.at:1, OID narrowing [NAME-OTHER-OID] stops\n"
            "V3.user.at:2 attribute type 'b' (1.1): cannot be carried "
            "[OID-OTHER-NAME] stops\n");
}

TEST_F(PlanRulesTest, AShadowedDefinitionIsAccepted) {
  write({{"old/V3.user.at", type("1.1", "a") + type("1.2", "A", "y")},
         {"new/V3.user.at", type("9.1", "r")}});
  EXPECT_EQ(planned(accepting(Code::kShadowed)),
            "V3.user.at:1 attribute type 'a' (1.1): added\n"
            "V3.user.at:2 attribute type 'A' (1.2): shadowed V3.user.at:1 "
            "[SHADOWED]\n");
}

TEST_F(PlanRulesTest, AShadowedDefinitionIsExcluded) {
  write({{"old/V3.user.at", type("1.1", "a") + type("1.2", "A", "y")},
         {"new/V3.user.at", type("9.1", "r")}});
  Rules rules;
  rules.excludedOids = {"1.2"};
  EXPECT_EQ(planned(rules),
            "V3.user.at:1 attribute type 'a' (1.1): added\n"
            "V3.user.at:2 attribute type 'A' (1.2): excluded V3.user.at:1 "
            "[SHADOWED]: its OID is in the list of excluded ones\n"
            "excluded: 1.2\n");
}

TEST_F(PlanRulesTest, WhatReplacesTheReleasesIsWithdrawn) {
  write({{"old/V3.user.at", type("1.1", "a", "old") + storage("1.1", "5")},
         {"new/V3.modifiedschema", type("1.1", "a") + storage("1.1")}});
  EXPECT_EQ(planned(withdrawing("1.1")),
            "V3.user.at:1 attribute type 'a' (1.1): withdrawn "
            "V3.modifiedschema:1, DESC neutral\n"
            "V3.user.at:2 storage definition (1.1): withdrawn "
            "V3.modifiedschema:2, LENGTH widening\n");
}

TEST_F(PlanRulesTest, WhatAnotherFileHoldsIsNotWithdrawn) {
  write({{"old/V3.user.at", type("1.1", "a")},
         {"new/V3.system.at", type("1.1", "a")},
         {"new/V3.modifiedschema", type("1.1", "a")}});
  EXPECT_EQ(planned(withdrawing("1.1")),
            "V3.user.at:1 attribute type 'a' (1.1): identical "
            "V3.system.at:1\n");
}

// The storage definition is added, and its file writes the type with it.
TEST_F(PlanRulesTest, WhatIsAddedKeepsItsTypeFromBeingWithdrawn) {
  write({{"old/V3.user.at", type("1.1", "a", "old")},
         {"old/V3.system.at", storage("1.1")},
         {"new/V3.modifiedschema", type("1.1", "a")}});
  EXPECT_EQ(planned(withdrawing("1.1")),
            "V3.user.at:1 attribute type 'a' (1.1): replaces the release's "
            "V3.modifiedschema:1, DESC neutral\n"
            "V3.system.at:1 storage definition (1.1): added\n");
}

// The type stays in its file, which is copied; the storage definition goes.
TEST_F(PlanRulesTest, StorageIsWithdrawnFromATypeThatStays) {
  write({{"old/V3.user.at", type("1.1", "a") + storage("1.1")},
         {"new/V3.config.at", type("1.1", "a")},
         {"new/V3.modifiedschema", storage("1.1")}});
  EXPECT_EQ(planned(withdrawing("1.1")),
            "V3.user.at:1 attribute type 'a' (1.1): identical V3.config.at:1\n"
            "V3.user.at:2 storage definition (1.1): withdrawn "
            "V3.modifiedschema:1\n");
}

TEST_F(PlanRulesTest, WhatIsExcludedIsNotCalledWithdrawn) {
  write({{"old/V3.user.at", type("1.1", "a", "old")},
         {"new/V3.modifiedschema", type("1.1", "a")}});
  Rules rules = withdrawing("1.1");
  rules.excludedOids = {"1.1"};
  EXPECT_EQ(planned(rules),
            "V3.user.at:1 attribute type 'a' (1.1): excluded "
            "V3.modifiedschema:1, DESC neutral: its OID is in the list of "
            "excluded ones\n"
            "excluded: 1.1\n");
}

// A list of excluded OIDs cannot hold it.
TEST_F(PlanRulesTest, WhatCannotBeListedIsNotWithdrawn) {
  write({{"old/V3.user.at", "attributetypes=( 'x#' NAME 'a' DESC 'n' )\n"},
         {"new/V3.user.at", type("9.1", "r")}});
  EXPECT_EQ(planned(withdrawing("x#")),
            "V3.user.at:1 attribute type 'a' (x#): added\n");
}

// It stands in a block, in which the library drops it.
TEST_F(PlanRulesTest, ADefinitionWithoutAnOidHoldsNothingInAFile) {
  write({{"old/V3.user.at", type("1.1", "a")},
         {"new/V3.user.at", "attributetypes {\n( NAME 'b' DESC 'n' )\n}\n"},
         {"new/V3.modifiedschema", type("1.1", "a")}});
  EXPECT_EQ(planned(withdrawing("1.1")),
            "V3.user.at:1 attribute type 'a' (1.1): withdrawn "
            "V3.modifiedschema:1\n");
}

}  // namespace
