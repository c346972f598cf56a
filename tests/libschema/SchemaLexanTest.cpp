// What the analyser makes of a text: the complete list of its tokens.
#include "SchemaLexan.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "libschema/SchemaLexanTesting.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

using namespace std::string_literals;

namespace {

struct Case {
  const char *name;
  std::string text;
  std::string tokens;
};

// For lists of tests, which give a test one line.
std::ostream &operator<<(std::ostream &out, const Case &each) {
  return out << each.name;
}

std::string nameOf(const testing::TestParamInfo<Case> &info) {
  return info.param.name;
}

// The tokens of a file with this text.
std::string scan(const std::string &text) {
  const TemporaryDirectory directory;
  directory.write("V3.user.at", text);
  SchemaLexan lexan(directory.string(), "V3.user.at");
  EXPECT_TRUE(lexan.fileIsOpen());
  return allTokens(lexan);
}

// The same tokens, each but the first reached with match().
std::string scanByMatching(const std::string &text) {
  const TemporaryDirectory directory;
  directory.write("V3.user.at", text);
  SchemaLexan lexan(directory.string(), "V3.user.at");
  std::string list;
  int line = 0;
  lexan.match(-1);
  for (std::size_t count = 0; count <= text.size(); ++count) {
    if (lexan.getLineNumber() != line) {
      line = lexan.getLineNumber();
      list += std::to_string(line) + ": ";
    }
    if (lexan.getCurrentToken() == TOK_DONE) {
      return list + "TOK_DONE";
    }
    list += currentToken(lexan) + ' ';
    lexan.match(lexan.getCurrentToken());
  }
  return list + "and so on";
}

// The list of tokens with each line number one higher.
std::string oneLineBelow(const std::string &tokens) {
  std::string moved;
  for (std::size_t at = 0; at < tokens.size(); ++at) {
    const bool number = tokens.compare(at + 1, 2, ": ") == 0 &&
                        (at == 0 || tokens[at - 1] == ' ');
    moved += static_cast<char>(tokens[at] + (number ? 1 : 0));
  }
  return moved;
}

class SchemaLexanTest : public testing::TestWithParam<Case> {};

TEST_P(SchemaLexanTest, GivesTheTokens) {
  const auto &[name, text, tokens] = GetParam();
  EXPECT_EQ(scan(text), tokens);
  EXPECT_EQ(scanByMatching(text), tokens);
  EXPECT_EQ(scan("# 'a' (1.2{3\n" + text), oneLineBelow(tokens));
  const TraceRecorder trace(~0U);
  EXPECT_EQ(scan(text), tokens) << "traced";
}

const std::vector<Case> kLayout = {
    {"AnEmptyFile", "", "1: TOK_DONE"},
    {"ANewlineAlone", "\n", "2: TOK_DONE"},
    {"BlanksAndTabs", " \t  \t", "1: TOK_DONE"},
    {"BlanksAndANewline", " \t \n \t", "2: TOK_DONE"},
    {"EmptyLinesCount", "\n\n(\n\n)\n", "3: '(' 5: ')' 6: TOK_DONE"},
    {"ACommentLineCounts", "# 'text' (1\n(\n", "2: '(' 3: TOK_DONE"},
    {"AnEmptyComment", "#\n(\n", "2: '(' 3: TOK_DONE"},
    {"CommentsBelowEachOther", "#\n##\n\n # a # b\n(", "5: '(' TOK_DONE"},
    {"ACommentBehindAToken", "( # )\n)\n", "1: '(' 2: ')' 3: TOK_DONE"},
    {"ACommentThatTouchesAWord", "cn#)\n)\n",
     "1: TOK_ID(cn) 2: ')' 3: TOK_DONE"},
    {"ACommentThatTouchesANumber", "2.5#)\n)\n",
     "1: TOK_NUMBER(2.5) 2: ')' 3: TOK_DONE"},
    {"ACommentCutOffByTheEndCountsALine", "# text", "2: TOK_DONE"},
    {"AHashAtTheEndCountsALine", "(#", "1: '(' 2: TOK_DONE"},
    {"ACommentHoldsAnyByte", "# \t\r\0\xff'{\n("s, "2: '(' TOK_DONE"},
    {"TheNewlineBehindAWordIsNotReachedWithIt", "cn\nsn\n",
     "1: TOK_ID(cn) 2: TOK_ID(sn) 3: TOK_DONE"},
};

const std::vector<Case> kCharacters = {
    {"Parentheses", "()\n", "1: '(' ')' 2: TOK_DONE"},
    {"AllPunctuation", "!\"$%&()*+,./:;<=>?@[\\]^_`{|}~\n",
     "1: '!' '\"' '$' '%' '&' '(' ')' '*' '+' ',' '.' '/' ':' ';' '<' '=' '>' "
     "'?' '@' '[' '\\' ']' '^' '_' '`' '{' '|' '}' '~' 2: TOK_DONE"},
    {"ACarriageReturnIsACharacter", "(\r\n)\r\n",
     "1: '(' 13 2: ')' 13 3: TOK_DONE"},
    {"OtherControlCharacters", "\v\f\x01\x7f\n", "1: 11 12 1 127 2: TOK_DONE"},
    {"ANulByte", "(\0)\n"s, "1: '(' 0 ')' 2: TOK_DONE"},
    {"BytesOf128AndMore", "\x80\xe9\xff\n", "1: 128 233 255 2: TOK_DONE"},
    {"TheByte255IsNotTheEnd", "(\xff)", "1: '(' 255 ')' TOK_DONE"},
    {"BytesOf128AndMoreEndAWord", "caf\xc3\xa9s\n",
     "1: TOK_ID(caf) 195 169 TOK_ID(s) 2: TOK_DONE"},
    {"AnUnderscoreStartsNoWord", "_a_b\n", "1: '_' TOK_ID(a_b) 2: TOK_DONE"},
    {"ADotStartsNoNumber", ".5\n", "1: '.' TOK_NUMBER(5) 2: TOK_DONE"},
};

const std::vector<Case> kNumbers = {
    {"AnOid", "2.5.4.3\n", "1: TOK_NUMBER(2.5.4.3) 2: TOK_DONE"},
    {"Digits", "0123456789\n", "1: TOK_NUMBER(0123456789) 2: TOK_DONE"},
    {"DotsOfAnyNumberAndPlace", "1..2.\n", "1: TOK_NUMBER(1..2.) 2: TOK_DONE"},
    {"TwoNumbers", "1.2 3.4\n",
     "1: TOK_NUMBER(1.2) TOK_NUMBER(3.4) 2: TOK_DONE"},
    {"ALetterEndsIt", "12ab3\n", "1: TOK_NUMBER(12) TOK_ID(ab3) 2: TOK_DONE"},
    {"AHyphenEndsIt", "1-2\n", "1: TOK_NUMBER(1) TOK_ID(-2) 2: TOK_DONE"},
    {"AnUnderscoreEndsIt", "1_2\n",
     "1: TOK_NUMBER(1) '_' TOK_NUMBER(2) 2: TOK_DONE"},
    {"AQuoteEndsIt", "1'a'\n", "1: TOK_NUMBER(1) TOK_ID(a) 2: TOK_DONE"},
    {"AParenthesisEndsIt", "(1)\n", "1: '(' TOK_NUMBER(1) ')' 2: TOK_DONE"},
    {"ALength", "1.2{64}\n", "1: TOK_NUMBER_LEN(1.2{64}) 2: TOK_DONE"},
    {"ALengthBehindBlanks", "SYNTAX 1.3.6.1.4.1.1466.115.121.1.15 {64}\n",
     "1: TOK_SYNTAX(SYNTAX) "
     "TOK_NUMBER_LEN(1.3.6.1.4.1.1466.115.121.1.15{64}) 2: TOK_DONE"},
    {"ALengthBehindManyBlanks", "1    {64}\n",
     "1: TOK_NUMBER_LEN(1{64}) 2: TOK_DONE"},
    {"ALengthBehindATab", "1\t{64}\n",
     "1: TOK_NUMBER(1) '{' TOK_NUMBER(64) '}' 2: TOK_DONE"},
    {"ALengthBehindABlankAndATab", "1 \t{64}\n",
     "1: TOK_NUMBER(1) '{' TOK_NUMBER(64) '}' 2: TOK_DONE"},
    {"ALengthOnTheNextLine", "1 \n{64}\n",
     "1: TOK_NUMBER(1) 2: '{' TOK_NUMBER(64) '}' 3: TOK_DONE"},
    {"ALengthBehindADot", "1.{064}\n",
     "1: TOK_NUMBER_LEN(1.{064}) 2: TOK_DONE"},
    {"TwoLengths", "1{64}{32}\n",
     "1: TOK_NUMBER_LEN(1{64}) '{' TOK_NUMBER(32) '}' 2: TOK_DONE"},
    {"ALengthThatTouchesAWord", "1{64}cn\n",
     "1: TOK_NUMBER_LEN(1{64}) TOK_ID(cn) 2: TOK_DONE"},
    {"ALengthThatTouchesANumber", "1{64}5\n",
     "1: TOK_NUMBER_LEN(1{64}) TOK_NUMBER(5) 2: TOK_DONE"},
    {"NoDigitInTheLength", "1.2.3{ab\n",
     "1: TOK_NUMBER_BAD(1.2.3{) TOK_ID(ab) 2: TOK_DONE"},
    {"NothingInTheLength", "1{}\n", "1: TOK_NUMBER_BAD(1{) '}' 2: TOK_DONE"},
    {"ABlankAheadInTheLength", "1{ 64}\n",
     "1: TOK_NUMBER_BAD(1{) TOK_NUMBER(64) '}' 2: TOK_DONE"},
    {"ABlankBehindInTheLength", "1.2.3{12 x\n",
     "1: TOK_NUMBER_BAD(1.2.3{12) TOK_ID(x) 2: TOK_DONE"},
    {"ABlankAheadOfTheBrace", "1{12 }\n",
     "1: TOK_NUMBER_BAD(1{12) '}' 2: TOK_DONE"},
    {"ADotInTheLength", "1{6.4}\n",
     "1: TOK_NUMBER_BAD(1{6) '.' TOK_NUMBER(4) '}' 2: TOK_DONE"},
    {"ANewlineInTheLength", "1 {12\n}\n",
     "1: TOK_NUMBER_BAD(1{12) 2: '}' 3: TOK_DONE"},
    {"ABraceInTheLength", "1{{2}\n",
     "1: TOK_NUMBER_BAD(1{) '{' TOK_NUMBER(2) '}' 2: TOK_DONE"},
};

const std::vector<Case> kWords = {
    {"AName", "cn\n", "1: TOK_ID(cn) 2: TOK_DONE"},
    {"AllWordCharacters", "-Az_09-\n", "1: TOK_ID(-Az_09-) 2: TOK_DONE"},
    {"AHyphenAlone", "- --\n", "1: TOK_ID(-) TOK_ID(--) 2: TOK_DONE"},
    {"ADotEndsIt", "a.b\n", "1: TOK_ID(a) '.' TOK_ID(b) 2: TOK_DONE"},
    {"ATabContinuesAWord", "NAME\t'cn'\n",
     "1: TOK_ID(NAME\\t) TOK_ID(cn) 2: TOK_DONE"},
    {"ABlankEndsAWord", "NAME 'cn'\n",
     "1: TOK_NAME(NAME) TOK_ID(cn) 2: TOK_DONE"},
    {"ATabJoinsWords", "\tcn\tNAME\t\n", "1: TOK_ID(cn\\tNAME\\t) 2: TOK_DONE"},
    {"AKeywordBehindATab", "\tNAME (\n", "1: TOK_NAME(NAME) '(' 2: TOK_DONE"},
    {"AKeywordBehindANumber", "1NAME\n",
     "1: TOK_NUMBER(1) TOK_NAME(NAME) 2: TOK_DONE"},
    {"KeywordsBetweenCharacters", "(MAY$MUST)\n",
     "1: '(' TOK_MAY(MAY) '$' TOK_MUST(MUST) ')' 2: TOK_DONE"},
    {"AWordThatBeginsWithAKeyword", "NAMES SUP-\n",
     "1: TOK_ID(NAMES) TOK_ID(SUP-) 2: TOK_DONE"},
    {"AWordThatEndsWithAKeyword", "-NAME xSUP\n",
     "1: TOK_ID(-NAME) TOK_ID(xSUP) 2: TOK_DONE"},
    {"AWordThatTouchesAString", "a'b'c\n",
     "1: TOK_ID(a) TOK_ID(b) TOK_ID(c) 2: TOK_DONE"},
};

const std::vector<Case> kStrings = {
    {"AString", "'cn'\n", "1: TOK_ID(cn) 2: TOK_DONE"},
    {"BlanksAndPunctuation", "DESC 'a (b) $ c.d'\n",
     "1: TOK_DESC(DESC) TOK_ID(a (b) $ c.d) 2: TOK_DONE"},
    {"AllPunctuation", "'!\"#$%&()*+,-./:;<=>?@[\\]^_`{|}~'\n",
     "1: TOK_ID(!\"#$%&()*+,-./:;<=>?@[\\]^_`{|}~) 2: TOK_DONE"},
    {"ATab", "'a\tb'\n", "1: TOK_ID(a\\tb) 2: TOK_DONE"},
    {"Blanks", "'  a  '\n", "1: TOK_ID(  a  ) 2: TOK_DONE"},
    {"Nothing", "'' ''\n", "1: TOK_ID() TOK_ID() 2: TOK_DONE"},
    {"Digits", "'2.5.4.3'\n", "1: TOK_ID(2.5.4.3) 2: TOK_DONE"},
    {"AKeyword", "'MAY'\n", "1: TOK_MAY(MAY) 2: TOK_DONE"},
    {"AKeywordAndABlank", "'MAY '\n", "1: TOK_ID(MAY ) 2: TOK_DONE"},
    {"ASpellingOfAKeyword", "'objectClasses'\n",
     "1: TOK_OBJECTCLASSES(objectclasses) 2: TOK_DONE"},
    {"TwoStringsThatTouch", "'a''b'\n", "1: TOK_ID(a) TOK_ID(b) 2: TOK_DONE"},
    {"ABackslashEscapesNothing", "'a\\'b\n",
     "1: TOK_ID(a\\) TOK_ID(b) 2: TOK_DONE"},
    {"AStringThatTouchesANumber", "'a'1\n",
     "1: TOK_ID(a) TOK_NUMBER(1) 2: TOK_DONE"},
    {"TheEndOfALineEndsItUncounted", "'abc\n(\n)\n",
     "1: TOK_ID(abc) '(' 2: ')' 3: TOK_DONE"},
    {"TheEndOfALineKeepsAWordOnTheNext", "'abc\ndef\n",
     "1: TOK_ID(abc) TOK_ID(def) 2: TOK_DONE"},
    {"TwoOpenStringsStayTwoLinesBehind", "'a\n'b\n(\n",
     "1: TOK_ID(a) TOK_ID(b) '(' 2: TOK_DONE"},
    {"ACarriageReturnEndsIt", "'a\r\n(\n", "1: TOK_ID(a) 2: '(' 3: TOK_DONE"},
    {"AByteOf128EndsIt", "'a\xe9z' (\n)\n",
     "1: TOK_ID(a) TOK_ID(z) TOK_ID( () ')' 2: TOK_DONE"},
    {"ANulByteEndsIt", "'a\0b\n"s, "1: TOK_ID(a) TOK_ID(b) 2: TOK_DONE"},
    {"ThreeQuotes", "'''a'\n", "1: TOK_ID() TOK_ID(a) 2: TOK_DONE"},
};

// The text that was read last is found again, with the code that it has.
const std::vector<Case> kRepetitions = {
    {"AWord", "cn cn 'cn'\n",
     "1: TOK_ID(cn) TOK_ID(cn) TOK_ID(cn) 2: TOK_DONE"},
    {"ANumberAsAString", "1.2 '1.2'\n",
     "1: TOK_NUMBER(1.2) TOK_NUMBER(1.2) 2: TOK_DONE"},
    {"AStringAsANumber", "'1.2' 1.2 1.2\n",
     "1: TOK_ID(1.2) TOK_ID(1.2) TOK_ID(1.2) 2: TOK_DONE"},
    {"ALengthAsAString", "1{2} '1{2}'\n",
     "1: TOK_NUMBER_LEN(1{2}) TOK_NUMBER_LEN(1{2}) 2: TOK_DONE"},
    {"ABadLengthAsAString", "1{x '1{'\n",
     "1: TOK_NUMBER_BAD(1{) TOK_ID(x) TOK_ID(1{) 2: TOK_DONE"},
    {"AStringAsABadLength", "'1{' 1{)\n",
     "1: TOK_ID(1{) TOK_ID(1{) ')' 2: TOK_DONE"},
    {"CharactersAndKeywordsKeepTheText", "'1' ( NAME $ 1\n",
     "1: TOK_ID(1) '(' TOK_NAME(NAME) '$' TOK_ID(1) 2: TOK_DONE"},
    {"AnotherTextReplacesIt", "'1' cn 1\n",
     "1: TOK_ID(1) TOK_ID(cn) TOK_NUMBER(1) 2: TOK_DONE"},
    {"AnEmptyString", "'' 1 ''\n",
     "1: TOK_ID() TOK_NUMBER(1) TOK_ID() 2: TOK_DONE"},
};

// What the end of the file cuts off is lost; a character is not.
const std::vector<Case> kEnds = {
    {"AParenthesis", "( )", "1: '(' ')' TOK_DONE"},
    {"AByteOf255", "\xff", "1: 255 TOK_DONE"},
    {"AWord", "( cn", "1: '(' TOK_DONE"},
    {"AWordAndABlank", "( cn ", "1: '(' TOK_ID(cn) TOK_DONE"},
    {"AWordAndATab", "( cn\t", "1: '(' TOK_DONE"},
    {"AWordAndACharacter", "( cn)", "1: '(' TOK_ID(cn) ')' TOK_DONE"},
    {"AHyphen", "-", "1: TOK_DONE"},
    {"AKeyword", "( NAME", "1: '(' TOK_DONE"},
    {"AString", "( 'cn'", "1: '(' TOK_DONE"},
    {"AStringAndABlank", "( 'cn' ", "1: '(' TOK_ID(cn) TOK_DONE"},
    {"AnOpenString", "( 'cn", "1: '(' TOK_DONE"},
    {"AnOpenStringAndANewline", "( 'cn\n", "1: '(' TOK_DONE"},
    {"AnOpenStringAndTwoNewlines", "( 'cn\n\n",
     "1: '(' TOK_ID(cn) 2: TOK_DONE"},
    {"AQuote", "( '", "1: '(' TOK_DONE"},
    {"AQuoteAndANewline", "( '\n", "1: '(' TOK_DONE"},
    {"AnEmptyString", "( ''", "1: '(' TOK_DONE"},
    {"AnEmptyStringAndANewline", "( ''\n", "1: '(' TOK_ID() 2: TOK_DONE"},
    {"ANumber", "( 2.5", "1: '(' TOK_DONE"},
    {"ANumberAndANewline", "( 2.5\n", "1: '(' TOK_NUMBER(2.5) 2: TOK_DONE"},
    {"ANumberAndBlanks", "( 2.5  ", "1: '(' TOK_DONE"},
    {"ANumberAndATab", "( 2.5\t", "1: '(' TOK_NUMBER(2.5) TOK_DONE"},
    {"ABrace", "( 2.5{", "1: '(' TOK_DONE"},
    {"ABraceAndABlank", "( 2.5{ ", "1: '(' TOK_NUMBER_BAD(2.5{) TOK_DONE"},
    {"AnOpenLength", "( 2.5{6", "1: '(' TOK_DONE"},
    {"AnOpenLengthAndABlank", "( 2.5{6 ",
     "1: '(' TOK_NUMBER_BAD(2.5{6) TOK_DONE"},
    {"ALength", "( 2.5{6}", "1: '(' TOK_DONE"},
    {"ALengthAndABlank", "( 2.5{6} ", "1: '(' TOK_NUMBER_LEN(2.5{6}) TOK_DONE"},
};

const std::vector<Case> kDefinitions = {
    {"AnAttributeType", "attributetypes=( 2.5.4.3 NAME 'cn' )",
     "1: TOK_ATTRIBUTETYPES(attributetypes) '=' '(' TOK_NUMBER(2.5.4.3) "
     "TOK_NAME(NAME) TOK_ID(cn) ')' TOK_DONE"},
    {"AnObjectClassOfSeveralLines",
     "# person\n"
     "objectClasses = ( 2.5.6.6\n"
     "    NAME 'person' DESC 'RFC 4519: a person'\n"
     "    SUP top STRUCTURAL\n"
     "\n"
     "    MUST ( sn $ cn ) )  # more to come\n",
     "2: TOK_OBJECTCLASSES(objectclasses) '=' '(' TOK_NUMBER(2.5.6.6) "
     "3: TOK_NAME(NAME) TOK_ID(person) TOK_DESC(DESC) "
     "TOK_ID(RFC 4519: a person) "
     "4: TOK_SUP(SUP) TOK_ID(top) TOK_STRUCTURAL(STRUCTURAL) "
     "6: TOK_MUST(MUST) '(' TOK_ID(sn) '$' TOK_ID(cn) ')' ')' 7: TOK_DONE"},
    {"ABlockOfStorageDefinitions",
     "QORAttributetypes={\r\n"
     "( 2.5.4.3 DBNAME ('cn' 'cn') ACCESS-CLASS normal LENGTH 256 )\r\n"
     "}\r\n",
     "1: TOK_QORATTRIBUTETYPES(QORAttributetypes) '=' '{' 13 "
     "2: '(' TOK_NUMBER(2.5.4.3) TOK_DBNAME(DBNAME) '(' TOK_ID(cn) TOK_ID(cn) "
     "')' TOK_ACCESS_CLASS(ACCESS-CLASS) TOK_ID(normal) TOK_LENGTH(LENGTH) "
     "TOK_NUMBER(256) ')' 13 3: '}' 13 4: TOK_DONE"},
};

INSTANTIATE_TEST_SUITE_P(Layout, SchemaLexanTest, testing::ValuesIn(kLayout),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Characters, SchemaLexanTest,
                         testing::ValuesIn(kCharacters), nameOf);
INSTANTIATE_TEST_SUITE_P(Numbers, SchemaLexanTest, testing::ValuesIn(kNumbers),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Words, SchemaLexanTest, testing::ValuesIn(kWords),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Strings, SchemaLexanTest, testing::ValuesIn(kStrings),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Repetitions, SchemaLexanTest,
                         testing::ValuesIn(kRepetitions), nameOf);
INSTANTIATE_TEST_SUITE_P(Ends, SchemaLexanTest, testing::ValuesIn(kEnds),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Definitions, SchemaLexanTest,
                         testing::ValuesIn(kDefinitions), nameOf);

// Each spelling of a keyword, and the keyword that it is.
const std::vector<std::pair<std::string, std::string>> kSpellings = {
    {"objectclasses", "TOK_OBJECTCLASSES(objectclasses)"},
    {"objectClasses", "TOK_OBJECTCLASSES(objectclasses)"},
    {"attributetypes", "TOK_ATTRIBUTETYPES(attributetypes)"},
    {"attributeTypes", "TOK_ATTRIBUTETYPES(attributetypes)"},
    {"QORAttributetypes", "TOK_QORATTRIBUTETYPES(QORAttributetypes)"},
    {"QORattributeTypes", "TOK_QORATTRIBUTETYPES(QORAttributetypes)"},
    {"NAME", "TOK_NAME(NAME)"},
    {"DESC", "TOK_DESC(DESC)"},
    {"SUP", "TOK_SUP(SUP)"},
    {"AUXILIARY", "TOK_AUXILIARY(AUXILIARY)"},
    {"MUST", "TOK_MUST(MUST)"},
    {"MAY", "TOK_MAY(MAY)"},
    {"STRUCTURAL", "TOK_STRUCTURAL(STRUCTURAL)"},
    {"EQUALITY", "TOK_EQUALITY(EQUALITY)"},
    {"SYNTAX", "TOK_SYNTAX(SYNTAX)"},
    {"SINGLE-VALUE", "TOK_SINGLE_VALUE(SINGLE-VALUE)"},
    {"USAGE", "TOK_USAGE(USAGE)"},
    {"NO-USER-MODIFICATION", "TOK_NO_USER_MODIFICATION(NO-USER-MODIFICATION)"},
    {"ACCESS-CLASS", "TOK_ACCESS_CLASS(ACCESS-CLASS)"},
    {"DBNAME", "TOK_DBNAME(DBNAME)"},
    {"SUBSTR", "TOK_SUBSTR(SUBSTR)"},
    {"REVERSE", "TOK_REVERSE(REVERSE)"},
    {"ORDERING", "TOK_ORDERING(ORDERING)"},
    {"COLLECTIVE", "TOK_COLLECTIVE(COLLECTIVE)"},
    {"OBSOLETE", "TOK_OBSOLETE(OBSOLETE)"},
    {"ABSTRACT", "TOK_ABSTRACT(ABSTRACT)"},
    {"LENGTH", "TOK_LENGTH(LENGTH)"},
    {"APPROX", "TOK_APPROX(APPROX)"},
};

TEST(SchemaLexanKeywordTest, EachSpellingIsAKeyword) {
  for (const auto &[spelling, token] : kSpellings) {
    EXPECT_EQ(scan(spelling + " "), "1: " + token + " TOK_DONE");
    EXPECT_EQ(scan(spelling + "\n"), "1: " + token + " 2: TOK_DONE");
    EXPECT_EQ(scan(spelling + "="), "1: " + token + " '=' TOK_DONE");
    EXPECT_EQ(scan("'" + spelling + "' "), "1: " + token + " TOK_DONE");
    EXPECT_EQ(scan("'" + spelling + "\n "), "1: " + token + " TOK_DONE");
  }
}

TEST(SchemaLexanKeywordTest, NoOtherCaseIsAKeyword) {
  std::vector<std::string> words = {
      "ObjectClasses",     "ObjectClass",       "objectclass",
      "attributeType",     "AttributeTypes",    "attributetype",
      "QORAttributeTypes", "QORattributetypes", "qorattributetypes",
      "single-value",      "SINGLE_VALUE"};
  for (const auto &[spelling, token] : kSpellings) {
    // The first letter and then the last in the other case.
    for (const std::size_t at : {std::size_t{0}, spelling.size() - 1}) {
      words.push_back(spelling);
      words.back()[at] = static_cast<char>(words.back()[at] ^ 0x20);
    }
  }
  for (const std::string &word : words) {
    EXPECT_EQ(scan(word + "\n"), "1: TOK_ID(" + word + ") 2: TOK_DONE");
  }
}

}  // namespace
