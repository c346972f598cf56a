// The reports about what collides.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "SchemaManager.h"
#include "libschema/SchemaManagerMergeTesting.h"
#include "libschema/SchemaManagerTesting.h"
#include "support/TraceRecorder.h"

namespace {

constexpr char kNoClasses[] = "No objectClasses definition collisions found.\n";
constexpr char kNoTypes[] = "No attributeTypes definition collisions found.\n";
constexpr char kNoStorage[] =
    "No QORAttributeTypes definition collisions found.\n";
constexpr char kClasses[] =
    "The following objectClasses definition collisions found:\n";
constexpr char kTypes[] = "The following attributeTypes collisions found:\n";
constexpr char kStorage[] =
    "The following QORAttributeTypes definition collisions found:\n";

// The three reports, one behind the other.
std::string reportsOf(const Schema &schema) {
  return schema->getOcTable() + schema->getAttrTable() +
         schema->getQORAttrTable();
}

// An entry of a report.
std::string reported(const std::string &oid, const std::string &names) {
  return "OID --> " + oid + "\nName --> " + names + "\n\n";
}

TEST(SchemaManagerCollisionReportTest, NothingWasRead) {
  const auto schema = emptySchema();
  EXPECT_EQ(schema->getOcTable(), kNoClasses);
  EXPECT_EQ(schema->getAttrTable(), kNoTypes);
  EXPECT_EQ(schema->getQORAttrTable(), kNoStorage);
  EXPECT_EQ(schema->checkCollisions(schema.get()), 1U);
  EXPECT_EQ(reportsOf(schema), std::string(kNoClasses) + kNoTypes + kNoStorage);
}

TEST(SchemaManagerCollisionReportTest, NothingCollides) {
  const auto schema =
      makeSchema({{"V3.user.at", typeLine("1.1", {"a"}, "mine")},
                  {"V3.user.oc", classLine("1.2", {"k"}, "mine")},
                  {"V3.qor.at", storageLine("1.3", "mine")}});
  const auto other =
      makeSchema({{"V3.user.at", typeLine("2.1", {"k"}, "theirs")},
                  {"V3.user.oc", classLine("1.1", {"a"}, "theirs")},
                  {"V3.qor.at", storageLine("2.3", "theirs")}});
  EXPECT_EQ(schema->checkCollisions(other.get()), 1U);
  EXPECT_EQ(reportsOf(schema), std::string(kNoClasses) + kNoTypes + kNoStorage);
  EXPECT_TRUE(schema->attributeTypes().empty());
  EXPECT_TRUE(schema->objectClasses().empty());
  EXPECT_TRUE(schema->storageDefinitions().empty());
}

// Each kind alone, and all together.
TEST(SchemaManagerCollisionReportTest, AllKindsAreChecked) {
  for (unsigned int colliding = 0; colliding < 8; ++colliding) {
    SCOPED_TRACE(colliding);
    const bool types = (colliding & 1U) != 0;
    const bool classes = (colliding & 2U) != 0;
    const bool storage = (colliding & 4U) != 0;
    const auto schema =
        makeSchema({{"V3.user.at", typeLine("1.1", {"a"}, "mine")},
                    {"V3.user.oc", classLine("1.2", {"k"}, "mine")},
                    {"V3.qor.at", storageLine("1.3", "mine")}});
    const auto other = makeSchema(
        {{"V3.user.at",
          (types ? typeLine("2.1", {"a"}, "theirs") : std::string()) +
              (classes ? classLine("2.2", {"k"}, "theirs") : "") +
              (storage ? storageLine("1.3", "theirs") : "")}});
    EXPECT_EQ(schema->checkCollisions(other.get()), 1U);
    EXPECT_EQ(schema->getOcTable(),
              classes ? kClasses + reported("1.2", "k") : kNoClasses);
    EXPECT_EQ(schema->getAttrTable(),
              types ? kTypes + reported("1.1", "a") : kNoTypes);
    EXPECT_EQ(schema->getQORAttrTable(),
              storage ? kStorage + reported("1.3", "") : kNoStorage);
  }
}

TEST(SchemaManagerCollisionReportTest, GivesAllNames) {
  const auto schema = makeSchema(
      {{"V3.user.oc", classLine("1.2.3.4", {"myPerson", "myPeople"}, "mine")},
       {"V3.user.at", typeLine("2.5.4.3", {"cn", "commonName", "CN"}, "mine")},
       {"V3.qor.at", "QORAttributetypes=( 2.5.4.3 DBNAME ( 'a' 'b' ) )\n"}});
  const auto other = makeSchema(
      {{"V3.user.oc", classLine("9.1", {"MYPERSON"}, "theirs")},
       {"V3.user.at", typeLine("9.2", {"CN", "commonName"}, "theirs")},
       {"V3.qor.at", storageLine("2.5.4.3", "theirs")}});
  EXPECT_EQ(schema->checkCollisions(other.get()), 1U);
  EXPECT_EQ(schema->getOcTable(),
            "The following objectClasses definition collisions found:\n"
            "OID --> 1.2.3.4\n"
            "Name --> myPerson, myPeople\n"
            "\n");
  EXPECT_EQ(schema->getAttrTable(),
            "The following attributeTypes collisions found:\n"
            "OID --> 2.5.4.3\n"
            "Name --> cn, commonName, CN\n"
            "\n");
  EXPECT_EQ(schema->getQORAttrTable(),
            "The following QORAttributeTypes definition collisions found:\n"
            "OID --> 2.5.4.3\n"
            "Name --> \n"
            "\n");
}

// The keys are in order byte by byte: the first names in lower case, and the
// OIDs of storage definitions as written.
TEST(SchemaManagerCollisionReportTest, IsInTheOrderOfTheKeys) {
  const std::vector<SchemaFile> files = {
      {"V3.user.at",
       typeLine("1.1", {"b", "a0"}, "x") + typeLine("1.2", {"C"}, "x") +
           typeLine("1.3", {"A"}, "x") + typeLine("1.4", {"a10"}, "x") +
           typeLine("1.5", {"a-1"}, "x") + typeLine("1.6", {"a9"}, "x")},
      {"V3.user.oc", classLine("2.1", {"Zebra"}, "x") +
                         classLine("2.2", {"ant"}, "x") +
                         classLine("2.3", {"Bee"}, "x")},
      {"V3.qor.at", storageLine("1.9", "x") + storageLine("1.10", "x") +
                        storageLine("b", "x") + storageLine("C", "x") +
                        storageLine("1.2", "x")}};
  const auto schema = makeSchema(files);
  const auto other = makeSchema(files);
  const std::string expected =
      kClasses + reported("2.2", "ant") + reported("2.3", "Bee") +
      reported("2.1", "Zebra") + kTypes + reported("1.3", "A") +
      reported("1.5", "a-1") + reported("1.4", "a10") + reported("1.6", "a9") +
      reported("1.1", "b, a0") + reported("1.2", "C") + kStorage +
      reported("1.10", "") + reported("1.2", "") + reported("1.9", "") +
      reported("C", "") + reported("b", "");
  EXPECT_EQ(reportsOf(schema), expected) << "a report needs no check";
  EXPECT_EQ(schema->checkCollisions(other.get()), 1U);
  EXPECT_EQ(reportsOf(schema), expected);
}

TEST(SchemaManagerCollisionReportTest, ChangesNothing) {
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", {"a"}, "x")},
                                  {"V3.user.oc", classLine("1.2", {"k"}, "x")},
                                  {"V3.qor.at", storageLine("1.3", "x")}});
  exclude(schema.get(), "1.1");
  const std::string before = stateOf(schema.get());
  const std::string reports = reportsOf(schema);
  for (const unsigned int mask : {0U, ~0U}) {
    const TraceRecorder recorder(mask);
    EXPECT_EQ(reportsOf(schema), reports);
    EXPECT_EQ(schema->getQORAttrTable(), kStorage + reported("1.3", ""));
    EXPECT_EQ(schema->getAttrTable(), kTypes + reported("1.1", "a"));
    EXPECT_EQ(schema->getOcTable(), kClasses + reported("1.2", "k"));
    EXPECT_EQ(stateOf(schema.get()), before);
  }
}

// Definitions without names have the empty key, in the table of their kind.
TEST(SchemaManagerCollisionReportTest, DefinitionsWithoutNames) {
  const std::string type = typeLine("1.1", {}, "mine");
  const std::string klass = namelessClassLine("1.2", "mine");
  const struct {
    const char *what;
    std::string theirs;
    std::string tables;
    std::string reports;
  } kCases[] = {
      {"type", typeLine("9.1", {}, "theirs"), "type : 1.1 mine\n",
       kNoClasses + (kTypes + reported("1.1", ""))},
      {"class", namelessClassLine("9.1", "theirs"), "class : 1.2 mine\n",
       kClasses + reported("1.2", "") + kNoTypes},
      {"both",
       typeLine("9.1", {}, "theirs") + namelessClassLine("9.2", "theirs"),
       "type : 1.1 mine\nclass : 1.2 mine\n",
       kClasses + reported("1.2", "") + kTypes + reported("1.1", "")},
      {"named ones",
       typeLine("9.1", {"a"}, "theirs") + classLine("9.2", {"k"}, "theirs"), "",
       std::string(kNoClasses) + kNoTypes},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.what);
    const auto schema = makeSchema({{"V3.user.at", type + klass}});
    const auto other = makeSchema({{"V3.user.at", test.theirs}});
    EXPECT_EQ(schema->checkCollisions(other.get()), 1U);
    std::string names;
    for (const char *label : {"type : ", "class : "}) {
      const std::string tables = tablesOf(*schema);
      const std::size_t place = tables.find(label);
      if (place != std::string::npos) {
        names += tables.substr(place, tables.find('\n', place) + 1 - place);
      }
    }
    EXPECT_EQ(names, test.tables);
    EXPECT_EQ(reportsOf(schema), test.reports + kNoStorage);
  }
}

// What is identical goes with the comparison, what is excluded too, and what
// only one side has with the check.
TEST(SchemaManagerCollisionReportTest, CheckBehindAComparison) {
  const auto schema = makeSchema(
      {{"V3.user.at",
        typeLine("1.1", {"same"}, "x") + typeLine("1.2", {"other"}, "mine") +
            typeLine("1.3", {"mine"}, "x") + typeLine("1.4", {"out"}, "mine")},
       {"V3.user.oc",
        classLine("2.1", {"same"}, "x") + classLine("2.2", {"Other"}, "mine")},
       {"V3.qor.at", storageLine("1.1", "x") + storageLine("1.2", "mine") +
                         storageLine("1.3", "x")}});
  const auto other = makeSchema(
      {{"V3.system.at", typeLine("1.1", {"same"}, "x") +
                            typeLine("9.2", {"OTHER"}, "theirs") +
                            typeLine("1.4", {"out"}, "theirs")},
       {"V3.system.oc",
        classLine("2.1", {"same"}, "x") + classLine("9.2", {"other"}, "x")},
       {"V3.qor.at", storageLine("1.1", "x") + storageLine("1.2", "theirs")}});
  exclude(schema.get(), "1.4");
  EXPECT_EQ(schema->compSchemas(other.get()), 1U);
  EXPECT_EQ(schema->checkCollisions(other.get()), 1U);
  EXPECT_EQ(reportsOf(schema), kClasses + reported("2.2", "Other") + kTypes +
                                   reported("1.2", "other") + kStorage +
                                   reported("1.2", ""));
}

}  // namespace
