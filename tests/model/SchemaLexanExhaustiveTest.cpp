// The analyser against the model, on every short text of the characters that
// matter, on random texts, and on files larger than any buffer.
//
// The environment variable MODEL_TEST_LENGTH sets how many pieces the short
// texts have at most, RANDOM_TEST_SEED and RANDOM_TEST_RUNS which random ones
// there are.
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

#include "SchemaLexan.h"
#include "libschema/SchemaLexanTesting.h"
#include "model/ModelTesting.h"
#include "model/Scanner.h"
#include "model/Trace.h"
#include "support/TemporaryDirectory.h"

namespace {

const std::string kDigits = "0123456789";
const std::string kLetters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

// What can be seen of an analyser after a call of lexan().
std::string state(int code, int current, int index, int line,
                  const std::string &text) {
  return std::to_string(code) + " current " + std::to_string(current) +
         " index " + std::to_string(index) + " line " + std::to_string(line) +
         " \"" + text + "\"\n";
}

std::string times(std::size_t count, const std::string &text) {
  std::string all;
  for (; count > 0; --count) {
    all += text;
  }
  return all;
}

class SchemaLexanExhaustiveTest : public testing::Test {
 protected:
  std::string scan(const std::string &text) const {
    write(text);
    SchemaLexan lexan(m_directory.string(), "text");
    return allTokens(lexan);
  }

  // A new file takes a fraction of the time that overwriting one takes.
  void write(const std::string &text) const {
    std::filesystem::remove(m_directory.path() / "text");
    m_directory.write("text", text);
  }

  // Reads the text to its end, and twice beyond, and compares what can be
  // seen. At one time or other the symbol table is asked for more than a text,
  // which changes nothing.
  void expectAgreement(const std::string &text) const {
    write(text);
    SchemaLexan lexan(m_directory.string(), "text");
    model::Trace untraced;
    model::Scanner model(text, &untraced);
    std::string actual;
    std::string expected;
    std::size_t calls = 0;
    for (int ends = 0; ends < 3 && calls < text.size() + 3; ++calls) {
      if (calls == text.size() % 7) {
        EXPECT_TRUE(lexan.isString(0));
      }
      const int code = lexan.lexan();
      std::string word;
      lexan.getStringValue(lexan.getTokenValIndex(), word);
      actual += state(code, lexan.getCurrentToken(), lexan.getTokenValIndex(),
                      lexan.getLineNumber(), word);
      const int expectedCode = model.lexan();
      expected += state(expectedCode, model.current(), model.index(),
                        model.line(), model.text());
      ends += code == TOK_DONE ? 1 : 0;
    }
    ASSERT_EQ(actual, expected) << "text: " << testing::PrintToString(text);
  }

  // Tries every sequence of so many of the pieces.
  void expectAgreementOnAll(const std::vector<std::string> &pieces,
                            std::size_t count, const std::string &start = "") {
    if (count == 0) {
      expectAgreement(start);
      return;
    }
    for (const std::string &piece : pieces) {
      expectAgreementOnAll(pieces, count - 1, start + piece);
      if (HasFatalFailure()) {
        return;
      }
    }
  }

  const TemporaryDirectory m_directory;
};

TEST_F(SchemaLexanExhaustiveTest, EachByteAndANewline) {
  for (int byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    const std::string text = {c, '\n'};
    std::string expected;
    if (c == '\n') {
      expected = "3: TOK_DONE";
    } else if (c == ' ' || c == '\t' || c == '#') {
      expected = "2: TOK_DONE";
    } else if (c == '\'') {
      expected = "1: TOK_DONE";  // the newline closes it, and nothing follows
    } else if (kDigits.find(c) != std::string::npos) {
      expected = "1: TOK_NUMBER(" + text.substr(0, 1) + ") 2: TOK_DONE";
    } else if (c == '-' || kLetters.find(c) != std::string::npos) {
      expected = "1: TOK_ID(" + text.substr(0, 1) + ") 2: TOK_DONE";
    } else {
      expected = "1: " + tokenName(byte) + " 2: TOK_DONE";
    }
    EXPECT_EQ(scan(text), expected) << byte;
  }
}

TEST_F(SchemaLexanExhaustiveTest, EachByteInEachSurrounding) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string c(1, static_cast<char>(byte));
    for (const std::string &text :
         {c, "( " + c, "a" + c + "b ", "a" + c, "'a" + c + "b' x ", "'a" + c,
          "1" + c + "2 ", "1" + c, "1 " + c + "2} ", "1{" + c + "2} ",
          "1{2" + c + "3} ", "1{2" + c, "#" + c + "\n( ", "NAME" + c + " "}) {
      expectAgreement(text);
    }
  }
}

TEST_F(SchemaLexanExhaustiveTest, EveryShortText) {
  const std::vector<std::string> pieces = {"a", "1", "'", "{",  "}",
                                           " ", "#", ")", "\n", "\t"};
  const std::size_t longest = setting("MODEL_TEST_LENGTH", 4);
  for (std::size_t count = 0; count <= longest; ++count) {
    expectAgreementOnAll(pieces, count);
  }
}

TEST_F(SchemaLexanExhaustiveTest, RandomTexts) {
  const std::vector<std::string> pieces = {"a",
                                           "b",
                                           "cn",
                                           "MAY",
                                           "NAME",
                                           "objectClasses",
                                           "attributetypes",
                                           "-",
                                           "_",
                                           "1",
                                           "2.5",
                                           ".",
                                           "{",
                                           "}",
                                           "{64}",
                                           "'",
                                           "'cn'",
                                           "'1'",
                                           "''",
                                           " ",
                                           "  ",
                                           "\t",
                                           "\n",
                                           "#",
                                           "# x\n",
                                           "(",
                                           ")",
                                           "$",
                                           "=",
                                           "\r",
                                           "\xe9",
                                           std::string(1, '\0')};
  const RandomCases cases;
  for (unsigned int i = 0; i < cases.runs && !HasFatalFailure(); ++i) {
    SCOPED_TRACE("RANDOM_TEST_SEED=" + std::to_string(cases.seed + i));
    std::mt19937 random(cases.seed + i);
    std::string text;
    for (std::size_t length = random() % 40; length > 0; --length) {
      text += pieces[random() % pieces.size()];
    }
    expectAgreement(text);
  }
}

// A file is read in pieces of some thousand bytes. Tokens that lie across the
// place where two meet are no different.
TEST_F(SchemaLexanExhaustiveTest, TokensAtAnyPlaceInALargeFile) {
  const std::string text =
      "cn 2.5.4.3 {64} 'a $ b'NAME 1{2 x # comment\n"
      "objectClasses=( - 1.2 '' \r)\n\n";
  const std::string tokens =
      "TOK_ID(cn) TOK_NUMBER_LEN(2.5.4.3{64}) TOK_ID(a $ b) TOK_NAME(NAME) "
      "TOK_NUMBER_BAD(1{2) TOK_ID(x) 2: TOK_OBJECTCLASSES(objectclasses) '=' "
      "'(' TOK_ID(-) TOK_NUMBER(1.2) TOK_ID() 13 ')' 4: TOK_DONE";
  ASSERT_EQ(scan(text), "1: " + tokens);
  for (const std::size_t boundary : {1024U, 8192U, 16384U}) {
    for (std::size_t start = boundary - text.size() - 4; start < boundary + 4;
         ++start) {
      ASSERT_EQ(scan(std::string(start, ' ') + text), "1: " + tokens) << start;
      const std::string before = std::string(start - 2, ')') + "\t ";
      ASSERT_EQ(scan(before + text), "1: " + times(start - 2, "')' ") + tokens)
          << start;
    }
  }
}

TEST_F(SchemaLexanExhaustiveTest, WhatEndsAtAnyPlaceInALargeFile) {
  for (const std::size_t boundary : {1024U, 8192U, 16384U}) {
    for (std::size_t end = boundary - 4; end < boundary + 4; ++end) {
      for (const std::string &last :
           {std::string("cn"), std::string("'cn'"), std::string("1{2}"),
            std::string("1  "), std::string(")"), std::string("cn "),
            std::string("#x"), std::string("'cn\n")}) {
        expectAgreement(std::string(end - last.size(), '\n') + last);
      }
    }
  }
}

TEST_F(SchemaLexanExhaustiveTest, TokensLongerThanABuffer) {
  const std::string word(50000, 'w');
  const std::string digits(50000, '7');
  EXPECT_EQ(scan(word + " "), "1: TOK_ID(" + word + ") TOK_DONE");
  EXPECT_EQ(scan(word), "1: TOK_DONE");
  EXPECT_EQ(scan("'" + word + " $' "), "1: TOK_ID(" + word + " $) TOK_DONE");
  EXPECT_EQ(scan(digits + " "), "1: TOK_DONE");
  EXPECT_EQ(scan(digits + "\n"), "1: TOK_NUMBER(" + digits + ") 2: TOK_DONE");
  EXPECT_EQ(scan("1{" + digits + "}\n"),
            "1: TOK_NUMBER_LEN(1{" + digits + "}) 2: TOK_DONE");
  EXPECT_EQ(scan("1" + std::string(50000, ' ') + "{2}\n"),
            "1: TOK_NUMBER_LEN(1{2}) 2: TOK_DONE");
  EXPECT_EQ(scan("#" + word + "\n("), "2: '(' TOK_DONE");
  EXPECT_EQ(scan(std::string(50000, '\n') + "("), "50001: '(' TOK_DONE");
}

}  // namespace
