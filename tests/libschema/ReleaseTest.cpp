// Which definitions and analysers are freed when, and which stay.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>

#include "AllocationSchemas.h"
#include "SchemaLexan.h"
#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "support/ContractLeaks.h"
#include "support/FailingAllocation.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace allocation_schemas;

TEST(ReleaseTest, NothingElseIsAsLargeAsADefinition) {
  const TemporaryDirectory directory;
  directory.write("V3.user.at", "attributetypes nothing more\n");
  const std::size_t blocks = definitionBlocks();
  SchemaManager schema(directory.string());
  EXPECT_EQ(leaksAnalyser([&] { return schema.readFile("V3.user.at"); }), 1U);
  EXPECT_EQ(definitionBlocks(), blocks);
}

TEST(ReleaseTest, TheAnalyserOfAFileThatIsNotReadToItsEndStays) {
  const TemporaryDirectory directory;
  directory.write("V3.user.at", "attributetypes nothing more\n");
  directory.write("V3.user.oc", "");
  const auto analysers = [] { return blocksOfSize(sizeof(SchemaLexan)); };
  const std::size_t before = analysers();
  {
    SchemaManager schema(directory.string());
    EXPECT_EQ(schema.readFile("V3.user.oc"), 0U);
    EXPECT_EQ(analysers(), before);
    EXPECT_EQ(leaksAnalyser([&] { return schema.readFile("V3.user.at"); }), 1U);
    EXPECT_EQ(analysers(), before + 1);
  }
  EXPECT_EQ(analysers(), before + 1);
}

TEST(ReleaseTest, DefinitionsThatAreFiledNowhereStay) {
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

// The attribute types, object classes and storage definitions that there are
// more of than when it was made.
class Made {
 public:
  using Counts = std::array<std::size_t, 3>;

  Counts operator()() const {
    const Counts now = blocks();
    return {now[0] - m_before[0], now[1] - m_before[1], now[2] - m_before[2]};
  }

 private:
  static Counts blocks() {
    return {blocksOfSize(sizeof(Attribute)), blocksOfSize(sizeof(ObjectClass)),
            blocksOfSize(sizeof(QORAttribute))};
  }

  const Counts m_before = blocks();
};

using Counts = Made::Counts;

constexpr char kFile[] = "V3.user.at";

std::string both(int oid, int name) {
  return line(kKinds[0], oid, name, "x") + line(kKinds[1], oid, name, "x");
}

// Nothing leads to a removed storage definition: it is released at once. The
// others may be found by their OIDs, and stay until the manager goes.
TEST(ReleaseTest, OfWhatAComparisonRemoves) {
  const Made made;
  {
    const auto old = makeSchema({{kFile, fileText()}});
    const auto release = makeSchema({{kFile, fileText()}});
    EXPECT_EQ(made(), (Counts{4, 4, 4}));
    EXPECT_EQ(old->compSchemas(release.get()), 1U);
    EXPECT_EQ(made(), (Counts{4, 4, 2}));

    // Each with the OID of one that is there: nothing but its name leads to it.
    const auto renamed = makeSchema({{kFile, both(1, 3)}});
    EXPECT_EQ(release->mergeSchemas(renamed.get()), 1U);
    EXPECT_EQ(made(), (Counts{5, 5, 2}));
    EXPECT_EQ(release->compSchemas(release.get()), 1U);
    EXPECT_EQ(made(), (Counts{5, 5, 0}));
  }
  EXPECT_EQ(made(), (Counts{0, 0, 0}));
}

TEST(ReleaseTest, OfWhatACheckTakesOut) {
  const Made made;
  {
    const auto old = makeSchema({{kFile, fileText()}});
    const auto release = makeSchema({{kFile, ""}});
    EXPECT_EQ(old->checkCollisions(release.get()), 1U);
    EXPECT_EQ(made(), (Counts{2, 2, 0}));
  }
  EXPECT_EQ(made(), (Counts{0, 0, 0}));
}

TEST(ReleaseTest, OfWhatAListWithdraws) {
  const Made made;
  {
    const TemporaryDirectory list;
    for (const Kind &kind : kKinds) {
      list.write(kind.label, oidOf(kind, 1) + '\n');
    }
    const auto schema = makeSchema({{kFile, fileText()}});
    for (const Kind &kind : kKinds) {
      EXPECT_EQ(schema->modifySchema(list.string() + '/' + kind.label), 0U);
    }
    EXPECT_EQ(made(), (Counts{2, 2, 1}));
  }
  EXPECT_EQ(made(), (Counts{0, 0, 0}));
}

// Nothing leads to a replaced definition: it is released at once.
TEST(ReleaseTest, OfWhatAMergeReplaces) {
  const Made made;
  const auto old = makeSchema({{kFile, fileText()}});
  const auto release = makeSchema({{kFile, fileText()}});
  EXPECT_EQ(release->mergeSchemas(old.get()), 1U);
  EXPECT_EQ(made(), (Counts{2, 2, 2}));

  // The second of an OID, which its name leads to, gives way to a namesake.
  const auto twice = makeSchema({{kFile, both(5, 5) + both(5, 6)}});
  const auto namesakes = makeSchema({{kFile, both(7, 6)}});
  EXPECT_EQ(made(), (Counts{5, 5, 2}));
  EXPECT_EQ(twice->mergeSchemas(namesakes.get()), 1U);
  EXPECT_EQ(made(), (Counts{4, 4, 2}));

  // The first one goes with it if nothing but the OID leads to it.
  const auto nameless = makeSchema({{kFile, both(5, 5) + both(5, 6)}});
  const auto first = makeSchema({{kFile, both(5, 5)}});
  EXPECT_EQ(nameless->compSchemas(first.get()), 1U);
  const auto others = makeSchema({{kFile, both(7, 6)}});
  EXPECT_EQ(made(), (Counts{8, 8, 2}));
  EXPECT_EQ(nameless->mergeSchemas(others.get()), 1U);
  EXPECT_EQ(made(), (Counts{6, 6, 2}));

  // So does one that the OID of a definition that moves has led to.
  const auto moved = makeSchema({{kFile, both(5, 5) + both(5, 6)}});
  EXPECT_EQ(moved->compSchemas(first.get()), 1U);
  const auto target = makeSchema({{kFile, both(5, 6)}});
  EXPECT_EQ(made(), (Counts{9, 9, 2}));
  EXPECT_EQ(target->mergeSchemas(moved.get()), 1U);
  EXPECT_EQ(made(), (Counts{7, 7, 2}));
}

}  // namespace
