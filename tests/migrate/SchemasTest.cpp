#include "Schemas.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "MigrateTesting.h"
#include "support/ContractLeaks.h"

namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;

class SchemasTest : public MigrateTest {
 protected:
  // Both directories, read.
  std::unique_ptr<Schemas> schemas() const {
    return std::make_unique<Schemas>(path("old"), path("new"));
  }

  // The OIDs of 1.1 to 1.6 that the file "excluded" excludes.
  Texts excluded() const {
    std::string definitions;
    for (const char *oid : {"1.1", "1.2", "1.3", "1.4", "1.5", "1.6"}) {
      definitions += std::string("QORAttributetypes=( ") + oid + " )\n";
    }
    write("old/V3.user.at", definitions);
    writeSmallRelease();
    const auto both = schemas();
    both->readExcludedOids(path("excluded"));
    both->oldSchema()->compSchemas(both->newSchema());
    Texts oids;
    for (const Entry &entry : both->oldFiles().entries()) {
      if (both->oldSchema()->storageDefinitions().count(entry.oid) == 0) {
        oids.push_back(entry.oid);
      }
    }
    return oids;
  }

  std::string excludedTrouble() const {
    writeSmallRelease();
    write("old/V3.user.at", "");
    const auto both = schemas();
    return relative(
        troubleOf([this, &both] { both->readExcludedOids(path("excluded")); }));
  }
};

TEST_F(SchemasTest, SaysSoWhenAFileChangesBetweenItsTwoReadings) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("old/V3.system.at", "");
  const Inventory files(path("old"));
  SchemaManager schema(path("old").string());
  const auto readAgain = [&files, &schema] {
    return leaksAnalyser([&files, &schema] {
      return leaksDefinitions([&files, &schema] {
        readFiles(files, &schema);
        return 0;
      });
    });
  };
  write("old/V3.user.at", "attributetypes=( 1.1 DESC 'x'\n");
  EXPECT_EQ(relative(troubleOf(readAgain)),
            "old/V3.user.at: error: cannot read the file; was it changed just "
            "now?");
  write("old/V3.user.at", "");
  fs::remove(path("old/V3.system.at"));
  EXPECT_EQ(relative(troubleOf(readAgain)),
            "old/V3.system.at: error: cannot read the file; was it changed "
            "just now?");
}

TEST_F(SchemasTest, TheExcludedOidsAreWordsAndNothingBehindAHashSign) {
  write("excluded", "");
  EXPECT_EQ(excluded(), Texts());
  write("excluded", "\n# 1.1\n");
  EXPECT_EQ(excluded(), Texts());
  write("excluded", "1.1\n1.2\t 1.3\r\n\n1.4 # 1.5\n1.6#x 1.5\n1.1\n");
  EXPECT_EQ(excluded(), (Texts{"1.1", "1.2", "1.3", "1.4"}));
  write("excluded", "1.6 11.1 1.1.1 1 '1.2'\n");
  EXPECT_EQ(excluded(), Texts{"1.6"});
}

TEST_F(SchemasTest, TheListOfExcludedOidsMustEndInANewline) {
  constexpr char kTrouble[] =
      "error: expected a newline at the end of the file, found none; the last "
      "word would be ignored";
  write("excluded", "1.1");
  EXPECT_EQ(excludedTrouble(), std::string("excluded:1: ") + kTrouble);
  write("excluded", "1.1\n\n1.2 # a comment");
  EXPECT_EQ(excludedTrouble(), std::string("excluded:3: ") + kTrouble);
  write("excluded", "#");
  EXPECT_EQ(excludedTrouble(), std::string("excluded:1: ") + kTrouble);
  write("excluded", "1.1\n ");
  EXPECT_EQ(excludedTrouble(), std::string("excluded:2: ") + kTrouble);
}

TEST_F(SchemasTest, TheListOfExcludedOidsMustBeAReadableFile) {
  EXPECT_EQ(excludedTrouble(), "excluded: error: No such file or directory");
  fs::create_symlink("/dev/null", path("excluded"));
  EXPECT_EQ(excludedTrouble(),
            "excluded: error: expected a regular file, found something else");
  fs::remove(path("excluded"));
  fs::create_directory(path("excluded"));
  EXPECT_EQ(excludedTrouble(),
            "excluded: error: expected a regular file, found something else");
}

TEST_F(SchemasTest, BothDirectoriesMustBeReadable) {
  EXPECT_EQ(relative(troubleOf([this] { schemas(); })),
            "old: error: expected schema files (V3.user.at and so on), found "
            "none");
  write("old/V3.user.at", "");
  EXPECT_EQ(relative(troubleOf([this] { schemas(); })),
            "new: error: expected schema files (V3.user.at and so on), found "
            "none");
}

}  // namespace
