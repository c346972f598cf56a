#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Attribute.h"
#include "DefinitionTesting.h"

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

using Names = std::vector<std::string>;

TEST(AttributeParseTest, ReadsAnAttributeType) {
  const std::string text =
      "attributetypes=( 2.5.4.3 NAME ( 'cn' 'commonName' ) DESC 'x' "
      "SUP 2.5.4.41 EQUALITY 2.5.13.2 "
      "SYNTAX 1.3.6.1.4.1.1466.115.121.1.15{32768} )";
  EXPECT_EQ(parseWhole<Attribute>(text),
            (Outcome{1, ')', TOK_DONE,
                     "attributetypes=( 2.5.4.3 NAME ( 'cn' 'commonName'  )  "
                     "DESC 'x' SUP 2.5.4.41 EQUALITY 2.5.13.2 "
                     "SYNTAX 1.3.6.1.4.1.1466.115.121.1.15{32768} "
                     "USAGE userApplications  )\n"}));
  auto attribute = parsed<Attribute>(text);
  EXPECT_EQ(attribute.getOid(), "2.5.4.3");
  EXPECT_EQ(attribute.getNames(), (Names{"cn", "commonName"}));
  EXPECT_EQ(attribute.getDescription(), "x");
  EXPECT_EQ(attribute.getSuperior(), Names{"2.5.4.41"});
}

TEST(AttributeParseTest, ReadsEveryFieldInAnyOrder) {
  const std::string line =
      "attributetypes=( 1.2 NAME ( 'a'  )  DESC 'd' OBSOLETE SUP 1.3 "
      "EQUALITY 1.4 ORDERING 1.5 SUBSTR 1.6 SYNTAX 1.7 SINGLE-VALUE "
      "NO-USER-MODIFICATION USAGE dSAOperation  )\n";
  for (const char *text :
       {"attributetypes=( 1.2 NAME 'a' DESC 'd' OBSOLETE SUP 1.3 EQUALITY 1.4 "
        "ORDERING 1.5 SUBSTR 1.6 SYNTAX 1.7 SINGLE-VALUE "
        "NO-USER-MODIFICATION USAGE dSAOperation )",
        "attributetypes=( USAGE dSAOperation NO-USER-MODIFICATION SINGLE-VALUE "
        "SYNTAX 1.7 SUBSTR 1.6 ORDERING 1.5 EQUALITY 1.4 SUP 1.3 OBSOLETE "
        "DESC 'd' 1.2 NAME 'a' OBSOLETE )",
        "attributetypes=(1.2 NAME'a'DESC'd'OBSOLETE\nSUP 1.3 EQUALITY 1.4 "
        "ORDERING 1.5 SUBSTR 1.6 SYNTAX 1.7 SINGLE-VALUE "
        "NO-USER-MODIFICATION USAGE dSAOperation)",
        "attributetypes= # a comment\n\n( 1.2 # ( the OID )\n\tNAME ( # 'b'\n"
        "'a')DESC 'd'\n#\n  OBSOLETE SUP   1.3 EQUALITY 1.4\n"
        "ORDERING 1.5 SUBSTR 1.6\n SYNTAX 1.7 SINGLE-VALUE\n"
        "NO-USER-MODIFICATION USAGE dSAOperation#\n)",
        "attributetypes=( 1.2\r\nNAME ( 'a'\r\n)\r\nDESC 'd' \r\nOBSOLETE\r\n"
        "SUP 1.3\r\nEQUALITY 1.4 ORDERING 1.5 SUBSTR 1.6 SYNTAX 1.7\r\n"
        "SINGLE-VALUE\r\nNO-USER-MODIFICATION USAGE dSAOperation\r\n)"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(parseWhole<Attribute>(text), (Outcome{1, ')', TOK_DONE, line}));
  }
}

// A field that takes a value, and how an attribute type with the value v, and
// nothing else, is written.
struct Field {
  std::string keyword;
  std::string takes;  // the kinds of values: i TOK_ID, n TOK_NUMBER, l with a
                      // length
  std::string before, after;
};

const Field kFields[] = {
    {"DESC", "i", " DESC '", "' USAGE userApplications  )\n"},
    {"SUP", "n", "SUP ", " USAGE userApplications  )\n"},
    {"EQUALITY", "n", "EQUALITY ", " USAGE userApplications  )\n"},
    {"ORDERING", "n", "ORDERING ", " USAGE userApplications  )\n"},
    {"SUBSTR", "n", "SUBSTR ", " USAGE userApplications  )\n"},
    {"SYNTAX", "nli", "SYNTAX ", " USAGE userApplications  )\n"},
    {"USAGE", "i", "USAGE ", "  )\n"},
};

struct Value {
  std::string text;
  char kind;
  std::string stored;
};

// A value of the wrong kind is gone past and dropped, whatever it is.
TEST(AttributeParseTest, AFieldTakesItsKindsOfValuesAndDropsOthers) {
  std::vector<Value> values = {
      {"caseIgnoreMatch", 'i', "caseIgnoreMatch"},
      {"'a (b) $ c.d'", 'i', "a (b) $ c.d"},
      {"'3.4'", 'i', "3.4"},
      {"-", 'i', "-"},
      {"NAME\t", 'i', "NAME\t"},
      {"name", 'i', "name"},
      {"3.4", 'n', "3.4"},
      {"3", 'n', "3"},
      {"3.4{56}", 'l', "3.4{56}"},
      {"3.4  {56}", 'l', "3.4{56}"},
      {"3.4{ ", 'b', ""},
      {"3.4{56 ", 'b', ""},
      {"'objectClasses'", 'k', ""},
      {"'MAY'", 'k', ""},
  };
  for (const std::string &keyword : keywords()) {
    values.push_back({keyword, 'k', ""});
  }
  for (const char *character : {"(", ")", "{", "}", "$", "=", "_", "\r", "\x80",
                                "\xFF", ".", "*", "\"", "\x01"}) {
    values.push_back({character, 'c', ""});
  }
  for (const Field &field : kFields) {
    for (const Value &value : values) {
      SCOPED_TRACE(field.keyword + " " + value.text);
      const bool taken = field.takes.find(value.kind) != std::string::npos;
      EXPECT_EQ(parseWhole<Attribute>("attributetypes=( 1.2 " + field.keyword +
                                      " " + value.text + " )"),
                (Outcome{1, ')', TOK_DONE,
                         "attributetypes=( 1.2 NAME (  ) " +
                             (taken ? field.before + value.stored + field.after
                                    : "USAGE userApplications  )\n")}));
    }
  }
}

TEST(AttributeParseTest, AnEmptyStringEmptiesAField) {
  EXPECT_EQ(parseWhole<Attribute>("attributetypes=( 1.2 DESC 'd' SYNTAX 1.3 "
                                  "DESC '' SYNTAX '' USAGE '' NAME '' "
                                  "SINGLE-VALUE )"),
            (Outcome{1, ')', TOK_DONE,
                     "attributetypes=( 1.2 NAME ( ''  ) SINGLE-VALUE  )\n"}));
  EXPECT_EQ(parseWhole<Attribute>("attributetypes=( 1.2 '' )"),
            (Outcome{1, ')', TOK_DONE,
                     "attributetypes=(  NAME (  ) "
                     "USAGE userApplications  )\n"}));
}

TEST(AttributeParseTest, ARepeatedFieldReplacesTheEarlierOne) {
  EXPECT_EQ(
      parseWhole<Attribute>(
          "attributetypes=( 1.1 DESC 'd' EQUALITY 2.1 ORDERING 3.1 SUBSTR 4.1 "
          "SYNTAX 5.1{6} USAGE dSAOperation OBSOLETE SINGLE-VALUE "
          "NO-USER-MODIFICATION 1.2 DESC 'e' EQUALITY 2.2 ORDERING 3.2 "
          "SUBSTR 4.2 SYNTAX 5.2 USAGE directoryOperation OBSOLETE "
          "SINGLE-VALUE NO-USER-MODIFICATION )"),
      (Outcome{1, ')', TOK_DONE,
               "attributetypes=( 1.2 NAME (  )  DESC 'e' OBSOLETE "
               "EQUALITY 2.2 ORDERING 3.2 SUBSTR 4.2 SYNTAX 5.2 SINGLE-VALUE "
               "NO-USER-MODIFICATION USAGE directoryOperation  )\n"}));
}

TEST(AttributeParseTest, ARepeatedFieldWithAWrongValueChangesNothing) {
  EXPECT_EQ(
      parseWhole<Attribute>(
          "attributetypes=( 1.2 DESC 'd' SUP 6.1 EQUALITY 2.1 ORDERING 3.1 "
          "SUBSTR 4.1 SYNTAX 5.1{6} USAGE dSAOperation DESC 7 SUP top "
          "EQUALITY word ORDERING 'word' SUBSTR 4.2{1} SYNTAX ( USAGE 8 )"),
      (Outcome{1, ')', TOK_DONE,
               "attributetypes=( 1.2 NAME (  )  DESC 'd' SUP 6.1 "
               "EQUALITY 2.1 ORDERING 3.1 SUBSTR 4.1 SYNTAX 5.1{6} "
               "USAGE dSAOperation  )\n"}));
}

TEST(AttributeParseTest, SuperiorsAddUp) {
  auto attribute = parsed<Attribute>(
      "attributetypes=( 1.2 SUP 2.1 SUP name SUP 2.0 SUP 2.1 )");
  EXPECT_EQ(attribute.getSuperior(), (Names{"2.1", "2.0", "2.1"}));
  EXPECT_EQ(attribute.getOid(), "1.2");
}

// The "(" is dropped as a value; what the list holds replaces the OID.
TEST(AttributeParseTest, AListOfSuperiorsIsNotRead) {
  EXPECT_EQ(parse<Attribute>("attributetypes=( 1.2 SUP ( 2.1 $ 2.2 ) "
                             "SYNTAX 1.3 )"),
            (Outcome{1, TOK_SYNTAX, TOK_NUMBER,
                     "attributetypes=( 2.2 NAME (  ) "
                     "USAGE userApplications  )\n"}));
}

TEST(AttributeParseTest, ABareWordOrNumberBecomesTheOid) {
  const struct {
    std::string text, oid;
  } kTable[] = {
      {"1.2", "1.2"},
      {"cn-oid", "cn-oid"},
      {"'cn oid'", "cn oid"},
      {"1.2 1.3", "1.3"},
      {"1.2 cn", "cn"},
      {"1.2 X-ORIGIN 'RFC 4519'", "RFC 4519"},
      {"1.2 SYNTAX 1.3 '1.4'", "1.4"},
      {"1.2 DESC 'it''s'", "s"},
      {"1.2 NAME\t'cn'", "cn"},
      {"1.2 NAME\t", "NAME\t"},
      {"1..2.", "1..2."},
      {"name", "name"},
      {"Attributetypes", "Attributetypes"},
      // These are no bare numbers.
      {"1.2{3}", ""},
      {"1.2{", ""},
      {"1.1 1.2{3} 1.2{", "1.1"},
      {"1.1 1.2 {", "1.1"},
      {".", ""},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(parsed<Attribute>("attributetypes=( " + row.text + " )").getOid(),
              row.oid);
  }
}

// Kept on purpose in the scanner: a text that repeats the one read before it,
// keywords aside, is of the same kind, quoted or not.
TEST(AttributeParseTest, ATextThatRepeatsTheOneBeforeIsOfItsKind) {
  EXPECT_EQ(parseWhole<Attribute>("attributetypes=( 1.2 NAME ( '1.2' 'a' ) "
                                  "SYNTAX 1.3 DESC '1.3' DESC 'd' USAGE 'd' )"),
            (Outcome{1, ')', TOK_DONE,
                     "attributetypes=( 1.2 NAME ( 'a'  )  DESC 'd' SYNTAX 1.3 "
                     "USAGE d  )\n"}));
  EXPECT_EQ(parseWhole<Attribute>("attributetypes=( 1.2 DESC '1.3' SUP 1.3 "
                                  "EQUALITY 1.4 SUP 1.3 )"),
            (Outcome{1, ')', TOK_DONE,
                     "attributetypes=( 1.2 NAME (  )  DESC '1.3' SUP 1.3 "
                     "EQUALITY 1.4 USAGE userApplications  )\n"}));
}

// Whatever ends a string is dropped in place of its quote.
TEST(AttributeParseTest, AStringEndsAtTheEndOfItsLine) {
  EXPECT_EQ(parseWhole<Attribute>("attributetypes=( 1.2 DESC 'It is\n"
                                  "SYNTAX 1.3 NAME ( 'a\n'b' )\n"
                                  "USAGE 'x\n)"),
            (Outcome{1, ')', TOK_DONE,
                     "attributetypes=( 1.2 NAME ( 'a' 'b'  )  DESC 'It is' "
                     "SYNTAX 1.3 USAGE x  )\n"}));
}

// Here the byte after it is a token, the rest a word, and the quote that was to
// close the string opens another.
TEST(AttributeParseTest, AStringEndsAtAByteOutsideAscii) {
  EXPECT_EQ(parseWhole<Attribute>("attributetypes=( 1.2 DESC 'a\xC3\xA9"
                                  "b' SYNTAX 1.3 )\nOBSOLETE )"),
            (Outcome{1, ')', TOK_DONE,
                     "attributetypes=(  SYNTAX 1.3 ) NAME (  )  DESC 'a' "
                     "OBSOLETE USAGE userApplications  )\n"}));
}

TEST(AttributeParseTest, OtherTokensBetweenTheFieldsAreIgnored) {
  std::vector<std::string> tokens = without(
      keywords(),
      {"objectclasses", "attributetypes", "QORAttributetypes", "NAME", "DESC",
       "OBSOLETE", "SUP", "EQUALITY", "ORDERING", "SUBSTR", "SYNTAX",
       "SINGLE-VALUE", "COLLECTIVE", "NO-USER-MODIFICATION", "USAGE"});
  ASSERT_EQ(tokens.size(), 10U);
  for (const char *text :
       {"(", "=", "$", "_", ".", "\r", "\x80", "1.3{4}", "1.3{ ", "1.3{4 "}) {
    tokens.emplace_back(text);
  }
  for (const std::string &token : tokens) {
    SCOPED_TRACE(token);
    EXPECT_EQ(parseWhole<Attribute>(
                  filled("attributetypes=( 1.2 % SYNTAX 1.3 % % )", token)),
              (Outcome{1, ')', TOK_DONE,
                       "attributetypes=( 1.2 NAME (  ) SYNTAX 1.3 "
                       "USAGE userApplications  )\n"}));
  }
}

TEST(AttributeParseTest, EndsAtAParenthesisABraceAKeywordOrTheEnd) {
  const struct {
    std::string end;
    int result, current, next;
  } kTable[] = {
      {")", 1, ')', TOK_DONE},
      {") )", 1, ')', TOK_DONE},
      {")}", 1, '}', TOK_DONE},
      {") ( 1.4", 1, '(', TOK_DONE},
      {")\nattributetypes=(", 1, TOK_ATTRIBUTETYPES, '='},
      {") # comment\n\n DESC 'd' ", 1, TOK_DESC, TOK_ID},
      {"}", 1, '}', TOK_DONE},
      {"} )", 1, '}', ')'},
      {"}\nattributetypes=(", 1, '}', TOK_ATTRIBUTETYPES},
      {"attributetypes=(", 0, TOK_ATTRIBUTETYPES, '='},
      {"objectclasses=(", 0, TOK_OBJECTCLASSES, '='},
      {"QORAttributetypes=(", 0, TOK_QORATTRIBUTETYPES, '='},
      {"attributeTypes {", 0, TOK_ATTRIBUTETYPES, '{'},
      {"objectClasses )", 0, TOK_OBJECTCLASSES, ')'},
      {"QORattributeTypes )", 0, TOK_QORATTRIBUTETYPES, ')'},
      {"'attributetypes' )", 0, TOK_ATTRIBUTETYPES, ')'},
      {"", 0, TOK_SINGLE_VALUE, TOK_DONE},
      {"\n# ) comment", 0, TOK_SINGLE_VALUE, TOK_DONE},
      {"$", 0, '$', TOK_DONE},
      // The end of the file takes the word or number that touches it, and a
      // number before blanks.
      {"1.4", 0, TOK_SINGLE_VALUE, TOK_DONE},
      {"1.4  ", 0, TOK_SINGLE_VALUE, TOK_DONE},
      {"OBSOLETE", 0, TOK_SINGLE_VALUE, TOK_DONE},
      {"DESC 'd'", 0, TOK_DESC, TOK_DONE},
      {"SUP 1.4", 0, TOK_SUP, TOK_DONE},
      {"EQUALITY 1.4", 0, TOK_EQUALITY, TOK_DONE},
      {"ORDERING 1.4", 0, TOK_ORDERING, TOK_DONE},
      {"SUBSTR 1.4", 0, TOK_SUBSTR, TOK_DONE},
      {"SYNTAX 1.4", 0, TOK_SYNTAX, TOK_DONE},
      {"USAGE x", 0, TOK_USAGE, TOK_DONE},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.end);
    EXPECT_EQ(parse<Attribute>("attributetypes=( 1.2 SYNTAX 1.3 SINGLE-VALUE " +
                               row.end),
              (Outcome{row.result, row.current, row.next,
                       "attributetypes=( 1.2 NAME (  ) SYNTAX 1.3 SINGLE-VALUE "
                       "USAGE userApplications  )\n"}));
  }
}

TEST(AttributeParseTest, WhatWasReadBeforeAFailureStays) {
  const std::string line =
      "attributetypes=( 1.2 NAME ( 'a'  )  DESC 'd' OBSOLETE SUP 1.3 "
      "EQUALITY 1.4 ORDERING 1.5 SUBSTR 1.6 SYNTAX 1.7 SINGLE-VALUE "
      "NO-USER-MODIFICATION USAGE dSAOperation  )\n";
  const std::string text =
      "attributetypes=( 1.2 NAME 'a' DESC 'd' OBSOLETE SUP 1.3 EQUALITY 1.4 "
      "ORDERING 1.5 SUBSTR 1.6 SYNTAX 1.7 SINGLE-VALUE NO-USER-MODIFICATION "
      "USAGE dSAOperation ";
  EXPECT_EQ(parse<Attribute>(text), (Outcome{0, TOK_ID, TOK_DONE, line}));
  EXPECT_EQ(parse<Attribute>(text + "objectclasses=("),
            (Outcome{0, TOK_OBJECTCLASSES, '=', line}));
}

TEST(AttributeParseTest, BeginsWithOrWithoutAParenthesis) {
  for (const char *text :
       {"attributetypes=( 1.2 SYNTAX 1.3 )", "attributetypes= 1.2 SYNTAX 1.3 )",
        "attributetypes=(( 1.2 SYNTAX 1.3 )",
        "attributetypes=== 1.2 SYNTAX 1.3 )",
        "attributetypes{( 1.2 SYNTAX 1.3 )",
        "attributetypes ( 1.2 SYNTAX 1.3 )",
        "attributetypes $ 1.2 SYNTAX 1.3 )",
        "attributetypes OBSOLETE 1.2 SYNTAX 1.3 )"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(parseWhole<Attribute>(text),
              (Outcome{1, ')', TOK_DONE,
                       "attributetypes=( 1.2 NAME (  ) SYNTAX 1.3 "
                       "USAGE userApplications  )\n"}));
  }
}

TEST(AttributeParseTest, NothingToReadFails) {
  for (const char *text :
       {"", "attributetypes", "attributetypes=", "attributetypes=(",
        "attributetypes=( \n", "attributetypes { # comment"}) {
    SCOPED_TRACE(text);
    const Outcome outcome = parse<Attribute>(text);
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.next, TOK_DONE);
    EXPECT_EQ(outcome.line,
              "attributetypes=(  NAME (  ) USAGE userApplications  )\n");
  }
  const TemporaryDirectory empty;
  SchemaLexan missing(empty.string(), "V3.user.at");
  Attribute attribute;
  EXPECT_EQ(attribute.parse(&missing), 0);
}

TEST(AttributeParseTest, EmptyDefinitions) {
  const std::string line =
      "attributetypes=(  NAME (  ) USAGE userApplications  )\n";
  EXPECT_EQ(parseWhole<Attribute>("attributetypes=()"),
            (Outcome{1, ')', TOK_DONE, line}));
  EXPECT_EQ(parse<Attribute>("attributetypes={}"),
            (Outcome{1, '}', TOK_DONE, line}));
}

TEST(AttributeParseTest, ABlockIsReadDefinitionByDefinition) {
  EXPECT_EQ(parseBlock<Attribute>("attributetypes {\n"
                                  "( 1.1 NAME 'a' SYNTAX 2.1 )\n"
                                  "( 1.2 NAME 'b' SYNTAX 2.2 )( 1.3 )\n"
                                  "}\n"),
            "attributetypes=( 1.1 NAME ( 'a'  ) SYNTAX 2.1 "
            "USAGE userApplications  )\n"
            "attributetypes=( 1.2 NAME ( 'b'  ) SYNTAX 2.2 "
            "USAGE userApplications  )\n"
            "attributetypes=( 1.3 NAME (  ) USAGE userApplications  )\n"
            "1, on token 125\n");
  // The brace ends a definition that lacks its own end, and an empty one.
  EXPECT_EQ(parseBlock<Attribute>("attributetypes { ( 1.1 ) ( 1.2 SYNTAX 2 }"),
            "attributetypes=( 1.1 NAME (  ) USAGE userApplications  )\n"
            "attributetypes=( 1.2 NAME (  ) SYNTAX 2 "
            "USAGE userApplications  )\n"
            "1, on token 125\n");
  EXPECT_EQ(parseBlock<Attribute>("attributetypes { }"),
            "attributetypes=(  NAME (  ) USAGE userApplications  )\n"
            "1, on token 125\n");
}

// Behind its ")" a definition that the file ends with leaves the analyser on
// that token. The next one goes past it and finds nothing.
TEST(AttributeParseTest, ABlockWithoutItsBraceFails) {
  for (const char *end : {"", "\n", " # }"}) {
    SCOPED_TRACE(end);
    EXPECT_EQ(
        parseBlock<Attribute>(std::string("attributetypes { ( 1.1 )") + end),
        "attributetypes=( 1.1 NAME (  ) USAGE userApplications  )\n"
        "attributetypes=(  NAME (  ) USAGE userApplications  )\n"
        "0, on token 260\n");
  }
}

// Kept on purpose.
TEST(AttributeParseTest, CollectiveNeverEnds) {
  EXPECT_TRUE(parseNeverEnds<Attribute>("attributetypes=( 1.2 COLLECTIVE )\n"));
  EXPECT_TRUE(parseNeverEnds<Attribute>(
      "attributetypes=( 1.2 NAME 'a' COLLECTIVE SYNTAX 1.3 )\n"));
}

TEST(AttributeParseTest, CollectiveInThePlaceOfAValueIsDropped) {
  EXPECT_EQ(parseWhole<Attribute>("attributetypes=( 1.2 USAGE COLLECTIVE )"),
            (Outcome{1, ')', TOK_DONE,
                     "attributetypes=( 1.2 NAME (  ) "
                     "USAGE userApplications  )\n"}));
}

}  // namespace
