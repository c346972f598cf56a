#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "support/ContractLeaks.h"
#include "support/TraceRecorder.h"

namespace {

// What the kinds of definitions have in common.
class SchemaManagerMergeKindTest : public testing::TestWithParam<Kind> {
 protected:
  const Kind &kind() const { return GetParam(); }

  std::string line(const std::string &oid, const std::string &name,
                   const std::string &text) const {
    return kind().line(oid, name, text);
  }

  unsigned int merge(const Schema &target, const Schema &source) const {
    return (target.get()->*kind().merge)(source.get());
  }

  std::vector<std::string> failureMessages(const std::string &oid) const {
    return {"findOidInSet: Unable to find OID, " + oid + ", in set.\n",
            kind().mergeOperation + ": findOidInSet returned NULL\n"};
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, SchemaManagerMergeKindTest,
                         testing::ValuesIn(kKinds), kindName);

TEST_P(SchemaManagerMergeKindTest, AnEmptySchemaAddsNothing) {
  const auto release = makeSchema({{kind().file, line("1.1", "cn", "x")}});
  const std::string before = stateOf(release.get());
  const auto old = emptySchema();
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()), before);
  EXPECT_EQ(stateOf(old.get()), "");
}

TEST_P(SchemaManagerMergeKindTest, AddsAnUnknownDefinitionToTheFileItIsFrom) {
  for (const char *file : kSearchedFiles) {
    SCOPED_TRACE(file);
    const std::string mine = line("1.1", "cn", "mine");
    const auto old = makeSchema({{file, mine}});
    const auto release = emptySchema();
    EXPECT_EQ(merge(release, old), 1U);
    EXPECT_EQ(stateOf(release.get()),
              kind().only("1.1", "cn", mine) + file + ": 1.1\n");
    EXPECT_EQ(stateOf(old.get()), file + std::string(": 1.1\n"));
  }
}

TEST_P(SchemaManagerMergeKindTest, AddsToTheFirstFileThatRecordsTheOid) {
  for (const char *first : kSearchedFiles) {
    bool later = false;
    for (const char *second : kSearchedFiles) {
      if (later) {
        SCOPED_TRACE(testing::Message() << first << " and " << second);
        const std::string mine = line("1.1", "cn", "mine");
        const std::string other = kind().isStorage()
                                      ? typeLine("1.1", {"cn"}, "other")
                                      : storageLine("1.1", "other");
        const auto old = makeSchema({{second, mine}, {first, other}});
        const auto release = emptySchema();
        EXPECT_EQ(merge(release, old), 1U);
        EXPECT_EQ(stateOf(release.get()),
                  kind().only("1.1", "cn", mine) + first + ": 1.1\n");
      }
      later = later || first == second;
    }
  }
}

TEST_P(SchemaManagerMergeKindTest, AReplacedDefinitionStaysWhereItIsRecorded) {
  for (const char *file : kSearchedFiles) {
    SCOPED_TRACE(file);
    const std::string mine = line("1.1", "cn", "mine");
    const auto old = makeSchema({{kind().file, mine}});
    const auto release = makeSchema({{file, line("1.1", "cn", "theirs")}});
    EXPECT_EQ(merge(release, old), 1U);
    EXPECT_EQ(stateOf(release.get()),
              kind().only("1.1", "cn", mine) + file + ": 1.1\n");
    EXPECT_EQ(stateOf(old.get()), kind().file + ": 1.1\n");
  }
}

TEST_P(SchemaManagerMergeKindTest, AReplacementNeedsNoRecordOnEitherSide) {
  for (const char *file : kUnsearchedFiles) {
    SCOPED_TRACE(file);
    const std::string mine = line("1.1", "cn", "mine");
    const auto old = makeSchema({{file, mine}});
    const auto release =
        makeSchema({{"V3.config.at", line("1.1", "cn", "theirs")}});
    EXPECT_EQ(merge(release, old), 1U);
    EXPECT_EQ(stateOf(release.get()), kind().only("1.1", "cn", mine));
  }
}

TEST_P(SchemaManagerMergeKindTest, StopsAtAnUnknownDefinitionWithoutARecord) {
  for (const char *file : kUnsearchedFiles) {
    SCOPED_TRACE(file);
    const auto old = makeSchema({{file, line("1.1", "cn", "mine")}});
    const auto release =
        makeSchema({{kind().file, line("1.2", "sn", "theirs")}});
    const std::string before = stateOf(release.get());
    const std::string oldBefore = stateOf(old.get());

    TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(merge(release, old), 0U);

    EXPECT_EQ(recorder.messages(), failureMessages("1.1"));
    EXPECT_EQ(stateOf(release.get()), before);
    EXPECT_EQ(stateOf(old.get()), oldBefore);
  }
}

// Three definitions, each of which is added, replaces one, or stops the merge:
// all 27 schemas. Up to the stop the target changes; the source changes only
// when nothing stops.
TEST_P(SchemaManagerMergeKindTest, DoesWhatComesBeforeTheStop) {
  enum What { kAdded, kReplaces, kStops };
  for (unsigned int schema = 0; schema < 27; ++schema) {
    SCOPED_TRACE(schema);
    std::string recorded, unrecorded, theirs, owned, byOid, oids;
    std::string stop;  // the OID that stops the merge
    unsigned int digits = schema;
    for (const char *const name : {"a", "b", "c"}) {
      const What what = static_cast<What>(digits % 3);
      digits /= 3;
      const std::string oid = std::string("oid-") + name;
      const std::string mine = line(oid, name, "mine");
      const std::string other = line(oid, name, "theirs");
      (what == kStops ? unrecorded : recorded) += mine;
      theirs += what == kReplaces ? other : "";
      stop = stop.empty() && what == kStops ? oid : stop;
      if (what == kReplaces || (what == kAdded && stop.empty())) {
        owned += kind().owned(oid, name, stop.empty() ? mine : other);
        byOid += kind().byOid(oid, name);
      }
      oids += what == kAdded && stop.empty() ? ' ' + oid : "";
    }
    const auto old =
        makeSchema({{kind().file, recorded}, {"V3.config.at", unrecorded}});
    const auto release = makeSchema({{"V3.config.at", theirs}});
    const std::string oldBefore = stateOf(old.get());
    std::string oldFiles;  // its last line, if any, lists the OIDs of the file
    if (!recorded.empty()) {
      oldFiles = oldBefore.substr(oldBefore.rfind("V3."));
    }

    TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(merge(release, old), stop.empty() ? 1U : 0U);

    EXPECT_EQ(recorder.messages(), stop.empty() ? std::vector<std::string>()
                                                : failureMessages(stop));
    EXPECT_EQ(
        stateOf(release.get()),
        owned + byOid + (oids.empty() ? "" : kind().file + ':' + oids + '\n'));
    EXPECT_EQ(stateOf(old.get()), stop.empty() ? oldFiles : oldBefore);
  }
}

TEST_P(SchemaManagerMergeKindTest, LeavesTheOtherKindsAlone) {
  std::vector<SchemaFile> files;
  std::string merged, left;
  for (const Kind &each : kKinds) {
    const std::string mine = each.line("1.1", "cn", "mine");
    files.push_back({each.file, mine});
    (each.label == kind().label ? merged : left) +=
        each.only("1.1", "cn", mine);
  }
  const auto old = makeSchema(files);
  const auto release = emptySchema();
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()), merged + "V3.user.oc: 1.1\n");
  EXPECT_EQ(stateOf(old.get()),
            left + "V3.user.oc: 1.1\nV3.user.at: 1.1\nV3.qor.at: 1.1\n");
}

TEST_P(SchemaManagerMergeKindTest, ExcludedOidsAreMergedLikeAnyOther) {
  const std::string added = line("1.1", "a", "mine");
  const std::string replacing = line("1.2", "b", "mine");
  const auto old = makeSchema({{kind().file, added + replacing}});
  const auto release = makeSchema({{kind().file, line("1.2", "b", "theirs")}});
  exclude(old.get(), "1.1 1.2");
  exclude(release.get(), "1.1 1.2");
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()), kind().owned("1.1", "a", added) +
                                        kind().owned("1.2", "b", replacing) +
                                        kind().byOid("1.1", "a") +
                                        kind().byOid("1.2", "b") + kind().file +
                                        ": 1.1 1.2\nexcluded: 1.1 1.2\n");
}

TEST_P(SchemaManagerMergeKindTest, ASchemaMergedIntoItselfIsAsBefore) {
  for (const char *file : {"V3.user.at", "V3.config.at"}) {
    SCOPED_TRACE(file);
    const auto schema =
        makeSchema({{file, line("1.1", "a", "x") + line("1.2", "b", "x")}});
    const std::string before = stateOf(schema.get());
    EXPECT_EQ(merge(schema, schema), 1U);
    EXPECT_EQ(schema->mergeSchemas(schema.get()), 1U);
    EXPECT_EQ(stateOf(schema.get()), before);
  }
}

// Attribute types and object classes: those that have names.
class SchemaManagerMergeNamedTest : public SchemaManagerMergeKindTest {
 protected:
  std::string owned(const std::string &oid, const std::string &name,
                    const std::string &text) const {
    return kind().owned(oid, name, line(oid, name, text));
  }
  std::string byOid(const std::string &oid, const std::string &shown) const {
    return kind().byOid(oid, shown);
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, SchemaManagerMergeNamedTest,
                         testing::Values(kKinds[0], kKinds[1]), kindName);

TEST_P(SchemaManagerMergeNamedTest, ANamesakeWithAnotherOidIsReplaced) {
  const auto old = makeSchema({{kind().file, line("1.1", "cn", "mine")}});
  const auto release = makeSchema({{kind().file, line("2.1", "cn", "theirs")}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()), owned("1.1", "cn", "mine") +
                                        byOid("1.1", "cn") + kind().file +
                                        ": 2.1\n");
  EXPECT_EQ(stateOf(old.get()), kind().file + ": 1.1\n");
}

TEST_P(SchemaManagerMergeNamedTest, OfNameAndOidTheNameSaysWhatIsReplaced) {
  const auto old = makeSchema({{kind().file, line("1.1", "cn", "mine")}});
  const auto release =
      makeSchema({{kind().file,
                   line("2.1", "cn", "theirs") + line("1.1", "sn", "other")}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()),
            owned("1.1", "cn", "mine") + owned("1.1", "sn", "other") +
                byOid("1.1", "sn") + kind().file + ": 1.1 2.1\n");
}

// The OID of the one that is replaced leads to another definition: that one's
// entry goes.
TEST_P(SchemaManagerMergeNamedTest, TheOwnOidOfAReplacedNamesakeGoes) {
  const auto old = makeSchema({{kind().file, line("1.1", "cn", "mine")}});
  const auto release = makeSchema(
      {{kind().file, line("2.1", "a", "first") + line("2.1", "cn", "second")}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()),
            owned("2.1", "a", "first") + owned("1.1", "cn", "mine") +
                byOid("1.1", "cn") + kind().file + ": 2.1\n");
}

TEST_P(SchemaManagerMergeNamedTest, AnUnknownNameWithAKnownOidIsAddedByName) {
  const auto old = makeSchema({{kind().file, line("1.1", "cn", "mine")}});
  const auto release = makeSchema({{"V3.config.at", line("1.1", "sn", "x")}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()),
            owned("1.1", "cn", "mine") + owned("1.1", "sn", "x") +
                byOid("1.1", "sn") + kind().file + ": 1.1\n");
}

// The release has two definitions of one OID, of which the OID leads to the
// first. So it is that one that gives way to a definition with the name of the
// second; which then finds its name taken. Nobody frees it.
TEST_P(SchemaManagerMergeNamedTest, TheOneThatTheOidLeadsToIsReplaced) {
  const auto old = leaksDefinitions([this] {
    return makeSchema({{kind().file, line("1.1", "b", "mine")}});
  });
  const auto release = makeSchema(
      {{kind().file, line("1.1", "a", "first") + line("1.1", "b", "second")}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()), owned("1.1", "b", "second") +
                                        byOid("1.1", line("1.1", "b", "mine")) +
                                        kind().file + ": 1.1\n");
}

// The same when the name of the one that the OID leads to is gone already.
TEST_P(SchemaManagerMergeNamedTest, WhatOnlyTheOidLeadsToIsReplacedThere) {
  const std::string equal = line("1.1", "a", "x");
  const auto release =
      makeSchema({{"V3.config.at", equal + line("1.1", "b", "theirs")}});
  const auto first = makeSchema({{"V3.config.at", equal}});
  EXPECT_EQ(release->compSchemas(first.get()), 1U);
  const std::string mine = line("1.1", "b", "mine");
  const auto old = leaksDefinitions([&mine] {
    return makeSchema({{"V3.config.at", mine}});
  });
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()),
            owned("1.1", "b", "theirs") + byOid("1.1", mine));
  EXPECT_EQ(stateOf(old.get()), "");
}

// The other way round: the OID leads to the one with the name.
TEST_P(SchemaManagerMergeNamedTest, ASecondDefinitionWithTheOidStays) {
  const auto old = makeSchema({{kind().file, line("1.1", "a", "mine")}});
  const auto release = makeSchema(
      {{kind().file, line("1.1", "a", "first") + line("1.1", "b", "second")}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()),
            owned("1.1", "a", "mine") + owned("1.1", "b", "second") +
                byOid("1.1", "a") + kind().file + ": 1.1\n");
}

// What is replaced is looked up by the OID, and an OID may be the name of
// another definition. That one goes then, and the one with both keys stays.
TEST_P(SchemaManagerMergeNamedTest, AnOidThatIsANameLeadsToTheOneSoNamed) {
  const auto old = makeSchema({{kind().file, line("b", "a", "mine")}});
  const auto release = makeSchema(
      {{kind().file, line("b", "a", "theirs") + line("2.1", "b", "other")}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(
      stateOf(release.get()),
      owned("b", "a", "theirs") + byOid("b", "a") + kind().file + ": 2.1 b\n");
  EXPECT_EQ(stateOf(old.get()), kind().file + ": b\n");
}

// Only the look-up of attribute types takes a name in any case.
TEST_P(SchemaManagerMergeNamedTest, AnOidMayBeANameInUpperCase) {
  const auto old = makeSchema({{kind().file, line("B", "a", "mine")}});
  const auto release = makeSchema(
      {{kind().file, line("B", "a", "theirs") + line("2.1", "b", "other")}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()),
            kind().label == "type"
                ? owned("B", "a", "theirs") + byOid("B", "a") + kind().file +
                      ": 2.1 B\n"
                : owned("B", "a", "mine") + owned("2.1", "b", "other") +
                      byOid("2.1", "b") + byOid("B", "a") + kind().file +
                      ": 2.1 B\n");
}

TEST_P(SchemaManagerMergeNamedTest, TwoDefinitionsWithOneOidBothMove) {
  const auto old = makeSchema(
      {{kind().file, line("1.1", "b", "first") + line("1.1", "a", "second")}});
  const auto release = emptySchema();
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()),
            owned("1.1", "a", "second") + owned("1.1", "b", "first") +
                byOid("1.1", "a") + kind().file + ": 1.1\n");
  EXPECT_EQ(stateOf(old.get()), kind().file + ": 1.1\n");
}

TEST_P(SchemaManagerMergeNamedTest, WhatTheComparisonRemovedDoesNotMove) {
  const std::string equal = line("1.1", "a", "x");
  const auto old =
      makeSchema({{kind().file, equal + line("1.2", "b", "mine")}});
  const auto release = makeSchema({{"V3.system.at", equal}});
  EXPECT_EQ(old->compSchemas(release.get()), 1U);
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()),
            owned("1.1", "a", "x") + owned("1.2", "b", "mine") +
                byOid("1.1", "a") + byOid("1.2", "b") + kind().file +
                ": 1.2\nV3.system.at: 1.1\n");
  EXPECT_EQ(stateOf(old.get()), byOid("1.1", equal) + kind().file + ": 1.2\n");
}

// The OID of what moves is taken out of the source, whatever it leads to there.
TEST_P(SchemaManagerMergeNamedTest, WhatMovesTakesItsOidWithIt) {
  const std::string equal = line("1.1", "a", "x");
  const auto old =
      makeSchema({{kind().file, equal + line("1.1", "b", "mine")}});
  const auto release = makeSchema({{"V3.system.at", equal}});
  EXPECT_EQ(old->compSchemas(release.get()), 1U);
  EXPECT_EQ(stateOf(old.get()),
            owned("1.1", "b", "mine") + byOid("1.1", equal));
  const auto third = makeSchema({{"V3.config.at", line("1.1", "b", "third")}});
  EXPECT_EQ(merge(third, old), 1U);
  EXPECT_EQ(stateOf(third.get()),
            owned("1.1", "b", "mine") + byOid("1.1", "b"));
  EXPECT_EQ(stateOf(old.get()), "");
}

TEST_P(SchemaManagerMergeNamedTest, NamesakesAreFoundByTheFirstNameInAnyCase) {
  const auto many = [this](const Names &names, const char *text) {
    return kind().label == "type" ? typeLine("1.1", names, text)
                                  : classLine("1.1", names, text);
  };
  const auto old = makeSchema({{"V3.config.at", many({"CN", "x"}, "mine")}});
  const auto release =
      makeSchema({{"V3.config.at", many({"cN", "y"}, "theirs")}});
  EXPECT_EQ(merge(release, old), 1U);
  EXPECT_EQ(stateOf(release.get()),
            kind().owned("1.1", "cn", many({"CN", "x"}, "mine")) +
                byOid("1.1", "cn"));

  const auto later = makeSchema({{"V3.config.at", many({"x", "CN"}, "later")}});
  const std::string before = stateOf(release.get());
  EXPECT_EQ(merge(release, later), 0U);
  EXPECT_EQ(stateOf(release.get()), before);
}

TEST(SchemaManagerMergeTest, DefinitionsWithoutNamesAreNamesakes) {
  const auto old =
      makeSchema({{"V3.config.at", typeLine("1.1", {}, "mine") +
                                       namelessClassLine("1.2", "mine")}});
  const auto release =
      makeSchema({{"V3.config.at", typeLine("1.1", {}, "theirs") +
                                       namelessClassLine("2.2", "theirs")}});
  EXPECT_EQ(release->mergeSchemas(old.get()), 1U);
  EXPECT_EQ(stateOf(release.get()),
            "type : " + typeLine("1.1", {}, "mine") + "type by OID 1.1: \n" +
                "class : objectclasses=( 1.2 NAME  DESC 'mine' STRUCTURAL )\n"
                "class by OID 1.2: \n");
}

TEST(SchemaManagerMergeTest, TheVeryObjectsMove) {
  const auto old =
      makeSchema({{"V3.user.at", typeLine("1.1", {"cn"}, "mine") +
                                     classLine("1.2", {"person"}, "mine") +
                                     storageLine("1.1", "mine")}});
  Attribute *const type = old->attributeTypes().at("cn");
  ObjectClass *const objectClass = old->objectClasses().at("person");
  QORAttribute *const storage = old->storageDefinitions().at("1.1");
  const auto release = emptySchema();
  EXPECT_EQ(release->mergeSchemas(old.get()), 1U);
  EXPECT_EQ(release->attributeTypes().at("cn"), type);
  EXPECT_EQ(release->attributeTypesByOid().at("1.1"), type);
  EXPECT_EQ(release->objectClasses().at("person"), objectClass);
  EXPECT_EQ(release->objectClassesByOid().at("1.2"), objectClass);
  EXPECT_EQ(release->storageDefinitions().at("1.1"), storage);
}

}  // namespace
