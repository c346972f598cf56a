#include <gtest/gtest.h>

#include <string>

#include "Attribute.h"
#include "DefinitionTesting.h"

using definitions::compare;
using definitions::expectDifferent;
using definitions::expectEqual;
using definitions::parsed;

namespace {

TEST(AttributeEqualityTest, EachFieldCounts) {
  // Each row is the definition with one field changed.
  const std::string same =
      "attributetypes=( 1.2 NAME ( 'a' 'b' ) DESC 'd' OBSOLETE SUP 1.3 "
      "SUP 1.31 EQUALITY 1.4 ORDERING 1.5 SUBSTR 1.6 SYNTAX 1.7{8} "
      "SINGLE-VALUE NO-USER-MODIFICATION USAGE dSAOperation )";
  const struct {
    std::string from, to;
  } kTable[] = {
      {"( 1.2 ", "( 1.20 "},
      {"( 1.2 ", "( "},
      {"( 1.2 ", "( 1.3 "},
      {"( 'a' 'b' )", "( 'a' 'c' )"},
      {"( 'a' 'b' )", "( 'c' 'b' )"},
      {"( 'a' 'b' )", "( 'a' )"},
      {"( 'a' 'b' )", "( 'b' )"},
      {"( 'a' 'b' )", "( 'a' 'b' 'a' )"},
      {"( 'a' 'b' )", "( 'a' 'b' 'c' )"},
      {"NAME ( 'a' 'b' )", ""},
      {"'d'", "'D'"},
      {"'d'", "'d '"},
      {"'d'", "'e'"},
      {"DESC 'd'", ""},
      {"OBSOLETE", ""},
      {"SUP 1.3 ", "SUP 1.30 "},
      {"SUP 1.31 ", "SUP 1.32 "},
      {"SUP 1.3 ", ""},
      {"SUP 1.31 ", ""},
      {"SUP 1.31 ", "SUP 1.31 SUP 1.3 "},
      {"SUP 1.3 SUP 1.31 ", ""},
      {"EQUALITY 1.4", "EQUALITY 1.41"},
      {"EQUALITY 1.4", "EQUALITY 1.5"},
      {"EQUALITY 1.4", ""},
      {"ORDERING 1.5", "ORDERING 1.51"},
      {"ORDERING 1.5", "ORDERING 1.4"},
      {"ORDERING 1.5", ""},
      {"SUBSTR 1.6", "SUBSTR 1.61"},
      {"SUBSTR 1.6", "SUBSTR 1.5"},
      {"SUBSTR 1.6", ""},
      {"SYNTAX 1.7{8}", "SYNTAX 1.7{9}"},
      {"SYNTAX 1.7{8}", "SYNTAX 1.7"},
      {"SYNTAX 1.7{8}", "SYNTAX 1.70{8}"},
      {"SYNTAX 1.7{8}", ""},
      {"SINGLE-VALUE", ""},
      {"NO-USER-MODIFICATION", ""},
      {"USAGE dSAOperation", "USAGE dsaOperation"},
      {"USAGE dSAOperation", "USAGE userApplications"},
      {"USAGE dSAOperation", "USAGE ''"},
      {"USAGE dSAOperation", ""},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.from + " -> " + row.to);
    std::string changed = same;
    changed.replace(same.find(row.from), row.from.size(), row.to);
    expectDifferent<Attribute>(same, changed);
  }
}

// parse() cannot give such a definition.
TEST(AttributeEqualityTest, CollectiveCounts) {
  class CollectiveAttribute : public Attribute {
   public:
    CollectiveAttribute() { m_collective = true; }
  } collective;
  Attribute empty;
  EXPECT_EQ(collective.attrsEqual(empty), 0);
  EXPECT_EQ(empty.attrsEqual(collective), 0);
  EXPECT_EQ(collective.attrsEqual(CollectiveAttribute()), 1);
}

TEST(AttributeEqualityTest, CaseCountsInASyntaxAndAWordAsOid) {
  expectDifferent<Attribute>("attributetypes=( 1.2 SYNTAX IA5String )",
                             "attributetypes=( 1.2 SYNTAX ia5string )");
  expectDifferent<Attribute>("attributetypes=( cn-oid )",
                             "attributetypes=( CN-oid )");
}

TEST(AttributeEqualityTest, CaseAndOrderOfNamesAndOrderOfFieldsDoNotCount) {
  expectEqual<Attribute>(
      "attributetypes=( 1.2 NAME ( 'cn' 'commonName' ) SYNTAX 1.3 )",
      "attributetypes=( 1.2 NAME ( 'COMMONNAME' 'CN' ) SYNTAX 1.3 )");
  expectEqual<Attribute>("attributetypes=( 1.2 SUP 1.3 SUP 1.4 )",
                         "attributetypes=( 1.2 SUP 1.4 SUP 1.3 )");
  expectEqual<Attribute>(
      "attributetypes=( 1.2 NAME 'a' DESC 'd' OBSOLETE SYNTAX 1.3 )",
      "attributetypes=( SYNTAX 1.3 OBSOLETE 1.2 DESC 'd' NAME 'a' OBSOLETE )");
  expectEqual<Attribute>("attributetypes=( 1.2 USAGE userApplications )",
                         "attributetypes=( 1.2 EQUALITY byName SUP name )");
}

TEST(AttributeEqualityTest, NamesOfDifferentNumberDiffer) {
  expectDifferent<Attribute>(
      "attributetypes=( 1.2 NAME ( 'cn' ) SYNTAX 1.3 )",
      "attributetypes=( 1.2 NAME ( 'cn' 'commonName' ) SYNTAX 1.3 )");
}

TEST(AttributeEqualityTest, EmptyDefinitionsAreEqual) {
  Attribute empty;
  EXPECT_EQ(empty.attrsEqual(Attribute()), 1);
  EXPECT_EQ(compare(empty, parsed<Attribute>("attributetypes=()")), 1);
}

}  // namespace
