// Merges of schemas in which several definitions have one name or one OID, so
// that what gives way is not what has the name.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "support/ContractLeaks.h"

namespace {

// Attribute types and object classes: those that have names.
class SchemaManagerMergeOddTest : public testing::TestWithParam<Kind> {
 protected:
  const Kind &kind() const { return GetParam(); }

  std::string line(const std::string &oid, const std::string &name,
                   const std::string &text) const {
    return kind().line(oid, name, text);
  }
  std::string owned(const std::string &oid, const std::string &name,
                    const std::string &text) const {
    return kind().owned(oid, name, line(oid, name, text));
  }
  std::string byOid(const std::string &oid, const std::string &shown) const {
    return kind().byOid(oid, shown);
  }

  unsigned int merge(const Schema &target, const Schema &source) const {
    return (target.get()->*kind().merge)(source.get());
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, SchemaManagerMergeOddTest,
                         testing::Values(kKinds[0], kKinds[1]), kindName);

// The entry of the OID of both has gone with the first.
TEST_P(SchemaManagerMergeOddTest, TwoNamesakesOfOneOidAreReplaced) {
  const auto old = makeSchema(
      {{kind().file, line("2.1", "a", "mine") + line("2.2", "b", "mine")}});
  const auto release = makeSchema(
      {{kind().file, line("1.1", "a", "theirs") + line("1.1", "b", "theirs")}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()), owned("2.1", "a", "mine") +
                                        owned("2.2", "b", "mine") +
                                        byOid("2.1", "a") + byOid("2.2", "b") +
                                        kind().file + ": 1.1\n");
  EXPECT_EQ(stateOf(old.get()), kind().file + ": 2.1 2.2\n");
}

// The release has two definitions of the name x, the second of which only its
// OID leads to. The first has given way, and the name with it, when it is the
// second's turn. Nobody frees the second, nor the two that find their names
// taken.
TEST_P(SchemaManagerMergeOddTest, WhatOnlyItsOidLeadsToIsReplaced) {
  leaksDefinitions([this] {
    const auto old = makeSchema(
        {{kind().file, line("1.1", "y", "mine") + line("2.2", "z", "mine")}});
    const auto release = makeSchema(
        {{kind().file, line("1.1", "x", "first") + line("2.2", "x", "second") +
                           line("1.1", "y", "theirs") +
                           line("2.2", "z", "theirs")}});
    EXPECT_EQ(merge(release, old), 1U);
    EXPECT_EQ(stateOf(release.get()),
              owned("1.1", "y", "theirs") + owned("2.2", "z", "theirs") +
                  byOid("1.1", line("1.1", "y", "mine")) +
                  byOid("2.2", line("2.2", "z", "mine")) + kind().file +
                  ": 1.1 2.2\n");
    EXPECT_EQ(stateOf(old.get()), kind().file + ": 1.1 2.2\n");
    return 0;
  });
}

// What gives way within one merge to another definition of the source stays
// with the schema that holds it besides.
TEST_P(SchemaManagerMergeOddTest, WhatIsSharedStaysWhereItIsShared) {
  leaksDefinitions([this] {
    const auto other = makeSchema({});
    const auto old = makeSchema(
        {{kind().file, line("1.1", "w", "mine") + line("1.1", "y", "mine")},
         {"V3.config.at", line("1.9", "z", "mine")}});
    EXPECT_EQ(merge(other, old), 0U);  // z is recorded nowhere
    const std::string shared = stateOf(other.get());
    EXPECT_EQ(shared, owned("1.1", "w", "mine") + owned("1.1", "y", "mine") +
                          byOid("1.1", "w") + kind().file + ": 1.1\n");

    const auto release = makeSchema(
        {{kind().file, line("1.1", "x", "theirs") + line("1.1", "w", "theirs") +
                           line("1.1", "y", "theirs") +
                           line("1.9", "z", "theirs")}});
    EXPECT_EQ(merge(release, old), 1U);
    EXPECT_EQ(stateOf(release.get()),
              owned("1.1", "y", "theirs") + owned("1.9", "z", "mine") +
                  byOid("1.1", line("1.1", "y", "mine")) + byOid("1.9", "z") +
                  kind().file + ": 1.1 1.9\n");
    EXPECT_EQ(stateOf(old.get()), kind().file + ": 1.1\n");
    EXPECT_EQ(stateOf(other.get()), shared);
    return 0;
  });
}

}  // namespace
