#include "Inventory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "MigrateTesting.h"

namespace fs = std::filesystem;

namespace {

constexpr char kUnreadable[] =
    "cannot read this definition to its ')'; look for a missing parenthesis, a "
    "quote too many or too few, or a character outside ASCII";
constexpr char kNoOpener[] =
    "expected '=' or '{' behind the keyword of a section";
constexpr char kCollective[] =
    "COLLECTIVE is not supported in an attribute type";
constexpr char kEndOfFile[] =
    "expected another field behind a list of names, found the end of the file";

// Each entry in full, in order.
std::vector<std::string> entriesOf(const Inventory &inventory) {
  std::vector<std::string> texts;
  for (const Entry &entry : inventory.entries()) {
    std::string text = kSchemaFiles[entry.file].name +
                       (":" + std::to_string(entry.line)) + ' ' +
                       kindName(entry.kind) + " '" + entry.oid + "' '" +
                       entry.name + "' key '" + entry.key + "'";
    if (entry.shadowedBy != Entry::kNone) {
      text += " shadowed by " + std::to_string(entry.shadowedBy);
    }
    text += entry.dropped ? " dropped" : "";
    text += entry.held() ? "" : " not held";
    texts.push_back(text);
  }
  return texts;
}

class InventoryTest : public MigrateTest {
 protected:
  Inventory inventory() const { return Inventory(path("old")); }

  std::string trouble() const {
    return relative(troubleOf([this] { return inventory(); }));
  }
};

using Texts = std::vector<std::string>;

TEST_F(InventoryTest, ListsTheDefinitionsOfAllFilesInTheOrderOfReading) {
  for (const SchemaFile &file : kSchemaFiles) {
    write(std::string("old/") + file.name,
          std::string("attributetypes=( '") + file.name + "' OBSOLETE )\n");
  }
  const Inventory files = inventory();
  EXPECT_EQ(
      entriesOf(files),
      (Texts{
          "V3.user.at:1 attribute type 'V3.user.at' '' key ''",
          "V3.user.oc:1 attribute type 'V3.user.oc' '' key '' shadowed by 0 "
          "not held",
          "V3.qor.at:1 attribute type 'V3.qor.at' '' key '' shadowed by 0 not "
          "held",
          "V3.qor.oc:1 attribute type 'V3.qor.oc' '' key '' shadowed by 0 not "
          "held",
          "V3.system.at:1 attribute type 'V3.system.at' '' key '' shadowed by "
          "0 not held",
          "V3.system.oc:1 attribute type 'V3.system.oc' '' key '' shadowed by "
          "0 not held",
          "V3.config.at:1 attribute type 'V3.config.at' '' key '' shadowed by "
          "0 not held",
          "V3.config.oc:1 attribute type 'V3.config.oc' '' key '' shadowed by "
          "0 not held",
          "V3.modifiedschema:1 attribute type 'V3.modifiedschema' '' key '' "
          "shadowed by 0 not held",
      }));
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    EXPECT_TRUE(files.hasFile(file)) << kSchemaFiles[file].name;
  }
}

TEST_F(InventoryTest, KnowsTheDirectoryAndWhichFilesItHas) {
  write("old/V3.qor.oc", "");
  write("old/V3.config.at", "");
  write("old/V3.user.at.bak", "attributetypes=( 1.2 OBSOLETE )\n");
  const Inventory files = inventory();
  EXPECT_EQ(files.directory(), path("old"));
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    const std::string name = kSchemaFiles[file].name;
    EXPECT_EQ(files.hasFile(file),
              name == "V3.qor.oc" || name == "V3.config.at")
        << name;
  }
  EXPECT_EQ(entriesOf(files), Texts());
}

TEST_F(InventoryTest, ReadsEachKindFromAnyFile) {
  write("old/V3.user.at",
        "objectclasses=( 2.1 NAME 'K' ABSTRACT )\n"
        "QORAttributetypes=( 1.1 LENGTH 4 )\n"
        "attributetypes=( 1.1 NAME ( 'Aa' 'b' ) OBSOLETE )\n");
  EXPECT_EQ(entriesOf(inventory()),
            (Texts{"V3.user.at:1 object class '2.1' 'K' key 'k'",
                   "V3.user.at:2 storage definition '1.1' '' key '1.1'",
                   "V3.user.at:3 attribute type '1.1' 'Aa' key 'aa'"}));
}

TEST_F(InventoryTest, SkipsWhatIsNotASection) {
  write("old/V3.user.at",
        "# attributetypes=( 1.1 OBSOLETE )\n"
        "include ( 1.2 ) { } = COLLECTIVE NAME 'x'\r\n"
        "objectClasses=( 2.1 NAME 'k' ABSTRACT ) tail 'of' it\n"
        "ObjectClasses=( 2.2 NAME 'l' ABSTRACT )\n");
  EXPECT_EQ(entriesOf(inventory()),
            (Texts{"V3.user.at:3 object class '2.1' 'k' key 'k'"}));
}

TEST_F(InventoryTest, GivesTheLineOnWhichADefinitionBegins) {
  write("old/V3.user.at",
        "# a comment\n"
        "\n"
        "attributetypes=( 1.1\n"
        "  NAME 'a'\n"
        "  OBSOLETE )\n"
        "objectclasses {\n"
        "\n"
        "  ( 2.1 NAME 'k'\n"
        "    ABSTRACT )\n"
        "  # a comment\n"
        "  ( 2.2 NAME 'l' ABSTRACT ) ( 2.3 NAME 'm' ABSTRACT )\n"
        "}\n"
        "QORAttributetypes=( 1.1 )\n"
        "attributetypes\n"
        "=\n"
        "  ( 1.3 OBSOLETE )\n"
        "objectclasses= # without a parenthesis\n"
        "  2.4 )");
  EXPECT_EQ(entriesOf(inventory()),
            (Texts{"V3.user.at:3 attribute type '1.1' 'a' key 'a'",
                   "V3.user.at:8 object class '2.1' 'k' key 'k'",
                   "V3.user.at:11 object class '2.2' 'l' key 'l'",
                   "V3.user.at:11 object class '2.3' 'm' key 'm'",
                   "V3.user.at:13 storage definition '1.1' '' key '1.1'",
                   "V3.user.at:16 attribute type '1.3' '' key ''",
                   "V3.user.at:18 object class '2.4' '' key ''"}));
}

TEST_F(InventoryTest, TheFirstDefinitionOfAKeyHoldsIt) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' OBSOLETE )\n"
        "attributetypes=( 1.2 NAME ( 'A' 'b' ) OBSOLETE )\n"
        "attributetypes=( 1.1 NAME 'b' OBSOLETE )\n"
        "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n"
        "QORAttributetypes=( 1.1 )\n");
  write("old/V3.system.oc",
        "objectclasses=( 2.2 NAME 'a' ABSTRACT )\n"
        "QORAttributetypes=( 1.1 LENGTH 3 )\n"
        "attributetypes=( 1.3 NAME 'a' OBSOLETE )\n");
  EXPECT_EQ(
      entriesOf(inventory()),
      (Texts{"V3.user.at:1 attribute type '1.1' 'a' key 'a'",
             "V3.user.at:2 attribute type '1.2' 'A' key 'a' shadowed by 0 not "
             "held",
             "V3.user.at:3 attribute type '1.1' 'b' key 'b'",
             "V3.user.at:4 object class '1.1' 'a' key 'a'",
             "V3.user.at:5 storage definition '1.1' '' key '1.1'",
             "V3.system.oc:1 object class '2.2' 'a' key 'a' shadowed by 3 not "
             "held",
             "V3.system.oc:2 storage definition '1.1' '' key '1.1' shadowed by "
             "4 not held",
             "V3.system.oc:3 attribute type '1.3' 'a' key 'a' shadowed by 0 "
             "not held"}));
}

TEST_F(InventoryTest, GivesTheLineOfTheParenthesisInABlock) {
  write("old/V3.user.at",
        "attributetypes {\n"
        "  (\n"
        "    1.1 OBSOLETE\n"
        "  )\n"
        "  (\n"
        "    1.2 OBSOLETE )\n"
        "}\n");
  EXPECT_EQ(entriesOf(inventory()),
            (Texts{"V3.user.at:2 attribute type '1.1' '' key ''",
                   "V3.user.at:5 attribute type '1.2' '' key '' shadowed by 0 "
                   "not held"}));
}

// The "}" of the block ends the definition as well.
TEST_F(InventoryTest, ReadsABlockWhoseLastDefinitionIsOpen) {
  write("old/V3.user.at",
        "attributetypes {\n"
        "  ( 1.1 NAME 'a' OBSOLETE }\n"
        "COLLECTIVE\n"
        "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n");
  EXPECT_EQ(entriesOf(inventory()),
            (Texts{"V3.user.at:2 attribute type '1.1' 'a' key 'a'",
                   "V3.user.at:4 object class '2.1' 'k' key 'k'"}));
}

// Kept on purpose by the library: a definition without an OID counts behind "="
// and is dropped in braces.
TEST_F(InventoryTest, DropsDefinitionsWithoutOidInBracesOnly) {
  write("old/V3.user.at",
        "attributetypes { ( NAME 'a' OBSOLETE ) ( 1.1 NAME 'a' OBSOLETE ) }\n"
        "attributetypes=( NAME 'b' OBSOLETE )\n"
        "QORAttributetypes { ( LENGTH 4 ) }\n"
        "QORAttributetypes=( LENGTH 4 )\n"
        "objectclasses { ( ABSTRACT ) }\n"
        "objectclasses=( ABSTRACT )\n");
  const Inventory files = inventory();
  EXPECT_EQ(entriesOf(files),
            (Texts{"V3.user.at:1 attribute type '' 'a' key 'a' dropped not "
                   "held",
                   "V3.user.at:1 attribute type '1.1' 'a' key 'a'",
                   "V3.user.at:2 attribute type '' 'b' key 'b'",
                   "V3.user.at:3 storage definition '' '' key '' dropped not "
                   "held",
                   "V3.user.at:4 storage definition '' '' key ''",
                   "V3.user.at:5 object class '' '' key '' dropped not held",
                   "V3.user.at:6 object class '' '' key ''"}));
  EXPECT_EQ(files.holder(Kind::kAttributeType, "a"), &files.entries()[1]);
  EXPECT_EQ(files.firstWithOid(Kind::kAttributeType, ""), &files.entries()[2]);
}

TEST_F(InventoryTest, FindsTheHolderOfAKeyAndTheFirstWithAnOid) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'Aa' OBSOLETE )\n"
        "attributetypes=( 1.2 NAME 'aA' OBSOLETE )\n"
        "attributetypes=( 1.1 NAME 'b' OBSOLETE )\n"
        "objectclasses=( 1.2 NAME 'aa' ABSTRACT )\n"
        "QORAttributetypes=( 1.2 )\n");
  const Inventory files = inventory();
  const Entry *entries = files.entries().data();
  EXPECT_EQ(files.holder(Kind::kAttributeType, "aa"), entries);
  EXPECT_EQ(files.holder(Kind::kAttributeType, "Aa"), nullptr);
  EXPECT_EQ(files.holder(Kind::kAttributeType, "1.1"), nullptr);
  EXPECT_EQ(files.holder(Kind::kAttributeType, "b"), entries + 2);
  EXPECT_EQ(files.holder(Kind::kObjectClass, "aa"), entries + 3);
  EXPECT_EQ(files.holder(Kind::kObjectClass, "b"), nullptr);
  EXPECT_EQ(files.holder(Kind::kStorage, "1.2"), entries + 4);
  EXPECT_EQ(files.holder(Kind::kStorage, "1.1"), nullptr);
  EXPECT_EQ(files.firstWithOid(Kind::kAttributeType, "1.1"), entries);
  EXPECT_EQ(files.firstWithOid(Kind::kAttributeType, "1.2"), entries + 1);
  EXPECT_EQ(files.firstWithOid(Kind::kObjectClass, "1.2"), entries + 3);
  EXPECT_EQ(files.firstWithOid(Kind::kObjectClass, "1.1"), nullptr);
  EXPECT_EQ(files.firstWithOid(Kind::kStorage, "1.2"), entries + 4);
  EXPECT_EQ(files.firstWithOid(Kind::kStorage, ""), nullptr);
}

TEST_F(InventoryTest, NamesAnEntryAndItsPlace) {
  write("old/V3.qor.at",
        "attributetypes=( 1.1 NAME ( 'Aa' 'b' ) OBSOLETE )\n"
        "objectclasses=( 2.1 ABSTRACT )\n"
        "QORAttributetypes=( 1.1 )\n");
  const Inventory files = inventory();
  const std::vector<Entry> &entries = files.entries();
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(relative(files.place(entries[0])), "old/V3.qor.at:1");
  EXPECT_EQ(relative(files.place(entries[2])), "old/V3.qor.at:3");
  EXPECT_EQ(describe(entries[0]), "attribute type 'Aa' (1.1)");
  EXPECT_EQ(describe(entries[1]), "object class (2.1)");
  EXPECT_EQ(describe(entries[2]), "storage definition (1.1)");
}

TEST(SchemaFilesTest, NamesEachKind) {
  EXPECT_STREQ(kindName(Kind::kAttributeType), "attribute type");
  EXPECT_STREQ(kindName(Kind::kObjectClass), "object class");
  EXPECT_STREQ(kindName(Kind::kStorage), "storage definition");
  EXPECT_STREQ(kindName(Kind::kAttributeType, true), "attribute types");
  EXPECT_STREQ(kindName(Kind::kObjectClass, true), "object classes");
  EXPECT_STREQ(kindName(Kind::kStorage, true), "storage definitions");
}

TEST_F(InventoryTest, ReadsThroughASymbolicLink) {
  write("elsewhere", "attributetypes=( 1.1 NAME 'a' OBSOLETE )\n");
  fs::create_symlink("../elsewhere", path("old/V3.user.at"));
  EXPECT_EQ(entriesOf(inventory()),
            (Texts{"V3.user.at:1 attribute type '1.1' 'a' key 'a'"}));
}

TEST_F(InventoryTest, RejectsWhatIsNoSchemaDirectory) {
  EXPECT_EQ(trouble(),
            "old: error: expected schema files (V3.user.at and so on), found "
            "none");
  write("old/v3.user.at", "");
  write("old/V3.user.at.bak", "");
  EXPECT_EQ(trouble(),
            "old: error: expected schema files (V3.user.at and so on), found "
            "none");
  fs::remove_all(path("old"));
  EXPECT_EQ(trouble(), "old: error: No such file or directory");
  write("old", "");
  EXPECT_EQ(trouble(), "old: error: expected a directory");
}

TEST_F(InventoryTest, RejectsWhatIsNoFile) {
  write("old/V3.user.at", "");
  const fs::path file = path("old/V3.system.oc");
  fs::create_directory(file);
  EXPECT_EQ(trouble(),
            "old/V3.system.oc: error: expected a regular file, found something "
            "else");
  fs::remove(file);
  fs::create_symlink("/dev/null", file);
  EXPECT_EQ(trouble(),
            "old/V3.system.oc: error: expected a regular file, found something "
            "else");
  fs::remove(file);
  fs::create_symlink("nowhere", file);
  EXPECT_EQ(trouble(), "old/V3.system.oc: error: No such file or directory");
  fs::remove(file);
  fs::create_symlink("V3.system.oc", file);
  EXPECT_EQ(trouble(),
            "old/V3.system.oc: error: Too many levels of symbolic links");
}

struct ErrorCase {
  const char *text;
  std::string error;  // behind "old/V3.user.at:"
};

void PrintTo(const ErrorCase &errorCase, std::ostream *out) {
  *out << errorCase.text;
}

std::string unreadable(int line) {
  return std::to_string(line) + ": error: " + kUnreadable;
}

std::string endless(int line, int begin, const std::string &reason) {
  return std::to_string(line) +
         ": error: cannot read the definition that begins on line " +
         std::to_string(begin) + ": " + reason;
}

class InventoryErrorTest : public InventoryTest,
                           public testing::WithParamInterface<ErrorCase> {};

// Whatever can be read comes before.
TEST_P(InventoryErrorTest, NamesThePlaceAndTheReason) {
  write("old/V3.system.at", "attributetypes=( 1.9 OBSOLETE )\n");
  write("old/V3.user.at", GetParam().text);
  EXPECT_EQ(trouble(), "old/V3.user.at:" + GetParam().error);
}

// Without its "}" a block goes on: the keyword of the next section is passed
// over like any other token.
const ErrorCase kErrors[] = {
    {"attributetypes ( 1.2 OBSOLETE )\n",
     "1: error: " + std::string(kNoOpener)},
    {"# a comment\nobjectclasses\n( 2.1 ABSTRACT )\n",
     "3: error: " + std::string(kNoOpener)},
    {"QORAttributetypes QORAttributetypes=( 1.2 )\n",
     "1: error: " + std::string(kNoOpener)},
    {"attributetypes\n", "2: error: " + std::string(kNoOpener)},
    {"attributetypes=\n", unreadable(1)},
    {"attributetypes=( 1.2 OBSOLETE\n", unreadable(1)},
    {"attributetypes=( 1.2 OBSOLETE", unreadable(1)},
    {"\nattributetypes=( 1.2 OBSOLETE\nattributetypes=( 1.3 OBSOLETE )\n",
     unreadable(2)},
    {"attributetypes=( 1.2\nOBSOLETE\nobjectclasses=( 2.1 ABSTRACT )\n",
     unreadable(1)},
    {"attributetypes=( 1.2 OBSOLETE\nQORAttributetypes=( 1.2 )\n",
     unreadable(1)},
    {"objectclasses=( 2.1 ABSTRACT\nobjectclasses=( 2.2 ABSTRACT )\n",
     unreadable(1)},
    {"objectclasses=( 2.1{x ABSTRACT )\n", unreadable(1)},
    {"QORAttributetypes=( 1.2 DBNAME ( 'A' )\n", unreadable(1)},
    {"QORAttributetypes=( 1.2 DBNAME 'A' )\nattributetypes=( 1.3 OBSOLETE )\n",
     unreadable(1)},
    {"attributetypes {\n( 1.2 OBSOLETE )\n( 1.3 OBSOLETE\n", unreadable(3)},
    {"attributetypes {\n( 1.2 OBSOLETE )\n", unreadable(3)},
    {"attributetypes {\n( 1.2 OBSOLETE )\nobjectclasses=( 2.1 ABSTRACT )\n",
     unreadable(4)},
    {"attributetypes=( 1.2 OBSOLETE )\nattributetypes=( 1.3\n  COLLECTIVE )\n",
     endless(3, 2, kCollective)},
    {"attributetypes {\n( 1.2 OBSOLETE )\n( 1.3 'COLLECTIVE' )\n}\n",
     endless(3, 3, kCollective)},
    {"attributetypes=( 1.2\nNAME 'a' )\n\n", endless(4, 1, kEndOfFile)},
    {"objectclasses=( 2.1 NAME 'k' )", endless(1, 1, kEndOfFile)},
    {"\nQORAttributetypes=( 1.2 DBNAME ( 'A'\n", endless(3, 2, kEndOfFile)},
};

INSTANTIATE_TEST_SUITE_P(Errors, InventoryErrorTest,
                         testing::ValuesIn(kErrors));

}  // namespace
