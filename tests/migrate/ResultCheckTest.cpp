#include "ResultCheck.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "Carrying.h"
#include "MigrateTesting.h"
#include "support/ContractLeaks.h"

namespace fs = std::filesystem;

namespace {

using Lines = std::vector<std::string>;

// What is lost, errors before warnings.
Lines linesOf(const Losses &losses) {
  Lines all = losses.errors;
  all.insert(all.end(), losses.warnings.begin(), losses.warnings.end());
  return all;
}

Lines lost(const std::string &definition) {
  return {definition + " is not in the result as it stands here"};
}

// A change of a written definition.
struct FieldCase {
  const char *from;
  const char *to;
  // What there is then instead, behind "out/"; null if it has the same key.
  const char *instead = nullptr;
};

class ResultCheckTest : public MigrateTest {
 protected:
  // Compares and merges the two directories, and writes the result to "out".
  void migrate() {
    m_migration = std::make_unique<Migration>(options().migration);
    Carrying carrying(*m_migration);
    carrying.compare();
    carrying.merge();
    carrying.withdraw();
    fs::create_directory(path("out"));
    fs::create_directory(path("scratch"));
    carrying.write(path("out"), path("scratch"));
  }

  Losses losses() const {
    return findLosses(schemacheck::SchemaDirectory(path("out")), *m_migration);
  }

  // migrate() and losses(), for definitions that repeat.
  Losses lossesOfRepeats() {
    return leaksDefinitions([this] {
      migrate();
      return losses();
    });
  }

  // What is lost when `from` is replaced by `to` in a file of the result.
  Lines lossesAfter(const std::string &file, const std::string &from,
                    const std::string &to) {
    const std::string text = read("out/" + file);
    const std::string changed = replaceAll(text, from, to);
    EXPECT_NE(changed, text) << from;
    write("out/" + file, changed);
    const Losses found = losses();
    EXPECT_EQ(found.warnings, Lines());
    write("out/" + file, text);
    return relative(found.errors);
  }

  // Expects that each change leaves `definition` out of the result.
  void expectLost(const std::string &file, const std::string &definition,
                  const std::vector<FieldCase> &cases) {
    for (const FieldCase &field : cases) {
      Lines expected = lost(definition);
      if (field.instead != nullptr) {
        expected.push_back(std::string("out/") + field.instead +
                           " is in the result and was not planned");
      }
      EXPECT_EQ(lossesAfter(file, field.from, field.to), expected)
          << field.from << " to " << field.to;
    }
  }

 private:
  std::unique_ptr<Migration> m_migration;
};

TEST_F(ResultCheckTest, FindsNothingLostInAResultAsWritten) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'old' )\n"
        "QORAttributetypes=( 1.1 LENGTH 4 )\n"
        "attributetypes=( 1.2 NAME 'b' DESC 'old' )\n");
  write("old/V3.user.oc", "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n");
  write("new/V3.user.at", "attributetypes=( 1.2 NAME 'b' DESC 'new' )\n");
  write("new/V3.config.at",
        "attributetypes=( 1.3 NAME 'c' DESC 'new' )\n"
        "QORAttributetypes=( 1.3 LENGTH 4 )\n");
  migrate();
  EXPECT_EQ(linesOf(losses()), Lines());
}

TEST_F(ResultCheckTest, FindsNothingLostInAnEmptyResult) {
  write("old/V3.user.at", "");
  write("new/V3.user.at", "");
  migrate();
  EXPECT_EQ(linesOf(losses()), Lines());
}

TEST_F(ResultCheckTest, ComparesEachFieldOfAnAttributeType) {
  write("old/V3.user.at",
        "\nattributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x y' OBSOLETE SUP 1.2\n"
        "EQUALITY 1.3 ORDERING 1.4 SUBSTR 1.5 SYNTAX 1.6{7} SINGLE-VALUE\n"
        "NO-USER-MODIFICATION USAGE dSAOperation )\n");
  writeSmallRelease();
  migrate();
  expectLost(
      "V3.user.at", "old/V3.user.at:2: error: attribute type 'a' (1.1)",
      {
          {"1.1", "1.9"},
          {"'b'", "'c'"},
          {"'a'", "'c'", "V3.user.at:2: error: attribute type 'c' (1.1)"},
          {"x y", "x  y"},
          {"OBSOLETE", ""},
          {"SUP 1.2", ""},
          {"SUP 1.2", "SUP 1.9"},
          {"EQUALITY 1.3", ""},
          {"ORDERING 1.4", "ORDERING 1.3"},
          {"SUBSTR 1.5", "SUBSTR 1.3"},
          {"{7}", ""},
          {"SINGLE-VALUE", ""},
          {"NO-USER-MODIFICATION", ""},
          {"USAGE dSAOperation", ""},
      });
}

TEST_F(ResultCheckTest, ComparesEachFieldOfAnObjectClass) {
  write("old/V3.user.oc",
        "objectclasses=( 2.1 NAME ( 'k' 'l' ) DESC 'x' OBSOLETE SUP ( m $ n )\n"
        "AUXILIARY MUST ( a $ b ) MAY ( c $ d ) )\n");
  writeSmallRelease();
  migrate();
  expectLost("V3.user.oc", "old/V3.user.oc:1: error: object class 'k' (2.1)",
             {
                 {"2.1", "2.9"},
                 {"'l'", ""},
                 {"'k'", "'n'", "V3.user.oc:2: error: object class 'n' (2.1)"},
                 {"'x'", "'X'"},
                 {"OBSOLETE", ""},
                 {"m $ n", "m"},
                 {"AUXILIARY", "STRUCTURAL"},
                 {"a $ b", "a $ a"},
                 {"c $ d", "c $ d $ e"},
             });
}

TEST_F(ResultCheckTest, ComparesEachFieldOfAStorageDefinition) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "QORAttributetypes=( 1.1 DBNAME ( 'A' 'B' ) ACCESS-CLASS normal\n"
        "LENGTH 4 EQUALITY ORDERING SUBSTR APPROX )\n");
  writeSmallRelease();
  migrate();
  expectLost("V3.user.at", "old/V3.user.at:2: error: storage definition (1.1)",
             {
                 {"s=( 1.1 DBNAME", "s=( 1.2 DBNAME",
                  "V3.user.at:3: error: storage definition (1.2)"},
                 {"'B'", "'C'"},
                 {"normal", "critical"},
                 {"LENGTH 4", ""},
                 {"EQUALITY", ""},
                 {"ORDERING", ""},
                 {"SUBSTR", ""},
                 {"APPROX", ""},
             });
}

// The place is that of the definition that the result should hold.
TEST_F(ResultCheckTest, PointsToTheDefinitionThatIsMissing) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'added' DESC 'old' )\n"
        "attributetypes=( 1.2 NAME 'replaced' DESC 'old' )\n"
        "attributetypes=( 1.3 NAME 'identical' DESC 'new' )\n");
  write("new/V3.user.at",
        "attributetypes=( 1.4 NAME 'untouched' DESC 'new' )\n"
        "attributetypes=( 1.2 NAME 'replaced' DESC 'new' )\n"
        "attributetypes=( 1.3 NAME 'identical' DESC 'new' )\n");
  write("new/V3.config.oc", "objectclasses=( 2.1 NAME 'copied' ABSTRACT )\n");
  migrate();
  write("out/V3.user.at", "");
  write("out/V3.config.oc", "");
  const Losses found = losses();
  const std::string end = " is not in the result as it stands here";
  EXPECT_EQ(
      relative(found.errors),
      (Lines{
          "new/V3.user.at:1: error: attribute type 'untouched' (1.4)" + end,
          "new/V3.user.at:3: error: attribute type 'identical' (1.3)" + end,
          "new/V3.config.oc:1: error: object class 'copied' (2.1)" + end,
          "old/V3.user.at:1: error: attribute type 'added' (1.1)" + end,
          "old/V3.user.at:2: error: attribute type 'replaced' (1.2)" + end}));
  EXPECT_EQ(found.warnings, Lines());
}

// Its name is taken, but the files have it.
TEST_F(ResultCheckTest, FindsWhatOnlyItsOidLeadsTo) {
  write("old/V3.user.at", "");
  write("new/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.2 NAME 'a' DESC 'y' )\n");
  write("new/V3.user.oc",
        "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"
        "objectclasses=( 2.2 NAME 'k' AUXILIARY )\n");
  EXPECT_EQ(linesOf(lossesOfRepeats()), Lines());
  const struct {
    const char *file;
    const char *from;
    const char *to;
    const char *lost;
  } kCases[] = {
      {"V3.user.at", "( 1.2", "( 1.3",
       "new/V3.user.at:2: error: attribute type 'a' (1.2)"},
      {"V3.user.at", "'y'", "'z'",
       "new/V3.user.at:2: error: attribute type 'a' (1.2)"},
      {"V3.user.oc", "( 2.2", "( 2.3",
       "new/V3.user.oc:2: error: object class 'k' (2.2)"},
      {"V3.user.oc", "AUXILIARY", "STRUCTURAL",
       "new/V3.user.oc:2: error: object class 'k' (2.2)"},
  };
  for (const auto &one : kCases) {
    const Lines found = leaksDefinitions(
        [&] { return lossesAfter(one.file, one.from, one.to); });
    EXPECT_EQ(found, lost(one.lost)) << one.from << " to " << one.to;
  }
}

// A release's definition that nothing repeats has no excuse, either.
TEST_F(ResultCheckTest, FindsWhatTheReleaseHasInAnotherForm) {
  write("old/V3.user.at", "");
  write("new/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "QORAttributetypes=( 1.1 LENGTH 4 )\n");
  write("new/V3.user.oc", "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n");
  migrate();
  EXPECT_EQ(lossesAfter("V3.user.at", "'x'", "'y'"),
            lost("new/V3.user.at:1: error: attribute type 'a' (1.1)"));
  EXPECT_EQ(lossesAfter("V3.user.at", "LENGTH 4", "LENGTH 5"),
            lost("new/V3.user.at:2: error: storage definition (1.1)"));
  EXPECT_EQ(lossesAfter("V3.user.oc", "ABSTRACT", "AUXILIARY"),
            lost("new/V3.user.oc:1: error: object class 'k' (2.1)"));
}

// Nothing is compared with what the library cannot read.
TEST_F(ResultCheckTest, FindsWhatDoesNotReadBack) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n");
  writeSmallRelease();
  migrate();
  const std::string end =
      ", found that the library does not read it as it stands\n";
  EXPECT_EQ(
      lossesAfter("V3.user.at", "DESC 'x' USAGE userApplications", ""),
      (Lines{"out/V3.user.at:2:16: error: [UNREADABLE] expected attribute type "
             "'a' (1.1)" +
                 end +
                 "attributetypes=( 1.1 NAME ( 'a'  )    )\n"
                 "               ^",
             "out/V3.user.at:3:16: error: [UNREADABLE] expected attribute type "
             "'b' (1.2)" +
                 end +
                 "attributetypes=( 1.2 NAME ( 'b'  )    )\n"
                 "               ^"}));
  EXPECT_EQ(lossesAfter("V3.system.oc", "=( 2.5.6.0 NAME 'top' ABSTRACT )", ""),
            Lines{"out/V3.system.oc: error: cannot read the file back"});
}

// That a definition repeats is no excuse for its loss from all files.
TEST_F(ResultCheckTest, FindsWhatRepeatsAndIsLost) {
  const std::string type = "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n";
  write("old/V3.user.at", "");
  write("new/V3.system.at", type);
  write("new/V3.modifiedschema", type);
  EXPECT_EQ(linesOf(lossesOfRepeats()), Lines());
  write("out/V3.system.at", "");
  write("out/V3.modifiedschema", "");
  EXPECT_EQ(relative(linesOf(losses())),
            lost("new/V3.system.at:1: error: attribute type 'a' (1.1)"));
}

// A definition of the release that a rewriting of its files loses in any case.
struct ReleaseCase {
  const char *name;
  const char *release;  // V3.user.at
  const char *warning;  // behind "new/V3.user.at:"; null if nothing is lost
};

void PrintTo(const ReleaseCase &releaseCase, std::ostream *out) {
  *out << releaseCase.name;
}

class ResultCheckReleaseTest : public ResultCheckTest,
                               public testing::WithParamInterface<ReleaseCase> {
};

TEST_P(ResultCheckReleaseTest, WarnsOfWhatTheReleaseLosesByItself) {
  write("old/V3.user.at", "");
  write("new/V3.user.at", GetParam().release);
  const Losses found = lossesOfRepeats();
  EXPECT_EQ(found.errors, Lines());
  EXPECT_EQ(relative(found.warnings),
            GetParam().warning == nullptr
                ? Lines()
                : lost(std::string("new/V3.user.at:") + GetParam().warning));
}

const ReleaseCase kReleaseCases[] = {
    {"StorageWithoutType", "QORAttributetypes=( 1.1 LENGTH 4 )\n",
     "1: warning: storage definition (1.1)"},
    {"StorageOfAClass",
     "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"
     "QORAttributetypes=( 2.1 LENGTH 4 )\n",
     "2: warning: storage definition (2.1)"},
    {"SecondTypeWithOneOid",
     "attributetypes=( 1.1 NAME 'b' DESC 'x' )\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n",
     "2: warning: attribute type 'a' (1.1)"},
    {"SecondClassWithOneOid",
     "objectclasses=( 2.1 NAME 'l' ABSTRACT )\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n",
     "2: warning: object class 'k' (2.1)"},
    {"TypeWithTheOidOfAClass",
     "attributetypes=( 2.1 NAME 'a' DESC 'x' )\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n",
     "1: warning: attribute type 'a' (2.1)"},
    {"FirstOfTwoWithOneNameThatSwapPlaces",
     "attributetypes=( 1.2 NAME 'a' DESC 'x' )\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'y' )\n",
     "1: warning: attribute type 'a' (1.2)"},
    {"RepeatedNames",
     "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
     "attributetypes=( 1.2 NAME 'a' DESC 'y' )\n"
     "objectclasses=( 2.1 NAME 'a' ABSTRACT )\n",
     nullptr},
    {"TypeWithStorage",
     "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
     "QORAttributetypes=( 1.1 LENGTH 4 )\n",
     nullptr},
};

std::string caseName(const testing::TestParamInfo<ReleaseCase> &info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Release, ResultCheckReleaseTest,
                         testing::ValuesIn(kReleaseCases), caseName);

TEST_F(ResultCheckTest, AStorageDefinitionIsLostWithAClassThatHidesItsType) {
  write("old/V3.user.at", "");
  write("new/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "QORAttributetypes=( 1.1 LENGTH 4 )\n"
        "objectclasses=( 1.1 NAME 'k' ABSTRACT )\n");
  migrate();
  const std::string end = " is not in the result as it stands here";
  EXPECT_EQ(
      relative(linesOf(losses())),
      (Lines{"new/V3.user.at:1: warning: attribute type 'a' (1.1)" + end,
             "new/V3.user.at:2: warning: storage definition (1.1)" + end}));
}

}  // namespace
