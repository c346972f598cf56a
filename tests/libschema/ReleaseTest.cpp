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

// Nothing leads to a replaced definition or to a removed storage definition:
// they are released at once.
TEST(ReleaseTest, DefinitionsAreReleasedAtOnce) {
  using Counts = std::array<std::size_t, 3>;
  const auto blocks = [] {
    return Counts{blocksOfSize(sizeof(Attribute)),
                  blocksOfSize(sizeof(ObjectClass)),
                  blocksOfSize(sizeof(QORAttribute))};
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
