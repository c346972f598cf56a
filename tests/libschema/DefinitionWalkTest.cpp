// Reading a schema's definitions, field by field, without changing anything.
#include "DefinitionWalk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "SchemaManager.h"
#include "SchemaSymbolTable.h"
#include "libschema/SchemaManagerTesting.h"
#include "libschema/SchemaManagerTexts.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using List = std::vector<std::string>;

// Key and OID of each definition, in the order of the walk.
template <class Definition>
List keysAndOids(const DefinitionWalk<Definition> &walk) {
  List found;
  for (auto it = walk.begin(); it != walk.end(); ++it) {
    found.push_back(it.key() + ": " + it->oid());
  }
  return found;
}

TEST(DefinitionWalkTest, IsForReadingOnly) {
  using Walk = DefinitionWalk<Attribute>;
  EXPECT_TRUE((std::is_same_v<decltype(*std::declval<Walk::Iterator>()),
                              const Attribute &>));
  EXPECT_TRUE((std::is_same_v<
               decltype(std::declval<const SchemaManager>().eachObjectClass()),
               DefinitionWalk<ObjectClass>>));
  EXPECT_TRUE((std::is_same_v<decltype(std::declval<Walk>().find("")),
                              const Attribute *>));
}

TEST(DefinitionWalkTest, EmptySchemaHasNothingToWalkOver) {
  const SchemaManager schema("somewhere");
  const auto expectEmpty = [](const auto &walk) {
    EXPECT_TRUE(walk.empty());
    EXPECT_EQ(walk.size(), 0U);
    EXPECT_EQ(walk.begin(), walk.end());
    EXPECT_EQ(walk.find(""), nullptr);
  };
  expectEmpty(schema.eachAttributeType());
  expectEmpty(schema.eachAttributeTypeByOid());
  expectEmpty(schema.eachObjectClass());
  expectEmpty(schema.eachObjectClassByOid());
  expectEmpty(schema.eachStorageDefinition());
}

TEST(DefinitionWalkTest, GoesInTheOrderOfTheKeys) {
  const auto schema = makeSchema(
      {{"V3.user.at", typeLine("1.10", "b") + typeLine("1.9", "C") +
                          typeLine("B-oid", "a1") + typeLine("a-oid", "A")},
       {"V3.user.oc", classLine("2.10", "k") + classLine("2.9", "J")},
       {"V3.qor.at", storageLine("1.9") + storageLine("1.10")}});
  EXPECT_THAT(keysAndOids(schema->eachAttributeType()),
              ElementsAre("a: a-oid", "a1: B-oid", "b: 1.10", "c: 1.9"));
  EXPECT_THAT(
      keysAndOids(schema->eachAttributeTypeByOid()),
      ElementsAre("1.10: 1.10", "1.9: 1.9", "B-oid: B-oid", "a-oid: a-oid"));
  EXPECT_THAT(keysAndOids(schema->eachObjectClass()),
              ElementsAre("j: 2.9", "k: 2.10"));
  EXPECT_THAT(keysAndOids(schema->eachObjectClassByOid()),
              ElementsAre("2.10: 2.10", "2.9: 2.9"));
  EXPECT_THAT(keysAndOids(schema->eachStorageDefinition()),
              ElementsAre("1.10: 1.10", "1.9: 1.9"));
}

TEST(DefinitionWalkTest, HandsOutTheDefinitionsOfTheTables) {
  const auto schema =
      makeSchema({{"V3.user.at", typeLine("1.1", "a") + typeLine("1.2", "b")}});
  std::vector<const Attribute *> walked;
  for (const Attribute &type : schema->eachAttributeType()) {
    walked.push_back(&type);
  }
  EXPECT_THAT(walked, ElementsAre(schema->attributeTypes().at("a"),
                                  schema->attributeTypes().at("b")));
  EXPECT_EQ(schema->eachAttributeType().size(), 2U);
  EXPECT_FALSE(schema->eachAttributeType().empty());
}

TEST(DefinitionWalkTest, FindsByTheExactKey) {
  const auto schema =
      makeSchema({{"V3.user.at", typeLine("Oid", "Cn") + storageLine("Oid")},
                  {"V3.user.oc", classLine("2.1", "Person")}});
  const Attribute *type = schema->attributeTypes().at("cn");
  EXPECT_EQ(schema->eachAttributeType().find("cn"), type);
  EXPECT_EQ(schema->eachAttributeType().find("Cn"), nullptr);
  EXPECT_EQ(schema->eachAttributeType().find("Oid"), nullptr);
  EXPECT_EQ(schema->eachAttributeTypeByOid().find("Oid"), type);
  EXPECT_EQ(schema->eachAttributeTypeByOid().find("oid"), nullptr);
  EXPECT_EQ(schema->eachObjectClass().find("person"),
            schema->objectClasses().at("person"));
  EXPECT_EQ(schema->eachObjectClassByOid().find("2.1"),
            schema->objectClasses().at("person"));
  EXPECT_EQ(schema->eachStorageDefinition().find("Oid"),
            schema->storageDefinitions().at("Oid"));
  EXPECT_EQ(schema->eachStorageDefinition().find("cn"), nullptr);
}

// Of two of one OID the second is found by its name alone, and of two of one
// name by its OID alone.
TEST(DefinitionWalkTest, DefinitionWithATakenKeyIsMetByTheOther) {
  const auto schema = leaksDefinitions([] {
    return makeSchema(
        {{"V3.user.at",
          typeLine("1.1", "a") + typeLine("1.1", "b") + typeLine("1.2", "A")}});
  });
  EXPECT_THAT(keysAndOids(schema->eachAttributeType()),
              ElementsAre("a: 1.1", "b: 1.1"));
  EXPECT_THAT(keysAndOids(schema->eachAttributeTypeByOid()),
              ElementsAre("1.1: 1.1", "1.2: 1.2"));
  const auto byOid = schema->eachAttributeTypeByOid();
  EXPECT_THAT(byOid.find("1.1")->names(), ElementsAre("a"));
  EXPECT_THAT(byOid.find("1.2")->names(), ElementsAre("A"));
}

TEST(DefinitionWalkTest, ShowsTheTableAsItIs) {
  const auto schema =
      makeSchema({{"V3.user.at", typeLine("1.1", "a") + typeLine("1.2", "b")}});
  const auto release = makeSchema({{"V3.user.at", typeLine("1.1", "a")}});
  const auto byName = schema->eachAttributeType();
  const auto byOid = schema->eachAttributeTypeByOid();
  ASSERT_EQ(schema->compSchemas(release.get()), 1U);
  EXPECT_THAT(keysAndOids(byName), ElementsAre("b: 1.2"));
  EXPECT_THAT(keysAndOids(byOid), ElementsAre("1.1: 1.1", "1.2: 1.2"));
  EXPECT_THAT(*schema->recordedOids("V3.user.at"), ElementsAre("1.2"));
}

TEST(DefinitionWalkTest, IteratorsServeTheStandardAlgorithms) {
  const auto schema =
      makeSchema({{"V3.user.at", typeLine("1.1", "a") + typeLine("1.2", "b") +
                                     typeLine("1.3", "c")}});
  const auto walk = schema->eachAttributeType();
  EXPECT_EQ(std::distance(walk.begin(), walk.end()), 3);
  const auto found =
      std::find_if(walk.begin(), walk.end(),
                   [](const Attribute &type) { return type.oid() == "1.2"; });
  ASSERT_NE(found, walk.end());
  EXPECT_EQ(found.key(), "b");

  DefinitionWalk<Attribute>::Iterator it;
  it = walk.begin();
  EXPECT_EQ((it++).key(), "a");
  EXPECT_TRUE(it == found);
  EXPECT_FALSE(it != found);
  EXPECT_EQ((++it).key(), "c");
  EXPECT_EQ((*it).oid(), "1.3");
}

// Every field, as a walk shows it.

TEST(DefinitionWalkTest, ShowsEveryFieldOfAnAttributeType) {
  const auto schema = makeSchema(
      {{"V3.user.at",
        "attributetypes=( 1.1 NAME ( 'Alpha' 'Beta' ) DESC 'An alpha' OBSOLETE "
        "SUP 1.9 EQUALITY 1.8 ORDERING 1.7 SUBSTR 1.6 SYNTAX 1.5{64} "
        "SINGLE-VALUE NO-USER-MODIFICATION USAGE dSAOperation )\n"
        "attributetypes=( 1.2 )\n"}});
  const Attribute &full = *schema->eachAttributeType().find("alpha");
  EXPECT_EQ(full.oid(), "1.1");
  EXPECT_THAT(full.names(), ElementsAre("Alpha", "Beta"));
  EXPECT_EQ(full.description(), "An alpha");
  EXPECT_TRUE(full.isObsolete());
  EXPECT_THAT(full.superiors(), ElementsAre("1.9"));
  EXPECT_EQ(full.equality(), "1.8");
  EXPECT_EQ(full.ordering(), "1.7");
  EXPECT_EQ(full.substr(), "1.6");
  EXPECT_EQ(full.syntax(), "1.5{64}");
  EXPECT_TRUE(full.isSingleValue());
  EXPECT_FALSE(full.isCollective());
  EXPECT_FALSE(full.isUserModifiable());
  EXPECT_EQ(full.usage(), "dSAOperation");

  const Attribute &bare = *schema->eachAttributeType().find("");
  EXPECT_EQ(bare.oid(), "1.2");
  EXPECT_THAT(bare.names(), IsEmpty());
  EXPECT_EQ(bare.description(), "");
  EXPECT_FALSE(bare.isObsolete());
  EXPECT_THAT(bare.superiors(), IsEmpty());
  EXPECT_EQ(bare.equality(), "");
  EXPECT_EQ(bare.ordering(), "");
  EXPECT_EQ(bare.substr(), "");
  EXPECT_EQ(bare.syntax(), "");
  EXPECT_FALSE(bare.isSingleValue());
  EXPECT_FALSE(bare.isCollective());
  EXPECT_TRUE(bare.isUserModifiable());
  EXPECT_EQ(bare.usage(), "userApplications");
}

TEST(DefinitionWalkTest, ShowsEveryFieldOfAnObjectClass) {
  const auto schema = makeSchema(
      {{"V3.user.oc",
        "objectclasses=( 2.1 NAME ( 'Person' 'Human' ) DESC 'A person' "
        "OBSOLETE SUP ( top $ being ) ABSTRACT MUST ( sn $ cn ) "
        "MAY ( mail $ fax ) )\n"
        "objectclasses=( 2.2 NAME 'helper' AUXILIARY )\n"
        "objectclasses=( 2.3 )\n"}});
  const ObjectClass &full = *schema->eachObjectClass().find("person");
  EXPECT_EQ(full.oid(), "2.1");
  EXPECT_THAT(full.names(), ElementsAre("Person", "Human"));
  EXPECT_EQ(full.description(), "A person");
  EXPECT_TRUE(full.isObsolete());
  EXPECT_THAT(full.superiors(), ElementsAre("top", "being"));
  EXPECT_EQ(full.structuralType(), TOK_ABSTRACT);
  EXPECT_THAT(full.requiredAttributes(), ElementsAre("sn", "cn"));
  EXPECT_THAT(full.optionalAttributes(), ElementsAre("mail", "fax"));

  EXPECT_EQ(schema->eachObjectClass().find("helper")->structuralType(),
            TOK_AUXILIARY);

  const ObjectClass &bare = *schema->eachObjectClass().find("");
  EXPECT_EQ(bare.oid(), "2.3");
  EXPECT_THAT(bare.names(), IsEmpty());
  EXPECT_EQ(bare.description(), "");
  EXPECT_FALSE(bare.isObsolete());
  EXPECT_THAT(bare.superiors(), IsEmpty());
  EXPECT_EQ(bare.structuralType(), TOK_STRUCTURAL);
  EXPECT_THAT(bare.requiredAttributes(), IsEmpty());
  EXPECT_THAT(bare.optionalAttributes(), IsEmpty());
}

TEST(DefinitionWalkTest, ShowsEveryFieldOfAStorageDefinition) {
  const auto schema = makeSchema(
      {{"V3.qor.at",
        "QORAttributetypes=( 1.1 DBNAME ( 'ALPHA' 'ALPHA_T' ) ACCESS-CLASS "
        "normal LENGTH 64 EQUALITY ORDERING SUBSTR APPROX )\n"
        "QORAttributetypes=( 1.2 )\n"}});
  const QORAttribute &full = *schema->eachStorageDefinition().find("1.1");
  EXPECT_EQ(full.oid(), "1.1");
  EXPECT_THAT(full.columnNames(), ElementsAre("ALPHA", "ALPHA_T"));
  EXPECT_EQ(full.accessClass(), "normal");
  EXPECT_EQ(full.length(), "64");
  EXPECT_TRUE(full.hasEquality());
  EXPECT_TRUE(full.hasOrdering());
  EXPECT_TRUE(full.hasSubstr());
  EXPECT_TRUE(full.hasApprox());

  const QORAttribute &bare = *schema->eachStorageDefinition().find("1.2");
  EXPECT_EQ(bare.oid(), "1.2");
  EXPECT_THAT(bare.columnNames(), IsEmpty());
  EXPECT_EQ(bare.accessClass(), "");
  EXPECT_EQ(bare.length(), "0");
  EXPECT_FALSE(bare.hasEquality());
  EXPECT_FALSE(bare.hasOrdering());
  EXPECT_FALSE(bare.hasSubstr());
  EXPECT_FALSE(bare.hasApprox());
}

// What a manager holds besides definitions.

TEST(DefinitionWalkTest, ShowsTheOidsOfEachFile) {
  std::vector<SchemaFile> files;
  for (const char *name :
       {"V3.user.oc", "V3.user.at", "V3.qor.oc", "V3.qor.at", "V3.system.oc",
        "V3.system.at", "V3.modifiedschema", "V3.config.at", "V3.config.oc"}) {
    const std::string number = std::to_string(files.size());
    files.push_back({name, typeLine("2." + number, "b" + number) +
                               typeLine("1." + number, "a" + number)});
  }
  const auto schema = makeSchema(files);
  for (std::size_t i = 0; i < 7; ++i) {
    SCOPED_TRACE(files[i].name);
    const std::set<std::string> *oids = schema->recordedOids(files[i].name);
    ASSERT_NE(oids, nullptr);
    EXPECT_THAT(
        *oids, ElementsAre("1." + std::to_string(i), "2." + std::to_string(i)));
  }
  for (const char *name : {"V3.config.at", "V3.config.oc", "V3.user", ""}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(schema->recordedOids(name), nullptr);
  }
}

TEST(DefinitionWalkTest, ShowsDirectoryAndExcludedOids) {
  const TemporaryDirectory directory;
  directory.write("excluded", "2.5 1.10 1.9\n");
  SchemaManager schema(directory.string());
  EXPECT_EQ(schema.workingDirectory(), directory.string());
  EXPECT_THAT(schema.excludedOids(), IsEmpty());
  ASSERT_EQ(schema.readExcludedOids(directory.string() + "/excluded"), 0U);
  EXPECT_THAT(schema.excludedOids(), ElementsAre("1.10", "1.9", "2.5"));
}

TEST(DefinitionWalkTest, WritesNoTraceRecords) {
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "a")}});
  const TraceRecorder recorder(~0U);
  EXPECT_THAT(keysAndOids(schema->eachAttributeType()), ElementsAre("a: 1.1"));
  EXPECT_NE(schema->recordedOids("V3.user.at"), nullptr);
  EXPECT_THAT(recorder.records(), IsEmpty());
}

}  // namespace
