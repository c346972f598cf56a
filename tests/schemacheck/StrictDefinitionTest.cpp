// The OIDs of definitions, and damage within them.
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

class StrictDefinitionTest : public testing::TestWithParam<ReadingCase> {};

TEST_P(StrictDefinitionTest, Definitions) {
  EXPECT_EQ(readingOf(GetParam().text), GetParam().reading);
}

constexpr ReadingCase kDefinitions[] = {
    // The OID.
    {"attributetypes=( a-oid NAME 'b' )",
     "attribute types: attributetypes =\n"
     "  <( a-oid NAME 'b' )>\n"
     "    oid a-oid\n"
     "    NAME 'b'\n"},
    {"attributetypes=( a-oid:1.2 )",
     "attribute types: attributetypes =\n"
     "  <( a-oid:1.2 )>\n"
     "    oid a-oid:1.2\n"},
    {"attributetypes=( NAME 'a' )",
     "attribute types: attributetypes =\n"
     "  <( NAME 'a' )>\n"
     "    oid (none)\n"
     "    NAME 'a'\n"
     "! OID missing <(>: expected an OID behind '(', found the word 'NAME'\n"},
    {"attributetypes=( name 'a' )",
     "attribute types: attributetypes =\n"
     "  <( name 'a' )>\n"
     "    oid (none)\n"
     "    NAME<name> 'a'<name 'a'>\n"
     "! OID missing <(>: expected an OID behind '(', found the word 'name'\n"
     "! keyword case <name>: expected NAME, found the word 'name'\n"},
    {"attributetypes=( name DESC 'a' )",
     "attribute types: attributetypes =\n"
     "  <( name DESC 'a' )>\n"
     "    oid name\n"
     "    DESC 'a'\n"},
    {"attributetypes=( )",
     "attribute types: attributetypes =\n"
     "  <( )>\n"
     "    oid (none)\n"
     "! OID missing <(>: expected an OID behind '(', found ')'\n"},
    {"attributetypes=( '1.2' NAME 'a' )",
     "attribute types: attributetypes =\n"
     "  <( '1.2' NAME 'a' )>\n"
     "    oid '1.2'\n"
     "    NAME 'a'\n"
     "! quotes unexpected <'1.2'>: expected a value without quotes behind '(', "
     "found the text '1.2'\n"},
    {"attributetypes=( \"1.2\" )",
     "attribute types: attributetypes =\n"
     "  <( \"1.2\" )>\n"
     "    oid \"1.2\"\n"
     "! double quotes <\"1.2\">: expected single quotes behind '(', found the "
     "text \"1.2\"\n"},
    {"attributetypes=( 1.2{3} )",
     "attribute types: attributetypes =\n"
     "  <( 1.2{3} )>\n"
     "    oid ##1.2{3}\n"
     "! length unexpected <1.2{3}>: expected a value without a length behind "
     "'(', found the number 1.2{3}\n"},
    {"attributetypes=( 1.2{x} )",
     "attribute types: attributetypes =\n"
     "  <( 1.2{x} )>\n"
     "    oid ##1.2{x}\n"
     "! length malformed <1.2{x}>: expected a length such as {64}, found the "
     "number 1.2{x}\n"},
    {"attributetypes=( $ NAME 'a' )",
     "attribute types: attributetypes =\n"
     "  <( $ NAME 'a' )>\n"
     "    oid (none)\n"
     "    NAME 'a'\n"
     "! OID missing <(>: expected an OID behind '(', found '$'\n"
     "! stray <$>: expected a keyword or ')', found '$'\n"},
    {"attributetypes=( 1.2 1.3 NAME 'a' )",
     "attribute types: attributetypes =\n"
     "  <( 1.2 1.3 NAME 'a' )>\n"
     "    oid #1.2\n"
     "  ?  #1.3\n"
     "    NAME 'a'\n"},
    {"attributetypes=(\r\n"
     "\t1.2 # a )\r\n"
     " NAME 'a'\r\n"
     ")\r\n",
     "attribute types: attributetypes =\n"
     "  <(\\r\\n\\t1.2 # a )\\r\\n NAME 'a'\\r\\n)>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"},
    // A parenthesis too many.
    {"attributetypes=( 1.2 NAME ( 'a' ) ) DESC 'b' )",
     "attribute types: attributetypes =\n"
     "  <( 1.2 NAME ( 'a' ) ) DESC 'b' )>\n"
     "    oid #1.2\n"
     "    NAME ( 'a' )\n"
     "    DESC 'b'\n"
     "! stray <)>: expected a keyword or ')', found ')'\n"},
    {"attributetypes=( 1.2 NAME 'a' ) )",
     "attribute types: attributetypes =\n"
     "  <( 1.2 NAME 'a' )>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "! stray <)>: expected the keyword of a section, found ')'\n"},
    {"attributetypes { ( 1.2 NAME 'a' ) ) ( 1.3 ) }",
     "attribute types: attributetypes {\n"
     "  <( 1.2 NAME 'a' )>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "! stray <)>: expected '(' or '}', found ')'\n"},
    {"attributetypes=( 1.2 ) desc 'b' )",
     "attribute types: attributetypes =\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "! stray <desc 'b' )>: expected the keyword of a section, found the word "
     "'desc'\n"},
    // A string that is not closed.
    {"attributetypes=( 1.2 NAME 'a )\n"
     "attributetypes=( 1.3 NAME 'b' )",
     "attribute types: attributetypes =\n"
     "  unclosed <( 1.2 NAME 'a )>\n"
     "    oid #1.2\n"
     "    NAME 'a )'<'a )>\n"
     "attribute types: attributetypes =\n"
     "  <( 1.3 NAME 'b' )>\n"
     "    oid #1.3\n"
     "    NAME 'b'\n"
     "! unclosed <(>: expected ')' at the end of the definition, found the "
     "word 'attributetypes'\n"
     "! quote unclosed <'a )>: expected a closing quote, found the end of the "
     "line\n"},
    {"attributetypes=( 1.2 NAME 'a\n"
     " DESC 'b' )\n",
     "attribute types: attributetypes =\n"
     "  <( 1.2 NAME 'a\\n DESC 'b' )>\n"
     "    oid #1.2\n"
     "    NAME 'a'<'a>\n"
     "    DESC 'b'\n"
     "! quote unclosed <'a>: expected a closing quote, found the end of the "
     "line\n"},
    {"attributetypes { ( 1.2 NAME 'a' DESC 'b )\r\n"
     " ( 1.3 NAME 'c' ) }",
     "attribute types: attributetypes {\n"
     "  unclosed <( 1.2 NAME 'a' DESC 'b )>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "    DESC 'b )'<'b )>\n"
     "  <( 1.3 NAME 'c' )>\n"
     "    oid #1.3\n"
     "    NAME 'c'\n"
     "! unclosed <(>: expected ')' at the end of the definition, found '('\n"
     "! quote unclosed <'b )>: expected a closing quote, found the end of the "
     "line\n"},
    {"attributetypes=( 1.2 NAME 'a' DESC 'b users' c' )\n"
     "attributetypes=( 1.3 NAME 'd' )",
     "attribute types: attributetypes =\n"
     "  unclosed <( 1.2 NAME 'a' DESC 'b users' c' )>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "    DESC 'b users'\n"
     "  ? c ' )'<' )><c' )>\n"
     "attribute types: attributetypes =\n"
     "  <( 1.3 NAME 'd' )>\n"
     "    oid #1.3\n"
     "    NAME 'd'\n"
     "! unclosed <(>: expected ')' at the end of the definition, found the "
     "word 'attributetypes'\n"
     "! quote unclosed <' )>: expected a closing quote, found the end of the "
     "line\n"},
    // Long texts are cut in messages.
    {"attributetypes=( 1.2 SUP '0123456789012345678901234567890123456789' SUP "
     "'01234567890123456789012345678901234567890' SUP 'a\n"
     "b' SUP '012345678901234567890123456789012345678\xC3\xA9' )",
     "attribute types: attributetypes =\n"
     "  <( 1.2 SUP '0123456789012345678901234567890123456789' SUP "
     "'01234567890123456789012345678901234567890' SUP 'a\\nb' SUP "
     "'012345678901234567890123456789012345678\xC3\xA9' )>\n"
     "    oid #1.2\n"
     "    SUP '0123456789012345678901234567890123456789'\n"
     "    SUP '01234567890123456789012345678901234567890'\n"
     "    SUP 'a\\nb'\n"
     "    SUP '012345678901234567890123456789012345678\xC3\xA9'\n"
     "! quotes unexpected <'0123456789012345678901234567890123456789'>: "
     "expected a value without quotes behind SUP, found the text "
     "'0123456789012345678901234567890123456789'\n"
     "! quotes unexpected <'01234567890123456789012345678901234567890'>: "
     "expected a value without quotes behind SUP, found the text "
     "'0123456789012345678901234567890123456789...'\n"
     "! quotes unexpected <'a\\nb'>: expected a value without quotes behind "
     "SUP, found the text 'a...'\n"
     "! quotes unexpected <'012345678901234567890123456789012345678\xC3\xA9'>: "
     "expected a value without quotes behind SUP, found the text "
     "'012345678901234567890123456789012345678...'\n"},
};

INSTANTIATE_TEST_SUITE_P(Definitions, StrictDefinitionTest,
                         testing::ValuesIn(kDefinitions));

}  // namespace
