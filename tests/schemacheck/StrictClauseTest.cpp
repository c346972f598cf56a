// The clauses of attribute types, and what is none.
#include <gtest/gtest.h>

#include "StrictTesting.h"

using schemacheck::ClauseCase;
using schemacheck::expectClauses;

namespace {

class StrictClauseTest : public testing::TestWithParam<ClauseCase> {};

TEST_P(StrictClauseTest, Clauses) {
  expectClauses("attribute types", "attributetypes", GetParam());
}

constexpr ClauseCase kTypes[] = {
    // Every clause, in the form of the grammar.
    {"NAME ( 'a' 'b' ) DESC 'd e' OBSOLETE SUP c EQUALITY e ORDERING 1.3 "
     "SUBSTR s SYNTAX 1.4{64} SINGLE-VALUE COLLECTIVE NO-USER-MODIFICATION "
     "USAGE dSAOperation X-ORIGIN 'x'",
     "    NAME ( 'a' 'b' )\n"
     "    DESC 'd e'\n"
     "    OBSOLETE\n"
     "    SUP c\n"
     "    EQUALITY e\n"
     "    ORDERING #1.3\n"
     "    SUBSTR s\n"
     "    SYNTAX ##1.4{64}\n"
     "    SINGLE-VALUE\n"
     "    COLLECTIVE\n"
     "    NO-USER-MODIFICATION\n"
     "    USAGE dSAOperation\n"
     "    X-ORIGIN 'x'\n"},
    // Names.
    {"NAME 'a'", "    NAME 'a'\n"},
    {"NAME 'a' 'b' DESC 'd'",
     "    NAME 'a' 'b'\n"
     "    DESC 'd'\n"},
    {"NAME DESC 'd'",
     "    NAME\n"
     "    DESC 'd'\n"},
    {"NAME ( ) DESC 'd'",
     "    NAME ( )\n"
     "    DESC 'd'\n"},
    {"NAME", "    NAME\n"},
    {"NAME ''", "    NAME ''\n"},
    {"NAME a b",
     "    NAME a\n"
     "  ? b\n"
     "! quotes missing <a>: expected a quoted string behind NAME, found the "
     "word 'a'\n"},
    {"NAME ( a 'b' 1.3 )",
     "    NAME ( a 'b' #1.3 )\n"
     "! quotes missing <a>: expected a quoted string behind NAME, found the "
     "word 'a'\n"
     "! quotes missing <1.3>: expected a quoted string behind NAME, found the "
     "number 1.3\n"},
    {"NAME name DESC 'd'",
     "    NAME name\n"
     "    DESC 'd'\n"
     "! quotes missing <name>: expected a quoted string behind NAME, found the "
     "word 'name'\n"},
    {"NAME ( 'a' $ 'b' )",
     "    NAME ( 'a' 'b' )<NAME ( 'a' $ 'b' )>\n"
     "! dollar unexpected <$>: expected a quoted string in the list of NAME, "
     "found '$'\n"},
    {"NAME \"a\"",
     "    NAME \"a\"\n"
     "! double quotes <\"a\">: expected single quotes behind NAME, found the "
     "text \"a\"\n"},
    {"NAME ( \"a\" 'b' )",
     "    NAME ( \"a\" 'b' )\n"
     "! double quotes <\"a\">: expected single quotes behind NAME, found the "
     "text \"a\"\n"},
    {"NAME ( 'a' ( 'b' ) )",
     "    NAME ( 'a' 'b' )<NAME ( 'a' ( 'b' ) )>\n"
     "! list nested <(>: expected no further parentheses in the list of NAME, "
     "found '('\n"},
    {"NAME ( 'a' DESC 'd'",
     "    NAME ( 'a' )<NAME ( 'a'>\n"
     "    DESC 'd'\n"
     "! list unclosed <(>: expected ')' at the end of the list of NAME, found "
     "the word 'DESC'\n"},
    {"NAME ( 'a' SINGLE-VALUE",
     "    NAME ( 'a' )<NAME ( 'a'>\n"
     "    SINGLE-VALUE\n"
     "! list unclosed <(>: expected ')' at the end of the list of NAME, found "
     "the word 'SINGLE-VALUE'\n"},
    {"NAME ( 'a' SYNTAX 1.3",
     "    NAME ( 'a' )<NAME ( 'a'>\n"
     "    SYNTAX #1.3\n"
     "! list unclosed <(>: expected ')' at the end of the list of NAME, found "
     "the word 'SYNTAX'\n"},
    {"NAME ( 'a' X-O 'x'",
     "    NAME ( 'a' )<NAME ( 'a'>\n"
     "    X-O 'x'\n"
     "! list unclosed <(>: expected ')' at the end of the list of NAME, found "
     "the word 'X-O'\n"},
    {"NAME ( 'a' SYNTAX )",
     "    NAME ( 'a' SYNTAX )\n"
     "! quotes missing <SYNTAX>: expected a quoted string behind NAME, found "
     "the word 'SYNTAX'\n"},
    {"NAME ( 'a' MAY ( b ) )",
     "    NAME ( 'a' MAY b )<NAME ( 'a' MAY ( b ) )>\n"
     "! quotes missing <MAY>: expected a quoted string behind NAME, found the "
     "word 'MAY'\n"
     "! list nested <(>: expected no further parentheses in the list of NAME, "
     "found '('\n"
     "! quotes missing <b>: expected a quoted string behind NAME, found the "
     "word 'b'\n"},
    {"NAME ( 'a' ) ) SYNTAX 1.3",
     "    NAME ( 'a' )\n"
     "    SYNTAX #1.3\n"
     "! stray <)>: expected a keyword or ')', found ')'\n"},
    {"NAME 'a' ) SYNTAX 1.3",
     "    NAME 'a'\n"
     "    SYNTAX #1.3\n"
     "! stray <)>: expected a keyword or ')', found ')'\n"},
    // Descriptions.
    {"DESC ''", "    DESC ''\n"},
    {"DESC 'It's'", "    DESC 'It's'\n"},
    {"DESC 'a' 'b'",
     "    DESC 'a'\n"
     "  ?  'b'\n"},
    {"DESC a",
     "    DESC a\n"
     "! quotes missing <a>: expected a quoted string behind DESC, found the "
     "word 'a'\n"},
    {"DESC the name of a thing SYNTAX 1.3",
     "    DESC the name of a thing\n"
     "    SYNTAX #1.3\n"
     "! quotes missing <the>: expected a quoted string behind DESC, found the "
     "word 'the'\n"},
    {"DESC 1.3",
     "    DESC #1.3\n"
     "! quotes missing <1.3>: expected a quoted string behind DESC, found the "
     "number 1.3\n"},
    {"DESC 1.3 a",
     "    DESC 1.3 a\n"
     "! quotes missing <1.3>: expected a quoted string behind DESC, found the "
     "number 1.3\n"},
    {"DESC a FOO 'b'",
     "    DESC a\n"
     "  ? FOO 'b'\n"
     "! quotes missing <a>: expected a quoted string behind DESC, found the "
     "word 'a'\n"},
    {"DESC",
     "    DESC\n"
     "! value missing <DESC>: expected a quoted text behind DESC, found ')'\n"},
    {"DESC SYNTAX 1.3",
     "    DESC\n"
     "    SYNTAX #1.3\n"
     "! value missing <DESC>: expected a quoted text behind DESC, found the "
     "word 'SYNTAX'\n"},
    {"DESC ( 'a' 'b' )",
     "    DESC ( 'a' 'b' )\n"
     "! list unexpected <(>: expected one quoted text behind DESC, found "
     "'('\n"},
    {"DESC 'a\n"
     "b'",
     "    DESC 'a\\nb'\n"},
    {"DESC \"a\"",
     "    DESC \"a\"\n"
     "! double quotes <\"a\">: expected single quotes behind DESC, found the "
     "text \"a\"\n"},
    // Single values.
    {"SUP ( a $ 1.3 )", "    SUP ( a #1.3 )<SUP ( a $ 1.3 )>\n"},
    {"SUP name DESC 'd'",
     "    SUP name\n"
     "    DESC 'd'\n"},
    {"SUP a 1.3",
     "    SUP a\n"
     "  ?  #1.3\n"},
    {"SUP EQUALITY 1.3",
     "    SUP\n"
     "    EQUALITY #1.3\n"
     "! value missing <SUP>: expected a name or an OID behind SUP, found the "
     "word 'EQUALITY'\n"},
    {"SUP 'a'",
     "    SUP 'a'\n"
     "! quotes unexpected <'a'>: expected a value without quotes behind SUP, "
     "found the text 'a'\n"},
    {"EQUALITY 'a' ORDERING \"b\"",
     "    EQUALITY 'a'\n"
     "    ORDERING \"b\"\n"
     "! quotes unexpected <'a'>: expected a value without quotes behind "
     "EQUALITY, found the text 'a'\n"
     "! double quotes <\"b\">: expected single quotes behind ORDERING, found "
     "the text \"b\"\n"},
    {"EQUALITY ( a b )",
     "    EQUALITY ( a b )\n"
     "! list unexpected <(>: expected one value behind EQUALITY, found '('\n"},
    {"EQUALITY 1.3{64}",
     "    EQUALITY ##1.3{64}\n"
     "! length unexpected <1.3{64}>: expected a value without a length behind "
     "EQUALITY, found the number 1.3{64}\n"},
    {"SYNTAX 1.3 {64}", "    SYNTAX ##1.3{64}<1.3 {64}>\n"},
    {"SYNTAX 'a'",
     "    SYNTAX 'a'\n"
     "! quotes unexpected <'a'>: expected a value without quotes behind "
     "SYNTAX, found the text 'a'\n"},
    {"SYNTAX a{64}",
     "    SYNTAX a\n"
     "! stray <{64}>: expected a keyword or ')', found '{'\n"},
    {"SYNTAX 1.3{ab} USAGE x",
     "    SYNTAX ##1.3{ab}\n"
     "    USAGE x\n"
     "! length malformed <1.3{ab}>: expected a length such as {64}, found the "
     "number 1.3{ab}\n"},
    {"SYNTAX 1.3{64 USAGE x",
     "    SYNTAX ##1.3{64\n"
     "    USAGE x\n"
     "! length malformed <1.3{64>: expected a length such as {64}, found the "
     "number 1.3{64\n"},
    {"USAGE",
     "    USAGE\n"
     "! value missing <USAGE>: expected a name or an OID behind USAGE, found "
     "')'\n"},
    {"USAGE x y",
     "    USAGE x\n"
     "  ? y\n"},
    // Keywords in another case, and of other kinds.
    {"name 'a' Single-Value syntax 1.3",
     "    NAME<name> 'a'<name 'a'>\n"
     "    SINGLE-VALUE<Single-Value><Single-Value>\n"
     "    SYNTAX<syntax> #1.3<syntax 1.3>\n"
     "! keyword case <name>: expected NAME, found the word 'name'\n"
     "! keyword case <Single-Value>: expected SINGLE-VALUE, found the word "
     "'Single-Value'\n"
     "! keyword case <syntax>: expected SYNTAX, found the word 'syntax'\n"},
    {"x-origin 'x'",
     "    X-ORIGIN<x-origin> 'x'<x-origin 'x'>\n"
     "! keyword case <x-origin>: expected X-ORIGIN, found the word "
     "'x-origin'\n"},
    {"MUST ( a $ b ) DBNAME 'c' LENGTH 5 APPROX AUXILIARY may d",
     "  ? MUST ( a b )<MUST ( a $ b )>\n"
     "  ? DBNAME 'c'\n"
     "  ? LENGTH #5\n"
     "  ? APPROX\n"
     "  ? AUXILIARY\n"
     "  ? may d\n"},
    {"NAME 'a' objectclass 'b' attributetypes 'c'",
     "    NAME 'a'\n"
     "  ? objectclass 'b'\n"
     "  ? attributetypes 'c'\n"},
    // What no clause takes.
    {"FOO", "  ? FOO\n"},
    {"FOO BAR 'a' 'b' \"c\"",
     "  ? FOO\n"
     "  ? BAR 'a' 'b' \"c\"\n"
     "! double quotes <\"c\">: expected single quotes behind BAR, found the "
     "text \"c\"\n"},
    {"FOO ( a $ 'b' 1.3 ) c",
     "  ? FOO ( a 'b' #1.3 )<FOO ( a $ 'b' 1.3 )>\n"
     "  ? c\n"},
    {"1.3 'a' \"b\" ( 'c' )",
     "  ?  #1.3\n"
     "  ?  'a'\n"
     "  ?  \"b\"\n"
     "  ?  ( 'c' )<( 'c' )>\n"
     "! double quotes <\"b\">: expected single quotes, found the text \"b\"\n"},
    {"( )", "  ?  ( )<( )>\n"},
    {"X-O ( 'x' 'y' ) X-P x X-Q",
     "    X-O ( 'x' 'y' )\n"
     "    X-P x\n"
     "    X-Q\n"
     "! quotes missing <x>: expected a quoted string behind X-P, found the "
     "word 'x'\n"
     "! value missing <X-Q>: expected a quoted string behind X-Q, found ')'\n"},
    {"X- 'x'", "  ? X- 'x'\n"},
    {"$ = : { \"",
     "! stray <$>: expected a keyword or ')', found '$'\n"
     "! stray <=>: expected a keyword or ')', found '='\n"
     "! stray <:>: expected a keyword or ')', found ':'\n"
     "! stray <{>: expected a keyword or ')', found '{'\n"
     "! stray <\">: expected a keyword or ')', found '\"'\n"},
    {"SYNTAX 1.3 { 64 } { a } {",
     "    SYNTAX ##1.3{64}<1.3 { 64 }>\n"
     "! length malformed <1.3 { 64 }>: expected a length such as {64}, found "
     "the number 1.3{64}\n"
     "! stray <{ a }>: expected a keyword or ')', found '{'\n"
     "! stray <{>: expected a keyword or ')', found '{'\n"},
};

INSTANTIATE_TEST_SUITE_P(Types, StrictClauseTest, testing::ValuesIn(kTypes));

}  // namespace
