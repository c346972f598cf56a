#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DefinitionTesting.h"
#include "QORAttribute.h"

using definitions::filled;
using definitions::keywords;
using definitions::Outcome;
using definitions::parse;
using definitions::parseBlock;
using definitions::parsed;
using definitions::parseNeverEnds;
using definitions::parseWhole;
using definitions::without;

namespace {

TEST(QORAttributeParseTest, ReadsAStorageDefinition) {
  const std::string text =
      "QORAttributetypes=( 2.5.4.3 DBNAME ( 'CN' 'CN' ) ACCESS-CLASS normal "
      "LENGTH 256 EQUALITY ORDERING SUBSTR APPROX )";
  EXPECT_EQ(parseWhole<QORAttribute>(text),
            (Outcome{1, ')', TOK_DONE,
                     "QORAttributetypes=( 2.5.4.3 DBNAME ( 'CN' 'CN'  ) "
                     "ACCESS-CLASS normal LENGTH 256 "
                     "EQUALITY ORDERING SUBSTR APPROX )\n"}));
  auto attribute = parsed<QORAttribute>(text);
  EXPECT_EQ(attribute.getOid(), "2.5.4.3");
  EXPECT_EQ(attribute.getNames(), std::vector<std::string>());
  EXPECT_EQ(attribute.getFirstName(), "");
  EXPECT_EQ(attribute.getFirstNameLower(), "");
  EXPECT_EQ(attribute.getOidAndName(), "OID --> 2.5.4.3\nName --> \n\n");
}

TEST(QORAttributeParseTest, ReadsEveryFieldInAnyOrder) {
  const std::string line =
      "QORAttributetypes=( 1.2 DBNAME ( 'A' 'b c'  ) ACCESS-CLASS critical "
      "LENGTH 32 EQUALITY ORDERING SUBSTR APPROX )\n";
  for (const char *text :
       {"QORAttributetypes=( 1.2 DBNAME ( 'A' 'b c' ) ACCESS-CLASS critical "
        "LENGTH 32 EQUALITY ORDERING SUBSTR APPROX REVERSE )",
        "QORAttributetypes=( APPROX REVERSE SUBSTR ORDERING EQUALITY LENGTH 32 "
        "ACCESS-CLASS 'critical' DBNAME ( A $ 'b c' ) 1.2 EQUALITY )",
        "QORAttributetypes=(1.2 DBNAME('A''b c')ACCESS-CLASS critical\n"
        "LENGTH 32 EQUALITY ORDERING SUBSTR APPROX)",
        "QORAttributetypes= # a comment\n\n( 1.2 # ( the OID )\n\tDBNAME ( #\n"
        "'A'\n 'b c') ACCESS-CLASS critical # normal\nLENGTH\n32\nEQUALITY\n"
        "ORDERING SUBSTR APPROX )",
        "QORAttributetypes=( 1.2\r\nDBNAME ( 'A'\r\n'b c'\r\n)\r\n"
        "ACCESS-CLASS critical\r\nLENGTH 32\r\nEQUALITY\r\nORDERING SUBSTR\r\n"
        "APPROX\r\n)"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(parseWhole<QORAttribute>(text),
              (Outcome{1, ')', TOK_DONE, line}));
  }
}

// No kind of token is refused, a parenthesis and the next keyword included. A
// character has no text.
TEST(QORAttributeParseTest, AccessClassAndLengthTakeAnyToken) {
  struct Value {
    std::string text, stored;
  };
  std::vector<Value> values = {
      {"normal", "normal"},
      {"'a (b) $ c.d'", "a (b) $ c.d"},
      {"256", "256"},
      {"1.3", "1.3"},
      {"1.3 {64}", "1.3{64}"},
      {"1.3{ ", "1.3{"},
      {"1.3{64 ", "1.3{64"},
      {"'objectClasses'", "objectclasses"},
      {"00", "00"},
  };
  for (const std::string &keyword : keywords()) {
    values.push_back({keyword, keyword});
  }
  for (const char *character :
       {"(", ")", "{", "}", "$", "=", "_", ".", "\r", "\x80", "''"}) {
    values.push_back({character, ""});
  }
  for (const Value &value : values) {
    SCOPED_TRACE(value.text);
    EXPECT_EQ(parseWhole<QORAttribute>("QORAttributetypes=( 1.2 ACCESS-CLASS x "
                                       "ACCESS-CLASS " +
                                       value.text + " SUBSTR )"),
              (Outcome{1, ')', TOK_DONE,
                       "QORAttributetypes=( 1.2 " +
                           (value.stored.empty()
                                ? ""
                                : "ACCESS-CLASS " + value.stored + " ") +
                           "SUBSTR )\n"}));
    EXPECT_EQ(parseWhole<QORAttribute>("QORAttributetypes=( 1.2 LENGTH 7 "
                                       "LENGTH " +
                                       value.text + " SUBSTR )"),
              (Outcome{1, ')', TOK_DONE,
                       "QORAttributetypes=( 1.2 LENGTH " + value.stored +
                           " SUBSTR )\n"}));
  }
}

TEST(QORAttributeParseTest, ALengthOfZeroIsNone) {
  for (const char *length : {"LENGTH 0", "LENGTH '0'", "LENGTH 8 LENGTH 0"}) {
    SCOPED_TRACE(length);
    EXPECT_EQ(parseWhole<QORAttribute>(std::string("QORAttributetypes=( 1.2 ") +
                                       length + " )"),
              (Outcome{1, ')', TOK_DONE, "QORAttributetypes=( 1.2 )\n"}));
  }
}

TEST(QORAttributeParseTest, ARepeatedValueReplacesTheEarlierOne) {
  EXPECT_EQ(
      parseWhole<QORAttribute>(
          "QORAttributetypes=( 1.1 ACCESS-CLASS a LENGTH 1 EQUALITY 1.2 "
          "ACCESS-CLASS b LENGTH 2 EQUALITY )"),
      (Outcome{
          1, ')', TOK_DONE,
          "QORAttributetypes=( 1.2 ACCESS-CLASS b LENGTH 2 EQUALITY )\n"}));
}

TEST(QORAttributeParseTest, ABareWordOrNumberBecomesTheOid) {
  const struct {
    std::string text, oid;
  } kTable[] = {
      {"1.2", "1.2"},
      {"cn-oid", "cn-oid"},
      {"'cn oid'", "cn oid"},
      {"1.2 1.3", "1.3"},
      {"1.2 EQUALITY 1.4", "1.4"},
      // NAME is not known here.
      {"1.2.3 NAME 'cn' DBNAME ( 'CN' )", "cn"},
      {"1.2.3 NAME ( 'cn' 'x' )", "x"},
      {"1.2 X-ORIGIN 'RFC 4519'", "RFC 4519"},
      {"1.2 DBNAME\t'cn'", "cn"},
      {"1.2 QORATTRIBUTETYPES", "QORATTRIBUTETYPES"},
      {"1.2{3}", ""},
      {"1.2{", ""},
      {"1.1 1.2{3} 1.2{", "1.1"},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(
        parsed<QORAttribute>("QORAttributetypes=( " + row.text + " )").getOid(),
        row.oid);
  }
}

TEST(QORAttributeParseTest, OtherTokensBetweenTheFieldsAreIgnored) {
  std::vector<std::string> tokens =
      without(keywords(), {"attributetypes", "DBNAME", "ACCESS-CLASS", "LENGTH",
                           "EQUALITY", "ORDERING", "SUBSTR", "APPROX"});
  ASSERT_EQ(tokens.size(), 17U);
  for (const char *text :
       {"(", "=", "$", "_", ".", "\r", "\x80", "1.3{4}", "1.3{ ",
        "objectClasses", "'QORattributeTypes'", "COLLECTIVE COLLECTIVE"}) {
    tokens.emplace_back(text);
  }
  for (const std::string &token : tokens) {
    SCOPED_TRACE(token);
    EXPECT_EQ(
        parseWhole<QORAttribute>(
            filled("QORAttributetypes=( 1.2 % APPROX % % { )", token)),
        (Outcome{1, ')', TOK_DONE, "QORAttributetypes=( 1.2 APPROX )\n"}));
  }
}

TEST(QORAttributeParseTest, EndsAtAParenthesisABraceAKeywordOrTheEnd) {
  const struct {
    std::string end;
    int result, current, next;
  } kTable[] = {
      {")", 1, ')', TOK_DONE},
      {") )", 1, ')', TOK_DONE},
      {")}", 1, '}', TOK_DONE},
      {")(1.4", 1, '(', TOK_DONE},
      {")\nQORAttributetypes=(", 1, TOK_QORATTRIBUTETYPES, '='},
      {"}", 1, '}', TOK_DONE},
      {"} )", 1, '}', ')'},
      {"attributetypes=(", 0, TOK_ATTRIBUTETYPES, '='},
      {"attributeTypes )", 0, TOK_ATTRIBUTETYPES, ')'},
      {"'attributetypes' )", 0, TOK_ATTRIBUTETYPES, ')'},
      // The keywords of the other sections do not end a storage definition,
      // its own included.
      {"QORAttributetypes=( )", 1, ')', TOK_DONE},
      {"objectclasses=( )", 1, ')', TOK_DONE},
      {"QORAttributetypes }", 1, '}', TOK_DONE},
      {"", 0, TOK_APPROX, TOK_DONE},
      {"\n# ) comment", 0, TOK_APPROX, TOK_DONE},
      {"(", 0, '(', TOK_DONE},
      {"QORAttributetypes=(", 0, '(', TOK_DONE},
      {"objectclasses\n", 0, TOK_OBJECTCLASSES, TOK_DONE},
      // The end of the file takes the word or number that touches it, and a
      // number before blanks.
      {"1.4", 0, TOK_APPROX, TOK_DONE},
      {"1.4 ", 0, TOK_APPROX, TOK_DONE},
      {"SUBSTR", 0, TOK_APPROX, TOK_DONE},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.end);
    EXPECT_EQ(parse<QORAttribute>("QORAttributetypes=( 1.2 APPROX " + row.end),
              (Outcome{row.result, row.current, row.next,
                       "QORAttributetypes=( 1.2 APPROX )\n"}));
  }
}

TEST(QORAttributeParseTest, RunsOnIntoAnotherSection) {
  EXPECT_EQ(parse<QORAttribute>("QORAttributetypes=( 1.2 LENGTH 5\n"
                                "QORAttributetypes=( 1.3 APPROX )\n"),
            (Outcome{1, ')', TOK_DONE,
                     "QORAttributetypes=( 1.3 LENGTH 5 APPROX )\n"}));
  EXPECT_EQ(
      parse<QORAttribute>("QORAttributetypes=( 1.2 LENGTH 5\n"
                          "objectclasses=( 1.3 NAME 'a' SUP top )\n"),
      (Outcome{1, ')', TOK_DONE, "QORAttributetypes=( top LENGTH 5 )\n"}));
}

// A value that the end cuts off leaves the keyword's own text current.
TEST(QORAttributeParseTest, TheEndOfTheFileInThePlaceOfAValue) {
  const struct {
    std::string text;
    int current;
    std::string line;
  } kTable[] = {
      {"ACCESS-CLASS\n", TOK_ACCESS_CLASS, "QORAttributetypes=( 1.2 )\n"},
      {"ACCESS-CLASS normal", TOK_ACCESS_CLASS,
       "QORAttributetypes=( 1.2 ACCESS-CLASS ACCESS-CLASS )\n"},
      {"ACCESS-CLASS normal\n", TOK_ID,
       "QORAttributetypes=( 1.2 ACCESS-CLASS normal )\n"},
      {"LENGTH\n", TOK_LENGTH, "QORAttributetypes=( 1.2 LENGTH  )\n"},
      {"LENGTH 5", TOK_LENGTH, "QORAttributetypes=( 1.2 LENGTH LENGTH )\n"},
      {"LENGTH 5\n", TOK_NUMBER, "QORAttributetypes=( 1.2 LENGTH 5 )\n"},
      {"LENGTH", TOK_NUMBER, "QORAttributetypes=( 1.2 )\n"},
      {"LENGTH (", '(', "QORAttributetypes=( 1.2 LENGTH  )\n"},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(parse<QORAttribute>("QORAttributetypes=( 1.2 " + row.text),
              (Outcome{0, row.current, TOK_DONE, row.line}));
  }
}

TEST(QORAttributeParseTest, WhatWasReadBeforeAFailureStays) {
  const std::string line =
      "QORAttributetypes=( 1.2 DBNAME ( 'A'  ) ACCESS-CLASS normal LENGTH 5 "
      "EQUALITY ORDERING SUBSTR APPROX )\n";
  const std::string text =
      "QORAttributetypes=( 1.2 DBNAME ( 'A' ) ACCESS-CLASS normal LENGTH 5 "
      "EQUALITY ORDERING SUBSTR APPROX ";
  EXPECT_EQ(parse<QORAttribute>(text),
            (Outcome{0, TOK_APPROX, TOK_DONE, line}));
  EXPECT_EQ(parse<QORAttribute>(text + "attributetypes=("),
            (Outcome{0, TOK_ATTRIBUTETYPES, '=', line}));
}

TEST(QORAttributeParseTest, BeginsWithOrWithoutAParenthesis) {
  for (const char *text :
       {"QORAttributetypes=( 1.2 APPROX )", "QORAttributetypes= 1.2 APPROX )",
        "QORAttributetypes=(( 1.2 APPROX )", "QORAttributetypes{( 1.2 APPROX )",
        "QORAttributetypes ( 1.2 APPROX )", "QORAttributetypes $ 1.2 APPROX )",
        "QORattributeTypes === 1.2 APPROX )"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(
        parseWhole<QORAttribute>(text),
        (Outcome{1, ')', TOK_DONE, "QORAttributetypes=( 1.2 APPROX )\n"}));
  }
}

TEST(QORAttributeParseTest, NothingToReadFails) {
  for (const char *text :
       {"", "QORAttributetypes", "QORAttributetypes=", "QORAttributetypes=(",
        "QORAttributetypes=( \n", "QORAttributetypes { # comment"}) {
    SCOPED_TRACE(text);
    const Outcome outcome = parse<QORAttribute>(text);
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.next, TOK_DONE);
    EXPECT_EQ(outcome.line, "QORAttributetypes=(  )\n");
  }
  const TemporaryDirectory empty;
  SchemaLexan missing(empty.string(), "V3.qor.at");
  QORAttribute attribute;
  EXPECT_EQ(attribute.parse(&missing), 0);
}

TEST(QORAttributeParseTest, ABlockIsReadDefinitionByDefinition) {
  EXPECT_EQ(parseBlock<QORAttribute>("QORAttributetypes {\n"
                                     "( 1.1 DBNAME ( 'A' ) )\n"
                                     "( 1.2 LENGTH 5 )( 1.3 APPROX\n"
                                     "}\n"),
            "QORAttributetypes=( 1.1 DBNAME ( 'A'  ) )\n"
            "QORAttributetypes=( 1.2 LENGTH 5 )\n"
            "QORAttributetypes=( 1.3 APPROX )\n"
            "1, on token 125\n");
  EXPECT_EQ(parseBlock<QORAttribute>("QORAttributetypes { }"),
            "QORAttributetypes=(  )\n"
            "1, on token 125\n");
  for (const char *end : {"", "\n", " # }"}) {
    SCOPED_TRACE(end);
    EXPECT_EQ(parseBlock<QORAttribute>(
                  std::string("QORAttributetypes { ( 1.1 )") + end),
              "QORAttributetypes=( 1.1 )\n"
              "QORAttributetypes=(  )\n"
              "0, on token 260\n");
  }
}

TEST(QORAttributeParseTest, ADbnameListIsReadWithOrWithoutSeparators) {
  const struct {
    std::string text, names;
  } kTable[] = {
      {"( 'A' )", "'A' "},
      {"( 'A' 'b' 'A' )", "'A' 'b' 'A' "},
      {"(A$b)", "'A' 'b' "},
      {"( 'objectClasses' attributeTypes 'attributetypes' )",
       "'objectclasses' 'attributetypes' 'attributetypes' "},
      {"( '' )", "'' "},
      // Without the "(", the first name is taken for it.
      {"'A' 'b' )", "'b' "},
      {"$ 'A' )", "'A' "},
      {"LENGTH 'A' )", "'A' "},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(parseWhole<QORAttribute>("QORAttributetypes=( 1.2 DBNAME " +
                                       row.text + " SUBSTR )"),
              (Outcome{1, ')', TOK_DONE,
                       "QORAttributetypes=( 1.2 DBNAME ( " + row.names +
                           " ) SUBSTR )\n"}));
  }
  for (const char *text : {"()", "( $ )", "'A' )", ") )", "( 5 )"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(
        parseWhole<QORAttribute>(
            std::string("QORAttributetypes=( 1.2 DBNAME ") + text +
            " SUBSTR )"),
        (Outcome{1, ')', TOK_DONE, "QORAttributetypes=( 1.2 SUBSTR )\n"}));
  }
}

TEST(QORAttributeParseTest, ADbnameListEndsAtItsParenthesisOrTheNextField) {
  const struct {
    std::string field, rest;
  } kTable[] = {
      {")", ")\n"},
      {"ACCESS-CLASS x", "ACCESS-CLASS x )\n"},
      {"LENGTH 5", "LENGTH 5 )\n"},
      {"EQUALITY", "EQUALITY )\n"},
      {"APPROX", "APPROX )\n"},
      {"SUBSTR", "SUBSTR )\n"},
      {"ORDERING", "ORDERING )\n"},
      {"'LENGTH' 5", "LENGTH 5 )\n"},
      {") APPROX", "APPROX )\n"},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.field);
    EXPECT_EQ(parseWhole<QORAttribute>("QORAttributetypes=( 1.2 DBNAME ( 'A' " +
                                       row.field + " )"),
              (Outcome{1, ')', TOK_DONE,
                       "QORAttributetypes=( 1.2 DBNAME ( 'A'  ) " + row.rest}));
  }
}

TEST(QORAttributeParseTest, ADbnameListGoesPastAnythingElse) {
  std::vector<std::string> tokens = without(
      keywords(), {"objectclasses", "attributetypes", "ACCESS-CLASS", "LENGTH",
                   "EQUALITY", "APPROX", "SUBSTR", "ORDERING"});
  ASSERT_EQ(tokens.size(), 17U);
  for (const char *text : {"(", "}", "{", "$", "=", "\r", "\x80", "9.9",
                           "9.9{9}", "9.9{ ", "'QORattributeTypes'"}) {
    tokens.emplace_back(text);
  }
  for (const std::string &token : tokens) {
    SCOPED_TRACE(token);
    EXPECT_EQ(parseWhole<QORAttribute>("QORAttributetypes=( 1.2 DBNAME ( 'A' " +
                                       token + " 'b' ) )"),
              (Outcome{1, ')', TOK_DONE,
                       "QORAttributetypes=( 1.2 DBNAME ( 'A' 'b'  ) )\n"}));
  }
}

TEST(QORAttributeParseTest, DbnameListsAddUp) {
  EXPECT_EQ(parseWhole<QORAttribute>("QORAttributetypes=( 1.2 DBNAME ( 'A' ) "
                                     "DBNAME ( 'b' DBNAME 'A' ) )"),
            (Outcome{1, ')', TOK_DONE,
                     "QORAttributetypes=( 1.2 DBNAME ( 'A' 'b' 'A'  ) )\n"}));
}

TEST(QORAttributeParseTest, ADbnameListTakesTheDefinitionsParenthesis) {
  EXPECT_EQ(parseWhole<QORAttribute>("QORAttributetypes=( 1.2 DBNAME 'A' )"),
            (Outcome{0, ')', TOK_DONE, "QORAttributetypes=( 1.2 )\n"}));
  EXPECT_EQ(parse<QORAttribute>("QORAttributetypes=( 1.2 DBNAME 'A' 'b' )\n"
                                "QORAttributetypes=( 1.3 LENGTH 5 )\n"),
            (Outcome{1, ')', TOK_DONE,
                     "QORAttributetypes=( 1.3 DBNAME ( 'b'  ) LENGTH 5 )\n"}));
  EXPECT_EQ(
      parse<QORAttribute>("QORAttributetypes=( 1.2 DBNAME 'A' )\n"
                          "attributetypes=( 1.3 SYNTAX 5 )\n"),
      (Outcome{0, TOK_ATTRIBUTETYPES, '=', "QORAttributetypes=( 1.2 )\n"}));
}

// Kept on purpose.
TEST(QORAttributeParseTest, ADbnameListAtTheEndOfTheFileNeverEnds) {
  EXPECT_TRUE(
      parseNeverEnds<QORAttribute>("QORAttributetypes=( 1.2 DBNAME ( 'A'\n"));
  EXPECT_TRUE(
      parseNeverEnds<QORAttribute>("QORAttributetypes=( 1.2 DBNAME )\n"));
}

}  // namespace
