#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DefinitionTesting.h"
#include "ObjectClass.h"

using definitions::filled;
using definitions::keywords;
using definitions::Outcome;
using definitions::parse;
using definitions::parseBlock;
using definitions::parsed;

using definitions::parseWhole;
using definitions::without;

namespace {

using Names = std::vector<std::string>;

TEST(ObjectClassParseTest, ReadsAnObjectClass) {
  const std::string text =
      "objectclasses=( 2.5.6.6 NAME 'person' SUP top STRUCTURAL "
      "MUST ( sn $ cn ) MAY ( userPassword $ telephoneNumber ) )";
  EXPECT_EQ(parseWhole<ObjectClass>(text),
            (Outcome{1, ')', TOK_DONE,
                     "objectclasses=( 2.5.6.6 NAME 'person' SUP ( top ) "
                     "STRUCTURAL MUST ( sn $ cn ) "
                     "MAY ( userPassword $ telephoneNumber ) )\n"}));
  auto objectClass = parsed<ObjectClass>(text);
  EXPECT_EQ(objectClass.getOid(), "2.5.6.6");
  EXPECT_EQ(objectClass.getNames(), Names{"person"});
  EXPECT_EQ(objectClass.getDescription(), "");
  EXPECT_EQ(objectClass.getSuperior(), Names{"top"});
  EXPECT_EQ(objectClass.getReqAttrs(), (Names{"sn", "cn"}));
  EXPECT_EQ(objectClass.getOptAttrs(),
            (Names{"userPassword", "telephoneNumber"}));
}

TEST(ObjectClassParseTest, ReadsEveryFieldInAnyOrder) {
  const std::string line =
      "objectclasses=( 1.2 NAME 'a' 'b'  DESC 'd' OBSOLETE SUP ( top $ alias ) "
      "AUXILIARY MUST ( cn $ sn ) MAY ( uid ) )\n";
  for (const char *text :
       {"objectclasses=( 1.2 NAME ( 'a' 'b' ) DESC 'd' OBSOLETE "
        "SUP ( top $ alias ) AUXILIARY MUST ( cn $ sn ) MAY ( uid ) )",
        "objectclasses=( MAY uid MUST ( cn $ sn ) AUXILIARY SUP (top$alias) "
        "OBSOLETE DESC 'd' 1.2 NAME a 'b' OBSOLETE )",
        "objectclasses=(1.2 NAME('a' 'b')DESC'd'OBSOLETE SUP(top$alias)"
        "AUXILIARY MUST(cn$sn)MAY(uid))",
        "objectclasses= # a comment\n\n( 1.2 # ( the OID )\n\tNAME # 'c'\n"
        "'a' 'b' DESC 'd'\n#\n  OBSOLETE SUP ( top\n  $ # sep\n alias#\n)\n"
        "AUXILIARY\nMUST\n(\ncn $\nsn )\nMAY ( uid\n ) )",
        "objectclasses=( 1.2\r\nNAME ( 'a'\r\n'b'\r\n)\r\nDESC 'd'\r\n"
        "OBSOLETE\r\nSUP ( top $ alias )\r\nAUXILIARY\r\n"
        "MUST ( cn $ sn )\r\nMAY ( uid )\r\n)"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(parseWhole<ObjectClass>(text), (Outcome{1, ')', TOK_DONE, line}));
  }
}

struct Value {
  std::string text;
  bool taken;
  std::string stored;
};

// Values of DESC and SUP but for the "(". A value of the wrong kind is gone
// past and dropped, whatever it is.
std::vector<Value> values() {
  std::vector<Value> all = {
      {"word", true, "word"}, {"'a (b) $ c.d'", true, "a (b) $ c.d"},
      {"'3.4'", true, "3.4"}, {"name", true, "name"},
      {"3.4", false, ""},     {"3.4{56}", false, ""},
      {"3.4{ ", false, ""},   {"'objectClasses'", false, ""},
      {"'MAY'", false, ""},
  };
  for (const std::string &keyword : keywords()) {
    all.push_back({keyword, false, ""});
  }
  for (const char *character : {")", "{", "}", "$", "=", "\r", "\x80"}) {
    all.push_back({character, false, ""});
  }
  return all;
}

TEST(ObjectClassParseTest, ADescriptionIsAWordOrAString) {
  std::vector<Value> all = values();
  all.push_back({"(", false, ""});
  for (const Value &value : all) {
    SCOPED_TRACE(value.text);
    EXPECT_EQ(parseWhole<ObjectClass>("objectclasses=( 1.2 DESC " + value.text +
                                      " )"),
              (Outcome{1, ')', TOK_DONE,
                       value.taken ? "objectclasses=( 1.2 NAME  DESC '" +
                                         value.stored + "' STRUCTURAL )\n"
                                   : "objectclasses=( 1.2 NAME STRUCTURAL "
                                     ")\n"}));
  }
}

TEST(ObjectClassParseTest, ASingleSuperiorIsAWordOrAString) {
  for (const Value &value : values()) {
    SCOPED_TRACE(value.text);
    EXPECT_EQ(parseWhole<ObjectClass>("objectclasses=( 1.2 SUP " + value.text +
                                      " ABSTRACT )"),
              (Outcome{1, ')', TOK_DONE,
                       value.taken ? "objectclasses=( 1.2 NAME SUP ( " +
                                         value.stored + " ) ABSTRACT )\n"
                                   : "objectclasses=( 1.2 NAME ABSTRACT )\n"}));
  }
}

TEST(ObjectClassParseTest, TheLastKindWordCounts) {
  const struct {
    std::string kinds, line;
  } kTable[] = {
      {"", "objectclasses=( 1.2 NAME STRUCTURAL )\n"},
      {"STRUCTURAL", "objectclasses=( 1.2 NAME STRUCTURAL )\n"},
      {"AUXILIARY", "objectclasses=( 1.2 NAME AUXILIARY )\n"},
      {"ABSTRACT", "objectclasses=( 1.2 NAME ABSTRACT )\n"},
      {"AUXILIARY ABSTRACT", "objectclasses=( 1.2 NAME ABSTRACT )\n"},
      {"ABSTRACT AUXILIARY", "objectclasses=( 1.2 NAME AUXILIARY )\n"},
      {"ABSTRACT STRUCTURAL", "objectclasses=( 1.2 NAME STRUCTURAL )\n"},
      {"'ABSTRACT'", "objectclasses=( 1.2 NAME ABSTRACT )\n"},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.kinds);
    EXPECT_EQ(
        parseWhole<ObjectClass>("objectclasses=( 1.2 " + row.kinds + " )"),
        (Outcome{1, ')', TOK_DONE, row.line}));
  }
}

TEST(ObjectClassParseTest, RepeatedListsAddUpAndRepeatedValuesReplace) {
  EXPECT_EQ(
      parseWhole<ObjectClass>(
          "objectclasses=( 1.1 DESC 'd' SUP top MUST ( cn ) MAY ( uid ) "
          "OBSOLETE SUP ( alias $ top ) MUST cn MAY sn DESC 'e' 1.2 DESC 3 )"),
      (Outcome{1, ')', TOK_DONE,
               "objectclasses=( 1.2 NAME  DESC 'e' OBSOLETE "
               "SUP ( top $ alias $ top ) STRUCTURAL MUST ( cn $ cn ) "
               "MAY ( uid $ sn ) )\n"}));
}

TEST(ObjectClassParseTest, ABareWordOrNumberBecomesTheOid) {
  const struct {
    std::string text, oid;
  } kTable[] = {
      {"1.2", "1.2"},
      {"class-oid", "class-oid"},
      {"'class oid'", "class oid"},
      {"1.2 1.3", "1.3"},
      {"1.2 X-ORIGIN 'RFC 4519'", "RFC 4519"},
      {"1.2 DESC 'it''s'", "s"},
      {"1.2 NAME\t'cn'", "cn"},
      {"1.2 SUP\ttop", "SUP\ttop"},
      {"1.2 name", "name"},
      {"1.2 ObjectClasses", "ObjectClasses"},
      {"1.2{3}", ""},
      {"1.1 1.2{3}", "1.1"},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(
        parsed<ObjectClass>("objectclasses=( " + row.text + " )").getOid(),
        row.oid);
  }
}

TEST(ObjectClassParseTest, OtherTokensBetweenTheFieldsAreIgnored) {
  std::vector<std::string> tokens = without(
      keywords(), {"objectclasses", "NAME", "DESC", "STRUCTURAL", "AUXILIARY",
                   "ABSTRACT", "OBSOLETE", "SUP", "MUST", "MAY"});
  ASSERT_EQ(tokens.size(), 15U);
  for (const char *text :
       {"=", "$", "_", ".", "\r", "\x80", "1.3{4}", "attributeTypes",
        "'QORattributeTypes'", "'COLLECTIVE'"}) {
    tokens.emplace_back(text);
  }
  for (const std::string &token : tokens) {
    SCOPED_TRACE(token);
    EXPECT_EQ(
        parseWhole<ObjectClass>(
            filled("objectclasses=( 1.2 % ABSTRACT % % { )", token)),
        (Outcome{1, ')', TOK_DONE, "objectclasses=( 1.2 NAME ABSTRACT )\n"}));
  }
}

TEST(ObjectClassParseTest, EndsAtAParenthesisABraceItsKeywordOrTheEnd) {
  const struct {
    std::string end;
    int result, current, next;
  } kTable[] = {
      {")", 1, ')', TOK_DONE},
      {") )", 1, ')', TOK_DONE},
      {")}", 1, '}', TOK_DONE},
      {")(1.4", 1, '(', TOK_DONE},
      {")\nobjectclasses=(", 1, TOK_OBJECTCLASSES, '='},
      {")\nattributetypes=(", 1, TOK_ATTRIBUTETYPES, '='},
      {"}", 1, '}', TOK_DONE},
      {"} )", 1, '}', ')'},
      {"(", 1, '(', TOK_DONE},
      {"( 1.4 )", 1, '(', TOK_NUMBER},
      {"objectclasses=(", 0, TOK_OBJECTCLASSES, '='},
      {"objectClasses )", 0, TOK_OBJECTCLASSES, ')'},
      {"'objectclasses' )", 0, TOK_OBJECTCLASSES, ')'},
      // The keywords of the other sections do not end an object class.
      {"attributetypes=( 1.4 )", 1, '(', TOK_NUMBER},
      {"QORAttributetypes {( 1.4 )", 1, '(', TOK_NUMBER},
      {"attributetypes )", 1, ')', TOK_DONE},
      {"QORAttributetypes }", 1, '}', TOK_DONE},
      {"", 0, TOK_ABSTRACT, TOK_DONE},
      {"\n# ) comment", 0, TOK_ABSTRACT, TOK_DONE},
      {"$", 0, '$', TOK_DONE},
      {"attributetypes\n", 0, TOK_ATTRIBUTETYPES, TOK_DONE},
      // The end of the file takes the word or number that touches it, and a
      // number before blanks.
      {"1.4", 0, TOK_ABSTRACT, TOK_DONE},
      {"1.4 ", 0, TOK_ABSTRACT, TOK_DONE},
      {"OBSOLETE", 0, TOK_ABSTRACT, TOK_DONE},
      {"DESC 'd'", 0, TOK_DESC, TOK_DONE},
      {"SUP top", 0, TOK_SUP, TOK_DONE},
      {"SUP (", 0, TOK_DONE, TOK_DONE},
      {"MUST cn", 0, TOK_DONE, TOK_DONE},
      {"MUST ", 0, TOK_DONE, TOK_DONE},
      {"MAY (", 0, TOK_DONE, TOK_DONE},
      {"MAY ( cn", 0, TOK_DONE, TOK_DONE},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.end);
    EXPECT_EQ(parse<ObjectClass>("objectclasses=( 1.2 ABSTRACT " + row.end),
              (Outcome{row.result, row.current, row.next,
                       "objectclasses=( 1.2 NAME ABSTRACT )\n"}));
  }
}

TEST(ObjectClassParseTest, AMalformedLengthFails) {
  const struct {
    std::string text;
    int next;
  } kTable[] = {
      {"1.3{ )", ')'},           {"1.3{} )", '}'},
      {"1.3{x )", TOK_ID},       {"1.3{64 )", ')'},
      {"1.3{64x} )", TOK_ID},    {"1.3 { 64 }", TOK_NUMBER},
      {"DESC 3 1.3{ )", ')'},    {"$ 1.3{ MAY cn", TOK_MAY},
      {"DESC DESC 1.3{ )", ')'},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(parse<ObjectClass>("objectclasses=( 1.2 ABSTRACT " + row.text),
              (Outcome{0, TOK_NUMBER_BAD, row.next,
                       "objectclasses=( 1.2 NAME ABSTRACT )\n"}));
  }
  // Behind a list, which it ends.
  EXPECT_EQ(parse<ObjectClass>("objectclasses=( 1.2 MUST ( cn 1.3{ sn ) )"),
            (Outcome{0, TOK_NUMBER_BAD, TOK_ID,
                     "objectclasses=( 1.2 NAME STRUCTURAL MUST ( cn ) )\n"}));
  EXPECT_EQ(parse<ObjectClass>("objectclasses=( 1.2 SUP ( 1.3{ sn ) )"),
            (Outcome{0, TOK_NUMBER_BAD, TOK_ID,
                     "objectclasses=( 1.2 NAME STRUCTURAL )\n"}));
}

TEST(ObjectClassParseTest, WhatWasReadBeforeAFailureStays) {
  const std::string line =
      "objectclasses=( 1.2 NAME 'a'  DESC 'd' OBSOLETE SUP ( top ) AUXILIARY "
      "MUST ( cn ) MAY ( sn ) )\n";
  const std::string text =
      "objectclasses=( 1.2 NAME 'a' DESC 'd' OBSOLETE SUP top AUXILIARY "
      "MUST ( cn ) MAY ( sn ) ";
  EXPECT_EQ(parse<ObjectClass>(text), (Outcome{0, TOK_DONE, TOK_DONE, line}));
  EXPECT_EQ(parse<ObjectClass>(text + "objectclasses=("),
            (Outcome{0, TOK_OBJECTCLASSES, '=', line}));
  EXPECT_EQ(parse<ObjectClass>(text + "1.3{ )"),
            (Outcome{0, TOK_NUMBER_BAD, ')', line}));
}

TEST(ObjectClassParseTest, BeginsWithOrWithoutAParenthesis) {
  for (const char *text :
       {"objectclasses=( 1.2 ABSTRACT )", "objectclasses= 1.2 ABSTRACT )",
        "objectclasses=== 1.2 ABSTRACT )", "objectclasses{( 1.2 ABSTRACT )",
        "objectclasses ( 1.2 ABSTRACT )", "objectclasses $ 1.2 ABSTRACT )"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(
        parseWhole<ObjectClass>(text),
        (Outcome{1, ')', TOK_DONE, "objectclasses=( 1.2 NAME ABSTRACT )\n"}));
  }
  // The second one is the start of the next definition.
  EXPECT_EQ(
      parse<ObjectClass>("objectclasses=(( 1.2 ABSTRACT )"),
      (Outcome{1, '(', TOK_NUMBER, "objectclasses=(  NAME STRUCTURAL )\n"}));
}

TEST(ObjectClassParseTest, NothingToReadFails) {
  for (const char *text :
       {"", "objectclasses", "objectclasses=", "objectclasses=(",
        "objectclasses=( \n", "objectclasses { # comment"}) {
    SCOPED_TRACE(text);
    const Outcome outcome = parse<ObjectClass>(text);
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.next, TOK_DONE);
    EXPECT_EQ(outcome.line, "objectclasses=(  NAME STRUCTURAL )\n");
  }
  const TemporaryDirectory empty;
  SchemaLexan missing(empty.string(), "V3.user.oc");
  ObjectClass objectClass;
  EXPECT_EQ(objectClass.parse(&missing), 0);
}

TEST(ObjectClassParseTest, ABlockIsReadDefinitionByDefinition) {
  EXPECT_EQ(parseBlock<ObjectClass>("objectclasses {\n"
                                    "( 1.1 NAME 'a' SUP top )\n"
                                    "( 1.2 NAME 'b' ABSTRACT )( 1.3 )\n"
                                    "}\n"),
            "objectclasses=( 1.1 NAME 'a' SUP ( top ) STRUCTURAL )\n"
            "objectclasses=( 1.2 NAME 'b' ABSTRACT )\n"
            "objectclasses=( 1.3 NAME STRUCTURAL )\n"
            "1, on token 125\n");
  // A definition that lacks its own end ends where the next one begins, and at
  // the brace.
  EXPECT_EQ(parseBlock<ObjectClass>(
                "objectclasses { ( 1.1 MAY cn ( 1.2 MAY ( cn ) ( 1.3 }"),
            "objectclasses=( 1.1 NAME STRUCTURAL MAY ( cn ) )\n"
            "objectclasses=( 1.2 NAME STRUCTURAL MAY ( cn ) )\n"
            "objectclasses=( 1.3 NAME STRUCTURAL )\n"
            "1, on token 125\n");
  EXPECT_EQ(parseBlock<ObjectClass>("objectclasses { }"),
            "objectclasses=(  NAME STRUCTURAL )\n"
            "1, on token 125\n");
  for (const char *end : {"", "\n", " # }"}) {
    SCOPED_TRACE(end);
    EXPECT_EQ(
        parseBlock<ObjectClass>(std::string("objectclasses { ( 1.1 )") + end),
        "objectclasses=( 1.1 NAME STRUCTURAL )\n"
        "objectclasses=(  NAME STRUCTURAL )\n"
        "0, on token 260\n");
  }
}

}  // namespace
