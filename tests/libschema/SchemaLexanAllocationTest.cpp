// What becomes of the analyser's operations when memory runs out.
#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <string>

#include "SchemaLexan.h"
#include "support/AllocationTesting.h"
#include "support/FailingAllocation.h"
#include "support/TemporaryDirectory.h"

namespace {

// Makes the operations for derived classes public.
class OpenLexan : public SchemaLexan {
 public:
  using SchemaLexan::position;
  using SchemaLexan::readFrom;
  using SchemaLexan::reposition;
  using SchemaLexan::SchemaLexan;
};

const std::string kText = "a text too long to be stored inline";
constexpr char kName[] = "a file name too long to be stored inline";

class SchemaLexanAllocationTest : public testing::Test {
 protected:
  SchemaLexanAllocationTest() {
    m_directory.write(kName, std::string(100, 'w') + " '" +
                                 std::string(40, 's') + "' 1.2.3.4.5.6.7.8.9." +
                                 std::string(100, '9') + " {" +
                                 std::string(100, '1') + "}\n");
  }

  // An analyser that stands on the first word.
  std::unique_ptr<OpenLexan> make() const {
    auto lexan = std::make_unique<OpenLexan>(m_directory.string(), kName);
    EXPECT_EQ(lexan->lexan(), TOK_ID);
    return lexan;
  }

  // What is seen of the table, and the texts of all further tokens.
  static std::string restOf(SchemaLexan &lexan) {
    std::ostringstream rest;
    std::string text;
    for (int index = 0; lexan.getStringValue(index, text) == 0; ++index) {
      rest << text << '\n';
    }
    while (lexan.lexan() != TOK_DONE) {
      text.clear();
      lexan.getStringValue(lexan.getTokenValIndex(), text);
      rest << lexan.getCurrentToken() << ' ' << text << '\n';
    }
    return rest.str();
  }

  // Lets an operation that reads no token fail. What follows is as if it had
  // not failed. Returns how many allocations it makes.
  template <class Operation>
  std::size_t failEach(const Operation &operation) const {
    return failEachAllocation([this] { return make(); }, operation,
                              [](OpenLexan &lexan, const auto &result) {
                                std::ostringstream text;
                                text << result << '\n' << restOf(lexan);
                                return text.str();
                              });
  }

  // Lets an operation that reads tokens fail. They are lost then, and the
  // analyser goes on behind them.
  void failReading(std::size_t leastAllocations,
                   const std::function<void(OpenLexan &)> &operation) const {
    for (const bool lasting : {false, true}) {
      std::size_t allocations = 0;
      bool thrown = true;
      for (std::size_t n = 1; thrown && !HasFailure(); ++n) {
        SCOPED_TRACE(testing::Message() << lasting << ", n = " << n);
        const std::size_t blocks = allBlocks();
        {
          OpenLexan lexan(m_directory.string(), kName);
          const Calls calls(~0U);
          const bool failed = failsAt(
              n, lasting, [&] { operation(lexan); }, &thrown);
          EXPECT_EQ(thrown, failed);
          EXPECT_TRUE(calls.balanced());
          EXPECT_TRUE(calls.passedWithoutResult());
          EXPECT_EQ(calls.passed() > 0, thrown);
          while (lexan.lexan() != TOK_DONE) {
          }
          EXPECT_GE(lexan.insertString("cn", TOK_ID), 25);
          allocations += thrown ? 1 : 0;
        }
        EXPECT_EQ(allBlocks(), blocks);
      }
      EXPECT_GE(allocations, leastAllocations);
    }
  }

  const TemporaryDirectory m_directory;
};

TEST_F(SchemaLexanAllocationTest, Construction) {
  const std::string directory = m_directory.string();
  const std::string name = kName;
  EXPECT_GE(failEachAllocation([] { return std::make_unique<int>(); },
                               [&](int & /*nothing*/) {
                                 SchemaLexan lexan(directory, name);
                                 return lexan.getCurrentToken();
                               }),
            5U);
}

TEST_F(SchemaLexanAllocationTest, Lexan) {
  failReading(1, [](SchemaLexan &lexan) { lexan.lexan(); });
  failReading(4, [](SchemaLexan &lexan) {
    while (lexan.lexan() != TOK_DONE) {
    }
  });
}

// With the symbol table in use.
TEST_F(SchemaLexanAllocationTest, LexanBesideInsertions) {
  failReading(4, [](SchemaLexan &lexan) {
    lexan.insertCharacter('x', '(');
    while (lexan.lexan() != TOK_DONE) {
    }
  });
}

TEST_F(SchemaLexanAllocationTest, Match) {
  failReading(1, [](SchemaLexan &lexan) { lexan.match(-1); });
}

TEST_F(SchemaLexanAllocationTest, Reposition) {
  failReading(1, [](OpenLexan &lexan) {
    lexan.lexan();
    lexan.reposition(lexan.position() - 2, 1);
    lexan.readFrom(nullptr);
  });
}

TEST_F(SchemaLexanAllocationTest, Insertions) {
  EXPECT_GE(failEach([](SchemaLexan &lexan) {
              return lexan.insertString(kText, TOK_ID);
            }),
            2U);
  EXPECT_GE(failEach([](SchemaLexan &lexan) {
              return lexan.insertCharacter('x', '(');
            }),
            1U);
}

// What asks for the symbol table puts the word into it that was read last.
TEST_F(SchemaLexanAllocationTest, Table) {
  EXPECT_GE(failEach([](SchemaLexan &lexan) { return lexan.isString(25); }),
            1U);
  EXPECT_GE(failEach([](SchemaLexan &lexan) { return lexan.isCharacter(25); }),
            1U);
  EXPECT_GE(failEach([](SchemaLexan &lexan) {
              char value = '-';
              return lexan.getCharValue(25, value);
            }),
            1U);
  EXPECT_GE(
      failEach([](SchemaLexan &lexan) { return lexan.lookUp(TOK_ID, 0); }), 1U);
  EXPECT_GE(failEach([](SchemaLexan &lexan) { return lexan.clear(); }), 1U);
}

TEST_F(SchemaLexanAllocationTest, Texts) {
  EXPECT_GE(failEach([](SchemaLexan &lexan) { return lexan.getFileName(); }),
            1U);
  EXPECT_GE(failEach([](SchemaLexan &lexan) { return lexan.getWorkingDir(); }),
            1U);
  EXPECT_GE(failEach([](SchemaLexan &lexan) {
              std::string text;
              lexan.getStringValue(25, text);
              return text;
            }),
            1U);
}

TEST_F(SchemaLexanAllocationTest, WhatTakesNoMemory) {
  EXPECT_EQ(failEach([](SchemaLexan &lexan) {
              return lexan.getLineNumber() + lexan.getCurrentToken() +
                     lexan.getTokenValIndex() + (lexan.fileIsOpen() ? 1 : 0);
            }),
            0U);
  EXPECT_EQ(failEach([](SchemaLexan &lexan) {
              lexan.closeFile();
              return 0;
            }),
            0U);
}

TEST_F(SchemaLexanAllocationTest, Dumps) {
  EXPECT_GE(failEach([](SchemaLexan &lexan) {
              const CountedOutput output;
              lexan.dumpTable(kText);
              return output.size();
            }),
            1U);
  const std::string path = m_directory.write("out", "");
  EXPECT_GE(failEachAllocation([this] { return make(); },
                               [&path](SchemaLexan &lexan) {
                                 std::ofstream out(path);
                                 lexan.dump(100, out);
                                 lexan.skip(100, out);
                                 return 0;
                               },
                               [this](const SchemaLexan & /*lexan*/, int) {
                                 return m_directory.read("out");
                               }),
            1U);
}

}  // namespace
