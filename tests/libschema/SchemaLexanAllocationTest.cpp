// Each allocation of the analyser is made to fail: the first, the second, and
// so on until an operation succeeds.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <new>
#include <streambuf>
#include <string>

#include "SchemaLexan.h"
#include "ldtr.h"
#include "support/TemporaryDirectory.h"

// A sanitizer watches over new and delete itself.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define REPLACES_NEW 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define REPLACES_NEW 0
#endif
#endif
#ifndef REPLACES_NEW
#define REPLACES_NEW 1
#endif

#if REPLACES_NEW

namespace {

// Of this thread: how many allocations succeed before one fails (all, when
// negative), whether all later ones fail too, whether one has failed, and how
// many are not freed.
thread_local long successesLeft = -1;
thread_local bool failureLasts = false;
thread_local bool hasFailed = false;
thread_local long live = 0;

}  // namespace

// Not inlined, or a compiler sees malloc() and free() in the place of new and
// delete, and finds that they do not match.
#define NOT_INLINED __attribute__((noinline))

NOT_INLINED void *operator new(std::size_t size) {
  if (successesLeft == 0) {
    if (!failureLasts) {
      successesLeft = -1;
    }
    hasFailed = true;
    throw std::bad_alloc();
  }
  if (successesLeft > 0) {
    --successesLeft;
  }
  void *memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  ++live;
  return memory;
}

NOT_INLINED void operator delete(void *memory) noexcept {
  if (memory != nullptr) {
    --live;
    std::free(memory);
  }
}

NOT_INLINED void operator delete(void *memory, std::size_t /*size*/) noexcept {
  operator delete(memory);
}

namespace {

// Counts records without an allocation of its own.
struct Counter {
  int entries = 0;
  int exits = 0;
  long code = 0;  // of the exit record that came last
};

void count(const ldtr_record &record, void *counter) {
  auto *counts = static_cast<Counter *>(counter);
  if (record.type == ldtr_record::Type::kEntry) {
    ++counts->entries;
  } else if (record.type == ldtr_record::Type::kExit) {
    ++counts->exits;
    counts->code = record.code;
  }
}

// Takes output without an allocation: a stream would not let one pass.
class Discard : public std::streambuf {
  int_type overflow(int_type c) override { return traits_type::not_eof(c); }
};

class SchemaLexanAllocationTest : public testing::TestWithParam<bool> {
 protected:
  SchemaLexanAllocationTest() {
    m_directory.write(kName, std::string(100, 'w') + " '" +
                                 std::string(40, 's') + "' 1.2.3.4.5.6.7.8.9." +
                                 std::string(100, '9') + " {" +
                                 std::string(100, '1') + "}\n");
    ldtr_set_sink(count, &m_counter);
    trcEvents = ~0U;
  }
  ~SchemaLexanAllocationTest() override {
    trcEvents = 0;
    ldtr_set_sink(nullptr, nullptr);
  }

  // Runs `code` with the allocation after `successes` others failing. True when
  // it came to that; the exception must arrive here.
  bool fails(long successes, const std::function<void()> &code) {
    successesLeft = successes;
    failureLasts = GetParam();
    hasFailed = false;
    bool failed = false;
    try {
      code();
    } catch (const std::bad_alloc &) {
      failed = true;
    }
    successesLeft = -1;
    EXPECT_EQ(failed, hasFailed);
    return failed;
  }

  // Makes every allocation of an operation fail in turn, each with a fresh
  // analyser. The failed operation must leave an exit record with the code 0
  // for its entry record, no memory, and an analyser that can be used.
  void failEach(const std::function<void(SchemaLexan &)> &operation,
                int atLeast) {
    int failures = 0;
    for (bool failed = true; failed; failures += failed ? 1 : 0) {
      SCOPED_TRACE(failures);
      const long before = live;
      {
        SchemaLexan lexan(m_directory.string(), kName);
        m_counter = Counter();
        failed = fails(failures, [&] { operation(lexan); });
        // An argument that is passed by value may fail ahead of the call.
        EXPECT_EQ(m_counter.exits, m_counter.entries);
        if (failed) {
          EXPECT_EQ(m_counter.code, 0);
        } else {
          EXPECT_EQ(m_counter.entries, 1);
        }
        while (lexan.lexan() != TOK_DONE) {
        }
        EXPECT_GE(lexan.insertString("cn", TOK_ID), 25);
      }
      EXPECT_EQ(live, before);
    }
    EXPECT_GE(failures, atLeast);
  }

  static constexpr char kName[] = "a file name too long to be stored inline";

  const TemporaryDirectory m_directory;
  Counter m_counter;
};

TEST_P(SchemaLexanAllocationTest, Table) {
  int failures = 0;
  for (bool failed = true; failed; failures += failed ? 1 : 0) {
    const long before = live;
    failed = fails(failures, [] {
      SchemaSymbolTable table;
      EXPECT_EQ(table.getTableSize(), 25);
    });
    EXPECT_EQ(live, before) << failures;
  }
  EXPECT_GE(failures, 3);
}

TEST_P(SchemaLexanAllocationTest, Construction) {
  const std::string directory = m_directory.string();
  const std::string name = kName;
  int failures = 0;
  for (bool failed = true; failed; failures += failed ? 1 : 0) {
    const long before = live;
    failed = fails(failures, [&directory, &name] {
      SchemaLexan lexan(directory, name);
      EXPECT_EQ(lexan.getCurrentToken(), -1);
    });
    EXPECT_EQ(live, before) << failures;
  }
  EXPECT_GE(failures, 5);
}

TEST_P(SchemaLexanAllocationTest, Lexan) {
  failEach([](SchemaLexan &lexan) { lexan.lexan(); }, 1);
}

TEST_P(SchemaLexanAllocationTest, InsertString) {
  failEach(
      [](SchemaLexan &lexan) {
        lexan.insertString("a text too long to be stored inline", TOK_ID);
      },
      1);
}

TEST_P(SchemaLexanAllocationTest, GetFileName) {
  failEach([](SchemaLexan &lexan) { lexan.getFileName(); }, 1);
}

TEST_P(SchemaLexanAllocationTest, GetWorkingDir) {
  failEach([](SchemaLexan &lexan) { lexan.getWorkingDir(); }, 1);
}

TEST_P(SchemaLexanAllocationTest, DumpTable) {
  Discard discard;
  std::streambuf *console = std::cout.rdbuf(&discard);
  failEach(
      [](SchemaLexan &lexan) {
        lexan.dumpTable("a text too long to be stored inline");
      },
      1);
  std::cout.rdbuf(console);
}

TEST_P(SchemaLexanAllocationTest, Dump) {
  std::ofstream out(m_directory.path() / "out");
  failEach([&out](SchemaLexan &lexan) { lexan.dump(100, out); }, 1);
}

// The exception takes its way through both operations.
TEST_P(SchemaLexanAllocationTest, Match) {
  SchemaLexan lexan(m_directory.string(), kName);
  EXPECT_TRUE(fails(0, [&lexan] { lexan.match(-1); }));
  EXPECT_EQ(m_counter.entries, 2);
  EXPECT_EQ(m_counter.exits, 2);
  EXPECT_EQ(lexan.getCurrentToken(), -1);
}

INSTANTIATE_TEST_SUITE_P(, SchemaLexanAllocationTest, testing::Bool(),
                         [](const auto &lasts) {
                           return lasts.param ? "Lasting" : "Single";
                         });

}  // namespace

#endif
