// What a manager is: construction, lookups, ownership.
#include "SchemaManager.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "libschema/SchemaManagerTesting.h"
#include "libschema/SchemaManagerTexts.h"
#include "support/Child.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace {

TEST(SchemaManagerTest, IsEmptyAtFirst) {
  SchemaManager schema("no such directory");
  EXPECT_TRUE(schema.attributeTypes().empty());
  EXPECT_TRUE(schema.attributeTypesByOid().empty());
  EXPECT_TRUE(schema.objectClasses().empty());
  EXPECT_TRUE(schema.objectClassesByOid().empty());
  EXPECT_TRUE(schema.storageDefinitions().empty());
  EXPECT_EQ(stateOf(&schema), "");
}

TEST(SchemaManagerTest, IsAPlainClass) {
  EXPECT_FALSE(std::is_polymorphic_v<SchemaManager>);
}

TEST(SchemaManagerTest, IsNeitherCopiedNorMoved) {
  EXPECT_FALSE(std::is_copy_constructible_v<SchemaManager>);
  EXPECT_FALSE(std::is_copy_assignable_v<SchemaManager>);
  EXPECT_FALSE(std::is_move_constructible_v<SchemaManager>);
  EXPECT_FALSE(std::is_move_assignable_v<SchemaManager>);
}

TEST(SchemaManagerTest, DirectoryMayBeRelativeOrEndInASlash) {
  const TemporaryDirectory directory;
  directory.write("V3.user.at", typeLine("1.1", "cn"));
  for (const std::string &name :
       {directory.string(), directory.string() + "/",
        std::filesystem::relative(directory.path()).string()}) {
    SCOPED_TRACE(name);
    SchemaManager schema(name);
    EXPECT_EQ(schema.readFile("V3.user.at"), 0U);
    EXPECT_EQ(stateOf(&schema), typeState("1.1", "cn") + "V3.user.at: 1.1\n");
  }
}

TEST(SchemaManagerTest, ConvertLowersAsciiLettersAlone) {
  SchemaManager schema("");
  std::string all;
  std::string lower;
  for (int byte = 0; byte < 256; ++byte) {
    all += static_cast<char>(byte);
    lower += static_cast<char>(byte >= 'A' && byte <= 'Z' ? byte + 32 : byte);
  }
  EXPECT_EQ(schema.convert(all), lower);
  EXPECT_EQ(schema.convert("commonName-2.5.4.3"), "commonname-2.5.4.3");
  EXPECT_EQ(schema.convert(" CN\t"), " cn\t");
  EXPECT_EQ(schema.convert(""), "");
}

// Lookups.

// A definition of each kind with every field that a file can give it, and a
// second one of attribute types and classes, whose OID is a word.
const char kType[] =
    "attributetypes=( 1.1 NAME ( 'Alpha' 'Beta'  )  DESC 'An alpha' OBSOLETE "
    "SUP 1.9 EQUALITY 1.8 ORDERING 1.7 SUBSTR 1.6 SYNTAX 1.5{64} SINGLE-VALUE "
    "NO-USER-MODIFICATION USAGE dSAOperation  )\n";
const char kClass[] =
    "objectclasses=( 2.1 NAME 'Person' 'Human'  DESC 'A person' OBSOLETE "
    "SUP ( top $ being ) ABSTRACT MUST ( sn $ cn ) MAY ( mail $ fax ) )\n";
const char kStorage[] =
    "QORAttributetypes=( 1.1 DBNAME ( 'ALPHA' 'ALPHA_T'  ) ACCESS-CLASS normal "
    "LENGTH 64 EQUALITY ORDERING SUBSTR APPROX )\n";

std::unique_ptr<SchemaManager> makeLookUpSchema() {
  return makeSchema({{"V3.user.at", kType + typeLine("Type-Oid", "gamma")},
                     {"V3.user.oc", kClass + classLine("Class-Oid", "device")},
                     {"V3.qor.at", kStorage + storageLine("Storage-Oid")}});
}

TEST(SchemaManagerTest, AttributeTypeIsFoundByNameInAnyCaseAndByOid) {
  const auto schema = makeLookUpSchema();
  for (const char *key : {"alpha", "Alpha", "ALPHA", "aLPHa", "1.1"}) {
    SCOPED_TRACE(key);
    Attribute found = schema->getAttr(key);
    EXPECT_EQ(writtenLine(&found), kType);
  }
  for (const char *key : {"gamma", "GAMMA", "Type-Oid"}) {
    SCOPED_TRACE(key);
    Attribute found = schema->getAttr(key);
    EXPECT_EQ(writtenLine(&found), typeLine("Type-Oid", "gamma"));
  }
}

// Kept on purpose: unlike an attribute type's, its name is not lowered.
TEST(SchemaManagerTest, ObjectClassIsFoundByNameInLowerCaseAndByOid) {
  const auto schema = makeLookUpSchema();
  for (const char *key : {"person", "2.1"}) {
    SCOPED_TRACE(key);
    ObjectClass found = schema->getObjClass(key);
    EXPECT_EQ(writtenLine(&found), kClass);
  }
  for (const char *key : {"device", "Class-Oid"}) {
    SCOPED_TRACE(key);
    ObjectClass found = schema->getObjClass(key);
    EXPECT_EQ(writtenLine(&found), classLine("Class-Oid", "device"));
  }
}

TEST(SchemaManagerTest, StorageDefinitionIsFoundByOid) {
  const auto schema = makeLookUpSchema();
  QORAttribute found = schema->getQORAttr("1.1");
  EXPECT_EQ(writtenLine(&found), kStorage);
  found = schema->getQORAttr("Storage-Oid");
  EXPECT_EQ(writtenLine(&found), storageLine("Storage-Oid"));
}

TEST(SchemaManagerTest, NameIsFoundBeforeTheSameOid) {
  const auto schema = makeSchema(
      {{"V3.user.at", typeLine("1.1", "1.2") + typeLine("1.2", "b")},
       {"V3.user.oc", classLine("2.1", "2.2") + classLine("2.2", "k")}});
  EXPECT_EQ(schema->getAttr("1.2").getOid(), "1.1");
  EXPECT_EQ(schema->getAttr("b").getOid(), "1.2");
  EXPECT_EQ(schema->getObjClass("2.2").getOid(), "2.1");
  EXPECT_EQ(schema->getObjClass("k").getOid(), "2.2");
}

// An OID is compared as it is: the lowered key finds names only.
TEST(SchemaManagerTest, LoweredKeyDoesNotFindAnOid) {
  const auto schema = makeSchema(
      {{"V3.user.at", typeLine("oid-x", "a") + typeLine("OID-X", "b")}});
  EXPECT_EQ(schema->getAttr("OID-X").getFirstName(), "b");
  EXPECT_EQ(schema->getAttr("oid-x").getFirstName(), "a");
}

TEST(SchemaManagerTest, DefinitionWithoutNamesIsFoundByTheEmptyName) {
  const auto schema =
      makeSchema({{"V3.user.at", "attributetypes=( 1.1 OBSOLETE )\n"},
                  {"V3.user.oc", "objectclasses=( 2.1 OBSOLETE )\n"}});
  EXPECT_EQ(schema->getAttr("").getOid(), "1.1");
  EXPECT_EQ(schema->getObjClass("").getOid(), "2.1");
}

TEST(SchemaManagerTest, KindsDoNotShareKeys) {
  const auto schema =
      makeSchema({{"V3.user.at", typeLine("1.1", "x") + storageLine("1.1") +
                                     classLine("1.1", "x")}});
  EXPECT_EQ(stateOf(schema.get()),
            typeState("1.1", "x") + classState("1.1", "x") +
                storageState("1.1") + "V3.user.at: 1.1\n");
  Attribute type = schema->getAttr("1.1");
  ObjectClass objectClass = schema->getObjClass("1.1");
  QORAttribute storage = schema->getQORAttr("1.1");
  EXPECT_EQ(writtenLine(&type), typeLine("1.1", "x"));
  EXPECT_EQ(writtenLine(&objectClass), classLine("1.1", "x"));
  EXPECT_EQ(writtenLine(&storage), storageLine("1.1"));
}

TEST(SchemaManagerTest, FoundDefinitionIsACopy) {
  auto schema = makeLookUpSchema();
  Attribute type = schema->getAttr("alpha");
  ObjectClass objectClass = schema->getObjClass("person");
  QORAttribute storage = schema->getQORAttr("1.1");
  type = Attribute();
  objectClass = ObjectClass();
  storage = QORAttribute();
  type = schema->getAttr("alpha");
  objectClass = schema->getObjClass("person");
  storage = schema->getQORAttr("1.1");
  schema.reset();
  EXPECT_EQ(writtenLine(&type), kType);
  EXPECT_EQ(writtenLine(&objectClass), kClass);
  EXPECT_EQ(writtenLine(&storage), kStorage);
}

using LookUp = std::function<void(SchemaManager *, const std::string &)>;

// Looking each of `keys` up must abort with this line on standard error, traced
// or not.
void expectAborts(const std::string &operation, const LookUp &lookUp,
                  const std::vector<std::string> &keys) {
  const auto schema = makeLookUpSchema();
  for (const std::string &key : keys) {
    for (const unsigned int mask : {0U, ~0U}) {
      SCOPED_TRACE("'" + key + "', traced " + std::to_string(mask));
      const TraceRecorder recorder(mask);
      const ChildResult result = runInChild([&] { lookUp(schema.get(), key); });
      EXPECT_EQ(result.end, ChildResult::End::kKilled);
      EXPECT_EQ(result.signal, SIGABRT);
      EXPECT_EQ(
          result.error,
          operation + ": there is no definition with the key '" + key + "'\n");
    }
  }
}

TEST(SchemaManagerTest, AbsentAttributeTypeAborts) {
  expectAborts("getAttr",
               [](SchemaManager *schema, const std::string &key) {
                 schema->getAttr(key);
               },
               {"", "Beta", "alph", "alpha ", "Person", "2.1", "1", "1.10",
                "type-oid", "TYPE-OID", "Storage-Oid", "%s%d"});
}

TEST(SchemaManagerTest, AbsentObjectClassAborts) {
  expectAborts("getObjClass",
               [](SchemaManager *schema, const std::string &key) {
                 schema->getObjClass(key);
               },
               {"", "Person", "PERSON", "human", "person ", "alpha", "1.1", "2",
                "2.10", "class-oid", "CLASS-OID", "%s%d"});
}

TEST(SchemaManagerTest, AbsentStorageDefinitionAborts) {
  expectAborts("getQORAttr",
               [](SchemaManager *schema, const std::string &key) {
                 schema->getQORAttr(key);
               },
               {"", "alpha", "ALPHA", "1.1 ", "1", "1.10", "2.1", "storage-oid",
                "Type-Oid", "%s%d"});
}

TEST(SchemaManagerTest, LookUpInAnEmptySchemaAborts) {
  const ChildResult result = runInChild([] {
    SchemaManager schema("");
    schema.getAttr("cn");
  });
  EXPECT_EQ(result.end, ChildResult::End::kKilled);
  EXPECT_EQ(result.signal, SIGABRT);
  EXPECT_EQ(result.error,
            "getAttr: there is no definition with the key 'cn'\n");
}

// Ownership.

TEST(SchemaManagerTest, FreesWhatStandsInBothTablesOnce) {
  auto schema = makeLookUpSchema();
  ASSERT_EQ(schema->attributeTypes().at("alpha"),
            schema->attributeTypesByOid().at("1.1"));
  ASSERT_EQ(schema->objectClasses().at("person"),
            schema->objectClassesByOid().at("2.1"));
  const ChildResult result = runInChild([&schema] { schema.reset(); });
  EXPECT_EQ(result.end, ChildResult::End::kReturned);
  EXPECT_EQ(result.error, "");
}

TEST(SchemaManagerTest, FreesWhatOnlyItsNameLeadsTo) {
  const auto schema = makeSchema(
      {{"V3.user.at", typeLine("1.1", "a") + typeLine("1.1", "b")},
       {"V3.user.oc", classLine("2.1", "k") + classLine("2.1", "l")}});
  EXPECT_EQ(stateOf(schema.get()),
            "type a: " + typeLine("1.1", "a") +
                "type b: " + typeLine("1.1", "b") + "type by OID 1.1: a\n" +
                "class k: " + classLine("2.1", "k") +
                "class l: " + classLine("2.1", "l") + "class by OID 2.1: k\n" +
                "V3.user.oc: 2.1\nV3.user.at: 1.1\n");
}

// Kept on purpose: the tables of names alone own.
TEST(SchemaManagerTest, AttributeTypeThatOnlyItsOidLeadsToIsNotFreed) {
  auto schema = makeSchema(
      {{"V3.user.at", typeLine("1.1", "cn") + typeLine("1.2", "CN")}});
  EXPECT_EQ(stateOf(schema.get()),
            "type cn: " + typeLine("1.1", "cn") + "type by OID 1.1: cn\n" +
                "type by OID 1.2: " + typeLine("1.2", "CN") +
                "V3.user.at: 1.1 1.2\n");
  EXPECT_EQ(schema->getAttr("CN").getOid(), "1.1");
  EXPECT_EQ(schema->getAttr("1.2").getFirstName(), "CN");

  const std::unique_ptr<Attribute> left(
      schema->attributeTypesByOid().at("1.2"));
  schema.reset();
  EXPECT_EQ(writtenLine(left.get()), typeLine("1.2", "CN"));
}

TEST(SchemaManagerTest, ObjectClassThatOnlyItsOidLeadsToIsNotFreed) {
  auto schema = makeSchema({{"V3.user.oc", classLine("2.1", "person") +
                                               classLine("2.2", "PERSON")}});
  EXPECT_EQ(stateOf(schema.get()),
            "class person: " + classLine("2.1", "person") +
                "class by OID 2.1: person\n" + "class by OID 2.2: " +
                classLine("2.2", "PERSON") + "V3.user.oc: 2.1 2.2\n");
  EXPECT_EQ(schema->getObjClass("2.2").getFirstName(), "PERSON");

  const std::unique_ptr<ObjectClass> left(
      schema->objectClassesByOid().at("2.2"));
  schema.reset();
  EXPECT_EQ(writtenLine(left.get()), classLine("2.2", "PERSON"));
}

TEST(SchemaManagerTest, DefinitionWhoseKeysAreTakenIsInNoTable) {
  const auto schema = leaksDefinitions([] {
    return makeSchema(
        {{"V3.user.at", typeLine("1.1", "a") + typeLine("1.2", "b") +
                            "attributetypes=( 1.2 NAME 'A' SINGLE-VALUE )\n"},
         {"V3.user.oc", classLine("2.1", "k") + classLine("2.2", "l") +
                            "objectclasses=( 2.2 NAME 'K' ABSTRACT )\n"},
         {"V3.qor.at",
          storageLine("1.1") + "QORAttributetypes=( 1.1 LENGTH 9 )\n"}});
  });
  EXPECT_EQ(
      stateOf(schema.get()),
      "type a: " + typeLine("1.1", "a") + "type b: " + typeLine("1.2", "b") +
          "type by OID 1.1: a\n" + "type by OID 1.2: b\n" + "class k: " +
          classLine("2.1", "k") + "class l: " + classLine("2.2", "l") +
          "class by OID 2.1: k\nclass by OID 2.2: l\n" + storageState("1.1") +
          "V3.user.oc: 2.1 2.2\nV3.user.at: 1.1 1.2\nV3.qor.at: 1.1\n");
}

TEST(SchemaManagerTest, KeysAreOrderedByBytes) {
  const auto schema = makeSchema(
      {{"V3.user.at", typeLine("1.10", "b") + typeLine("1.2", "a-z") +
                          typeLine("1.9", "a1") + typeLine("Z", "ab") +
                          typeLine("a", "a.z")}});
  std::string names;
  for (const auto &entry : schema->attributeTypes()) {
    names += entry.first + ' ';
  }
  std::string oids;
  for (const auto &entry : schema->attributeTypesByOid()) {
    oids += entry.first + ' ';
  }
  EXPECT_EQ(names, "a-z a.z a1 ab b ");
  EXPECT_EQ(oids, "1.10 1.2 1.9 Z a ");
}

// Threads.

TEST(SchemaManagerTest, ManagersOnSeveralThreadsAreIndependent) {
  constexpr int kThreads = 4;
  constexpr int kDefinitions = 50;
  const TemporaryDirectory directory;
  std::vector<std::unique_ptr<SchemaManager>> schemas;
  std::vector<std::string> expected;
  for (int i = 0; i < kThreads; ++i) {
    const std::string name = "d" + std::to_string(i);
    std::filesystem::create_directory(directory.path() / name);
    std::string text;
    for (int j = 0; j < kDefinitions; ++j) {
      const std::string oid =
          "1." + std::to_string(i) + '.' + std::to_string(j);
      text += typeLine(oid, "a-" + oid) + storageLine(oid) +
              classLine(oid, "k-" + oid);
    }
    directory.write(name + "/V3.user.at", text);
    schemas.push_back(
        std::make_unique<SchemaManager>(directory.string() + '/' + name));
    SchemaManager alone(directory.string() + '/' + name);
    ASSERT_EQ(alone.readFile("V3.user.at"), 0U);
    expected.push_back(stateOf(&alone));
  }

  std::vector<std::thread> threads;
  std::vector<unsigned int> results(kThreads, 99);
  for (std::size_t i = 0; i < kThreads; ++i) {
    threads.emplace_back(
        [&, i] { results[i] = schemas[i]->readFile("V3.user.at"); });
  }
  for (std::thread &thread : threads) {
    thread.join();
  }
  for (std::size_t i = 0; i < kThreads; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(results[i], 0U);
    EXPECT_EQ(stateOf(schemas[i].get()), expected[i]);
  }
}

}  // namespace
