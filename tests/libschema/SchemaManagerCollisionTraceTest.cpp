// The trace records of the collision check and its reports, of withdrawing
// definitions and of dumps.
#include <gtest/gtest.h>

#include <functional>
#include <ios>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "libschema/DefinitionTesting.h"
#include "libschema/SchemaManagerMergeTesting.h"
#include "libschema/SchemaManagerTesting.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace {

using Records = std::vector<std::string>;

constexpr unsigned int kAttributeDump = 0x53010400;
constexpr unsigned int kStorageDump = 0x53020400;
constexpr unsigned int kClassDump = 0x53030400;
constexpr unsigned int kDumpAttrTable = 0x53050100;
constexpr unsigned int kDumpQORAttrTable = 0x53050200;
constexpr unsigned int kDumpOcTable = 0x53050300;
constexpr unsigned int kGetAttr = 0x53050400;
constexpr unsigned int kGetQORAttr = 0x53050500;
constexpr unsigned int kGetObjClass = 0x53050600;
constexpr unsigned int kDumpUserOc = 0x53050700;
constexpr unsigned int kDumpUserAt = 0x53050800;
constexpr unsigned int kDumpQorOc = 0x53050900;
constexpr unsigned int kDumpQorAt = 0x53050A00;
constexpr unsigned int kDumpSysOc = 0x53050B00;
constexpr unsigned int kDumpSysAt = 0x53050C00;
constexpr unsigned int kDumpEOids = 0x53051A00;
constexpr unsigned int kCheckCollisions = 0x53051C00;
constexpr unsigned int kModifySchema = 0x53051D00;
constexpr unsigned int kDelOidFromModSch = 0x53051F00;
constexpr unsigned int kCheckObjClasses = 0x53052000;
constexpr unsigned int kCheckAttrs = 0x53052100;
constexpr unsigned int kCheckQORAttrs = 0x53052200;
constexpr unsigned int kGetOcTable = 0x53052300;
constexpr unsigned int kGetQORAttrTable = 0x53052400;
constexpr unsigned int kGetAttrTable = 0x53052500;
constexpr unsigned int kIsModFileEmpty = 0x53052600;

Records operator+(Records records, const Records &more) {
  records.insert(records.end(), more.begin(), more.end());
  return records;
}

// An operation, with what is recorded while it runs.
Records call(unsigned int id, int code, const Records &inside = {}) {
  std::ostringstream entry, exit;
  entry << "entry " << std::hex << id << " kind 3200000";
  exit << "exit " << std::hex << id << " kind 21 event 1000 code " << std::dec
       << code;
  return Records{entry.str()} + inside + Records{exit.str()};
}

// One that walks tables or sets.
Records walk(unsigned int id, int code, const Records &inside = {}) {
  std::ostringstream entry, exit;
  entry << "entry " << std::hex << id << " kind 32a0000";
  exit << "exit " << std::hex << id << " kind 2b event 10000 code " << std::dec
       << code;
  return Records{entry.str()} + inside + Records{exit.str()};
}

bool selected(const std::string &record, unsigned int mask) {
  const auto has = [&record](const char *text) {
    return record.find(text) != std::string::npos;
  };
  unsigned int bits = kTraceDebug;
  if (record.rfind("entry ", 0) == 0) {
    bits = has(" kind 32a0000") ? kTraceWalkEntry : kTraceEntry;
  } else if (record.rfind("exit ", 0) == 0) {
    bits = has(" kind 2b ") ? kTraceWalkEntry | kTraceWalkExit
                            : kTraceEntry | kTraceExit;
  }
  return (mask & bits) != 0;
}

// What an operation does with a schema and another one.
using Operation = std::function<void(SchemaManager *, SchemaManager *)>;
using Files = std::vector<SchemaFile>;

// Calls `run` with each combination of the bits of the event mask, with schemas
// that have read the files, and checks what is recorded.
void expectRecords(const Files &mine, const Files &theirs, const Operation &run,
                   const Records &expected) {
  const unsigned int bits[] = {kTraceEntry, kTraceExit, kTraceWalkEntry,
                               kTraceWalkExit, kTraceDebug};
  for (unsigned int choice = 0; choice < 1U << 5U; ++choice) {
    unsigned int mask = 0;
    for (unsigned int i = 0; i < 5; ++i) {
      mask |= (choice >> i & 1U) != 0 ? bits[i] : 0;
    }
    SCOPED_TRACE(testing::Message() << "mask " << std::hex << mask);
    Records chosen;
    for (const std::string &record : expected) {
      if (selected(record, mask)) {
        chosen.push_back(record);
      }
    }
    const auto schema = makeSchema(mine);
    const auto other = makeSchema(theirs);
    const definitions::PrintedText printed;
    const TraceRecorder recorder(mask);
    run(schema.get(), other.get());
    EXPECT_EQ(recorder.records(), chosen);
  }
}

void expectRecords(const Files &files, const Operation &run,
                   const Records &expected) {
  expectRecords(files, {}, run, expected);
}

// Two attribute types, three object classes and a storage definition.
const Files &someOfEach() {
  static const Files files = {
      {"V3.user.at", typeLine("1.1", {"a"}, "x") + typeLine("1.2", {"b"}, "x")},
      {"V3.user.oc", classLine("2.1", {"k"}, "x") +
                         classLine("2.2", {"l"}, "x") +
                         classLine("2.3", {"m"}, "x")},
      {"V3.modifiedschema", storageLine("3.1", "x")}};
  return files;
}

TEST(SchemaManagerCollisionTraceTest, ChecksOfEmptyTables) {
  expectRecords(
      {}, someOfEach(),
      [](SchemaManager *schema, SchemaManager *other) {
        schema->checkCollisions(other);
      },
      call(kCheckCollisions, 1,
           walk(kCheckObjClasses, 1) + walk(kCheckAttrs, 1) +
               walk(kCheckQORAttrs, 1)));
}

// A look-up for each definition, whether it collides or not.
TEST(SchemaManagerCollisionTraceTest, Checks) {
  const Records classes = walk(
      kCheckObjClasses, 1,
      call(kGetObjClass, 0) + call(kGetObjClass, 0) + call(kGetObjClass, 0));
  const Records types =
      walk(kCheckAttrs, 1, call(kGetAttr, 0) + call(kGetAttr, 0));
  const Records storage = walk(kCheckQORAttrs, 1, call(kGetQORAttr, 0));
  const Files others[] = {{},
                          {{"V3.user.at", typeLine("9.1", {"a"}, "x") +
                                              classLine("9.2", {"k"}, "x") +
                                              storageLine("3.1", "x")}},
                          someOfEach()};
  for (const Files &theirs : others) {
    SCOPED_TRACE(theirs.size());
    expectRecords(
        someOfEach(), theirs,
        [](SchemaManager *schema, SchemaManager *other) {
          schema->checkCollisions(other);
        },
        call(kCheckCollisions, 1, classes + types + storage));
    expectRecords(
        someOfEach(), theirs,
        [](SchemaManager *schema, SchemaManager *other) {
          schema->checkQORAttrs(other);
          schema->checkAttrs(other);
          schema->checkObjClasses(other);
        },
        storage + types + classes);
  }
  expectRecords(
      someOfEach(),
      [](SchemaManager *schema, SchemaManager * /*other*/) {
        schema->checkCollisions(schema);
      },
      call(kCheckCollisions, 1, classes + types + storage));
}

// What the first check takes out the second does not look up.
TEST(SchemaManagerCollisionTraceTest, SecondCheck) {
  const Records none = walk(kCheckObjClasses, 1) + walk(kCheckAttrs, 1) +
                       walk(kCheckQORAttrs, 1);
  expectRecords(
      {{"V3.user.at", typeLine("1.1", {"a"}, "x")}}, {},
      [](SchemaManager *schema, SchemaManager *other) {
        schema->checkCollisions(other);
        schema->checkCollisions(other);
      },
      call(kCheckCollisions, 1,
           walk(kCheckObjClasses, 1) + walk(kCheckAttrs, 1, call(kGetAttr, 0)) +
               walk(kCheckQORAttrs, 1)) +
          call(kCheckCollisions, 1, none));
}

TEST(SchemaManagerCollisionTraceTest, Reports) {
  for (const Files &files : {Files(), someOfEach()}) {
    expectRecords(
        files,
        [](SchemaManager *schema, SchemaManager * /*other*/) {
          schema->getOcTable();
          schema->getAttrTable();
          schema->getQORAttrTable();
          schema->getOcTable();
        },
        call(kGetOcTable, 0) + call(kGetAttrTable, 0) +
            call(kGetQORAttrTable, 0) + call(kGetOcTable, 0));
  }
}

// Withdraws what stands in the list, once or more often.
Operation withdrawing(const std::string &list, int times = 1) {
  return [list, times](SchemaManager *schema, SchemaManager * /*other*/) {
    const TemporaryDirectory directory;
    const std::string path = directory.write("list", list);
    for (int time = 0; time < times; ++time) {
      schema->modifySchema(path);
    }
  };
}

TEST(SchemaManagerModifiedSchemaTraceTest, ListsThatWithdrawNothing) {
  for (const char *list : {"", "\n", "# 1.1\n", "1.1", "9.9 a k\n"}) {
    SCOPED_TRACE(list);
    expectRecords(someOfEach(), withdrawing(list), call(kModifySchema, 0));
  }
}

TEST(SchemaManagerModifiedSchemaTraceTest, ListThatDoesNotOpen) {
  const TemporaryDirectory directory;
  const std::string path = directory.string() + "/missing %s";
  expectRecords(
      someOfEach(),
      [&path](SchemaManager *schema, SchemaManager * /*other*/) {
        schema->modifySchema(path);
      },
      call(kModifySchema, 1,
           {"debug 53051d00 kind 3400000 level c8010000 "
            "modifySchema: Unable to open file, " +
            path + ", for reading.\n"}));
}

// Object classes and attribute types are looked up. The storage definition
// alone is of V3.modifiedschema; of the others the OID is not found there,
// which is said by no message.
TEST(SchemaManagerModifiedSchemaTraceTest, Withdrawal) {
  const Records types = call(kGetAttr, 0) + walk(kDelOidFromModSch, 32);
  const Records classes = call(kGetObjClass, 0) + walk(kDelOidFromModSch, 32);
  expectRecords(
      someOfEach(), withdrawing("3.1 9.9 2.2 1.1\n"),
      call(kModifySchema, 0, types + classes + walk(kDelOidFromModSch, 0)));
  // The second time the OIDs of named definitions are found again.
  expectRecords(
      someOfEach(), withdrawing("1.1 2.2 1.1 3.1\n", 2),
      call(kModifySchema, 0, types + classes + walk(kDelOidFromModSch, 0)) +
          call(kModifySchema, 0, types + classes));
}

TEST(SchemaManagerModifiedSchemaTraceTest, WithdrawalOfModifiedDefinitions) {
  expectRecords({{"V3.modifiedschema",
                  typeLine("1.2", {"a"}, "x") + classLine("1.1", {"k"}, "x")}},
                withdrawing("1.2 1.1\n", 2),
                call(kModifySchema, 0,
                     call(kGetObjClass, 0) + walk(kDelOidFromModSch, 0) +
                         call(kGetAttr, 0) + walk(kDelOidFromModSch, 0)) +
                    call(kModifySchema, 0,
                         call(kGetObjClass, 0) + walk(kDelOidFromModSch, 32) +
                             call(kGetAttr, 0) + walk(kDelOidFromModSch, 32)));
}

TEST(SchemaManagerModifiedSchemaTraceTest, ModifiedOids) {
  expectRecords(
      someOfEach(),
      [](SchemaManager *schema, SchemaManager *other) {
        schema->isModFileEmpty();
        schema->delOidFromModSch("1.1");
        schema->delOidFromModSch("3.1");
        schema->delOidFromModSch("3.1");
        schema->isModFileEmpty();
        other->isModFileEmpty();
      },
      call(kIsModFileEmpty, 0) + walk(kDelOidFromModSch, 32) +
          walk(kDelOidFromModSch, 0) + walk(kDelOidFromModSch, 32) +
          call(kIsModFileEmpty, 1) + call(kIsModFileEmpty, 1));
}

// A dump, its id, and that of the dump of an entry of its table.
struct DumpCase {
  const char *name;
  void (SchemaManager::*dump)();
  unsigned int id;
  unsigned int entry;  // 0 for a set
  int entries;         // that someOfEach() gives
};

void PrintTo(const DumpCase &dump, std::ostream *out) { *out << dump.name; }

class SchemaManagerDumpTraceTest : public testing::TestWithParam<DumpCase> {
 protected:
  static Operation dumping() {
    return [](SchemaManager *schema, SchemaManager * /*other*/) {
      (schema->*GetParam().dump)();
    };
  }
};

TEST_P(SchemaManagerDumpTraceTest, EmptySchema) {
  expectRecords({}, dumping(), call(GetParam().id, 0));
}

TEST_P(SchemaManagerDumpTraceTest, EachEntry) {
  Records entries;
  for (int i = 0; i < GetParam().entries; ++i) {
    entries = entries + call(GetParam().entry, 0);
  }
  expectRecords(someOfEach(), dumping(), call(GetParam().id, 0, entries));
}

// The exit is recorded when printing throws, too.
TEST_P(SchemaManagerDumpTraceTest, OutputThatThrows) {
  const auto schema = makeSchema(someOfEach());
  const definitions::UnwritableOutput output;
  const TraceRecorder recorder(kTraceEntry);
  EXPECT_THROW((schema.get()->*GetParam().dump)(), std::ios::failure);
  EXPECT_EQ(recorder.records(), call(GetParam().id, 0));
}

const DumpCase kDumps[] = {
    {"AttrTable", &SchemaManager::dumpAttrTable, kDumpAttrTable, kAttributeDump,
     2},
    {"QORAttrTable", &SchemaManager::dumpQORAttrTable, kDumpQORAttrTable,
     kStorageDump, 1},
    {"OcTable", &SchemaManager::dumpOcTable, kDumpOcTable, kClassDump, 3},
    {"UserOc", &SchemaManager::dumpUserOc, kDumpUserOc, 0, 0},
    {"UserAt", &SchemaManager::dumpUserAt, kDumpUserAt, 0, 0},
    {"QorOc", &SchemaManager::dumpQorOc, kDumpQorOc, 0, 0},
    {"QorAt", &SchemaManager::dumpQorAt, kDumpQorAt, 0, 0},
    {"SysOc", &SchemaManager::dumpSysOc, kDumpSysOc, 0, 0},
    {"SysAt", &SchemaManager::dumpSysAt, kDumpSysAt, 0, 0},
    {"EOids", &SchemaManager::dumpEOids, kDumpEOids, 0, 0},
};

std::string dumpName(const testing::TestParamInfo<DumpCase> &dump) {
  return dump.param.name;
}

INSTANTIATE_TEST_SUITE_P(Dumps, SchemaManagerDumpTraceTest,
                         testing::ValuesIn(kDumps), dumpName);

}  // namespace
