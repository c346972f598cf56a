// Reading the content of schema files.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "SchemaManager.h"
#include "libschema/SchemaManagerTesting.h"
#include "libschema/SchemaManagerTexts.h"
#include "support/Child.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace fs = std::filesystem;

namespace {

constexpr char kUserAt[] = "V3.user.at";

// Whether reading leaves definitions unreleased.
enum class Leak { kNothing, kDefinitions };

struct ReadCase {
  const char *name;
  std::string text;  // without a newline at its end
  unsigned int result;
  std::string state;
  Leak leak = Leak::kNothing;
};

void PrintTo(const ReadCase &readCase, std::ostream *out) {
  *out << readCase.text;
}

unsigned int readFile(SchemaManager *schema, const ReadCase &readCase) {
  const auto read = [schema] { return schema->readFile(kUserAt); };
  if (readCase.result != 0) {
    return leaksAnalyser([&read] { return leaksDefinitions(read); });
  }
  return readCase.leak == Leak::kNothing ? read() : leaksDefinitions(read);
}

class SchemaManagerReadTest : public testing::TestWithParam<ReadCase> {};

TEST_P(SchemaManagerReadTest, GivesResultMessageAndState) {
  const ReadCase &readCase = GetParam();
  const std::vector<std::string> messages = {
      readCase.result == 0
          ? "readFile: Successfully parsed the file, V3.user.at.\n"
          : "readFile: There was an error parsing the file, V3.user.at.\n"};
  for (const char *end :
       {"", "\n", " \t\r\n\n", "\n# the end", " # the end\n"}) {
    for (const unsigned int mask : {0U, ~0U}) {
      SCOPED_TRACE(std::string("end '") + end + "', traced " +
                   std::to_string(mask));
      const TemporaryDirectory directory;
      directory.write(kUserAt, readCase.text + end);
      SchemaManager schema(directory.string());
      const TraceRecorder recorder(mask);
      EXPECT_EQ(readFile(&schema, readCase), readCase.result);
      EXPECT_EQ(stateOf(&schema), readCase.state);
      EXPECT_EQ(recorder.messages(),
                mask == 0 ? std::vector<std::string>() : messages);
    }
  }
}

std::string caseName(const testing::TestParamInfo<ReadCase> &info) {
  return info.param.name;
}

// The state after a reading of types alone.
std::string types(const OidsAndNames &definitions) {
  std::string text = typesState(definitions);
  std::string oids;
  for (const auto &definition : definitions) {
    oids += ' ' + definition.first;
  }
  return text + "V3.user.at:" + oids + '\n';
}

std::string classes(const OidsAndNames &definitions) {
  std::string text = classesState(definitions);
  std::string oids;
  for (const auto &definition : definitions) {
    oids += ' ' + definition.first;
  }
  return text + "V3.user.at:" + oids + '\n';
}

const std::string kA = typeBody("1.1", "a");
const std::string kB = typeBody("1.2", "b");
const std::string kK = classBody("2.1", "k");
const std::string kL = classBody("2.2", "l");
const std::string kS = storageBody("3.1");
const std::string kT = storageBody("3.2");

const std::string kStateST =
    storageState("3.1") + storageState("3.2") + "V3.user.at: 3.1 3.2\n";

const ReadCase kSections[] = {
    {"EmptyFile", "", 0, ""},
    {"CommentsAlone", "# attributetypes=" + kA + "\n#\n# objectclasses {", 0,
     ""},
    {"WordsOutsideSections",
     "include 'a file' 1.2.3 1.2.3{64} 1.2{x = { } ( ) $ NAME 'x' DBNAME\n"
     "COLLECTIVE AttributeTypes=" +
         kA + " OBJECTCLASSES=" + kK + " QORAttributeTypes=" + kS +
         " \xc3\xa4 \x01 ;",
     0, ""},
    {"AttributeType", "attributetypes=" + kA, 0, types({{"1.1", "a"}})},
    {"ObjectClass", "objectclasses=" + kK, 0, classes({{"2.1", "k"}})},
    {"StorageDefinition", "QORAttributetypes=" + kS, 0,
     storageState("3.1") + "V3.user.at: 3.1\n"},
    {"BlanksAroundTheEqualsSign", "attributetypes \n\t =\n  " + kA, 0,
     types({{"1.1", "a"}})},
    {"NoBlanks", "attributetypes=(1.1 NAME('a')OBSOLETE)attributetypes=" + kB,
     0, types({{"1.1", "a"}, {"1.2", "b"}})},
    {"DefinitionOverLines",
     "attributetypes=\r\n( # comment )\r\n1.1\r\nNAME\n'a' \r\n\n OBSOLETE\n"
     "# objectclasses=\n)",
     0, types({{"1.1", "a"}})},
    {"SectionsOnOneLine",
     "attributetypes=" + kA + "objectclasses=" + kK + "QORAttributetypes=" + kS,
     0,
     typeState("1.1", "a") + classState("2.1", "k") + storageState("3.1") +
         "V3.user.at: 1.1 2.1 3.1\n"},
    {"AnythingBetweenSections",
     "x\nattributetypes=" + kA +
         "\n) } 'text' { ( 1.9 NAME 'z' )\n# comment\n" +
         "attributetypes=" + kB,
     0, types({{"1.1", "a"}, {"1.2", "b"}})},
    {"OtherSpellingsOfTheKeywords",
     "attributeTypes=" + kA + "\nobjectClasses=" + kK +
         "\nQORattributeTypes=" + kS,
     0,
     typeState("1.1", "a") + classState("2.1", "k") + storageState("3.1") +
         "V3.user.at: 1.1 2.1 3.1\n"},
    {"QuotedKeywordBeginsASection", "'attributetypes' = " + kA, 0,
     types({{"1.1", "a"}})},
    {"OpeningParenthesisMayBeMissing",
     "attributetypes= 1.1 NAME 'a' OBSOLETE )\nattributetypes=" + kB, 0,
     types({{"1.1", "a"}, {"1.2", "b"}})},
    {"BraceInPlaceOfTheClosingParenthesis",
     "attributetypes=( 1.1 NAME 'a' OBSOLETE }\nattributetypes=" + kB, 0,
     types({{"1.1", "a"}, {"1.2", "b"}})},
    {"NamesRunOnIntoTheNextDefinition",
     "attributetypes=( 1.1 NAME 'a' )\nattributetypes=" + kB, 0,
     "type a: attributetypes=( 1.1 NAME ( 'a' 'attributetypes' 'b'  ) "
     "OBSOLETE USAGE userApplications  )\n"
     "type by OID 1.1: a\nV3.user.at: 1.1\n"},
    // What stands in the place of the list's "(" is dropped.
    {"ColumnsRunOnIntoTheNextDefinition",
     "QORAttributetypes=( 3.1 DBNAME 'S' )\nQORAttributetypes=" + kT, 0,
     storageState("3.2") + "V3.user.at: 3.2\n"},
    {"ParenthesisEndsAnObjectClass",
     "objectclasses=( 2.1 NAME 'k' OBSOLETE\nattributetypes=" + kA +
         "\nattributetypes=" + kB,
     0,
     typeState("1.2", "b") + classState("2.1", "k") + "V3.user.at: 1.2 2.1\n"},
};

INSTANTIATE_TEST_SUITE_P(Sections, SchemaManagerReadTest,
                         testing::ValuesIn(kSections), caseName);

const ReadCase kBlocks[] = {
    {"OneAttributeType", "attributetypes { " + kA + " }", 0,
     types({{"1.1", "a"}})},
    {"TwoAttributeTypes", "attributetypes {" + kA + " " + kB + "}", 0,
     types({{"1.1", "a"}, {"1.2", "b"}})},
    {"OneObjectClass", "objectclasses { " + kK + " }", 0,
     classes({{"2.1", "k"}})},
    {"TwoObjectClasses", "objectclasses{" + kK + kL + "}", 0,
     classes({{"2.1", "k"}, {"2.2", "l"}})},
    {"OneStorageDefinition", "QORAttributetypes { " + kS + " }", 0,
     storageState("3.1") + "V3.user.at: 3.1\n"},
    {"TwoStorageDefinitions", "QORAttributetypes\n{\n" + kS + "\n" + kT + "\n}",
     0, kStateST},
    {"OverLinesWithComments",
     "attributetypes # the types\n{ # the first\n" + kA +
         "\n# attributetypes }\n" + kB + "\n# the end }\n}",
     0, types({{"1.1", "a"}, {"1.2", "b"}})},
    {"BlocksAndSingleOnes",
     "attributetypes {" + kA + "}attributetypes=" + kB + " objectclasses {" +
         kK + "}QORAttributetypes {" + kS + "} } x QORAttributetypes {" + kT +
         "}objectclasses=" + kL,
     0,
     typesState({{"1.1", "a"}, {"1.2", "b"}}) +
         classesState({{"2.1", "k"}, {"2.2", "l"}}) + storageState("3.1") +
         storageState("3.2") + "V3.user.at: 1.1 1.2 2.1 2.2 3.1 3.2\n"},
    {"BraceEndsTheDefinitionAndTheBlock",
     "attributetypes { " + kA + " ( 1.2 NAME 'b' OBSOLETE }\nobjectclasses { " +
         "( 2.1 NAME 'k' OBSOLETE }\nQORAttributetypes { ( 3.1 LENGTH 8 }",
     0,
     typesState({{"1.1", "a"}, {"1.2", "b"}}) + classState("2.1", "k") +
         storageState("3.1") + "V3.user.at: 1.1 1.2 2.1 3.1\n"},
    {"FirstOpeningParenthesisMayBeMissing",
     "attributetypes { 1.1 NAME 'a' OBSOLETE ) " + kB + " }", 0,
     types({{"1.1", "a"}, {"1.2", "b"}})},
    // The parser goes past one token before it looks for the parenthesis.
    {"LaterDefinitionWithoutParenthesisLosesItsOid",
     "attributetypes { " + kA + " 1.2 NAME 'b' OBSOLETE ) }", 0,
     types({{"1.1", "a"}}), Leak::kDefinitions},
    {"WordsBetweenDefinitions",
     "attributetypes { " + kA + " word " + kB + " } ", 0,
     types({{"1.1", "a"}, {"1.2", "b"}})},
    {"KeywordDoesNotEndABlock",
     "attributetypes { " + kA + " objectclasses=" + typeBody("2.1", "k") + " }",
     0, types({{"1.1", "a"}, {"2.1", "k"}})},
    {"ParenthesisEndsAnObjectClassInABlock",
     "objectclasses { ( 2.1 NAME 'k' OBSOLETE " + kL + " }", 0,
     classes({{"2.1", "k"}, {"2.2", "l"}})},
    // "=" takes one definition, wherever the brace stands.
    {"BraceBehindEqualsBeginsNoBlock",
     "attributetypes={ " + kA + " " + kB + " }", 0, types({{"1.1", "a"}})},
    {"EmptyBlock", "attributetypes { }objectclasses{}QORAttributetypes{\n}", 0,
     "", Leak::kDefinitions},
    {"AttributeTypeWithoutOidIsDropped",
     "attributetypes { ( NAME 'c' OBSOLETE ) " + kA +
         " ( NAME 'd' OBSOLETE ) " + kB + " ( OBSOLETE ) }",
     0, types({{"1.1", "a"}, {"1.2", "b"}}), Leak::kDefinitions},
    {"ObjectClassWithoutOidIsDropped",
     "objectclasses { ( NAME 'm' OBSOLETE ) " + kK + " ( NAME 'n' OBSOLETE ) " +
         kL + " ( OBSOLETE ) }",
     0, classes({{"2.1", "k"}, {"2.2", "l"}}), Leak::kDefinitions},
    {"StorageDefinitionWithoutOidIsDropped",
     "QORAttributetypes { ( LENGTH 8 ) " + kS + " ( ) " + kT + " ( APPROX ) }",
     0, kStateST, Leak::kDefinitions},
};

INSTANTIATE_TEST_SUITE_P(Blocks, SchemaManagerReadTest,
                         testing::ValuesIn(kBlocks), caseName);

const ReadCase kKeys[] = {
    {"AttributeTypeWithoutOidBehindEquals",
     "attributetypes=( NAME 'a' OBSOLETE )", 0,
     typeState("", "a") + "V3.user.at: ''\n"},
    {"ObjectClassWithoutOidBehindEquals", "objectclasses=( NAME 'k' OBSOLETE )",
     0, classState("", "k") + "V3.user.at: ''\n"},
    {"StorageDefinitionWithoutOidBehindEquals",
     "QORAttributetypes=( LENGTH 8 )", 0,
     storageState("") + "V3.user.at: ''\n"},
    {"NothingAtAllBehindEquals",
     "attributetypes=()objectclasses=()QORAttributetypes=()", 0,
     "type : attributetypes=(  NAME (  ) USAGE userApplications  )\n"
     "type by OID : \n"
     "class : objectclasses=(  NAME STRUCTURAL )\n"
     "class by OID : \n"
     "storage : QORAttributetypes=(  )\n"
     "V3.user.at: ''\n"},
    {"KeyIsTheLoweredFirstName",
     "attributetypes=( 1.1 NAME ( 'CommonName' 'cn' ) OBSOLETE )", 0,
     "type commonname: attributetypes=( 1.1 NAME ( 'CommonName' 'cn'  ) "
     "OBSOLETE USAGE userApplications  )\n"
     "type by OID 1.1: commonname\nV3.user.at: 1.1\n"},
    {"OidsKeepTheirCase",
     "attributetypes=" + typeBody("OID-a", "a") +
         "attributetypes=" + typeBody("oid-A", "b"),
     0, types({{"OID-a", "a"}, {"oid-A", "b"}})},
    {"FirstOfTwoAttributeTypesKeepsTheOid",
     "attributetypes=" + kA + "attributetypes=" + typeBody("1.1", "c"), 0,
     "type a: " + typeLine("1.1", "a") + "type c: " + typeLine("1.1", "c") +
         "type by OID 1.1: a\nV3.user.at: 1.1\n"},
    {"FirstOfTwoObjectClassesKeepsTheOid",
     "objectclasses {" + kK + classBody("2.1", "m") + "}", 0,
     "class k: " + classLine("2.1", "k") + "class m: " + classLine("2.1", "m") +
         "class by OID 2.1: k\nV3.user.at: 2.1\n"},
    {"FirstOfTwoAttributeTypesKeepsTheName",
     "attributetypes {" + kA + typeBody("1.3", "A") + "}", 0,
     "type a: " + typeLine("1.1", "a") + "type by OID 1.1: a\n" +
         "type by OID 1.3: " + typeLine("1.3", "A") + "V3.user.at: 1.1 1.3\n",
     Leak::kDefinitions},
    {"FirstOfTwoObjectClassesKeepsTheName",
     "objectclasses=" + kK + "objectclasses=" + classBody("2.3", "K"), 0,
     "class k: " + classLine("2.1", "k") + "class by OID 2.1: k\n" +
         "class by OID 2.3: " + classLine("2.3", "K") + "V3.user.at: 2.1 2.3\n",
     Leak::kDefinitions},
    {"FirstOfTwoStorageDefinitionsKeepsTheOid",
     "QORAttributetypes=" + kS + "QORAttributetypes=( 3.1 LENGTH 9 )", 0,
     storageState("3.1") + "V3.user.at: 3.1\n", Leak::kDefinitions},
};

INSTANTIATE_TEST_SUITE_P(Keys, SchemaManagerReadTest, testing::ValuesIn(kKeys),
                         caseName);

// The first definition is always read and stays; nothing behind the error is
// read.
ReadCase makeError(const char *name, const std::string &text) {
  return {name, "attributetypes=" + kA + '\n' + text, 1, types({{"1.1", "a"}})};
}

const std::string kUnread = "\nattributetypes=" + kB;

const ReadCase kErrors[] = {
    makeError("AttributeTypesWithoutEquals", "attributetypes" + kB + kUnread),
    makeError("ObjectClassesWithoutEquals", "objectclasses" + kK + kUnread),
    makeError("QorAttributeTypesWithoutEquals",
              "QORAttributetypes" + kS + kUnread),
    makeError("KeywordBehindKeyword", "attributetypes attributetypes=" + kB),
    makeError("WordBehindKeyword", "objectclasses x" + kUnread),
    makeError("NumberBehindKeyword", "QORAttributetypes 61" + kUnread),
    makeError("ClosingBraceBehindKeyword", "attributetypes }" + kUnread),
    makeError("NothingBehindAttributeTypes", "attributetypes "),
    makeError("NothingBehindObjectClasses", "objectclasses "),
    makeError("NothingBehindQorAttributeTypes", "QORAttributetypes "),
    makeError("NothingBehindTheEqualsSign", "objectclasses="),
    makeError("NothingBehindTheOpeningBrace", "attributetypes {"),
    makeError("AttributeTypeWithoutEnd", "attributetypes=( 1.3 OBSOLETE"),
    makeError("ObjectClassWithoutEnd", "objectclasses=( 2.1 OBSOLETE "),
    makeError("StorageDefinitionWithoutEnd", "QORAttributetypes=( 3.1 APPROX "),
    makeError("ColumnsWithoutParenthesesAtTheEnd",
              "QORAttributetypes=( 3.1 DBNAME 'S' )"),
    makeError("AttributeTypeCutOffByAttributeTypes",
              "attributetypes=( 1.3 OBSOLETE" + kUnread),
    makeError("AttributeTypeCutOffByObjectClasses",
              "attributetypes=( 1.3 OBSOLETE\nobjectclasses=" + kK),
    makeError("AttributeTypeCutOffByQorAttributeTypes",
              "attributetypes=( 1.3 OBSOLETE\nQORAttributetypes=" + kS),
    makeError("ObjectClassCutOffByObjectClasses",
              "objectclasses=( 2.1 OBSOLETE\nobjectclasses=" + kL),
    makeError("StorageDefinitionCutOffByAttributeTypes",
              "QORAttributetypes=( 3.1 APPROX" + kUnread),
    makeError("ObjectClassWithAMalformedLength",
              "objectclasses=( 2.1 NAME 'k' OBSOLETE 8{x )" + kUnread),
    makeError("ObjectClassesCutOffBeforeTheBrace",
              "objectclasses { ( 2.1 OBSOLETE "),
    {"AttributeTypeBlockWithoutEnd", "attributetypes { " + kA + kB, 1,
     types({{"1.1", "a"}, {"1.2", "b"}})},
    {"ObjectClassBlockWithoutEnd", "objectclasses { " + kK + kL, 1,
     classes({{"2.1", "k"}, {"2.2", "l"}})},
    {"StorageBlockWithoutEnd", "QORAttributetypes { " + kS + kT, 1, kStateST},
    {"ErrorInABlock", "objectclasses { " + kK + " ( 2.3 9{x ) " + kL + " }", 1,
     classes({{"2.1", "k"}})},
};

INSTANTIATE_TEST_SUITE_P(Errors, SchemaManagerReadTest,
                         testing::ValuesIn(kErrors), caseName);

// A schema directory with one file, and a manager for it.
class OneFile {
 public:
  explicit OneFile(const std::string &text) : m_schema(m_directory.string()) {
    m_path = m_directory.write(kUserAt, text);
  }

  SchemaManager *schema() { return &m_schema; }
  const std::string &path() const { return m_path; }
  void write(const std::string &text) { m_directory.write(kUserAt, text); }

 private:
  TemporaryDirectory m_directory;
  SchemaManager m_schema;
  std::string m_path;
};

// A word that touches the end of the file is no word; so a keyword there
// begins nothing.
TEST(SchemaManagerReadFileTest, KeywordThatTheEndCutsOffIsNoError) {
  OneFile file("attributetypes=" + kA + "\nattributetypes");
  EXPECT_EQ(file.schema()->readFile(kUserAt), 0U);
  EXPECT_EQ(stateOf(file.schema()), types({{"1.1", "a"}}));
}

TEST(SchemaManagerReadFileTest, ReadsManyDefinitions) {
  std::string text;
  std::string blocks[3] = {"attributetypes {\n", "objectclasses {\n",
                           "QORAttributetypes {\n"};
  OidsAndNames typeKeys;
  OidsAndNames classKeys;
  std::set<std::string> oids;
  std::string storage;
  for (int i = 0; i < 60; ++i) {
    const std::string number = std::to_string(100 + i);
    typeKeys.emplace_back("1." + number, "a-" + number);
    classKeys.emplace_back("2." + number, "k-" + number);
    oids.insert({"1." + number, "2." + number, "3." + number});
    storage += storageState("3." + number);
    if (i % 2 == 0) {
      text += typeLine("1." + number, "a-" + number) +
              classLine("2." + number, "k-" + number) +
              storageLine("3." + number);
    } else {
      blocks[0] += typeBody("1." + number, "a-" + number) + '\n';
      blocks[1] += classBody("2." + number, "k-" + number) + '\n';
      blocks[2] += storageBody("3." + number) + '\n';
    }
  }
  OneFile file(text + blocks[0] + "}\n" + blocks[1] + "}\n" + blocks[2] +
               "}\n");
  EXPECT_EQ(file.schema()->readFile(kUserAt), 0U);
  std::string listed;
  for (const std::string &oid : oids) {
    listed += ' ' + oid;
  }
  EXPECT_EQ(stateOf(file.schema()), typesState(typeKeys) +
                                        classesState(classKeys) + storage +
                                        "V3.user.at:" + listed + '\n');
}

TEST(SchemaManagerReadFileTest, ReadingAgainAddsNothing) {
  OneFile file(typeLine("1.1", "a") + classLine("2.1", "k") +
               storageLine("3.1"));
  ASSERT_EQ(file.schema()->readFile(kUserAt), 0U);
  const std::string state = stateOf(file.schema());
  const Attribute *first = file.schema()->attributeTypes().at("a");
  EXPECT_EQ(
      leaksDefinitions([&file] { return file.schema()->readFile(kUserAt); }),
      0U);
  EXPECT_EQ(stateOf(file.schema()), state);
  EXPECT_EQ(file.schema()->attributeTypes().at("a"), first);
}

TEST(SchemaManagerReadFileTest, AddsToWhatIsThere) {
  OneFile file(typeLine("1.1", "a") + typeLine("1.9", "z"));
  ASSERT_EQ(file.schema()->readFile(kUserAt), 0U);
  file.write(typeLine("1.2", "b"));
  EXPECT_EQ(file.schema()->readFile(kUserAt), 0U);
  EXPECT_EQ(stateOf(file.schema()),
            types({{"1.1", "a"}, {"1.2", "b"}, {"1.9", "z"}}));
}

TEST(SchemaManagerReadFileTest, ReadsOnAfterFailures) {
  OneFile file("attributetypes=" + kA + "\nattributetypes x");
  EXPECT_EQ(leaksAnalyser([&file] { return file.schema()->readFile(kUserAt); }),
            1U);
  EXPECT_EQ(
      leaksAnalyser([&file] { return file.schema()->readFile("missing"); }),
      1U);
  file.write("objectclasses=" + kK + "\n");
  EXPECT_EQ(file.schema()->readFile(kUserAt), 0U);
  EXPECT_EQ(
      stateOf(file.schema()),
      typeState("1.1", "a") + classState("2.1", "k") + "V3.user.at: 1.1 2.1\n");
}

// How often this process has the file open.
int openCount(const std::string &path) {
  int count = 0;
  for (const fs::directory_entry &entry :
       fs::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    count +=
        fs::read_symlink(entry.path(), gone) == fs::canonical(path) ? 1 : 0;
  }
  return count;
}

TEST(SchemaManagerReadFileTest, ClosesAFileThatItHasRead) {
  OneFile file(typeLine("1.1", "a"));
  ASSERT_EQ(file.schema()->readFile(kUserAt), 0U);
  EXPECT_EQ(openCount(file.path()), 0);
}

TEST(SchemaManagerReadFileTest, ClosesAFileThatItCannotRead) {
  const TemporaryDirectory directory;
  const std::string bad = directory.write(kUserAt, "attributetypes x\n");
  const std::string other = directory.write("other", "");
  SchemaManager schema(directory.string());
  EXPECT_EQ(leaksAnalyser([&schema] { return schema.readFile(kUserAt); }), 1U);
  EXPECT_EQ(leaksAnalyser([&schema] { return schema.readFile("other"); }), 89U);
  EXPECT_EQ(openCount(bad), 0);
  EXPECT_EQ(openCount(other), 0);
}

// Kept on purpose: see the parse operations.
TEST(SchemaManagerReadFileTest, SomeDefinitionsAreReadForEver) {
  for (const std::string text : {
           "attributetypes=( 1.1 NAME 'a' COLLECTIVE )\n",
           "attributetypes { ( 1.1 NAME 'a' COLLECTIVE ) }\n",
           "attributetypes=( 1.1 NAME 'a' )\n",
           "attributetypes { ( 1.1 NAME 'a' ) }\n",
           "objectclasses=( 2.1 NAME 'k' )\n",
           "objectclasses { ( 2.1 NAME ( 'k' 'l' ) ) }",
           "QORAttributetypes=( 3.1 DBNAME ( 'S' 'S_T'\n",
       }) {
    SCOPED_TRACE(text);
    OneFile file(text);
    EXPECT_TRUE(neverEnds([&file] { file.schema()->readFile(kUserAt); }));
  }
}

}  // namespace
