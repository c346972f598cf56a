#include "FieldChange.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "PlanTesting.h"

namespace {

struct ChangeCase {
  const char *name;
  std::string release;  // a definition, without "( 1.1 " and " )"
  std::string old;
  std::string changes;
};

void PrintTo(const ChangeCase &changeCase, std::ostream *out) {
  *out << changeCase.name;
}

std::string nameOfCase(const testing::TestParamInfo<ChangeCase> &info) {
  return info.param.name;
}

class FieldChangeTest : public CheckTest,
                        public testing::WithParamInterface<ChangeCase> {
 protected:
  // The changes from one definition to the other, both of the section.
  std::string changes(const std::string &section, const std::string &release,
                      const std::string &old) const {
    write({{"old/V3.user.at", section + "=( 1.1 " + old + " )\n"},
           {"new/V3.user.at", section + "=( 1.1 " + release + " )\n"}});
    const Source mine(path("old"));
    const Source theirs(path("new"));
    const auto &one = mine.directory.statements().at(0);
    const auto &other = theirs.directory.statements().at(0);
    std::vector<schemacheck::FieldView> oneFields;
    std::vector<schemacheck::FieldView> otherFields;
    viewFields(*one.definition, &oneFields);
    viewFields(*other.definition, &otherFields);
    std::string text;
    for (const schemaplan::FieldChange &change : schemaplan::changesBetween(
             one.definition->kind, otherFields, oneFields)) {
      EXPECT_STREQ(change.old.name, change.release.name);
      text += (text.empty() ? "" : ", ") + std::string(change.old.name) + ' ' +
              effectName(change.effect);
    }
    return text;
  }

  std::string changes(const std::string &section) const {
    return changes(section, GetParam().release, GetParam().old);
  }
};

class TypeChangeTest : public FieldChangeTest {};

TEST_P(TypeChangeTest, IsMarked) {
  EXPECT_EQ(changes("attributetypes"), GetParam().changes);
}

constexpr char kName[] = "NAME 'a' ";

std::string syntax(const std::string &length) {
  return kName + ("SYNTAX 1.3.6.1.4.1.1466.115.121.1.15" + length);
}

const ChangeCase kTypes[] = {
    {"None", "NAME 'a' DESC 'x'", "NAME 'a' DESC 'x'", ""},
    {"NamesInAnotherOrderAndCase", "NAME ( 'a' 'b' ) DESC 'x'",
     "NAME ( 'B' 'A' ) DESC 'x'", ""},
    {"NameCome", "NAME 'a' DESC 'x'", "NAME ( 'a' 'b' ) DESC 'x'",
     "NAME widening"},
    {"NameGone", "NAME ( 'a' 'b' ) DESC 'x'", "NAME 'a' DESC 'x'",
     "NAME narrowing"},
    {"NameForAnother", "NAME ( 'a' 'b' ) DESC 'x'", "NAME ( 'a' 'c' ) DESC 'x'",
     "NAME narrowing"},
    {"NameTwice", "NAME ( 'a' 'b' ) DESC 'x'", "NAME ( 'a' 'b' 'a' ) DESC 'x'",
     "NAME neutral"},
    {"Description", "NAME 'a' DESC 'x'", "NAME 'a' DESC 'y'", "DESC neutral"},
    {"Obsolete", "NAME 'a' DESC 'x'", "NAME 'a' DESC 'x' OBSOLETE",
     "OBSOLETE narrowing"},
    {"ObsoleteNoMore", "NAME 'a' DESC 'x' OBSOLETE", "NAME 'a' DESC 'x'",
     "OBSOLETE widening"},
    {"SuperiorCome", "NAME 'a' DESC 'x'", "NAME 'a' DESC 'x' SUP 2.5.4.41",
     "SUP widening"},
    {"SuperiorGone", "NAME 'a' DESC 'x' SUP 2.5.4.41", "NAME 'a' DESC 'x'",
     "SUP narrowing"},
    {"AnotherSuperior", "NAME 'a' SUP 2.5.4.41", "NAME 'a' SUP 2.5.4.49",
     "SUP narrowing"},
    {"RuleCome", "NAME 'a' DESC 'x'",
     "NAME 'a' DESC 'x' EQUALITY 2.5.13.2 ORDERING 2.5.13.3 SUBSTR 2.5.13.4",
     "EQUALITY widening, ORDERING widening, SUBSTR widening"},
    {"RuleGone",
     "NAME 'a' DESC 'x' EQUALITY 2.5.13.2 ORDERING 2.5.13.3 SUBSTR 2.5.13.4",
     "NAME 'a' DESC 'x'",
     "EQUALITY narrowing, ORDERING narrowing, SUBSTR narrowing"},
    {"AnotherRule", "NAME 'a' EQUALITY 2.5.13.2", "NAME 'a' EQUALITY 2.5.13.5",
     "EQUALITY narrowing"},
    {"AnotherSyntax", syntax(""),
     "NAME 'a' SYNTAX 1.3.6.1.4.1.1466.115.121.1.7", "SYNTAX narrowing"},
    {"SyntaxCome", "NAME 'a' DESC 'x'", "NAME 'a' DESC 'x' SYNTAX 1.2",
     "SYNTAX narrowing"},
    {"SyntaxGone", "NAME 'a' DESC 'x' SYNTAX 1.2", "NAME 'a' DESC 'x'",
     "SYNTAX narrowing"},
    {"LengthCome", syntax(""), syntax("{64}"), "SYNTAX narrowing"},
    {"LengthGone", syntax("{64}"), syntax(""), "SYNTAX widening"},
    {"LongerByDigits", syntax("{64}"), syntax("{128}"), "SYNTAX widening"},
    {"LongerInAsManyDigits", syntax("{64}"), syntax("{65}"), "SYNTAX widening"},
    {"ShorterByDigits", syntax("{128}"), syntax("{64}"), "SYNTAX narrowing"},
    {"ShorterInAsManyDigits", syntax("{65}"), syntax("{64}"),
     "SYNTAX narrowing"},
    {"LeadingZero", syntax("{64}"), syntax("{064}"), "SYNTAX neutral"},
    {"BeyondAllNumbers", syntax("{99999999999999999999}"),
     syntax("{100000000000000000000}"), "SYNTAX widening"},
    {"LengthZero", syntax("{0}"), syntax("{00}"), "SYNTAX neutral"},
    {"LengthOfNoDigits", syntax(""), syntax("{}"), "SYNTAX neutral"},
    {"LengthThatIsNotClosed", syntax("{64}"), syntax("{64"),
     "SYNTAX narrowing"},
    {"SingleValued", "NAME 'a' DESC 'x'", "NAME 'a' DESC 'x' SINGLE-VALUE",
     "SINGLE-VALUE narrowing"},
    {"MultiValued", "NAME 'a' DESC 'x' SINGLE-VALUE", "NAME 'a' DESC 'x'",
     "SINGLE-VALUE widening"},
    {"NotToBeModified", "NAME 'a' DESC 'x'",
     "NAME 'a' DESC 'x' NO-USER-MODIFICATION",
     "NO-USER-MODIFICATION narrowing"},
    {"ToBeModified", "NAME 'a' DESC 'x' NO-USER-MODIFICATION",
     "NAME 'a' DESC 'x'", "NO-USER-MODIFICATION widening"},
    {"AnotherUsage", "NAME 'a' USAGE userApplications",
     "NAME 'a' USAGE directoryOperation", "USAGE narrowing"},
    {"UsageThatIsMeantAnyway", "NAME 'a' DESC 'x'",
     "NAME 'a' DESC 'x' USAGE userApplications", ""},
    {"UsageThatIsEmpty", "NAME 'a' USAGE userApplications", "NAME 'a' USAGE ''",
     "USAGE neutral"},
    {"UsageCome", "NAME 'a' DESC 'x'",
     "NAME 'a' DESC 'x' USAGE directoryOperation", "USAGE narrowing"},
};

INSTANTIATE_TEST_SUITE_P(All, TypeChangeTest, testing::ValuesIn(kTypes),
                         nameOfCase);

class ClassChangeTest : public FieldChangeTest {};

TEST_P(ClassChangeTest, IsMarked) {
  EXPECT_EQ(changes("objectclasses"), GetParam().changes);
}

const ChangeCase kClasses[] = {
    {"Kind", "NAME 'k' STRUCTURAL", "NAME 'k' AUXILIARY", "kind narrowing"},
    {"SuperiorCome", "NAME 'k' STRUCTURAL", "NAME 'k' SUP ( p ) STRUCTURAL",
     "SUP narrowing"},
    {"SuperiorGone", "NAME 'k' SUP ( p ) STRUCTURAL", "NAME 'k' STRUCTURAL",
     "SUP narrowing"},
    {"Top", "NAME 'k' STRUCTURAL", "NAME 'k' SUP ( Top ) STRUCTURAL",
     "SUP neutral"},
    {"MayCome", "NAME 'k' MAY ( a )", "NAME 'k' MAY ( a $ b )", "MAY widening"},
    {"MayGone", "NAME 'k' MAY ( a $ b )", "NAME 'k' MAY ( b )",
     "MAY narrowing"},
    {"MustCome", "NAME 'k' MUST ( a )", "NAME 'k' MUST ( a $ b )",
     "MUST narrowing"},
    {"MustGone", "NAME 'k' MUST ( a $ b )", "NAME 'k' MUST ( a )",
     "MUST narrowing"},
    {"MayToMust", "NAME 'k' MUST ( a ) MAY ( b $ c )",
     "NAME 'k' MUST ( a $ B ) MAY ( c )", "MUST narrowing, MAY neutral"},
    {"MustToMay", "NAME 'k' MUST ( a $ b ) MAY ( c )",
     "NAME 'k' MUST ( a ) MAY ( c $ B )", "MUST widening, MAY neutral"},
    {"MustToMayAndMore", "NAME 'k' MUST ( a $ b ) MAY ( c )",
     "NAME 'k' MUST ( a ) MAY ( c $ b $ d )", "MUST widening, MAY widening"},
    {"MustTwice", "NAME 'k' MUST ( a )", "NAME 'k' MUST ( a $ a )",
     "MUST neutral"},
    {"Names", "NAME ( 'k' 'l' ) AUXILIARY", "NAME 'k' AUXILIARY",
     "NAME narrowing"},
    {"Description", "NAME 'k' DESC 'x' AUXILIARY", "NAME 'k' AUXILIARY",
     "DESC neutral"},
    {"Obsolete", "NAME 'k' AUXILIARY", "NAME 'k' OBSOLETE AUXILIARY",
     "OBSOLETE narrowing"},
};

INSTANTIATE_TEST_SUITE_P(All, ClassChangeTest, testing::ValuesIn(kClasses),
                         nameOfCase);

class StorageChangeTest : public FieldChangeTest {};

TEST_P(StorageChangeTest, IsMarked) {
  EXPECT_EQ(changes("QORAttributetypes"), GetParam().changes);
}

const ChangeCase kStorage[] = {
    {"Columns", "DBNAME ( 'A' 'A' ) LENGTH 4", "DBNAME ( 'B' 'B' ) LENGTH 4",
     "DBNAME narrowing"},
    {"OneColumnTwice", "DBNAME ( 'A' ) LENGTH 4", "DBNAME ( 'A' 'a' ) LENGTH 4",
     "DBNAME neutral"},
    {"Longer", "LENGTH 4", "LENGTH 32", "LENGTH widening"},
    {"Shorter", "LENGTH 32", "LENGTH 4", "LENGTH narrowing"},
    {"LengthThatIsNone", "LENGTH 4", "LENGTH 1.2", "LENGTH narrowing"},
    {"FromALengthThatIsNone", "LENGTH 1.2", "LENGTH 4", "LENGTH narrowing"},
    {"LengthCome", "SUBSTR", "LENGTH 4 SUBSTR", "LENGTH narrowing"},
    {"LengthGone", "LENGTH 4 SUBSTR", "SUBSTR", "LENGTH narrowing"},
    {"IndexCome", "LENGTH 4", "LENGTH 4 EQUALITY ORDERING SUBSTR APPROX",
     "EQUALITY widening, ORDERING widening, SUBSTR widening, APPROX widening"},
    {"IndexGone", "LENGTH 4 EQUALITY ORDERING SUBSTR APPROX", "LENGTH 4",
     "EQUALITY narrowing, ORDERING narrowing, SUBSTR narrowing, APPROX "
     "narrowing"},
    {"HigherAccessClass", "ACCESS-CLASS normal", "ACCESS-CLASS sensitive",
     "ACCESS-CLASS narrowing"},
    {"LowerAccessClass", "ACCESS-CLASS critical", "ACCESS-CLASS sensitive",
     "ACCESS-CLASS widening"},
    {"AccessClassThatIsNotKnown", "ACCESS-CLASS normal", "ACCESS-CLASS odd",
     "ACCESS-CLASS narrowing"},
    {"FromAccessClassThatIsNotKnown", "ACCESS-CLASS odd",
     "ACCESS-CLASS strange", "ACCESS-CLASS narrowing"},
};

INSTANTIATE_TEST_SUITE_P(All, StorageChangeTest, testing::ValuesIn(kStorage),
                         nameOfCase);

}  // namespace
