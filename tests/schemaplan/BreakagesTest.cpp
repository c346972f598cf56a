#include "Breakages.h"

#include <gtest/gtest.h>

#include <string>

#include "PlanTesting.h"

using schemaplan::Rules;

namespace {

class BreakagesTest : public PlanTest {};

Rules excluding(const std::string &oid) {
  Rules rules;
  rules.excludedOids = {oid};
  return rules;
}

std::string requiring(const std::string &oid, const std::string &name,
                      const std::string &attribute) {
  return "objectclasses=( " + oid + " NAME '" + name + "' AUXILIARY MUST ( " +
         attribute + " ) )\n";
}

std::string below(const std::string &oid, const std::string &name,
                  const std::string &superior) {
  return "objectclasses=( " + oid + " NAME '" + name + "' SUP ( " + superior +
         " ) ABSTRACT )\n";
}

std::string columns(const std::string &oid, const std::string &column) {
  return "QORAttributetypes=( " + oid + " DBNAME ( '" + column + "' '" +
         column + "' ) LENGTH 4 )\n";
}

TEST_F(BreakagesTest, AnAttributeThatIsExcluded) {
  write({{"old/V3.user.at", type("1.1", "a")},
         {"old/V3.user.oc", requiring("2.1", "k", "A")},
         {"new/V3.user.at", type("9.1", "r")}});
  EXPECT_EQ(breakages(), "");
  EXPECT_EQ(breakages(excluding("1.1")),
            "./old/V3.user.oc:1:47: warning: [UNDEFINED-ATTRIBUTE] expected "
            "the attribute 'A' in the result, found none; it would be that at "
            "./old/V3.user.at:1, attribute type 'a' (1.1)\n"
            "objectclasses=( 2.1 NAME 'k' AUXILIARY MUST ( A ) )\n"
            "                                              ^\n");
}

// The release has the class, but does not ask for the attribute.
TEST_F(BreakagesTest, AnAttributeOfOneSideAlone) {
  write({{"old/V3.user.at", type("1.1", "a")},
         {"old/V3.user.oc", requiring("2.1", "k", "a")},
         {"new/V3.user.oc", requiring("2.1", "k", "cn")}});
  EXPECT_EQ(breakages(excluding("1.1")),
            "./old/V3.user.oc:1:47: warning: [UNDEFINED-ATTRIBUTE] expected "
            "the attribute 'a' in the result, found none; it would be that at "
            "./old/V3.user.at:1, attribute type 'a' (1.1)\n"
            "objectclasses=( 2.1 NAME 'k' AUXILIARY MUST ( a ) )\n"
            "                                              ^\n");
}

TEST_F(BreakagesTest, AnAliasThatIsReplacedAway) {
  write({{"old/V3.user.at", type("1.1", "a", "old")},
         {"new/V3.user.at",
          "attributetypes=( 1.1 NAME ( 'a' 'alias' ) DESC 'new' )\n"},
         {"new/V3.user.oc", requiring("2.1", "k", "alias")}});
  EXPECT_EQ(breakages(),
            "./new/V3.user.oc:1:47: warning: [UNDEFINED-ATTRIBUTE] expected "
            "the attribute 'alias' in the result, found none; it would be that "
            "at ./new/V3.user.at:1, attribute type 'a' (1.1)\n"
            "objectclasses=( 2.1 NAME 'k' AUXILIARY MUST ( alias ) )\n"
            "                                              ^\n");
}

TEST_F(BreakagesTest, InTheOrderOfTheResult) {
  write({{"old/V3.user.at", type("1.1", "a", "old")},
         {"old/V3.user.oc", objectClass("2.2", "n")},
         {"new/V3.user.at",
          "attributetypes=( 1.1 NAME ( 'a' 'alias' ) DESC 'new' )\n"},
         {"new/V3.user.oc", requiring("2.1", "k", "alias") +
                                "objectclasses=( 2.3 NAME ( 'l' 'N' ) )\n"}});
  const PlanOfFiles planned(path(), {});
  std::vector<schemacheck::Code> codes;
  for (const schemacheck::Finding &finding : planned.plan.breakages) {
    codes.push_back(finding.code);
  }
  EXPECT_EQ(codes, std::vector({schemacheck::Code::kUndefinedAttribute,
                                schemacheck::Code::kNameTwice}));
}

TEST_F(BreakagesTest, ASuperiorThatIsWithdrawn) {
  write({{"old/V3.user.oc", below("2.2", "l", "k")},
         {"new/V3.user.oc", below("2.3", "m", "K")},
         {"new/V3.modifiedschema", objectClass("2.1", "k")}});
  Rules rules;
  rules.modifiedOids = {"2.1"};
  EXPECT_EQ(breakages(rules),
            "./new/V3.user.oc:1:36: warning: [UNDEFINED-SUPERIOR] expected the "
            "superior 'K' in the result, found none; it would be that at "
            "./new/V3.modifiedschema:1, object class 'k' (2.1)\n"
            "objectclasses=( 2.3 NAME 'm' SUP ( K ) ABSTRACT )\n"
            "                                   ^\n")
      << "the superior of 'l' is not in its own directory either";
}

TEST_F(BreakagesTest, NotWhatASideHasByItself) {
  write({{"old/V3.user.at", type("1.2", "b", "old")},
         {"old/V3.user.oc", requiring("2.1", "k", "a") +
                                below("2.2", "l", "none") +
                                below("2.3", "m", "m")},
         {"new/V3.user.at", type("1.2", "b", "new")},
         {"new/V3.user.oc", requiring("2.1", "k", "a $ b")}});
  EXPECT_EQ(breakages(), "");
}

// Nothing but its OID leads to the superior.
TEST_F(BreakagesTest, NotASuperiorThatIsFoundByItsOid) {
  write({{"old/V3.user.at", type("1.1", "a")},
         {"new/V3.user.at",
          type("1.1", "a") + type("1.2", "a") +
              "attributetypes=( 1.3 NAME 'b' SUP 1.2 DESC 'x' )\n"}});
  EXPECT_EQ(breakages(), "");
}

// The old installation's definition, which defines no superior of its own, is
// as broken as the release's.
TEST_F(BreakagesTest, NotWhatTheReplacedDefinitionHadAlready) {
  write({{"old/V3.user.oc", below("2.1", "k", "p") + objectClass("2.2", "p")},
         {"new/V3.user.oc",
          "objectclasses=( 2.1 NAME 'k' SUP ( p ) AUXILIARY )\n"}});
  EXPECT_EQ(breakages(excluding("2.2")), "");
}

TEST_F(BreakagesTest, ACycleThroughBothSides) {
  write({{"old/V3.user.oc", below("2.1", "k", "l") + objectClass("2.2", "l")},
         {"new/V3.user.oc",
          objectClass("2.1", "k") +
              "objectclasses=( 2.2 NAME 'l' SUP ( k ) AUXILIARY )\n"}});
  EXPECT_EQ(breakages(), "") << "both are the old installation's";
  EXPECT_EQ(breakages(excluding("2.2")),
            "./new/V3.user.oc:2:36: warning: [SUPERIOR-CYCLE] expected a "
            "superior that does not lead back in the result, found 'l' SUP "
            "'k', ./old/V3.user.oc:1 SUP 'l'\n"
            "objectclasses=( 2.2 NAME 'l' SUP ( k ) AUXILIARY )\n"
            "                                   ^\n");
}

// Each side has one of the two, below something that it does not define.
TEST_F(BreakagesTest, ACycleThatEachSideHasHalfOf) {
  write({{"old/V3.user.oc", below("2.1", "k", "none $ m")},
         {"new/V3.user.oc",
          below("2.2", "m", "top $ k") + objectClass("2.5.6.0", "top")}});
  EXPECT_EQ(breakages(),
            "./new/V3.user.oc:1:42: warning: [SUPERIOR-CYCLE] expected a "
            "superior that does not lead back in the result, found 'm' SUP "
            "'k', ./old/V3.user.oc:1 SUP 'm'\n"
            "objectclasses=( 2.2 NAME 'm' SUP ( top $ k ) ABSTRACT )\n"
            "                                         ^\n");
}

TEST_F(BreakagesTest, ALongCycleIsCut) {
  std::string old;
  for (int i = 0; i < 7; ++i) {
    old += below("2." + std::to_string(i), "k" + std::to_string(i),
                 "k" + std::to_string(i + 1));
  }
  write({{"old/V3.user.oc", old + objectClass("2.7", "k7")},
         {"new/V3.user.oc",
          "objectclasses=( 2.7 NAME 'k7' SUP ( k0 ) AUXILIARY )\n" +
              objectClass("2.0", "k0")}});
  EXPECT_EQ(
      breakages(excluding("2.7")),
      "./new/V3.user.oc:1:37: warning: [SUPERIOR-CYCLE] expected a superior "
      "that does not lead back in the result, found 'k7' SUP 'k0', "
      "./old/V3.user.oc:1 SUP 'k1', ./old/V3.user.oc:2 SUP 'k2', "
      "./old/V3.user.oc:3 SUP 'k3', ./old/V3.user.oc:4 SUP ... SUP 'k7'\n"
      "objectclasses=( 2.7 NAME 'k7' SUP ( k0 ) AUXILIARY )\n"
      "                                    ^\n");
}

TEST_F(BreakagesTest, ANameThatBothSidesGive) {
  write({{"old/V3.user.at",
          "attributetypes=( 1.1 NAME ( 'a' 'Mail' ) DESC 'x' )\n" +
              type("1.3", "c")},
         {"old/V3.user.oc", objectClass("2.1", "mail")},
         {"new/V3.user.at", type("1.2", "mail")}});
  EXPECT_EQ(breakages(),
            "./old/V3.user.at:1:33: warning: [NAME-TWICE] expected a name of "
            "its own in the result, found 'Mail', which ./new/V3.user.at:1, "
            "attribute type 'mail' (1.2) has, too\n"
            "attributetypes=( 1.1 NAME ( 'a' 'Mail' ) DESC 'x' )\n"
            "                                ^\n");
}

TEST_F(BreakagesTest, NotANameThatTwoOfOneSideShareAnyway) {
  write({{"old/V3.user.at", type("1.1", "a", "old")},
         {"new/V3.user.at",
          "attributetypes=( 1.1 NAME ( 'a' 'm' ) DESC 'x' )\n"
          "attributetypes=( 1.2 NAME ( 'b' 'm' ) DESC 'x' )\n"}});
  EXPECT_EQ(breakages(excluding("1.1")), "");
}

TEST_F(BreakagesTest, AColumnThatBothSidesUse) {
  write({{"old/V3.user.at", type("1.1", "a") + columns("1.1", "mail")},
         {"new/V3.user.at", type("1.2", "b") + columns("1.2", "MAIL")}});
  EXPECT_EQ(breakages(),
            "./old/V3.user.at:2:34: warning: [SHARED-COLUMN] expected a column "
            "of its own in the result, found 'mail', which "
            "./new/V3.user.at:2, storage definition (1.2) has, too\n"
            "QORAttributetypes=( 1.1 DBNAME ( 'mail' 'mail' ) LENGTH 4 )\n"
            "                                 ^\n"
            "./old/V3.user.at:2:41: warning: [SHARED-COLUMN] expected a column "
            "of its own in the result, found 'mail', which "
            "./new/V3.user.at:2, storage definition (1.2) has, too\n"
            "QORAttributetypes=( 1.1 DBNAME ( 'mail' 'mail' ) LENGTH 4 )\n"
            "                                        ^\n");
}

}  // namespace
