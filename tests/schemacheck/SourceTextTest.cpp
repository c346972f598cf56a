#include "SourceText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

using schemacheck::Position;
using schemacheck::SourceText;

namespace {

TEST(SourceTextTest, KeepsItsNameAndItsBytes) {
  const std::string bytes("a\0b\r\n", 5);
  SourceText text("dir/V3.user.at", bytes);
  EXPECT_EQ(text.name(), "dir/V3.user.at");
  EXPECT_EQ(text.bytes(), bytes);
  const SourceText moved(std::move(text));
  EXPECT_EQ(moved.name(), "dir/V3.user.at");
  EXPECT_EQ(moved.line(1), std::string("a\0b", 3));
}

struct PlaceCase {
  const char *text;
  // "LINE:COLUMN" of each byte and of the end.
  const char *places;
  // All lines in bars.
  const char *lines;
};

const std::vector<PlaceCase> kPlaces = {
    {"", "1:1", "||"},
    {"a", "1:1 1:2", "|a|"},
    {"\n", "1:1 2:1", "|||"},
    {"ab\nc", "1:1 1:2 1:3 2:1 2:2", "|ab|c|"},
    {"ab\nc\n", "1:1 1:2 1:3 2:1 2:2 3:1", "|ab|c||"},
    {"\n\n", "1:1 2:1 3:1", "||||"},
    {"a\r\n\r\n", "1:1 1:2 1:3 2:1 2:2 3:1", "|a|||"},
    // A carriage return ends no line, and is left where it ends none.
    {"a\rb\r", "1:1 1:2 1:3 1:4 1:5", "|a\rb\r|"},
    {"a\r\r\n", "1:1 1:2 1:3 1:4 2:1", "|a\r||"},
    // Columns are bytes.
    {"\t\xC3\xA9 x", "1:1 1:2 1:3 1:4 1:5 1:6", "|\t\xC3\xA9 x|"},
};

TEST(SourceTextTest, EachByteHasAPlace) {
  for (const PlaceCase &place : kPlaces) {
    const SourceText text("file", place.text);
    std::string places;
    for (std::size_t i = 0; i <= text.bytes().size(); ++i) {
      const Position position = text.position(i);
      places += (i == 0 ? "" : " ") + std::to_string(position.line) + ":" +
                std::to_string(position.column);
    }
    EXPECT_EQ(places, place.places) << place.text;
  }
}

TEST(SourceTextTest, APlaceBehindTheTextIsItsEnd) {
  const SourceText text("file", "ab\nc");
  const Position position = text.position(1000);
  EXPECT_EQ(position.line, 2);
  EXPECT_EQ(position.column, 2);
}

TEST(SourceTextTest, LinesLackTheirEnds) {
  for (const PlaceCase &place : kPlaces) {
    const SourceText text("file", place.text);
    const int count = 1 + static_cast<int>(std::count(
                              text.bytes().begin(), text.bytes().end(), '\n'));
    std::string lines = "|";
    for (int line = 1; line <= count; ++line) {
      lines += std::string(text.line(line)) + "|";
    }
    EXPECT_EQ(lines, place.lines) << place.text;
    EXPECT_EQ(text.line(0), "");
    EXPECT_EQ(text.line(-1), "");
    EXPECT_EQ(text.line(count + 1), "");
  }
}

}  // namespace
