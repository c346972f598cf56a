// What happens when memory runs out. This program has allocation functions of
// its own, which fail when a test says so and count what is allocated.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Attribute.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "SchemaLexan.h"
#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "ldtr.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace {

constexpr std::size_t kHeader = 16;  // holds the size; keeps the alignment
constexpr std::size_t kMaxSize = 4096;

std::size_t blocksOfSize[kMaxSize + 1];  // larger ones count as of this size

// Which allocation fails.
struct {
  std::size_t left = 0;  // until the one that fails; 0: none does
  bool lasting = false;  // all after that one fail, too
  bool failed = false;
} failure;

bool failsNow() {
  if (failure.failed) {
    return failure.lasting;
  }
  failure.failed = failure.left == 1;
  failure.left -= failure.left == 0 ? 0 : 1;
  return failure.failed;
}

void *allocate(std::size_t size) noexcept {
  void *block = failsNow() ? nullptr : std::malloc(size + kHeader);
  if (block == nullptr) {
    return nullptr;
  }
  *static_cast<std::size_t *>(block) = size;
  ++blocksOfSize[std::min(size, kMaxSize)];
  return static_cast<char *>(block) + kHeader;
}

void *allocateOrThrow(std::size_t size) {
  void *memory = allocate(size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

void release(void *memory) noexcept {
  if (memory != nullptr) {
    void *block = static_cast<char *>(memory) - kHeader;
    --blocksOfSize[std::min(*static_cast<std::size_t *>(block), kMaxSize)];
    std::free(block);
  }
}

std::size_t allBlocks() {
  std::size_t blocks = 0;
  for (const std::size_t count : blocksOfSize) {
    blocks += count;
  }
  return blocks;
}

}  // namespace

void *operator new(std::size_t size) { return allocateOrThrow(size); }
void *operator new[](std::size_t size) { return allocateOrThrow(size); }
void *operator new(std::size_t size, const std::nothrow_t &) noexcept {
  return allocate(size);
}
void *operator new[](std::size_t size, const std::nothrow_t &) noexcept {
  return allocate(size);
}
void operator delete(void *memory) noexcept { release(memory); }
void operator delete[](void *memory) noexcept { release(memory); }
void operator delete(void *memory, std::size_t) noexcept { release(memory); }
void operator delete[](void *memory, std::size_t) noexcept { release(memory); }
void operator delete(void *memory, const std::nothrow_t &) noexcept {
  release(memory);
}
void operator delete[](void *memory, const std::nothrow_t &) noexcept {
  release(memory);
}

namespace {

// Runs `operation` while its n-th allocation fails, alone or with all after it.
// Returns whether it got so far, and stores whether it threw for that.
bool failsAt(std::size_t n, bool lasting,
             const std::function<void()> &operation, bool *thrown) {
  *thrown = false;
  failure = {n, lasting, false};
  try {
    operation();
  } catch (const std::bad_alloc &) {
    *thrown = true;
  }
  const bool failed = failure.failed;
  failure = {};
  return failed;
}

// Numbers stand for names and OIDs, which are too long for a string to hold
// them without an allocation. The kinds do not share OIDs.
std::string line(const Kind &kind, int oid, int name, const std::string &text) {
  return kind.line("1.3.6.1.4.1.42424." + std::to_string(&kind - kKinds) + '.' +
                       std::to_string(oid),
                   "a-definition-with-the-number-" + std::to_string(name),
                   text + "-and-a-description-of-some-length");
}

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

// Tables and sets of OIDs.
std::string contentOf(SchemaManager *schema) {
  std::string text = tablesOf(*schema);
  for (const char *file : kSearchedFiles) {
    text += file;
    for (const std::string &recorded :
         *schema->findOidInSet(&fileProbe(), file)) {
      text += ' ' + recorded;
    }
    text += '\n';
  }
  return text;
}

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

// The blocks that are as large as a definition.
std::size_t definitionBlocks() {
  return blocksOfSize[sizeof(Attribute)] + blocksOfSize[sizeof(ObjectClass)] +
         blocksOfSize[sizeof(QORAttribute)];
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
    for (const auto &entry : table) {
      definitions.insert(entry.second);
    }
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

// Lets each allocation of `operation` fail, and expects an exception or the
// result of an undisturbed run; that no definition is left that no table leads
// to, but for one that was being replaced when the exception came; and then
// that all is released, in either order.
// Before that the operation may be repeated, which brings about the `outcome`
// of the undisturbed run.
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
  for (unsigned int variant = 0; variant < 8; ++variant) {
    const bool lasting = (variant & 1U) != 0;
    const bool repeated = (variant & 2U) != 0;
    const Order order =
        (variant & 4U) != 0 ? Order::kFirstFirst : Order::kSecondFirst;
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
        failed = failsAt(
            n, lasting, [&] { result = operation(pair); }, &thrown);
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

TEST(AllocationFailureTest, Merge) {
  failEachAllocation(Schemas(), merge, ownedByRelease);
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

// A file of definitions of all kinds.
std::string fileText() {
  std::string text;
  for (const Kind &kind : kKinds) {
    text += line(kind, 1, 1, "x") + line(kind, 2, 2, "x");
  }
  return text;
}

TEST(AllocationFailureTest, NothingElseIsAsLargeAsADefinition) {
  const TemporaryDirectory directory;
  directory.write("V3.user.at", "attributetypes nothing more\n");
  const std::size_t blocks = definitionBlocks();
  SchemaManager schema(directory.string());
  EXPECT_EQ(leaksAnalyser([&] { return schema.readFile("V3.user.at"); }), 1U);
  EXPECT_EQ(definitionBlocks(), blocks);
}

TEST(AllocationFailureTest, TheAnalyserOfAFileThatIsNotReadToItsEndStays) {
  const TemporaryDirectory directory;
  directory.write("V3.user.at", "attributetypes nothing more\n");
  directory.write("V3.user.oc", "");
  const std::size_t &analysers = blocksOfSize[sizeof(SchemaLexan)];
  const std::size_t before = analysers;
  {
    SchemaManager schema(directory.string());
    EXPECT_EQ(schema.readFile("V3.user.oc"), 0U);
    EXPECT_EQ(analysers, before);
    EXPECT_EQ(leaksAnalyser([&] { return schema.readFile("V3.user.at"); }), 1U);
    EXPECT_EQ(analysers, before + 1);
  }
  EXPECT_EQ(analysers, before + 1);
}

TEST(AllocationFailureTest, DefinitionsThatAreFiledNowhereStay) {
  for (const char *text : {
           "attributetypes=( 1.1 NAME 'a' DESC 'x'",      // cut off
           "attributetypes { ( NAME 'a' DESC 'x' ) }\n",  // no OID
           "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
           "attributetypes=( 1.2 NAME 'a' DESC 'x' )\n",  // the key is taken
       }) {
    SCOPED_TRACE(text);
    const TemporaryDirectory directory;
    directory.write("V3.user.at", text);
    const std::size_t before = definitionBlocks();
    leaksAnalyser([&] {
      return leaksDefinitions([&] {
        SchemaManager schema(directory.string());
        return schema.readFile("V3.user.at");
      });
    });
    EXPECT_EQ(definitionBlocks(), before + 1);
  }
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

// Follows the trace records of calls, without an allocation of its own.
class Calls {
 public:
  Calls() {
    ldtr_set_sink(&Calls::receive, this);
    trcEvents = kTraceEntry | kTraceWalkEntry;
  }
  ~Calls() {
    trcEvents = 0;
    ldtr_set_sink(nullptr, nullptr);
  }

  Calls(const Calls &) = delete;
  Calls &operator=(const Calls &) = delete;

  // Whether each call that was entered was left, the inner ones first.
  bool balanced() const { return m_balanced && m_depth == 0; }
  // How many an exception passed, and whether they had the code 0.
  std::size_t passed() const { return m_passed; }
  bool passedWithoutResult() const { return m_passedWithoutResult; }

 private:
  static void receive(const ldtr_record &record, void *context) {
    static_cast<Calls *>(context)->receive(record);
  }

  void receive(const ldtr_record &record) {
    if (record.type == ldtr_record::Type::kEntry) {
      m_ids[m_depth++] = record.id;
    } else if (record.type == ldtr_record::Type::kExit) {
      m_balanced = m_balanced && m_depth > 0 && m_ids[--m_depth] == record.id;
      if (std::uncaught_exceptions() > 0) {
        ++m_passed;
        m_passedWithoutResult = m_passedWithoutResult && record.code == 0;
      }
    }
  }

  unsigned int m_ids[16] = {};
  std::size_t m_depth = 0;
  std::size_t m_passed = 0;
  bool m_balanced = true;
  bool m_passedWithoutResult = true;
};

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
         return pair.old->readFile("V3.user.at");
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
      const Calls calls;
      failed = leaksAnalyser([&] {
        return failsAt(
            n, false, [&] { test.operation(pair); }, &thrown);
      });
      EXPECT_TRUE(calls.balanced());
      EXPECT_TRUE(calls.passedWithoutResult());
      EXPECT_EQ(calls.passed() > 0, thrown);
      mostPassed = std::max(mostPassed, calls.passed());
    }
    EXPECT_GE(mostPassed, test.levels) << test.what;
  }
}

// Nothing leads to a replaced definition or to a removed storage definition:
// they are released at once.
TEST(AllocationFailureTest, DefinitionsAreReleasedAtOnce) {
  using Counts = std::array<std::size_t, 3>;
  const auto blocks = [] {
    return Counts{blocksOfSize[sizeof(Attribute)],
                  blocksOfSize[sizeof(ObjectClass)],
                  blocksOfSize[sizeof(QORAttribute)]};
  };
  const Counts before = blocks();
  const auto made = [&] {
    const Counts now = blocks();
    return Counts{now[0] - before[0], now[1] - before[1], now[2] - before[2]};
  };
  const auto old = makeSchema({{"V3.user.at", fileText()}});
  const auto release = makeSchema({{"V3.user.at", fileText()}});
  EXPECT_EQ(made(), (Counts{4, 4, 4}));
  EXPECT_EQ(release->mergeSchemas(old.get()), 1U);
  EXPECT_EQ(made(), (Counts{2, 2, 2}));
  EXPECT_EQ(release->compSchemas(release.get()), 1U);
  EXPECT_EQ(made(), (Counts{2, 2, 0}));  // the others are found by OID

  // Each with the OID of one that is there: nothing but its name leads to it.
  const auto renamed =
      makeSchema({{"V3.user.at",
                   line(kKinds[0], 1, 3, "x") + line(kKinds[1], 1, 3, "x")}});
  EXPECT_EQ(release->mergeSchemas(renamed.get()), 1U);
  EXPECT_EQ(made(), (Counts{3, 3, 0}));
  EXPECT_EQ(release->compSchemas(release.get()), 1U);
  EXPECT_EQ(made(), (Counts{2, 2, 0}));

  // The second of an OID, which its name leads to, gives way to a namesake.
  const char file[] = "V3.user.at";
  const auto both = [](int oid, int name) {
    return line(kKinds[0], oid, name, "x") + line(kKinds[1], oid, name, "x");
  };
  const auto twice = makeSchema({{file, both(5, 5) + both(5, 6)}});
  const auto namesakes = makeSchema({{file, both(7, 6)}});
  EXPECT_EQ(made(), (Counts{5, 5, 0}));
  EXPECT_EQ(twice->mergeSchemas(namesakes.get()), 1U);
  EXPECT_EQ(made(), (Counts{4, 4, 0}));

  // The first one goes with it if nothing but the OID leads to it.
  const auto nameless = makeSchema({{file, both(5, 5) + both(5, 6)}});
  const auto first = makeSchema({{file, both(5, 5)}});
  EXPECT_EQ(nameless->compSchemas(first.get()), 1U);
  const auto others = makeSchema({{file, both(7, 6)}});
  EXPECT_EQ(made(), (Counts{8, 8, 0}));
  EXPECT_EQ(nameless->mergeSchemas(others.get()), 1U);
  EXPECT_EQ(made(), (Counts{6, 6, 0}));

  // So does one that the OID of a definition that moves has led to.
  const auto moved = makeSchema({{file, both(5, 5) + both(5, 6)}});
  EXPECT_EQ(moved->compSchemas(first.get()), 1U);
  const auto target = makeSchema({{file, both(5, 6)}});
  EXPECT_EQ(made(), (Counts{9, 9, 0}));
  EXPECT_EQ(target->mergeSchemas(moved.get()), 1U);
  EXPECT_EQ(made(), (Counts{7, 7, 0}));
}

}  // namespace
