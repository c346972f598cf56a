// The merge as a whole, and where it records what it adds.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace {

using Messages = std::vector<std::string>;

TEST(SchemaManagerMergeSchemasTest, MergesAllThreeKinds) {
  const auto old =
      makeSchema({{"V3.user.at", typeLine("1.1", {"cn"}, "mine")},
                  {"V3.system.oc", classLine("1.2", {"person"}, "mine")},
                  {"V3.qor.oc", storageLine("1.3", "mine")}});
  const auto release =
      makeSchema({{"V3.user.at", typeLine("2.1", {"sn"}, "theirs")},
                  {"V3.user.oc", classLine("1.2", {"person"}, "theirs")},
                  {"V3.qor.at", storageLine("2.1", "theirs")}});
  EXPECT_EQ(release->mergeSchemas(old.get()), 1U);
  EXPECT_EQ(stateOf(release.get()),
            "type cn: " + typeLine("1.1", {"cn"}, "mine") +
                "type sn: " + typeLine("2.1", {"sn"}, "theirs") +
                "type by OID 1.1: cn\n"
                "type by OID 2.1: sn\n"
                "class person: " +
                classLine("1.2", {"person"}, "mine") +
                "class by OID 1.2: person\n"
                "storage 1.3: " +
                storageLine("1.3", "mine") +
                "storage 2.1: " + storageLine("2.1", "theirs") +
                "V3.user.oc: 1.2\n"
                "V3.user.at: 1.1 2.1\n"
                "V3.qor.oc: 1.3\n"
                "V3.qor.at: 2.1\n");
  EXPECT_EQ(stateOf(old.get()),
            "V3.user.at: 1.1\nV3.qor.oc: 1.3\nV3.system.oc: 1.2\n");
}

TEST(SchemaManagerMergeSchemasTest, AnEmptySchemaIsMerged) {
  const auto release = emptySchema();
  EXPECT_EQ(release->mergeSchemas(emptySchema().get()), 1U);
  EXPECT_EQ(stateOf(release.get()), "");
}

// The kinds are merged in this order, and none after one that fails.
TEST(SchemaManagerMergeSchemasTest, AFailureEndsItBeforeTheNextKind) {
  struct Part {
    const char *message;
    std::string line;
    std::string merged;
  };
  const Part kParts[] = {
      {"mergeAttrs: findOidInSet returned NULL\n",
       typeLine("1.1", {"cn"}, "mine"),
       kKinds[0].only("1.1", "cn", typeLine("1.1", {"cn"}, "mine"))},
      {"mergeQORAttrs: findOidInSet returned NULL\n",
       storageLine("1.2", "mine"),
       kKinds[2].only("1.2", "", storageLine("1.2", "mine"))},
      {"mergeObjClasses: findOidInSet returned NULL\n",
       classLine("1.3", {"person"}, "mine"),
       kKinds[1].only("1.3", "person", classLine("1.3", {"person"}, "mine"))},
  };
  for (unsigned int failing = 0; failing < 3; ++failing) {
    SCOPED_TRACE(failing);
    std::string recorded, merged, oids;
    for (unsigned int i = 0; i < 3; ++i) {
      const std::string oid = "1." + std::to_string(i + 1);
      recorded += i == failing ? "" : kParts[i].line;
      merged += i < failing ? kParts[i].merged : "";
      oids += i < failing ? ' ' + oid : "";
    }
    const auto old = makeSchema({{"V3.user.at", recorded},
                                 {"V3.modifiedschema", kParts[failing].line}});
    const auto release = emptySchema();

    TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(release->mergeSchemas(old.get()), 0U);

    EXPECT_EQ(recorder.messages(),
              (Messages{"findOidInSet: Unable to find OID, 1." +
                            std::to_string(failing + 1) + ", in set.\n",
                        kParts[failing].message}));
    EXPECT_EQ(stateOf(release.get()),
              merged + (oids.empty() ? "" : "V3.user.at:" + oids + '\n'));
    // What came before the failing kind has left; what comes after has not.
    EXPECT_EQ(old->attributeTypes().size(), failing == 0 ? 1U : 0U);
    EXPECT_EQ(old->attributeTypesByOid().size(), failing == 0 ? 1U : 0U);
    EXPECT_EQ(old->storageDefinitions().size(), failing <= 1 ? 1U : 0U);
    EXPECT_EQ(old->objectClasses().size(), 1U);
    EXPECT_EQ(old->objectClassesByOid().size(), 1U);
  }
}

TEST(SchemaManagerMergeSchemasTest, TheListOfModificationsStaysBehind) {
  const auto old =
      makeSchema({{"V3.modifiedschema", typeLine("1.1", {"cn"}, "mine")},
                  {"V3.system.at", storageLine("1.1", "mine")}});
  const auto release =
      makeSchema({{"V3.modifiedschema", typeLine("1.2", {"sn"}, "theirs")}});
  EXPECT_EQ(release->mergeSchemas(old.get()), 1U);
  EXPECT_EQ(stateOf(release.get()),
            "type cn: " + typeLine("1.1", {"cn"}, "mine") +
                "type sn: " + typeLine("1.2", {"sn"}, "theirs") +
                "type by OID 1.1: cn\n"
                "type by OID 1.2: sn\n"
                "storage 1.1: " +
                storageLine("1.1", "mine") +
                "V3.system.at: 1.1\n"
                "V3.modifiedschema: 1.2\n");
}

// The way of a migration: compare, merge, write, read again.
TEST(SchemaManagerMergeSchemasTest, WhatWasMergedIsWritten) {
  const FixedDate date;
  const std::string changed = typeLine("1.2", {"changed"}, "mine");
  const std::string added = typeLine("1.3", {"added"}, "mine");
  const std::string storage = storageLine("1.3", "mine");
  const std::string same = typeLine("1.1", {"same"}, "x");
  const auto old = makeSchema(
      {{"V3.user.at", same + changed + added + typeLine("1.4", {"no"}, "mine")},
       {"V3.qor.at", storage}});
  const auto release = makeSchema(
      {{"V3.system.at", same + typeLine("1.2", {"changed"}, "theirs")}});
  exclude(old.get(), "1.4");

  EXPECT_EQ(old->compSchemas(release.get()), 1U);
  EXPECT_EQ(release->mergeSchemas(old.get()), 1U);

  const TemporaryDirectory directory;
  const struct {
    const char *file;
    std::string text;
  } kFiles[] = {
      {"V3.user.oc", ""},
      {"V3.user.at", kHeaderLine + added + storage},
      {"V3.qor.oc", ""},
      {"V3.qor.at", ""},  // the OID was recorded for V3.user.at first
      {"V3.system.oc", ""},
      {"V3.system.at", kHeaderLine + same + changed},
      {"V3.modifiedschema", ""},
  };
  for (const auto &file : kFiles) {
    EXPECT_EQ(release->writeFile(directory.string(), file.file), 0U);
    EXPECT_EQ(directory.read(file.file), file.text) << file.file;
  }
}

// A schema in which the OIDs <prefix>0 to <prefix>5 are recorded, one for each
// file in the order of the search.
Schema oneForEachFile(const std::string &prefix) {
  std::vector<SchemaFile> files;
  for (const char *file : kSearchedFiles) {
    const std::string oid = prefix + std::to_string(files.size());
    files.push_back({file, storageLine(oid, "x")});
  }
  return makeSchema(files);
}

TEST(SchemaManagerMergeSchemasTest, FindsItsOwnSetOfTheSameFile) {
  const auto old = oneForEachFile("1.");
  const auto release = oneForEachFile("2.");
  for (int file = 0; file < 6; ++file) {
    SCOPED_TRACE(kSearchedFiles[file]);
    const std::string number = std::to_string(file);
    std::set<std::string> *found =
        release->findOidInSet(old.get(), "1." + number);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(*found, (std::set<std::string>{"2." + number}));
    EXPECT_EQ(release->findOidInSet(old.get(), "1." + number), found);
    EXPECT_EQ(release->findOidInSet(release.get(), "2." + number), found);
  }
}

TEST(SchemaManagerMergeSchemasTest, FindsTheFirstSetThatHoldsTheOid) {
  const auto release = oneForEachFile("2.");
  for (unsigned int files = 1; files < 1U << 6U; ++files) {
    SCOPED_TRACE(files);
    std::vector<SchemaFile> recording;
    std::size_t first = 6;
    for (std::size_t file = 6; file-- > 0;) {
      if ((files >> file & 1U) != 0) {
        first = file;
        // Each another definition, so that none finds its keys taken.
        recording.push_back(
            {kSearchedFiles[file],
             typeLine("1.1", {"name-" + std::to_string(file)}, "x")});
      }
    }
    const auto old = makeSchema(recording);
    const std::set<std::string> *found =
        release->findOidInSet(old.get(), "1.1");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(*found, (std::set<std::string>{"2." + std::to_string(first)}));
  }
}

TEST(SchemaManagerMergeSchemasTest, FindsTheWholeOidInASetOfAnySize) {
  const auto release = oneForEachFile("2.");
  const char *const oids[] = {"1.1", "1.1.1", "1.10", "B", "a"};  // in order
  std::string text;
  for (std::size_t count = 0; count <= 5; ++count) {
    SCOPED_TRACE(count);
    text += count == 0 ? "" : storageLine(oids[count - 1], "x");
    const auto old = makeSchema({{"V3.qor.at", text}});
    TraceRecorder recorder(kTraceDebug);
    Messages expected;
    for (const char *oid : {"", "1", "1.1", "1.1.", "1.1.1", "1.1.1.1", "1.10",
                            "1.100", ".1", "A", "B", "a", "aa", "b"}) {
      bool recorded = false;
      for (std::size_t i = 0; i < count; ++i) {
        recorded = recorded || oids[i] == std::string(oid);
      }
      EXPECT_EQ(release->findOidInSet(old.get(), oid) != nullptr, recorded)
          << oid;
      if (!recorded) {
        expected.push_back("findOidInSet: Unable to find OID, " +
                           std::string(oid) + ", in set.\n");
      }
    }
    EXPECT_EQ(recorder.messages(), expected);
  }
}

TEST(SchemaManagerMergeSchemasTest, FindsNothingInTheOtherFiles) {
  const auto release = oneForEachFile("2.");
  for (const char *file : kUnsearchedFiles) {
    SCOPED_TRACE(file);
    const auto old = makeSchema({{file, storageLine("1.1", "x")}});
    exclude(old.get(), "1.2");
    TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(release->findOidInSet(old.get(), "1.1"), nullptr);
    EXPECT_EQ(release->findOidInSet(old.get(), "1.2"), nullptr);
    EXPECT_EQ(recorder.messages(),
              (Messages{"findOidInSet: Unable to find OID, 1.1, in set.\n",
                        "findOidInSet: Unable to find OID, 1.2, in set.\n"}));
  }
}

// A look-up by key stands in for a walk over the set: each place in sets of
// several sizes, and what lies beside it.
TEST(SchemaManagerMergeSchemasTest, OidsAreFoundAndRemovedInSetsOfAnySize) {
  for (int count = 0; count <= 5; ++count) {
    std::string text, excluded;
    for (int i = 0; i < count; ++i) {
      const std::string oid = "1." + std::to_string(2 * i + 1);
      text += storageLine(oid, "x");
      excluded += oid + ' ';
    }
    for (int i = 0; i <= 2 * count; ++i) {
      const std::string oid = "1." + std::to_string(i);
      SCOPED_TRACE(testing::Message() << oid << " of " << count);
      const bool listed = i % 2 != 0;
      const auto schema = makeSchema({{"V3.system.at", text}});
      exclude(schema.get(), excluded);
      EXPECT_EQ(schema->isExcluded(oid), listed ? 1U : 0U);
      EXPECT_EQ(schema->isExcluded(oid + ".1"), 0U);
      std::set<std::string> left = fileSet(schema.get(), "V3.system.at");
      left.erase(oid);
      EXPECT_EQ(schema->delOidFromFileSet(oid), listed ? 0U : 32U);
      EXPECT_EQ(fileSet(schema.get(), "V3.system.at"), left);
      EXPECT_EQ(schema->delOidFromFileSet(oid), 32U);
      EXPECT_EQ(schema->isExcluded(oid), listed ? 1U : 0U);
    }
  }
}

}  // namespace
