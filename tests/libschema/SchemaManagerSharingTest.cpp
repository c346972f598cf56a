// Who owns what after merges and comparisons. Much of what these tests say is
// said by the checks for leaks and for uses after a release.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"

namespace {

using Schemas = std::vector<Schema>;

// Schemas from nothing.
template <class... Each>
Schemas all(Each... schemas) {
  Schemas list;
  (list.push_back(std::move(schemas)), ...);
  return list;
}

// Makes schemas and destroys them, once in each order. Whatever is destroyed,
// the others stay as they are.
void destroyInEachOrder(const std::function<Schemas()> &make) {
  std::vector<std::size_t> order(make().size());
  std::iota(order.begin(), order.end(), 0U);
  do {
    SCOPED_TRACE(testing::PrintToString(order));
    Schemas schemas = make();
    std::vector<std::string> states;
    for (const Schema &schema : schemas) {
      states.push_back(stateOf(schema.get()));
    }
    for (const std::size_t destroyed : order) {
      schemas[destroyed].reset();
      for (std::size_t i = 0; i < schemas.size(); ++i) {
        if (schemas[i] != nullptr) {
          EXPECT_EQ(stateOf(schemas[i].get()), states[i]) << i;
        }
      }
    }
  } while (std::next_permutation(order.begin(), order.end()));
}

class SchemaManagerSharingTest : public testing::TestWithParam<Kind> {
 protected:
  // An old schema whose merge into a release fails after two definitions.
  struct Pair {
    Schema release;
    Schema old;
  };

  const Kind &kind() const { return GetParam(); }
  const std::string &file() const { return kind().file; }

  std::string line(const std::string &oid, const std::string &name,
                   const std::string &text) const {
    return kind().line(oid, name, text);
  }
  std::string only(const std::string &oid, const std::string &name,
                   const std::string &text) const {
    return kind().only(oid, name, line(oid, name, text));
  }

  unsigned int compare(const Schema &schema, const Schema &other) const {
    return (schema.get()->*kind().compare)(other.get());
  }
  unsigned int merge(const Schema &target, const Schema &source) const {
    return (target.get()->*kind().merge)(source.get());
  }

  Pair unmerged() const {
    return {makeSchema({{"V3.system.at", line("1.2", "b", "theirs")}}),
            makeSchema({{file(), m_a + m_b}, {"V3.config.at", m_z}})};
  }
  Pair failed() const {
    Pair pair = unmerged();
    EXPECT_EQ(merge(pair.release, pair.old), 0U);
    return pair;
  }

  // Records the OID of what stopped the merge.
  void removeCause(const Pair &pair) const {
    const auto recording = makeSchema({{file(), m_z}});
    pair.old->findOidInSet(recording.get(), "1.9")->insert("1.9");
  }

  // The definitions a, b and z, in the states of the schemas.
  const std::string m_a = line("1.1", "a", "mine");
  const std::string m_b = line("1.2", "b", "mine");
  const std::string m_z = line("1.9", "z", "mine");
  const std::string m_owned =
      kind().owned("1.1", "a", m_a) + kind().owned("1.2", "b", m_b);
  const std::string m_byOid =
      kind().byOid("1.1", "a") + kind().byOid("1.2", "b");
  const std::string m_releaseState =
      m_owned + m_byOid + file() + ": 1.1\nV3.system.at: 1.2\n";
  const std::string m_oldState = m_owned + kind().owned("1.9", "z", m_z) +
                                 m_byOid + kind().byOid("1.9", "z") + file() +
                                 ": 1.1 1.2\n";
};

INSTANTIATE_TEST_SUITE_P(Kinds, SchemaManagerSharingTest,
                         testing::ValuesIn(kKinds), kindName);

TEST_P(SchemaManagerSharingTest, BothHoldWhatAFailedMergeMoved) {
  const Pair pair = failed();
  EXPECT_EQ(stateOf(pair.release.get()), m_releaseState);
  EXPECT_EQ(stateOf(pair.old.get()), m_oldState);
  destroyInEachOrder([this] {
    Pair again = failed();
    return all(std::move(again.release), std::move(again.old));
  });
}

TEST_P(SchemaManagerSharingTest, TheSurvivorOfAFailedMergeIsWritten) {
  for (const Order order : {Order::kFirstFirst, Order::kSecondFirst}) {
    Pair pair = failed();
    const Schema &survivor =
        order == Order::kFirstFirst ? pair.old : pair.release;
    (order == Order::kFirstFirst ? pair.release : pair.old).reset();
    const FixedDate date;
    const TemporaryDirectory directory;
    EXPECT_EQ(survivor->writeSetToFile({"1.1", "1.2"},
                                       directory.string() + "/written"),
              0U);
    // A storage definition is written with its attribute type only.
    EXPECT_EQ(directory.read("written"),
              kHeaderLine + (kind().isStorage() ? "" : m_a + m_b));
  }
}

TEST_P(SchemaManagerSharingTest, AFailedMergeMayBeRepeated) {
  destroyInEachOrder([this] {
    Pair pair = failed();
    for (int repetition = 0; repetition < 3; ++repetition) {
      EXPECT_EQ(merge(pair.release, pair.old), 0U);
      EXPECT_EQ(stateOf(pair.release.get()), m_releaseState);
      EXPECT_EQ(stateOf(pair.old.get()), m_oldState);
    }
    return all(std::move(pair.release), std::move(pair.old));
  });
}

TEST_P(SchemaManagerSharingTest, AFailedMergeMayBeRetriedWithoutItsCause) {
  destroyInEachOrder([this] {
    Pair pair = failed();
    removeCause(pair);
    EXPECT_EQ(merge(pair.release, pair.old), 1U);
    EXPECT_EQ(stateOf(pair.release.get()),
              m_owned + kind().owned("1.9", "z", m_z) + m_byOid +
                  kind().byOid("1.9", "z") + file() +
                  ": 1.1 1.9\nV3.system.at: 1.2\n");
    EXPECT_EQ(stateOf(pair.old.get()), file() + ": 1.1 1.2 1.9\n");
    return all(std::move(pair.release), std::move(pair.old));
  });
}

TEST_P(SchemaManagerSharingTest, ASharedDefinitionIsEqualToItself) {
  destroyInEachOrder([this] {
    Pair pair = failed();
    EXPECT_EQ(compare(pair.old, pair.release), 1U);
    EXPECT_EQ(stateOf(pair.release.get()), m_releaseState);
    EXPECT_EQ(stateOf(pair.old.get()),
              kind().owned("1.9", "z", m_z) + kind().byOid("1.1", m_a) +
                  kind().byOid("1.2", m_b) + kind().byOid("1.9", "z") +
                  (kind().isStorage() ? file() + ": 1.1 1.2\n" : ""));
    return all(std::move(pair.release), std::move(pair.old));
  });
  destroyInEachOrder([this] {
    Pair pair = failed();
    EXPECT_EQ(compare(pair.release, pair.old), 1U);
    EXPECT_EQ(stateOf(pair.old.get()), m_oldState);
    EXPECT_EQ(
        stateOf(pair.release.get()),
        kind().byOid("1.1", m_a) + kind().byOid("1.2", m_b) +
            (kind().isStorage() ? file() + ": 1.1\nV3.system.at: 1.2\n" : ""));
    return all(std::move(pair.release), std::move(pair.old));
  });
}

TEST_P(SchemaManagerSharingTest, BothMayRemoveWhatTheyShare) {
  destroyInEachOrder([this] {
    Pair pair = failed();
    EXPECT_EQ(compare(pair.release, pair.release), 1U);
    EXPECT_EQ(compare(pair.old, pair.old), 1U);
    EXPECT_EQ(merge(pair.release, pair.old), 1U);
    return all(std::move(pair.release), std::move(pair.old));
  });
}

TEST_P(SchemaManagerSharingTest, AThirdSchemaTakesWhatIsShared) {
  destroyInEachOrder([this] {
    Pair pair = failed();
    Schema third = emptySchema();
    EXPECT_EQ(merge(third, pair.release), 1U);
    EXPECT_EQ(stateOf(third.get()), m_releaseState);
    EXPECT_EQ(stateOf(pair.release.get()),
              file() + ": 1.1\nV3.system.at: 1.2\n");
    EXPECT_EQ(stateOf(pair.old.get()), m_oldState);
    return all(std::move(pair.release), std::move(pair.old), std::move(third));
  });
}

TEST_P(SchemaManagerSharingTest, ThreeSchemasShareAfterTwoFailures) {
  destroyInEachOrder([this] {
    Pair pair = failed();
    Schema third = emptySchema();
    EXPECT_EQ(merge(third, pair.old), 0U);
    EXPECT_EQ(stateOf(third.get()), m_owned + m_byOid + file() + ": 1.1 1.2\n");
    EXPECT_EQ(merge(third, pair.old), 0U);
    EXPECT_EQ(merge(pair.release, pair.old), 0U);
    return all(std::move(pair.release), std::move(pair.old), std::move(third));
  });
  destroyInEachOrder([this] {
    Pair pair = failed();
    Schema third = emptySchema();
    EXPECT_EQ(merge(third, pair.old), 0U);
    EXPECT_EQ(merge(third, pair.release), 1U);
    removeCause(pair);
    EXPECT_EQ(merge(third, pair.old), 1U);
    EXPECT_EQ(third->attributeTypes().size() + third->objectClasses().size() +
                  third->storageDefinitions().size(),
              3U);
    return all(std::move(pair.release), std::move(pair.old), std::move(third));
  });
}

TEST_P(SchemaManagerSharingTest, TheOldSchemaMayTakeTheReleaseInstead) {
  destroyInEachOrder([this] {
    Pair pair = failed();
    EXPECT_EQ(merge(pair.old, pair.release), 1U);
    EXPECT_EQ(stateOf(pair.old.get()), m_oldState);
    EXPECT_EQ(stateOf(pair.release.get()),
              file() + ": 1.1\nV3.system.at: 1.2\n");
    return all(std::move(pair.release), std::move(pair.old));
  });
}

// Each replaces what it shares; the other keeps it.
TEST_P(SchemaManagerSharingTest, WhatOneReplacesTheOtherKeeps) {
  const auto update = [this](const Schema &schema, const char *text) {
    const auto source = makeSchema({{file(), line("1.1", "a", text)}});
    EXPECT_EQ(merge(schema, source), 1U);
  };
  const std::string updated =
      kind().owned("1.1", "a", line("1.1", "a", "new")) +
      kind().owned("1.2", "b", m_b);
  destroyInEachOrder([&] {
    Pair pair = failed();
    update(pair.release, "new");
    EXPECT_EQ(stateOf(pair.release.get()),
              updated + m_byOid + file() + ": 1.1\nV3.system.at: 1.2\n");
    EXPECT_EQ(stateOf(pair.old.get()), m_oldState);
    return all(std::move(pair.release), std::move(pair.old));
  });
  destroyInEachOrder([&] {
    Pair pair = failed();
    update(pair.old, "new");
    EXPECT_EQ(stateOf(pair.release.get()), m_releaseState);
    update(pair.release, "newer");
    return all(std::move(pair.release), std::move(pair.old));
  });
}

TEST_P(SchemaManagerSharingTest, AFailedMergeOfChangedSchemasIsRepeated) {
  destroyInEachOrder([this] {
    Pair pair = failed();
    EXPECT_EQ(compare(pair.old, pair.release), 1U);
    EXPECT_EQ(merge(pair.release, pair.old), 0U);
    EXPECT_EQ(stateOf(pair.release.get()), m_releaseState);
    EXPECT_EQ(compare(pair.release, pair.release), 1U);
    EXPECT_EQ(merge(pair.release, pair.old), 0U);
    return all(std::move(pair.release), std::move(pair.old));
  });
}

TEST_P(SchemaManagerSharingTest, AReplacedDefinitionIsReleased) {
  const auto release = makeSchema({{file(), line("1.1", "a", "theirs")}});
  for (const char *text : {"mine", "newer", "newest"}) {
    const auto old = makeSchema({{file(), line("1.1", "a", text)}});
    EXPECT_EQ(merge(release, old), 1U);
    EXPECT_EQ(stateOf(release.get()),
              only("1.1", "a", text) + file() + ": 1.1\n");
  }
}

TEST_P(SchemaManagerSharingTest, AReplacedDefinitionIsReleasedOnFailure) {
  const auto release = makeSchema({{file(), line("1.1", "a", "theirs")}});
  const auto old = makeSchema({{file(), m_a}, {"V3.config.at", m_z}});
  EXPECT_EQ(merge(release, old), 0U);
  EXPECT_EQ(stateOf(release.get()),
            only("1.1", "a", "mine") + file() + ": 1.1\n");
}

// Attribute types and object classes: those that an OID alone may lead to.
class SchemaManagerSharingNamedTest : public SchemaManagerSharingTest {};

INSTANTIATE_TEST_SUITE_P(Kinds, SchemaManagerSharingNamedTest,
                         testing::Values(kKinds[0], kKinds[1]), kindName);

TEST_P(SchemaManagerSharingNamedTest, AReplacedNamesakeIsReleased) {
  const auto release = makeSchema({{file(), line("2.1", "a", "theirs")}});
  const auto old = makeSchema({{file(), m_a}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()),
            only("1.1", "a", "mine") + file() + ": 2.1\n");
}

TEST_P(SchemaManagerSharingNamedTest, ARemovedDefinitionStaysWithItsOid) {
  const auto schema = makeSchema({{file(), m_a + m_b}});
  EXPECT_EQ(compare(schema, schema), 1U);
  const auto other = makeSchema({{file(), line("1.1", "x", "other")}});
  EXPECT_EQ(merge(schema, other), 1U);
  // The newcomer has its name alone: its OID still leads to the removed one.
  EXPECT_EQ(stateOf(schema.get()),
            kind().owned("1.1", "x", line("1.1", "x", "other")) +
                kind().byOid("1.1", m_a) + kind().byOid("1.2", m_b) + file() +
                ": 1.1\n");
  // Nothing leads to the newcomer after this.
  EXPECT_EQ(compare(schema, schema), 1U);
  EXPECT_EQ(stateOf(schema.get()),
            kind().byOid("1.1", m_a) + kind().byOid("1.2", m_b));
}

TEST_P(SchemaManagerSharingNamedTest, ARemovedDefinitionGoesWithItsOid) {
  const auto schema = makeSchema({{file(), m_a}});
  EXPECT_EQ(compare(schema, schema), 1U);
  EXPECT_EQ(stateOf(schema.get()), kind().byOid("1.1", m_a));
  // By its name "x" the first one gets into the table and takes its OID from
  // the removed one when the second one replaces it.
  EXPECT_EQ(merge(schema, makeSchema({{file(), line("1.1", "x", "other")}})),
            1U);
  EXPECT_EQ(merge(schema, makeSchema({{file(), line("1.3", "x", "last")}})),
            1U);
  EXPECT_EQ(stateOf(schema.get()),
            only("1.3", "x", "last") + file() + ": 1.1\n");
}

TEST_P(SchemaManagerSharingNamedTest, WhatMovesTakesItsOidFromARemovedOne) {
  const auto old = makeSchema({{file(), m_a + line("1.1", "b", "second")}});
  EXPECT_EQ(compare(old, makeSchema({{file(), m_a}})), 1U);
  const auto release = makeSchema({{file(), line("1.1", "b", "theirs")}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(old.get()), "");
  EXPECT_EQ(stateOf(release.get()),
            only("1.1", "b", "second") + file() + ": 1.1\n");
}

TEST_P(SchemaManagerSharingNamedTest, ARemovedSecondOfItsOidIsReleased) {
  const auto schema = makeSchema({{file(), m_a + line("1.1", "b", "second")}});
  EXPECT_EQ(compare(schema, schema), 1U);
  EXPECT_EQ(stateOf(schema.get()), kind().byOid("1.1", m_a));
}

// A merged definition that finds both its keys taken is in no table any more.
TEST_P(SchemaManagerSharingNamedTest,
       AMergedDefinitionWithoutAPlaceIsReleased) {
  const auto old = makeSchema({{file(), line("b", "a", "mine")}});
  const auto release = makeSchema(
      {{file(), line("b", "a", "theirs") + line("2.1", "b", "other")}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()),
            only("b", "a", "theirs") + file() + ": 2.1 b\n");
  EXPECT_EQ(stateOf(old.get()), file() + ": b\n");
}

// The same in a merge that fails: the source keeps it.
TEST_P(SchemaManagerSharingNamedTest, ADefinitionWithoutAPlaceStaysOnFailure) {
  destroyInEachOrder([this] {
    Schema old =
        makeSchema({{file(), line("b", "a", "mine")}, {"V3.config.at", m_z}});
    Schema release = makeSchema(
        {{file(), line("b", "a", "theirs") + line("2.1", "b", "other")}});
    EXPECT_EQ(merge(release, old), 0U);
    EXPECT_EQ(stateOf(release.get()),
              only("b", "a", "theirs") + file() + ": 2.1 b\n");
    return all(std::move(release), std::move(old));
  });
}

// The target holds a shared definition by its OID alone; such a one need not be
// freed.
TEST_P(SchemaManagerSharingNamedTest, SharingByOidAloneSurvivesEither) {
  const auto make = [this] {
    Schema release = makeSchema(
        {{file(), line("1.1", "w", "first") + line("1.1", "a", "second")}});
    Schema old = makeSchema({{file(), m_a}, {"V3.config.at", m_z}});
    EXPECT_EQ(merge(release, old), 0U);
    EXPECT_EQ(stateOf(release.get()),
              kind().owned("1.1", "a", line("1.1", "a", "second")) +
                  kind().byOid("1.1", m_a) + file() + ": 1.1\n");
    return all(std::move(release), std::move(old));
  };
  leaksDefinitions([&] {
    destroyInEachOrder(make);
    return 0;
  });
}

}  // namespace
