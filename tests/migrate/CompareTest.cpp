// The command compare, as a user runs it.
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "CommandsTesting.h"

namespace {

const Arguments kCompare = {"compare", "--old", "old", "--new", "new"};

// The output, of the lines of each section.
std::string sections(const Arguments &identical, const Arguments &different,
                     const Arguments &onlyOld, const Arguments &onlyNew,
                     const Arguments &excluded) {
  std::string text;
  const auto add = [&text](const char *heading, const Arguments &section) {
    text += std::string(heading) + ": " + std::to_string(section.size()) + '\n';
    for (const std::string &line : section) {
      text += "  " + line + '\n';
    }
  };
  add("identical", identical);
  add("different", different);
  add("only in the old schema", onlyOld);
  add("only in the new schema", onlyNew);
  add("excluded", excluded);
  return text;
}

// A field that differs, below the definition.
std::string field(const std::string &name, const std::string &oldText,
                  const std::string &newText) {
  return "\n    " + name + "\n      old: " + oldText +
         "\n      new: " + newText;
}

class CompareTest : public ReadingCommandTest {
 protected:
  void writeBoth(const std::string &oldText, const std::string &newText) const {
    write("old/V3.user.at", oldText);
    write("new/V3.user.at", newText);
  }
};

TEST_F(CompareTest, HelpHoldsAnExample) {
  expectResult(
      runReading({"compare", "--help"}), 0,
      std::string("Say what is identical in two schemas, what differs and in "
                  "what fields, and what only one of them has.\n"
                  "Usage: schema-migrate compare [OPTIONS]\n\n") +
          kCommonOptionsHelp + kFormatHelp + kBothOptionsHelp +
          "Lists of names, superiors and attributes are compared as sets, in "
          "any case\n"
          "and order. The library also counts values that repeat, so that "
          "apply may\n"
          "replace a definition that is identical here.\n\n"
          "Example:\n"
          "  schema-migrate compare --old /srv/old/schema --new "
          "/srv/new/schema\n\n" +
          exitStatusHelp("  1 differences found\n"),
      "");
}

TEST_F(CompareTest, WrongUsageAndBadInputAreTrouble) {
  write("old/V3.user.at", "attributetypes=( 1.1 DESC 'a' )\n");
  write("new/V3.user.at", "attributetypes=( 1.1 DESC 'a' \n");
  const struct {
    Arguments arguments;
    ExitStatus status;
    std::string error;
  } kCases[] = {
      {{"compare", "--old", "old"}, kUsage, usageError("--new is required")},
      {{"compare", "--new", "new"}, kUsage, usageError("--old is required")},
      {{"compare", "--old", "old", "--new", "old", "more"},
       kUsage,
       usageError("The following argument was not expected: more")},
      {{"compare", "--old", "missing", "--new", "old"},
       kFileError,
       "missing: error: No such file or directory\n"},
      {{"compare", "--old", "old", "--new", "missing"},
       kFileError,
       "missing: error: No such file or directory\n"},
      {{"compare", "--old", "old", "--new", "new"},
       kBadInput,
       "new/V3.user.at:1: error: cannot read this definition to its ')'; look "
       "for a missing parenthesis, a quote too many or too few, or a character "
       "outside ASCII\n"},
      {{"compare", "--old", "old", "--new", "old", "--excluded-oids", "list"},
       kFileError,
       "list: error: No such file or directory\n"},
  };
  for (const auto &[arguments, status, error] : kCases) {
    SCOPED_TRACE(error);
    expectResult(runReading(arguments), status, "", error);
  }
}

TEST_F(CompareTest, OfEmptyFilesAllIsEqual) {
  writeBoth("", "");
  expectResult(runReading(kCompare), 0, sections({}, {}, {}, {}, {}), "");
}

TEST_F(CompareTest, AgainstAnEmptyFileAllIsOnOneSide) {
  const char kText[] =
      "objectclasses=( 1.2 NAME 'c' ABSTRACT )\n"
      "attributetypes=( 1.1 NAME 'B' DESC 'b' )\n"
      "QORAttributetypes=( 1.1 LENGTH 4 )\n"
      "attributetypes=( 1.3 NAME 'a' DESC 'a' )\n";
  const auto side = [](const std::string &directory) {
    const std::string file = ", " + directory + "/V3.user.at:";
    return Arguments{"attribute type 'a' (1.3)" + file + "4",
                     "attribute type 'B' (1.1)" + file + "2",
                     "object class 'c' (1.2)" + file + "1",
                     "storage definition (1.1)" + file + "3"};
  };
  writeBoth(kText, "");
  expectResult(runReading(kCompare), kDifferent,
               sections({}, {}, side("old"), {}, {}), "");
  writeBoth("", kText);
  expectResult(runReading(kCompare), kDifferent,
               sections({}, {}, {}, side("new"), {}), "");
}

TEST_F(CompareTest, ADirectoryIsEqualToItself) {
  write("old/V3.config.at",
        "QORAttributetypes=( 1.1 LENGTH 4 )\n"
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )");
  write("old/V3.modifiedschema", "objectclasses=( 1.2 NAME 'c' ABSTRACT )");
  expectResult(runReading({"compare", "--old", "old", "--new", "old"}), 0,
               sections({"attribute type 'a' (1.1)", "object class 'c' (1.2)",
                         "storage definition (1.1)"},
                        {}, {}, {}, {}),
               "");
}

// A definition in two forms; each keyword and values of the fields that differ.
struct FieldCase {
  const char *oldText;
  const char *newText;
  const char *definition;
  std::string fields;
};

void PrintTo(const FieldCase &one, std::ostream *out) {
  *out << one.oldText << " / " << one.newText;
}

class CompareFieldTest : public CompareTest,
                         public testing::WithParamInterface<FieldCase> {
 protected:
  static std::string line(const std::string &definition) {
    std::string keyword = "attributetypes";
    if (GetParam().definition[0] == 'o') {
      keyword = "objectclasses";
    } else if (GetParam().definition[0] == 's') {
      keyword = "QORAttributetypes";
    }
    return keyword + "=( " + definition + " )\n";
  }
};

TEST_P(CompareFieldTest, ThatDiffersAloneIsNamed) {
  const FieldCase &one = GetParam();
  writeBoth(line(one.oldText), '\n' + line(one.newText));
  const std::string place = ", old/V3.user.at:1 and new/V3.user.at:2";
  expectResult(runReading(kCompare), kDifferent,
               sections({}, {one.definition + place + one.fields}, {}, {}, {}),
               "");
}

TEST_P(CompareFieldTest, IsEqualToItself) {
  const FieldCase &one = GetParam();
  writeBoth(line(one.oldText), line(one.oldText));
  expectResult(runReading(kCompare), 0,
               sections({one.definition}, {}, {}, {}, {}), "");
}

const FieldCase kAttributeFields[] = {
    {"1.1 NAME 'a' DESC 'x'", "1.2 NAME 'a' DESC 'x'",
     "attribute type 'a' (1.1)", field("OID", "1.1", "1.2")},
    {"1.1 NAME 'a' DESC 'x'", "1.1 NAME ( 'A' 'b' ) DESC 'x'",
     "attribute type 'a' (1.1)", field("NAME", "a", "A b")},
    {"1.1 DESC 'x'", "1.1 DESC 'X'", "attribute type (1.1)",
     field("DESC", "'x'", "'X'")},
    {"1.1 DESC 'x'", "1.1", "attribute type (1.1)",
     field("DESC", "'x'", "(none)")},
    {"1.1", "1.1 OBSOLETE", "attribute type (1.1)",
     field("OBSOLETE", "no", "yes")},
    {"1.1 SUP 2.1", "1.1 SUP 2.2", "attribute type (1.1)",
     field("SUP", "2.1", "2.2")},
    {"1.1", "1.1 SUP 2.2", "attribute type (1.1)",
     field("SUP", "(none)", "2.2")},
    {"1.1 EQUALITY 2.1", "1.1 EQUALITY 2.2", "attribute type (1.1)",
     field("EQUALITY", "2.1", "2.2")},
    {"1.1 ORDERING 2.1", "1.1", "attribute type (1.1)",
     field("ORDERING", "2.1", "(none)")},
    {"1.1 SUBSTR 2.1", "1.1 SUBSTR 2.2", "attribute type (1.1)",
     field("SUBSTR", "2.1", "2.2")},
    {"1.1 SYNTAX 2.1{8}", "1.1 SYNTAX 2.1{9}", "attribute type (1.1)",
     field("SYNTAX", "2.1{8}", "2.1{9}")},
    {"1.1 SINGLE-VALUE", "1.1", "attribute type (1.1)",
     field("SINGLE-VALUE", "yes", "no")},
    {"1.1", "1.1 NO-USER-MODIFICATION", "attribute type (1.1)",
     field("NO-USER-MODIFICATION", "no", "yes")},
    {"1.1", "1.1 USAGE dSAOperation", "attribute type (1.1)",
     field("USAGE", "userApplications", "dSAOperation")},
    {"1.1 DESC 'x' OBSOLETE SINGLE-VALUE", "1.1 DESC 'y' SINGLE-VALUE",
     "attribute type (1.1)",
     field("DESC", "'x'", "'y'") + field("OBSOLETE", "yes", "no")},
};
INSTANTIATE_TEST_SUITE_P(AttributeTypes, CompareFieldTest,
                         testing::ValuesIn(kAttributeFields));

const FieldCase kObjectClassFields[] = {
    {"1.1 NAME 'c' ABSTRACT", "1.2 NAME 'c' ABSTRACT", "object class 'c' (1.1)",
     field("OID", "1.1", "1.2")},
    {"1.1 NAME 'c' ABSTRACT", "1.1 NAME ( 'c' 'd' ) ABSTRACT",
     "object class 'c' (1.1)", field("NAME", "c", "c d")},
    {"1.1 DESC 'x'", "1.1 DESC ''", "object class (1.1)",
     field("DESC", "'x'", "(none)")},
    {"1.1 OBSOLETE", "1.1", "object class (1.1)",
     field("OBSOLETE", "yes", "no")},
    {"1.1 SUP a", "1.1 SUP ( a $ b )", "object class (1.1)",
     field("SUP", "a", "a b")},
    {"1.1", "1.1 AUXILIARY", "object class (1.1)",
     field("kind", "STRUCTURAL", "AUXILIARY")},
    {"1.1 ABSTRACT", "1.1 STRUCTURAL", "object class (1.1)",
     field("kind", "ABSTRACT", "STRUCTURAL")},
    {"1.1 MUST ( a $ b )", "1.1 MUST ( a )", "object class (1.1)",
     field("MUST", "a b", "a")},
    {"1.1 MAY ( a )", "1.1 MAY ( b )", "object class (1.1)",
     field("MAY", "a", "b")},
    {"1.1 MUST ( a )", "1.1 MAY ( a )", "object class (1.1)",
     field("MUST", "a", "(none)") + field("MAY", "(none)", "a")},
    // As many values, and each old one among the new ones.
    {"1.1 MAY ( a $ a )", "1.1 MAY ( a $ b )", "object class (1.1)",
     field("MAY", "a a", "a b")},
    {"1.1 MAY ( a $ b )", "1.1 MAY ( b $ b )", "object class (1.1)",
     field("MAY", "a b", "b b")},
};
INSTANTIATE_TEST_SUITE_P(ObjectClasses, CompareFieldTest,
                         testing::ValuesIn(kObjectClassFields));

// Their OID is their key, so that it cannot differ alone.
const FieldCase kStorageFields[] = {
    {"1.1 DBNAME ( 'a' 'b' )", "1.1 DBNAME ( 'a' 'c' )",
     "storage definition (1.1)", field("DBNAME", "a b", "a c")},
    {"1.1 ACCESS-CLASS normal", "1.1 ACCESS-CLASS critical",
     "storage definition (1.1)", field("ACCESS-CLASS", "normal", "critical")},
    {"1.1 LENGTH 4", "1.1 LENGTH 40", "storage definition (1.1)",
     field("LENGTH", "4", "40")},
    {"1.1 EQUALITY", "1.1", "storage definition (1.1)",
     field("EQUALITY", "yes", "no")},
    {"1.1", "1.1 ORDERING", "storage definition (1.1)",
     field("ORDERING", "no", "yes")},
    {"1.1 SUBSTR", "1.1", "storage definition (1.1)",
     field("SUBSTR", "yes", "no")},
    {"1.1", "1.1 APPROX", "storage definition (1.1)",
     field("APPROX", "no", "yes")},
};
INSTANTIATE_TEST_SUITE_P(Storage, CompareFieldTest,
                         testing::ValuesIn(kStorageFields));

TEST_F(CompareTest, ListsAreSetsInAnyOrderAndCase) {
  const struct {
    const char *oldText;
    const char *newText;
  } kCases[] = {
      {"attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )",
       "attributetypes=( 1.1 NAME ( 'A' 'B' ) DESC 'x' )"},
      {"attributetypes=( 1.1 NAME ( 'a' 'b' 'c' ) DESC 'x' )",
       "attributetypes=( 1.1 NAME ( 'a' 'c' 'b' ) DESC 'x' )"},
      {"attributetypes=( 1.1 NAME ( 'a' 'b' 'b' ) DESC 'x' )",
       "attributetypes=( 1.1 NAME ( 'a' 'B' ) DESC 'x' )"},
      {"attributetypes=( 1.1 NAME 'a' SUP 2.1 SUP 2.2 )",
       "attributetypes=( 1.1 NAME 'a' SUP 2.2 SUP 2.1 )"},
  };
  for (const auto &[oldText, newText] : kCases) {
    SCOPED_TRACE(oldText);
    writeBoth(oldText, newText);
    expectResult(runReading(kCompare), 0,
                 sections({"attribute type 'a' (1.1)"}, {}, {}, {}, {}), "");
  }
  writeBoth(
      "objectclasses=( 1.1 SUP ( x $ y ) MUST ( a $ B ) MAY ( c $ d $ c ) )\n"
      "QORAttributetypes=( 1.1 DBNAME ( 'a' 'b' ) )\n",
      "objectclasses=( 1.1 SUP ( Y $ X ) MUST ( b $ a ) MAY ( d $ C ) )\n"
      "QORAttributetypes=( 1.1 DBNAME ( 'B' 'A' ) )\n");
  expectResult(runReading(kCompare), 0,
               sections({"object class (1.1)", "storage definition (1.1)"}, {},
                        {}, {}, {}),
               "");
}

TEST_F(CompareTest, WhatRepeatsInAListIsReplacedAllTheSame) {
  writeBoth("attributetypes=( 1.1 NAME ( 'a' 'b' 'b' ) DESC 'x' )\n",
            "attributetypes=( 1.1 NAME ( 'a' 'B' ) DESC 'x' )\n");
  const ApplyResult result = runApply();
  const auto replaces =
      static_cast<std::size_t>(schemaplan::Verdict::kReplaces);
  EXPECT_EQ(result.verdicts[replaces][fileIndex("V3.user.at")][0], 1U);
}

TEST_F(CompareTest, NotTheFileNorTheLayoutMatters) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("new/V3.system.at",
        "# moved\nattributetypes {\n( 1.1\n  NAME ( 'A' )\n DESC 'x'\n)\n}\n");
  expectResult(runReading(kCompare), 0,
               sections({"attribute type 'a' (1.1)"}, {}, {}, {}, {}), "");
}

TEST_F(CompareTest, AnOldDefinitionWithAnExcludedOidIsNotCompared) {
  write("list", "1.1 1.3 1.4\n1.5 # 1.2\n");
  writeBoth(
      "attributetypes=( 1.1 NAME 'same' DESC 'x' )\n"
      "attributetypes=( 1.2 NAME 'other' DESC 'x' )\n"
      "objectclasses=( 1.3 NAME 'differs' ABSTRACT )\n"
      "QORAttributetypes=( 1.4 LENGTH 1 )\n",
      "attributetypes=( 1.1 NAME 'same' DESC 'x' )\n"
      "attributetypes=( 1.2 NAME 'other' DESC 'x' )\n"
      "objectclasses=( 1.3 NAME 'differs' AUXILIARY )\n");
  Arguments arguments = kCompare;
  arguments.insert(arguments.end(), {"--excluded-oids", "list"});
  const Arguments excluded = {"attribute type 'same' (1.1), old/V3.user.at:1",
                              "object class 'differs' (1.3), old/V3.user.at:3",
                              "storage definition (1.4), old/V3.user.at:4"};
  expectResult(runReading(arguments), 0,
               sections({"attribute type 'other' (1.2)"}, {}, {}, {}, excluded),
               "");

  write("new/V3.user.oc", "objectclasses=( 1.5 NAME 'new' ABSTRACT )\n");
  expectResult(
      runReading(arguments), kDifferent,
      sections({"attribute type 'other' (1.2)"}, {}, {},
               {"object class 'new' (1.5), new/V3.user.oc:1"}, excluded),
      "");
}

TEST_F(CompareTest, ARenamedDefinitionIsOnEachSide) {
  writeBoth("attributetypes=( 1.1 NAME 'a' DESC 'x' )",
            "attributetypes=( 1.1 NAME 'b' DESC 'x' )");
  expectResult(runReading(kCompare), kDifferent,
               sections({}, {},
                        {"attribute type 'a' (1.1), old/V3.user.at:1; the new "
                         "schema has this OID as attribute type 'b', "
                         "new/V3.user.at:1"},
                        {"attribute type 'b' (1.1), new/V3.user.at:1"}, {}),
               "");
}

TEST_F(CompareTest, WhoHasTheOidOfWhatIsOnlyInTheOldSchema) {
  const struct {
    const char *oldText;
    const char *newText;
    const char *old;
    const char *theirs;
    const char *place;
  } kCases[] = {
      {"attributetypes=( 1.1 NAME 'a' DESC 'x' )",
       "objectclasses=( 1.1 NAME 'b' ABSTRACT )", "attribute type 'a' (1.1)",
       "object class 'b'", "object class 'b' (1.1)"},
      {"objectclasses=( 1.1 NAME 'a' ABSTRACT )",
       "attributetypes=( 1.1 NAME 'b' DESC 'x' )", "object class 'a' (1.1)",
       "attribute type 'b'", "attribute type 'b' (1.1)"},
      {"objectclasses=( 1.1 NAME 'a' ABSTRACT )",
       "objectclasses=( 1.1 ABSTRACT )", "object class 'a' (1.1)",
       "object class", "object class (1.1)"},
  };
  for (const auto &[oldText, newText, old, theirs, place] : kCases) {
    SCOPED_TRACE(old);
    writeBoth(oldText, newText);
    expectResult(
        runReading(kCompare), kDifferent,
        sections({}, {},
                 {std::string(old) +
                  ", old/V3.user.at:1; the new schema has this OID as " +
                  theirs + ", new/V3.user.at:1"},
                 {std::string(place) + ", new/V3.user.at:1"}, {}),
        "");
  }
  // The kind of the definition comes first.
  writeBoth("objectclasses=( 1.1 NAME 'a' ABSTRACT )",
            "attributetypes=( 1.1 NAME 'b' DESC 'x' )\n"
            "objectclasses=( 1.1 NAME 'c' ABSTRACT )\n");
  expectResult(
      runReading(kCompare), kDifferent,
      sections({}, {},
               {"object class 'a' (1.1), old/V3.user.at:1; the new schema has "
                "this OID as object class 'c', new/V3.user.at:2"},
               {"attribute type 'b' (1.1), new/V3.user.at:1",
                "object class 'c' (1.1), new/V3.user.at:2"},
               {}),
      "");
  // That of a storage definition is its type's, too; and none is none.
  writeBoth(
      "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
      "QORAttributetypes=( 1.1 LENGTH 4 )\n"
      "attributetypes=( NAME 'n' DESC 'x' )\n",
      "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
      "attributetypes=( NAME 'm' DESC 'x' )\n");
  expectResult(runReading(kCompare), kDifferent,
               sections({"attribute type 'a' (1.1)"}, {},
                        {"attribute type 'n' (), old/V3.user.at:3",
                         "storage definition (1.1), old/V3.user.at:2"},
                        {"attribute type 'm' (), new/V3.user.at:2"}, {}),
               "");
}

// A first name is taken, an OID is not.
TEST_F(CompareTest, WhatOnlyItsOidLeadsToIsComparedByThat) {
  const char kType[] = "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n";
  const char kClass[] = "objectclasses=( 2.1 NAME 'c' ABSTRACT )\n";
  const std::string both = std::string(kType) + kClass;
  const std::string more = both +
                           "attributetypes=( 1.2 NAME 'A' DESC 'y' )\n"
                           "objectclasses=( 2.2 NAME 'C' AUXILIARY )\n";
  const Arguments same = {"attribute type 'a' (1.1)", "object class 'c' (2.1)"};
  const auto places = [](const std::string &file) {
    return Arguments{"attribute type 'A' (1.2), " + file + ":3",
                     "object class 'C' (2.2), " + file + ":4"};
  };
  const auto expectSections = [this](int status, const std::string &expected) {
    const CommandResult result = runReading(kCompare);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.out, expected);
  };

  writeBoth(more, both);
  expectSections(1, sections(same, {}, places("old/V3.user.at"), {}, {}));
  writeBoth(both, more);
  expectSections(1, sections(same, {}, {}, places("new/V3.user.at"), {}));
  writeBoth(more, more);
  expectSections(
      0, sections({"attribute type 'a' (1.1)", "attribute type 'A' (1.2)",
                   "object class 'c' (2.1)", "object class 'C' (2.2)"},
                  {}, {}, {}, {}));
  writeBoth(more, replaceAll(more, "'y'", "'z'"));
  expectSections(1,
                 sections({"attribute type 'a' (1.1)", "object class 'c' (2.1)",
                           "object class 'C' (2.2)"},
                          {"attribute type 'A' (1.2), old/V3.user.at:3 and "
                           "new/V3.user.at:3" +
                           field("DESC", "'y'", "'z'")},
                          {}, {}, {}));
  writeBoth(more, both + "attributetypes=( 1.2 NAME 'b' DESC 'y' )\n");
  expectSections(
      1, sections(same, {},
                  {"attribute type 'A' (1.2), old/V3.user.at:3; the new schema "
                   "has this OID as attribute type 'b', new/V3.user.at:3",
                   "object class 'C' (2.2), old/V3.user.at:4"},
                  {"attribute type 'b' (1.2), new/V3.user.at:3"}, {}));

  write("list", "1.2 2.2\n");
  writeBoth(more, both);
  Arguments excluding = kCompare;
  excluding.insert(excluding.end(), {"--excluded-oids", "list"});
  const CommandResult result = runReading(excluding);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, sections(same, {}, {}, {}, places("old/V3.user.at")));
}

TEST_F(CompareTest, NamesTheFilesThatAreNotThere) {
  writeBoth("", "");
  expectResult(runAsItIs(kCompare), 0, sections({}, {}, {}, {}, {}),
               onlyThere("old", "V3.user.at") + onlyThere("new", "V3.user.at"));
}

TEST_F(CompareTest, WarnsOfWhatIsIgnored) {
  writeBoth(
      "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
      "attributetypes=( 1.2 NAME 'A' DESC 'y' )\n",
      "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
      "objectclasses { ( NAME 'c' ABSTRACT ) }\n");
  expectResult(
      runReading(kCompare), kDifferent,
      sections({"attribute type 'a' (1.1)"}, {},
               {"attribute type 'A' (1.2), old/V3.user.at:2"}, {}, {}),
      "old/V3.user.at:2: warning: attribute type 'A' (1.2) is "
      "found by its OID only: old/V3.user.at:1 defines the same first name\n"
      "new/V3.user.at:2: warning: object class 'c' () is ignored: it "
      "has no OID\n");
  // Not before all is read.
  Arguments arguments = kCompare;
  arguments.insert(arguments.end(), {"--excluded-oids", "list"});
  expectResult(runReading(arguments), kFileError, "",
               "list: error: No such file or directory\n");
}

}  // namespace
