// What becomes of the platform's operations when memory runs out.
#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <memory>
#include <string>

#include "CSymbolTable.h"
#include "SchemaSymbolTable.h"
#include "getCurrentTimeStamp.h"
#include "ldtr.h"
#include "support/AllocationTesting.h"
#include "support/TemporaryDirectory.h"

namespace {

const std::string kText = "a text too long to be stored inline";

// A table with keywords, a string and a character.
std::unique_ptr<CSymbolTable> make() {
  auto table = std::make_unique<SchemaSymbolTable>();
  EXPECT_EQ(table->insertValue(kText, 259, false), 25);
  EXPECT_EQ(table->insertValue('x', 300, false), 26);
  return table;
}

// The result of an operation, and the table.
std::string outcome(CSymbolTable &table, int result) {
  const TemporaryDirectory directory;
  std::ofstream out(directory.path() / "table");
  table.dump(0, out);
  out.close();
  return std::to_string(result) + '\n' + directory.read("table");
}

template <class Operation>
std::size_t failEach(const Operation &operation) {
  return failEachAllocation(make, operation, outcome);
}

std::unique_ptr<int> nothing() { return std::make_unique<int>(); }

TEST(CSymbolTableAllocationTest, Construction) {
  EXPECT_GT(failEachAllocation(nothing,
                               [](int & /*nothing*/) {
                                 return SchemaSymbolTable().getTableSize();
                               }),
            0U);
  EXPECT_EQ(failEachAllocation(nothing,
                               [](int & /*nothing*/) {
                                 return CSymbolTable().getTableSize();
                               }),
            0U);
}

// Nothing is inserted when there is an exception.
TEST(CSymbolTableAllocationTest, Insertion) {
  const auto makeFull = [] {  // so that the next entry needs more room
    auto table = make();
    while ((table->getTableSize() & (table->getTableSize() - 1)) != 0) {
      table->insertValue('y', 301, false);
    }
    return table;
  };
  EXPECT_GT(failEachAllocation(
                makeFull,
                [](CSymbolTable &table) {
                  return table.insertValue(kText, 302, true);
                },
                outcome),
            1U);
  failEachAllocation(
      makeFull,
      [](CSymbolTable &table) { return table.insertValue('z', 302, true); },
      outcome);
}

TEST(CSymbolTableAllocationTest, Values) {
  EXPECT_GT(
      failEach([](CSymbolTable &table) { return table.lookUpValue(kText); }),
      0U);
  EXPECT_GT(failEachAllocation(make,
                               [](CSymbolTable &table) {
                                 std::string value;
                                 EXPECT_EQ(table.getValue(25, value), 0);
                                 return value;
                               }),
            0U);
}

TEST(CSymbolTableAllocationTest, WhatTakesNoMemory) {
  EXPECT_EQ(failEach([](CSymbolTable &table) {
              char value = 0;
              EXPECT_EQ(table.getValue(26, value), 0);
              return static_cast<int>(value);
            }),
            0U);
  EXPECT_EQ(failEach([](CSymbolTable &table) {
              return table.getTokenValue(25) + table.getTableSize() +
                     table.lookUp(300, 0) + (table.isString(25) ? 1 : 0) +
                     (table.isCharacter(25) ? 2 : 0);
            }),
            0U);
  EXPECT_EQ(failEach([](CSymbolTable &table) {
              table.removeValue(25);
              return table.clear(0);
            }),
            0U);
}

TEST(CSymbolTableAllocationTest, Dumps) {
  const TemporaryDirectory directory;
  const std::string path = directory.write("table", "");
  EXPECT_GT(failEachAllocation(
                make,
                [&path](CSymbolTable &table) {
                  std::ofstream out(path);
                  table.dump(100, out);
                  return 0;
                },
                [&](const CSymbolTable & /*table*/, int) {
                  return directory.read("table");
                }),
            0U);
  EXPECT_GT(failEachAllocation(make,
                               [](CSymbolTable &table) {
                                 const CountedOutput output;
                                 table.tableDump(kText);
                                 return output.size();
                               }),
            0U);
}

TEST(GetCurrentTimeStampAllocationTest, FailsOrIsWhole) {
  EXPECT_GT(failEachAllocation(nothing,
                               [](int & /*nothing*/) {
                                 return getCurrentTimeStamp(1).size();
                               }),
            0U);
}

// Receives records, without an allocation.
struct Received {
  int records = 0;
  std::size_t length = 0;  // of the latest text
};

void receive(const ldtr_record &record, void *context) {
  auto *received = static_cast<Received *>(context);
  ++received->records;
  received->length = std::char_traits<char>::length(record.text);
}

TEST(LdtrAllocationTest, RecordsTakeNoMemory) {
  bool thrown = true;
  Received received;
  EXPECT_FALSE(failsAt(
      1, true,
      [&received] {
        ldtr_set_sink(receive, &received);
        ldtr_write(1, 2, nullptr);
        ldtr_exit_errcode(2, 3, 4, 5, nullptr);
        ldtr_formater_local(2, 6, nullptr).debug(7, "%s", "a short text");
        ldtr_set_sink(nullptr, nullptr);
      },
      &thrown));
  EXPECT_FALSE(thrown);
  EXPECT_EQ(received.records, 3);
}

TEST(LdtrAllocationTest, ALongTextComesWholeOrNotAtAll) {
  const std::string text(1000, 't');
  Received received;
  ldtr_set_sink(receive, &received);
  for (const bool lasting : {false, true}) {
    received = Received();
    for (const std::size_t n : {1U, 2U}) {
      const std::size_t blocks = allBlocks();
      bool thrown = false;
      const bool failed = failsAt(
          n, lasting,
          [&text] {
            ldtr_formater_local(2, 6, nullptr).debug(7, "<%s>", text.c_str());
          },
          &thrown);
      EXPECT_EQ(failed, n == 1);
      EXPECT_EQ(thrown, n == 1);
      EXPECT_EQ(received.records, n == 1 ? 0 : 1);
      EXPECT_EQ(allBlocks(), blocks);
    }
    EXPECT_EQ(received.length, text.size() + 2);
  }
  ldtr_set_sink(nullptr, nullptr);
}

}  // namespace
