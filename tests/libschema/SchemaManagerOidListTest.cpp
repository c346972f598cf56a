// Excluded OIDs, and taking OIDs out of the files' sets.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <locale>
#include <memory>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "libschema/SchemaManagerTesting.h"
#include "libschema/SchemaManagerTexts.h"
#include "support/Child.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace fs = std::filesystem;

namespace {

using Messages = std::vector<std::string>;

// Excluded OIDs.

struct ListCase {
  const char *name;
  std::string text;
  std::string excluded;  // the OIDs, a blank behind each
};

void PrintTo(const ListCase &listCase, std::ostream *out) {
  *out << listCase.text;
}

// Those that are excluded of the words in `text` and of all parts of them.
std::string excludedOf(SchemaManager *schema, const std::string &text) {
  std::istringstream in(text);
  in.imbue(std::locale::classic());
  std::set<std::string> parts;
  std::vector<std::string> words;
  for (std::string word; in >> word;) {
    words.push_back(word);
    for (std::size_t i = 0; i < word.size(); ++i) {
      for (std::size_t length = 1; i + length <= word.size(); ++length) {
        parts.insert(word.substr(i, length));
      }
    }
  }
  std::string excluded;
  for (const std::string &part : parts) {
    if (schema->isExcluded(part) != 0) {
      EXPECT_EQ(schema->isExcluded(part), 1U);
      excluded += part + ' ';
    }
  }
  return excluded;
}

class SchemaManagerOidListTest : public testing::TestWithParam<ListCase> {};

TEST_P(SchemaManagerOidListTest, HoldsTheOids) {
  const ListCase &listCase = GetParam();
  for (const unsigned int mask : {0U, ~0U}) {
    SCOPED_TRACE(mask);
    const TemporaryDirectory directory;
    const std::string path = directory.write("a list", listCase.text);
    SchemaManager schema("");
    const TraceRecorder recorder(mask);
    EXPECT_EQ(schema.readExcludedOids(path), 0U);
    EXPECT_EQ(recorder.messages(), Messages());
    EXPECT_EQ(excludedOf(&schema, listCase.text), listCase.excluded);
    EXPECT_EQ(schema.isExcluded(""), 0U);
  }
}

const ListCase kLists[] = {
    {"EmptyFile", "", ""},
    {"WhiteSpaceAlone", " \n\t\r\n \n", ""},
    {"OneOid", "1.2.3\n", "1.2.3 "},
    {"OneOidBeforeABlank", "1.2.3 ", "1.2.3 "},
    {"OidsOnOneLine", "1.2.3 1.2.4\t1.2.5  1.2.6\n",
     "1.2.3 1.2.4 1.2.5 1.2.6 "},
    {"AllWhiteSpaceSeparates", "\n a\tb\vc\fd\re\r\nf\n\n g \n",
     "a b c d e f g "},
    {"RepeatedOid", "1.2.3 1.2.3\n1.2.3\n", "1.2.3 "},
    {"OidsAreKeptAsWritten", "1.2.3{64} cn-OID CN-oid '1.2' $ 1.2.3; -\n",
     "$ '1.2' - 1.2.3; 1.2.3{64} CN-oid cn-OID "},
    {"AnyByteIsPartOfAWord", "\x01 \xc3\xa4\x85 \xa0 \x7f\n",
     "\x01 \x7f \xa0 \xc3\xa4\x85 "},
    {"CommentLine", "1.2.3\n# a comment\n1.2.4\n", "1.2.3 1.2.4 "},
    {"CommentBehindAnOid", "1.2.3 #comment 1.2.5\n1.2.6\n", "1.2.3 1.2.6 "},
    {"CommentInsideAWord", "1.2.3#x 1.2.4\n1.2.5\n", "1.2.5 "},
    {"CommentAtTheEndOfAWord", "1.2.3# 1.2.4\n1.2.5\n", "1.2.5 "},
    {"CommentOfOneWord", "#\n1.2.3\n#x\n1.2.4 #\n1.2.5\n",
     "1.2.3 1.2.4 1.2.5 "},
    {"CommentInAComment", "1.2.3 # a # b\n#c #d\n1.2.4\n", "1.2.3 1.2.4 "},
    {"CommentBehindACarriageReturn", "1.2.3\r\n# a\r\n1.2.4\r\n#\r\n",
     "1.2.3 1.2.4 "},
    {"CommentBeforeOtherLineBreaks", "# a\r1.2.3\v1.2.4\f1.2.5\n1.2.6\n",
     "1.2.6 "},
    {"CommentOnTheLastLine", "1.2.3\n# the end\n", "1.2.3 "},
    // Kept on purpose: a word that the end of the file touches is not taken.
    {"LastOidWithoutNewline", "1.2.3\n1.2.4", "1.2.3 "},
    {"OnlyOidWithoutNewline", "1.2.3", ""},
    {"LastCommentWordWithoutNewline", "1.2.3\n#comment", "1.2.3 "},
    {"LastWordWithACommentWithoutNewline", "1.2.3\n1.2.4#", "1.2.3 "},
};

std::string listName(const testing::TestParamInfo<ListCase> &list) {
  return list.param.name;
}

INSTANTIATE_TEST_SUITE_P(Lists, SchemaManagerOidListTest,
                         testing::ValuesIn(kLists), listName);

// Kept on purpose: the rest of a commented line ends at a newline alone.
TEST(SchemaManagerExcludedOidsTest, CommentWithoutNewlineIsReadForEver) {
  for (const char *text :
       {"1.2.3\n# comment", "# ", "1.2.3 #\t", "1.2.3#x 1.2.4", "#\r"}) {
    SCOPED_TRACE(text);
    const TemporaryDirectory directory;
    const std::string path = directory.write("list", text);
    SchemaManager schema("");
    EXPECT_TRUE(neverEnds([&] { schema.readExcludedOids(path); }));
  }
}

TEST(SchemaManagerExcludedOidsTest, SecondFileAddsToTheFirst) {
  const TemporaryDirectory directory;
  const std::string first = directory.write("first", "1.1 1.2\n");
  const std::string second = directory.write("second", "1.2 1.3\n");
  const std::string none = directory.write("none", "");
  SchemaManager schema("");
  EXPECT_EQ(schema.readExcludedOids(first), 0U);
  EXPECT_EQ(excludedOf(&schema, "1.1 1.2 1.3"), "1.1 1.2 ");
  EXPECT_EQ(schema.readExcludedOids(second), 0U);
  EXPECT_EQ(schema.readExcludedOids(none), 0U);
  EXPECT_EQ(excludedOf(&schema, "1.1 1.2 1.3"), "1.1 1.2 1.3 ");
}

TEST(SchemaManagerExcludedOidsTest, ReadsManyOids) {
  std::string text;
  for (int i = 0; i < 5000; ++i) {
    text += "1.2." + std::to_string(i) + (i % 7 == 0 ? " # x\n" : "\n");
  }
  const TemporaryDirectory directory;
  SchemaManager schema("");
  EXPECT_EQ(schema.readExcludedOids(directory.write("list", text)), 0U);
  for (int i = 0; i < 5000; ++i) {
    ASSERT_EQ(schema.isExcluded("1.2." + std::to_string(i)), 1U) << i;
  }
  EXPECT_EQ(schema.isExcluded("1.2.5000"), 0U);
}

TEST(SchemaManagerExcludedOidsTest, WholeOidIsExcludedAlone) {
  const TemporaryDirectory directory;
  SchemaManager schema("");
  ASSERT_EQ(schema.readExcludedOids(directory.write("list", "1.2.3.4 cN\n")),
            0U);
  EXPECT_EQ(schema.isExcluded("1.2.3.4"), 1U);
  EXPECT_EQ(schema.isExcluded("cN"), 1U);
  for (const std::string oid : {"", "1.2.3", "1.2.3.", "1.2.3.40", "1.2.3.4.5",
                                "1.2.3.4 ", " 1.2.3.4", "2.3.4", "cn", "CN"}) {
    EXPECT_EQ(schema.isExcluded(oid), 0U) << oid;
  }
  EXPECT_EQ(schema.isExcluded(std::string("cN\0", 3)), 0U);
}

TEST(SchemaManagerExcludedOidsTest, NothingIsExcludedAtFirst) {
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "a")}});
  EXPECT_EQ(schema->isExcluded("1.1"), 0U);
  EXPECT_EQ(schema->isExcluded(""), 0U);
}

TEST(SchemaManagerExcludedOidsTest, TablesAndSetsStayAsTheyAre) {
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "a")}});
  const TemporaryDirectory directory;
  ASSERT_EQ(schema->readExcludedOids(directory.write("list", "1.1 1.2\n")), 0U);
  EXPECT_EQ(stateOf(schema.get()),
            typeState("1.1", "a") + "V3.user.at: 1.1\nexcluded: 1.1\n");
}

// The path is the file's own, not one in the schema's directory.
TEST(SchemaManagerExcludedOidsTest, PathIsUsedAsGiven) {
  const TemporaryDirectory directory;
  const std::string path = directory.write("excluded-oid-list", "1.1\n");
  SchemaManager schema(directory.string());
  EXPECT_EQ(schema.readExcludedOids("excluded-oid-list"), 1U);
  EXPECT_EQ(schema.isExcluded("1.1"), 0U);
  EXPECT_EQ(schema.readExcludedOids(fs::relative(path).string()), 0U);
  EXPECT_EQ(schema.isExcluded("1.1"), 1U);
}

TEST(SchemaManagerExcludedOidsTest, PathThatDoesNotOpenGivesOne) {
  const TemporaryDirectory directory;
  SchemaManager schema("");
  const std::string file = directory.write("file", "1.1\n");
  ASSERT_EQ(schema.readExcludedOids(file), 0U);
  fs::create_symlink("loop", directory.path() / "loop");
  fs::create_symlink("nowhere", directory.path() / "dangling");
  for (const std::string &path :
       {std::string(), directory.string() + "/missing", file + "/list",
        directory.string() + "/loop", directory.string() + "/dangling",
        directory.string() + "/%s%n", std::string(5000, 'x')}) {
    SCOPED_TRACE(path);
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(schema.readExcludedOids(path), 1U);
    EXPECT_EQ(recorder.messages(),
              Messages{"readExcludedOids: Unable to open file for reading, " +
                       path + ".\n"});
    EXPECT_EQ(excludedOf(&schema, "1.1 1.2"), "1.1 ");
  }
}

// A directory opens and then cannot be read, and so does the memory of this
// process at the address 0.
TEST(SchemaManagerExcludedOidsTest, ReadErrorEndsTheFile) {
  const TemporaryDirectory directory;
  for (const std::string &path :
       {directory.string(), std::string("/proc/self/mem")}) {
    SCOPED_TRACE(path);
    SchemaManager schema("");
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(schema.readExcludedOids(path), 0U);
    EXPECT_EQ(recorder.messages(), Messages());
  }
}

// A character class of its own, in which dots are white space and blanks are
// not.
class OddSpaces : public std::ctype<char> {
 public:
  OddSpaces() : std::ctype<char>(table()) {}

 private:
  static const mask *table() {
    static mask odd[table_size];
    std::copy_n(classic_table(), table_size, odd);
    odd[static_cast<unsigned char>('.')] = space;
    odd[static_cast<unsigned char>(' ')] = print;
    return odd;
  }
};

TEST(SchemaManagerExcludedOidsTest, WhiteSpaceIsThatOfTheCLocale) {
  const TemporaryDirectory directory;
  const std::string path = directory.write("list", "1.2.3 1.2.4\n");
  const std::locale former =
      std::locale::global(std::locale(std::locale::classic(), new OddSpaces));
  SchemaManager schema("");
  const unsigned int result = schema.readExcludedOids(path);
  std::locale::global(former);
  EXPECT_EQ(result, 0U);
  EXPECT_EQ(excludedOf(&schema, "1.2.3 1.2.4"), "1.2.3 1.2.4 ");
}

// The files' sets.

// A schema in which each file has the OID 1.0 and one of its own.
std::unique_ptr<SchemaManager> makeRecordedSchema() {
  std::vector<SchemaFile> files;
  for (const char *name :
       {"V3.modifiedschema", "V3.system.at", "V3.system.oc", "V3.qor.at",
        "V3.qor.oc", "V3.user.at", "V3.user.oc", "V3.config.at"}) {
    const std::string number = std::to_string(files.size() + 1);
    files.push_back({name, typeLine("1.0", "a" + number) +
                               typeLine("1." + number, "b" + number)});
  }
  return makeSchema(files);
}

// What stateOf() gives for the sets, the first lines of which are given.
std::string setsOf(SchemaManager *schema) {
  const std::string state = stateOf(schema);
  return state.substr(state.find("V3."));
}

TEST(SchemaManagerFileSetTest, OidLeavesTheFirstSetThatHoldsIt) {
  const auto schema = makeRecordedSchema();
  std::vector<std::string> lines = {
      "V3.user.oc: 1.0 1.7\n",       "V3.user.at: 1.0 1.6\n",
      "V3.qor.oc: 1.0 1.5\n",        "V3.qor.at: 1.0 1.4\n",
      "V3.system.oc: 1.0 1.3\n",     "V3.system.at: 1.0 1.2\n",
      "V3.modifiedschema: 1.0 1.1\n"};
  const auto joined = [&lines] {
    std::string text;
    for (const std::string &line : lines) {
      text += line;
    }
    return text;
  };
  ASSERT_EQ(setsOf(schema.get()), joined());
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(schema->delOidFromFileSet("1.0"), 0U);
    lines[i].erase(lines[i].find(" 1.0"), 4);
    EXPECT_EQ(setsOf(schema.get()), joined());
  }
  EXPECT_EQ(schema->delOidFromFileSet("1.0"), 32U);
  EXPECT_EQ(setsOf(schema.get()), joined());
}

TEST(SchemaManagerFileSetTest, OidOfTwoFilesLeavesOneAtATime) {
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "a")},
                                  {"V3.system.at", typeLine("1.1", "b")}});
  EXPECT_EQ(schema->delOidFromFileSet("1.1"), 0U);
  EXPECT_EQ(setsOf(schema.get()), "V3.system.at: 1.1\n");
  EXPECT_EQ(schema->delOidFromFileSet("1.1"), 0U);
  EXPECT_EQ(stateOf(schema.get()).find("V3."), std::string::npos);
  EXPECT_EQ(schema->delOidFromFileSet("1.1"), 32U);
}

TEST(SchemaManagerFileSetTest, OnlyTheSetChanges) {
  const auto schema = makeSchema(
      {{"V3.user.at", typeLine("1.1", "a") + storageLine("1.1") +
                          classLine("1.1", "k") + typeLine("1.2", "b")}});
  const TemporaryDirectory directory;
  ASSERT_EQ(schema->readExcludedOids(directory.write("list", "1.1\n")), 0U);
  EXPECT_EQ(schema->delOidFromFileSet("1.1"), 0U);
  EXPECT_EQ(stateOf(schema.get()),
            typesState({{"1.1", "a"}, {"1.2", "b"}}) + classState("1.1", "k") +
                storageState("1.1") + "V3.user.at: 1.2\nexcluded: 1.1\n");
}

TEST(SchemaManagerFileSetTest, OidOfNoUserQorOrSystemFileGives32) {
  const auto schema = makeSchema(
      {{"V3.user.at", typeLine("1.2.3", "a") + typeLine("Oid-x", "b")},
       {"V3.modifiedschema", typeLine("1.4", "c")},
       {"V3.config.at", typeLine("1.5", "d")},
       {"V3.config.oc", classLine("2.5", "k")}});
  const TemporaryDirectory directory;
  ASSERT_EQ(schema->readExcludedOids(directory.write("list", "1.6\n")), 0U);
  const std::string state = stateOf(schema.get());
  for (const std::string oid :
       {"", "1.2", "1.2.3.", "1.2.3.4", "1.2.3 ", "2.3", "oid-x", "a", "1.4",
        "1.5", "2.5", "1.6", "%s%n"}) {
    SCOPED_TRACE(oid);
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(schema->delOidFromFileSet(oid), 32U);
    EXPECT_EQ(recorder.messages(),
              Messages{"delOidFromFileSet: Unable to delete OID from set, " +
                       oid + ".\n"});
    EXPECT_EQ(stateOf(schema.get()), state);
  }
  const TraceRecorder recorder(kTraceDebug);
  EXPECT_EQ(schema->delOidFromFileSet("1.2.3"), 0U);
  EXPECT_EQ(recorder.messages(), Messages());
}

}  // namespace
