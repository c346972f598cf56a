#include "SchemaSymbolTable.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <type_traits>

#include "internal/Keywords.h"
#include "support/TemporaryDirectory.h"

namespace {

static_assert(std::is_convertible_v<SchemaSymbolTable *, CSymbolTable *>);
static_assert(std::has_virtual_destructor_v<SchemaSymbolTable>);
static_assert(sizeof(SchemaSymbolTable) == sizeof(CSymbolTable));
static_assert(!std::is_copy_constructible_v<SchemaSymbolTable>);
static_assert(!std::is_copy_assignable_v<SchemaSymbolTable>);

// Texts, codes and names in the order of the indexes. REVERSE stands out of
// step on purpose.
constexpr struct {
  const char *text;
  int code;
  int name;
} kKeywordTable[] = {
    {"objectclasses", 1002, TOK_OBJECTCLASSES},
    {"NAME", 1003, TOK_NAME},
    {"DESC", 1004, TOK_DESC},
    {"SUP", 1005, TOK_SUP},
    {"AUXILIARY", 1006, TOK_AUXILIARY},
    {"MUST", 1007, TOK_MUST},
    {"MAY", 1008, TOK_MAY},
    {"STRUCTURAL", 1009, TOK_STRUCTURAL},
    {"attributetypes", 1010, TOK_ATTRIBUTETYPES},
    {"EQUALITY", 1011, TOK_EQUALITY},
    {"SYNTAX", 1012, TOK_SYNTAX},
    {"SINGLE-VALUE", 1013, TOK_SINGLE_VALUE},
    {"USAGE", 1014, TOK_USAGE},
    {"NO-USER-MODIFICATION", 1015, TOK_NO_USER_MODIFICATION},
    {"QORAttributetypes", 1016, TOK_QORATTRIBUTETYPES},
    {"ACCESS-CLASS", 1017, TOK_ACCESS_CLASS},
    {"DBNAME", 1018, TOK_DBNAME},
    {"SUBSTR", 1019, TOK_SUBSTR},
    {"REVERSE", 1026, TOK_REVERSE},
    {"ORDERING", 1020, TOK_ORDERING},
    {"COLLECTIVE", 1021, TOK_COLLECTIVE},
    {"OBSOLETE", 1022, TOK_OBSOLETE},
    {"ABSTRACT", 1023, TOK_ABSTRACT},
    {"LENGTH", 1024, TOK_LENGTH},
    {"APPROX", 1025, TOK_APPROX},
};

TEST(SchemaSymbolTableTest, TokenCodesAreFixed) {
  for (const auto &keyword : kKeywordTable) {
    EXPECT_EQ(keyword.name, keyword.code) << keyword.text;
  }
  EXPECT_EQ(TOK_ID, 259);
  EXPECT_EQ(TOK_DONE, 260);
  EXPECT_EQ(TOK_NUMBER, 2024);
  EXPECT_EQ(TOK_NUMBER_LEN, 2025);
  EXPECT_EQ(TOK_NUMBER_BAD, 2026);
}

TEST(SchemaSymbolTableTest, HoldsTheKeywordsInOrder) {
  SchemaSymbolTable table;
  EXPECT_EQ(table.getTableSize(), 25);
  int index = 0;
  for (const auto &keyword : kKeywordTable) {
    SCOPED_TRACE(keyword.text);
    std::string text;
    EXPECT_EQ(table.getValue(index, text), 0);
    EXPECT_EQ(text, keyword.text);
    EXPECT_EQ(table.getTokenValue(index), keyword.code);
    EXPECT_TRUE(table.isString(index));
    EXPECT_FALSE(table.isCharacter(index));
    EXPECT_EQ(table.lookUpValue(keyword.text), index);
    EXPECT_EQ(table.lookUp(keyword.code, 0), index);
    ++index;
  }
}

TEST(SchemaSymbolTableTest, EveryEntryIsAKeyword) {
  SchemaSymbolTable table;
  std::string expected;
  int index = 0;
  for (const auto &keyword : kKeywordTable) {
    expected += std::to_string(index++) + " " + std::to_string(keyword.code) +
                " \"" + keyword.text + "\" keyword\n";
  }
  const TemporaryDirectory directory;
  std::ofstream out(directory.path() / "dump");
  EXPECT_EQ(table.clear(3), -1);  // which removes whatever is no keyword
  table.dump(0, out);
  out.close();
  EXPECT_EQ(directory.read("dump"), expected);
}

TEST(SchemaSymbolTableTest, CaseMattersInAKeyword) {
  SchemaSymbolTable table;
  for (const char *text :
       {"objectClasses", "attributeTypes", "QORattributeTypes", "name", "Name",
        "qorattributetypes", "OBJECTCLASSES", "reverse", "Dbname"}) {
    EXPECT_EQ(table.lookUpValue(text), -1) << text;
    EXPECT_EQ(libschema::findKeyword(text), -1) << text;
  }
}

TEST(SchemaSymbolTableTest, HoldsNoCharacters) {
  SchemaSymbolTable table;
  for (int c = 0; c < 256; ++c) {
    EXPECT_EQ(table.lookUpValue(std::string(1, static_cast<char>(c))), -1) << c;
    EXPECT_EQ(table.lookUp(c, 0), -1) << c;
  }
}

TEST(SchemaSymbolTableTest, ScannedEntriesFollowTheKeywords) {
  SchemaSymbolTable table;
  table.removeValue(25);  // no entry there: nothing happens
  EXPECT_EQ(table.getTableSize(), 25);
  EXPECT_EQ(table.getTokenValue(24), TOK_APPROX);

  EXPECT_EQ(table.insertValue("cn", TOK_ID, false), 25);
  EXPECT_EQ(table.getTableSize(), 26);
  EXPECT_TRUE(table.isString(25));
  EXPECT_EQ(table.getTokenValue(25), TOK_ID);
  EXPECT_EQ(table.lookUpValue("cn"), 25);
  std::string text;
  EXPECT_EQ(table.getValue(25, text), 0);
  EXPECT_EQ(text, "cn");

  table.removeValue(25);
  EXPECT_EQ(table.lookUpValue("cn"), -1);
  EXPECT_EQ(table.insertValue("2.5.4.3", TOK_NUMBER, false), 25);
  EXPECT_EQ(table.getValue(25, text), 0);
  EXPECT_EQ(text, "2.5.4.3");
}

TEST(SchemaSymbolTableTest, CanBeDeletedAsTheGeneralTable) {
  std::unique_ptr<CSymbolTable> table = std::make_unique<SchemaSymbolTable>();
  EXPECT_EQ(table->insertValue("cn", TOK_ID, false), 25);
  table.reset();  // the leak checker sees what is left
  EXPECT_EQ(table, nullptr);
}

TEST(SchemaSymbolTableTest, FindsEachKeywordWithoutATable) {
  int index = 0;
  for (const auto &keyword : kKeywordTable) {
    EXPECT_EQ(libschema::findKeyword(keyword.text), index++) << keyword.text;
  }
  EXPECT_EQ(libschema::findKeyword(""), -1);
}

// Each keyword with one character changed, added or dropped at each place: the
// quick search and the table's own must agree.
TEST(SchemaSymbolTableTest, BothSearchesAgreeOnWordsThatAreAlmostKeywords) {
  SchemaSymbolTable table;
  const auto expectBothAgree = [&table](const std::string &word) {
    EXPECT_EQ(libschema::findKeyword(word), table.lookUpValue(word)) << word;
  };
  for (const auto &keyword : kKeywordTable) {
    const std::string text = keyword.text;
    for (std::size_t at = 0; at < text.size(); ++at) {
      std::string shorter = text;
      expectBothAgree(shorter.erase(at, 1));
      expectBothAgree(text.substr(0, at));
      expectBothAgree(text.substr(at));
      for (int c = 0; c < 256; ++c) {
        std::string changed = text;
        changed[at] = static_cast<char>(c);
        expectBothAgree(changed);
        std::string longer = text;
        expectBothAgree(longer.insert(at, 1, static_cast<char>(c)));
      }
    }
    expectBothAgree(text + text);
    expectBothAgree(text + '\0');
  }
}

TEST(SchemaSymbolTableTest, BothSearchesAgreeOnEveryWordOfTwoCharacters) {
  SchemaSymbolTable table;
  for (int first = 0; first < 256; ++first) {
    for (int last = 0; last < 256; ++last) {
      const std::string word = {static_cast<char>(first),
                                static_cast<char>(last)};
      ASSERT_EQ(libschema::findKeyword(word), table.lookUpValue(word))
          << first << ' ' << last;
    }
  }
}

}  // namespace
