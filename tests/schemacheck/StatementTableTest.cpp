#include "StatementTable.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>

#include "Statement.h"

using schemacheck::Definition;
using schemacheck::Statement;
using schemacheck::StatementTable;

namespace {

class StatementTableTest : public testing::Test {
 protected:
  // Makes statements that differ in where they lie alone.
  const Statement *make() {
    return &m_statements.emplace_back(nullptr, nullptr, &m_definition);
  }

 private:
  const Definition m_definition{};
  std::deque<Statement> m_statements;
};

TEST_F(StatementTableTest, HoldsTheFirst) {
  StatementTable table(StatementTable::Case::kMatters);
  const Statement *first = make();
  const Statement *second = make();
  EXPECT_EQ(table.find(""), nullptr);
  EXPECT_EQ(table.find("a"), nullptr);
  EXPECT_EQ(table.add("a", first), first);
  EXPECT_EQ(table.add("a", second), first);
  EXPECT_EQ(table.add("", second), second);
  EXPECT_EQ(table.find("a"), first);
  EXPECT_EQ(table.find(""), second);
  EXPECT_EQ(table.find("b"), nullptr);
}

TEST_F(StatementTableTest, TheCaseMatters) {
  StatementTable table(StatementTable::Case::kMatters);
  const Statement *one = make();
  const Statement *other = make();
  EXPECT_EQ(table.add("commonName", one), one);
  EXPECT_EQ(table.add("commonname", other), other);
  EXPECT_EQ(table.find("commonName"), one);
  EXPECT_EQ(table.find("commonname"), other);
  EXPECT_EQ(table.find("COMMONNAME"), nullptr);
}

// Only of letters: the other bytes differ in the same bit.
TEST_F(StatementTableTest, TheCaseIsIgnored) {
  StatementTable table(StatementTable::Case::kIgnored);
  const Statement *one = make();
  const Statement *other = make();
  EXPECT_EQ(table.add("Common[Name]-1@", one), one);
  EXPECT_EQ(table.add("common{name}-1`", other), other);
  EXPECT_EQ(table.find("cOMMON[nAME]-1@"), one);
  EXPECT_EQ(table.find("COMMON{NAME}-1`"), other);
  EXPECT_EQ(table.find("common[name}-1@"), nullptr);
}

// As many as there are for a file; each text is found, and no other.
TEST_F(StatementTableTest, HoldsMany) {
  constexpr int kNumber = 20000;
  StatementTable table(StatementTable::Case::kMatters);
  std::deque<std::string> texts;
  std::deque<const Statement *> statements;
  for (int i = 0; i < kNumber; ++i) {
    statements.push_back(make());
    texts.push_back("1.3.6.1.4.1." + std::to_string(i) + "." +
                    std::to_string(i % 7));
    ASSERT_EQ(table.add(texts.back(), statements.back()), statements.back());
  }
  for (std::size_t i = 0; i < texts.size(); ++i) {
    ASSERT_EQ(table.find(texts[i]), statements[i]);
    ASSERT_EQ(table.find(texts[i] + "."), nullptr);
  }
}

}  // namespace
