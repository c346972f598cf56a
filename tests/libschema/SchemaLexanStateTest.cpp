// The analyser's state from its construction to the end of the file.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <fstream>
#include <memory>
#include <sstream>
#include <streambuf>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "Clex_analyzer.h"
#include "SchemaLexan.h"
#include "libschema/SchemaLexanTesting.h"

namespace {

// The interface deletes nothing; the class does.
static_assert(std::is_abstract_v<Clex_analyzer>);
static_assert(!std::has_virtual_destructor_v<Clex_analyzer>);
static_assert(sizeof(Clex_analyzer) == sizeof(void *));
static_assert(std::is_convertible_v<SchemaLexan *, Clex_analyzer *>);
static_assert(std::has_virtual_destructor_v<SchemaLexan>);
static_assert(!std::is_copy_constructible_v<SchemaLexan>);
static_assert(!std::is_copy_assignable_v<SchemaLexan>);
static_assert(!std::is_move_constructible_v<SchemaLexan>);
static_assert(std::is_constructible_v<SchemaLexan, std::string, std::string>);

using SchemaLexanStateTest = SchemaLexanFixture;

TEST_F(SchemaLexanStateTest, StandsAheadOfTheFirstToken) {
  SchemaLexan &lexan = open("cn\n");
  EXPECT_TRUE(lexan.fileIsOpen());
  EXPECT_EQ(lexan.getFileName(), kName);
  EXPECT_EQ(lexan.getWorkingDir(), m_directory.string());
  EXPECT_EQ(lexan.getLineNumber(), 1);
  EXPECT_EQ(lexan.getCurrentToken(), -1);
  EXPECT_EQ(lexan.getTokenValIndex(), -1);
  EXPECT_EQ(dumped(lexan, 0), dump("-1", "1", "-1", ""));
}

// What a derived class learns of the place in the file.
class PositionLexan : public SchemaLexan {
 public:
  using SchemaLexan::position;
  using SchemaLexan::SchemaLexan;
};

TEST_F(SchemaLexanStateTest, ThePositionIsThatBehindTheToken) {
  m_directory.write(kName, "cn sn\n");
  PositionLexan lexan(m_directory.string(), kName);
  EXPECT_EQ(lexan.position(), 0);
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  EXPECT_EQ(lexan.position(), 2);
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  EXPECT_EQ(lexan.position(), 5);
}

TEST_F(SchemaLexanStateTest, WithoutAFileThereIsNoPosition) {
  PositionLexan lexan(m_directory.string(), "missing");
  EXPECT_EQ(lexan.position(), -1);
  EXPECT_EQ(lexan.lexan(), TOK_DONE);
  EXPECT_EQ(lexan.position(), -1);
}

TEST_F(SchemaLexanStateTest, MatchGoesPastTheCurrentToken) {
  SchemaLexan &lexan = open("( cn )\n");
  EXPECT_EQ(lexan.lexan(), '(');
  lexan.match('(');
  EXPECT_EQ(currentToken(lexan), "TOK_ID(cn)");
  lexan.match(TOK_ID);
  EXPECT_EQ(currentToken(lexan), "')'");
  lexan.match(')');
  EXPECT_EQ(lexan.getCurrentToken(), TOK_DONE);
  lexan.match(TOK_DONE);
  EXPECT_EQ(lexan.getCurrentToken(), TOK_DONE);
}

TEST_F(SchemaLexanStateTest, MatchOfAnotherTokenDoesNothing) {
  SchemaLexan &lexan = open("cn\n( NAME\n");
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  const std::string before = dumped(lexan, 0);
  EXPECT_EQ(before, dump("25", "1", "259", "\t25 259 \"cn\"\n"));
  for (const int token : {-1, 0, 40, 258, 260, 1003, 2024}) {
    lexan.match(token);
    EXPECT_EQ(dumped(lexan, 0), before) << token;
  }
  EXPECT_EQ(allTokens(lexan), "2: '(' TOK_NAME(NAME) 3: TOK_DONE");
}

TEST_F(SchemaLexanStateTest, MatchReadsTheFirstTokenWhenThereIsNone) {
  SchemaLexan &lexan = open("NAME cn\n");
  lexan.match(TOK_NAME);
  EXPECT_EQ(lexan.getCurrentToken(), -1);
  lexan.match(-1);
  EXPECT_EQ(currentToken(lexan), "TOK_NAME(NAME)");
}

TEST_F(SchemaLexanStateTest, TheEndLeavesTheCurrentToken) {
  // A text, its last token, and the index of that one's text, which is
  // forgotten only when the end comes where no other token has started.
  const struct {
    const char *text;
    int token;
    int index;
  } cases[] = {
      {"", -1, -1},
      {"cn", -1, -1},
      {"(", '(', -1},
      {"( cn", '(', -1},
      {"NAME ", TOK_NAME, -1},
      {"NAME\n", TOK_NAME, -1},
      {"NAME #", TOK_NAME, -1},
      {"NAME #\n", TOK_NAME, -1},
      {"NAME cn", TOK_NAME, 1},
      {"NAME 'cn'", TOK_NAME, 1},
      {"NAME '", TOK_NAME, 1},
      {"NAME 2", TOK_NAME, 1},
      {"NAME 2 ", TOK_NAME, 1},
      {"NAME 2{", TOK_NAME, 1},
      {"NAME 2{6}", TOK_NAME, 1},
      {"cn sn", TOK_ID, 25},
      {"2 sn", TOK_NUMBER, 25},
  };
  for (const auto &each : cases) {
    SCOPED_TRACE(each.text);
    SchemaLexan &lexan = open(each.text);
    while (lexan.lexan() != TOK_DONE) {
    }
    EXPECT_EQ(lexan.getCurrentToken(), each.token);
    EXPECT_EQ(lexan.getTokenValIndex(), each.index);
    EXPECT_FALSE(lexan.fileIsOpen());
    const int line = lexan.getLineNumber();
    for (int again = 0; again < 3; ++again) {
      EXPECT_EQ(lexan.lexan(), TOK_DONE);
      EXPECT_EQ(lexan.getCurrentToken(), each.token);
      EXPECT_EQ(lexan.getTokenValIndex(), -1);
      EXPECT_EQ(lexan.getLineNumber(), line);
    }
  }
}

TEST_F(SchemaLexanStateTest, WhatIsAddedBehindTheEndIsNotRead) {
  for (const char *text : {"", "( ", "NAME\n", "NAME cn", "1 ", "'cn'", "#"}) {
    SCOPED_TRACE(text);
    SchemaLexan &lexan = open(text);
    while (lexan.lexan() != TOK_DONE) {
    }
    std::ofstream more(m_directory.path() / kName, std::ios::app);
    more << " ( more\n";
    more.close();
    EXPECT_EQ(lexan.lexan(), TOK_DONE);
    EXPECT_EQ(lexan.lexan(), TOK_DONE);
    EXPECT_FALSE(lexan.fileIsOpen());
  }
}

TEST_F(SchemaLexanStateTest, TheFileIsOpenUntilItsEndIsReached) {
  SchemaLexan &lexan = open("cn )");
  EXPECT_TRUE(lexan.fileIsOpen());
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  EXPECT_TRUE(lexan.fileIsOpen());
  EXPECT_EQ(lexan.lexan(), ')');
  EXPECT_TRUE(lexan.fileIsOpen());
  EXPECT_EQ(lexan.lexan(), TOK_DONE);
  EXPECT_FALSE(lexan.fileIsOpen());
}

// A class that embeds the analyser may watch it or stop it.
class StoppingLexan : public SchemaLexan {
 public:
  using SchemaLexan::SchemaLexan;
  ~StoppingLexan() override { ++s_destroyed; }

  int lexan() override { return ++m_calls > 2 ? 999 : SchemaLexan::lexan(); }

  static int s_destroyed;

 private:
  int m_calls = 0;
};

int StoppingLexan::s_destroyed = 0;

TEST_F(SchemaLexanStateTest, MatchReadsThroughTheDerivedClass) {
  m_directory.write(kName, "( cn )\n");
  StoppingLexan lexan(m_directory.string(), kName);
  lexan.match(-1);
  EXPECT_EQ(currentToken(lexan), "'('");
  lexan.match('(');
  EXPECT_EQ(currentToken(lexan), "TOK_ID(cn)");
  lexan.match(TOK_ID);
  EXPECT_EQ(lexan.getCurrentToken(), 999);
  EXPECT_EQ(lexan.lexan(), 999);
}

// One that says where it stands, and goes elsewhere.
class PlacedLexan : public SchemaLexan {
 public:
  using SchemaLexan::position;
  using SchemaLexan::readFrom;
  using SchemaLexan::reposition;
  using SchemaLexan::SchemaLexan;
};

// A file that is read in several pieces: a name of five bytes a line.
TEST_F(SchemaLexanStateTest, KnowsItsPositionAndCanLeaveIt) {
  constexpr int kNames = 5000;
  std::string text;
  for (int name = 0; name < kNames; ++name) {
    text += 'n' + std::to_string(10000 + name).substr(1) + '\n';
  }
  m_directory.write(kName, text);
  PlacedLexan lexan(m_directory.string(), kName);
  EXPECT_EQ(lexan.position(), 0);
  for (int name = 0; name < kNames; ++name) {
    ASSERT_EQ(lexan.lexan(), TOK_ID);
    ASSERT_EQ(lexan.position(), 6 * name + 5);
  }
  EXPECT_EQ(lexan.lexan(), TOK_DONE);
  for (const int name : {4999, 0, 1, 700, 682, 683, 1365, 3000}) {
    lexan.reposition(6 * name, name + 1);
    lexan.match(lexan.getCurrentToken());
    EXPECT_EQ(
        currentToken(lexan),
        "TOK_ID(" + text.substr(6U * static_cast<unsigned>(name), 5) + ")");
    EXPECT_EQ(lexan.getLineNumber(), name + 1);
    EXPECT_EQ(lexan.position(), 6 * name + 5);
  }
}

TEST_F(SchemaLexanStateTest, ReadsFromAnotherSourceFromThereOn) {
  m_directory.write(kName, "cn sn\n");
  PlacedLexan lexan(m_directory.string(), kName);
  lexan.match(-1);
  EXPECT_EQ(currentToken(lexan), "TOK_ID(cn)");
  std::stringbuf source("2.5 )");
  lexan.readFrom(&source);
  EXPECT_EQ(allTokens(lexan), "1: TOK_NUMBER(2.5) ')' TOK_DONE");
  EXPECT_EQ(lexan.position(), 5);
  std::stringbuf one("(");
  lexan.readFrom(&one);
  lexan.reposition(0, 1);
  EXPECT_EQ(lexan.lexan(), '(');
  EXPECT_EQ(lexan.position(), 1);
}

// A source that has one character at a time, and no buffer.
class SlowSource : public std::streambuf {
 public:
  explicit SlowSource(std::string text) : m_text(std::move(text)) {}

 private:
  int_type underflow() override {
    return m_next < m_text.size() ? traits_type::to_int_type(m_text[m_next])
                                  : traits_type::eof();
  }
  int_type uflow() override {
    const int_type c = underflow();
    ++m_next;
    return c;
  }

  const std::string m_text;
  std::size_t m_next = 0;
};

TEST_F(SchemaLexanStateTest, ReadsFromASourceWithoutABuffer) {
  PlacedLexan lexan("", "");
  SlowSource source("cn ( 2.5 {64} 'a b' NAME\n");
  lexan.readFrom(&source);
  EXPECT_EQ(allTokens(lexan),
            "1: TOK_ID(cn) '(' TOK_NUMBER_LEN(2.5{64}) TOK_ID(a b) "
            "TOK_NAME(NAME) 2: TOK_DONE");
}

// A source that says how much it has at hand, and notes what it is asked for.
class CountedSource : public std::streambuf {
 public:
  CountedSource(std::string text, std::streamsize atHand)
      : m_text(std::move(text)), m_atHand(atHand) {}

  const std::vector<std::streamsize> &asked() const { return m_asked; }

 private:
  int_type underflow() override {
    return m_next < m_text.size() ? traits_type::to_int_type(m_text[m_next])
                                  : traits_type::eof();
  }
  std::streamsize showmanyc() override { return m_atHand; }
  std::streamsize xsgetn(char *out, std::streamsize size) override {
    m_asked.push_back(size);
    const std::size_t copied =
        m_text.copy(out, static_cast<std::size_t>(size), m_next);
    m_next += copied;
    return static_cast<std::streamsize>(copied);
  }

  const std::string m_text;
  const std::streamsize m_atHand;
  std::size_t m_next = 0;
  std::vector<std::streamsize> m_asked;
};

// One that has nothing at hand would be waited for.
TEST_F(SchemaLexanStateTest, AsksForWhatTheSourceHasInPiecesOfAKilobyte) {
  const struct {
    std::streamsize atHand;
    std::vector<std::streamsize> asked;
  } cases[] = {
      {-1, std::vector<std::streamsize>(2500, 1)},
      {0, std::vector<std::streamsize>(2500, 1)},
      {1, std::vector<std::streamsize>(2500, 1)},
      {2, std::vector<std::streamsize>(1250, 2)},
      {625, {625, 625, 625, 625}},
      {1024, {1024, 1024, 1024}},
      {1025, {1024, 1024, 1024}},
      {2500, {1024, 1024, 1024}},
  };
  for (const auto &each : cases) {
    SCOPED_TRACE(each.atHand);
    PlacedLexan lexan("", "");
    CountedSource source(std::string(2499, ' ') + ')', each.atHand);
    lexan.readFrom(&source);
    EXPECT_EQ(allTokens(lexan), "1: ')' TOK_DONE");
    EXPECT_EQ(source.asked(), each.asked);
  }
}

TEST_F(SchemaLexanStateTest, ASourceThatCannotTellLeavesThePositionUnknown) {
  PlacedLexan lexan("", "");
  CountedSource source("( )", 3);
  lexan.readFrom(&source);
  EXPECT_EQ(lexan.position(), -1);
  EXPECT_EQ(lexan.lexan(), '(');
  EXPECT_EQ(lexan.position(), -1);
}

TEST_F(SchemaLexanStateTest, AClosedFileHasNoTokensAnyMore) {
  SchemaLexan &lexan = open("cn sn )\n");
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  lexan.closeFile();
  EXPECT_EQ(lexan.lexan(), TOK_DONE);
  EXPECT_EQ(lexan.getLineNumber(), 1);
}

TEST_F(SchemaLexanStateTest, IsDestroyedThroughItsOwnClass) {
  m_directory.write(kName, "");
  StoppingLexan::s_destroyed = 0;
  m_lexan = std::make_unique<StoppingLexan>(m_directory.string(), kName);
  m_lexan.reset();
  EXPECT_EQ(StoppingLexan::s_destroyed, 1);
}

TEST_F(SchemaLexanStateTest, TwoThreadsMayReadTwoFiles) {
  std::string text;
  std::string tokens = "1: ";
  for (int i = 0; i < 2000; ++i) {
    text += "cn" + std::to_string(i) + " ";
    tokens += "TOK_ID(cn" + std::to_string(i) + ") ";
  }
  std::array<std::string, 2> lists;
  std::vector<std::thread> threads;
  for (std::string &list : lists) {
    const std::string name = std::to_string(threads.size());
    m_directory.write(name, text + name + "\n");
    threads.emplace_back([this, name, &list] {
      SchemaLexan lexan(m_directory.string(), name);
      list = allTokens(lexan);
    });
  }
  for (std::thread &thread : threads) {
    thread.join();
  }
  EXPECT_EQ(lists[0], tokens + "TOK_NUMBER(0) 2: TOK_DONE");
  EXPECT_EQ(lists[1], tokens + "TOK_NUMBER(1) 2: TOK_DONE");
}

}  // namespace
