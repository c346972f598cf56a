// The command, as a user runs it.
#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "MigrateTesting.h"

namespace fs = std::filesystem;

namespace {

using Arguments = std::vector<std::string>;

const Arguments kApply = {"apply", "--old", "old", "--new",
                          "new",   "--out", "out"};

constexpr char kHelp[] =
    R"(Carries a directory server's schema into a new release.
Usage: schema-migrate [OPTIONS] SUBCOMMAND

Options:
  -h,--help                   Print this help message and exit
  --version                   Display program version information and exit

Subcommands:
  plan                        Say what apply would do with each definition of an old installation, and what would break. Writes nothing.
  apply                       Carry the schema of an old installation into a new release's as plan says, and write the result to a new directory.
  restore                     Put a backup that apply --replace has made in the place of the directory; what is there becomes a backup in turn.
  check                       Say what in schema directories the library would lose, change or choke on. Of several directories the last is the new release, and the others are checked against it, too.
  collisions                  Report the definitions of an old installation that collide with a new release.
  compare                     Say what is identical in two schemas, what differs and in what fields, and what only one of them has.
  show                        Show definitions with their superiors, what they inherit, and how they are stored.
  dump                        Print the library's diagnostic dumps of a schema.

Example:
  schema-migrate plan --old /srv/old/schema --new /srv/new/schema
  schema-migrate plan --help

Exit status:
  0 done
  1 differences, or changes to be made
  2 findings: errors, collisions, what apply refuses, an unknown name
  3 bad input: a file whose content cannot be used
  4 a file, a directory, an output or the memory fails or is in the way
  5 wrong usage
  6 a fault of the command itself
)";

constexpr char kApplyHelp[] =
    R"(Carry the schema of an old installation into a new release's as plan says, and write the result to a new directory.
Usage: schema-migrate apply [OPTIONS]

Options:
  -h,--help                   Print this help message and exit
  --trace FILE                File for a trace of the library's operations
  --trace-events MASK Needs: --trace
                              What to trace, as a mask of event bits: 0x1000 and 0x10000 operations (0x2000 and 0x20000 their ends alone), 0x4000000 messages
  --format FORMAT:{text,json} How to print the result: text (the default), or json: one document in the form that a schema in share/doc/schema-migrate/json states
  --old DIR REQUIRED          Schema directory of the old installation
  --new DIR REQUIRED          Schema directory of the new release
  --excluded-oids FILE        List of OIDs that are not to be carried
  --out DIR REQUIRED          Directory for the result; must not exist or be empty, unless it is to be replaced
  --replace                   Let the result take the place of a schema directory, which becomes a backup beside it
  --modified-oids FILE        List of OIDs whose definitions are withdrawn from the result's modified schema
  --base DIR                  Schema directory as the old release was shipped with it; tells who has changed what
  --prefer SIDE:{old,new,changed}
                              Whose definition to take where the two sides differ: old (the default), new, or changed: that of the side which has changed it; needs --base
  --decisions FILE            Lines of an OID and old or new, which go before --prefer
  --leave-out                 Leave out the definitions of V3.config.at, V3.config.oc and V3.modifiedschema that cannot be added
  --accept CODE,... ...       Codes of errors that are not to stop the migration, separated by commas; what cannot be carried for such a reason is left out
  --max-size BYTES=67108864   The largest file to read, in bytes

Example:
  schema-migrate apply --old /srv/old/schema --new /srv/new/schema --out /srv/merged

Exit status:
  0 done
  2 refused; plan says the same
  3 bad input: a file whose content cannot be used
  4 a file, a directory, an output or the memory fails or is in the way
  5 wrong usage
  6 a fault of the command itself
)";

// A directory in which the migration `kApply` works.
class CommandTest : public MigrateTest {
 protected:
  CommandTest() {
    write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
    writeSmallRelease();
  }

  const FixedDate m_date;
};

struct UsageCase {
  Arguments arguments;
  ExitStatus status;
  std::string out;
  std::string error;  // without the reference to --help
};

void PrintTo(const UsageCase &usage, std::ostream *out) {
  for (const std::string &argument : usage.arguments) {
    *out << argument << ' ';
  }
}

class CommandUsageTest : public CommandTest,
                         public testing::WithParamInterface<UsageCase> {};

TEST_P(CommandUsageTest, AnswersAndChangesNothing) {
  const UsageCase &usage = GetParam();
  const auto before = snapshotOf(root());
  const CommandResult result = run(usage.arguments);
  EXPECT_EQ(result.status, usage.status);
  EXPECT_EQ(result.out, usage.out);
  EXPECT_EQ(result.error,
            usage.error.empty()
                ? ""
                : usage.error + "\nRun with --help for more information.\n");
  EXPECT_EQ(snapshotOf(root()), before);
}

const UsageCase kUsages[] = {
    {{"--help"}, kDone, kHelp, ""},
    {{"-h"}, kDone, kHelp, ""},
    {{"--help", "--old", "old"}, kDone, kHelp, ""},
    {{"apply", "--help"}, kDone, kApplyHelp, ""},
    {{"apply", "-h", "--old", "old"}, kDone, kApplyHelp, ""},
    {{"--version"}, kDone, "schema-migrate " SCHEMA_MIGRATE_VERSION "\n", ""},
    {{}, kUsage, "", "A subcommand is required"},
    {{"Apply"},
     kUsage,
     "",
     "error: no command is called 'Apply'; did you mean 'apply'?"},
    {{"aply", "--old", "old"},
     kUsage,
     "",
     "error: no command is called 'aply'; did you mean 'apply'?"},
    {{"co"},
     kUsage,
     "",
     "error: no command is called 'co'; did you mean 'compare' or "
     "'collisions'?"},
    {{"frobnicate", "--help"},
     kUsage,
     "",
     "error: no command is called 'frobnicate'; expected plan, apply, restore, "
     "check, collisions, compare, show or dump"},
    {{""},
     kUsage,
     "",
     "error: no command is called ''; expected plan, apply, restore, check, "
     "collisions, compare, show or dump"},
    {{"apply", "--old", "", "--new", "new", "--out", "out"},
     kUsage,
     "",
     "--old: expected a name, found nothing"},
    {{"collisions", "--old", "old", "--new", ""},
     kUsage,
     "",
     "--new: expected a name, found nothing"},
    {{"apply", "--old", "old", "--new", "new", "--out", ""},
     kUsage,
     "",
     "--out: expected a name, found nothing"},
    {{"check", "old", ""},
     kUsage,
     "",
     "directory: expected a name, found nothing"},
    {{"show", "--dir", "", "a"},
     kUsage,
     "",
     "--dir: expected a name, found nothing"},
    {{"compare", "--old", "old", "--new", "new", "--excluded-oids", ""},
     kUsage,
     "",
     "--excluded-oids: expected a name, found nothing"},
    {{"apply", "--old", "old", "--new", "new", "--out", "out",
      "--modified-oids", ""},
     kUsage,
     "",
     "--modified-oids: expected a name, found nothing"},
    {{"dump", "--dir", "old", "--trace", ""},
     kUsage,
     "",
     "--trace: expected a name, found nothing"},
    {{"--frobnicate"},
     kUsage,
     "",
     "error: no option is called '--frobnicate'; expected --help or "
     "--version"},
    {{"--Version"},
     kUsage,
     "",
     "error: no option is called '--Version'; did you mean '--version'?"},
    {{"--hepl", "plan"},
     kUsage,
     "",
     "error: no option is called '--hepl'; did you mean '--help'?"},
    {{"--old", "old", "plan", "--new", "new"},
     kUsage,
     "",
     "error: expected a command ahead of '--old'"},
    {{"--", "-x"}, kUsage, "", "A subcommand is required"},
    {{"plan", "--odl", "old", "--new", "new"},
     kUsage,
     "",
     "error: plan has no option '--odl'; did you mean '--old'?"},
    {{"plan", "--old", "old", "--new", "new", "--prefre=new"},
     kUsage,
     "",
     "error: plan has no option '--prefre'; did you mean '--prefer'?"},
    {{"check", "--excluded", "list", "old"},
     kUsage,
     "",
     "error: check has no option '--excluded'; did you mean "
     "'--excluded-oids'?"},
    {{"restore", "-out", "out"},
     kUsage,
     "",
     "error: restore has no option '-out'; did you mean '--out'?"},
    {{"restore", "--frobnicate", "--out"},
     kUsage,
     "",
     "error: restore has no option '--frobnicate'; expected --help, --out, "
     "--backup or --list"},
    {{"restore", "--out", "out", "--", "-x"},
     kUsage,
     "",
     "The following argument was not expected: -x"},
    {{"apply"}, kUsage, "", "--old is required"},
    {{"apply", "--new", "new", "--out", "out"},
     kUsage,
     "",
     "--old is required"},
    {{"apply", "--old", "old", "--out", "out"},
     kUsage,
     "",
     "--new is required"},
    {{"apply", "--old", "old", "--new", "new"},
     kUsage,
     "",
     "--out is required"},
    {{"apply", "--old", "old", "--new", "new", "--out"},
     kUsage,
     "",
     "--out: 1 required DIR missing"},
    {{"apply", "--old", "old", "--new", "new", "--out", "out", "more"},
     kUsage,
     "",
     "The following argument was not expected: more"},
    {{"apply", "--old", "old", "--new", "new", "--out", "out", "--out",
      "other"},
     kUsage,
     "",
     "--out: At Most 1 required but received 2"},
};

INSTANTIATE_TEST_SUITE_P(Usage, CommandUsageTest, testing::ValuesIn(kUsages));

TEST_F(CommandTest, MigratesAndReports) {
  const CommandResult result = run(kApply);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.out, R"(old installation: old
  not there: V3.user.oc V3.qor.at V3.qor.oc V3.system.at V3.system.oc V3.config.at V3.config.oc V3.modifiedschema
                                              read  identical   excluded      added   replaced
  V3.user.at        attribute types              1          0          0          1          0
  all                                            1          0          0          1          0

new release: new
  not there: V3.user.at V3.user.oc V3.qor.at V3.qor.oc V3.system.at V3.config.at V3.config.oc V3.modifiedschema
result: out
                                           release     result
  V3.user.at        attribute types              0          1
  V3.system.oc      object classes               1          1
  all                                            1          2
)");
  EXPECT_EQ(read("out/V3.user.at"),
            std::string(kHeaderLine) +
                "attributetypes=( 1.1 NAME ( 'a'  )  DESC 'x' USAGE "
                "userApplications  )\n");
  EXPECT_EQ(read("out/V3.system.oc"),
            std::string(kHeaderLine) +
                "objectclasses=( 2.5.6.0 NAME 'top' ABSTRACT )\n");
  EXPECT_EQ(
      namesIn(path("out")),
      (Arguments{"V3.modifiedschema", "V3.qor.at", "V3.qor.oc", "V3.system.at",
                 "V3.system.oc", "V3.user.at", "V3.user.oc", kManifestName}));
  EXPECT_EQ(namesIn(root()), (Arguments{"new", "old", "out"}));
}

TEST_F(CommandTest, MigratesTheExamples) {
  const std::string examples = SCHEMA_EXAMPLES_DIR;
  const CommandResult result =
      run({"apply", "--old", examples + "/old-installation", "--new",
           examples + "/new-release", "--excluded-oids",
           examples + "/excluded-oids.txt", "--out", "out"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(replaceAll(result.out, examples, "examples"),
            R"(old installation: examples/old-installation
                                              read  identical   excluded      added   replaced
  V3.user.at        attribute types             24         11          1         11          1
                    storage definitions         24         11          1         11          1
  V3.user.oc        object classes               7          1          1          4          1
  V3.qor.at         attribute types              7          6          0          1          0
                    storage definitions          7          6          0          1          0
  V3.qor.oc         object classes               8          7          0          1          0
  V3.system.at      attribute types             83         76          1          3          3
                    storage definitions         83         75          1          3          4
  V3.system.oc      object classes              23         20          0          1          2
  V3.config.at      attribute types              7          5          1          0          1
                    storage definitions          7          6          1          0          0
  V3.config.oc      object classes               2          1          0          0          1
  V3.modifiedschema attribute types              2          1          0          0          1
                    object classes               1          0          0          0          1
                    storage definitions          2          2          0          0          0
  all                                          287        228          7         36         16

new release: examples/new-release
result: out
                                           release     result
  V3.user.at        attribute types             12         23
                    storage definitions         12         23
  V3.user.oc        object classes               2          6
  V3.qor.at         attribute types              7          8
                    storage definitions          7          8
  V3.qor.oc         object classes               8          9
  V3.system.at      attribute types             81         84
                    storage definitions         81         84
  V3.system.oc      object classes              22         23
  V3.config.at      attribute types              6          6
                    storage definitions          6          6
  V3.config.oc      object classes               2          2
  V3.modifiedschema attribute types              5          5
                    object classes               2          2
                    storage definitions          5          5
  all                                          258        294
)");
  EXPECT_EQ(namesIn(path("out")),
            (Arguments{"V3.config.at", "V3.config.oc", "V3.modifiedschema",
                       "V3.qor.at", "V3.qor.oc", "V3.system.at", "V3.system.oc",
                       "V3.user.at", "V3.user.oc", kManifestName}));
}

TEST_F(CommandTest, PutsTheResultWhereItIsTold) {
  struct {
    const char *out;
    const char *where;
  } const kCases[] = {
      {"out", "out"},
      {"out/", "out"},
      {"./missing/../out", "out"},
      {"empty", "empty"},
      {"empty/", "empty"},
      {"empty/.", "empty"},
      {"empty/out", "empty/out"},
      {"link/", "empty"},
      {"link/out/", "empty/out"},
      {"old-result", "old-result"},
  };
  for (const auto &[out, where] : kCases) {
    SCOPED_TRACE(out);
    fs::create_directory(path("empty"));
    fs::create_directory_symlink("empty", path("link"));
    auto before = snapshotOf(root());
    const CommandResult result =
        run({"apply", "--old", "old", "--new", "new", "--out", out});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_NE(result.out.find(std::string("\nresult: ") + out + '\n'),
              std::string::npos);
    EXPECT_EQ(namesIn(path(where)).size(), 8U);
    fs::remove_all(path(where));
    auto after = snapshotOf(root());
    before.erase("empty");  // its time of modification
    after.erase("empty");
    EXPECT_EQ(after, before);
    fs::remove_all(path("empty"));
    fs::remove(path("link"));
  }
}

TEST_F(CommandTest, PutsTheResultIntoTheCurrentDirectory) {
  fs::create_directory(path("empty"));
  const CommandResult result =
      runCommand(path("empty"),
                 {"apply", "--old", "../old", "--new", "../new", "--out", "."});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(namesIn(path("empty")).size(), 8U);
  EXPECT_EQ(namesIn(root()), (Arguments{"empty", "new", "old"}));
}

TEST_F(CommandTest, WritesTheSameBytesAtTheSameDate) {
  write("new/V3.config.at", "# no definition");
  ASSERT_EQ(run(kApply).status, 0);
  fs::rename(path("out"), path("first"));
  ASSERT_EQ(run(kApply).status, 0);
  ASSERT_EQ(namesIn(path("out")), namesIn(path("first")));
  for (const std::string &name : namesIn(path("out"))) {
    EXPECT_EQ(read("out/" + name), read("first/" + name)) << name;
  }
}

// Repeated definitions are never freed, which is the library's contract; so
// they are none of the leak checker's business here.
void allowLeaks() {
  const char *options = getenv("ASAN_OPTIONS");
  const std::string before = options == nullptr ? "" : options;
  setenv("ASAN_OPTIONS", (before + ":detect_leaks=0").c_str(), 1);
}

TEST_F(CommandTest, PrintsWarningsToStandardErrorAndSucceeds) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.2 NAME 'A' DESC 'x' )\n");
  write("new/V3.qor.at", "QORAttributetypes=( 1.3 LENGTH 4 )\n");
  Arguments arguments = kApply;
  arguments.insert(arguments.end(),
                   {"--accept", "SHADOWED,STORAGE-WITHOUT-TYPE"});
  const CommandResult result = run(arguments, allowLeaks);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error,
            "old/V3.user.at:2: warning: attribute type 'A' (1.2) is found by "
            "its OID only: old/V3.user.at:1 defines the same first name; it is "
            "not carried\n"
            "new/V3.qor.at:1: warning: storage definition (1.3) is not in the "
            "result as it stands here\n");
  EXPECT_EQ(result.out, R"(old installation: old
  not there: V3.user.oc V3.qor.at V3.qor.oc V3.system.at V3.system.oc V3.config.at V3.config.oc V3.modifiedschema
                                              read  identical   excluded      added   replaced   shadowed
  V3.user.at        attribute types              2          0          0          1          0          1
  all                                            2          0          0          1          0          1

new release: new
  not there: V3.user.at V3.user.oc V3.qor.oc V3.system.at V3.config.at V3.config.oc V3.modifiedschema
result: out
                                           release     result
  V3.user.at        attribute types              0          1
  V3.qor.at         storage definitions          1          0
  V3.system.oc      object classes               1          1
  all                                            2          2
)");
}

TEST_F(CommandTest, ASecondRunHasNothingToDoAndSaysSo) {
  constexpr char kNothing[] =
      "\nnothing was to be done: the new release has it all\n";
  CommandResult result = run(kApply);
  EXPECT_EQ(result.out.find(kNothing), std::string::npos);
  result = run({"apply", "--old", "old", "--new", "out", "--out", "again"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.out.substr(result.out.rfind("\n\n") + 1), kNothing);
  for (const char *file : {"V3.user.at", "V3.system.oc"}) {
    EXPECT_EQ(read(std::string("again/") + file),
              read(std::string("out/") + file));
  }
}

TEST_F(CommandTest, LeavesOutWhatIsExcluded) {
  write("excluded", "1.1 # a\n");
  Arguments arguments = kApply;
  arguments.insert(arguments.end(), {"--excluded-oids", "excluded"});
  const CommandResult result = run(arguments);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
  EXPECT_NE(result.out.find("  V3.user.at        attribute types              1"
                            "          0          1          0          0\n"),
            std::string::npos)
      << result.out;
  EXPECT_EQ(read("out/V3.user.at"), "");
}

}  // namespace
