// What becomes of comparison, merge and reading when memory runs out.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <string>

#include "AllocationSchemas.h"
#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "support/AllocationTesting.h"
#include "support/ContractLeaks.h"
#include "support/FailingAllocation.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace {

using namespace allocation_schemas;
using allocation_schemas::contentOf;

// The OID leads to the one that a walk comes to last.
std::string twoOfOneOid(const Kind &kind) {
  return line(kind, 7, 8, "mine") + line(kind, 7, 7, "mine");
}

// An old schema and a release, of which many can be made.
class Schemas {
 public:
  struct Pair {
    Schema old;
    Schema release;
  };

  // With a definition of `unrecorded`, if any, that stops a merge, and with two
  // of one OID, if it is shared.
  explicit Schemas(const Kind *unrecorded = nullptr, bool oidIsShared = false) {
    for (const Kind &kind : kKinds) {
      m_old.write(
          kind.file,
          line(kind, 1, 1, "same") + line(kind, 2, 2, "mine") +
              line(kind, 3, 3, "mine") + line(kind, 14, 4, "mine") +
              line(kind, 15, 5, "mine") +
              (oidIsShared && !kind.isStorage() ? twoOfOneOid(kind) : ""));
      m_release.write(kind.file, line(kind, 1, 1, "same") +
                                     line(kind, 2, 2, "theirs") +
                                     line(kind, 4, 4, "theirs") +
                                     line(kind, 5, 5, "theirs"));
    }
    m_old.write("V3.config.at", unrecorded == nullptr
                                    ? ""
                                    : line(*unrecorded, 9, 9, "unrecorded"));
    m_release.write("V3.config.at", "");
    m_old.write("excluded", "1.3.6.1.4.1.42424.0.3\n");
  }

  Pair make() const {
    Pair pair = {read(m_old), read(m_release)};
    EXPECT_EQ(pair.old->readExcludedOids(m_old.string() + "/excluded"), 0U);
    return pair;
  }

 private:
  static Schema read(const TemporaryDirectory &directory) {
    Schema schema = std::make_unique<SchemaManager>(directory.string());
    for (const Kind &kind : kKinds) {
      EXPECT_EQ(schema->readFile(kind.file), 0U);
    }
    EXPECT_EQ(schema->readFile("V3.config.at"), 0U);
    return schema;
  }

  const TemporaryDirectory m_old;
  const TemporaryDirectory m_release;
};

std::string contentOf(const Schemas::Pair &pair) {
  return contentOf(pair.old.get()) + contentOf(pair.release.get());
}

// The definitions that the schema owns.
std::string ownedBy(const SchemaManager &schema) {
  std::string text;
  for (const auto &[name, type] : schema.attributeTypes()) {
    text += name + ' ' + type->getDescription() + '\n';
  }
  for (const auto &[name, objectClass] : schema.objectClasses()) {
    text += name + ' ' + objectClass->getDescription() + '\n';
  }
  for (const auto &[oid, storage] : schema.storageDefinitions()) {
    text += oid + '\n';
  }
  return text;
}

template <class Table>
std::set<const QORSchema *> definitionsIn(const Table &table) {
  std::set<const QORSchema *> definitions;
  for (const auto &entry : table) {
    definitions.insert(entry.second);
  }
  return definitions;
}

// How many definitions the tables lead to.
std::size_t reachable(const Schemas::Pair &pair) {
  std::set<const QORSchema *> definitions;
  const auto collect = [&](const auto &table) {
    definitions.merge(definitionsIn(table));
  };
  for (const Schema *schema : {&pair.old, &pair.release}) {
    collect((*schema)->attributeTypes());
    collect((*schema)->attributeTypesByOid());
    collect((*schema)->objectClasses());
    collect((*schema)->objectClassesByOid());
    collect((*schema)->storageDefinitions());
  }
  return definitions.size();
}

using Operation = std::function<unsigned int(const Schemas::Pair &)>;
using Content = std::function<std::string(const Schemas::Pair &)>;

// Lets each allocation of `operation` fail, untraced and traced, and expects an
// exception or the result of an undisturbed run; that no definition is left
// that no table leads to, but for one that was being replaced when the
// exception came; and then that all is released, in either order. Before that
// the operation may be repeated, which brings about the `outcome` of the
// undisturbed run.
void failEachAllocation(const Schemas &schemas, const Operation &operation,
                        const Content &outcome) {
  unsigned int expectedResult = 0;
  std::string expected, expectedOutcome;
  {
    const Schemas::Pair undisturbed = schemas.make();
    expectedResult = operation(undisturbed);
    expected = contentOf(undisturbed);
    expectedOutcome = outcome(undisturbed);
  }
  for (unsigned int variant = 0; variant < 16; ++variant) {
    const bool lasting = (variant & 1U) != 0;
    const bool repeated = (variant & 2U) != 0;
    const Order order =
        (variant & 4U) != 0 ? Order::kFirstFirst : Order::kSecondFirst;
    const unsigned int mask = (variant & 8U) != 0 ? ~0U : 0;
    bool failed = true;
    std::size_t exceptions = 0;
    for (std::size_t n = 1; failed && !testing::Test::HasFailure(); ++n) {
      SCOPED_TRACE(testing::Message()
                   << "variant " << variant << ", n = " << n);
      const std::size_t blocks = allBlocks();
      const std::size_t definitions = definitionBlocks();
      {
        Schemas::Pair pair = schemas.make();
        unsigned int result = 0;
        bool thrown = false;
        {
          const Calls calls(mask);
          failed = failsAt(
              n, lasting, [&] { result = operation(pair); }, &thrown);
          EXPECT_TRUE(calls.balanced());
        }
        exceptions += thrown ? 1 : 0;
        const std::size_t unreachable =
            definitionBlocks() - definitions - reachable(pair);
        EXPECT_LE(unreachable, thrown ? 1U : 0U);
        if (!thrown) {
          EXPECT_EQ(result, expectedResult);
          EXPECT_EQ(contentOf(pair), expected);
        } else if (repeated) {
          EXPECT_EQ(operation(pair), expectedResult);
          EXPECT_EQ(outcome(pair), expectedOutcome);
        }
        destroy(order, &pair.old, &pair.release);
      }
      EXPECT_EQ(allBlocks(), blocks);
    }
    EXPECT_GT(exceptions, 0U);
  }
}

std::string ownedByRelease(const Schemas::Pair &pair) {
  return ownedBy(*pair.release);
}

unsigned int compare(const Schemas::Pair &pair) {
  return pair.old->compSchemas(pair.release.get());
}

unsigned int merge(const Schemas::Pair &pair) {
  return pair.release->mergeSchemas(pair.old.get());
}

TEST(AllocationFailureTest, Comparison) {
  failEachAllocation(Schemas(), compare,
                     [](const Schemas::Pair &pair) { return contentOf(pair); });
}

using Part = unsigned int (SchemaManager::*)(SchemaManager *);

TEST(AllocationFailureTest, EachPartOfAComparison) {
  for (const Part part :
       {&SchemaManager::compAttrTables, &SchemaManager::compQORAttrTables,
        &SchemaManager::compObjTables}) {
    failEachAllocation(
        Schemas(),
        [part](const Schemas::Pair &pair) {
          return (pair.old.get()->*part)(pair.release.get());
        },
        [](const Schemas::Pair &pair) { return contentOf(pair); });
  }
}

// While nothing is traced.
TEST(AllocationFailureTest, APartOfAComparisonThatThrowsHasChangedNothing) {
  const Schemas schemas;
  const std::string before = contentOf(schemas.make());
  for (const Part part :
       {&SchemaManager::compAttrTables, &SchemaManager::compQORAttrTables,
        &SchemaManager::compObjTables}) {
    bool thrown = true;
    std::size_t exceptions = 0;
    for (std::size_t n = 1; thrown && !HasFailure(); ++n) {
      SCOPED_TRACE(n);
      const Schemas::Pair pair = schemas.make();
      failsAt(
          n, false, [&] { (pair.old.get()->*part)(pair.release.get()); },
          &thrown);
      exceptions += thrown ? 1 : 0;
      EXPECT_EQ(contentOf(pair) == before, thrown);
    }
    EXPECT_GT(exceptions, 0U);
  }
}

TEST(AllocationFailureTest, Merge) {
  failEachAllocation(Schemas(), merge, ownedByRelease);
}

TEST(AllocationFailureTest, EachPartOfAMerge) {
  for (const Part part :
       {&SchemaManager::mergeAttrs, &SchemaManager::mergeQORAttrs,
        &SchemaManager::mergeObjClasses}) {
    failEachAllocation(
        Schemas(),
        [part](const Schemas::Pair &pair) {
          return (pair.release.get()->*part)(pair.old.get());
        },
        ownedByRelease);
  }
}

TEST(AllocationFailureTest, MergeOfTwoWithOneOid) {
  failEachAllocation(Schemas(nullptr, true), merge, ownedByRelease);
}

TEST(AllocationFailureTest, AMergeAddsUnderBothKeysOrNeither) {
  std::string text;
  for (int number = 1; number < 4; ++number) {
    text += line(kKinds[0], number, number, "x") +
            line(kKinds[1], number, number, "x");
  }
  bool thrown = true;
  for (std::size_t n = 1; thrown && !HasFailure(); ++n) {
    SCOPED_TRACE(n);
    const Schema old = makeSchema({{"V3.user.at", text}});
    const Schema release = makeSchema({{"V3.user.at", ""}});
    failsAt(
        n, false, [&] { release->mergeSchemas(old.get()); }, &thrown);
    EXPECT_EQ(definitionsIn(release->attributeTypes()),
              definitionsIn(release->attributeTypesByOid()));
    EXPECT_EQ(definitionsIn(release->objectClasses()),
              definitionsIn(release->objectClassesByOid()));
    EXPECT_EQ(definitionsIn(old->attributeTypes()),
              definitionsIn(old->attributeTypesByOid()));
    EXPECT_EQ(definitionsIn(old->objectClasses()),
              definitionsIn(old->objectClassesByOid()));
  }
}

TEST(AllocationFailureTest, MergeAfterComparison) {
  failEachAllocation(
      Schemas(),
      [](const Schemas::Pair &pair) { return compare(pair) + merge(pair); },
      ownedByRelease);
}

TEST(AllocationFailureTest, FailingMerge) {
  for (const Kind &kind : kKinds) {
    SCOPED_TRACE(kind.label);
    failEachAllocation(Schemas(&kind), merge, ownedByRelease);
  }
}

TEST(AllocationFailureTest, RepeatedFailingMerge) {
  failEachAllocation(
      Schemas(&kKinds[0]),
      [](const Schemas::Pair &pair) {
        return merge(pair) + compare(pair) + merge(pair);
      },
      ownedByRelease);
}

// Only the analyser stays behind, as it does whenever a file is not read to
// its end.
TEST(AllocationFailureTest, Reading) {
  const TemporaryDirectory directory;
  directory.write("V3.user.at", fileText());
  const Schema expected = makeSchema({{"V3.user.at", fileText()}});
  // What the standard library keeps from its first use on is there before
  // blocks are counted.
  EXPECT_NE(contentOf(expected.get()), "");
  for (const bool lasting : {false, true}) {
    bool failed = true;
    std::size_t exceptions = 0;
    for (std::size_t n = 1; failed && !HasFailure(); ++n) {
      SCOPED_TRACE(testing::Message() << lasting << ", n = " << n);
      const std::size_t definitions = definitionBlocks();
      {
        SchemaManager schema(directory.string());
        unsigned int result = 0;
        bool thrown = false;
        failed = leaksAnalyser([&] {
          return failsAt(
              n, lasting, [&] { result = schema.readFile("V3.user.at"); },
              &thrown);
        });
        exceptions += thrown ? 1 : 0;
        if (!thrown) {
          EXPECT_EQ(result, 0U);
          EXPECT_EQ(contentOf(&schema), contentOf(expected.get()));
        }
        EXPECT_EQ(schema.compSchemas(expected.get()), 1U);
        EXPECT_EQ(ownedBy(schema), "");
      }
      EXPECT_EQ(definitionBlocks(), definitions);
    }
    EXPECT_GT(exceptions, 0U);
  }
}

// An exception leaves an exit record of each operation that it passes.
TEST(AllocationFailureTest, PassedOperationsAreTraced) {
  const Schemas schemas;
  const struct {
    const char *what;
    Operation operation;
    std::size_t levels;  // of operations that an exception may pass
  } kCases[] = {
      {"comparison", compare, 2},
      {"merge", merge, 2},
      {"reading",
       [](const Schemas::Pair &pair) {
         return leaksAnalyser(
             [&pair] { return pair.old->readFile("V3.user.at"); });
       },
       3},
  };
  for (const auto &test : kCases) {
    bool failed = true;
    std::size_t mostPassed = 0;
    for (std::size_t n = 1; failed && !HasFailure(); ++n) {
      SCOPED_TRACE(testing::Message() << test.what << ", n = " << n);
      const Schemas::Pair pair = schemas.make();
      bool thrown = false;
      const Calls calls(kTraceEntry | kTraceWalkEntry);
      failed = failsAt(
          n, false, [&] { test.operation(pair); }, &thrown);
      EXPECT_TRUE(calls.balanced());
      EXPECT_TRUE(calls.passedWithoutResult());
      EXPECT_EQ(calls.passed() > 0, thrown);
      mostPassed = std::max(mostPassed, calls.passed());
    }
    EXPECT_GE(mostPassed, test.levels) << test.what;
  }
}

}  // namespace
