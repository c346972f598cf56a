// The analyser against a second one that is slow and obvious, on texts of every
// kind, and on files larger than any buffer.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "SchemaLexan.h"
#include "libschema/SchemaLexanTesting.h"
#include "support/TemporaryDirectory.h"

namespace {

const std::string kDigits = "0123456789";
const std::string kLetters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
const std::string kInWord = kLetters + kDigits + "_-\t";
const std::string kInString = kInWord + " !\"#$%&()*+,./:;<=>?@[\\]^`{|}~";

// What can be seen of an analyser after a call of lexan().
std::string state(int code, int current, int index, int line,
                  const std::string &text) {
  return std::to_string(code) + " current " + std::to_string(current) +
         " index " + std::to_string(index) + " line " + std::to_string(line) +
         " \"" + text + "\"\n";
}

// Takes tokens from a text that it has in memory.
class SlowLexan {
 public:
  explicit SlowLexan(const std::string &text) : m_text(text) {}

  std::string next() {
    const int code = lexan();
    std::string text;
    m_table.getValue(m_index, text);
    return state(code, m_current, m_index, m_line, text);
  }

 private:
  int lexan() {
    skipLayout();
    if (m_at == m_text.size()) {
      m_index = -1;
      return TOK_DONE;
    }
    const char c = m_text[m_at];
    if (isOneOf(c, kDigits)) {
      return number();
    }
    if (isOneOf(c, kLetters) || c == '-') {
      return word(m_at, endOf(kInWord, m_at), 0);
    }
    if (c == '\'') {
      return word(m_at + 1, endOf(kInString, m_at + 1), 1);
    }
    ++m_at;
    m_index = -1;
    m_current = static_cast<unsigned char>(c);
    return m_current;
  }

  void skipLayout() {
    for (; m_at < m_text.size() && isOneOf(m_text[m_at], " \t\n#"); ++m_at) {
      if (m_text[m_at] == '#') {
        m_at = m_text.find('\n', m_at);
        ++m_line;
        if (m_at == std::string::npos) {
          m_at = m_text.size();
          return;
        }
      } else if (m_text[m_at] == '\n') {
        ++m_line;
      }
    }
  }

  int number() {
    const std::size_t end = endOf(kDigits + ".", m_at);
    const std::size_t behind = endOf(" ", end);
    std::string word = m_text.substr(m_at, end - m_at);
    if (behind == m_text.size() || m_text[behind] != '{') {
      return resolve(word, TOK_NUMBER, behind);
    }
    const std::size_t close = endOf(kDigits, behind + 1);
    const bool good = close > behind + 1 && m_text[close] == '}';
    const std::size_t after = good ? close + 1 : close;
    word += m_text.substr(behind, after - behind);
    return resolve(word, good ? TOK_NUMBER_LEN : TOK_NUMBER_BAD, after);
  }

  // The word or string from `start` to `end`, with `closers` characters to drop
  // behind it.
  int word(std::size_t start, std::size_t end, std::size_t closers) {
    std::string word = m_text.substr(start, end - start);
    for (const auto &[alias, keyword] :
         {std::pair{"objectClasses", "objectclasses"},
          {"attributeTypes", "attributetypes"},
          {"QORattributeTypes", "QORAttributetypes"}}) {
      if (word == alias) {
        word = keyword;
      }
    }
    return resolve(word, TOK_ID, end + closers);
  }

  // Makes `word` the current token and goes on at `next`; there must be a
  // character at that place.
  int resolve(const std::string &word, int code, std::size_t next) {
    if (next >= m_text.size()) {
      m_at = m_text.size();
      return TOK_DONE;
    }
    m_at = next;
    m_index = m_table.lookUpValue(word);
    if (m_index == -1) {
      m_table.removeValue(25);
      m_index = m_table.insertValue(word, code, false);
    }
    m_current = m_table.getTokenValue(m_index);
    return m_current;
  }

  static bool isOneOf(char c, const std::string &characters) {
    return characters.find(c) != std::string::npos;
  }

  // The end of the run of `characters` that starts at `at`.
  std::size_t endOf(const std::string &characters, std::size_t at) const {
    const std::size_t end = m_text.find_first_not_of(characters, at);
    return end == std::string::npos ? m_text.size() : end;
  }

  const std::string m_text;
  std::size_t m_at = 0;
  SchemaSymbolTable m_table;
  int m_index = -1;
  int m_current = -1;
  int m_line = 1;
};

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
    SlowLexan slow(text);
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
      expected += slow.next();
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

TEST_F(SchemaLexanExhaustiveTest, EverySequenceOfFourPieces) {
  const std::vector<std::string> pieces = {"a", "1", "'", "{",  "}",
                                           " ", "#", ")", "\n", "\t"};
  for (std::size_t count = 0; count <= 4; ++count) {
    expectAgreementOnAll(pieces, count);
  }
}

// Another seed, of the environment variable TEST_SEED, gives other texts.
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
  const char *seed = std::getenv("TEST_SEED");
  std::mt19937 random(
      seed == nullptr ? 1U
                      : static_cast<unsigned>(std::strtoul(seed, nullptr, 10)));
  for (int count = 0; count < 3000 && !HasFatalFailure(); ++count) {
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
