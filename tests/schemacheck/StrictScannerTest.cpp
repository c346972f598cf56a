#include "StrictScanner.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "StrictTesting.h"

using schemacheck::StrictScanner;
using schemacheck::Token;
using schemacheck::withSpan;

namespace {

std::string markOf(Token::Type type) {
  switch (type) {
    case Token::Type::kNumber:
      return "#";
    case Token::Type::kQuoted:
      return "q:";
    case Token::Type::kDoubleQuoted:
      return "d:";
    case Token::Type::kCharacter:
      return "c:";
    default:
      return "";
  }
}

// The tokens one by one, a mark of the type before each but a word, and what
// its span holds behind a text that is something else. Between two strokes.
std::string tokensOf(const std::string &text, std::size_t offset = 0) {
  StrictScanner scanner(text, offset);
  std::string tokens = "|";
  while (true) {
    const Token token = scanner.next();
    if (token.type == Token::Type::kEnd) {
      EXPECT_EQ(token.span.begin, text.size());
      EXPECT_EQ(token.span.end, text.size());
      EXPECT_EQ(scanner.next().type, Token::Type::kEnd);
      return tokens;
    }
    tokens += markOf(token.type) + withSpan(token.text, token.span, text) +
              (token.intact ? "|" : " damaged|");
  }
}

struct ScanCase {
  const char *text;
  const char *tokens;
};

void PrintTo(const ScanCase &scan, std::ostream *out) { *out << scan.text; }

class StrictScannerTest : public testing::TestWithParam<ScanCase> {};

TEST_P(StrictScannerTest, Tokens) {
  EXPECT_EQ(tokensOf(GetParam().text), GetParam().tokens);
}

constexpr ScanCase kLayout[] = {
    {"", "|"},
    {" \t\r\n", "|"},
    {"a b\tc\rd\ne\r\nf", "|a|b|c|d|e|f|"},
    {"# a ' ( b", "|"},
    {"# a\nb # c\r\nd#e\n#\n#", "|b|d|"},
    {"#a\rb\nc", "|c|"},
    // A byte order mark, at the start alone.
    {"\xEF\xBB\xBF a \xEF\xBB\xBF", "|a|\xEF\xBB\xBF|"},
};

constexpr ScanCase kWords[] = {
    {"(a)$b={c}", "|c:(|a|c:)|c:$|b|c:=|c:{|c|c:}|"},
    {"cn_x x;lang 2.5.4.x a,b -a caf\xC3\xA9 \x01 NO-USER",
     "|cn_x|x;lang|2.5.4.x|a,b|-a|caf\xC3\xA9|\x01|NO-USER|"},
    {"a'b' c\"d\"e", "|a|q:b<'b'>|c|d:d<\"d\">|e|"},
    // A colon belongs to a word unless it ends it.
    {"a:b c: ::d e:(", "|a:b|c|c::|c::|c::|d|e|c::|c:(|"},
};

constexpr ScanCase kNumbers[] = {
    {"1 1.2.3 10. .5 1..2 . ..", "|#1|#1.2.3|#10.|#.5|#1..2|.|..|"},
    {"1.2{64}", "|#1.2{64}|"},
    {"1.2 \t{64}a", "|#1.2{64}<1.2 \\t{64}>|a|"},
    {"1.2\n{64}", "|#1.2|c:{|#64|c:}|"},
    {"1.2:{64}", "|#1.2|c::|c:{|#64|c:}|"},
    {"1.2{ab}", "|#1.2{ab} damaged|"},
    {"1.2{}", "|#1.2{} damaged|"},
    {"1.2{6.4}", "|#1.2{6.4} damaged|"},
    {"1.2 { 64 }", "|#1.2{64}<1.2 { 64 }> damaged|"},
    {"1.2{64 )", "|#1.2{64 damaged|c:)|"},
    {"1.2{ )", "|#1.2{ damaged|c:)|"},
    {"1.2{ 64 )", "|#1.2{ damaged|#64|c:)|"},
    {"1.2{", "|#1.2{ damaged|"},
    // Behind a blank the brace may be another's.
    {"1.2 { a b }", "|#1.2|c:{|a|b|c:}|"},
    {"1.2 {", "|#1.2|c:{|"},
    {"a{64}", "|a|c:{|#64|c:}|"},
};

constexpr ScanCase kStrings[] = {
    {"'' 'a' 'a b' ' a '", "|q:<''>|q:a<'a'>|q:a b<'a b'>|q: a <' a '>|"},
    {"'a''b'", "|q:a<'a'>|q:b<'b'>|"},
    {"'(#$={}\"\\27'", "|q:(#$={}\"\\27<'(#$={}\"\\27'>|"},
    {"'caf\xC3\xA9\x01'", "|q:caf\xC3\xA9\x01<'caf\xC3\xA9\x01'>|"},
    {"'a\nb\r\n c' d", "|q:a\\nb\\r\\n c<'a\\nb\\r\\n c'>|d|"},
    // Apostrophes.
    {"'It's' x", "|q:It's<'It's'>|x|"},
    {"'1'2 -'- \xC3\xA9'e' x",
     "|q:1'2 -'- \xC3\xA9'e<'1'2 -'- \xC3\xA9'e'>|x|"},
    {"'users' x", "|q:users<'users'>|x|"},
    {"'a'_'b'", "|q:a<'a'>|_|q:b<'b'>|"},
    // A keyword behind a string has lost its blank.
    {"'cn'DESC'x'SINGLE-VALUE)", "|q:cn<'cn'>|DESC|q:x<'x'>|SINGLE-VALUE|c:)|"},
    {"'x'X-ORIGIN 'y'", "|q:x<'x'>|X-ORIGIN|q:y<'y'>|"},
    {"'x'desc' y", "|q:x'desc<'x'desc'>|y|"},
};

constexpr ScanCase kUnterminated[] = {
    {"'", "|q:<'> damaged|"},
    {"'a b )", "|q:a b )<'a b )> damaged|"},
    {"'a\nb", "|q:a<'a> damaged|b|"},
    {"'a\r\nb", "|q:a<'a> damaged|b|"},
    {"'a's x\n b's", "|q:a's x<'a's x> damaged|b|q:s<'s> damaged|"},
    // A section begins.
    {"'a\nattributetypes=( 'b'",
     "|q:a<'a> damaged|attributetypes|c:=|c:(|q:b<'b'>|"},
    {"'a )\r\n \tObjectClasses \t{ 'b'",
     "|q:a )<'a )> damaged|ObjectClasses|c:{|q:b<'b'>|"},
    {"'a\nb\nQORATTRIBUTETYPES=( 'c'",
     "|q:a<'a> damaged|b|QORATTRIBUTETYPES|c:=|c:(|q:c<'c'>|"},
    {"'a\nattributetypes b'",
     "|q:a\\nattributetypes b<'a\\nattributetypes b'>|"},
    {"'a\nattributetype=b'", "|q:a\\nattributetype=b<'a\\nattributetype=b'>|"},
    {"'a attributetypes=b'", "|q:a attributetypes=b<'a attributetypes=b'>|"},
    // So does each string that begins before it.
    {"'a\nx'y z'w\nattributetypes=( 'b'",
     "|q:a<'a> damaged|x|q:y z'w<'y z'w> damaged|attributetypes|c:=|c:(|"
     "q:b<'b'>|"},
    // A definition begins.
    {"'a\n( 1.2\n# b\n NAME 'c'", "|q:a<'a> damaged|c:(|#1.2|NAME|q:c<'c'>|"},
    {"'a\n( 1.2 b'", "|q:a\\n( 1.2 b<'a\\n( 1.2 b'>|"},
    {"'a\n( b NAME '", "|q:a\\n( b NAME <'a\\n( b NAME '>|"},
    // A clause with a string begins.
    {"'a\n DESC 'b'", "|q:a<'a> damaged|DESC|q:b<'b'>|"},
    {"'a\n NAME ( 'b' )", "|q:a<'a> damaged|NAME|c:(|q:b<'b'>|c:)|"},
    {"'a\n X-B'b'", "|q:a<'a> damaged|X-B|q:b<'b'>|"},
    {"'a\n DESC b'", "|q:a\\n DESC b<'a\\n DESC b'>|"},
    {"'a\n desc 'b'", "|q:a\\n desc <'a\\n desc '>|b|q:<'> damaged|"},
};

constexpr ScanCase kDoubleQuoted[] = {
    {"\"\" \"a 'b' #c\" d", "|d:<\"\">|d:a 'b' #c<\"a 'b' #c\">|d|"},
    {"\"a\nb\"", "|c:\"|a|b|c:\"|"},
    {"a\"", "|a|c:\"|"},
};

INSTANTIATE_TEST_SUITE_P(Layout, StrictScannerTest, testing::ValuesIn(kLayout));
INSTANTIATE_TEST_SUITE_P(Words, StrictScannerTest, testing::ValuesIn(kWords));
INSTANTIATE_TEST_SUITE_P(Numbers, StrictScannerTest,
                         testing::ValuesIn(kNumbers));
INSTANTIATE_TEST_SUITE_P(Strings, StrictScannerTest,
                         testing::ValuesIn(kStrings));
INSTANTIATE_TEST_SUITE_P(Unterminated, StrictScannerTest,
                         testing::ValuesIn(kUnterminated));
INSTANTIATE_TEST_SUITE_P(DoubleQuoted, StrictScannerTest,
                         testing::ValuesIn(kDoubleQuoted));

TEST(StrictScannerStartTest, BeginsAtAnOffset) {
  const std::string text = "'a' ( 1.2 NAME 'b' )";
  EXPECT_EQ(tokensOf(text, 4), "|c:(|#1.2|NAME|q:b<'b'>|c:)|");
  EXPECT_EQ(tokensOf(text, 15), "|q:b<'b'>|c:)|");
  EXPECT_EQ(tokensOf(text, text.size()), "|");
}

TEST(StrictScannerStartTest, AByteOfZeroIsACharacterOfAWord) {
  EXPECT_EQ(tokensOf(std::string("a\0b \0", 5)), std::string("|a\0b|\0|", 7));
}

TEST(StrictScannerStartTest, TokensKnowWhatTheyAre) {
  StrictScanner scanner("( 1.2 1.2{3} {");
  Token token = scanner.next();
  EXPECT_TRUE(token.is('('));
  EXPECT_FALSE(token.is(')'));
  token = scanner.next();
  EXPECT_FALSE(token.hasLength());
  token = scanner.next();
  EXPECT_TRUE(token.hasLength());
  EXPECT_FALSE(token.is('{'));
  token = scanner.next();
  EXPECT_FALSE(token.hasLength());
}

}  // namespace
