// The command plan, as a user runs it.
#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>

#include "CommandsTesting.h"
#include "PlanReport.h"

namespace {

class PlanCommandTest : public ReadingCommandTest {
 protected:
  CommandResult plan(Arguments more = {}) const {
    Arguments arguments = {"plan", "--old", "old", "--new", "new"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return runAsItIs(arguments);
  }
};

// What is printed before the verdicts, and the verdicts that nothing has.
constexpr char kHead[] =
    "old installation: old\n"
    "new release: new\n";

TEST_F(PlanCommandTest, ListsEachDefinitionUnderItsVerdict) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'same' DESC 'x' )\n"
        "attributetypes=( 1.2 NAME 'other' DESC 'old' SYNTAX 1.2{64} )\n"
        "attributetypes=( 1.3 NAME 'mine' DESC 'x' )\n"
        "QORAttributetypes=( 1.3 LENGTH 4 )\n"
        "attributetypes=( 1.4 NAME 'listed' DESC 'x' )\n"
        "attributetypes=( 1.5 NAME 'SAME' DESC 'x' )\n");
  write("old/V3.user.oc", "objectclasses=( 2.1 NAME 'k' AUXILIARY )\n");
  write("new/V3.system.at",
        "attributetypes=( 1.1 NAME 'same' DESC 'x' )\n"
        "attributetypes=( 1.2 NAME ( 'other' 'alias' ) DESC 'new' SYNTAX "
        "1.2{32} )\n");
  write("new/V3.modifiedschema", "objectclasses=( 2.1 NAME 'k' AUXILIARY )\n");
  write("excluded", "1.4\n");
  write("modified", "2.1\n");
  expectResult(
      plan({"--excluded-oids", "excluded", "--modified-oids", "modified",
            "--accept", "SHADOWED"}),
      1,
      std::string(kHead) +
          "\n"
          "identical: 1\n"
          "  V3.user.at:1: attribute type 'same' (1.1)\n"
          "\n"
          "excluded: 1\n"
          "  V3.user.at:5: attribute type 'listed' (1.4): its OID is in the "
          "list of excluded ones\n"
          "\n"
          "shadowed: 1\n"
          "  V3.user.at:6: attribute type 'SAME' (1.5): V3.user.at:1 has the "
          "same first name: accepted\n"
          "    [SHADOWED] expected a first name of its own, found that of "
          "old/V3.user.at:1, attribute type 'same' (1.1); the library holds "
          "that one instead of this, which differs in OID\n"
          "\n"
          "withdrawn: 1\n"
          "  V3.user.oc:1: object class 'k' (2.1)\n"
          "\n"
          "added: 2\n"
          "  V3.user.at:3: attribute type 'mine' (1.3)\n"
          "  V3.user.at:4: storage definition (1.3)\n"
          "\n"
          "replaces the release's: 1\n"
          "  V3.user.at:2: attribute type 'other' (1.2); the release's is at "
          "V3.system.at:2\n"
          "    NAME: narrowing\n"
          "      release: other alias\n"
          "      old:     other\n"
          "    DESC: neutral\n"
          "      release: 'new'\n"
          "      old:     'old'\n"
          "    SYNTAX: widening\n"
          "      release: 1.2{32}\n"
          "      old:     1.2{64}\n"
          "\n"
          "cannot be carried: 0\n"
          "\n"
          "withdrawn from the release: 1\n"
          "  V3.modifiedschema:1: object class 'k' (2.1)\n"
          "\n"
          "broken in the result: 0\n"
          "\n"
          "errors in the files: 0\n"
          "\n"
          "7 definitions: 5 attribute types (1 identical, 1 excluded, 1 "
          "shadowed, 1 added, 1 replacing the release's), 1 object class (1 "
          "withdrawn), 1 storage definition (1 added)\n",
      "");
}

TEST_F(PlanCommandTest, SaysWhatStandsAgainstIt) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "QORAttributetypes=( 1.1 LENGTH 4 )\n"
        "attributetypes=( 1.2 NAME 'b' DESC 'caf\xC3\xA9' )\n"
        "QORAttributetypes=( 1.7 LENGTH 4 )\n");
  write("new/V3.user.at",
        "attributetypes=( 1.9 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.7 NAME 'g' DESC 'x' )\n");
  const CommandResult result = plan({"--accept", "NAME-OTHER-OID"});
  expectResult(
      result, kFindings,
      std::string(kHead) +
          "\n"
          "identical: 0\n"
          "\n"
          "excluded: 0\n"
          "\n"
          "shadowed: 0\n"
          "\n"
          "withdrawn: 0\n"
          "\n"
          "added: 1\n"
          "  V3.user.at:4: storage definition (1.7)\n"
          "\n"
          "replaces the release's: 0\n"
          "\n"
          "cannot be carried: 3\n"
          "  V3.user.at:1: attribute type 'a' (1.1): accepted\n"
          "    [NAME-OTHER-OID] expected the OID of the release, 1.9, found "
          "1.1; the release has the name at new/V3.user.at:1, attribute type "
          "'a' (1.9); the attribute type cannot be carried\n"
          "  V3.user.at:2: storage definition (1.1): its attribute type cannot "
          "be carried\n"
          "  V3.user.at:3: attribute type 'b' (1.2)\n"
          "    [UNREADABLE] expected attribute type 'b' (1.2), found that the "
          "library does not read it as it stands; check says why\n"
          "\n"
          "broken in the result: 0\n"
          "\n"
          "errors in the files: 1\n"
          "old/V3.user.at:3:40: error: [NON-ASCII] expected ASCII characters, "
          "found a byte outside ASCII; the library gives the file up here\n"
          "attributetypes=( 1.2 NAME 'b' DESC 'caf\xC3\xA9' )\n"
          "\n"
          "apply refuses to do this: 1 error\n"
          "4 definitions: 2 attribute types (2 that cannot be carried), 2 "
          "storage definitions (1 added, 1 that cannot be carried)\n",
      "");
}

TEST_F(PlanCommandTest, SaysWhoHasChangedWhatAndWhatWouldBreak) {
  std::filesystem::create_directory(path("base"));
  write("base/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n");
  write("old/V3.user.oc",
        "objectclasses=( 2.1 NAME 'k' AUXILIARY MUST ( b ) )\n");
  write("new/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'y' )\n");
  write("decisions", "1.2 new\n9.9 old\n");
  const CommandResult result = plan(
      {"--base", "base", "--prefer", "changed", "--decisions", "decisions"});
  const std::string text = result.out.substr(0, result.out.find("shadowed"));
  EXPECT_EQ(text,
            std::string(kHead) +
                "old release: base\n"
                "\n"
                "identical: 0\n"
                "\n"
                "excluded: 2\n"
                "  V3.user.at:1: attribute type 'a' (1.1): the release has "
                "changed it; the release's is at V3.user.at:1; changed by the "
                "release\n"
                "    DESC: neutral; changed by the release\n"
                "      release: 'y'\n"
                "      old:     'x'\n"
                "  V3.user.at:2: attribute type 'b' (1.2): decided for the "
                "release's side\n"
                "\n");
  EXPECT_EQ(result.out.substr(result.out.find("added: ")),
            "added: 1\n"
            "  V3.user.oc:1: object class 'k' (2.1); added by the "
            "administrator\n"
            "\n"
            "replaces the release's: 0\n"
            "\n"
            "cannot be carried: 0\n"
            "\n"
            "broken in the result: 1\n"
            "old/V3.user.oc:1:47: warning: [UNDEFINED-ATTRIBUTE] expected the "
            "attribute 'b' in the result, found none; it would be that at "
            "old/V3.user.at:2, attribute type 'b' (1.2)\n"
            "objectclasses=( 2.1 NAME 'k' AUXILIARY MUST ( b ) )\n"
            "                                              ^\n"
            "\n"
            "errors in the files: 0\n"
            "\n"
            "3 definitions: 2 attribute types (2 excluded), 1 object class (1 "
            "added)\n");
  EXPECT_EQ(result.error,
            "decisions:2: warning: no definition of the old installation has "
            "the OID 9.9\n");
  EXPECT_EQ(result.status, kDifferent);
}

// The old installation has nothing in its place.
TEST_F(PlanCommandTest, SaysWhatIsWithdrawnFromTheReleaseAlone) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("new/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("new/V3.modifiedschema", "objectclasses=( 2.1 NAME 'k' AUXILIARY )\n");
  write("modified", "2.1\n");
  const CommandResult result = plan({"--modified-oids", "modified"});
  EXPECT_EQ(result.out.substr(result.out.find("withdrawn from")),
            "withdrawn from the release: 1\n"
            "  V3.modifiedschema:1: object class 'k' (2.1)\n"
            "\n"
            "broken in the result: 0\n"
            "\n"
            "errors in the files: 0\n"
            "\n"
            "1 definition: 1 attribute type (1 identical)\n");
  EXPECT_EQ(result.status, kDifferent);
}

TEST_F(PlanCommandTest, ShowsNoControlCharacters) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a\33[m' DESC 'x' )\n");
  write("new/V3.user.at", "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n");
  const CommandResult result = plan();
  EXPECT_EQ(result.out.find('\33'), std::string::npos);
  EXPECT_NE(result.out.find("attribute type 'a?[m' (1.1)"), std::string::npos);
}

TEST_F(PlanCommandTest, SaysThatThereIsNothingToDo) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("new/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  const CommandResult result = plan();
  EXPECT_EQ(result.out.substr(result.out.find("errors in")),
            "errors in the files: 0\n"
            "\n"
            "nothing to do: the release has all that is to be carried\n"
            "1 definition: 1 attribute type (1 identical)\n");
  EXPECT_EQ(result.status, 0);
}

struct UsageCase {
  const char *name;
  Arguments arguments;
  ExitStatus status;
  const char *error;
};

void PrintTo(const UsageCase &usageCase, std::ostream *out) {
  *out << usageCase.name;
}

class PlanUsageTest : public PlanCommandTest,
                      public testing::WithParamInterface<UsageCase> {};

TEST_P(PlanUsageTest, IsExplained) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("new/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("list", "1.1\n");
  write("decisions", "# first\n1.1 old\n");
  expectResult(plan(GetParam().arguments), GetParam().status, "",
               GetParam().error);
}

const UsageCase kUsages[] = {
    {"PreferenceWithoutBase",
     {"--prefer", "changed"},
     kUsage,
     "--prefer: changed needs --base, which tells who has changed what\n"
     "Run with --help for more information.\n"},
    {"UnknownCode",
     {"--accept", "SHADOWED,NAME-OTHER-OIDS"},
     kUsage,
     "--accept: no error that can be accepted has the code "
     "'NAME-OTHER-OIDS'; did you mean 'NAME-OTHER-OID'?\n"
     "Run with --help for more information.\n"},
    {"WarningCode",
     {"--accept", "EMPTY-FILE"},
     kUsage,
     "--accept: no error that can be accepted has the code 'EMPTY-FILE'\n"
     "Run with --help for more information.\n"},
    {"CodeThatCannotBeAccepted",
     {"--accept", "COLLECTIVE"},
     kUsage,
     "--accept: no error that can be accepted has the code 'COLLECTIVE'\n"
     "Run with --help for more information.\n"},
    {"DecisionOnWhatIsExcluded",
     {"--decisions", "decisions", "--excluded-oids", "list"},
     kBadInput,
     "decisions:2: error: expected an OID that may be carried, found 1.1, "
     "which is in the list of excluded ones\n"},
    {"DecisionOnWhatIsWithdrawn",
     {"--decisions", "decisions", "--modified-oids", "list"},
     kBadInput,
     "decisions:2: error: expected an OID that may be carried, found 1.1, "
     "which is in the list of modified ones\n"},
    {"CodeOfWhatWouldNotReadBack",
     {"--accept", "REWRITING"},
     kUsage,
     "--accept: no error that can be accepted has the code 'REWRITING'\n"
     "Run with --help for more information.\n"},
    {"BaseThatIsNotThere",
     {"--base", "none"},
     kFileError,
     "none: error: [NOT-A-DIRECTORY] expected a directory that can be read, "
     "found: No such file or directory\n"},
    {"FileThatIsTooLarge",
     {"--max-size", "10"},
     kBadInput,
     "old/V3.user.at: error: [LARGE-FILE] expected at most 10 bytes, found "
     "41\n"
     "new/V3.user.at: error: [LARGE-FILE] expected at most 10 bytes, found "
     "41\n"},
};

std::string nameOfCase(const testing::TestParamInfo<UsageCase> &info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(All, PlanUsageTest, testing::ValuesIn(kUsages),
                         nameOfCase);

TEST_F(PlanCommandTest, WithoutAVerdictForEachDefinitionIsAnInternalError) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n");
  write("new/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  const Migration migration({path("old"), path("new")});
  const auto errorOf = [&](const schemaplan::Plan &plan) -> std::string {
    try {
      requireComplete(plan, migration.oldDirectory());
    } catch (const InternalError &error) {
      return relative(error.what());
    }
    return "";
  };
  schemaplan::Plan plan = migration.plan();
  EXPECT_EQ(errorOf(plan), "");
  plan.definitions.pop_back();
  EXPECT_EQ(errorOf(plan), "definitions of old without a verdict: 1");
  plan.definitions.push_back(plan.definitions.front());
  EXPECT_EQ(errorOf(plan),
            "old/V3.user.at:1: attribute type 'a' (1.1) has a verdict too "
            "many");
  plan = migration.plan();
  plan.definitions.push_back(plan.definitions.back());
  EXPECT_EQ(errorOf(plan),
            "old/V3.user.at:2: attribute type 'b' (1.2) has a verdict too "
            "many");
  plan.definitions.pop_back();
  plan.definitions.back().statement =
      &migration.newDirectory().statements().front();
  EXPECT_EQ(errorOf(plan),
            "new/V3.user.at:1: attribute type 'a' (1.1) has a verdict too "
            "many");
}

}  // namespace
