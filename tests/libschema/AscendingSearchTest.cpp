#include "internal/AscendingSearch.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <map>
#include <string>

namespace {

using Table = std::map<std::string, int>;
using libschema::AscendingSearch;

// What is found of the single letters of `keys`, in a table of those of
// `entries`.
std::string found(const std::string &entries, const std::string &keys) {
  Table table;
  for (const char c : entries) {
    table[std::string(1, c)] = c;
  }
  AscendingSearch search(&table);
  std::string text;
  for (const char c : keys) {
    const auto entry = search.find(std::string(1, c));
    text += entry == table.end() ? '-' : static_cast<char>(entry->second);
  }
  return text;
}

TEST(AscendingSearchTest, FindsNothingInAnEmptyTable) {
  EXPECT_EQ(found("", "aab"), "---");
}

TEST(AscendingSearchTest, FindsWhatIsThere) {
  EXPECT_EQ(found("abcdef", "abcdef"), "abcdef");
  EXPECT_EQ(found("bdf", "abcdefg"), "-b-d-f-");
  EXPECT_EQ(found("abc", "aabbccdd"), "aabbcc--");
  EXPECT_EQ(found("abcdefghijklmnopqrstuvwxyz", "aelmz"), "aelmz");
  EXPECT_EQ(found("acegikmoqsuwy", "bkltyz"), "-k--y-");
}

// Every table and every ascending list of keys out of eight letters.
TEST(AscendingSearchTest, AgreesWithTheTable) {
  const std::string letters = "abcdefgh";
  const auto chosen = [&letters](unsigned set) {
    std::string text;
    for (std::size_t index = 0; index < letters.size(); ++index) {
      if ((set >> index & 1U) != 0) {
        text += letters[index];
      }
    }
    return text;
  };
  for (unsigned entries = 0; entries < 256; ++entries) {
    for (unsigned keys = 0; keys < 256; ++keys) {
      std::string expected;
      for (const char c : chosen(keys)) {
        expected += chosen(entries).find(c) == std::string::npos ? '-' : c;
      }
      ASSERT_EQ(found(chosen(entries), chosen(keys)), expected);
    }
  }
}

TEST(AscendingSearchTest, OtherEntriesThanTheOneFoundMayBeErased) {
  for (const char *kept : {"a", "c", "f", "h"}) {
    Table table;
    for (const char *key : {"a", "b", "c", "d", "e", "f", "g", "h"}) {
      table[key] = 1;
    }
    AscendingSearch search(&table);
    const auto entry = search.find(kept);
    ASSERT_NE(entry, table.end());
    table.erase(table.begin(), entry);
    table.erase(std::next(entry), table.end());
    EXPECT_EQ(search.find(kept), entry);
    EXPECT_EQ(search.find("z"), table.end());
  }
}

TEST(AscendingSearchTest, WhatIsMissingMayBeAdded) {
  Table table = {{"b", 1}, {"d", 2}};
  AscendingSearch search(&table);
  std::string missing;
  for (const char *key : {"a", "b", "c", "cc", "d", "e", "f"}) {
    if (search.find(key) == table.end()) {
      missing += key;
      table[key] = 3;
    }
  }
  EXPECT_EQ(missing, "acccef");
}

}  // namespace
