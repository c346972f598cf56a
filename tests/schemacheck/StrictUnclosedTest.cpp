// Where definitions end that are not closed.
#include <gtest/gtest.h>

#include <ostream>

#include "StrictTesting.h"

using schemacheck::readingOf;

namespace {

struct ReadingCase {
  const char *text;
  const char *reading;
};

void PrintTo(const ReadingCase &readingCase, std::ostream *out) {
  *out << readingCase.text;
}

class StrictUnclosedTest : public testing::TestWithParam<ReadingCase> {};

TEST_P(StrictUnclosedTest, Unclosed) {
  EXPECT_EQ(readingOf(GetParam().text), GetParam().reading);
}

constexpr ReadingCase kUnclosed[] = {
    // A definition that is not closed ends at the next section.
    {"attributetypes=( 1.2 NAME 'a'\n"
     "attributetypes=( 1.3 NAME 'b' )",
     "attribute types: attributetypes =\n"
     "  unclosed <( 1.2 NAME 'a'>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "attribute types: attributetypes =\n"
     "  <( 1.3 NAME 'b' )>\n"
     "    oid #1.3\n"
     "    NAME 'b'\n"
     "! unclosed <(>: expected ')' at the end of the definition, found the "
     "word 'attributetypes'\n"},
    {"attributetypes=( 1.2 NAME ( 'a'\n"
     "OBJECTCLASSES { ( 1.3 ) }",
     "attribute types: attributetypes =\n"
     "  unclosed <( 1.2 NAME ( 'a'>\n"
     "    oid #1.2\n"
     "    NAME ( 'a' )<NAME ( 'a'>\n"
     "object classes: OBJECTCLASSES {\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "! unclosed <(>: expected ')' at the end of the definition, found the "
     "word 'OBJECTCLASSES'\n"
     "! list unclosed <(>: expected ')' at the end of the list of NAME, found "
     "the word 'OBJECTCLASSES'\n"},
    {"attributetypes=( 1.2 NAME 'a' SUP\n"
     "objectclasses=( 1.3 )",
     "attribute types: attributetypes =\n"
     "  unclosed <( 1.2 NAME 'a' SUP>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "    SUP\n"
     "object classes: objectclasses =\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "! unclosed <(>: expected ')' at the end of the definition, found the "
     "word 'objectclasses'\n"
     "! value missing <SUP>: expected a name or an OID behind SUP, found the "
     "word 'objectclasses'\n"},
    {"attributetype ( 1.2 NAME 'a'\n"
     "attributetype ( 1.3 NAME 'b' )",
     "attribute types: attributetype without opener\n"
     "  unclosed <( 1.2 NAME 'a'>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "attribute types: attributetype without opener\n"
     "  <( 1.3 NAME 'b' )>\n"
     "    oid #1.3\n"
     "    NAME 'b'\n"
     "! section opener <attributetype>: expected '=' or '{' behind "
     "attributetype, found '('\n"
     "! unclosed <(>: expected ')' at the end of the definition, found the "
     "word 'attributetype'\n"
     "! section opener <attributetype>: expected '=' or '{' behind "
     "attributetype, found '('\n"},
    {"objectclasses=( 1.2 MUST ( a $ b\n"
     "objectclasses: ( 1.3 NAME 'c' )",
     "object classes: objectclasses =\n"
     "  unclosed <( 1.2 MUST ( a $ b>\n"
     "    oid #1.2\n"
     "    MUST ( a b )<MUST ( a $ b>\n"
     "object classes: objectclasses without opener\n"
     "  <( 1.3 NAME 'c' )>\n"
     "    oid #1.3\n"
     "    NAME 'c'\n"
     "! unclosed <(>: expected ')' at the end of the definition, found the "
     "word 'objectclasses'\n"
     "! list unclosed <(>: expected ')' at the end of the list of MUST, found "
     "the word 'objectclasses'\n"
     "! section opener <objectclasses>: expected '=' or '{' behind "
     "objectclasses, found ':'\n"},
    {"attributetypes=( 1.2 DESC a\n"
     "attributetypes=( 1.3 )",
     "attribute types: attributetypes =\n"
     "  unclosed <( 1.2 DESC a>\n"
     "    oid #1.2\n"
     "    DESC a\n"
     "attribute types: attributetypes =\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "! unclosed <(>: expected ')' at the end of the definition, found the "
     "word 'attributetypes'\n"
     "! quotes missing <a>: expected a quoted string behind DESC, found the "
     "word 'a'\n"},
    {"objectclasses=( 1.2 MUST objectclasses MAY attributetypes SUP ( "
     "objectclass ) )",
     "object classes: objectclasses =\n"
     "  <( 1.2 MUST objectclasses MAY attributetypes SUP ( objectclass ) )>\n"
     "    oid #1.2\n"
     "    MUST objectclasses\n"
     "    MAY attributetypes\n"
     "    SUP ( objectclass )\n"},
    // At the end of a block, or of the file.
    {"attributetypes { ( 1.2 NAME 'a' }",
     "attribute types: attributetypes {\n"
     "  unclosed <( 1.2 NAME 'a'>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "! unclosed <(>: expected ')' at the end of the definition, found '}'\n"},
    {"attributetypes=( 1.2 NAME 'a' }",
     "attribute types: attributetypes =\n"
     "  unclosed <( 1.2 NAME 'a'>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "! unclosed <(>: expected ')' at the end of the definition, found '}'\n"
     "! stray <}>: expected the keyword of a section, found '}'\n"},
    {"attributetypes { ( 1.2 NAME 'a'",
     "attribute types: attributetypes { unclosed\n"
     "  unclosed <( 1.2 NAME 'a'>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "! section unclosed <attributetypes>: expected '}' at the end of the "
     "block of attributetypes, found the end of the file\n"
     "! unclosed <(>: expected ')' at the end of the definition, found the end "
     "of the file\n"},
    {"attributetypes=(",
     "attribute types: attributetypes =\n"
     "  unclosed <(>\n"
     "    oid (none)\n"
     "! OID missing <(>: expected an OID behind '(', found the end of the "
     "file\n"
     "! unclosed <(>: expected ')' at the end of the definition, found the end "
     "of the file\n"},
    {"attributetypes { ( 1.2 )",
     "attribute types: attributetypes { unclosed\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "! section unclosed <attributetypes>: expected '}' at the end of the "
     "block of attributetypes, found the end of the file\n"},
    {"attributetypes { ( 1.2 ) objectclasses { ( 1.3 ) }",
     "attribute types: attributetypes { unclosed\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "object classes: objectclasses {\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "! section unclosed <attributetypes>: expected '}' at the end of the "
     "block of attributetypes, found the word 'objectclasses'\n"},
    {"attributetypes { ( 1.2 ) a objectclasses b }",
     "attribute types: attributetypes {\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "! stray <a objectclasses b>: expected '(' or '}', found the word 'a'\n"},
    // At the next definition.
    {"objectclasses { ( 1.2 NAME 'a' MUST b ( 1.3 NAME 'c' ) }",
     "object classes: objectclasses {\n"
     "  unclosed <( 1.2 NAME 'a' MUST b>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "    MUST b\n"
     "  <( 1.3 NAME 'c' )>\n"
     "    oid #1.3\n"
     "    NAME 'c'\n"
     "! unclosed <(>: expected ')' at the end of the definition, found '('\n"},
    {"objectclasses { ( 1.2 SUP a ( 1.3 ) }",
     "object classes: objectclasses {\n"
     "  unclosed <( 1.2 SUP a>\n"
     "    oid #1.2\n"
     "    SUP a\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "! unclosed <(>: expected ')' at the end of the definition, found '('\n"},
    {"objectclasses { ( 1.2 SUP a ( b-oid NAME 'c' ) }",
     "object classes: objectclasses {\n"
     "  unclosed <( 1.2 SUP a>\n"
     "    oid #1.2\n"
     "    SUP a\n"
     "  <( b-oid NAME 'c' )>\n"
     "    oid b-oid\n"
     "    NAME 'c'\n"
     "! unclosed <(>: expected ')' at the end of the definition, found '('\n"},
    {"objectclasses { ( 1.2 MUST ( a $ b ( 1.3 NAME 'c' ) }",
     "object classes: objectclasses {\n"
     "  unclosed <( 1.2 MUST ( a $ b>\n"
     "    oid #1.2\n"
     "    MUST ( a b )<MUST ( a $ b>\n"
     "  <( 1.3 NAME 'c' )>\n"
     "    oid #1.3\n"
     "    NAME 'c'\n"
     "! unclosed <(>: expected ')' at the end of the definition, found '('\n"
     "! list unclosed <(>: expected ')' at the end of the list of MUST, found "
     "'('\n"},
    {"objectclasses { ( 1.2 NAME ( 1.3 NAME ( 'c' ) ) }",
     "object classes: objectclasses {\n"
     "  unclosed <( 1.2 NAME>\n"
     "    oid #1.2\n"
     "    NAME\n"
     "  <( 1.3 NAME ( 'c' ) )>\n"
     "    oid #1.3\n"
     "    NAME ( 'c' )\n"
     "! unclosed <(>: expected ')' at the end of the definition, found '('\n"},
    {"objectclasses { ( 1.2 MUST ( 1.3 MAY ( c ) ) }",
     "object classes: objectclasses {\n"
     "  <( 1.2 MUST ( 1.3 MAY ( c ) )>\n"
     "    oid #1.2\n"
     "    MUST ( #1.3 )<MUST ( 1.3>\n"
     "    MAY ( c )\n"
     "! list unclosed <(>: expected ')' at the end of the list of MUST, found "
     "the word 'MAY'\n"},
    {"objectclasses=( 1.2 NAME 'a' ( 1.3 NAME 'b' )\n"
     "objectclasses=( 1.4 )",
     "object classes: objectclasses =\n"
     "  unclosed <( 1.2 NAME 'a'>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "object classes: objectclasses =\n"
     "  <( 1.4 )>\n"
     "    oid #1.4\n"
     "! unclosed <(>: expected ')' at the end of the definition, found '('\n"
     "! definition outside <( 1.3 NAME 'b' )>: expected the keyword of a "
     "section before the definition, found '('\n"},
};

INSTANTIATE_TEST_SUITE_P(Unclosed, StrictUnclosedTest,
                         testing::ValuesIn(kUnclosed));

}  // namespace
