// The analyser's symbol table as its operations show and change it, and the
// dumps of both.
#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "SchemaLexan.h"
#include "libschema/SchemaLexanTesting.h"

namespace {

using SchemaLexanTableTest = SchemaLexanFixture;
using SchemaLexanDumpTest = SchemaLexanFixture;

TEST_F(SchemaLexanTableTest, OneScannedTextIsKept) {
  SchemaLexan &lexan = open("cn NAME ( cn 2.5 2.5 '' objectClasses 'x'\n");
  // The entry at index 25 after each token, and the index of the token's text.
  const struct {
    const char *token;
    const char *scanned;
    const char *index;
  } steps[] = {
      {"259", "\t25 259 \"cn\"\n", "25"},
      {"1003", "\t25 259 \"cn\"\n", "1"},
      {"40", "\t25 259 \"cn\"\n", "-1"},
      {"259", "\t25 259 \"cn\"\n", "25"},
      {"2024", "\t25 2024 \"2.5\"\n", "25"},
      {"2024", "\t25 2024 \"2.5\"\n", "25"},
      {"259", "\t25 259 \"\"\n", "25"},
      {"1002", "\t25 259 \"\"\n", "0"},
      {"259", "\t25 259 \"x\"\n", "25"},
  };
  for (const auto &step : steps) {
    lexan.lexan();
    EXPECT_EQ(dumped(lexan, 0),
              dump(step.index, "1", step.token, step.scanned));
  }
}

// Nothing has asked for the table itself here.
TEST_F(SchemaLexanTableTest, GivesTextsFromTheStart) {
  SchemaLexan &lexan = open("cn )\n");
  const auto texts = [&lexan] {
    std::string list;
    for (const int index : {-1, 0, 24, 25, 26}) {
      std::string text = "before";
      const bool given = lexan.getStringValue(index, text) == 0;
      list += (given ? "=" : "-") + text + ' ';
    }
    return list;
  };
  EXPECT_EQ(texts(), "-before =objectclasses =APPROX -before -before ");
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  EXPECT_EQ(texts(), "-before =objectclasses =APPROX =cn -before ");
  EXPECT_EQ(lexan.lexan(), ')');
  EXPECT_EQ(texts(), "-before =objectclasses =APPROX =cn -before ");
}

TEST_F(SchemaLexanTableTest, ShowsTheEntriesOfTheSymbolTable) {
  SchemaLexan &lexan = open("cn\n");
  lexan.lexan();
  EXPECT_EQ(lexan.insertCharacter('$', 36), 26);
  const struct {
    const char *string;  // or null
    int index;
    char character;  // or 0
  } entries[] = {{nullptr, -1, 0}, {"objectclasses", 0, 0}, {"APPROX", 24, 0},
                 {"cn", 25, 0},    {nullptr, 26, '$'},      {nullptr, 27, 0}};
  for (const auto &entry : entries) {
    SCOPED_TRACE(entry.index);
    std::string string = "before";
    char character = '?';
    EXPECT_EQ(lexan.isString(entry.index), entry.string != nullptr);
    EXPECT_EQ(lexan.isCharacter(entry.index), entry.character != 0);
    EXPECT_EQ(lexan.getStringValue(entry.index, string),
              entry.string == nullptr ? 1 : 0);
    EXPECT_EQ(string, entry.string == nullptr ? "before" : entry.string);
    EXPECT_EQ(lexan.getCharValue(entry.index, character),
              entry.character == 0 ? 1 : 0);
    EXPECT_EQ(character, entry.character == 0 ? '?' : entry.character);
  }
}

TEST_F(SchemaLexanTableTest, LooksUpATokenCode) {
  SchemaLexan &lexan = open("cn\n");
  lexan.lexan();
  EXPECT_EQ(lexan.lookUp(TOK_NAME, 0), 1);
  EXPECT_EQ(lexan.lookUp(TOK_NAME, 2), -1);
  EXPECT_EQ(lexan.lookUp(TOK_ID, 2), 25);
  EXPECT_EQ(lexan.lookUp(7, 0), -1);
}

TEST_F(SchemaLexanTableTest, InsertingLeavesTheCurrentToken) {
  SchemaLexan &lexan = open("cn sn\n");
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  EXPECT_EQ(lexan.insertString("more", 7), 26);
  EXPECT_EQ(lexan.insertCharacter('c', 8), 27);
  EXPECT_EQ(dumped(lexan, 0), dump("25", "1", "259",
                                   "\t25 259 \"cn\"\n"
                                   "\t26 7 \"more\"\n"
                                   "\t27 8 \"c\"\n"));
  // The next word takes the place of the last one, at the end.
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  EXPECT_EQ(dumped(lexan, 0), dump("27", "1", "259",
                                   "\t25 7 \"more\"\n"
                                   "\t26 8 \"c\"\n"
                                   "\t27 259 \"sn\"\n"));
}

TEST_F(SchemaLexanTableTest, TheFirstWordTakesThePlaceOfAnInsertedEntry) {
  SchemaLexan &lexan = open("cn sn\n");
  EXPECT_EQ(lexan.insertString("first", 7), 25);
  EXPECT_EQ(lexan.insertString("second", 8), 26);
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  EXPECT_EQ(dumped(lexan, 0),
            dump("26", "1", "259", "\t25 8 \"second\"\n\t26 259 \"cn\"\n"));
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  EXPECT_EQ(dumped(lexan, 0),
            dump("26", "1", "259", "\t25 8 \"second\"\n\t26 259 \"sn\"\n"));
}

TEST_F(SchemaLexanTableTest, InsertedTextsAreFoundAsTokens) {
  const std::vector<std::string> texts = {"a", "b", "c", "objectClasses"};
  for (std::size_t count = 0; count <= texts.size(); ++count) {
    for (std::size_t word = 0; word < texts.size(); ++word) {
      SchemaLexan &lexan = open(texts[word] + " '" + texts[word] + "'\n");
      for (int index = 0; index < static_cast<int>(count); ++index) {
        EXPECT_EQ(lexan.insertString(texts[static_cast<std::size_t>(index)],
                                     300 + index),
                  25 + index);
      }
      const std::string code =
          word < count ? std::to_string(300 + word) : std::string("TOK_ID");
      std::string token = code + '(' + texts[word] + ") ";
      if (texts[word] == "objectClasses" && word >= count) {
        token = "TOK_OBJECTCLASSES(objectclasses) ";
      }
      std::string expected = "1: ";
      expected.append(token).append(token).append("2: TOK_DONE");
      EXPECT_EQ(allTokens(lexan), expected) << count << " inserted";
    }
  }
}

TEST_F(SchemaLexanTableTest, InsertedTextsDoNotHideKeywordsOrCharacters) {
  SchemaLexan &lexan = open("NAME $ a\n");
  EXPECT_EQ(lexan.insertString("NAME", 300), 25);
  EXPECT_EQ(lexan.insertString("$", 301), 26);
  EXPECT_EQ(lexan.insertCharacter('a', 302), 27);
  EXPECT_EQ(allTokens(lexan), "1: TOK_NAME(NAME) '$' TOK_ID(a) 2: TOK_DONE");
}

TEST_F(SchemaLexanTableTest, AnInsertedTextIsGoneAfterTheNextNewWord) {
  SchemaLexan &lexan = open("a b a\n");
  EXPECT_EQ(lexan.insertString("a", 300), 25);
  EXPECT_EQ(allTokens(lexan), "1: 300(a) TOK_ID(b) TOK_ID(a) 2: TOK_DONE");
}

TEST_F(SchemaLexanTableTest, ClearingTakesTheTextFromTheCurrentToken) {
  SchemaLexan &lexan = open("cn\ncn sn\n");
  lexan.lexan();
  lexan.insertString("more", 7);
  EXPECT_EQ(lexan.clear(), -1);
  EXPECT_EQ(dumped(lexan, 0), dump("-1", "1", "259", ""));
  EXPECT_EQ(lexan.clear(), -1);
  EXPECT_EQ(dumped(lexan, 0), dump("-1", "1", "259", ""));
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  EXPECT_EQ(dumped(lexan, 0), dump("25", "2", "259", "\t25 259 \"cn\"\n"));
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  EXPECT_EQ(dumped(lexan, 0), dump("25", "2", "259", "\t25 259 \"sn\"\n"));
}

TEST_F(SchemaLexanTableTest, AfterClearingTheScannedEntryMayMoveDown) {
  SchemaLexan &lexan = open("a b c\n");
  lexan.insertString("first", 7);
  lexan.insertString("second", 8);
  EXPECT_EQ(lexan.lexan(), TOK_ID);
  EXPECT_EQ(lexan.getTokenValIndex(), 26);
  EXPECT_EQ(lexan.clear(), -1);
  for (const char *text : {"b", "c"}) {
    EXPECT_EQ(lexan.lexan(), TOK_ID);
    EXPECT_EQ(
        dumped(lexan, 0),
        dump("25", "1", "259", "\t25 259 \"" + std::string(text) + "\"\n"));
  }
}

std::string tabs(int count) {
  return std::string(count > 0 ? static_cast<std::size_t>(count) : 0U, '\t');
}

TEST_F(SchemaLexanDumpTest, DumpsBehindTabsAndTheTableOneDeeper) {
  SchemaLexan &lexan = open("cn\n");
  for (const int indent : {-2, -1, 0, 1, 3}) {
    std::string expected;
    for (const char *line :
         {"SchemaLexan\n", "{ \n", "  m_filename \"V3.user.at\"\n",
          "  m_tokenvalindex -1\n", "  m_line_num 1\n", "  m_lookahead -1\n",
          "  m_symtable \n"}) {
      expected.append(tabs(indent)).append(line);
    }
    expected.append(keywordLines(tabs(indent + 1)));
    expected.append(tabs(indent)).append("}\n");
    EXPECT_EQ(dumped(lexan, indent), expected) << indent;
  }
}

TEST_F(SchemaLexanDumpTest, DumpsTheStateOfTheReading) {
  SchemaLexan &lexan = open("# comment\nNAME 2.5.4.3{1}\n\n");
  lexan.lexan();
  EXPECT_EQ(dumped(lexan, 0), dump("1", "2", "1003", ""));
  lexan.lexan();
  const std::string scanned = "\t25 2025 \"2.5.4.3{1}\"\n";
  EXPECT_EQ(dumped(lexan, 0), dump("25", "2", "2025", scanned));
  lexan.match(TOK_NUMBER_LEN);
  EXPECT_EQ(dumped(lexan, 0), dump("-1", "4", "260", scanned));
}

TEST_F(SchemaLexanDumpTest, DumpsBehindWhatTheFileHolds) {
  SchemaLexan &lexan = open("");
  std::ofstream out(m_directory.path() / "twice");
  out << "before\n";
  lexan.dump(0, out);
  lexan.dump(0, out);
  out.close();
  const std::string once = dump("-1", "1", "-1", "");
  EXPECT_EQ(m_directory.read("twice"), "before\n" + once + once);
}

TEST_F(SchemaLexanDumpTest, DumpsDecimalNumbersToAnyStream) {
  SchemaLexan &lexan = open("\n\n\n\n\n\n\n\n\n\n\n\ncn\n");
  lexan.lexan();
  std::ofstream out(m_directory.path() / "dump");
  out << std::hex << std::showbase << std::showpos;
  lexan.dump(0, out);
  out.close();
  const std::string text = m_directory.read("dump");
  EXPECT_EQ(text.substr(0, text.find("\t0")),
            "SchemaLexan\n"
            "{ \n"
            "  m_filename \"V3.user.at\"\n"
            "  m_tokenvalindex 25\n"
            "  m_line_num 13\n"
            "  m_lookahead 259\n"
            "  m_symtable \n");
}

TEST_F(SchemaLexanDumpTest, PrintsTheSymbolTable) {
  SchemaLexan &lexan = open("cn\n");
  lexan.lexan();
  lexan.insertCharacter('$', 36);
  const std::ostringstream text;
  std::streambuf *console = std::cout.rdbuf(text.rdbuf());
  lexan.dumpTable("the keywords");
  std::cout.rdbuf(console);
  EXPECT_EQ(text.str(), "the keywords\n" + keywordLines("") +
                            "25 259 \"cn\"\n"
                            "26 36 \"$\"\n");
}

TEST_F(SchemaLexanDumpTest, SkipWritesTabs) {
  SchemaLexan &lexan = open("");
  for (const int count : {-3, -1, 0, 1, 2, 100}) {
    std::ofstream out(m_directory.path() / "tabs");
    lexan.skip(count, out);
    out.close();
    EXPECT_EQ(m_directory.read("tabs"), tabs(count));
  }
}

}  // namespace
