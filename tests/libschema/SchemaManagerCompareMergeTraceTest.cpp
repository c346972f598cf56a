// The trace records of comparison and merge.
#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "support/TraceRecorder.h"

namespace {

using Records = std::vector<std::string>;

constexpr unsigned int kAttrsEqual = 0x53010100;
constexpr unsigned int kQorAttrsEqual = 0x53020200;
constexpr unsigned int kObjsEqual = 0x53030100;
constexpr unsigned int kGetAttr = 0x53050400;
constexpr unsigned int kGetQORAttr = 0x53050500;
constexpr unsigned int kGetObjClass = 0x53050600;
constexpr unsigned int kCompObjTables = 0x53050D00;
constexpr unsigned int kCompAttrTables = 0x53050E00;
constexpr unsigned int kCompQORAttrTables = 0x53050F00;
constexpr unsigned int kDelOidFromFileSet = 0x53051400;
constexpr unsigned int kMergeSchemas = 0x53051500;
constexpr unsigned int kMergeAttrs = 0x53051600;
constexpr unsigned int kMergeQORAttrs = 0x53051700;
constexpr unsigned int kMergeObjClasses = 0x53051800;
constexpr unsigned int kFindOidInSet = 0x53051900;
constexpr unsigned int kCompSchemas = 0x53051B00;
constexpr unsigned int kIsExcluded = 0x53051E00;

std::string debug(unsigned int id, const std::string &text) {
  std::ostringstream record;
  record << "debug " << std::hex << id << " kind 3400000 level c8010000 "
         << text;
  return record.str();
}

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

// A failing search for the OID.
Records notRecorded(const std::string &oid) {
  return walk(kFindOidInSet, 0,
              {debug(kFindOidInSet, "findOidInSet: Unable to find OID, " + oid +
                                        ", in set.\n")});
}

bool selected(const std::string &record, unsigned int mask) {
  const auto has = [&](const char *text) {
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

// Runs `operation`, which gets new schemas from `make` each time, with each
// combination of the bits of the event mask.
void expectRecords(const std::function<std::vector<Schema>()> &make,
                   const std::function<void(const std::vector<Schema> &)> &run,
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
    const std::vector<Schema> schemas = make();
    const TraceRecorder recorder(mask);
    run(schemas);
    EXPECT_EQ(recorder.records(), chosen);
  }
}

std::vector<Schema> pair(const std::vector<SchemaFile> &first,
                         const std::vector<SchemaFile> &second) {
  std::vector<Schema> schemas;
  schemas.push_back(makeSchema(first));
  schemas.push_back(makeSchema(second));
  return schemas;
}

// The operations with which the kinds differ in their records.
struct Operations {
  unsigned int compare;
  unsigned int merge;
  unsigned int lookUp;
  unsigned int equal;
};

class SchemaManagerCompareMergeTraceTest : public testing::TestWithParam<Kind> {
 protected:
  const Kind &kind() const { return GetParam(); }

  std::string line(const std::string &oid, const std::string &name,
                   const std::string &text) const {
    return kind().line(oid, name, text);
  }

  Operations operations() const {
    if (kind().label == "type") {
      return {kCompAttrTables, kMergeAttrs, kGetAttr, kAttrsEqual};
    }
    if (kind().label == "class") {
      return {kCompObjTables, kMergeObjClasses, kGetObjClass, kObjsEqual};
    }
    return {kCompQORAttrTables, kMergeQORAttrs, kGetQORAttr, kQorAttrsEqual};
  }

  // A removal from the files' sets, which storage definitions do without.
  Records removal(int code, const Records &inside = {}) const {
    return kind().isStorage() ? Records()
                              : walk(kDelOidFromFileSet, code, inside);
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, SchemaManagerCompareMergeTraceTest,
                         testing::ValuesIn(kKinds), kindName);

TEST_P(SchemaManagerCompareMergeTraceTest, ComparisonOfOneKind) {
  const Operations ids = operations();
  const Records lookUp = call(ids.lookUp, 0);
  const Records included = walk(kIsExcluded, 0);
  const Records excluded = walk(kIsExcluded, 1);
  expectRecords(
      [this] {
        auto schemas = pair(
            {{kind().file, line("1.1", "a", "added") + line("1.2", "b", "x") +
                               line("1.3", "c", "mine") +
                               line("1.4", "d", "x") + line("1.5", "e", "x")},
             {"V3.config.at", line("1.6", "f", "x")}},
            {{kind().file, line("1.2", "b", "x") + line("1.3", "c", "theirs") +
                               line("1.4", "d", "x") + line("1.6", "f", "x")}});
        exclude(schemas[0].get(), "1.4 1.5");
        return schemas;
      },
      [this](const std::vector<Schema> &schemas) {
        (schemas[0].get()->*kind().compare)(schemas[1].get());
      },
      walk(
          ids.compare, 1,
          // added
          lookUp + included +
              // equal
              lookUp + lookUp + included + call(ids.equal, 1) + removal(0) +
              // different
              lookUp + lookUp + included + call(ids.equal, 0) +
              // excluded, though there is one in the release: not compared
              lookUp + lookUp + excluded + removal(0) +
              // excluded
              lookUp + excluded + removal(0) +
              // equal, and recorded for no file
              lookUp + lookUp + included + call(ids.equal, 1) +
              removal(32, {debug(kDelOidFromFileSet,
                                 "delOidFromFileSet: Unable to delete OID from "
                                 "set, 1.6.\n")})));
}

TEST_P(SchemaManagerCompareMergeTraceTest, MergeOfOneKind) {
  const Operations ids = operations();
  // A storage definition needs no look-up: its key is its OID.
  const Records replacement =
      kind().isStorage() ? Records() : call(ids.lookUp, 0);
  expectRecords(
      [this] {
        return pair(
            {{kind().file, line("1.2", "b", "theirs")}},
            {{kind().file, line("1.1", "a", "mine") + line("1.2", "b", "mine") +
                               line("1.3", "c", "mine")}});
      },
      [this](const std::vector<Schema> &schemas) {
        (schemas[0].get()->*kind().merge)(schemas[1].get());
      },
      walk(ids.merge, 1,
           walk(kFindOidInSet, 0) + replacement + walk(kFindOidInSet, 0)));
}

TEST_P(SchemaManagerCompareMergeTraceTest, FailingMergeOfOneKind) {
  const Operations ids = operations();
  expectRecords(
      [this] {
        return pair({}, {{kind().file, line("1.1", "a", "mine")},
                         {"V3.config.at", line("1.2", "b", "mine")},
                         {kind().file, line("1.3", "c", "mine")}});
      },
      [this](const std::vector<Schema> &schemas) {
        (schemas[0].get()->*kind().merge)(schemas[1].get());
      },
      walk(
          ids.merge, 0,
          walk(kFindOidInSet, 0) + notRecorded("1.2") +
              Records{debug(ids.merge, kind().mergeOperation +
                                           ": findOidInSet returned NULL\n")}));
}

TEST_P(SchemaManagerCompareMergeTraceTest, EmptyTables) {
  const Operations ids = operations();
  expectRecords([] { return pair({}, {}); },
                [this](const std::vector<Schema> &schemas) {
                  (schemas[0].get()->*kind().compare)(schemas[1].get());
                  (schemas[0].get()->*kind().merge)(schemas[1].get());
                },
                walk(ids.compare, 1) + walk(ids.merge, 1));
}

// The definition found by name is the one replaced, whatever its OID.
TEST(SchemaManagerCompareMergeTraceTest, ANamesakeWithAnotherOidIsNotLookedUp) {
  expectRecords(
      [] {
        return pair({{"V3.user.at", typeLine("2.1", {"a"}, "theirs") +
                                        classLine("2.2", {"b"}, "theirs")}},
                    {{"V3.user.at", typeLine("1.1", {"a"}, "mine") +
                                        classLine("1.2", {"b"}, "mine")}});
      },
      [](const std::vector<Schema> &schemas) {
        schemas[0]->mergeSchemas(schemas[1].get());
      },
      call(kMergeSchemas, 1,
           walk(kMergeAttrs, 1) + walk(kMergeQORAttrs, 1) +
               walk(kMergeObjClasses, 1)));
}

// A schema with one definition of each kind, compared with the same.
TEST(SchemaManagerCompareMergeTraceTest, ComparisonOfSchemas) {
  const std::vector<SchemaFile> files = {
      {"V3.user.at", typeLine("1.1", {"cn"}, "x")},
      {"V3.user.oc", classLine("1.2", {"person"}, "x")},
      {"V3.qor.at", storageLine("1.1", "x")}};
  const Records expected =
      call(kCompSchemas, 1,
           walk(kCompAttrTables, 1,
                call(kGetAttr, 0) + call(kGetAttr, 0) + walk(kIsExcluded, 0) +
                    call(kAttrsEqual, 1) + walk(kDelOidFromFileSet, 0)) +
               walk(kCompQORAttrTables, 1,
                    call(kGetQORAttr, 0) + call(kGetQORAttr, 0) +
                        walk(kIsExcluded, 0) + call(kQorAttrsEqual, 1)) +
               walk(kCompObjTables, 1,
                    call(kGetObjClass, 0) + call(kGetObjClass, 0) +
                        walk(kIsExcluded, 0) + call(kObjsEqual, 1) +
                        walk(kDelOidFromFileSet, 0)));
  expectRecords([&] { return pair(files, files); },
                [](const std::vector<Schema> &schemas) {
                  schemas[0]->compSchemas(schemas[1].get());
                },
                expected);
  // Compared with itself it is looked up twice as well.
  expectRecords([&] { return pair(files, {}); },
                [](const std::vector<Schema> &schemas) {
                  schemas[0]->compSchemas(schemas[0].get());
                },
                expected);
}

TEST(SchemaManagerCompareMergeTraceTest, MergeOfSchemas) {
  expectRecords(
      [] {
        return pair({{"V3.user.at", typeLine("1.1", {"cn"}, "theirs")},
                     {"V3.user.oc", classLine("1.2", {"person"}, "theirs")},
                     {"V3.qor.at", storageLine("1.1", "theirs")}},
                    {{"V3.user.at", typeLine("1.1", {"cn"}, "mine")},
                     {"V3.user.oc", classLine("1.2", {"person"}, "mine")},
                     {"V3.qor.at", storageLine("1.3", "mine")}});
      },
      [](const std::vector<Schema> &schemas) {
        schemas[0]->mergeSchemas(schemas[1].get());
      },
      call(kMergeSchemas, 1,
           walk(kMergeAttrs, 1, call(kGetAttr, 0)) +
               walk(kMergeQORAttrs, 1, walk(kFindOidInSet, 0)) +
               walk(kMergeObjClasses, 1, call(kGetObjClass, 0))));
}

TEST(SchemaManagerCompareMergeTraceTest, FailingMergesOfSchemas) {
  const struct {
    std::string line;
    Records expected;
  } kCases[] = {
      {typeLine("1.1", {"cn"}, "x"),
       walk(kMergeAttrs, 0,
            notRecorded("1.1") +
                Records{debug(kMergeAttrs,
                              "mergeAttrs: findOidInSet returned NULL\n")})},
      {storageLine("1.2", "x"),
       walk(kMergeAttrs, 1) +
           walk(kMergeQORAttrs, 0,
                notRecorded("1.2") +
                    Records{
                        debug(kMergeQORAttrs,
                              "mergeQORAttrs: findOidInSet returned NULL\n")})},
      {classLine("1.3", {"person"}, "x"),
       walk(kMergeAttrs, 1) + walk(kMergeQORAttrs, 1) +
           walk(kMergeObjClasses, 0,
                notRecorded("1.3") +
                    Records{debug(
                        kMergeObjClasses,
                        "mergeObjClasses: findOidInSet returned NULL\n")})},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.line);
    expectRecords(
        [&] {
          return pair({}, {{"V3.config.at", test.line}});
        },
        [](const std::vector<Schema> &schemas) {
          schemas[0]->mergeSchemas(schemas[1].get());
        },
        call(kMergeSchemas, 0, test.expected));
  }
}

// The searches in the order of the sets leave no more than the result.
TEST(SchemaManagerCompareMergeTraceTest, LookUpsInSets) {
  expectRecords(
      [] {
        auto schemas = pair({}, {{"V3.user.at", storageLine("1.1", "x")},
                                 {"V3.system.at", storageLine("1.2", "x")}});
        exclude(schemas[1].get(), "1.1 1.2 1.3");
        return schemas;
      },
      [](const std::vector<Schema> &schemas) {
        schemas[0]->findOidInSet(schemas[1].get(), "1.2");
        schemas[0]->findOidInSet(schemas[1].get(), "1.3");
        schemas[1]->isExcluded("1.3");
        schemas[1]->isExcluded("1.4");
        schemas[1]->delOidFromFileSet("1.2");
        schemas[1]->delOidFromFileSet("1.2");
      },
      walk(kFindOidInSet, 0) + notRecorded("1.3") + walk(kIsExcluded, 1) +
          walk(kIsExcluded, 0) + walk(kDelOidFromFileSet, 0) +
          walk(kDelOidFromFileSet, 32,
               {debug(kDelOidFromFileSet,
                      "delOidFromFileSet: Unable to delete OID from set, "
                      "1.2.\n")}));
}

}  // namespace
