#include <gtest/gtest.h>

#include <string>

#include "DefinitionTesting.h"
#include "QORAttribute.h"

using definitions::compare;
using definitions::expectDifferent;
using definitions::expectEqual;
using definitions::parsed;
using definitions::SchemaText;

namespace {

TEST(QORAttributeEqualityTest, EachFieldCounts) {
  // Each row is the definition with one field changed.
  const std::string same =
      "QORAttributetypes=( 1.2 DBNAME ( 'A' 'B' ) ACCESS-CLASS normal "
      "LENGTH 256 EQUALITY ORDERING SUBSTR APPROX )";
  const struct {
    std::string from, to;
  } kTable[] = {
      {"( 1.2 ", "( 1.20 "},
      {"( 1.2 ", "( "},
      {"( 'A' 'B' )", "( 'A' 'C' )"},
      {"( 'A' 'B' )", "( 'C' 'B' )"},
      {"( 'A' 'B' )", "( 'A' )"},
      {"( 'A' 'B' )", "( 'B' )"},
      {"( 'A' 'B' )", "( 'A' 'B' 'A' )"},
      {"DBNAME ( 'A' 'B' )", ""},
      {"normal", "Normal"},
      {"normal", "critical"},
      {"ACCESS-CLASS normal", ""},
      {"LENGTH 256", "LENGTH 0256"},
      {"LENGTH 256", "LENGTH 255"},
      {"LENGTH 256", "LENGTH 0"},
      {"LENGTH 256", ""},
      {"EQUALITY", ""},
      {"ORDERING", ""},
      {"SUBSTR", ""},
      {"APPROX", ""},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.from + " -> " + row.to);
    std::string changed = same;
    changed.replace(same.find(row.from), row.from.size(), row.to);
    expectDifferent<QORAttribute>(same, changed);
  }
}

TEST(QORAttributeEqualityTest, EachFlagDiffersFromEachOther) {
  const std::string flags[] = {"EQUALITY", "ORDERING", "SUBSTR", "APPROX"};
  for (const std::string &one : flags) {
    for (const std::string &other : flags) {
      if (one == other) {
        continue;
      }

      const std::string first = "QORAttributetypes=( 1.2 " + one + " )";
      const std::string second = "QORAttributetypes=( 1.2 " + other + " )";
      SCOPED_TRACE(first);
      SCOPED_TRACE(second);
      expectDifferent<QORAttribute>(first, second);
    }
  }
}

TEST(QORAttributeEqualityTest, CaseCountsInAWordAsOid) {
  expectDifferent<QORAttribute>("QORAttributetypes=( cn-oid )",
                                "QORAttributetypes=( CN-oid )");
}

TEST(QORAttributeEqualityTest,
     CaseAndOrderOfColumnsAndOrderOfFieldsDoNotCount) {
  expectEqual<QORAttribute>("QORAttributetypes=( 1.2 DBNAME ( 'A' 'a' ) )",
                            "QORAttributetypes=( 1.2 DBNAME ( 'a' 'A' ) )");
  expectEqual<QORAttribute>("QORAttributetypes=( 1.2 DBNAME ( 'cn' 'sn' ) )",
                            "QORAttributetypes=( 1.2 DBNAME ( 'SN' 'CN' ) )");
  expectEqual<QORAttribute>(
      "QORAttributetypes=( 1.2 DBNAME ( 'A' ) LENGTH 5 APPROX )",
      "QORAttributetypes=( APPROX LENGTH 5 1.2 DBNAME ( 'A' ) )");
  expectEqual<QORAttribute>("QORAttributetypes=( 1.2 LENGTH 0 )",
                            "QORAttributetypes=( 1.2 )");
}

TEST(QORAttributeEqualityTest, ReverseDoesNotCount) {
  expectEqual<QORAttribute>("QORAttributetypes=( 1.2 EQUALITY REVERSE )",
                            "QORAttributetypes=( 1.2 EQUALITY )");
}

TEST(QORAttributeEqualityTest, TheAttributeTypeInItDoesNotCount) {
  const auto plain = parsed<QORAttribute>("QORAttributetypes=( 1.2 LENGTH 5 )");
  QORAttribute filled(plain);
  SchemaText<> file(
      "attributetypes=( 1.2 NAME 'a' DESC 'd' OBSOLETE SUP 1.3 EQUALITY 1.4 "
      "ORDERING 1.5 SUBSTR 1.6 SYNTAX 1.7 SINGLE-VALUE NO-USER-MODIFICATION "
      "USAGE x )");
  ASSERT_EQ(filled.Attribute::parse(file.lexan()), 1);
  EXPECT_EQ(filled.qorAttrsEqual(plain), 1);
  EXPECT_EQ(QORAttribute(plain).qorAttrsEqual(filled), 1);
  EXPECT_EQ(filled.attrsEqual(plain), 0);
}

// As the attribute type in it, which has no storage fields.
TEST(QORAttributeEqualityTest, AsAttributeTypesOnlyTheOidCounts) {
  auto one = parsed<QORAttribute>(
      "QORAttributetypes=( 1.2 DBNAME ( 'A' ) LENGTH 5 EQUALITY )");
  EXPECT_EQ(one.attrsEqual(parsed<QORAttribute>("QORAttributetypes=( 1.2 )")),
            1);
  EXPECT_EQ(one.attrsEqual(parsed<QORAttribute>("QORAttributetypes=( 1.3 )")),
            0);
}

TEST(QORAttributeEqualityTest, EmptyDefinitionsAreEqual) {
  QORAttribute empty;
  EXPECT_EQ(empty.qorAttrsEqual(QORAttribute()), 1);
  EXPECT_EQ(compare(empty, parsed<QORAttribute>("QORAttributetypes=()")), 1);
}

}  // namespace
