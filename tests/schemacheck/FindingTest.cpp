#include "Finding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "SourceText.h"

using schemacheck::Code;
using schemacheck::Finding;
using schemacheck::findingAt;
using schemacheck::findingOn;
using schemacheck::Severity;
using schemacheck::sortFindings;
using schemacheck::SourceText;

namespace {

std::string textAt(const std::string &bytes, std::size_t offset) {
  return toText(
      findingAt(Code::kReverse, SourceText("dir/f", bytes), offset, "message"));
}

// The text of a finding with this place, line and caret.
std::string text(const std::string &place, const std::string &lines) {
  return "dir/f:" + place + ": warning: [REVERSE] message\n" + lines;
}

TEST(FindingTest, HasTheSeverityOfItsCode) {
  EXPECT_EQ(findingOn(Code::kReverse, "f", "").severity(), Severity::kWarning);
  EXPECT_EQ(findingOn(Code::kTab, "f", "").severity(), Severity::kError);
}

TEST(FindingTest, OnAFileIsALine) {
  EXPECT_EQ(toText(findingOn(Code::kTab, "dir/f", "message")),
            "dir/f: error: [TAB] message\n");
}

TEST(FindingTest, AtAPlaceShowsTheLineAndACaret) {
  EXPECT_EQ(textAt("ab c\nd", 0), text("1:1", "ab c\n^\n"));
  EXPECT_EQ(textAt("ab c\nd", 3), text("1:4", "ab c\n   ^\n"));
  EXPECT_EQ(textAt("ab c\nd", 5), text("2:1", "d\n^\n"));
}

TEST(FindingTest, AtTheEndOfALineHasTheCaretBehindIt) {
  EXPECT_EQ(textAt("ab\nc", 2), text("1:3", "ab\n  ^\n"));
  EXPECT_EQ(textAt("ab\r\nc", 2), text("1:3", "ab\n  ^\n"));
  EXPECT_EQ(textAt("ab\r\nc", 3), text("1:4", "ab\n  ^\n"));
  EXPECT_EQ(textAt("ab\nc", 4), text("2:2", "c\n ^\n"));
  EXPECT_EQ(textAt("ab\n", 3), text("2:1", "\n^\n"));
  EXPECT_EQ(textAt("", 0), text("1:1", "\n^\n"));
}

TEST(FindingTest, TabsReachToEightColumns) {
  EXPECT_EQ(textAt("\tx", 1), text("1:2", "        x\n        ^\n"));
  EXPECT_EQ(textAt("\tx", 0), text("1:1", "        x\n^\n"));
  EXPECT_EQ(textAt("abcdefg\tx", 8), text("1:9", "abcdefg x\n        ^\n"));
  EXPECT_EQ(textAt("abcdefgh\tx", 9),
            text("1:10", "abcdefgh        x\n                ^\n"));
  EXPECT_EQ(textAt("a\tb\tc", 4),
            text("1:5", "a       b       c\n                ^\n"));
}

TEST(FindingTest, NoCaretStandsBelowBytesOutsideAscii) {
  EXPECT_EQ(textAt("\xC3\xA9 x", 3), text("1:4", "\xC3\xA9 x\n"));
  EXPECT_EQ(textAt("x \xFF", 0), text("1:1", "x \xFF\n"));
}

TEST(FindingTest, ControlCharactersAreShownAsQuestionMarks) {
  EXPECT_EQ(textAt(std::string("a\0\x1B\x7F\rb", 6), 5),
            text("1:6", "a????b\n     ^\n"));
  EXPECT_EQ(toText(findingOn(Code::kTab, "f", "a\nb\x1B")),
            "f: error: [TAB] a?b?\n");
}

TEST(FindingTest, OfALongLineThePartAroundThePlaceIsShown) {
  const std::string line = std::string(1500, 'a') + "X" + std::string(700, 'b');
  EXPECT_EQ(textAt(line, 1500),
            text("1:1501", "..." + std::string(500, 'a') + "X" +
                               std::string(499, 'b') + "...\n" +
                               std::string(503, ' ') + "^\n"));
  EXPECT_EQ(textAt(line, 0), text("1:1", std::string(1000, 'a') + "...\n^\n"));
  EXPECT_EQ(textAt(line, line.size()),
            text("1:2202", "..." + std::string(500, 'b') + "\n" +
                               std::string(503, ' ') + "^\n"));
  EXPECT_EQ(textAt(std::string(1000, 'a'), 999),
            text("1:1000", std::string(1000, 'a') + "\n" +
                               std::string(999, ' ') + "^\n"));
}

// The byte that would come first, or behind the last, is within a character.
TEST(FindingTest, CharactersOfALongLineAreNotCut) {
  std::string line(2000, 'a');
  line.replace(499, 2, "\xC3\xA9").replace(1499, 2, "\xC3\xA9");
  EXPECT_EQ(textAt(line, 1000),
            text("1:1001", "..." + line.substr(501, 998) + "...\n" +
                               std::string(502, ' ') + "^\n"));
}

TEST(FindingTest, ALongMessageIsCut) {
  const std::string accented = std::string(999, 'm') + "\xC3\xA9";
  EXPECT_EQ(toText(findingOn(Code::kTab, "f", accented)),
            "f: error: [TAB] " + std::string(999, 'm') + "...\n");
  EXPECT_EQ(
      findingAt(Code::kTab, SourceText("f", "x"), 0, std::string(1001, 'm'))
          .message,
      std::string(1000, 'm') + "...");
  EXPECT_EQ(findingOn(Code::kTab, "f", std::string(1000, 'm')).message,
            std::string(1000, 'm'));
}

// Bytes that go on with a character which nothing begins.
TEST(FindingTest, ALongRunWithoutACharacterIsLeftOut) {
  EXPECT_EQ(findingOn(Code::kTab, "f", std::string(1001, '\x80')).message,
            "...");
  const Finding finding = findingAt(
      Code::kTab, SourceText("f", std::string(2000, '\x80')), 1000, "message");
  EXPECT_EQ(finding.sourceLine, "......");
  EXPECT_EQ(finding.caret, 3U);
}

TEST(FindingTest, AreSortedByPlaceAndSaidOnce) {
  const SourceText user("d/V3.user.at", "ab\ncd\n");
  const SourceText system("d/V3.system.at", "ab\n");
  const std::vector<Finding> sorted = {
      findingOn(Code::kNoFiles, "d", "x"),
      findingOn(Code::kUnknownFile, "d/V3.x", "x"),
      findingOn(Code::kEmptyFile, "d/V3.user.at", "x"),
      findingAt(Code::kTab, user, 0, "x"),
      findingAt(Code::kTab, user, 1, "x"),
      findingAt(Code::kTab, user, 1, "y"),
      findingAt(Code::kReverse, user, 1, "x"),
      findingAt(Code::kTab, user, 3, "x"),
      findingAt(Code::kTab, system, 0, "x"),
      findingOn(Code::kEmptyFile, "d/V3.modifiedschema", "x"),
  };
  const auto textOf = [](const std::vector<Finding> &findings) {
    std::string text;
    for (const Finding &finding : findings) {
      text += toText(finding);
    }
    return text;
  };
  std::mt19937 random(7);
  for (int i = 0; i < 100; ++i) {
    std::vector<Finding> findings = sorted;
    findings.insert(findings.end(), sorted.begin(), sorted.end());
    std::shuffle(findings.begin(), findings.end(), random);
    sortFindings(&findings);
    ASSERT_EQ(textOf(findings), textOf(sorted));
  }
}

}  // namespace
