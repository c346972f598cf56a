#include "GuardedLexan.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <iostream>
#include <ostream>
#include <string>
#include <vector>

#include "Attribute.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "support/Child.h"
#include "support/TemporaryDirectory.h"

using schemacheck::EndlessReading;
using schemacheck::GuardedLexan;

namespace {

constexpr char kCollective[] =
    "COLLECTIVE is not supported in an attribute type";
constexpr char kEndOfFile[] =
    "expected another field behind a list of names, found the end of the file";

// What a parse gets that must end, and one that must not.
constexpr std::chrono::milliseconds kLongTime(5000);
constexpr std::chrono::milliseconds kShortTime(50);

struct ReadingCase {
  const char *text;     // a file: a section's keyword and what comes behind it
  const char *outcome;  // "1" or "0" if parse() returns, or what is thrown
};

void PrintTo(const ReadingCase &readingCase, std::ostream *out) {
  *out << readingCase.text;
}

template <class Definition>
int parse(SchemaLexan *lexan) {
  Definition definition;
  return definition.parse(lexan);
}

// Reads the section's keyword and the token behind it, which parse() expects to
// be current, and parses one definition.
template <class Lexan>
int parseFirst(Lexan *lexan, const std::function<void(int)> &begin) {
  const int keyword = lexan->lexan();
  lexan->lexan();
  begin(keyword);
  switch (keyword) {
    case TOK_ATTRIBUTETYPES:
      return parse<Attribute>(lexan);
    case TOK_OBJECTCLASSES:
      return parse<ObjectClass>(lexan);
    default:
      return parse<QORAttribute>(lexan);
  }
}

// What became of `parse` in a process of its own: what it wrote to standard
// error, or how else it ended.
std::string outcomeOf(const std::function<void()> &parse,
                      std::chrono::milliseconds time) {
  const ChildResult result = runInChild(parse, time);
  switch (result.end) {
    case ChildResult::End::kReturned:
      return result.error;
    case ChildResult::End::kStillRunning:
    case ChildResult::End::kOutOfMemory:
      return "does not end";
    default:
      return "fails";
  }
}

std::string guardedOutcome(const std::string &directory) {
  const auto read = [&directory] {
    GuardedLexan lexan(directory, "file");
    try {
      std::cerr << parseFirst(
          &lexan, [&lexan](int keyword) { lexan.beginDefinition(keyword); });
    } catch (const EndlessReading &endless) {
      std::cerr << endless.what();
    }
  };
  return outcomeOf(read, kLongTime);
}

std::string plainOutcome(const std::string &directory,
                         std::chrono::milliseconds time) {
  const auto read = [&directory] {
    SchemaLexan lexan(directory, "file");
    std::cerr << parseFirst(&lexan, [](int /*keyword*/) {});
  };
  return outcomeOf(read, time);
}

class GuardedLexanReadingTest : public testing::TestWithParam<ReadingCase> {};

// The guard stops what does not end without it, and nothing else.
TEST_P(GuardedLexanReadingTest, StopsWhatDoesNotEnd) {
  const TemporaryDirectory directory;
  directory.write("file", GetParam().text);
  const std::string outcome = GetParam().outcome;
  const bool ends = outcome.size() == 1;
  EXPECT_EQ(guardedOutcome(directory.string()), outcome);
  EXPECT_EQ(plainOutcome(directory.string(), ends ? kLongTime : kShortTime),
            ends ? outcome : "does not end");
}

const ReadingCase kCollectiveAsField[] = {
    {"attributetypes=( COLLECTIVE )\n", kCollective},
    {"attributetypes= COLLECTIVE )\n", kCollective},
    {"attributetypes{ COLLECTIVE )\n", kCollective},
    {"attributetypes=( ( COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2{4} COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2{ COLLECTIVE )\n", kCollective},
    {"attributetypes=( word COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 'COLLECTIVE' )\n", kCollective},
    {"attributetypes=( 1.2\nCOLLECTIVE\n", kCollective},
    {"attributetypes=( 1.2 $ COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 MUST COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 OBSOLETE COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 SINGLE-VALUE COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 NO-USER-MODIFICATION COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 DESC 'x' COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 SUP 1.3 COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 EQUALITY 1.3 COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 ORDERING 1.3 COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 SUBSTR 1.3 COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 SYNTAX 1.3{4} COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 USAGE x COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 COLLECTIVE SINGLE-VALUE )\n", kCollective},
};

const ReadingCase kCollectiveAsValue[] = {
    {"attributetypes=( 1.2 DESC COLLECTIVE )\n", "1"},
    {"attributetypes=( 1.2 DESC 'COLLECTIVE' )\n", "1"},
    {"attributetypes=( 1.2 SUP COLLECTIVE )\n", "1"},
    {"attributetypes=( 1.2 EQUALITY COLLECTIVE )\n", "1"},
    {"attributetypes=( 1.2 ORDERING COLLECTIVE )\n", "1"},
    {"attributetypes=( 1.2 SUBSTR COLLECTIVE )\n", "1"},
    {"attributetypes=( 1.2 SYNTAX COLLECTIVE )\n", "1"},
    {"attributetypes=( 1.2 USAGE COLLECTIVE )\n", "1"},
    {"attributetypes= DESC COLLECTIVE )\n", "1"},
    {"attributetypes=( 1.2 DESC COLLECTIVE COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 DESC DESC COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 DESC ) COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 DESC } COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 DESC attributetypes COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 DESC NAME 'a' COLLECTIVE )\n", kCollective},
    {"attributetypes=( 1.2 OBSOLETE DESC COLLECTIVE )\n", "1"},
    {"attributetypes=( 1.2 DBNAME COLLECTIVE )\n", kCollective},
};

// The token directly behind NAME is never the end of the names, whatever it is.
const ReadingCase kCollectiveAmongNames[] = {
    {"attributetypes=( NAME 'a' COLLECTIVE )\n", kCollective},
    {"attributetypes=( NAME 'a' 'COLLECTIVE' )\n", kCollective},
    {"attributetypes=( NAME ( 'a' 'b' ) COLLECTIVE )\n", kCollective},
    {"attributetypes=( NAME ( COLLECTIVE )\n", kCollective},
    {"attributetypes=( NAME ( 'COLLECTIVE' 'a' ) )\n", kCollective},
    {"attributetypes=( NAME ) } NAME COLLECTIVE )\n", kCollective},
    {"attributetypes=( NAME 'a' ) objectclasses COLLECTIVE )\n", kCollective},
    {"attributetypes= NAME 'a' COLLECTIVE )\n", kCollective},
    {"attributetypes=( NAME 'a' OBSOLETE COLLECTIVE )\n", kCollective},
    {"attributetypes=( NAME 'a' SINGLE-VALUE COLLECTIVE )\n", kCollective},
    {"attributetypes=( NAME 'a' NO-USER-MODIFICATION COLLECTIVE )\n",
     kCollective},
    {"attributetypes=( NAME 'a' DESC COLLECTIVE )\n", "1"},
    {"attributetypes=( NAME 'a' SUP COLLECTIVE )\n", "1"},
    {"attributetypes=( NAME 'a' EQUALITY COLLECTIVE )\n", "1"},
    {"attributetypes=( NAME 'a' ORDERING COLLECTIVE )\n", "1"},
    {"attributetypes=( NAME 'a' SUBSTR COLLECTIVE )\n", "1"},
    {"attributetypes=( NAME 'a' SYNTAX COLLECTIVE )\n", "1"},
    {"attributetypes=( NAME 'a' USAGE COLLECTIVE )\n", "1"},
    {"attributetypes=( NAME COLLECTIVE OBSOLETE )\n", "1"},
    {"attributetypes=( NAME 'COLLECTIVE' DESC 'x' )\n", "1"},
    {"attributetypes=( NAME COLLECTIVE COLLECTIVE )\n", kCollective},
    {"attributetypes=( NAME COLLECTIVE )\n", kEndOfFile},
    {"attributetypes=( NAME DESC COLLECTIVE )\n", kCollective},
    {"attributetypes=( NAME 'DESC' COLLECTIVE )\n", kCollective},
    {"attributetypes=( NAME SUP 'COLLECTIVE' )\n", kCollective},
    {"attributetypes=( NAME SYNTAX DESC COLLECTIVE )\n", "1"},
    {"attributetypes=( NAME NAME DESC COLLECTIVE )\n", "1"},
    {"attributetypes=( NAME OBSOLETE 'a' DESC COLLECTIVE )\n", "1"},
    {"attributetypes=( NAME 'a' OBSOLETE NAME DESC COLLECTIVE )\n",
     kCollective},
    {"attributetypes=( NAME 'a' OBSOLETE NAME COLLECTIVE DESC 'x' )\n", "1"},
    {"attributetypes=( NAME 'a' SINGLE-VALUE NAME DESC COLLECTIVE )\n",
     kCollective},
    {"attributetypes=( NAME 'a' NO-USER-MODIFICATION NAME DESC COLLECTIVE )\n",
     kCollective},
};

const ReadingCase kCollectiveElsewhere[] = {
    {"attributetypes=( 1.2 collective Collective )\n", "1"},
    {"attributetypes=( 1.2 # COLLECTIVE\n )\n", "1"},
    {"attributetypes=( 1.2 OBSOLETE COLLECTIVE", "0"},
    {"attributetypes=( 1.2 OBSOLETE ) COLLECTIVE\n", "1"},
    {"attributetypes=( 1.2 OBSOLETE } COLLECTIVE\n", "1"},
    {"attributetypes=( 1.2 objectclasses COLLECTIVE\n", "0"},
    {"attributetypes COLLECTIVE ( 1.2 )\n", "1"},
    {"objectclasses=( COLLECTIVE )\n", "1"},
    {"objectclasses=( 1.2 NAME 'k' COLLECTIVE STRUCTURAL )\n", "1"},
    {"objectclasses=( 1.2 NAME COLLECTIVE DESC COLLECTIVE SUP COLLECTIVE "
     "MUST COLLECTIVE MAY ( a $ COLLECTIVE ) )\n",
     "1"},
    {"QORAttributetypes=( COLLECTIVE )\n", "1"},
    {"QORAttributetypes=( 1.2 DBNAME COLLECTIVE LENGTH COLLECTIVE "
     "ACCESS-CLASS COLLECTIVE COLLECTIVE )\n",
     "1"},
    {"QORAttributetypes=( 1.2 DBNAME ( 'A' COLLECTIVE ) )\n", "1"},
};

const ReadingCase kEndOfFileAmongNames[] = {
    {"attributetypes=( 1.2 NAME\n", kEndOfFile},
    {"attributetypes=( 1.2 NAME 'a'", kEndOfFile},
    {"attributetypes=( 1.2 NAME 'a'\n", kEndOfFile},
    {"attributetypes=( 1.2 NAME 'a' )\n", kEndOfFile},
    {"attributetypes=( 1.2 NAME ( 'a' 'b' ) )", kEndOfFile},
    {"attributetypes=( 1.2 NAME ( 'a' ) ) # OBSOLETE\n", kEndOfFile},
    {"attributetypes=( 1.2 NAME ( 'a' ) ) }\n", kEndOfFile},
    {"attributetypes=( 1.2 NAME 'a' )\nattributetypes=( 1.3 NAME 'b' )\n",
     kEndOfFile},
    {"attributetypes=( 1.2 NAME 'a' )\nattributetypes=( 1.3 OBSOLETE )\n", "1"},
    {"attributetypes=( 1.2 NAME 'a' MUST MAY STRUCTURAL )\n", kEndOfFile},
    {"attributetypes=( 1.2 NAME 'a' OBSOLETE\n", "0"},
    {"objectclasses=( 1.2 NAME\n", kEndOfFile},
    {"objectclasses=( 1.2 NAME 'k' )\n", kEndOfFile},
    {"objectclasses=( 1.2 NAME 'k' )\nobjectclasses=( 1.3 NAME 'l' )\n",
     kEndOfFile},
    {"objectclasses=( 1.2 NAME 'k' )\nobjectclasses=( 1.3 MAY ( a ) )\n", "1"},
    {"objectclasses=( 1.2 NAME 'k' SYNTAX SINGLE-VALUE )\n", kEndOfFile},
    {"objectclasses=( 1.2 NAME 'k' ABSTRACT\n", "0"},
    {"QORAttributetypes=( 1.2 DBNAME\n", kEndOfFile},
    {"QORAttributetypes=( 1.2 DBNAME ( 'A'\n", kEndOfFile},
    {"QORAttributetypes=( 1.2 DBNAME ( 'A' NAME DESC }\n", kEndOfFile},
    {"QORAttributetypes=( 1.2 DBNAME ( 'A' )\n", "0"},
    {"QORAttributetypes=( 1.2 DBNAME 'A' )\n", "0"},
    {"QORAttributetypes=( 1.2 DBNAME ( 'A' LENGTH\n", "0"},
};

// The end of the file in every other place is none of the guard's business.
const ReadingCase kEndOfFileElsewhere[] = {
    {"attributetypes=", "0"},
    {"attributetypes=(", "0"},
    {"attributetypes=( 1.2 DESC\n", "0"},
    {"attributetypes=( 1.2 SYNTAX 1.3", "0"},
    {"attributetypes=( 1.2 OBSOLETE )", "1"},
    {"objectclasses=( 1.2 SUP\n", "0"},
    {"objectclasses=( 1.2 SUP ( a $", "0"},
    {"objectclasses=( 1.2 MUST", "0"},
    {"objectclasses=( 1.2 MAY ( a $ b\n", "0"},
    {"QORAttributetypes=( 1.2 ACCESS-CLASS\n", "0"},
    {"QORAttributetypes=( 1.2 LENGTH\n", "0"},
};

INSTANTIATE_TEST_SUITE_P(CollectiveAsField, GuardedLexanReadingTest,
                         testing::ValuesIn(kCollectiveAsField));
INSTANTIATE_TEST_SUITE_P(CollectiveAsValue, GuardedLexanReadingTest,
                         testing::ValuesIn(kCollectiveAsValue));
INSTANTIATE_TEST_SUITE_P(CollectiveAmongNames, GuardedLexanReadingTest,
                         testing::ValuesIn(kCollectiveAmongNames));
INSTANTIATE_TEST_SUITE_P(CollectiveElsewhere, GuardedLexanReadingTest,
                         testing::ValuesIn(kCollectiveElsewhere));
INSTANTIATE_TEST_SUITE_P(EndOfFileAmongNames, GuardedLexanReadingTest,
                         testing::ValuesIn(kEndOfFileAmongNames));
INSTANTIATE_TEST_SUITE_P(EndOfFileElsewhere, GuardedLexanReadingTest,
                         testing::ValuesIn(kEndOfFileElsewhere));

std::vector<std::string> tokensOf(SchemaLexan *lexan) {
  std::vector<std::string> tokens;
  int token = 0;
  do {
    token = lexan->lexan();
    std::string text;
    lexan->getStringValue(lexan->getTokenValIndex(), text);
    tokens.push_back(std::to_string(token) + ' ' + text + ' ' +
                     std::to_string(lexan->getCurrentToken()) + ' ' +
                     std::to_string(lexan->getLineNumber()));
  } while (token != TOK_DONE);
  return tokens;
}

TEST(GuardedLexanTest, ReadsTheSameTokensAsTheScanner) {
  const TemporaryDirectory directory;
  directory.write("file",
                  "attributetypes=( 1.2 NAME ( 'a' 'b' ) COLLECTIVE\n"
                  "# a comment\n"
                  "DESC 'a (b) c' SYNTAX 1.3 {64} 1.4{x ) }\r\n\xc3\xa4");
  SchemaLexan plain(directory.string(), "file");
  GuardedLexan guarded(directory.string(), "file");
  EXPECT_EQ(tokensOf(&guarded), tokensOf(&plain));
}

TEST(GuardedLexanTest, IsOpenWhenTheScannerIs) {
  const TemporaryDirectory directory;
  directory.write("file", "x");
  EXPECT_TRUE(GuardedLexan(directory.string(), "file").fileIsOpen());
  EXPECT_FALSE(GuardedLexan(directory.string(), "other").fileIsOpen());
}

TEST(GuardedLexanTest, WatchesNothingBeforeTheFirstDefinition) {
  const TemporaryDirectory directory;
  directory.write("file", "COLLECTIVE NAME 'a' COLLECTIVE DESC COLLECTIVE\n");
  GuardedLexan lexan(directory.string(), "file");
  EXPECT_EQ(tokensOf(&lexan).back(), "260  1021 2");
}

// A definition is watched from its own start, whatever came before it.
TEST(GuardedLexanTest, BeginsAnewWithEachDefinition) {
  const TemporaryDirectory directory;
  directory.write("file", "DESC COLLECTIVE NAME COLLECTIVE\n");
  GuardedLexan lexan(directory.string(), "file");
  lexan.beginDefinition(TOK_ATTRIBUTETYPES);
  EXPECT_EQ(lexan.lexan(), TOK_DESC);
  lexan.beginDefinition(TOK_ATTRIBUTETYPES);
  EXPECT_THROW(lexan.lexan(), EndlessReading);
  EXPECT_EQ(lexan.lexan(), TOK_NAME);
  lexan.beginDefinition(TOK_OBJECTCLASSES);
  EXPECT_EQ(lexan.lexan(), TOK_COLLECTIVE);
}

}  // namespace
