#include "Apply.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "MigrateTesting.h"
#include "support/ContractLeaks.h"

namespace fs = std::filesystem;

using schemacheck::Code;
using schemaplan::Verdict;

namespace {

using Lines = std::vector<std::string>;
using Numbers = std::array<std::size_t, kKinds>;

// The rows of `counts` that are not zero.
std::map<std::string, Numbers> rowsOf(const Counts &counts) {
  std::map<std::string, Numbers> rows;
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    if (counts[file] != Numbers{}) {
      rows[kSchemaFiles[file].name] = counts[file];
    }
  }
  return rows;
}

using Rows = std::map<std::string, Numbers>;

const Counts &counts(const ApplyResult &result, Verdict verdict) {
  return result.verdicts[static_cast<std::size_t>(verdict)];
}

class ApplyTest : public MigrateTest {
 protected:
  // What the schema files of the result hold, by name.
  std::map<std::string, std::string> outFiles() const {
    std::map<std::string, std::string> files;
    for (const std::string &name : namesIn(path("out"))) {
      files[name] = read("out/" + name);
    }
    EXPECT_EQ(files.erase(kManifestName), 1U);
    return files;
  }

  // Runs the migration where these errors do not matter.
  ApplyResult applyAccepting(const std::set<Code> &codes) const {
    ApplyOptions changed = options();
    changed.migration.accepted = codes;
    return leaksDefinitions([&changed] { return apply(changed); });
  }

  // The error when the result is to go to `out`, a path relative to the root.
  std::string troubleAt(const std::string &out) const {
    ApplyOptions changed = options();
    changed.outDirectory = root() / out;
    const auto before = snapshotOf(root());
    const std::string trouble =
        relative(troubleOf([&changed] { apply(changed); }));
    EXPECT_EQ(snapshotOf(root()), before);
    return trouble;
  }
};

using Files = std::map<std::string, std::string>;

TEST_F(ApplyTest, WritesTheReleaseWithWhatIsCarried) {
  const FixedDate date;
  write("old/V3.user.at",
        "# the site\n"
        "attributetypes {\n"
        "  ( 1.10 NAME 'added' DESC 'old' )\n"
        "  ( 1.2 NAME 'replaced' DESC 'old' )\n"
        "  ( 1.3 NAME 'Identical' DESC 'both' )\n"
        "  ( 1.4 NAME 'excluded' DESC 'old' )\n"
        "}\n"
        "QORAttributetypes=( 1.10 DBNAME ( 'ADDED' 'ADDED' ) LENGTH 4 )\n"
        "QORAttributetypes=( 1.2 LENGTH 5 SUBSTR )\n");
  write("old/V3.qor.oc",
        "objectclasses=( 2.1 NAME 'added' DESC 'old' SUP top AUXILIARY )\n");
  write("old/V3.config.at", "attributetypes=( 1.5 NAME 'config' DESC 'x' )\n");
  write("new/V3.user.at",
        "attributetypes=( 1.3 NAME 'identical' DESC 'both' )\n"
        "attributetypes=( 1.4 NAME 'excluded' DESC 'new' )\n");
  write("new/V3.modifiedschema",
        "attributetypes=( 1.2 NAME 'replaced' DESC 'new' )\n"
        "QORAttributetypes=( 1.2 LENGTH 4 )\n");
  const std::string config =
      "# kept as it is\r\n\nattributetypes=( 1.5 NAME 'config'\tDESC 'x' )";
  write("new/V3.config.at", config);
  write("excluded", "1.4\n");

  const ApplyResult result = runApply();
  EXPECT_EQ(result.warnings, Lines());
  EXPECT_EQ(
      outFiles(),
      (Files{
          {"V3.config.at", config},
          {"V3.modifiedschema",
           std::string(kHeaderLine) +
               "attributetypes=( 1.2 NAME ( 'replaced'  )  DESC 'old' USAGE "
               "userApplications  )\n"
               "QORAttributetypes=( 1.2 LENGTH 5 SUBSTR )\n"},
          {"V3.qor.at", ""},
          {"V3.qor.oc", std::string(kHeaderLine) +
                            "objectclasses=( 2.1 NAME 'added'  DESC 'old' SUP "
                            "( top ) AUXILIARY )\n"},
          {"V3.system.at", ""},
          {"V3.system.oc", ""},
          {"V3.user.at",
           std::string(kHeaderLine) +
               "attributetypes=( 1.10 NAME ( 'added'  )  DESC 'old' USAGE "
               "userApplications  )\n"
               "QORAttributetypes=( 1.10 DBNAME ( 'ADDED' 'ADDED'  ) LENGTH 4 "
               ")\n"
               "attributetypes=( 1.3 NAME ( 'identical'  )  DESC 'both' USAGE "
               "userApplications  )\n"
               "attributetypes=( 1.4 NAME ( 'excluded'  )  DESC 'new' USAGE "
               "userApplications  )\n"},
          {"V3.user.oc", ""},
      }));
  EXPECT_EQ(namesIn(root()), (Lines{"excluded", "new", "old", "out"}));
}

TEST_F(ApplyTest, CountsWhatHappened) {
  write("old/V3.user.at",
        "attributetypes {\n"
        "  ( 1.1 NAME 'a' DESC 'old' )\n"
        "  ( 1.2 NAME 'b' DESC 'old' )\n"
        "  ( 1.3 NAME 'c' DESC 'both' )\n"
        "  ( 1.4 NAME 'd' DESC 'old' )\n"
        "  ( 1.4 NAME 'A' DESC 'old' )\n"
        "  ( 1.1 NAME 'A' DESC 'old' )\n"
        "}\n"
        "QORAttributetypes { ( 1.1 ) ( 1.2 LENGTH 5 ) ( 1.4 ) }\n");
  write("old/V3.system.oc", "objectclasses=( 2.1 NAME 'k' STRUCTURAL )\n");
  write("new/V3.user.at",
        "attributetypes=( 1.3 NAME 'c' DESC 'both' )\n"
        "attributetypes=( 1.2 NAME 'b' DESC 'new' )\n");
  write("new/V3.config.oc", "objectclasses=( 2.2 NAME 'l' ABSTRACT )\n");
  write("excluded", "1.4\n");
  const ApplyResult result = leaksDefinitions([this] { return runApply(); });
  EXPECT_EQ(rowsOf(result.oldRead),
            (Rows{{"V3.user.at", {6, 0, 3}}, {"V3.system.oc", {0, 1, 0}}}));
  EXPECT_EQ(rowsOf(counts(result, Verdict::kIdentical)),
            (Rows{{"V3.user.at", {1, 0, 0}}}));
  EXPECT_EQ(rowsOf(counts(result, Verdict::kExcluded)),
            (Rows{{"V3.user.at", {2, 0, 1}}}));
  EXPECT_EQ(rowsOf(counts(result, Verdict::kAdded)),
            (Rows{{"V3.user.at", {1, 0, 2}}, {"V3.system.oc", {0, 1, 0}}}));
  EXPECT_EQ(rowsOf(counts(result, Verdict::kReplaces)),
            (Rows{{"V3.user.at", {1, 0, 0}}}));
  EXPECT_EQ(rowsOf(counts(result, Verdict::kShadowed)),
            (Rows{{"V3.user.at", {1, 0, 0}}}));
  EXPECT_EQ(rowsOf(result.newRead),
            (Rows{{"V3.user.at", {2, 0, 0}}, {"V3.config.oc", {0, 1, 0}}}));
  EXPECT_EQ(rowsOf(result.written), (Rows{{"V3.user.at", {3, 0, 2}},
                                          {"V3.system.oc", {0, 1, 0}},
                                          {"V3.config.oc", {0, 1, 0}}}));
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    const std::string name = kSchemaFiles[file].name;
    EXPECT_EQ(result.inOld[file],
              name == "V3.user.at" || name == "V3.system.oc");
    EXPECT_EQ(result.inNew[file],
              name == "V3.user.at" || name == "V3.config.oc");
  }
}

TEST_F(ApplyTest, OfEmptyFilesWritesEmptyFiles) {
  write("old/V3.user.at", "");
  write("new/V3.config.oc", "");
  const ApplyResult result = runApply();
  EXPECT_EQ(rowsOf(result.written), Rows());
  EXPECT_EQ(outFiles(), (Files{{"V3.config.oc", ""},
                               {"V3.modifiedschema", ""},
                               {"V3.qor.at", ""},
                               {"V3.qor.oc", ""},
                               {"V3.system.at", ""},
                               {"V3.system.oc", ""},
                               {"V3.user.at", ""},
                               {"V3.user.oc", ""}}));
}

TEST_F(ApplyTest, OnlyReadsItsInputs) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("old/other", "text");
  write("excluded", "1.2\n");
  writeSmallRelease();
  auto before = snapshotOf(root());
  runApply();
  auto after = snapshotOf(root());
  for (const std::string &name : namesIn(path("out"))) {
    EXPECT_EQ(after.erase("out/" + name), 1U);
  }
  after.erase("out");
  EXPECT_EQ(after, before);
}

TEST_F(ApplyTest, WarnsOfDefinitionsThatRepeat) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.1 NAME ( 'A' 'b' ) DESC 'x' )\n"
        "QORAttributetypes=( 1.1 LENGTH 4 )\n"
        "QORAttributetypes=( 1.1 LENGTH 5 )\n");
  write("old/V3.user.oc",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "objectclasses=( 2.1 NAME 'a' ABSTRACT )\n"
        "objectclasses=( 2.2 NAME 'a' ABSTRACT )\n"
        "objectclasses { ( NAME 'k' ABSTRACT ) ( NAME 'k' ABSTRACT ) }\n");
  write("new/V3.system.oc",
        "objectclasses=( 2.3 NAME 'top' ABSTRACT )\n"
        "objectclasses=( 2.3 NAME 'Top' STRUCTURAL )\n"
        "QORAttributetypes { ( LENGTH 4 ) }\n"
        "objectclasses=( 2.4 NAME 'TOP' STRUCTURAL )\n");
  const ApplyResult result = applyAccepting({Code::kShadowed, Code::kNoOid});
  EXPECT_EQ(
      relative(result.warnings),
      (Lines{
          "old/V3.user.at:2: warning: attribute type 'A' (1.1) is ignored: "
          "old/V3.user.at:1 defines the same first name",
          "old/V3.user.at:4: warning: storage definition (1.1) is ignored: "
          "old/V3.user.at:3 defines the same OID",
          "old/V3.user.oc:1: warning: attribute type 'a' (1.1) is ignored: "
          "old/V3.user.at:1 defines the same first name",
          "old/V3.user.oc:3: warning: object class 'a' (2.2) is found by "
          "its OID only: old/V3.user.oc:2 defines the same first name; it is "
          "not carried",
          "old/V3.user.oc:4: warning: object class 'k' () is ignored: it "
          "has no OID",
          "old/V3.user.oc:4: warning: object class 'k' () is ignored: it "
          "has no OID",
          "new/V3.system.oc:2: warning: object class 'Top' (2.3) is "
          "ignored: new/V3.system.oc:1 defines the same first name",
          "new/V3.system.oc:3: warning: storage definition () is ignored: "
          "it has no OID",
          "new/V3.system.oc:4: warning: object class 'TOP' (2.4) is found "
          "by its OID only: new/V3.system.oc:1 defines the same first "
          "name"}));
  EXPECT_NE(read("out/V3.system.oc").find("'TOP'"), std::string::npos);
  EXPECT_EQ(read("out/V3.user.oc").find("2.2"), std::string::npos);
}

TEST_F(ApplyTest, WarnsOfWhatTheReleaseLosesByItself) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.1 NAME 'A' DESC 'x' )\n");
  write("new/V3.user.at",
        "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n"
        "attributetypes=( 1.2 NAME 'c' DESC 'x' )\n"
        "QORAttributetypes=( 1.3 LENGTH 4 )\n");
  const ApplyResult result = applyAccepting(
      {Code::kShadowed, Code::kOidTwice, Code::kStorageWithoutType});
  EXPECT_EQ(
      relative(result.warnings),
      (Lines{"old/V3.user.at:2: warning: attribute type 'A' (1.1) is ignored: "
             "old/V3.user.at:1 defines the same first name",
             "new/V3.user.at:2: warning: attribute type 'c' (1.2) is not in "
             "the result as it stands here",
             "new/V3.user.at:3: warning: storage definition (1.3) is not in "
             "the result as it stands here"}));
  EXPECT_EQ(rowsOf(result.written), (Rows{{"V3.user.at", {2, 0, 0}}}));
}

TEST_F(ApplyTest, RefusesAnOutputDirectoryInAnInput) {
  write("old/V3.user.at", "");
  writeSmallRelease();
  fs::create_directory_symlink("old", path("link"));
  const std::string inOld =
      ": error: expected a directory outside old, found one inside";
  const std::string inNew =
      ": error: expected a directory outside new, found one inside";
  for (const char *out :
       {"old", "old/", "old/.", "old/out", "old/out/", "old/a/b", "new/../old",
        "missing/../old/out", "link", "link/", "link/out", "./old/out"}) {
    EXPECT_EQ(troubleAt(out), relative((root() / out).string()) + inOld);
  }
  for (const char *out : {"new", "new/out/"}) {
    EXPECT_EQ(troubleAt(out), out + inNew);
  }
}

TEST_F(ApplyTest, RefusesAnOutputDirectoryInAnInputThatIsALink) {
  fs::rename(path("old"), path("real"));
  fs::create_directory_symlink("real", path("old"));
  write("old/V3.user.at", "");
  writeSmallRelease();
  const std::string inOld =
      ": error: expected a directory outside old, found one inside";
  EXPECT_EQ(troubleAt("old/out"), "old/out" + inOld);
  EXPECT_EQ(troubleAt("real/out"), "real/out" + inOld);
}

TEST_F(ApplyTest, TakesAnOutputDirectoryWhoseNameBeginsLikeThatOfAnInput) {
  write("old/V3.user.at", "");
  writeSmallRelease();
  for (const char *name : {"old-out", "ol", "new2", "out"}) {
    ApplyOptions changed = options();
    changed.outDirectory = path(name);
    apply(changed);
    EXPECT_EQ(namesIn(path(name)).size(), 8U) << name;
  }
}

TEST_F(ApplyTest, TakesOneDirectoryForBothInputs) {
  const FixedDate date;
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  ApplyOptions changed = options();
  changed.migration.newDirectory = path("old");
  const ApplyResult result = apply(changed);
  EXPECT_EQ(rowsOf(counts(result, Verdict::kIdentical)),
            (Rows{{"V3.user.at", {1, 0, 0}}}));
  EXPECT_EQ(read("out/V3.user.at"),
            std::string(kHeaderLine) +
                "attributetypes=( 1.1 NAME ( 'a'  )  DESC 'x' USAGE "
                "userApplications  )\n");
}

TEST_F(ApplyTest, ChangesNothingWhenItFails) {
  const std::string advice =
      "nothing was written; mend the files, or leave out what is not to be "
      "carried: with --excluded-oids, --decisions, --leave-out, or --accept "
      "for "
      "errors that are acceptable";
  const std::string none =
      ": error: [NO-FILES] expected schema files (V3.user.at and so on), found "
      "none";
  EXPECT_EQ(applyTrouble(), "old" + none + "\nnew" + none);
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  EXPECT_EQ(applyTrouble(), "new" + none);
  write("new/V3.qor.at", "attributetypes\n");
  EXPECT_EQ(applyTrouble(),
            "new/V3.qor.at:1:15: error: [SECTION-OPENER] expected '=' or '{' "
            "behind attributetypes, found the end of the file; the library "
            "gives the file up here\n"
            "attributetypes\n"
            "              ^\n" +
                advice);
  fs::remove(path("new/V3.qor.at"));
  writeSmallRelease();
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' COLLECTIVE )\n");
  EXPECT_EQ(applyTrouble(),
            "old/V3.user.at:1:31: error: [COLLECTIVE] expected no COLLECTIVE "
            "in an attribute type, found it; the library would never come "
            "back\n"
            "attributetypes=( 1.1 NAME 'a' COLLECTIVE )\n"
            "                              ^\n" +
                advice);
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("excluded", "1.1");
  EXPECT_EQ(applyTrouble(),
            "excluded:1:1: error: [LIST-UNTERMINATED] expected a newline "
            "behind '1.1', found the end of the file; the library ignores the "
            "word\n"
            "1.1\n"
            "^");
  fs::remove(path("excluded"));
  write("old/V3.config.at", "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n");
  EXPECT_EQ(applyTrouble(),
            "old/V3.config.at:1:27: error: [NOT-MERGEABLE] expected attribute "
            "type 'b' (1.2) in the release, found none; nothing from "
            "V3.config.at can be added; the attribute type cannot be carried\n"
            "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n"
            "                          ^\n" +
                advice);
  fs::remove(path("old/V3.config.at"));
  write("new/V3.user.oc",
        "objectclasses {\n( 2.1 NAME 'k' ABSTRACT )\n( 2.2 ABSTRACT )\n}\n");
  EXPECT_EQ(applyTrouble(),
            "new/V3.user.oc:3:1: error: [NAMELESS-CLASS] expected a name of "
            "the object class, found none; the library writes it in a form "
            "that cannot be read\n"
            "( 2.2 ABSTRACT )\n"
            "^\n" +
                advice);
  fs::remove(path("new/V3.user.oc"));
  fs::create_directory(path("out"));
  write("out/file", "");
  EXPECT_EQ(applyTrouble(),
            "out: error: expected nothing or an empty directory there, found "
            "something; the result goes to a new directory");
}

}  // namespace
