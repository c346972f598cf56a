// The sections of a file, and what stands outside of them.
#include "StrictReader.h"

#include <gtest/gtest.h>

#include <ostream>

#include "StrictTesting.h"

using schemacheck::Definition;
using schemacheck::Reading;
using schemacheck::readingOf;
using schemacheck::readStrictly;
using schemacheck::SourceText;

namespace {

struct ReadingCase {
  const char *text;
  const char *reading;
};

void PrintTo(const ReadingCase &readingCase, std::ostream *out) {
  *out << readingCase.text;
}

class StrictReaderTest : public testing::TestWithParam<ReadingCase> {};

TEST_P(StrictReaderTest, Sections) {
  EXPECT_EQ(readingOf(GetParam().text), GetParam().reading);
}

constexpr ReadingCase kSections[] = {
    {"", ""},
    {"# nothing\n"
     " \r\n",
     ""},
    {"attributetypes=( 1.2 )",
     "attribute types: attributetypes =\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"},
    {"objectclasses = # a\n"
     "( 1.2 )\n",
     "object classes: objectclasses =\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"},
    {"QORAttributetypes=( 1.2 )\n",
     "storage definitions: QORAttributetypes =\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"},
    {"attributetypes=( 1.2 NAME 'a' )\n"
     "objectclasses=( 1.3 NAME 'b' ) QORAttributetypes=( 1.2 LENGTH 5 )",
     "attribute types: attributetypes =\n"
     "  <( 1.2 NAME 'a' )>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "object classes: objectclasses =\n"
     "  <( 1.3 NAME 'b' )>\n"
     "    oid #1.3\n"
     "    NAME 'b'\n"
     "storage definitions: QORAttributetypes =\n"
     "  <( 1.2 LENGTH 5 )>\n"
     "    oid #1.2\n"
     "    LENGTH #5\n"},
    {"attributetypes { ( 1.2 ) # a\n"
     "( 1.3 NAME 'a' )\n"
     "}\n"
     "objectclasses{}",
     "attribute types: attributetypes {\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "  <( 1.3 NAME 'a' )>\n"
     "    oid #1.3\n"
     "    NAME 'a'\n"
     "object classes: objectclasses {\n"},
    // The spelling is kept, whatever it is.
    {"attributeTypes=(1.2)OBJECTCLASSES{(1.3)}qorattributeTypes=(1.4)",
     "attribute types: attributeTypes =\n"
     "  <(1.2)>\n"
     "    oid #1.2\n"
     "object classes: OBJECTCLASSES {\n"
     "  <(1.3)>\n"
     "    oid #1.3\n"
     "storage definitions: qorattributeTypes =\n"
     "  <(1.4)>\n"
     "    oid #1.4\n"},
    {"attributetype=( 1.2 ) objectClass { ( 1.3 ) } qorattributetype: ( 1.4 ) "
     "attributetype ( 1.5 )",
     "attribute types: attributetype =\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "object classes: objectClass {\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "storage definitions: qorattributetype without opener\n"
     "  <( 1.4 )>\n"
     "    oid #1.4\n"
     "attribute types: attributetype without opener\n"
     "  <( 1.5 )>\n"
     "    oid #1.5\n"
     "! section opener <qorattributetype>: expected '=' or '{' behind "
     "qorattributetype, found ':'\n"
     "! section opener <attributetype>: expected '=' or '{' behind "
     "attributetype, found '('\n"},
    {"attributetype objectclass qorattributetype )",
     "! stray <attributetype objectclass qorattributetype )>: expected the "
     "keyword of a section, found the word 'attributetype'\n"},
    // No opener.
    {"attributetypes ( 1.2 NAME 'a' ) objectclasses: ( 1.3 ) qorattributetypes",
     "attribute types: attributetypes without opener\n"
     "  <( 1.2 NAME 'a' )>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "object classes: objectclasses without opener\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "storage definitions: qorattributetypes without opener\n"
     "! section opener <attributetypes>: expected '=' or '{' behind "
     "attributetypes, found '('\n"
     "! section opener <objectclasses>: expected '=' or '{' behind "
     "objectclasses, found ':'\n"
     "! section opener <qorattributetypes>: expected '=' or '{' behind "
     "qorattributetypes, found the end of the file\n"},
    {"attributetypes 1.2 NAME 'a'",
     "attribute types: attributetypes without opener\n"
     "! section opener <attributetypes>: expected '=' or '{' behind "
     "attributetypes, found the number 1.2\n"
     "! stray <1.2 NAME 'a'>: expected the keyword of a section, found the "
     "number 1.2\n"},
    {"attributetypes { ( 1.2 ) } }",
     "attribute types: attributetypes {\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "! stray <}>: expected the keyword of a section, found '}'\n"},
    {"objectclasses={ ( 1.2 ) ( 1.3 ) }",
     "object classes: objectclasses {\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "! section opener <objectclasses>: expected either '=' or '{' behind "
     "objectclasses, found both\n"},
    {"objectclasses=:( 1.2 ) objectclasses==( 1.3 )",
     "object classes: objectclasses =\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "object classes: objectclasses =\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "! stray <:>: expected '(' behind '=', found ':'\n"
     "! stray <=>: expected '(' behind '=', found '='\n"},
    // No definition.
    {"attributetypes=",
     "attribute types: attributetypes =\n"
     "! definition missing <attributetypes>: expected '(' behind '=', found "
     "the end of the file\n"},
    {"attributetypes=\n"
     "objectclasses=( 1.2 )",
     "attribute types: attributetypes =\n"
     "object classes: objectclasses =\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "! definition missing <attributetypes>: expected '(' behind '=', found "
     "the word 'objectclasses'\n"},
    {"attributetypes= x ( 1.2 NAME 'a' )",
     "attribute types: attributetypes =\n"
     "! definition missing <attributetypes>: expected '(' behind '=', found "
     "the word 'x'\n"
     "! stray <x>: expected the keyword of a section, found the word 'x'\n"
     "! definition outside <( 1.2 NAME 'a' )>: expected the keyword of a "
     "section before the definition, found '('\n"},
    {"attributetypes",
     "attribute types: attributetypes without opener\n"
     "! section opener <attributetypes>: expected '=' or '{' behind "
     "attributetypes, found the end of the file\n"},
    // No parenthesis at its start.
    {"attributetypes= 1.2 NAME 'a' )",
     "attribute types: attributetypes =\n"
     "  <1.2 NAME 'a' )>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "! unopened <1.2>: expected '(' at the start of the definition, found the "
     "number 1.2\n"},
    {"attributetypes= a NAME 'a' )",
     "attribute types: attributetypes =\n"
     "  <a NAME 'a' )>\n"
     "    oid a\n"
     "    NAME 'a'\n"
     "! unopened <a>: expected '(' at the start of the definition, found the "
     "word 'a'\n"},
    {"attributetypes= NAME 'a' )",
     "attribute types: attributetypes =\n"
     "  <NAME 'a' )>\n"
     "    oid (none)\n"
     "    NAME 'a'\n"
     "! unopened <NAME>: expected '(' at the start of the definition, found "
     "the word 'NAME'\n"
     "! OID missing <N>: expected an OID behind '(', found the word 'NAME'\n"},
    {"attributetypes= 1.2 )",
     "attribute types: attributetypes =\n"
     "! definition missing <attributetypes>: expected '(' behind '=', found "
     "the number 1.2\n"
     "! stray <1.2 )>: expected the keyword of a section, found the number "
     "1.2\n"},
    {"attributetypes { 1.2 NAME 'a' ) 1.3 DESC 'b' ) }",
     "attribute types: attributetypes {\n"
     "  <1.2 NAME 'a' )>\n"
     "    oid #1.2\n"
     "    NAME 'a'\n"
     "  <1.3 DESC 'b' )>\n"
     "    oid #1.3\n"
     "    DESC 'b'\n"
     "! unopened <1.2>: expected '(' at the start of the definition, found the "
     "number 1.2\n"
     "! unopened <1.3>: expected '(' at the start of the definition, found the "
     "number 1.3\n"},
    // Stray text.
    {"a ( b ) 'c\n"
     "' 1 $\n"
     "attributetypes=( 1.2 ) d ) e\n"
     "objectclasses=( 1.3 )\n"
     "f",
     "attribute types: attributetypes =\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "object classes: objectclasses =\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "! stray <a ( b ) 'c\\n' 1 $>: expected the keyword of a section, found "
     "the word 'a'\n"
     "! stray <d ) e>: expected the keyword of a section, found the word 'd'\n"
     "! stray <f>: expected the keyword of a section, found the word 'f'\n"},
    {"a attributetypes=( 1.2 ) b\n"
     "c objectclasses=( 1.3 )",
     "attribute types: attributetypes =\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "object classes: objectclasses =\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "! stray <a>: expected the keyword of a section, found the word 'a'\n"},
    {"attributetypes { a ( b ) c\n"
     " ( 1.2 ) ) d\n"
     " ( 1.3 ) }",
     "attribute types: attributetypes {\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "! stray <a ( b ) c>: expected '(' or '}', found the word 'a'\n"
     "! stray <) d>: expected '(' or '}', found ')'\n"},
    {"attributetypes { ( a b ) ( c ) d ( e ) ( 1.2 ) = ( f NAME 'g' ) }",
     "attribute types: attributetypes {\n"
     "  <( a b )>\n"
     "    oid a\n"
     "  ? b\n"
     "  <( c )>\n"
     "    oid c\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "  <( f NAME 'g' )>\n"
     "    oid f\n"
     "    NAME 'g'\n"
     "! stray <d ( e )>: expected '(' or '}', found the word 'd'\n"},
    // Definitions outside.
    {"( 1.2 NAME ( 'a' ) )\n"
     "attributetypes=( 1.3 )\n"
     "( 1.4 )",
     "attribute types: attributetypes =\n"
     "  <( 1.3 )>\n"
     "    oid #1.3\n"
     "! definition outside <( 1.2 NAME ( 'a' ) )>: expected the keyword of a "
     "section before the definition, found '('\n"
     "! definition outside <( 1.4 )>: expected the keyword of a section before "
     "the definition, found '('\n"},
    {"attributetypes=( 1.2 ) ( a NAME 'b' ) ( c MUST ( d ) ) ( e )",
     "attribute types: attributetypes =\n"
     "  <( 1.2 )>\n"
     "    oid #1.2\n"
     "! definition outside <( a NAME 'b' )>: expected the keyword of a section "
     "before the definition, found '('\n"
     "! definition outside <( c MUST ( d ) )>: expected the keyword of a "
     "section before the definition, found '('\n"
     "! stray <( e )>: expected the keyword of a section, found '('\n"},
    {"( 1.2 NAME 'a' DESC 'b'\n"
     "( 1.3 NAME 'c' )\n"
     "objectclasses=( 1.4 )",
     "object classes: objectclasses =\n"
     "  <( 1.4 )>\n"
     "    oid #1.4\n"
     "! definition outside <( 1.2 NAME 'a' DESC 'b'>: expected the keyword of "
     "a section before the definition, found '('\n"
     "! definition outside <( 1.3 NAME 'c' )>: expected the keyword of a "
     "section before the definition, found '('\n"},
    {"( 1.2 ( ( 1.3 )",
     "! definition outside <( 1.2 ( ( 1.3 )>: expected the keyword of a "
     "section before the definition, found '('\n"},
};

INSTANTIATE_TEST_SUITE_P(Sections, StrictReaderTest,
                         testing::ValuesIn(kSections));

TEST(StrictDefinitionFindTest, FindsTheFirstClauseWithTheKeyword) {
  const Reading reading = readStrictly(
      SourceText("file", "objectclasses=( 1.2 may a MAY b FOO 'c' )"));
  const Definition &definition = reading.sections.at(0).definitions[0];
  EXPECT_EQ(definition.find("MAY"), &definition.clauses[0]);
  EXPECT_EQ(definition.find("FOO"), &definition.clauses[2]);
  EXPECT_EQ(definition.find("MUST"), nullptr);
  EXPECT_EQ(definition.find("may"), nullptr);
}

}  // namespace
