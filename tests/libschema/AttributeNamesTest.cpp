#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Attribute.h"
#include "DefinitionTesting.h"

using definitions::keywords;
using definitions::Outcome;
using definitions::parse;
using definitions::parsed;
using definitions::parseNeverEnds;
using definitions::parseWhole;
using definitions::without;

namespace {

using Names = std::vector<std::string>;

TEST(AttributeNamesTest, EndAtTheNextField) {
  const struct {
    std::string field, line;
  } kTable[] = {
      {"DESC", " DESC 'b' USAGE userApplications  )\n"},
      {"SYNTAX", "SYNTAX b USAGE userApplications  )\n"},
      {"SUP", "USAGE userApplications  )\n"},
      {"USAGE", "USAGE b  )\n"},
      {"SUBSTR", "USAGE userApplications  )\n"},
      {"ORDERING", "USAGE userApplications  )\n"},
      {"EQUALITY", "USAGE userApplications  )\n"},
      {"OBSOLETE DESC", " DESC 'b' OBSOLETE USAGE userApplications  )\n"},
      {"NO-USER-MODIFICATION DESC",
       " DESC 'b' NO-USER-MODIFICATION USAGE userApplications  )\n"},
      {"SINGLE-VALUE DESC",
       " DESC 'b' SINGLE-VALUE USAGE userApplications  )\n"},
      // Quoted as well.
      {"'SYNTAX'", "SYNTAX b USAGE userApplications  )\n"},
  };
  for (const auto &row : kTable) {
    for (const char *names :
         {"NAME 'a' ", "NAME ( 'a' ) ", "NAME a ", "NAME ( 'a' ",
          "NAME ( a\n)\n", "NAME('a')", "NAME ( $ 'a' } ) ) 9 "}) {
      const std::string body = names + row.field + " 'b'";
      SCOPED_TRACE(body);
      EXPECT_EQ(parseWhole<Attribute>("attributetypes=( 1.2 " + body + " )"),
                (Outcome{1, ')', TOK_DONE,
                         "attributetypes=( 1.2 NAME ( 'a'  ) " + row.line}));
    }
  }
}

TEST(AttributeNamesTest, GoPastAnythingElse) {
  std::vector<std::string> tokens =
      without(keywords(),
              {"DESC", "SYNTAX", "OBSOLETE", "SUP", "USAGE",
               "NO-USER-MODIFICATION", "COLLECTIVE", "SINGLE-VALUE", "SUBSTR",
               "ORDERING", "EQUALITY", "objectclasses", "attributetypes"});
  ASSERT_EQ(tokens.size(), 12U);
  for (const char *text :
       {"(", ")", "}", "{", "$", "=", "\r", "\x80", ") )", ")\n(", "9.9",
        "9.9{9}", "9.9{ ", "'QORattributeTypes'", "'MAY'"}) {
    tokens.emplace_back(text);
  }
  for (const std::string &token : tokens) {
    SCOPED_TRACE(token);
    EXPECT_EQ(parseWhole<Attribute>("attributetypes=( 1.2 NAME 'a' " + token +
                                    " 'b' DESC 'd' )"),
              (Outcome{1, ')', TOK_DONE,
                       "attributetypes=( 1.2 NAME ( 'a' 'b'  )  DESC 'd' "
                       "USAGE userApplications  )\n"}));
  }
}

TEST(AttributeNamesTest, TheTwoTypesNamedAsKeywordsKeepTheKeywordsSpelling) {
  const struct {
    std::string names;
    Names read;
  } kTable[] = {
      {"'attributeTypes'", {"attributetypes"}},
      {"( 'objectClasses' )", {"objectclasses"}},
      {"( 'a' 'attributeTypes' 'b' objectclasses objectClasses )",
       {"a", "attributetypes", "b", "objectclasses", "objectclasses"}},
      {"( 'ATTRIBUTETYPES' 'ObjectClasses' )",
       {"ATTRIBUTETYPES", "ObjectClasses"}},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.names);
    EXPECT_EQ(parsed<Attribute>("attributetypes=( 2.5.21.5 NAME " + row.names +
                                " SYNTAX 1.3 )")
                  .getNames(),
              row.read);
  }
}

// The token directly behind NAME may be a name, but is not looked at for an
// end.
TEST(AttributeNamesTest, AFieldDirectlyBehindNameIsNotSeen) {
  for (const char *field :
       {"DESC", "SYNTAX", "OBSOLETE", "SUP", "USAGE", "NO-USER-MODIFICATION",
        "COLLECTIVE", "SINGLE-VALUE", "SUBSTR", "ORDERING", "EQUALITY"}) {
    SCOPED_TRACE(field);
    EXPECT_EQ(parseWhole<Attribute>(std::string("attributetypes=( 1.2 NAME ") +
                                    field + " 'b' DESC 'd' )"),
              (Outcome{1, ')', TOK_DONE,
                       "attributetypes=( 1.2 NAME ( 'b'  )  DESC 'd' "
                       "USAGE userApplications  )\n"}));
  }
}

TEST(AttributeNamesTest, AddUp) {
  EXPECT_EQ(parsed<Attribute>("attributetypes=( 1.2 NAME 'a' NAME ( 'b' 'A' ) "
                              "DESC 'd' NAME 'a' SYNTAX 1.3 )")
                .getNames(),
            (Names{"a", "b", "A", "a"}));
}

TEST(AttributeNamesTest, RunOnIntoTheNextDefinition) {
  EXPECT_EQ(parseWhole<Attribute>(
                "attributetypes=( 1.2 NAME 'a' )\n"
                "attributetypes=( 1.3 NAME ( 'b' 'c' ) SYNTAX 1.4 )\n"
                "attributetypes=( 1.5 )"),
            (Outcome{1, TOK_ATTRIBUTETYPES, '=',
                     "attributetypes=( 1.2 NAME ( 'a' 'attributetypes' 'b' 'c' "
                     " ) SYNTAX 1.4 USAGE userApplications  )\n"}));
  EXPECT_EQ(parse<Attribute>("attributetypes=( 1.2 NAME 'a' )\n"
                             "QORAttributetypes=( 1.3 DBNAME ( 'b' 'c' ) "
                             "ACCESS-CLASS normal LENGTH 5 EQUALITY APPROX )\n"
                             "objectclasses=("),
            (Outcome{1, TOK_OBJECTCLASSES, '=',
                     "attributetypes=( 1.2 NAME ( 'a' 'b' 'c' 'normal'  ) "
                     "USAGE userApplications  )\n"}));
}

// Kept on purpose.
TEST(AttributeNamesTest, NeverEndAtTheEndOfTheFile) {
  EXPECT_TRUE(parseNeverEnds<Attribute>("attributetypes=( 1.2 NAME 'a' )\n"));
  EXPECT_TRUE(parseNeverEnds<Attribute>("attributetypes=( 1.2 NAME 'a'\n"));
  EXPECT_TRUE(parseNeverEnds<Attribute>("attributetypes=( 1.2 NAME\n"));
}

}  // namespace
