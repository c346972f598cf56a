// Who has changed what.
#include <gtest/gtest.h>

#include <string>

#include "PlanTesting.h"

namespace {

class PlanOriginTest : public PlanTest {};

TEST_F(PlanOriginTest, IsToldOfEachField) {
  write({{"base/V3.user.at",
          "attributetypes=( 1.1 NAME 'a' DESC 'x' SYNTAX 1.2 USAGE "
          "userApplications )\n"},
         {"old/V3.user.at",
          "attributetypes=( 1.1 NAME 'a' DESC 'y' SYNTAX 1.2 SINGLE-VALUE "
          "USAGE dSAOperation )\n"},
         {"new/V3.user.at",
          "attributetypes=( 1.1 NAME 'a' DESC 'z' SYNTAX 1.3 SINGLE-VALUE "
          "USAGE userApplications )\n"}});
  EXPECT_EQ(planned(),
            "V3.user.at:1 attribute type 'a' (1.1): replaces the release's "
            "V3.user.at:1 by both, DESC neutral by both, SYNTAX narrowing by "
            "the release, USAGE narrowing by the administrator\n");
}

TEST_F(PlanOriginTest, OfWhatTheBaseLacksIsBoth) {
  write({{"base/V3.user.at", type("9.1", "r")},
         {"old/V3.user.at", type("1.1", "a", "old")},
         {"new/V3.user.at", type("1.1", "a", "new")}});
  EXPECT_EQ(planned(),
            "V3.user.at:1 attribute type 'a' (1.1): replaces the release's "
            "V3.user.at:1 by both, DESC neutral by both\n");
}

TEST_F(PlanOriginTest, OfWhatTheReleaseLacks) {
  write({{"base/V3.user.at", type("1.1", "a") + type("1.2", "b")},
         {"old/V3.user.at",
          type("1.1", "a") + type("1.2", "b", "old") + type("1.3", "c")},
         {"new/V3.user.at", type("9.1", "r")}});
  EXPECT_EQ(planned(),
            "V3.user.at:1 attribute type 'a' (1.1): added by the release\n"
            "V3.user.at:2 attribute type 'b' (1.2): added by both\n"
            "V3.user.at:3 attribute type 'c' (1.3): added by the "
            "administrator\n");
}

// The release has given the OID of the base's to another.
TEST_F(PlanOriginTest, OfAnOidThatHasAnotherName) {
  write({{"base/V3.user.at", type("1.1", "a")},
         {"old/V3.user.at", type("1.1", "a")},
         {"new/V3.user.at", type("1.1", "b")}});
  EXPECT_EQ(planned(),
            "V3.user.at:1 attribute type 'a' (1.1): cannot be carried "
            "V3.user.at:1 by the release [OID-OTHER-NAME] stops\n");
}

// Kept on purpose by the library's comparison: ( b b ) is contained in ( b c ),
// and ( c c ) as well.
TEST_F(PlanOriginTest, OfRepeatedValuesIsKnown) {
  const auto named = [](const std::string &names) {
    return "attributetypes=( 1.1 NAME ( 'a' " + names + " ) DESC 'x' )\n";
  };
  write({{"base/V3.user.at", named("'b' 'c'")},
         {"old/V3.user.at", named("'b' 'b'")},
         {"new/V3.user.at", named("'c' 'c'")}});
  EXPECT_EQ(planned(),
            "V3.user.at:1 attribute type 'a' (1.1): replaces the release's "
            "V3.user.at:1 by both, NAME narrowing by both\n");
}

}  // namespace
