// The command check, as a user runs it.
#include <sys/stat.h>

#include <string>

#include "CheckCommandTesting.h"
#include "SchemaManager.h"

namespace {

const char kType[] = "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n";
const char kClass[] = "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n";

class CheckTest : public ReadingCommandTest {
 protected:
  // Expects what a check of the directory "old" prints.
  void expectFindings(const std::string &findings) const {
    expectResult(run({"check", "old"}, withLimits),
                 count(findings, ": error: [") == 0 ? kDone : kFindings,
                 withSum(findings), "");
  }
};

TEST_F(CheckTest, HelpHoldsAnExample) {
  expectResult(
      run({"check", "--help"}), 0,
      "Say what in schema directories the library would lose, change "
      "or choke on. Of several directories the last is the new "
      "release, and the others are checked against it, too.\n"
      "Usage: schema-migrate check [OPTIONS] directory...\n"
      "\n"
      "Positionals:\n"
      "  directory DIR ... REQUIRED  Schema directories\n"
      "\n" +
          std::string(kCommonOptionsHelp) + kFormatHelp +
          "  --excluded-oids FILE        List of OIDs that are not to "
          "be carried\n"
          "  --modified-oids FILE        List of OIDs whose "
          "definitions are to be withdrawn\n"
          "  --max-size BYTES=67108864   The largest file to read, in "
          "bytes\n"
          "  --strict                    Let warnings count as errors "
          "do\n"
          "\n"
          "Example:\n"
          "  schema-migrate check /srv/old/schema "
          "/srv/new/schema\n\n" +
          exitStatusHelp("  2 errors found, or warnings with --strict\n"),
      "");
}

TEST_F(CheckTest, WrongUsageIsTrouble) {
  expectResult(run({"check"}), kUsage, "", usageError("directory is required"));
  expectResult(run({"check", "old", "--max-size", "x"}), kUsage, "",
               usageError("Could not convert: --max-size = x"));
}

TEST_F(CheckTest, DirectoriesThatCannotBeRead) {
  expectResult(
      run({"check", "missing"}), kFileError,
      "missing: error: [NOT-A-DIRECTORY] expected a directory that can be "
      "read, found: No such file or directory\n"
      "1 error, 0 warnings\n",
      "");
  write("file", "");
  expectResult(
      run({"check", "file"}), kFileError,
      "file: error: [NOT-A-DIRECTORY] expected a directory that can be read, "
      "found: Not a directory\n"
      "1 error, 0 warnings\n",
      "");
  expectFindings(
      "old: error: [NO-FILES] expected schema files (V3.user.at and so on), "
      "found none\n");
}

TEST_F(CheckTest, NamesOfFiles) {
  write("old/V3.user.at", kType);
  write("old/V3.user.at.bak", kType);
  write("old/v3.User.oc", kClass);
  write("old/V3.sistem.oc", kClass);
  write("old/notes", "");
  expectFindings(
      "old/V3.user.at.bak: warning: [UNKNOWN-FILE] expected the name of a "
      "schema file, such as V3.user.at; the file is not read\n"
      "old/V3.sistem.oc: error: [MISNAMED-FILE] expected the name of a schema "
      "file, such as V3.system.oc; the file is not read\n"
      "old/v3.User.oc: error: [MISNAMED-FILE] expected the name of a schema "
      "file, such as V3.user.oc; the file is not read\n");
}

TEST_F(CheckTest, FilesThatCannotBeRead) {
  write("old/V3.user.oc", kClass);
  write("old/V3.qor.oc", std::string(1001, '\n'));
  std::filesystem::create_directory(path("old/V3.user.at"));
  ASSERT_EQ(mkfifo(path("old/V3.qor.at").c_str(), 0600), 0);
  std::filesystem::create_symlink("nowhere", path("old/V3.system.at"));
  expectResult(
      run({"check", "old", "--max-size", "1000"}, withLimits), kFileError,
      "old/V3.user.at: error: [NOT-A-FILE] expected a regular file, found a "
      "directory\n"
      "old/V3.qor.at: error: [NOT-A-FILE] expected a regular file, found "
      "something else\n"
      "old/V3.qor.oc: error: [LARGE-FILE] expected at most 1000 bytes, found "
      "1001\n"
      "old/V3.system.at: error: [NOT-A-FILE] expected a regular file, found a "
      "link that leads nowhere\n"
      "4 errors, 0 warnings\n",
      "");
}

TEST_F(CheckTest, TheLastDirectoryIsTheRelease) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n"
        "attributetypes=( 1.3 NAME 'c' DESC 'x' )\n"
        "attributetypes=( 1.4 NAME 'd' DESC 'x' )\n");
  write("old/V3.config.at", "attributetypes=( 1.5 NAME 'e' DESC 'x' )\n");
  write("new/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'y' )\n"
        "attributetypes=( 1.6 NAME 'b' DESC 'x' )\n"
        "attributetypes=( 1.3 NAME 'f' DESC 'x' )\n");
  write("new/V3.config.at", "attributetypes=( 1.4 NAME 'd' DESC 'y' )\n");
  const std::string findings =
      "old/V3.user.at:2:18: error: [NAME-OTHER-OID] expected the OID of the "
      "release, 1.6, found 1.2; the release has the name at new/V3.user.at:2, "
      "attribute type 'b' (1.6); the attribute type cannot be carried\n"
      "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n"
      "                 ^\n"
      "old/V3.user.at:3:18: error: [OID-OTHER-NAME] expected an OID that the "
      "release does not have, found that of new/V3.user.at:3, attribute type "
      "'f' (1.3); the attribute type cannot be carried\n"
      "attributetypes=( 1.3 NAME 'c' DESC 'x' )\n"
      "                 ^\n";
  const CommandResult result = run({"check", "old", "new"});
  EXPECT_EQ(result.status, kFindings);
  EXPECT_EQ(result.out.substr(0, findings.size()), findings);
  write("list", "1.2 1.3 1.4 1.5\n");
  expectResult(run({"check", "old", "new", "--excluded-oids", "list"}), 0,
               "0 errors, 0 warnings\n", "");
  expectResult(run({"check", "new", "new"}), 0, "0 errors, 0 warnings\n", "");
}

TEST_F(CheckTest, ListsOfOids) {
  write("old/V3.user.at", kType);
  write("list", "1.1 2.2 # comment\nfoo 1.1\n1.1 # the end");
  expectResult(
      run({"check", "old", "--excluded-oids", "list"}, withLimits), kFindings,
      "list:1:5: warning: [LIST-UNKNOWN] expected the OID of a definition, "
      "found 2.2, which no definition has\n"
      "1.1 2.2 # comment\n"
      "    ^\n"
      "list:2:1: warning: [LIST-BAD-OID] expected an OID of numbers and dots, "
      "found 'foo'\n"
      "foo 1.1\n"
      "^\n"
      "list:2:5: warning: [LIST-REPEATED] expected each OID once, found 1.1 "
      "again; it stands on line 1 already\n"
      "foo 1.1\n"
      "    ^\n"
      "list:3:1: warning: [LIST-REPEATED] expected each OID once, found 1.1 "
      "again; it stands on line 1 already\n"
      "1.1 # the end\n"
      "^\n"
      "list:3:5: error: [LIST-UNTERMINATED] expected a newline at the end of "
      "the comment, found the end of the file; the library would never come "
      "back\n"
      "1.1 # the end\n"
      "    ^\n"
      "1 error, 4 warnings\n",
      "");
}

// Each of these would take a careless reader very long, or very much memory.
TEST_F(CheckTest, HugeInputsEndSoon) {
  std::string many;
  for (const char *text :
       {"(", "'", "attributetypes=(", "attributetypes {", "'a' ", "( 1.1 NAME ",
        "\"", "$", "{", "1{", "#", "x", "\xff", "\t", "\r", "COLLECTIVE "}) {
    SCOPED_TRACE(text);
    many = "attributetypes=( 1.1 NAME 'a' DESC 'x' ";
    while (many.size() < 200000) {
      many += text;
    }
    write("old/V3.user.at", many);
    const CommandResult result = run({"check", "old"}, withLimits);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.status, kFindings);
    EXPECT_LT(result.out.size(), 100U << 20);
  }
}

// The library would read each of these definitions to the end of the file.
TEST_F(CheckTest, ManyDefinitionsWithoutEndTakeLinearTime) {
  for (const char *definition :
       {"attributetypes=( 1.1 NAME 'a' )\n", "attributetypes=( 1.1 NAME \"a\n",
        "attributetypes=( 1.1 NAME 'a\n", "attributetypes=( 1.1 NAME 'a'\n",
        "QORAttributetypes=( 1.1 DBNAME 'a' )\n",
        "attributetypes=( 1.1 NAME 'a' DESC '\x80' ) "}) {
    SCOPED_TRACE(definition);
    std::string many;
    for (int i = 0; i < 6000; ++i) {
      many += definition;
    }
    write("old/V3.user.at", many);
    const CommandResult result = run({"check", "old"}, withLimits);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.status, kFindings);
  }
}

TEST_F(CheckTest, WhatIsNoSchemaFileIsGivenUp) {
  std::string text = "attributetypes {";
  for (int i = 0; i < 1000; ++i) {
    text += std::string(1000, '(') + '\n';
  }
  write("old/V3.user.at", text);
  const CommandResult result = run({"check", "old"}, withLimits);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.status, kFindings);
  EXPECT_NE(result.out.find("error: [TOO-DAMAGED] expected a schema file, "
                            "found 10000 departures from its form; the rest is "
                            "not checked\n"),
            std::string::npos);
  EXPECT_EQ(count(result.out, "[TOO-DAMAGED]"), 1U);
  EXPECT_LT(count(result.out, ": error: ["), 50000U);
}

TEST_F(CheckTest, TheExamplesAreClean) {
  expectResult(
      runOnExamples({"check", "old-installation", "new-release",
                     "--excluded-oids", "excluded-oids.txt", "--modified-oids",
                     "modified-oids.txt", "--strict"}),
      0, "0 errors, 0 warnings\n", "");
}

TEST_F(CheckTest, ARewritingOfTheExamplesHasNoError) {
  for (const char *directory : {"old-installation", "new-release"}) {
    const std::string source =
        std::string(SCHEMA_EXAMPLES_DIR) + "/" + directory;
    SchemaManager schema(source);
    for (const auto &file : schemacheck::kSchemaFiles) {
      ASSERT_EQ(schema.readFile(file.name), 0U);
    }
    for (const auto &file : schemacheck::kSchemaFiles) {
      if (file.written) {
        ASSERT_EQ(schema.writeFile(path("old").string(), file.name), 0U);
      }
    }
    const CommandResult result = run({"check", "old"}, withLimits);
    EXPECT_EQ(result.status, 0) << result.out;
  }
}

}  // namespace
