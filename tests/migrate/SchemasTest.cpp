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

  // Each entry of the old installation, and what became of it.
  Texts fates() const {
    static constexpr const char *kNames[kFates] = {
        "identical", "excluded", "added", "replaced", "repeated"};
    const auto both = schemas();
    if (fs::exists(path("excluded"))) {
      both->readExcludedOids(path("excluded"));
    }
    both->compare();
    Texts texts;
    for (std::size_t i = 0; i < both->oldFiles().entries().size(); ++i) {
      const Entry &entry = both->oldFiles().entries()[i];
      const Fate fate = both->fates().at(i);
      texts.push_back(describe(entry) + ": " +
                      kNames[static_cast<std::size_t>(fate)]);
      EXPECT_EQ(both->isCarried(entry),
                fate == Fate::kAdded || fate == Fate::kReplaced)
          << texts.back();
    }
    return texts;
  }

  // The OIDs of 1.1 to 1.6 that the file "excluded" excludes.
  Texts excluded() const {
    std::string definitions;
    for (const char *oid : {"1.1", "1.2", "1.3", "1.4", "1.5", "1.6"}) {
      definitions += std::string("QORAttributetypes=( ") + oid + " )\n";
    }
    write("old/V3.user.at", definitions);
    writeSmallRelease();
    Texts oids;
    for (const std::string &fate : fates()) {
      if (fate.find("): excluded") != std::string::npos) {
        oids.push_back(fate.substr(fate.find('(') + 1, 3));
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

TEST_F(SchemasTest, EachEntryHasOneFate) {
  write("excluded", "1.4 1.5 1.6\n2.4 2.5 2.6\n");
  write("old/V3.user.at",
        "attributetypes {\n"
        "  ( 1.1 NAME 'a' DESC 'x' )\n"
        "  ( 1.2 NAME 'b' DESC 'y' )\n"
        "  ( 1.3 NAME 'c' DESC 'x' )\n"
        "  ( 1.4 NAME 'd' DESC 'x' )\n"
        "  ( 1.5 NAME 'e' DESC 'y' )\n"
        "  ( 1.6 NAME 'f' DESC 'x' )\n"
        "  ( 1.4 NAME 'A' DESC 'x' )\n"
        "  ( NAME 'g' DESC 'x' )\n"
        "}\n");
  write("old/V3.qor.oc",
        "objectclasses {\n"
        "  ( 2.1 NAME 'a' STRUCTURAL )\n"
        "  ( 2.2 NAME 'b' AUXILIARY )\n"
        "  ( 2.3 NAME 'c' STRUCTURAL )\n"
        "  ( 2.4 NAME 'd' STRUCTURAL )\n"
        "  ( 2.5 NAME 'e' AUXILIARY )\n"
        "  ( 2.6 NAME 'f' STRUCTURAL )\n"
        "  ( 2.4 NAME 'A' STRUCTURAL )\n"
        "  ( NAME 'g' STRUCTURAL )\n"
        "}\n");
  write("old/V3.system.at",
        "QORAttributetypes {\n"
        "  ( 1.1 LENGTH 4 ) ( 1.2 LENGTH 5 ) ( 1.3 LENGTH 4 )\n"
        "  ( 1.4 LENGTH 4 ) ( 1.5 LENGTH 5 ) ( 1.6 LENGTH 4 )\n"
        "  ( 1.1 LENGTH 4 ) ( LENGTH 4 )\n"
        "}\n");
  write("new/V3.user.at",
        "attributetypes {\n"
        "  ( 1.1 NAME 'A' DESC 'x' ) ( 1.2 NAME 'b' DESC 'x' )\n"
        "  ( 1.5 NAME 'e' DESC 'x' ) ( 1.6 NAME 'f' DESC 'x' )\n"
        "}\n"
        "objectclasses {\n"
        "  ( 2.1 NAME 'a' STRUCTURAL ) ( 2.2 NAME 'b' STRUCTURAL )\n"
        "  ( 2.5 NAME 'e' STRUCTURAL ) ( 2.6 NAME 'f' STRUCTURAL )\n"
        "}\n"
        "QORAttributetypes {\n"
        "  ( 1.1 LENGTH 4 ) ( 1.2 LENGTH 4 ) ( 1.5 LENGTH 4 )\n"
        "  ( 1.6 LENGTH 4 )\n"
        "}\n");
  const Texts found = leaksDefinitions([this] { return fates(); });
  EXPECT_EQ(found, (Texts{"attribute type 'a' (1.1): identical",
                          "attribute type 'b' (1.2): replaced",
                          "attribute type 'c' (1.3): added",
                          "attribute type 'd' (1.4): excluded",
                          "attribute type 'e' (1.5): excluded",
                          "attribute type 'f' (1.6): excluded",
                          "attribute type 'A' (1.4): repeated",
                          "attribute type 'g' (): repeated",
                          "object class 'a' (2.1): identical",
                          "object class 'b' (2.2): replaced",
                          "object class 'c' (2.3): added",
                          "object class 'd' (2.4): excluded",
                          "object class 'e' (2.5): excluded",
                          "object class 'f' (2.6): excluded",
                          "object class 'A' (2.4): repeated",
                          "object class 'g' (): repeated",
                          "storage definition (1.1): identical",
                          "storage definition (1.2): replaced",
                          "storage definition (1.3): added",
                          "storage definition (1.4): excluded",
                          "storage definition (1.5): excluded",
                          "storage definition (1.6): excluded",
                          "storage definition (1.1): repeated",
                          "storage definition (): repeated"}));
}

// Attribute types and object classes meet by name, storage definitions by OID.
TEST_F(SchemasTest, ADefinitionOfTheSameNameIsReplacedWhateverItsOid) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n");
  write("new/V3.user.at",
        "attributetypes=( 1.2 NAME 'a' DESC 'x' )\n"
        "attributetypes=( 1.3 NAME ( 'c' 'b' ) DESC 'x' )\n");
  EXPECT_EQ(fates(), (Texts{"attribute type 'a' (1.1): replaced",
                            "attribute type 'b' (1.2): added"}));
}

TEST_F(SchemasTest, CanBeAddedIsWhatAUserQorOrSystemFileRecords) {
  for (const SchemaFile &file : kSchemaFiles) {
    write(std::string("old/") + file.name, std::string("attributetypes=( '") +
                                               file.name + "' NAME '" +
                                               file.name + "' DESC 'x' )\n");
  }
  writeSmallRelease();
  const auto both = schemas();
  both->compare();
  Texts addable;
  for (const Entry &entry : both->oldFiles().entries()) {
    if (both->canBeAdded(entry)) {
      addable.emplace_back(kSchemaFiles[entry.file].name);
    }
    EXPECT_EQ(both->canBeAdded(entry), kSchemaFiles[entry.file].recorded);
  }
  EXPECT_EQ(addable, (Texts{"V3.user.at", "V3.user.oc", "V3.qor.at",
                            "V3.qor.oc", "V3.system.at", "V3.system.oc"}));
}

TEST_F(SchemasTest, TheMergeMakesTheReleaseTheResult) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'old' )\n"
        "attributetypes=( 1.2 NAME 'b' DESC 'old' )\n");
  write("new/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'new' )\n"
        "attributetypes=( 1.3 NAME 'c' DESC 'new' )\n");
  const auto both = schemas();
  both->compare();
  both->merge();
  Texts result;
  for (const auto &[key, type] : both->newSchema()->attributeTypes()) {
    result.push_back(key + ' ' + type->getDescription());
  }
  EXPECT_EQ(result, (Texts{"a old", "b old", "c new"}));
}

TEST_F(SchemasTest, SaysSoWhenTheMergeFails) {
  write("old/V3.config.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  writeSmallRelease();
  const auto both = schemas();
  both->compare();
  EXPECT_EQ(troubleOf([&both] { both->merge(); }),
            "error: the merge of the two schemas failed");
}

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
