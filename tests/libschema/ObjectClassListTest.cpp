#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DefinitionTesting.h"
#include "ObjectClass.h"

using definitions::filled;
using definitions::keywords;
using definitions::Outcome;
using definitions::parse;
using definitions::parsed;
using definitions::parseNeverEnds;
using definitions::parseWhole;
using definitions::without;

namespace {

using Names = std::vector<std::string>;

// The fields that hold a list, and how a class of the OID 1.2 with the list
// `list` is written.
const char *const kLists[] = {"SUP", "MUST", "MAY"};

std::string lineWith(const std::string &field, const std::string &list,
                     const std::string &oid = "1.2") {
  const std::string start = "objectclasses=( " + oid + " NAME ";
  if (list.empty()) {
    return start + "STRUCTURAL )\n";
  }
  const std::string piece = field + " ( " + list + " ) ";
  return start +
         (field == "SUP" ? piece + "STRUCTURAL " : "STRUCTURAL " + piece) +
         ")\n";
}

TEST(ObjectClassListTest, AListIsReadWithOrWithoutSeparators) {
  const struct {
    std::string text, list;
  } kTable[] = {
      {"( cn )", "cn"},
      {"( cn $ sn )", "cn $ sn"},
      {"(cn$sn$uid)", "cn $ sn $ uid"},
      {"( cn sn )", "cn $ sn"},
      {"( $ cn $$ sn $ )", "cn $ sn"},
      {"( 'cn' $ 's n' )", "cn $ s n"},
      {"( cn $ CN $ cn )", "cn $ CN $ cn"},
      {"( cn\n  $ # separator\n\n sn\n)", "cn $ sn"},
      {"()", ""},
      {"( $ )", ""},
      {"( objectClasses $ attributeTypes )", "objectclasses $ attributetypes"},
      {"( objectclasses 'attributetypes' $ 'objectClasses' )",
       "objectclasses $ attributetypes $ objectclasses"},
      {"( ObjectClasses $ Attributetypes )", "ObjectClasses $ Attributetypes"},
      {"( '' $ cn )", " $ cn"},
  };
  for (const char *field : kLists) {
    for (const auto &row : kTable) {
      SCOPED_TRACE(field + row.text);
      EXPECT_EQ(
          parseWhole<ObjectClass>("objectclasses=( 1.2 " + std::string(field) +
                                  " " + row.text + " )"),
          (Outcome{1, ')', TOK_DONE, lineWith(field, row.list)}));
    }
  }
}

TEST(ObjectClassListTest, AListMayLackItsOpeningParenthesis) {
  const struct {
    std::string text, list;
  } kTable[] = {
      {"cn", "cn"},
      {"cn )", "cn"},
      {"cn $ sn", "cn $ sn"},
      {"cn sn $ uid )", "cn $ sn $ uid"},
      {"$ cn", "cn"},
      {"objectClasses $ attributeTypes", "objectclasses $ attributetypes"},
      {"", ""},
      {")", ""},
  };
  for (const std::string field : {"MUST", "MAY"}) {
    for (const auto &row : kTable) {
      SCOPED_TRACE(field + " " + row.text);
      EXPECT_EQ(parseWhole<ObjectClass>("objectclasses=( 1.2 " + field + " " +
                                        row.text + " STRUCTURAL )"),
                (Outcome{1, ')', TOK_DONE, lineWith(field, row.list)}));
    }
  }
}

// Whether or not a "(" began the list, so that the definition runs on.
TEST(ObjectClassListTest, AListTakesTheNextClosingParenthesis) {
  for (const std::string field : {"MUST", "MAY"}) {
    for (const char *list : {" cn )", " $ cn )", " ( cn )"}) {
      SCOPED_TRACE(field + list);
      const std::string text = "objectclasses=( 1.2 " + field + list;
      const std::string line = lineWith(field, "cn");
      EXPECT_EQ(parseWhole<ObjectClass>(text),
                (Outcome{0, TOK_DONE, TOK_DONE, line}));
      EXPECT_EQ(parse<ObjectClass>(text + "\nobjectclasses=( 1.3 )"),
                (Outcome{0, TOK_OBJECTCLASSES, '=', line}));
      EXPECT_EQ(parse<ObjectClass>(text + "\nattributetypes=( 1.3 )"),
                (Outcome{1, '(', TOK_NUMBER, line}));
      EXPECT_EQ(parse<ObjectClass>(text + " ( 1.3 )"),
                (Outcome{1, '(', TOK_NUMBER, line}));
    }
  }
  EXPECT_EQ(parse<ObjectClass>("objectclasses=( 1.2 SUP top )"),
            (Outcome{1, ')', TOK_DONE, lineWith("SUP", "top")}));
}

TEST(ObjectClassListTest, ASingleSuperiorEndsWithItself) {
  EXPECT_EQ(parse<ObjectClass>("objectclasses=( 1.2 SUP top $ alias )"),
            (Outcome{1, ')', TOK_DONE, lineWith("SUP", "top", "alias")}));
}

// What follows the token that ended the list is read as fields again.
TEST(ObjectClassListTest, AnyOtherTokenEndsAList) {
  std::vector<std::string> tokens =
      without(keywords(),
              {"objectclasses", "attributetypes", "NAME", "DESC", "STRUCTURAL",
               "AUXILIARY", "ABSTRACT", "OBSOLETE", "SUP", "MUST", "MAY"});
  ASSERT_EQ(tokens.size(), 14U);
  for (const char *text : {"1.3", "1.3{4}", "=", "{", "\r", "\x80", ".", "_",
                           "'QORattributeTypes'", "STRUCTURAL"}) {
    tokens.emplace_back(text);
  }
  for (const std::string field : kLists) {
    for (const std::string &token : tokens) {
      const std::string list = filled(field + " ( cn % $ sn )", token);
      SCOPED_TRACE(list);
      EXPECT_EQ(parseWhole<ObjectClass>("objectclasses=( 1.2 " + list + " )"),
                (Outcome{1, ')', TOK_DONE, lineWith(field, "cn", "sn")}));
    }
  }
}

TEST(ObjectClassListTest, AFieldAParenthesisOrABraceEndsAList) {
  const struct {
    std::string text;
    int result, current, next;
    std::string line;
  } kTable[] = {
      {"1.3 )", 1, ')', TOK_DONE,
       "objectclasses=( 1.3 NAME STRUCTURAL MUST ( cn ) )\n"},
      {"NAME 'a' ) DESC 'd' )", 1, ')', TOK_DONE,
       "objectclasses=( 1.2 NAME 'a'  DESC 'd' STRUCTURAL MUST ( cn ) )\n"},
      {"DESC 'd' )", 1, ')', TOK_DONE,
       "objectclasses=( 1.2 NAME  DESC 'd' STRUCTURAL MUST ( cn ) )\n"},
      {"ABSTRACT )", 1, ')', TOK_DONE,
       "objectclasses=( 1.2 NAME ABSTRACT MUST ( cn ) )\n"},
      {"AUXILIARY )", 1, ')', TOK_DONE,
       "objectclasses=( 1.2 NAME AUXILIARY MUST ( cn ) )\n"},
      {"OBSOLETE )", 1, ')', TOK_DONE,
       "objectclasses=( 1.2 NAME OBSOLETE STRUCTURAL MUST ( cn ) )\n"},
      {"SUP top )", 1, ')', TOK_DONE,
       "objectclasses=( 1.2 NAME SUP ( top ) STRUCTURAL MUST ( cn ) )\n"},
      {"MUST ( sn ) )", 1, ')', TOK_DONE,
       "objectclasses=( 1.2 NAME STRUCTURAL MUST ( cn $ sn ) )\n"},
      {"MAY ( sn ) )", 1, ')', TOK_DONE,
       "objectclasses=( 1.2 NAME STRUCTURAL MUST ( cn ) MAY ( sn ) )\n"},
      {"( sn ) )", 1, '(', TOK_ID,
       "objectclasses=( 1.2 NAME STRUCTURAL MUST ( cn ) )\n"},
      {"} sn ) )", 1, '}', TOK_ID,
       "objectclasses=( 1.2 NAME STRUCTURAL MUST ( cn ) )\n"},
      // The next definition's keyword is an element of the list.
      {"\nobjectclasses=( 1.3 )", 1, '(', TOK_NUMBER,
       "objectclasses=( 1.2 NAME STRUCTURAL MUST ( cn $ objectclasses ) )\n"},
      {"\nQORAttributetypes=( 1.3 )", 1, '(', TOK_NUMBER,
       "objectclasses=( 1.2 NAME STRUCTURAL MUST ( cn ) )\n"},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(
        parseWhole<ObjectClass>("objectclasses=( 1.2 MUST ( cn " + row.text),
        (Outcome{row.result, row.current, row.next, row.line}));
  }
}

// SUP takes the next token for its value, so that the "(" of the list ends the
// definition.
TEST(ObjectClassListTest, AFieldInThePlaceOfASuperiorIsDropped) {
  EXPECT_EQ(parse<ObjectClass>("objectclasses=( 1.2 SUP MUST ( cn ) )"),
            (Outcome{1, '(', TOK_ID, lineWith("SUP", "")}));
}

// The analyser still stands on the last token then, which is taken for the one
// behind the list. A word's text is gone unless the end cut another one off.
TEST(ObjectClassListTest, TheEndOfTheFileInAList) {
  const struct {
    std::string text;
    int current;
    std::string list, oid;
  } kTable[] = {
      {"cn\n", TOK_ID, "cn", ""},
      {"cn $ sn ", TOK_ID, "cn $ sn", ""},
      {"cn sn", TOK_ID, "cn", "cn"},
      {"cn 1.3", TOK_ID, "cn", "cn"},
      {"cn 'sn'", TOK_ID, "cn", "cn"},
      {"cn $", '$', "cn", "1.2"},
      {"cn $ sn", '$', "cn", "1.2"},
      {"cn objectClasses\n", TOK_OBJECTCLASSES, "cn $ objectclasses", "1.2"},
      {"cn attributeTypes\n", TOK_ATTRIBUTETYPES, "cn $ attributetypes", "1.2"},
      {"cn 1.3\n", TOK_NUMBER, "cn", "1.3"},
      {"cn )", TOK_DONE, "cn", "1.2"},
      {")", TOK_DONE, "", "1.2"},
      {"\n", TOK_DONE, "", "1.2"},
      {"cn", TOK_DONE, "", "1.2"},
      {"$", '$', "", "1.2"},
  };
  for (const std::string field : kLists) {
    for (const auto &row : kTable) {
      SCOPED_TRACE(field + " ( " + row.text);
      EXPECT_EQ(
          parse<ObjectClass>("objectclasses=( 1.2 " + field + " ( " + row.text),
          (Outcome{0, row.current, TOK_DONE,
                   lineWith(field, row.list, row.oid)}));
    }
  }
}

TEST(ObjectClassListTest, NamesEndAtTheNextField) {
  const struct {
    std::string field, rest;
  } kTable[] = {
      {"DESC 'b'", " DESC 'b' STRUCTURAL )\n"},
      {"STRUCTURAL", "STRUCTURAL )\n"},
      {"AUXILIARY", "AUXILIARY )\n"},
      {"ABSTRACT", "ABSTRACT )\n"},
      {"OBSOLETE", "OBSOLETE STRUCTURAL )\n"},
      {"SUP b", "SUP ( b ) STRUCTURAL )\n"},
      {"MUST ( b )", "STRUCTURAL MUST ( b ) )\n"},
      {"MAY ( b )", "STRUCTURAL MAY ( b ) )\n"},
      {"'MAY' ( b )", "STRUCTURAL MAY ( b ) )\n"},
  };
  for (const auto &row : kTable) {
    for (const char *names :
         {"NAME 'a' ", "NAME ( 'a' ) ", "NAME a ", "NAME ( 'a' ", "NAME('a')",
          "NAME ( $ 'a' } ) ) 9 9{9 "}) {
      const std::string body = names + row.field;
      SCOPED_TRACE(body);
      EXPECT_EQ(parseWhole<ObjectClass>("objectclasses=( 1.2 " + body + " )"),
                (Outcome{1, ')', TOK_DONE,
                         "objectclasses=( 1.2 NAME 'a' " + row.rest}));
    }
  }
}

TEST(ObjectClassListTest, NamesGoPastAnythingElse) {
  std::vector<std::string> tokens =
      without(keywords(), {"DESC", "STRUCTURAL", "AUXILIARY", "ABSTRACT",
                           "OBSOLETE", "SUP", "MUST", "MAY"});
  ASSERT_EQ(tokens.size(), 17U);
  for (const char *text :
       {"(", ")", "}", "{", "$", "=", "\r", "\x80", ") )", ")\n(", "9.9",
        "9.9{9}", "9.9{ ", "'objectClasses'", "'attributeTypes'"}) {
    tokens.emplace_back(text);
  }
  for (const std::string &token : tokens) {
    SCOPED_TRACE(token);
    EXPECT_EQ(parseWhole<ObjectClass>("objectclasses=( 1.2 NAME 'a' " + token +
                                      " 'b' ABSTRACT )"),
              (Outcome{1, ')', TOK_DONE,
                       "objectclasses=( 1.2 NAME 'a' 'b' ABSTRACT )\n"}));
  }
}

// The token directly behind NAME may be a name, but is not looked at for an
// end.
TEST(ObjectClassListTest, AFieldDirectlyBehindNameIsNotSeen) {
  for (const char *field : {"DESC", "STRUCTURAL", "AUXILIARY", "ABSTRACT",
                            "OBSOLETE", "SUP", "MUST", "MAY"}) {
    SCOPED_TRACE(field);
    EXPECT_EQ(parseWhole<ObjectClass>(std::string("objectclasses=( 1.2 NAME ") +
                                      field + " 'b' DESC 'd' )"),
              (Outcome{1, ')', TOK_DONE,
                       "objectclasses=( 1.2 NAME 'b'  DESC 'd' STRUCTURAL "
                       ")\n"}));
  }
}

TEST(ObjectClassListTest, NamesAddUp) {
  EXPECT_EQ(parsed<ObjectClass>("objectclasses=( 1.2 NAME 'a' NAME ( 'b' 'A' ) "
                                "DESC 'd' NAME 'a' STRUCTURAL )")
                .getNames(),
            (Names{"a", "b", "A", "a"}));
}

TEST(ObjectClassListTest, NamesRunOnIntoTheNextDefinition) {
  EXPECT_EQ(parseWhole<ObjectClass>(
                "objectclasses=( 1.2 NAME 'a' )\n"
                "objectclasses=( 1.3 NAME ( 'b' 'c' ) SUP top MUST ( cn ) )\n"
                "objectclasses=( 1.5 )"),
            (Outcome{1, TOK_OBJECTCLASSES, '=',
                     "objectclasses=( 1.2 NAME 'a' 'b' 'c' SUP ( top ) "
                     "STRUCTURAL MUST ( cn ) )\n"}));
}

// Kept on purpose.
TEST(ObjectClassListTest, NamesNeverEndAtTheEndOfTheFile) {
  EXPECT_TRUE(parseNeverEnds<ObjectClass>("objectclasses=( 1.2 NAME 'a' )\n"));
  EXPECT_TRUE(parseNeverEnds<ObjectClass>("objectclasses=( 1.2 NAME 'a'\n"));
  EXPECT_TRUE(parseNeverEnds<ObjectClass>("objectclasses=( 1.2 NAME\n"));
}

}  // namespace
