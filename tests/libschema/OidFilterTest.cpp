#include "internal/OidFilter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace {

using libschema::OidFilter;

std::set<std::string> oids(int first, int last) {
  std::set<std::string> oids;
  for (int number = first; number <= last; ++number) {
    oids.insert("1.3.6.1.4.1.42424." + std::to_string(number));
  }
  return oids;
}

TEST(OidFilterTest, OfAnEmptySetHoldsNothing) {
  const OidFilter filter({});
  EXPECT_FALSE(filter.mayHold(""));
  EXPECT_FALSE(filter.mayHold("1.1"));
}

TEST(OidFilterTest, MayHoldAllOfTheSetAndFewOthers) {
  const OidFilter filter(oids(1, 1000));
  const auto held = [&filter](const std::set<std::string> &asked) {
    return std::count_if(
        asked.begin(), asked.end(),
        [&filter](const std::string &oid) { return filter.mayHold(oid); });
  };
  EXPECT_EQ(held(oids(1, 1000)), 1000);
  EXPECT_LT(held(oids(1001, 11000)), 1000);
}

}  // namespace
