// The trace records of a manager's operations on one schema.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "SchemaManager.h"
#include "SchemaSymbolTable.h"
#include "libschema/SchemaManagerTesting.h"
#include "libschema/SchemaManagerTexts.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace {

using Records = std::vector<std::string>;

// The operations that occur here, and whether they walk tables or sets.
struct Operation {
  const char *id;
  bool walks;
};

constexpr Operation kAttributeDump = {"53010300", false};
constexpr Operation kStorageParse = {"53020100", false};
constexpr Operation kStorageDump = {"53020300", false};
constexpr Operation kClassParse = {"53030200", false};
constexpr Operation kClassDump = {"53030300", false};
constexpr Operation kLexan = {"53040200", false};
constexpr Operation kMatch = {"53040300", false};
constexpr Operation kFileIsOpen = {"53040b00", false};
constexpr Operation kGetAttr = {"53050400", false};
constexpr Operation kGetQORAttr = {"53050500", false};
constexpr Operation kGetObjClass = {"53050600", false};
constexpr Operation kReadFile = {"53051000", false};
constexpr Operation kWriteFile = {"53051100", false};
constexpr Operation kWriteSetToFile = {"53051200", true};
constexpr Operation kReadExcludedOids = {"53051300", false};
constexpr Operation kDelOidFromFileSet = {"53051400", true};
constexpr Operation kIsExcluded = {"53051e00", true};

std::string entryOf(const Operation &operation) {
  return std::string("entry ") + operation.id + " kind " +
         (operation.walks ? "32a0000" : "3200000");
}

std::string exitOf(const Operation &operation, int code) {
  return std::string("exit ") + operation.id +
         (operation.walks ? " kind 2b event 10000 code "
                          : " kind 21 event 1000 code ") +
         std::to_string(code);
}

std::string debugOf(const Operation &operation, const std::string &text) {
  return std::string("debug ") + operation.id +
         " kind 3400000 level c8010000 " + text;
}

Records operator+(Records left, const Records &right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

// A call and what is recorded within it.
Records call(const Operation &operation, int code, const Records &inner = {}) {
  return Records{entryOf(operation)} + inner + Records{exitOf(operation, code)};
}

// A directory with files of all kinds, and a schema that has read one of them.
class Site {
 public:
  Site() : m_schema(m_directory.string()) {
    const TracingPaused paused;
    m_directory.write("V3.user.at", typeLine("1.1", "a") + storageLine("1.1") +
                                        classLine("1.2", "k") +
                                        typeLine("1.3", "b"));
    m_directory.write("V3.user.oc",
                      "objectclasses=( 2.1 NAME 'l' OBSOLETE )\n");
    m_directory.write("V3.qor.at", "");
    m_directory.write("V3.qor.oc", "objectclasses x\n");
    m_directory.write("other", "");
    m_directory.write("excluded", "1.1 # 1.3\n");
    EXPECT_EQ(m_schema.readFile("V3.user.at"), 0U);
    EXPECT_EQ(m_schema.readExcludedOids(path("excluded")), 0U);
  }

  SchemaManager *operator->() { return &m_schema; }
  std::string directory() const { return m_directory.string(); }
  std::string path(const std::string &name) const {
    return directory() + '/' + name;
  }

 private:
  TemporaryDirectory m_directory;
  SchemaManager m_schema;
};

// One call of an operation.
struct Scenario {
  const char *name;
  std::function<unsigned int(Site &)> run;
  Operation operation;
  unsigned int code;
  std::string message;  // empty: none; "$" is the site's directory
};

void PrintTo(const Scenario &scenario, std::ostream *out) {
  *out << scenario.name;
}

std::string messageOf(const Scenario &scenario, const Site &site) {
  std::string message = scenario.message;
  const std::size_t place = message.find('$');
  if (place != std::string::npos) {
    message.replace(place, 1, site.directory());
  }
  return message;
}

// Those records that are of the operation itself.
Records ownRecords(const TraceRecorder &recorder, const Operation &operation) {
  Records own;
  for (const std::string &record : recorder.records()) {
    if (record.find(std::string(" ") + operation.id + " kind ") !=
        std::string::npos) {
      own.push_back(record);
    }
  }
  return own;
}

// What the operation must record with the mask.
Records expectedRecords(const Scenario &scenario, const Site &site,
                        unsigned int mask) {
  const bool walks = scenario.operation.walks;
  const std::string message = messageOf(scenario, site);
  Records expected;
  if ((mask & (walks ? kTraceWalkEntry : kTraceEntry)) != 0) {
    expected.push_back(entryOf(scenario.operation));
  }
  if ((mask & kTraceDebug) != 0 && !message.empty()) {
    expected.push_back(debugOf(scenario.operation, message));
  }
  if ((mask & (walks ? kTraceWalkEntry | kTraceWalkExit
                     : kTraceEntry | kTraceExit)) != 0) {
    expected.push_back(
        exitOf(scenario.operation, static_cast<int>(scenario.code)));
  }
  return expected;
}

class SchemaManagerTraceTest : public testing::TestWithParam<Scenario> {};

TEST_P(SchemaManagerTraceTest, RecordsFollowTheMask) {
  const Scenario &scenario = GetParam();
  std::vector<unsigned int> masks = {0, kTraceEntry | kTraceExit,
                                     kTraceWalkEntry | kTraceWalkExit, ~0U,
                                     ~kTraceDebug};
  for (unsigned int bit = 0; bit < 32; ++bit) {
    masks.push_back(1U << bit);
  }
  for (const unsigned int mask : masks) {
    SCOPED_TRACE(mask);
    Site site;
    const TraceRecorder recorder(mask);
    EXPECT_EQ(leaksAnalyser([&] { return scenario.run(site); }), scenario.code);
    EXPECT_EQ(ownRecords(recorder, scenario.operation),
              expectedRecords(scenario, site, mask));
  }
}

const Scenario kScenarios[] = {
    {"GetAttr",
     [](Site &site) {
       site->getAttr("a");
       return 0U;
     },
     kGetAttr, 0, ""},
    {"GetAttrByOid",
     [](Site &site) {
       site->getAttr("1.3");
       return 0U;
     },
     kGetAttr, 0, ""},
    {"GetQORAttr",
     [](Site &site) {
       site->getQORAttr("1.1");
       return 0U;
     },
     kGetQORAttr, 0, ""},
    {"GetObjClass",
     [](Site &site) {
       site->getObjClass("k");
       return 0U;
     },
     kGetObjClass, 0, ""},
    {"ReadFile", [](Site &site) { return site->readFile("V3.user.oc"); },
     kReadFile, 0, "readFile: Successfully parsed the file, V3.user.oc.\n"},
    {"ReadFileWithAnError",
     [](Site &site) { return site->readFile("V3.qor.oc"); }, kReadFile, 1,
     "readFile: There was an error parsing the file, V3.qor.oc.\n"},
    {"ReadFileThatDoesNotOpen",
     [](Site &site) { return site->readFile("missing"); }, kReadFile, 1,
     "readFile: Could not open file to be parsed\n"},
    {"ReadFileOfAnotherName",
     [](Site &site) { return site->readFile("other"); }, kReadFile, 89,
     "readFile: Unexpected file name given, other\n"},
    {"WriteFile",
     [](Site &site) { return site->writeFile(site.directory(), "V3.user.at"); },
     kWriteFile, 0, ""},
    {"WriteFileThatDoesNotOpen",
     [](Site &site) {
       return site->writeFile(site.path("missing"), "V3.user.at");
     },
     kWriteFile, 1, ""},
    {"WriteFileOfAnotherName",
     [](Site &site) {
       return site->writeFile(site.directory(), "V3.config.at");
     },
     kWriteFile, 89, "writeFile: Unexpected file name given, V3.config.at\n"},
    {"WriteSetToFile",
     [](Site &site) { return site->writeSetToFile({"1.1"}, site.path("set")); },
     kWriteSetToFile, 0, ""},
    {"WriteSetToFileThatDoesNotOpen",
     [](Site &site) {
       return site->writeSetToFile({"1.1"}, site.path("missing/set"));
     },
     kWriteSetToFile, 1,
     "writeSetToFile: Unable to open file for writing, $/missing/set.\n"},
    {"ReadExcludedOids",
     [](Site &site) { return site->readExcludedOids(site.path("excluded")); },
     kReadExcludedOids, 0, ""},
    {"ReadExcludedOidsThatDoesNotOpen",
     [](Site &site) { return site->readExcludedOids(site.path("missing")); },
     kReadExcludedOids, 1,
     "readExcludedOids: Unable to open file for reading, $/missing.\n"},
    {"IsExcluded", [](Site &site) { return site->isExcluded("1.1"); },
     kIsExcluded, 1, ""},
    {"IsNotExcluded", [](Site &site) { return site->isExcluded("1.3"); },
     kIsExcluded, 0, ""},
    {"DelOidFromFileSet",
     [](Site &site) { return site->delOidFromFileSet("1.1"); },
     kDelOidFromFileSet, 0, ""},
    {"DelOidFromNoFileSet",
     [](Site &site) { return site->delOidFromFileSet("9"); },
     kDelOidFromFileSet, 32,
     "delOidFromFileSet: Unable to delete OID from set, 9.\n"},
};

std::string scenarioName(const testing::TestParamInfo<Scenario> &scenario) {
  return scenario.param.name;
}

INSTANTIATE_TEST_SUITE_P(Operations, SchemaManagerTraceTest,
                         testing::ValuesIn(kScenarios), scenarioName);

// All records of a call, nested ones included.

TEST(SchemaManagerNestedTraceTest, ReadFileOfAnEmptyFile) {
  Site site;
  const TraceRecorder recorder(~0U);
  EXPECT_EQ(site->readFile("V3.qor.at"), 0U);
  EXPECT_EQ(recorder.records(),
            call(kReadFile, 0,
                 call(kFileIsOpen, 1) + call(kLexan, TOK_DONE) +
                     call(kLexan, TOK_DONE) +
                     Records{debugOf(kReadFile,
                                     "readFile: Successfully parsed the file, "
                                     "V3.qor.at.\n")}));
}

TEST(SchemaManagerNestedTraceTest, ReadFileOfOneDefinition) {
  Site site;
  const Records parse = call(
      kClassParse, 1,
      call(kMatch, 0, call(kLexan, '(')) +
          call(kMatch, 0, call(kLexan, TOK_NUMBER)) + call(kLexan, TOK_NAME) +
          call(kMatch, 0, call(kLexan, TOK_ID)) + call(kLexan, TOK_OBSOLETE) +
          call(kLexan, ')') + call(kLexan, TOK_DONE));
  const Records lexan = call(kFileIsOpen, 1) + call(kLexan, TOK_OBJECTCLASSES) +
                        call(kLexan, '=') + parse + call(kLexan, TOK_DONE) +
                        call(kLexan, TOK_DONE);
  const std::string message = debugOf(
      kReadFile, "readFile: Successfully parsed the file, V3.user.oc.\n");
  {
    const TraceRecorder recorder(~0U);
    EXPECT_EQ(site->readFile("V3.user.oc"), 0U);
    EXPECT_EQ(recorder.records(), call(kReadFile, 0, lexan + Records{message}));
  }
  {
    Site another;
    const TraceRecorder recorder(kTraceEntry);
    EXPECT_EQ(another->readFile("V3.user.oc"), 0U);
    EXPECT_EQ(recorder.records(), call(kReadFile, 0, lexan));
  }
  {
    Site another;
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(another->readFile("V3.user.oc"), 0U);
    EXPECT_EQ(recorder.records(), Records{message});
  }
}

// No token is gone past between two definitions, nor behind the last one.
TEST(SchemaManagerNestedTraceTest, ReadFileOfABlock) {
  const TemporaryDirectory directory;
  directory.write("V3.qor.at", "QORAttributetypes { ( 3.1 ) ( 3.2 ) }");
  SchemaManager schema(directory.string());
  const Records first = call(kStorageParse, 1,
                             call(kMatch, 0, call(kLexan, '(')) +
                                 call(kMatch, 0, call(kLexan, TOK_NUMBER)) +
                                 call(kLexan, ')') + call(kLexan, '('));
  const Records second =
      call(kStorageParse, 1,
           call(kMatch, 0, call(kLexan, TOK_NUMBER)) + call(kMatch, 0) +
               call(kLexan, ')') + call(kLexan, '}'));
  const TraceRecorder recorder(kTraceEntry);
  EXPECT_EQ(schema.readFile("V3.qor.at"), 0U);
  EXPECT_EQ(recorder.records(),
            call(kReadFile, 0,
                 call(kFileIsOpen, 1) + call(kLexan, TOK_QORATTRIBUTETYPES) +
                     call(kLexan, '{') + first + second +
                     call(kLexan, TOK_DONE) + call(kLexan, TOK_DONE)));
}

TEST(SchemaManagerNestedTraceTest, ReadFileThatFails) {
  Site site;
  const TraceRecorder recorder(~0U);
  leaksAnalyser([&site] {
    return site->readFile("missing") + site->readFile("other") +
           site->readFile("V3.qor.oc");
  });
  EXPECT_EQ(
      recorder.records(),
      call(
          kReadFile, 1,
          call(kFileIsOpen, 0) +
              Records{debugOf(
                  kReadFile, "readFile: Could not open file to be parsed\n")}) +
          call(kReadFile, 89,
               call(kFileIsOpen, 1) +
                   Records{debugOf(
                       kReadFile,
                       "readFile: Unexpected file name given, other\n")}) +
          call(kReadFile, 1,
               call(kFileIsOpen, 1) + call(kLexan, TOK_OBJECTCLASSES) +
                   call(kLexan, TOK_ID) +
                   Records{debugOf(kReadFile,
                                   "readFile: There was an error parsing the "
                                   "file, V3.qor.oc.\n")}));
}

TEST(SchemaManagerNestedTraceTest, WriteFile) {
  Site site;
  const Records dumps = call(kAttributeDump, 0) + call(kGetQORAttr, 0) +
                        call(kStorageDump, 0) + call(kClassDump, 0) +
                        call(kAttributeDump, 0);
  const std::vector<std::pair<unsigned int, Records>> expected = {
      {~0U, call(kWriteFile, 0, call(kWriteSetToFile, 0, dumps))},
      {kTraceEntry, call(kWriteFile, 0, dumps)},
      {kTraceExit,
       {exitOf(kAttributeDump, 0), exitOf(kGetQORAttr, 0),
        exitOf(kStorageDump, 0), exitOf(kClassDump, 0),
        exitOf(kAttributeDump, 0), exitOf(kWriteFile, 0)}},
      {kTraceWalkEntry, call(kWriteSetToFile, 0)},
      {kTraceWalkExit, {exitOf(kWriteSetToFile, 0)}},
      {kTraceDebug, {}},
      {0, {}},
  };
  for (const auto &[mask, records] : expected) {
    SCOPED_TRACE(mask);
    const TraceRecorder recorder(mask);
    EXPECT_EQ(site->writeFile(site.directory(), "V3.user.at"), 0U);
    EXPECT_EQ(recorder.records(), records);
  }
}

TEST(SchemaManagerNestedTraceTest, WriteFileThatFails) {
  Site site;
  const TraceRecorder recorder(~0U);
  site->writeFile(site.path("missing"), "V3.qor.at");
  site->writeFile(site.directory(), "V3.config.oc");
  EXPECT_EQ(
      recorder.records(),
      call(kWriteFile, 1,
           call(kWriteSetToFile, 1,
                {debugOf(kWriteSetToFile,
                         "writeSetToFile: Unable to open file for writing, " +
                             site.path("missing/V3.qor.at") + ".\n")})) +
          call(kWriteFile, 89,
               {debugOf(kWriteFile,
                        "writeFile: Unexpected file name given, "
                        "V3.config.oc\n")}));
}

TEST(SchemaManagerNestedTraceTest, OperationsThatCallNoOther) {
  Site site;
  const TraceRecorder recorder(~0U);
  site->getAttr("A");
  site->getAttr("1.1");
  site->getQORAttr("1.1");
  site->getObjClass("k");
  site->readExcludedOids(site.path("excluded"));
  site->readExcludedOids(site.path("missing"));
  site->isExcluded("1.1");
  site->isExcluded("1.2");
  site->delOidFromFileSet("1.1");
  site->delOidFromFileSet("1.1");
  EXPECT_EQ(
      recorder.records(),
      call(kGetAttr, 0) + call(kGetAttr, 0) + call(kGetQORAttr, 0) +
          call(kGetObjClass, 0) + call(kReadExcludedOids, 0) +
          call(kReadExcludedOids, 1,
               {debugOf(kReadExcludedOids,
                        "readExcludedOids: Unable to open file for reading, " +
                            site.path("missing") + ".\n")}) +
          call(kIsExcluded, 1) + call(kIsExcluded, 0) +
          call(kDelOidFromFileSet, 0) +
          call(kDelOidFromFileSet, 32,
               {debugOf(kDelOidFromFileSet,
                        "delOidFromFileSet: Unable to delete OID from set, "
                        "1.1.\n")}));
}

TEST(SchemaManagerNestedTraceTest, TheRestIsNotTraced) {
  auto site = std::make_unique<Site>();
  const TraceRecorder recorder(~0U);
  {
    SchemaManager schema("directory");
    EXPECT_EQ(schema.convert("CN"), "cn");
  }
  EXPECT_EQ((*site)->attributeTypes().size(), 2U);
  EXPECT_EQ((*site)->attributeTypesByOid().size(), 2U);
  EXPECT_EQ((*site)->objectClasses().size(), 1U);
  EXPECT_EQ((*site)->objectClassesByOid().size(), 1U);
  EXPECT_EQ((*site)->storageDefinitions().size(), 1U);
  site.reset();
  EXPECT_EQ(recorder.records(), Records());
}

}  // namespace
