// The names that look like a word.
#include "Nearest.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

TEST(NearestTest, NoneOfNone) { EXPECT_EQ(nearest("cn", {}), Names{}); }

TEST(NearestTest, AStepIsACharacterReplacedAddedOrRemoved) {
  EXPECT_EQ(nearest("abc", {"abx"}), Names{"abx"});
  EXPECT_EQ(nearest("abc", {"xbc"}), Names{"xbc"});
  EXPECT_EQ(nearest("abc", {"abcd"}), Names{"abcd"});
  EXPECT_EQ(nearest("abc", {"xabc"}), Names{"xabc"});
  EXPECT_EQ(nearest("abc", {"ab"}), Names{"ab"});
  EXPECT_EQ(nearest("abc", {"bc"}), Names{"bc"});
  EXPECT_EQ(nearest("abc", {"ac"}), Names{"ac"});
}

TEST(NearestTest, ASwapOfNeighboursIsOneStep) {
  EXPECT_EQ(nearest("abc", {"acb"}), Names{"acb"});
  EXPECT_EQ(nearest("abc", {"bac"}), Names{"bac"});
  EXPECT_EQ(nearest("abc", {"cba"}), Names{});
  EXPECT_EQ(nearest("mial", {"mail"}), Names{"mail"});
  EXPECT_EQ(nearest("abcdef", {"badcef", "badcfe"}), Names{"badcef"});
  // No place twice.
  EXPECT_EQ(nearest("abc", {"bxa"}), Names{});
  EXPECT_EQ(nearest("ca", {"abc"}), Names{});
}

TEST(NearestTest, NamesThatBeginWithTheWordIfNoneIsNear) {
  EXPECT_EQ(nearest("TELE", {"telephoneNumber", "telexNumber", "atele"}),
            Names{"atele"});
  EXPECT_EQ(nearest("TELE", {"telephoneNumber", "telexNumber", "xtelephone"}),
            (Names{"telexNumber", "telephoneNumber"}));
  EXPECT_EQ(nearest("a", {"abcd", "abc", "adc", "abe"}),
            (Names{"abc", "abe", "adc"}));
  EXPECT_EQ(nearest("abc", {"ab"}), Names{"ab"});
  EXPECT_EQ(nearest("abcd", {"ab"}), Names{});
}

TEST(NearestTest, NoneOfTheEmptyWord) {
  EXPECT_EQ(nearest("", {"x", "xy"}), Names{});
}

TEST(NearestTest, OfNamesThatAreEqualButForCaseOne) {
  EXPECT_EQ(nearest("cm", {"CN", "Cn", "cn", "co"}), (Names{"CN", "co"}));
  EXPECT_EQ(nearest("a", {"ABC", "abc", "abd"}), (Names{"ABC", "abd"}));
}

TEST(NearestTest, AQuestionEndsTheMessage) {
  EXPECT_EQ(didYouMean("cm", {"cn"}), "; did you mean 'cn'?");
  EXPECT_EQ(didYouMean("cm", {"c", "cn", "co", "o"}),
            "; did you mean 'c' or 'cn' or 'co'?");
  EXPECT_EQ(didYouMean("cm", {"other"}), "");
  EXPECT_EQ(didYouMean("", {"a"}), "");
}

TEST(NearestTest, AThirdOfTheWordsLengthInStepsIsNear) {
  const struct {
    const char *word;
    const char *near;
    const char *far;
  } kCases[] = {
      {"a", "x", "xy"},
      {"abcde", "abcdx", "abcxx"},
      {"abcdef", "abcdxx", "abcxxx"},
      {"abcdefgh", "abcdefxx", "abcdexxx"},
      {"abcdefghi", "abcdefxxx", "abcdexxxx"},
      {"abcdefghi", "abcdef", "abcde"},
      {"abcdefghi", "abcdefghixxx", "abcdefghixxxx"},
  };
  for (const auto &[word, near, far] : kCases) {
    SCOPED_TRACE(word);
    EXPECT_EQ(nearest(word, {near, far}), Names{near});
  }
}

TEST(NearestTest, CaseDoesNotMatterAndNamesStayAsWritten) {
  EXPECT_EQ(nearest("COMMONNAMES", {"commonName"}), Names{"commonName"});
  EXPECT_EQ(nearest("commonnames", {"COMMONNAME"}), Names{"COMMONNAME"});
}

TEST(NearestTest, TheNearestComesFirstAndEqualOnesInOrder) {
  EXPECT_EQ(nearest("abcdef", {"abcdxx", "zbcdef", "abcdef", "abcdey"}),
            (Names{"abcdef", "abcdey", "zbcdef"}));
}

TEST(NearestTest, ThreeAtMost) {
  EXPECT_EQ(nearest("1.1", {"1.5", "1.2", "1.4", "1.3"}),
            (Names{"1.2", "1.3", "1.4"}));
  EXPECT_EQ(nearest("1.1", {"1.2", "1.3"}), (Names{"1.2", "1.3"}));
}

}  // namespace
