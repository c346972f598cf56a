// What is printed of a schema for diagnosis.
#include <gtest/gtest.h>

#include <iostream>
#include <ostream>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "libschema/DefinitionTesting.h"
#include "libschema/SchemaManagerMergeTesting.h"
#include "libschema/SchemaManagerTesting.h"
#include "support/TraceRecorder.h"

namespace {

using Dump = void (SchemaManager::*)();

std::string printed(const Schema &schema, Dump dump) {
  const definitions::PrintedText text;
  (schema.get()->*dump)();
  return text.str();
}

// A dump, and what it prints of an empty schema but for the newline at the end.
struct DumpCase {
  const char *name;
  Dump dump;
  std::string header;
};

void PrintTo(const DumpCase &dump, std::ostream *out) { *out << dump.name; }

const DumpCase kDumps[] = {
    {"AttrTable", &SchemaManager::dumpAttrTable,
     "AttributeTable contains:\nKey\nValue\n"},
    {"QORAttrTable", &SchemaManager::dumpQORAttrTable,
     "QORAttributeTable contains:\nKey\nValue\n"},
    {"OcTable", &SchemaManager::dumpOcTable,
     "ObjectClassTable contains:\nKey\tValue\n"},
    {"UserOc", &SchemaManager::dumpUserOc, "OIDs from the V3.user.oc file\n"},
    {"UserAt", &SchemaManager::dumpUserAt, "OIDs from the V3.user.at file\n"},
    {"QorOc", &SchemaManager::dumpQorOc, "OIDs from the V3.qor.oc file\n"},
    {"QorAt", &SchemaManager::dumpQorAt, "OIDs from the V3.qor.at file\n"},
    {"SysOc", &SchemaManager::dumpSysOc, "OIDs from the V3.system.oc file\n"},
    {"SysAt", &SchemaManager::dumpSysAt, "OIDs from the V3.system.at file\n"},
    {"EOids", &SchemaManager::dumpEOids, "excluded oids\n"},
};

class SchemaManagerDumpTest : public testing::TestWithParam<DumpCase> {};

std::string dumpName(const testing::TestParamInfo<DumpCase> &dump) {
  return dump.param.name;
}

INSTANTIATE_TEST_SUITE_P(Dumps, SchemaManagerDumpTest,
                         testing::ValuesIn(kDumps), dumpName);

TEST_P(SchemaManagerDumpTest, EmptySchema) {
  const auto schema = emptySchema();
  for (const unsigned int mask : {0U, ~0U}) {
    const TraceRecorder recorder(mask);
    EXPECT_EQ(printed(schema, GetParam().dump), GetParam().header + '\n');
    EXPECT_EQ(recorder.messages(), std::vector<std::string>());
  }
}

// An entry of each table and an OID of each set, all of them different.
Schema fullSchema() {
  auto schema = makeSchema(
      {{"V3.user.oc",
        "objectclasses=( 1.1 NAME ( 'K' 'kay' ) DESC 'a class' "
        "SUP ( top $ other ) AUXILIARY OBSOLETE MUST ( a $ b ) "
        "MAY ( c ) )\n"},
       {"V3.user.at",
        "attributetypes=( 1.2 NAME ( 'A' 'ay' ) DESC 'a type' SUP 2.1 "
        "EQUALITY 2.2 ORDERING 2.3 SUBSTR 2.4 SYNTAX 1.9{64} "
        "USAGE directoryOperation )\n"},
       {"V3.qor.oc", storageLine("1.3", "critical")},
       {"V3.qor.at", storageLine("1.4", "normal")},
       {"V3.system.oc", storageLine("1.5", "normal")},
       {"V3.system.at", storageLine("1.6", "normal")},
       {"V3.modifiedschema", storageLine("1.7", "normal")},
       {"V3.config.oc", storageLine("1.8", "normal")}});
  exclude(schema.get(), "1.9");
  return schema;
}

// The lines of a storage definition that has an access class alone.
std::string storageFields(const std::string &oid,
                          const std::string &accessClass) {
  return "oid --> " + oid + "\naccessClass --> " + accessClass +
         "\nlength --> 0\nequality --> NO\nordering --> NO\nsubstr --> NO\n"
         "approx --> NO\nnames--> \n";
}

// The lines of an attribute type that has names and a description alone.
std::string typeFields(const std::string &oid, const std::string &names,
                       const std::string &description) {
  return "oid --> " + oid + "\nnames --> " + names + "\ndescription --> " +
         description +
         "\nequality --> \nsyntax --> \nordering --> \nsubstr --> \n"
         "superior --> \nusage --> userApplications\n";
}

std::string classFields(const std::string &oid, const std::string &names,
                        const std::string &description) {
  return "\n\noid --> " + oid + "\nnames --> " + names + "\ndescription --> " +
         description +
         "\nsuperior --> \nstructural type --> STRUCTURAL\n"
         "Obsolete --> NO\nrequired Attrs --> \noptional Attrs --> \n\n\n";
}

std::string fullText(const DumpCase &dump) {
  const std::string name = dump.name;
  if (name == "OcTable") {
    return "ObjectClassTable contains:\nKey\tValue\n"
           "\n"
           "k\t\n"
           "\n"
           "oid --> 1.1\n"
           "names --> K kay \n"
           "description --> a class\n"
           "superior --> top other \n"
           "structural type --> AUXILIARY\n"
           "Obsolete --> YES\n"
           "required Attrs --> a b \n"
           "optional Attrs --> c \n"
           "\n"
           "\n"
           "\n"
           "\n";
  }
  if (name == "AttrTable") {
    return "AttributeTable contains:\nKey\nValue\n"
           "\n"
           "a\toid --> 1.2\n"
           "names --> A ay \n"
           "description --> a type\n"
           "equality --> 2.2\n"
           "syntax --> 1.9{64}\n"
           "ordering --> 2.3\n"
           "substr --> 2.4\n"
           "superior --> 2.1 \n"
           "usage --> directoryOperation\n"
           "\n"
           "\n";
  }
  if (name == "QORAttrTable") {
    return "QORAttributeTable contains:\nKey\nValue\n"
           "\n1.3\t" +
           storageFields("1.3", "critical") + "\n\n1.4\t" +
           storageFields("1.4", "normal") + "\n\n1.5\t" +
           storageFields("1.5", "normal") + "\n\n1.6\t" +
           storageFields("1.6", "normal") + "\n\n1.7\t" +
           storageFields("1.7", "normal") + "\n\n1.8\t" +
           storageFields("1.8", "normal") + "\n\n";
  }
  const std::string oid = name == "UserOc"   ? "1.1"
                          : name == "UserAt" ? "1.2"
                          : name == "QorOc"  ? "1.3"
                          : name == "QorAt"  ? "1.4"
                          : name == "SysOc"  ? "1.5"
                          : name == "SysAt"  ? "1.6"
                                             : "1.9";
  return dump.header + oid + "\n\n";
}

// Each prints its own table or set and no other. There is none for the OIDs of
// V3.modifiedschema and of the config files.
TEST_P(SchemaManagerDumpTest, EntryInEachTableAndSet) {
  const auto schema = fullSchema();
  const std::string before = stateOf(schema.get());
  for (const unsigned int mask : {0U, ~0U}) {
    SCOPED_TRACE(mask);
    const TraceRecorder recorder(mask);
    EXPECT_EQ(printed(schema, GetParam().dump), fullText(GetParam()));
    EXPECT_EQ(printed(schema, GetParam().dump), fullText(GetParam()));
  }
  EXPECT_EQ(stateOf(schema.get()), before);
}

// Standard output alone is written to.
TEST_P(SchemaManagerDumpTest, PrintsToNothingElse) {
  const auto schema = fullSchema();
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  (schema.get()->*GetParam().dump)();
  std::cout.flush();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), fullText(GetParam()));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

// The order is that of the bytes of the keys, not that of the file.

TEST(SchemaManagerTableDumpTest, AttributeTypesByFirstNameInLowerCase) {
  const auto schema = makeSchema(
      {{"V3.user.at",
        typeLine("1.1", {"b", "0"}, "x") + typeLine("1.2", {"A10"}, "y") +
            typeLine("1.3", {}, "z") + typeLine("1.4", {"a9"}, "")}});
  EXPECT_EQ(printed(schema, &SchemaManager::dumpAttrTable),
            "AttributeTable contains:\nKey\nValue\n"
            "\n\t" +
                typeFields("1.3", "", "z") + "\n\na10\t" +
                typeFields("1.2", "A10 ", "y") + "\n\na9\t" +
                typeFields("1.4", "a9 ", "") + "\n\nb\t" +
                typeFields("1.1", "b 0 ", "x") + "\n\n");
}

TEST(SchemaManagerTableDumpTest, ObjectClassesByFirstNameInLowerCase) {
  const auto schema = makeSchema(
      {{"V3.user.oc",
        classLine("1.1", {"b", "0"}, "x") + classLine("1.2", {"A10"}, "y") +
            namelessClassLine("1.3", "z") + classLine("1.4", {"a9"}, "")}});
  EXPECT_EQ(printed(schema, &SchemaManager::dumpOcTable),
            "ObjectClassTable contains:\nKey\tValue\n"
            "\n\t" +
                classFields("1.3", "", "z") + "\n\na10\t" +
                classFields("1.2", "A10 ", "y") + "\n\na9\t" +
                classFields("1.4", "a9 ", "") + "\n\nb\t" +
                classFields("1.1", "b 0 ", "x") + "\n\n");
}

TEST(SchemaManagerTableDumpTest, StorageDefinitionsByOid) {
  const auto schema = makeSchema(
      {{"V3.qor.at",
        storageLine("1.9", "x") + storageLine("b", "y") +
            storageLine("1.10", "z") + storageLine("B", "x") +
            "QORAttributetypes=( 1.2 DBNAME ( 'C' 'D' ) ACCESS-CLASS sensitive "
            "LENGTH 256 EQUALITY ORDERING SUBSTR APPROX )\n"}});
  EXPECT_EQ(printed(schema, &SchemaManager::dumpQORAttrTable),
            "QORAttributeTable contains:\nKey\nValue\n"
            "\n1.10\t" +
                storageFields("1.10", "z") +
                "\n\n1.2\t"
                "oid --> 1.2\n"
                "accessClass --> sensitive\n"
                "length --> 256\n"
                "equality --> YES\n"
                "ordering --> YES\n"
                "substr --> YES\n"
                "approx --> YES\n"
                "names--> C D \n"
                "\n\n1.9\t" +
                storageFields("1.9", "x") + "\n\nB\t" +
                storageFields("B", "x") + "\n\nb\t" + storageFields("b", "y") +
                "\n\n");
}

// What only its OID leads to is in no table that is printed.
TEST(SchemaManagerTableDumpTest, DefinitionsByOidAloneAreNotPrinted) {
  const auto schema = fullSchema();
  const auto nothing = emptySchema();
  ASSERT_EQ(schema->checkCollisions(nothing.get()), 1U);
  ASSERT_EQ(schema->attributeTypesByOid().count("1.2"), 1U);
  ASSERT_EQ(schema->objectClassesByOid().count("1.1"), 1U);
  for (const DumpCase &dump : kDumps) {
    SCOPED_TRACE(dump.name);
    const bool table =
        std::string(dump.name).find("Table") != std::string::npos;
    EXPECT_EQ(printed(schema, dump.dump),
              table ? dump.header + '\n' : fullText(dump));
  }
}

TEST(SchemaManagerSetDumpTest, OidsAreInOrderAndOnce) {
  const struct {
    Dump dump;
    const char *file;
  } kSets[] = {
      {&SchemaManager::dumpUserOc, "V3.user.oc"},
      {&SchemaManager::dumpUserAt, "V3.user.at"},
      {&SchemaManager::dumpQorOc, "V3.qor.oc"},
      {&SchemaManager::dumpQorAt, "V3.qor.at"},
      {&SchemaManager::dumpSysOc, "V3.system.oc"},
      {&SchemaManager::dumpSysAt, "V3.system.at"},
  };
  for (const auto &set : kSets) {
    SCOPED_TRACE(set.file);
    const auto schema = makeSchema(
        {{set.file, storageLine("1.9", "x") + typeLine("1.10", {"a"}, "x") +
                        classLine("1.9", {"k"}, "x") +
                        storageLine("1.10", "x") + storageLine("b", "x") +
                        storageLine("B", "x")}});
    EXPECT_EQ(printed(schema, set.dump), std::string("OIDs from the ") +
                                             set.file +
                                             " file\n1.10\n1.9\nB\nb\n\n");
  }
}

TEST(SchemaManagerSetDumpTest, ExcludedOidsAreInOrderAndOnce) {
  const auto schema = emptySchema();
  exclude(schema.get(), "1.9 b 1.10 1.9");
  exclude(schema.get(), "B 1.10 #");
  EXPECT_EQ(printed(schema, &SchemaManager::dumpEOids),
            "excluded oids\n1.10\n1.9\nB\nb\n\n");
}

// What leaves a set is printed no longer.
TEST(SchemaManagerSetDumpTest, RemovedOids) {
  const auto schema = makeSchema(
      {{"V3.user.at", storageLine("1.1", "x") + storageLine("1.2", "x")}});
  ASSERT_EQ(schema->delOidFromFileSet("1.1"), 0U);
  EXPECT_EQ(printed(schema, &SchemaManager::dumpUserAt),
            "OIDs from the V3.user.at file\n1.2\n\n");
  ASSERT_EQ(schema->delOidFromFileSet("1.2"), 0U);
  EXPECT_EQ(printed(schema, &SchemaManager::dumpUserAt),
            "OIDs from the V3.user.at file\n\n");
}

}  // namespace
