#include <gtest/gtest.h>

#include <string>

#include "DefinitionTesting.h"
#include "ObjectClass.h"

using definitions::compare;
using definitions::expectDifferent;
using definitions::expectEqual;
using definitions::parsed;

namespace {

TEST(ObjectClassEqualityTest, EachFieldCounts) {
  // Each row is the definition with one field changed.
  const std::string same =
      "objectclasses=( 1.2 NAME ( 'a' 'b' ) DESC 'd' OBSOLETE "
      "SUP ( s $ t ) AUXILIARY MUST ( m $ n ) MAY ( x $ y ) )";
  const struct {
    std::string from, to;
  } kTable[] = {
      {"( 1.2 ", "( 1.20 "},
      {"( 1.2 ", "( "},
      {"( 'a' 'b' )", "( 'a' 'c' )"},
      {"( 'a' 'b' )", "( 'c' 'b' )"},
      {"( 'a' 'b' )", "( 'a' )"},
      {"( 'a' 'b' )", "( 'b' )"},
      {"( 'a' 'b' )", "( 'a' 'b' 'a' )"},
      {"( 'a' 'b' )", "( 'a' 'b' 'c' )"},
      {"NAME ( 'a' 'b' )", ""},
      {"'d'", "'D'"},
      {"'d'", "'d '"},
      {"DESC 'd'", ""},
      {"OBSOLETE", ""},
      {"( s $ t )", "( s $ u )"},
      {"( s $ t )", "( u $ t )"},
      {"( s $ t )", "s"},
      {"( s $ t )", "t"},
      {"( s $ t )", "( s $ t $ s )"},
      {"SUP ( s $ t )", ""},
      {"AUXILIARY", "ABSTRACT"},
      {"AUXILIARY", "STRUCTURAL"},
      {"AUXILIARY", ""},
      {"( m $ n )", "( m $ o )"},
      {"( m $ n )", "( o $ n )"},
      {"( m $ n )", "m"},
      {"( m $ n )", "n"},
      {"( m $ n )", "( m $ n $ m )"},
      {"MUST ( m $ n )", ""},
      {"( x $ y )", "( x $ z )"},
      {"( x $ y )", "( z $ y )"},
      {"( x $ y )", "( x )"},
      {"( x $ y )", "( y )"},
      {"( x $ y )", "( x $ y $ x )"},
      {"MAY ( x $ y )", ""},
      // The same attributes, in another list.
      {"MUST ( m $ n ) MAY ( x $ y )", "MUST ( x $ y ) MAY ( m $ n )"},
      {"MUST ( m $ n )", "MAY ( m $ n )"},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.from + " -> " + row.to);
    std::string changed = same;
    changed.replace(same.find(row.from), row.from.size(), row.to);
    expectDifferent<ObjectClass>(same, changed);
  }
}

TEST(ObjectClassEqualityTest, TheThreeKindsDiffer) {
  expectDifferent<ObjectClass>("objectclasses=( 1.2 STRUCTURAL )",
                               "objectclasses=( 1.2 ABSTRACT )");
  expectDifferent<ObjectClass>("objectclasses=( 1.2 STRUCTURAL )",
                               "objectclasses=( 1.2 AUXILIARY )");
  expectDifferent<ObjectClass>("objectclasses=( 1.2 ABSTRACT )",
                               "objectclasses=( 1.2 AUXILIARY )");
  expectEqual<ObjectClass>("objectclasses=( 1.2 STRUCTURAL )",
                           "objectclasses=( 1.2 )");
}

TEST(ObjectClassEqualityTest, CaseCountsInAWordAsOid) {
  expectDifferent<ObjectClass>("objectclasses=( oc-oid )",
                               "objectclasses=( OC-oid )");
}

TEST(ObjectClassEqualityTest, CaseAndOrderOfListsAndOrderOfFieldsDoNotCount) {
  expectEqual<ObjectClass>("objectclasses=( 1.2 MUST ( cn $ sn ) )",
                           "objectclasses=( 1.2 MUST ( SN $ CN ) )");
  expectEqual<ObjectClass>("objectclasses=( 1.2 MAY ( cn $ sn ) )",
                           "objectclasses=( 1.2 MAY ( SN $ CN ) )");
  expectEqual<ObjectClass>("objectclasses=( 1.2 SUP ( top $ alias ) )",
                           "objectclasses=( 1.2 SUP ( ALIAS $ Top ) )");
  expectEqual<ObjectClass>(
      "objectclasses=( 1.2 NAME ( 'cn' 'commonName' ) STRUCTURAL )",
      "objectclasses=( 1.2 NAME ( 'COMMONNAME' 'CN' ) STRUCTURAL )");
  expectEqual<ObjectClass>(
      "objectclasses=( 1.2 NAME 'a' DESC 'd' SUP top AUXILIARY MUST ( cn ) )",
      "objectclasses=( AUXILIARY MUST ( cn ) SUP ( top ) 1.2 DESC 'd' "
      "NAME 'a' AUXILIARY )");
}

TEST(ObjectClassEqualityTest, EmptyDefinitionsAreEqual) {
  ObjectClass empty;
  EXPECT_EQ(empty.objsEqual(ObjectClass()), 1);
  EXPECT_EQ(compare(empty, parsed<ObjectClass>("objectclasses=()")), 1);
}

}  // namespace
