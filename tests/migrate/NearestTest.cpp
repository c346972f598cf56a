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
  EXPECT_EQ(nearest("abc", {"acb"}), Names{});  // two steps
}

TEST(NearestTest, AThirdOfTheWordsLengthInStepsIsNear) {
  const struct {
    const char *word;
    const char *near;
    const char *far;
  } kCases[] = {
      {"", "x", "xy"},
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
