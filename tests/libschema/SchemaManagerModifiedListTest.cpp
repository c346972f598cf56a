// The lists of what is to be withdrawn.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <locale>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "libschema/SchemaManagerMergeTesting.h"
#include "libschema/SchemaManagerTesting.h"
#include "support/Child.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace fs = std::filesystem;

namespace {

using Messages = std::vector<std::string>;

// Withdraws what stands in a list of this text.
unsigned int withdraw(const Schema &schema, const std::string &text) {
  const TemporaryDirectory directory;
  return schema->modifySchema(directory.write("list", text));
}

struct ListCase {
  const char *name;
  std::string text;
  std::string withdrawn;  // the OIDs, a blank behind each
};

void PrintTo(const ListCase &listCase, std::ostream *out) {
  *out << listCase.text;
}

// A schema with storage definitions whose OIDs are the words in `text` and all
// parts of them.
Schema schemaOfWords(const std::string &text) {
  std::istringstream in(text);
  in.imbue(std::locale::classic());
  std::set<std::string> parts;
  for (std::string word; in >> word;) {
    for (std::size_t i = 0; i < word.size(); ++i) {
      for (std::size_t length = 1; i + length <= word.size(); ++length) {
        parts.insert(word.substr(i, length));
      }
    }
  }
  std::string definitions;
  for (const std::string &part : parts) {
    definitions += storageLine('\'' + part + '\'', "x");
  }
  Schema schema = makeSchema({{"V3.qor.at", definitions}});
  EXPECT_EQ(schema->storageDefinitions().size(), parts.size());
  return schema;
}

// The OIDs of the storage definitions, a blank behind each.
std::string storageOids(const Schema &schema) {
  std::string oids;
  for (const auto &entry : schema->storageDefinitions()) {
    oids += entry.first + ' ';
  }
  return oids;
}

class SchemaManagerModifiedListTest : public testing::TestWithParam<ListCase> {
};

TEST_P(SchemaManagerModifiedListTest, HoldsTheOids) {
  const ListCase &listCase = GetParam();
  for (const unsigned int mask : {0U, ~0U}) {
    SCOPED_TRACE(mask);
    const auto schema = schemaOfWords(listCase.text);
    std::string expected = storageOids(schema);
    std::istringstream withdrawn(listCase.withdrawn);
    for (std::string oid; withdrawn >> oid;) {
      const std::size_t place = (' ' + expected).find(' ' + oid + ' ');
      ASSERT_NE(place, std::string::npos) << oid;
      expected.erase(place, oid.size() + 1);
    }
    const TraceRecorder recorder(mask);
    EXPECT_EQ(withdraw(schema, listCase.text), 0U);
    EXPECT_EQ(storageOids(schema), expected);
    EXPECT_EQ(recorder.messages(), Messages());
  }
}

const ListCase kLists[] = {
    {"EmptyFile", "", ""},
    {"WhiteSpaceAlone", " \n\t\r\n \n", ""},
    {"OneOid", "1.2.3\n", "1.2.3 "},
    {"OneOidBeforeABlank", "1.2.3 ", "1.2.3 "},
    {"OidsOnOneLine", "1.2.3 1.2.4\t1.2.5  1.2.6\n", "1.2.3 1.2.4 1.2.5 1.2.6"},
    {"AllWhiteSpaceSeparates", "\n a\tb\vc\fd\re\r\nf\n\n g \n",
     "a b c d e f g"},
    {"RepeatedOid", "1.2.3 1.2.3\n1.2.3\n", "1.2.3"},
    {"OidsAreKeptAsWritten", "1.2.3{64} cn-OID CN-oid $ 1.2.3; -\n",
     "1.2.3{64} cn-OID CN-oid $ 1.2.3; -"},
    {"CommentLine", "1.2.3\n# a comment\n1.2.4\n", "1.2.3 1.2.4"},
    {"CommentBehindAnOid", "2.5.4.3 # comment\n1.2.3\n", "2.5.4.3 1.2.3"},
    {"CommentInsideAWord", "abc#def 1.2.4\n1.2.5\n", "1.2.5"},
    {"CommentAtTheEndOfAWord", "1.2.3# 1.2.4\n1.2.5\n", "1.2.5"},
    {"CommentOfOneWord", "#\n1.2.3\n#x\n1.2.4 #\n1.2.5\n", "1.2.3 1.2.4 1.2.5"},
    {"CommentInAComment", "1.2.3 # a # b\n#c #d\n1.2.4\n", "1.2.3 1.2.4"},
    {"CommentBehindACarriageReturn", "1.2.3\r\n# a\r\n1.2.4\r\n#\r\n",
     "1.2.3 1.2.4"},
    {"CommentBeforeOtherLineBreaks", "# a\r1.2.3\v1.2.4\f1.2.5\n1.2.6\n",
     "1.2.6"},
    {"CommentOnTheLastLine", "1.2.3\n# the end\n", "1.2.3"},
    // Kept on purpose: a word that the end of the file touches is not taken.
    {"LastOidWithoutNewline", "1.2.3\n1.2.4", "1.2.3"},
    {"OnlyOidWithoutNewline", "1.2.3", ""},
    {"LastCommentWordWithoutNewline", "1.2.3\n#comment", "1.2.3"},
    {"LastWordWithACommentWithoutNewline", "1.2.3\n1.2.4#", "1.2.3"},
};

std::string listName(const testing::TestParamInfo<ListCase> &list) {
  return list.param.name;
}

INSTANTIATE_TEST_SUITE_P(Lists, SchemaManagerModifiedListTest,
                         testing::ValuesIn(kLists), listName);

// Kept on purpose: the rest of a commented line ends at a newline alone.
TEST(SchemaManagerModifiedListFileTest, CommentWithoutNewlineIsReadForEver) {
  for (const char *text :
       {"1.2.3\n# comment", "# ", "1.2.3 #\t", "1.2.3#x 1.2.4", "#\r"}) {
    SCOPED_TRACE(text);
    const TemporaryDirectory directory;
    const std::string path = directory.write("list", text);
    const auto schema = emptySchema();
    EXPECT_TRUE(neverEnds([&] { schema->modifySchema(path); }));
  }
}

TEST(SchemaManagerModifiedListFileTest, ReadsManyOids) {
  std::string text, definitions;
  for (int i = 0; i < 2000; ++i) {
    const std::string oid = "1.2." + std::to_string(i);
    definitions += storageLine(oid, "x");
    text += oid + (i % 7 == 0 ? " # x\n" : "\n");
  }
  const auto schema =
      makeSchema({{"V3.qor.at", definitions + storageLine("1.2", "x")}});
  EXPECT_EQ(withdraw(schema, text), 0U);
  EXPECT_EQ(storageOids(schema), "1.2 ");
}

// The path is the file's own, not one in the schema's directory.
TEST(SchemaManagerModifiedListFileTest, PathIsUsedAsGiven) {
  const TemporaryDirectory directory;
  const std::string path = directory.write("modified-oid-list", "1.1\n");
  directory.write("V3.qor.at", storageLine("1.1", "x"));
  SchemaManager schema(directory.string());
  ASSERT_EQ(schema.readFile("V3.qor.at"), 0U);
  EXPECT_EQ(schema.modifySchema("modified-oid-list"), 1U);
  EXPECT_EQ(schema.storageDefinitions().size(), 1U);
  EXPECT_EQ(schema.modifySchema(fs::relative(path).string()), 0U);
  EXPECT_EQ(schema.storageDefinitions().size(), 0U);
}

TEST(SchemaManagerModifiedListFileTest, PathThatDoesNotOpenGivesOne) {
  const TemporaryDirectory directory;
  const auto schema =
      makeSchema({{"V3.modifiedschema",
                   storageLine("1.1", "x") + typeLine("1.1", {"a"}, "x")}});
  const std::string before = stateOf(schema.get());
  const std::string file = directory.write("file", "1.1\n");
  fs::create_symlink("loop", directory.path() / "loop");
  fs::create_symlink("nowhere", directory.path() / "dangling");
  for (const std::string &path :
       {std::string(), directory.string() + "/missing", file + "/list",
        directory.string() + "/loop", directory.string() + "/dangling",
        directory.string() + "/%s%n", std::string(5000, 'x')}) {
    SCOPED_TRACE(path);
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(schema->modifySchema(path), 1U);
    EXPECT_EQ(recorder.messages(),
              Messages{"modifySchema: Unable to open file, " + path +
                       ", for reading.\n"});
    EXPECT_EQ(stateOf(schema.get()), before);
  }
}

// A directory opens and then cannot be read, and so does the memory of this
// process at the address 0.
TEST(SchemaManagerModifiedListFileTest, ReadErrorEndsTheFile) {
  const TemporaryDirectory directory;
  for (const std::string &path :
       {directory.string(), std::string("/proc/self/mem")}) {
    SCOPED_TRACE(path);
    const auto schema =
        makeSchema({{"V3.user.at", typeLine("1.1", {"a"}, "x")}});
    const std::string before = stateOf(schema.get());
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(schema->modifySchema(path), 0U);
    EXPECT_EQ(recorder.messages(), Messages());
    EXPECT_EQ(stateOf(schema.get()), before);
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

TEST(SchemaManagerModifiedListFileTest, WhiteSpaceIsThatOfTheCLocale) {
  const auto schema = makeSchema(
      {{"V3.qor.at", storageLine("1.2.3", "x") + storageLine("1.2.4", "x") +
                         storageLine("1", "x")}});
  const TemporaryDirectory directory;
  const std::string path = directory.write("list", "1.2.3 1.2.4\n");
  const std::locale former =
      std::locale::global(std::locale(std::locale::classic(), new OddSpaces));
  const unsigned int result = schema->modifySchema(path);
  std::locale::global(former);
  EXPECT_EQ(result, 0U);
  EXPECT_EQ(storageOids(schema), "1 ");
}

// An OID list excludes nothing here, and withdraws nothing there.
TEST(SchemaManagerModifiedListFileTest, ListsDoNotMix) {
  const auto schema =
      makeSchema({{"V3.user.at",
                   typeLine("1.1", {"a"}, "x") + typeLine("1.2", {"b"}, "x")}});
  exclude(schema.get(), "1.2");
  EXPECT_EQ(withdraw(schema, "1.1\n"), 0U);
  EXPECT_EQ(schema->isExcluded("1.1"), 0U);
  EXPECT_EQ(schema->isExcluded("1.2"), 1U);
  EXPECT_EQ(schema->attributeTypes().count("a"), 0U);
  EXPECT_EQ(schema->attributeTypes().count("b"), 1U);
  EXPECT_EQ(withdraw(schema, "\n"), 0U);
  EXPECT_EQ(schema->attributeTypes().count("b"), 1U);
}

}  // namespace
