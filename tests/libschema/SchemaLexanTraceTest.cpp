// The trace records of the analyser's operations.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iostream>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include "SchemaLexan.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace {

using Records = std::vector<std::string>;

constexpr char kLookUp[] = "53040100";
constexpr char kLexan[] = "53040200";
constexpr char kMatch[] = "53040300";
constexpr char kInsertString[] = "53040400";
constexpr char kInsertCharacter[] = "53040500";
constexpr char kDumpTable[] = "53040600";
constexpr char kDump[] = "53040700";
constexpr char kGetLineNumber[] = "53040800";
constexpr char kGetFileName[] = "53040900";
constexpr char kGetWorkingDir[] = "53040a00";
constexpr char kFileIsOpen[] = "53040b00";

std::string entry(const std::string &id) {
  return "entry " + id + " kind 3200000";
}

std::string exit(const std::string &id, int code) {
  return "exit " + id + " kind 21 event 1000 code " + std::to_string(code);
}

// A call of a traced operation, and the code of its exit record.
struct Operation {
  const char *id;
  std::function<void(SchemaLexan &)> call;
  int code;
};

class SchemaLexanTraceTest : public testing::Test {
 protected:
  SchemaLexanTraceTest() {
    m_directory.write("file", "\nNAME cn )\n");
    m_out.open(m_directory.path() / "out");
    m_console = std::cout.rdbuf(m_printed.rdbuf());
  }
  ~SchemaLexanTraceTest() override { std::cout.rdbuf(m_console); }

  // Each traced operation, to be called in this order behind the first token.
  std::vector<Operation> operations() {
    return {
        {kLookUp, [](SchemaLexan &lexan) { lexan.lookUp(TOK_REVERSE, 3); }, 18},
        {kLookUp, [](SchemaLexan &lexan) { lexan.lookUp(7, 0); }, -1},
        {kLexan, [](SchemaLexan &lexan) { lexan.lexan(); }, TOK_ID},
        {kInsertString,
         [](SchemaLexan &lexan) { lexan.insertString("sn", TOK_ID); }, 26},
        {kInsertCharacter,
         [](SchemaLexan &lexan) { lexan.insertCharacter('$', 36); }, 27},
        {kDumpTable, [](SchemaLexan &lexan) { lexan.dumpTable("table"); }, 0},
        {kDump, [this](SchemaLexan &lexan) { lexan.dump(2, m_out); }, 0},
        {kGetLineNumber, [](SchemaLexan &lexan) { lexan.getLineNumber(); }, 2},
        {kGetFileName, [](SchemaLexan &lexan) { lexan.getFileName(); }, 0},
        {kGetWorkingDir, [](SchemaLexan &lexan) { lexan.getWorkingDir(); }, 0},
        {kFileIsOpen, [](SchemaLexan &lexan) { lexan.fileIsOpen(); }, 1},
        {kMatch, [](SchemaLexan &lexan) { lexan.match(-7); }, 0},
    };
  }

  const TemporaryDirectory m_directory;
  std::ofstream m_out;
  const std::ostringstream m_printed;
  std::streambuf *m_console;
};

TEST_F(SchemaLexanTraceTest, EachBitOfTheMaskAsksForItsRecords) {
  const struct {
    unsigned int mask;
    bool entries;
    bool exits;
  } masks[] = {
      {0, false, false},
      {kTraceEntry, true, true},
      {kTraceExit, false, true},
      {kTraceEntry | kTraceExit, true, true},
      {kTraceWalkEntry | kTraceWalkExit, false, false},
      {kTraceDebug, false, false},
      {~(kTraceEntry | kTraceExit), false, false},
      {~kTraceEntry, false, true},
      {~kTraceExit, true, true},
      {~0U, true, true},
  };
  for (const auto &each : masks) {
    SCOPED_TRACE(each.mask);
    SchemaLexan lexan(m_directory.string(), "file");
    lexan.lexan();
    for (const Operation &operation : operations()) {
      Records expected;
      if (each.entries) {
        expected.push_back(entry(operation.id));
      }
      if (each.exits) {
        expected.push_back(exit(operation.id, operation.code));
      }
      const TraceRecorder trace(each.mask);
      operation.call(lexan);
      EXPECT_EQ(trace.records(), expected) << operation.id;
    }
  }
}

TEST_F(SchemaLexanTraceTest, LexanExitsWithItsToken) {
  m_directory.write("tokens", "1{2} 1{x MAY $ 'x' 7 cn");
  SchemaLexan lexan(m_directory.string(), "tokens");
  const TraceRecorder trace(kTraceExit);
  Records expected;
  for (const int token :
       std::vector<int>{TOK_NUMBER_LEN, TOK_NUMBER_BAD, TOK_ID, TOK_MAY, '$',
                        TOK_ID, TOK_NUMBER, TOK_DONE, TOK_DONE}) {
    EXPECT_EQ(lexan.lexan(), token);
    expected.push_back(exit(kLexan, token));
  }
  EXPECT_EQ(trace.records(), expected);
}

TEST_F(SchemaLexanTraceTest, MatchHoldsTheReadingOfTheNextToken) {
  SchemaLexan lexan(m_directory.string(), "file");
  lexan.lexan();
  const TraceRecorder trace(~0U);
  lexan.match(TOK_NAME);
  lexan.match(TOK_NAME);
  lexan.match(TOK_ID);
  lexan.match(')');
  EXPECT_EQ(
      trace.records(),
      (Records{
          entry(kMatch), entry(kLexan), exit(kLexan, TOK_ID), exit(kMatch, 0),
          // The second one does not match.
          entry(kMatch), exit(kMatch, 0),                                    //
          entry(kMatch), entry(kLexan), exit(kLexan, ')'), exit(kMatch, 0),  //
          entry(kMatch), entry(kLexan), exit(kLexan, TOK_DONE),
          exit(kMatch, 0)}));
}

TEST_F(SchemaLexanTraceTest, AFileThatIsNotOpenExitsWithZero) {
  SchemaLexan lexan(m_directory.string(), "missing");
  const TraceRecorder trace(~0U);
  EXPECT_FALSE(lexan.fileIsOpen());
  EXPECT_EQ(lexan.lexan(), TOK_DONE);
  EXPECT_EQ(trace.records(), (Records{entry(kFileIsOpen), exit(kFileIsOpen, 0),
                                      entry(kLexan), exit(kLexan, TOK_DONE)}));
}

TEST_F(SchemaLexanTraceTest, TheSmallOperationsAreNotTraced) {
  const TraceRecorder trace(~0U);
  {
    SchemaLexan lexan(m_directory.string(), "file");
    std::string string;
    char character = 0;
    lexan.isString(0);
    lexan.isCharacter(0);
    lexan.getCurrentToken();
    lexan.getTokenValIndex();
    lexan.getStringValue(0, string);
    lexan.getCharValue(0, character);
    lexan.clear();
    lexan.skip(2, m_out);
  }
  EXPECT_EQ(trace.records(), Records());
}

// Its lexan() fails as an allocation does.
class FailingLexan : public SchemaLexan {
 public:
  using SchemaLexan::SchemaLexan;

  int lexan() override { throw std::bad_alloc(); }
};

TEST_F(SchemaLexanTraceTest, APassingExceptionLeavesMatchWithAnExitRecord) {
  FailingLexan lexan(m_directory.string(), "file");
  for (const unsigned int mask : {kTraceEntry, kTraceExit}) {
    const TraceRecorder trace(mask);
    EXPECT_THROW(lexan.match(-1), std::bad_alloc);
    Records expected{exit(kMatch, 0)};
    if (mask == kTraceEntry) {
      expected.insert(expected.begin(), entry(kMatch));
    }
    EXPECT_EQ(trace.records(), expected);
  }
  EXPECT_EQ(lexan.getCurrentToken(), -1);
}

TEST_F(SchemaLexanTraceTest, APassingExceptionLeavesDumpWithAnExitRecord) {
  std::ofstream closed;
  closed.exceptions(std::ios::badbit | std::ios::failbit);
  SchemaLexan lexan(m_directory.string(), "file");
  const TraceRecorder trace(~0U);
  EXPECT_THROW(lexan.dump(0, closed), std::ios::failure);
  EXPECT_EQ(trace.records(), (Records{entry(kDump), exit(kDump, 0)}));
}

}  // namespace
