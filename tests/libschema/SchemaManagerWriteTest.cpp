// The content of the files that are written.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "libschema/SchemaManagerTesting.h"
#include "libschema/SchemaManagerTexts.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace fs = std::filesystem;

namespace {

using Messages = std::vector<std::string>;
using Oids = std::set<std::string>;

// What a file of the schema holds when it is written. Traced or not, the same
// file comes out, and the schema stays as it is.
std::string written(SchemaManager *schema, const std::string &name) {
  const FixedDate date;
  const std::string state = stateOf(schema);
  std::string texts[2];
  for (const unsigned int mask : {0U, ~0U}) {
    const TemporaryDirectory directory;
    const TraceRecorder recorder(mask);
    EXPECT_EQ(schema->writeFile(directory.string(), name), 0U);
    EXPECT_EQ(recorder.messages(), Messages());
    texts[mask & 1U] = directory.read(name);
  }
  EXPECT_EQ(texts[0], texts[1]);
  EXPECT_EQ(stateOf(schema), state);
  return texts[0];
}

std::string writtenSet(SchemaManager *schema, const Oids &oids) {
  const FixedDate date;
  const TemporaryDirectory directory;
  EXPECT_EQ(schema->writeSetToFile(oids, directory.string() + "/a file"), 0U);
  return directory.read("a file");
}

TEST(SchemaManagerWriteTest, EmptySetGivesAnEmptyFile) {
  SchemaManager schema("");
  for (const char *name : kFilesWithOidSet) {
    EXPECT_EQ(written(&schema, name), "") << name;
  }
  EXPECT_EQ(written(&schema, "V3.modifiedschema"), "");
  EXPECT_EQ(writtenSet(&schema, {}), "");
}

// Of definitions that the schema has but the set lacks, nothing is written.
TEST(SchemaManagerWriteTest, EmptySetOfAFullSchemaGivesAnEmptyFile) {
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "a")}});
  EXPECT_EQ(written(schema.get(), "V3.user.oc"), "");
}

TEST(SchemaManagerWriteTest, DefinitionsFollowTheHeaderInTheOrderOfOids) {
  const auto schema = makeSchema(
      {{"V3.user.at", typeLine("1.3.6.1.4.1.2", "a") + typeLine("b", "b") +
                          classLine("1.3.6.1.4.1.10", "k") +
                          typeLine("1.3.6.1.4.1", "c") + classLine("B", "l") +
                          typeLine("1.3.6.1.4.1.9", "d")}});
  EXPECT_EQ(written(schema.get(), "V3.user.at"),
            kHeaderLine + typeLine("1.3.6.1.4.1", "c") +
                classLine("1.3.6.1.4.1.10", "k") +
                typeLine("1.3.6.1.4.1.2", "a") +
                typeLine("1.3.6.1.4.1.9", "d") + classLine("B", "l") +
                typeLine("b", "b"));
}

TEST(SchemaManagerWriteTest, StorageDefinitionFollowsItsAttributeType) {
  const auto schema = makeSchema(
      {{"V3.user.at",
        typeLine("1.1", "a") + typeLine("1.2", "b") + typeLine("1.3", "c")},
       {"V3.qor.at",
        "QORAttributetypes=( 1.1 DBNAME ( 'A' 'A_T' ) ACCESS-CLASS sensitive "
        "LENGTH 64 EQUALITY ORDERING SUBSTR APPROX )\n"
        "QORAttributetypes=( 1.3 APPROX )\n"}});
  const std::string a =
      typeLine("1.1", "a") +
      "QORAttributetypes=( 1.1 DBNAME ( 'A' 'A_T'  ) ACCESS-CLASS sensitive "
      "LENGTH 64 EQUALITY ORDERING SUBSTR APPROX )\n";
  const std::string c =
      typeLine("1.3", "c") + "QORAttributetypes=( 1.3 APPROX )\n";
  EXPECT_EQ(written(schema.get(), "V3.user.at"),
            kHeaderLine + a + typeLine("1.2", "b") + c);
  EXPECT_EQ(written(schema.get(), "V3.qor.at"), kHeaderLine + a + c);
}

TEST(SchemaManagerWriteTest, ObjectClassGoesBeforeAnAttributeTypeOfItsOid) {
  const auto schema = makeSchema(
      {{"V3.user.at", typeLine("1.1", "a") + storageLine("1.1") +
                          classLine("1.1", "k") + typeLine("1.2", "b")}});
  EXPECT_EQ(written(schema.get(), "V3.user.at"),
            kHeaderLine + classLine("1.1", "k") + typeLine("1.2", "b"));
}

// Its OID makes a header all the same.
TEST(SchemaManagerWriteTest, StorageDefinitionAloneIsNotWritten) {
  const auto schema =
      makeSchema({{"V3.user.at", storageLine("1.1") + classLine("1.2", "k")},
                  {"V3.qor.at", storageLine("3.1") + storageLine("1.2")}});
  EXPECT_EQ(written(schema.get(), "V3.user.at"),
            kHeaderLine + classLine("1.2", "k"));
  EXPECT_EQ(written(schema.get(), "V3.qor.at"),
            kHeaderLine + classLine("1.2", "k"));
  EXPECT_EQ(writtenSet(schema.get(), {"1.1"}), kHeaderLine);
}

TEST(SchemaManagerWriteTest, OidWithoutDefinitionIsPassedOver) {
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.2", "b")}});
  EXPECT_EQ(writtenSet(schema.get(), {"1.1"}), kHeaderLine);
  EXPECT_EQ(writtenSet(schema.get(), {"", "1", "1.2", "1.2.1", "b"}),
            kHeaderLine + typeLine("1.2", "b"));
}

TEST(SchemaManagerWriteTest, AnySetCanBeWritten) {
  const auto schema =
      makeSchema({{"V3.user.at", typeLine("1.1", "a") + typeLine("1.2", "b")},
                  {"V3.config.at", typeLine("1.3", "c") + storageLine("1.3")},
                  {"V3.system.oc", classLine("2.1", "k")}});
  EXPECT_EQ(writtenSet(schema.get(), {"2.1", "1.3", "1.1"}),
            kHeaderLine + typeLine("1.1", "a") + typeLine("1.3", "c") +
                storageLine("1.3") + classLine("2.1", "k"));
}

TEST(SchemaManagerWriteTest, DefinitionThatOnlyItsOidLeadsToIsWritten) {
  auto schema = makeSchema(
      {{"V3.user.at", typeLine("1.1", "a") + typeLine("1.2", "A") +
                          classLine("2.1", "k") + classLine("2.2", "K")}});
  EXPECT_EQ(written(schema.get(), "V3.user.at"),
            kHeaderLine + typeLine("1.1", "a") + typeLine("1.2", "A") +
                classLine("2.1", "k") + classLine("2.2", "K"));
  // What the manager never frees.
  const std::unique_ptr<Attribute> type(
      schema->attributeTypesByOid().at("1.2"));
  const std::unique_ptr<ObjectClass> objectClass(
      schema->objectClassesByOid().at("2.2"));
  schema.reset();
}

TEST(SchemaManagerWriteTest, DefinitionOfATakenOidIsNotWritten) {
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "b")},
                                  {"V3.qor.at", typeLine("1.1", "a")}});
  EXPECT_EQ(written(schema.get(), "V3.user.at"),
            kHeaderLine + typeLine("1.1", "b"));
  EXPECT_EQ(written(schema.get(), "V3.qor.at"),
            kHeaderLine + typeLine("1.1", "b"));
}

TEST(SchemaManagerWriteTest, DefinitionWithoutOidIsWritten) {
  const auto schema =
      makeSchema({{"V3.user.at", "attributetypes=( NAME 'a' OBSOLETE )\n" +
                                     storageLine("") + typeLine("1.1", "b")}});
  EXPECT_EQ(
      written(schema.get(), "V3.user.at"),
      kHeaderLine + typeLine("", "a") + storageLine("") + typeLine("1.1", "b"));
}

TEST(SchemaManagerWriteTest, ExcludedDefinitionsAreWritten) {
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "a")}});
  const TemporaryDirectory directory;
  ASSERT_EQ(schema->readExcludedOids(directory.write("list", "1.1\n")), 0U);
  EXPECT_EQ(written(schema.get(), "V3.user.at"),
            kHeaderLine + typeLine("1.1", "a"));
}

TEST(SchemaManagerWriteTest, DeletedOidIsNotWritten) {
  const auto schema =
      makeSchema({{"V3.user.at", typeLine("1.1", "a") + typeLine("1.2", "b")}});
  ASSERT_EQ(schema->delOidFromFileSet("1.1"), 0U);
  EXPECT_EQ(written(schema.get(), "V3.user.at"),
            kHeaderLine + typeLine("1.2", "b"));
  ASSERT_EQ(schema->delOidFromFileSet("1.2"), 0U);
  EXPECT_EQ(written(schema.get(), "V3.user.at"), "");
}

TEST(SchemaManagerWriteTest, WrittenFilesReadBackToTheSameSchema) {
  const FixedDate date;
  const auto schema = makeSchema(
      {{"V3.user.at",
        "attributetypes { ( 1.1 NAME ( 'Alpha' 'Beta' ) DESC 'An (alpha) $' "
        "OBSOLETE SUP 1.9 EQUALITY 1.8 ORDERING 1.7 SUBSTR 1.6 SYNTAX 1.5 {64} "
        "SINGLE-VALUE NO-USER-MODIFICATION USAGE dSAOperation ) " +
            typeBody("1.2", "b") + " }\n" + storageLine("1.1")},
       {"V3.user.oc",
        "objectclasses=( 2.1 NAME ( 'Person' 'Human' ) DESC 'x' SUP ( top $ "
        "being ) AUXILIARY MUST ( sn $ cn ) MAY ( mail ) )\n"},
       {"V3.system.oc", classLine("2.2", "k")},
       {"V3.modifiedschema", typeLine("1.3", "c") + classLine("2.3", "l")}});
  const TemporaryDirectory directory;
  SchemaManager copy(directory.string());
  for (const char *name :
       {"V3.user.oc", "V3.user.at", "V3.qor.oc", "V3.qor.at", "V3.system.oc",
        "V3.system.at", "V3.modifiedschema"}) {
    SCOPED_TRACE(name);
    ASSERT_EQ(schema->writeFile(directory.string(), name), 0U);
    EXPECT_EQ(copy.readFile(name), 0U);
    EXPECT_EQ(written(&copy, name), directory.read(name));
  }
  EXPECT_EQ(stateOf(&copy), stateOf(schema.get()));
}

TEST(SchemaManagerWriteTest, HeaderHasTheCurrentTime) {
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "a")}});
  const TemporaryDirectory directory;
  ASSERT_EQ(schema->writeFile(directory.string(), "V3.user.at"), 0U);
  EXPECT_THAT(directory.read("V3.user.at"),
              testing::MatchesRegex(
                  "# File generated by 6\\.0 migration "
                  "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}"
                  "[+-][0-9]{2}:[0-9]{2}\n"
                  "attributetypes=\\( 1\\.1 NAME \\( 'a'  \\) OBSOLETE USAGE "
                  "userApplications  \\)\n"));
}

// The file.

TEST(SchemaManagerWriteTest, ExistingFileIsReplaced) {
  const FixedDate date;
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "a")}});
  const TemporaryDirectory directory;
  directory.write("V3.user.at", std::string(10000, 'x'));
  directory.write("V3.user.oc", std::string(10000, 'x'));
  EXPECT_EQ(schema->writeFile(directory.string(), "V3.user.at"), 0U);
  EXPECT_EQ(schema->writeFile(directory.string(), "V3.user.oc"), 0U);
  EXPECT_EQ(directory.read("V3.user.at"), kHeaderLine + typeLine("1.1", "a"));
  EXPECT_EQ(directory.read("V3.user.oc"), "");
}

TEST(SchemaManagerWriteTest, FileOfTheSchemaItselfCanBeReplaced) {
  const FixedDate date;
  const TemporaryDirectory directory;
  directory.write("V3.user.at", typeLine("1.2", "b") + typeLine("1.1", "a"));
  SchemaManager schema(directory.string());
  ASSERT_EQ(schema.readFile("V3.user.at"), 0U);
  EXPECT_EQ(schema.writeFile(directory.string(), "V3.user.at"), 0U);
  EXPECT_EQ(directory.read("V3.user.at"),
            kHeaderLine + typeLine("1.1", "a") + typeLine("1.2", "b"));
}

TEST(SchemaManagerWriteTest, PathThatDoesNotOpenGivesOne) {
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "a")}});
  const TemporaryDirectory directory;
  directory.write("file", "kept");
  fs::create_directories(directory.path() / "taken" / "V3.user.at");
  fs::create_directory(directory.path() / "taken" / "V3.user.oc");
  for (const std::string name : {"missing", "file", "taken"}) {
    for (const std::string file : {"V3.user.at", "V3.user.oc"}) {
      SCOPED_TRACE(name + ' ' + file);
      const std::string dir = directory.string() + '/' + name;
      const Messages messages = {
          "writeSetToFile: Unable to open file for writing, " + dir + '/' +
          file + ".\n"};
      const TraceRecorder recorder(kTraceDebug);
      EXPECT_EQ(schema->writeFile(dir, file), 1U);
      EXPECT_EQ(recorder.messages(), messages);
    }
  }
  EXPECT_FALSE(fs::exists(directory.path() / "missing"));
  EXPECT_EQ(directory.read("file"), "kept");
}

TEST(SchemaManagerWriteTest, EmptyPathDoesNotOpen) {
  SchemaManager schema("");
  const TraceRecorder recorder(kTraceDebug);
  EXPECT_EQ(schema.writeSetToFile({}, ""), 1U);
  EXPECT_EQ(recorder.messages(),
            Messages{"writeSetToFile: Unable to open file for writing, .\n"});
}

// Kept on purpose: who must know reads the file back.
TEST(SchemaManagerWriteTest, WriteErrorIsNotReported) {
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "a")}});
  const TraceRecorder recorder(kTraceDebug);
  EXPECT_EQ(schema->writeSetToFile({"1.1"}, "/dev/full"), 0U);
  EXPECT_EQ(recorder.messages(), Messages());
}

}  // namespace
