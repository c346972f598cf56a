// Readings of what is damaged in ways of its own.
#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>

#include "StrictTesting.h"

using schemacheck::kMostFaults;
using schemacheck::Reading;
using schemacheck::readingOf;
using schemacheck::readStrictly;
using schemacheck::SourceText;

namespace {

struct OddCase {
  const char *name;
  std::string text;
  std::string reading;
};

void PrintTo(const OddCase &odd, std::ostream *out) { *out << odd.name; }

std::string nameOf(const testing::TestParamInfo<OddCase> &info) {
  return info.param.name;
}

class StrictOddTest : public testing::TestWithParam<OddCase> {};

TEST_P(StrictOddTest, IsReadAsItIsMeant) {
  EXPECT_EQ(readingOf(GetParam().text), GetParam().reading);
}

const OddCase kClauses[] = {
    {"TwoDollarsWithoutParentheses",
     "objectclasses=( 2.1 NAME 'k' MUST a $ b $ c MAY d )\n",
     R"(object classes: objectclasses =
  <( 2.1 NAME 'k' MUST a $ b $ c MAY d )>
    oid #2.1
    NAME 'k'
    MUST a b c<MUST a $ b $ c>
    MAY d
! list unopened <$>: expected parentheses around the list of MUST, found '$'
)"},
    {"WordsUpToAClause", "attributetypes=( 1.1 DESC one two three NAME 'a' )\n",
     R"(attribute types: attributetypes =
  <( 1.1 DESC one two three NAME 'a' )>
    oid #1.1
    DESC one two three
    NAME 'a'
! quotes missing <one>: expected a quoted string behind DESC, found the word 'one'
)"},
    {"WordsUpToAnUnknownClause", "attributetypes=( 1.1 DESC one two 'x' )\n",
     R"(attribute types: attributetypes =
  <( 1.1 DESC one two 'x' )>
    oid #1.1
    DESC one
  ? two 'x'
! quotes missing <one>: expected a quoted string behind DESC, found the word 'one'
)"},
    {"WordsUpToAnUnknownClauseWithAList",
     "attributetypes=( 1.1 DESC one two (three) )\n",
     R"(attribute types: attributetypes =
  <( 1.1 DESC one two (three) )>
    oid #1.1
    DESC one
  ? two ( three )<two (three)>
! quotes missing <one>: expected a quoted string behind DESC, found the word 'one'
)"},
    {"WordsUpToASection",
     "attributetypes=( 1.1 DESC one attributetypes=( 1.2 NAME 'b' )\n",
     R"(attribute types: attributetypes =
  unclosed <( 1.1 DESC one>
    oid #1.1
    DESC one
attribute types: attributetypes =
  <( 1.2 NAME 'b' )>
    oid #1.2
    NAME 'b'
! unclosed <(>: expected ')' at the end of the definition, found the word 'attributetypes'
! quotes missing <one>: expected a quoted string behind DESC, found the word 'one'
)"},
    {"WordsWithAKeywordInLowerCase",
     "attributetypes=( 1.1 DESC x syntax 1.2 )\n",
     R"(attribute types: attributetypes =
  <( 1.1 DESC x syntax 1.2 )>
    oid #1.1
    DESC x syntax 1.2
! quotes missing <x>: expected a quoted string behind DESC, found the word 'x'
)"},
    {"WordsUpToAKeywordWithAQuotedValue",
     "attributetypes=( 1.1 DESC x SYNTAX 'b' )\n",
     R"(attribute types: attributetypes =
  <( 1.1 DESC x SYNTAX 'b' )>
    oid #1.1
    DESC x
    SYNTAX 'b'
! quotes missing <x>: expected a quoted string behind DESC, found the word 'x'
! quotes unexpected <'b'>: expected a value without quotes behind SYNTAX, found the text 'b'
)"},
    {"AKeywordInLowerCaseInThePlaceOfAnOid",
     "attributetypes=( syntax NAME 'a' DESC 'n' )\n",
     R"(attribute types: attributetypes =
  <( syntax NAME 'a' DESC 'n' )>
    oid syntax
    NAME 'a'
    DESC 'n'
)"},
    {"AnExtensionInLowerCase", "attributetypes=( 1.1 NAME 'a' x-a~b 'v' )\n",
     R"(attribute types: attributetypes =
  <( 1.1 NAME 'a' x-a~b 'v' )>
    oid #1.1
    NAME 'a'
    X-A~B<x-a~b> 'v'<x-a~b 'v'>
! keyword case <x-a~b>: expected X-A~B, found the word 'x-a~b'
)"},
    {"ATextThatBeginsNowhere",
     "attributetypes=( 1.1 SUP '" + std::string(41, '\x80') + "' )\n",
     "attribute types: attributetypes =\n  <( 1.1 SUP '" +
         std::string(41, '\x80') + "' )>\n    oid #1.1\n    SUP '" +
         std::string(41, '\x80') + "'\n! quotes unexpected <'" +
         std::string(41, '\x80') +
         "'>: expected a value without quotes behind SUP, found the text "
         "'...'\n"},
};

INSTANTIATE_TEST_SUITE_P(Clauses, StrictOddTest, testing::ValuesIn(kClauses),
                         nameOf);

const OddCase kOutside[] = {
    {"AKeywordThatBeginsNoClause", "attributetypes=( 1.1 NAME 'a' ) DESC )\n",
     R"(attribute types: attributetypes =
  <( 1.1 NAME 'a' )>
    oid #1.1
    NAME 'a'
! stray <DESC )>: expected the keyword of a section, found the word 'DESC'
)"},
    {"ANumberThatIsNoOid", "odd ( 4 x )\n",
     "! stray <odd ( 4 x )>: expected the keyword of a section, found the word "
     "'odd'\n"},
    {"AWordInThePlaceOfAnOid", "odd ( foo DESC bar )\n",
     "! stray <odd ( foo DESC bar )>: expected the keyword of a section, found "
     "the word 'odd'\n"},
    {"ANameWithoutQuotes", "odd ( 1.1 NAME x )\n",
     "! stray <odd>: expected the keyword of a section, found the word 'odd'\n"
     "! definition outside <( 1.1 NAME x )>: expected the keyword of a section "
     "before the definition, found '('\n"},
    {"AnUnclosedDefinitionBeforeASection",
     "( 4.1 x attributetypes=( 1.1 NAME 'a' )\n",
     R"(attribute types: attributetypes =
  <( 1.1 NAME 'a' )>
    oid #1.1
    NAME 'a'
! definition outside <( 4.1 x>: expected the keyword of a section before the definition, found '('
)"},
    {"AnUnclosedDefinitionBeforeAnother", "( 4.1 ( x ( 1.2 NAME 'b' )\n",
     R"(! definition outside <( 4.1 ( x>: expected the keyword of a section before the definition, found '('
! definition outside <( 1.2 NAME 'b' )>: expected the keyword of a section before the definition, found '('
)"},
};

INSTANTIATE_TEST_SUITE_P(Outside, StrictOddTest, testing::ValuesIn(kOutside),
                         nameOf);

// No token behind the dollar has been looked at by then; so the definition
// lacks its end, which is one fault more.
TEST(StrictReadingTest, TheLastFaultThatCountsEndsIt) {
  const std::string one = "objectclasses=( 2.1 NAME 'k' MUST a $ b )\n";
  std::string text;
  for (std::size_t i = 0; i <= kMostFaults; ++i) {
    text += one;
  }
  const Reading reading = readStrictly(SourceText("file", text));
  EXPECT_EQ(reading.faults.size(), kMostFaults + 1);
  EXPECT_EQ(reading.end, (kMostFaults - 1) * one.size() + one.find('$') + 1);
  EXPECT_EQ(reading.sections.size(), kMostFaults);
}

}  // namespace
