#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "Suspects.h"

using schemacheck::Code;
using schemacheck::kMostFindings;
using schemacheck::Suspect;
using schemacheck::SuspectList;

namespace {

Suspect suspectAt(std::size_t offset) {
  return {Code::kUnclosed, offset, "message"};
}

Suspect reportedAlways(Suspect suspect) {
  suspect.always = true;
  return suspect;
}

Suspect ofField(Suspect suspect) {
  suspect.field = "NAME";
  return suspect;
}

Suspect withHarmless(Suspect suspect) {
  suspect.harmless = Code::kListForm;
  return suspect;
}

Suspect ofAnotherCode(Suspect suspect) {
  suspect.code = Code::kTab;
  return suspect;
}

// The first of those that are alike but for the place, in the order in which
// they came. Each difference but that makes another kind.
TEST(SuspectListTest, HoldsSoManyOfEachKind) {
  SuspectList list;
  std::vector<std::size_t> expected;
  for (std::size_t i = 0; i < 2 * kMostFindings; ++i) {
    list.add(suspectAt(i));
    list.add(reportedAlways(suspectAt(i)));
    list.add(ofField(suspectAt(i)));
    list.add(withHarmless(suspectAt(i)));
    list.add(ofAnotherCode(suspectAt(i)));
    if (i <= kMostFindings) {
      expected.insert(expected.end(), 5, i);
    }
  }
  std::vector<std::size_t> offsets;
  for (const Suspect &suspect : list.take()) {
    offsets.push_back(suspect.offset);
  }
  EXPECT_EQ(offsets, expected);
}

}  // namespace
