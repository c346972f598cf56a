// The clauses of object classes and of storage definitions.
#include <gtest/gtest.h>

#include "StrictTesting.h"

using schemacheck::ClauseCase;
using schemacheck::expectClauses;

namespace {

class StrictClassClauseTest : public testing::TestWithParam<ClauseCase> {};

TEST_P(StrictClassClauseTest, Clauses) {
  expectClauses("object classes", "objectclasses", GetParam());
}

constexpr ClauseCase kClasses[] = {
    {"NAME 'a' 'b' DESC 'd' OBSOLETE SUP ( top ) STRUCTURAL MUST ( a $ b ) MAY "
     "( c ) ABSTRACT AUXILIARY X-O 'x'",
     "    NAME 'a' 'b'\n"
     "    DESC 'd'\n"
     "    OBSOLETE\n"
     "    SUP ( top )\n"
     "    STRUCTURAL\n"
     "    MUST ( a b )<MUST ( a $ b )>\n"
     "    MAY ( c )\n"
     "    ABSTRACT\n"
     "    AUXILIARY\n"
     "    X-O 'x'\n"},
    // One value without parentheses.
    {"MUST a", "    MUST a\n"},
    {"SUP 1.3 MUST sup MAY name",
     "    SUP #1.3\n"
     "    MUST sup\n"
     "    MAY name\n"},
    {"MUST $ a",
     "    MUST\n"
     "  ? a\n"
     "! value missing <MUST>: expected a name or an OID behind MUST, found "
     "'$'\n"
     "! stray <$>: expected a keyword or ')', found '$'\n"},
    {"MUST a $ b MAY c $",
     "    MUST a b<MUST a $ b>\n"
     "    MAY c<MAY c $>\n"
     "! list unopened <$>: expected parentheses around the list of MUST, found "
     "'$'\n"
     "! list unopened <$>: expected parentheses around the list of MAY, found "
     "'$'\n"},
    {"MUST a $ b ) MAY ( c )",
     "    MUST a b<MUST a $ b>\n"
     "    MAY ( c )\n"
     "! list unopened <$>: expected parentheses around the list of MUST, found "
     "'$'\n"
     "! stray <)>: expected a keyword or ')', found ')'\n"},
    {"MUST a $ b )",
     "    MUST a b<MUST a $ b>\n"
     "! list unopened <$>: expected parentheses around the list of MUST, found "
     "'$'\n"
     "! stray <)>: expected a keyword or ')', found ')'\n"},
    {"MUST a b",
     "    MUST a\n"
     "  ? b\n"},
    {"MUST 'a' $ 'b'",
     "    MUST 'a' 'b'<MUST 'a' $ 'b'>\n"
     "! quotes unexpected <'a'>: expected a value without quotes behind MUST, "
     "found the text 'a'\n"
     "! list unopened <$>: expected parentheses around the list of MUST, found "
     "'$'\n"
     "! quotes unexpected <'b'>: expected a value without quotes behind MUST, "
     "found the text 'b'\n"},
    // Lists.
    {"MUST ( )",
     "    MUST ( )\n"
     "! value missing <MUST>: expected a name or an OID behind MUST, found "
     "')'\n"},
    {"SUP ( ) MAY",
     "    SUP ( )\n"
     "    MAY\n"
     "! value missing <SUP>: expected a name or an OID behind SUP, found the "
     "word 'MAY'\n"
     "! value missing <MAY>: expected a name or an OID behind MAY, found "
     "')'\n"},
    {"MUST ( a b $ 1.3 )",
     "    MUST ( a b #1.3 )<MUST ( a b $ 1.3 )>\n"
     "! dollar missing <b>: expected '$' behind 'a', found the word 'b'\n"},
    {"MUST ( $ a $ $ b $ )",
     "    MUST ( a b )<MUST ( $ a $ $ b $ )>\n"
     "! dollar unexpected <$>: expected a name or an OID in the list of MUST, "
     "found '$'\n"
     "! dollar unexpected <$>: expected a name or an OID in the list of MUST, "
     "found '$'\n"
     "! dollar unexpected <)>: expected a name or an OID behind '$', found "
     "')'\n"},
    {"MUST ( 'a' $ \"b\" )",
     "    MUST ( 'a' \"b\" )<MUST ( 'a' $ \"b\" )>\n"
     "! quotes unexpected <'a'>: expected a value without quotes behind MUST, "
     "found the text 'a'\n"
     "! double quotes <\"b\">: expected single quotes behind MUST, found the "
     "text \"b\"\n"},
    {"MUST ( ( a ) $ ( ( b ) ) )",
     "    MUST ( a b )<MUST ( ( a ) $ ( ( b ) ) )>\n"
     "! list nested <(>: expected no further parentheses in the list of MUST, "
     "found '('\n"
     "! list nested <(>: expected no further parentheses in the list of MUST, "
     "found '('\n"
     "! list nested <(>: expected no further parentheses in the list of MUST, "
     "found '('\n"},
    {"MUST ( a = b : c { 64 } )",
     "    MUST ( a b c )<MUST ( a = b : c { 64 } )>\n"
     "! stray <=>: expected '$' or ')', found '='\n"
     "! stray <:>: expected '$' or ')', found ':'\n"
     "! stray <{ 64 }>: expected '$' or ')', found '{'\n"},
    {"MUST ( a,b $ c;d )", "    MUST ( a,b c;d )<MUST ( a,b $ c;d )>\n"},
    {"MUST ( 1.3{64} )",
     "    MUST ( ##1.3{64} )\n"
     "! length unexpected <1.3{64}>: expected a value without a length behind "
     "MUST, found the number 1.3{64}\n"},
    // Attribute types may have the names of keywords.
    {"MUST ( name $ desc $ sup $ must )",
     "    MUST ( name desc sup must )<MUST ( name $ desc $ sup $ must )>\n"},
    {"MAY ( NAME $ DESC )", "    MAY ( NAME DESC )<MAY ( NAME $ DESC )>\n"},
    {"MAY ( OBSOLETE $ a )", "    MAY ( OBSOLETE a )<MAY ( OBSOLETE $ a )>\n"},
    {"SUP ( structural )", "    SUP ( structural )\n"},
    {"MUST ( objectClasses $ attributetypes )",
     "    MUST ( objectClasses attributetypes )<MUST ( objectClasses $ "
     "attributetypes )>\n"},
    {"MUST ( objectclass )", "    MUST ( objectclass )\n"},
    // Lists that are not closed.
    {"MUST ( a $ b MAY ( c )",
     "    MUST ( a b )<MUST ( a $ b>\n"
     "    MAY ( c )\n"
     "! list unclosed <(>: expected ')' at the end of the list of MUST, found "
     "the word 'MAY'\n"},
    {"MUST ( a may ( c )",
     "    MUST ( a )<MUST ( a>\n"
     "    MAY<may> ( c )<may ( c )>\n"
     "! list unclosed <(>: expected ')' at the end of the list of MUST, found "
     "the word 'may'\n"
     "! keyword case <may>: expected MAY, found the word 'may'\n"},
    {"MUST ( a $ b STRUCTURAL",
     "    MUST ( a b )<MUST ( a $ b>\n"
     "    STRUCTURAL\n"
     "! list unclosed <(>: expected ')' at the end of the list of MUST, found "
     "the word 'STRUCTURAL'\n"},
    {"MUST ( a $ MAY c",
     "    MUST ( a )<MUST ( a $>\n"
     "    MAY c\n"
     "! list unclosed <(>: expected ')' at the end of the list of MUST, found "
     "the word 'MAY'\n"},
    {"MUST ( $ NAME 'b'",
     "    MUST ( )<MUST ( $>\n"
     "    NAME 'b'\n"
     "! value missing <MUST>: expected a name or an OID behind MUST, found the "
     "word 'NAME'\n"
     "! list unclosed <(>: expected ')' at the end of the list of MUST, found "
     "the word 'NAME'\n"
     "! dollar unexpected <$>: expected a name or an OID in the list of MUST, "
     "found '$'\n"},
    {"SUP ( top DESC 'd'",
     "    SUP ( top )<SUP ( top>\n"
     "    DESC 'd'\n"
     "! list unclosed <(>: expected ')' at the end of the list of SUP, found "
     "the word 'DESC'\n"},
    {"MUST ( a $ ( b MAY ( c )",
     "    MUST ( a b )<MUST ( a $ ( b>\n"
     "    MAY ( c )\n"
     "! list unclosed <(>: expected ')' at the end of the list of MUST, found "
     "the word 'MAY'\n"
     "! list nested <(>: expected no further parentheses in the list of MUST, "
     "found '('\n"},
    {"MUST ( MAY ( c )",
     "    MUST ( )<MUST (>\n"
     "    MAY ( c )\n"
     "! value missing <MUST>: expected a name or an OID behind MUST, found the "
     "word 'MAY'\n"
     "! list unclosed <(>: expected ')' at the end of the list of MUST, found "
     "the word 'MAY'\n"},
    {"FOO ( a MAY ( c )",
     "  ? FOO ( a )<FOO ( a>\n"
     "    MAY ( c )\n"
     "! list unclosed <(>: expected ')' at the end of the list of FOO, found "
     "the word 'MAY'\n"},
    // Those of the other kinds.
    {"EQUALITY 1.3 SINGLE-VALUE SYNTAX 1.4 USAGE a DBNAME ( 'b' )",
     "  ? EQUALITY #1.3\n"
     "  ? SINGLE-VALUE\n"
     "  ? SYNTAX #1.4\n"
     "  ? USAGE a\n"
     "  ? DBNAME ( 'b' )\n"},
    {"EQUALITY REVERSE", "  ? EQUALITY REVERSE\n"},
};

INSTANTIATE_TEST_SUITE_P(Classes, StrictClassClauseTest,
                         testing::ValuesIn(kClasses));

class StrictStorageClauseTest : public testing::TestWithParam<ClauseCase> {};

TEST_P(StrictStorageClauseTest, Clauses) {
  expectClauses("storage definitions", "QORAttributetypes", GetParam());
}

constexpr ClauseCase kStorage[] = {
    {"DBNAME ( 'A' 'A' ) ACCESS-CLASS normal LENGTH 256 EQUALITY ORDERING "
     "SUBSTR APPROX REVERSE",
     "    DBNAME ( 'A' 'A' )\n"
     "    ACCESS-CLASS normal\n"
     "    LENGTH #256\n"
     "    EQUALITY\n"
     "    ORDERING\n"
     "    SUBSTR\n"
     "    APPROX\n"
     "    REVERSE\n"},
    {"DBNAME 'A' 'B' EQUALITY",
     "    DBNAME 'A' 'B'\n"
     "    EQUALITY\n"},
    {"DBNAME A",
     "    DBNAME A\n"
     "! quotes missing <A>: expected a quoted string behind DBNAME, found the "
     "word 'A'\n"},
    {"DBNAME ( A B )",
     "    DBNAME ( A B )\n"
     "! quotes missing <A>: expected a quoted string behind DBNAME, found the "
     "word 'A'\n"
     "! quotes missing <B>: expected a quoted string behind DBNAME, found the "
     "word 'B'\n"},
    {"DBNAME ( 'A' EQUALITY",
     "    DBNAME ( 'A' )<DBNAME ( 'A'>\n"
     "    EQUALITY\n"
     "! list unclosed <(>: expected ')' at the end of the list of DBNAME, "
     "found the word 'EQUALITY'\n"},
    {"DBNAME LENGTH 5",
     "    DBNAME\n"
     "    LENGTH #5\n"},
    {"LENGTH a ACCESS-CLASS 5",
     "    LENGTH a\n"
     "    ACCESS-CLASS #5\n"
     "! number missing <a>: expected a number behind LENGTH, found the word "
     "'a'\n"},
    {"LENGTH 'a'",
     "    LENGTH 'a'\n"
     "! quotes unexpected <'a'>: expected a value without quotes behind "
     "LENGTH, found the text 'a'\n"},
    {"LENGTH '5' ACCESS-CLASS 'normal'",
     "    LENGTH '5'\n"
     "    ACCESS-CLASS 'normal'\n"
     "! quotes unexpected <'5'>: expected a value without quotes behind "
     "LENGTH, found the text '5'\n"
     "! quotes unexpected <'normal'>: expected a value without quotes behind "
     "ACCESS-CLASS, found the text 'normal'\n"},
    {"LENGTH 5{6}",
     "    LENGTH ##5{6}\n"
     "! length unexpected <5{6}>: expected a value without a length behind "
     "LENGTH, found the number 5{6}\n"},
    {"LENGTH ( 5 )",
     "    LENGTH ( #5 )\n"
     "! list unexpected <(>: expected one value behind LENGTH, found '('\n"},
    {"LENGTH ACCESS-CLASS EQUALITY",
     "    LENGTH\n"
     "    ACCESS-CLASS\n"
     "    EQUALITY\n"
     "! value missing <LENGTH>: expected a number behind LENGTH, found the "
     "word 'ACCESS-CLASS'\n"
     "! value missing <ACCESS-CLASS>: expected a name or an OID behind "
     "ACCESS-CLASS, found the word 'EQUALITY'\n"},
    {"EQUALITY 1.3",
     "    EQUALITY\n"
     "  ?  #1.3\n"},
    {"EQUALITY ( 'a' )",
     "    EQUALITY\n"
     "  ?  ( 'a' )<( 'a' )>\n"},
    {"NAME 'a' SYNTAX 1.3 MUST ( a )",
     "  ? NAME 'a'\n"
     "  ? SYNTAX #1.3\n"
     "  ? MUST ( a )\n"},
    {"Approx",
     "    APPROX<Approx><Approx>\n"
     "! keyword case <Approx>: expected APPROX, found the word 'Approx'\n"},
};

INSTANTIATE_TEST_SUITE_P(Storage, StrictStorageClauseTest,
                         testing::ValuesIn(kStorage));

}  // namespace
