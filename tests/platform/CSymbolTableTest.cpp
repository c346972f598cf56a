#include "CSymbolTable.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "support/TemporaryDirectory.h"

namespace {

static_assert(std::has_virtual_destructor_v<CSymbolTable>);
static_assert(!std::is_copy_constructible_v<CSymbolTable>);
static_assert(!std::is_copy_assignable_v<CSymbolTable>);

// Indexes at which a table of `size` entries has none.
std::vector<int> absentIndexes(int size) {
  return {-1,
          -2,
          size,
          size + 1,
          std::numeric_limits<int>::min(),
          std::numeric_limits<int>::max()};
}

// What the table writes with dump().
std::string dumped(CSymbolTable &table, int indent) {
  const TemporaryDirectory directory;
  std::ofstream out(directory.path() / "dump");
  table.dump(indent, out);
  out.close();
  return directory.read("dump");
}

// What the table prints with tableDump().
std::string printed(CSymbolTable &table, const std::string &name) {
  const std::ostringstream text;
  std::streambuf *console = std::cout.rdbuf(text.rdbuf());
  table.tableDump(name);
  std::cout.rdbuf(console);
  return text.str();
}

// A keyword, two names, a character, a keyword character: in this order.
class FilledCSymbolTableTest : public testing::Test {
 protected:
  static constexpr int kSize = 5;

  FilledCSymbolTableTest() {
    m_table.insertValue("NAME", 1003, true);
    m_table.insertValue("cn", 259, false);
    m_table.insertValue("sn", 259, false);
    m_table.insertValue('c', 99, false);
    m_table.insertValue('$', 36, true);
  }

  CSymbolTable m_table;
};

TEST(CSymbolTableTest, IsEmptyAtFirst) {
  CSymbolTable table;
  EXPECT_EQ(table.getTableSize(), 0);
  EXPECT_EQ(table.lookUpValue(""), -1);
  EXPECT_EQ(table.lookUp(259, 0), -1);
  EXPECT_EQ(dumped(table, 1), "");
  EXPECT_EQ(printed(table, "empty"), "empty\n");
}

TEST(CSymbolTableTest, InsertingReturnsTheSizeBefore) {
  CSymbolTable table;
  for (int index = 0; index < 100; ++index) {
    const bool string = index % 2 == 0;
    EXPECT_EQ(string
                  ? table.insertValue(std::to_string(index), index, false)
                  : table.insertValue(static_cast<char>(index), index, false),
              index);
    EXPECT_EQ(table.getTableSize(), index + 1);
  }
  for (int index = 0; index < 100; ++index) {
    SCOPED_TRACE(index);
    EXPECT_EQ(table.getTokenValue(index), index);
    EXPECT_EQ(table.isString(index), index % 2 == 0);
    EXPECT_EQ(table.isCharacter(index), index % 2 == 1);
  }
}

TEST(CSymbolTableTest, DestructionThroughTheBaseReachesTheDerivedClass) {
  class Derived : public CSymbolTable {
   public:
    explicit Derived(bool *destroyed) : m_destroyed(destroyed) {}
    ~Derived() override { *m_destroyed = true; }

   private:
    bool *m_destroyed;
  };
  bool destroyed = false;
  std::unique_ptr<CSymbolTable> table = std::make_unique<Derived>(&destroyed);
  table.reset();
  EXPECT_TRUE(destroyed);
}

TEST_F(FilledCSymbolTableTest, GivesTheTokenCodeOfEachEntry) {
  const int tokens[kSize] = {1003, 259, 259, 99, 36};
  for (int index = 0; index < kSize; ++index) {
    EXPECT_EQ(m_table.getTokenValue(index), tokens[index]) << index;
  }
}

TEST_F(FilledCSymbolTableTest, KnowsTheKindOfEachEntry) {
  for (int index = 0; index < kSize; ++index) {
    EXPECT_EQ(m_table.isString(index), index < 3) << index;
    EXPECT_EQ(m_table.isCharacter(index), index >= 3) << index;
  }
}

TEST_F(FilledCSymbolTableTest, GivesTheStringOfAStringEntry) {
  const char *const strings[] = {"NAME", "cn", "sn"};
  for (int index = 0; index < 3; ++index) {
    std::string value = "before";
    EXPECT_EQ(m_table.getValue(index, value), 0) << index;
    EXPECT_EQ(value, strings[index]) << index;
  }
}

TEST_F(FilledCSymbolTableTest, GivesTheCharacterOfACharacterEntry) {
  const char characters[] = {'c', '$'};
  for (int index = 3; index < kSize; ++index) {
    char value = '?';
    EXPECT_EQ(m_table.getValue(index, value), 0) << index;
    EXPECT_EQ(value, characters[index - 3]) << index;
  }
}

TEST_F(FilledCSymbolTableTest, LeavesTheArgumentAloneForTheOtherKind) {
  for (int index = 0; index < kSize; ++index) {
    SCOPED_TRACE(index);
    std::string string = "before";
    char character = '?';
    if (index < 3) {
      EXPECT_EQ(m_table.getValue(index, character), 1);
      EXPECT_EQ(character, '?');
    } else {
      EXPECT_EQ(m_table.getValue(index, string), 1);
      EXPECT_EQ(string, "before");
    }
  }
}

TEST_F(FilledCSymbolTableTest, EveryOperationTakesAnIndexWithoutAnEntry) {
  const std::string before = dumped(m_table, 0);
  for (const int index : absentIndexes(kSize)) {
    SCOPED_TRACE(index);
    EXPECT_EQ(m_table.getTokenValue(index), -1);
    EXPECT_FALSE(m_table.isString(index));
    EXPECT_FALSE(m_table.isCharacter(index));
    std::string string = "before";
    EXPECT_EQ(m_table.getValue(index, string), 1);
    EXPECT_EQ(string, "before");
    char character = '?';
    EXPECT_EQ(m_table.getValue(index, character), 1);
    EXPECT_EQ(character, '?');
    m_table.removeValue(index);
    EXPECT_EQ(dumped(m_table, 0), before);
  }
}

TEST(CSymbolTableTest, AnEmptyTableTakesAnIndexWithoutAnEntry) {
  CSymbolTable table;
  for (const int index : absentIndexes(0)) {
    SCOPED_TRACE(index);
    EXPECT_EQ(table.getTokenValue(index), -1);
    EXPECT_FALSE(table.isString(index));
    EXPECT_FALSE(table.isCharacter(index));
    table.removeValue(index);
    EXPECT_EQ(table.getTableSize(), 0);
  }
}

TEST_F(FilledCSymbolTableTest, LooksUpTheWholeTextCaseIncluded) {
  EXPECT_EQ(m_table.lookUpValue("NAME"), 0);
  EXPECT_EQ(m_table.lookUpValue("cn"), 1);
  EXPECT_EQ(m_table.lookUpValue("sn"), 2);
  for (const char *absent : {"", "name", "Name", "NAM", "NAMES", "CN", "c "}) {
    EXPECT_EQ(m_table.lookUpValue(absent), -1) << absent;
  }
}

TEST_F(FilledCSymbolTableTest, LookingUpATextPassesCharactersBy) {
  EXPECT_EQ(m_table.lookUpValue("c"), -1);
  EXPECT_EQ(m_table.lookUpValue("$"), -1);
  EXPECT_EQ(m_table.insertValue("c", 259, false), kSize);
  EXPECT_EQ(m_table.lookUpValue("c"), kSize);
}

TEST_F(FilledCSymbolTableTest, LookingUpATextThatIsThereTwiceGivesTheFirst) {
  EXPECT_EQ(m_table.insertValue("cn", 2024, false), kSize);
  EXPECT_EQ(m_table.lookUpValue("cn"), 1);
  m_table.removeValue(1);
  EXPECT_EQ(m_table.lookUpValue("cn"), kSize - 1);
}

TEST(CSymbolTableTest, TextsMayHoldAnyByte) {
  CSymbolTable table;
  const std::string bytes("a\0b\xff", 4);
  EXPECT_EQ(table.insertValue("", 1, false), 0);
  EXPECT_EQ(table.insertValue(bytes, 2, false), 1);
  EXPECT_EQ(table.lookUpValue(""), 0);
  EXPECT_EQ(table.lookUpValue("a"), -1);
  EXPECT_EQ(table.lookUpValue(bytes), 1);
  std::string value;
  EXPECT_EQ(table.getValue(1, value), 0);
  EXPECT_EQ(value, bytes);
}

TEST_F(FilledCSymbolTableTest, RemovingMovesLaterEntriesUp) {
  m_table.removeValue(1);
  EXPECT_EQ(dumped(m_table, 0),
            "0 1003 \"NAME\" keyword\n"
            "1 259 \"sn\"\n"
            "2 99 \"c\"\n"
            "3 36 \"$\" keyword\n");
  EXPECT_EQ(m_table.getTableSize(), 4);
  EXPECT_EQ(m_table.lookUpValue("cn"), -1);
  EXPECT_EQ(m_table.lookUpValue("sn"), 1);
}

TEST_F(FilledCSymbolTableTest, RemovesTheFirstAndTheLastEntry) {
  m_table.removeValue(0);
  m_table.removeValue(kSize - 2);
  EXPECT_EQ(dumped(m_table, 0),
            "0 259 \"cn\"\n"
            "1 259 \"sn\"\n"
            "2 99 \"c\"\n");
}

TEST(CSymbolTableTest, RemovingTheLastEntryGivesItsIndexOutAgain) {
  CSymbolTable table;
  EXPECT_EQ(table.insertValue("first", 1, true), 0);
  for (const char *text : {"cn", "sn", "c"}) {
    EXPECT_EQ(table.insertValue(text, 259, false), 1);
    EXPECT_EQ(table.lookUpValue(text), 1);
    table.removeValue(1);
    EXPECT_EQ(table.getTableSize(), 1);
  }
}

TEST_F(FilledCSymbolTableTest, LooksUpATokenCodeFromAnIndexOn) {
  const struct {
    int token;
    int from;
    int index;
  } cases[] = {
      {1003, 0, 0},    {1003, 1, -1},
      {259, 0, 1},     {259, 1, 1},
      {259, 2, 2},     {259, 3, -1},
      {36, 0, 4},      {36, 4, 4},
      {36, kSize, -1}, {36, std::numeric_limits<int>::max(), -1},
      {1003, -1, 0},   {1003, std::numeric_limits<int>::min(), 0},
      {7, 0, -1},      {-1, 0, -1},
  };
  for (const auto &each : cases) {
    EXPECT_EQ(m_table.lookUp(each.token, each.from), each.index)
        << each.token << " from " << each.from;
  }
}

TEST_F(FilledCSymbolTableTest, ClearingLeavesTheKeywords) {
  EXPECT_EQ(m_table.clear(2), -1);
  const std::string keywords =
      "0 1003 \"NAME\" keyword\n"
      "1 36 \"$\" keyword\n";
  EXPECT_EQ(dumped(m_table, 0), keywords);
  EXPECT_EQ(m_table.clear(0), -1);
  EXPECT_EQ(dumped(m_table, 0), keywords);
}

TEST_F(FilledCSymbolTableTest, ClearingTakesAnIndexWithoutAnEntry) {
  for (const int index : absentIndexes(kSize)) {
    EXPECT_EQ(m_table.clear(index), -1) << index;
    EXPECT_EQ(m_table.getTableSize(), 2) << index;
  }
}

TEST_F(FilledCSymbolTableTest, DumpsALineAnEntryBehindTabs) {
  const std::string lines[] = {
      "0 1003 \"NAME\" keyword\n",
      "1 259 \"cn\"\n",
      "2 259 \"sn\"\n",
      "3 99 \"c\"\n",
      "4 36 \"$\" keyword\n",
  };
  for (const int indent : {-1, 0, 1, 2, 5}) {
    std::string expected;
    for (const std::string &line : lines) {
      expected +=
          std::string(indent > 0 ? static_cast<unsigned>(indent) : 0U, '\t') +
          line;
    }
    EXPECT_EQ(dumped(m_table, indent), expected) << indent;
  }
}

TEST_F(FilledCSymbolTableTest, DumpsDecimalNumbersToAnyStream) {
  const TemporaryDirectory directory;
  std::ofstream out(directory.path() / "dump");
  out << std::hex << std::showbase << std::showpos;
  m_table.dump(0, out);
  out.close();
  EXPECT_EQ(directory.read("dump"), dumped(m_table, 0));
}

TEST_F(FilledCSymbolTableTest, PrintsTheLinesBelowTheName) {
  EXPECT_EQ(printed(m_table, "all of it"),
            "all of it\n"
            "0 1003 \"NAME\" keyword\n"
            "1 259 \"cn\"\n"
            "2 259 \"sn\"\n"
            "3 99 \"c\"\n"
            "4 36 \"$\" keyword\n");
}

}  // namespace
