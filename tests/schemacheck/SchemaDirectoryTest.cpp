#include "SchemaDirectory.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <string>

#include "CheckTesting.h"

using schemacheck::SchemaDirectory;
using schemacheck::Statement;

namespace fs = std::filesystem;

namespace {

const std::string kType = "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n";

class SchemaDirectoryTest : public CheckTest {
 protected:
  std::string found() const {
    return textOf(SchemaDirectory(path()).findings());
  }

  // The definitions, a line each.
  std::string statements() const {
    const SchemaDirectory directory(path());
    std::string text;
    for (const Statement &statement : directory.statements()) {
      text += statement.place().substr(path().string().size() + 1) + ": " +
              statement.inWords() + " oid=" + statement.oid() +
              " name=" + statement.firstName() + " key=" + statement.key() +
              "\n";
    }
    return text;
  }
};

class SchemaDirectoryNamesTest : public SchemaDirectoryTest,
                                 public testing::WithParamInterface<CheckCase> {
};

TEST_P(SchemaDirectoryNamesTest, AreChecked) {
  write(GetParam().files);
  EXPECT_EQ(found(), GetParam().text);
}

const CheckCase kNames[] = {
    {"AllNine",
     {{"V3.user.at", kType},
      {"V3.user.oc", "#\n"},
      {"V3.qor.at", "#\n"},
      {"V3.qor.oc", "#\n"},
      {"V3.system.at", "#\n"},
      {"V3.system.oc", "#\n"},
      {"V3.config.at", "#\n"},
      {"V3.config.oc", "#\n"},
      {"V3.modifiedschema", ""}},
     ""},
    {"OthersAreNobodysBusiness",
     {{"V3.user.at", kType}, {"README", ""}, {"user.at", ""}, {"my.V3", ""}},
     ""},
    {"None",
     {{"README", ""}},
     ".: error: [NO-FILES] expected schema files (V3.user.at and so on), found "
     "none\n"},
    {"Misnamed",
     {{"V3.user.ta", kType}, {"v3.SYSTEM.oc", kType}},
     ".: error: [NO-FILES] expected schema files (V3.user.at and so on), found "
     "none\n"
     "./V3.user.ta: error: [MISNAMED-FILE] expected the name of a schema file, "
     "such as V3.user.at; the file is not read\n"
     "./v3.SYSTEM.oc: error: [MISNAMED-FILE] expected the name of a schema "
     "file, such as V3.system.oc; the file is not read\n"},
    {"MisnamedAsTheOneThatIsMissing",
     {{"V3.user.at", kType}, {"V3.user.xc", ""}, {"V3.user.cx", ""}},
     "./V3.user.cx: error: [MISNAMED-FILE] expected the name of a schema file, "
     "such as V3.user.oc; the file is not read\n"
     "./V3.user.xc: error: [MISNAMED-FILE] expected the name of a schema file, "
     "such as V3.user.oc; the file is not read\n"},
    {"Unknown",
     {{"V3.user.at", kType},
      {"V3.user.at~", kType},
      {"V3.user.at.bak", kType},
      {"V3.USER.AT", kType},
      {"v3", ""},
      {"V3.mine.at", kType}},
     "./V3.USER.AT: warning: [UNKNOWN-FILE] expected the name of a schema "
     "file, such as V3.user.at; the file is not read\n"
     "./V3.mine.at: warning: [UNKNOWN-FILE] expected the name of a schema "
     "file, "
     "such as V3.qor.at; the file is not read\n"
     "./V3.user.at.bak: warning: [UNKNOWN-FILE] expected the name of a schema "
     "file, such as V3.user.at; the file is not read\n"
     "./V3.user.at~: warning: [UNKNOWN-FILE] expected the name of a schema "
     "file, such as V3.user.at; the file is not read\n"
     "./v3: warning: [UNKNOWN-FILE] expected the name of a schema file, such "
     "as V3.qor.at; the file is not read\n"},
    {"Empty",
     {{"V3.user.at", ""}, {"V3.modifiedschema", ""}},
     "./V3.user.at: warning: [EMPTY-FILE] expected definitions, found an empty "
     "file\n"},
};

INSTANTIATE_TEST_SUITE_P(Names, SchemaDirectoryNamesTest,
                         testing::ValuesIn(kNames), nameOf);

TEST_F(SchemaDirectoryTest, FindsDirectoriesThatAreNotThere) {
  EXPECT_EQ(textOf(SchemaDirectory(path("none")).findings()),
            "./none: error: [NOT-A-DIRECTORY] expected a directory that can be "
            "read, found: No such file or directory\n");
}

TEST_F(SchemaDirectoryTest, FindsDirectoriesThatAreNone) {
  write({{"file", kType}});
  EXPECT_EQ(textOf(SchemaDirectory(path("file")).findings()),
            "./file: error: [NOT-A-DIRECTORY] expected a directory that can be "
            "read, found: Not a directory\n");
}

TEST_F(SchemaDirectoryTest, FindsWhatIsNoFile) {
  fs::create_directory(path("V3.user.at"));
  fs::create_symlink("nowhere", path("V3.user.oc"));
  fs::create_symlink("/dev/zero", path("V3.qor.at"));
  write({{"V3.system.at", kType}});
  EXPECT_EQ(found(),
            "./V3.user.at: error: [NOT-A-FILE] expected a regular file, found "
            "a directory\n"
            "./V3.user.oc: error: [NOT-A-FILE] expected a regular file, found "
            "a link that leads nowhere\n"
            "./V3.qor.at: error: [NOT-A-FILE] expected a regular file, found "
            "something else\n");
  EXPECT_EQ(statements(),
            "V3.system.at:1: attribute type 'a' (1.1) oid=1.1 "
            "name=a key=a\n");
}

// Reading this file fails, whoever tries.
TEST_F(SchemaDirectoryTest, FindsFilesThatCannotBeRead) {
  fs::create_symlink("/proc/self/mem", path("V3.user.at"));
  fs::create_symlink("V3.user.oc", path("V3.user.oc"));
  EXPECT_EQ(found(),
            "./V3.user.at: error: [UNREADABLE-FILE] expected a file that can "
            "be read, found: Input/output error\n"
            "./V3.user.oc: error: [UNREADABLE-FILE] expected a file that can "
            "be read, found: Too many levels of symbolic links\n");
}

TEST_F(SchemaDirectoryTest, FindsLargeFiles) {
  write({{"V3.user.at", kType}, {"V3.system.at", kType + "#"}});
  const SchemaDirectory directory(path(), kType.size());
  EXPECT_EQ(textOf(directory.findings()),
            "./V3.system.at: error: [LARGE-FILE] expected at most 41 bytes, "
            "found 42\n");
  EXPECT_EQ(directory.files().size(), 1U);
}

// Its size is zero until it is read.
TEST_F(SchemaDirectoryTest, FindsFilesThatTurnOutToBeLarge) {
  fs::create_symlink("/proc/self/status", path("V3.user.at"));
  EXPECT_EQ(textOf(SchemaDirectory(path(), 5).findings()),
            "./V3.user.at: error: [LARGE-FILE] expected at most 5 bytes, found "
            "more\n");
}

// Larger than what is read at a time: each mapping has a line of it.
TEST_F(SchemaDirectoryTest, FindsFilesThatTurnOutToBeVeryLarge) {
  constexpr std::size_t kPages = 4000;
  const auto pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  void *pages = mmap(nullptr, kPages * pageSize, PROT_READ,
                     MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(pages, MAP_FAILED);
  for (std::size_t page = 0; page < kPages; page += 2) {
    EXPECT_EQ(mprotect(static_cast<char *>(pages) + page * pageSize, pageSize,
                       PROT_NONE),
              0);
  }
  fs::create_symlink("/proc/self/maps", path("V3.user.at"));
  EXPECT_EQ(textOf(SchemaDirectory(path(), 5).findings()),
            "./V3.user.at: error: [LARGE-FILE] expected at most 5 bytes, found "
            "more\n");
  munmap(pages, kPages * pageSize);
}

TEST_F(SchemaDirectoryTest, FindsBinaryFiles) {
  write({{"V3.user.at", kType + std::string("# \0 \0\n", 6) + kType}});
  EXPECT_EQ(found(),
            "./V3.user.at:2:3: error: [BINARY-FILE] expected text, found a "
            "zero byte; the file is not checked\n"
            "# ? ?\n"
            "  ^\n");
  EXPECT_EQ(statements(), "");
}

TEST_F(SchemaDirectoryTest, PassesOverAByteOrderMark) {
  write({{"V3.user.at", "\xEF\xBB\xBF" + kType}});
  EXPECT_EQ(found(), "");
  const SchemaDirectory directory(path());
  ASSERT_EQ(directory.statements().size(), 1U);
  EXPECT_EQ(directory.statements()[0].definition->span.begin, 18U);
  EXPECT_EQ(directory.files()[0].reading.faults.size(), 0U);
}

TEST_F(SchemaDirectoryTest, HoldsTheDefinitionsInTheOrderOfReading) {
  write({{"V3.modifiedschema", kType},
         {"V3.config.at", "#\nattributetypes=( NAME 'B' DESC 'x' )\n"},
         {"V3.user.at",
          "QORAttributetypes=( X.1 DBNAME ( 'A' ) )\n"
          "attributetypes {\n( 1.2 NAME ( 'Cn' 'd' ) DESC 'x' ) ( ) }\n"},
         {"V3.user.oc", "objectclasses=( 2.1 ABSTRACT )\n"}});
  EXPECT_EQ(statements(),
            "V3.user.at:1: storage definition (X.1) oid=X.1 name= key=X.1\n"
            "V3.user.at:3: attribute type 'Cn' (1.2) oid=1.2 name=Cn key=cn\n"
            "V3.user.at:3: attribute type () oid= name= key=\n"
            "V3.user.oc:1: object class (2.1) oid=2.1 name= key=\n"
            "V3.config.at:2: attribute type 'B' () oid= name=B key=b\n"
            "V3.modifiedschema:1: attribute type 'a' (1.1) oid=1.1 name=a "
            "key=a\n");
}

}  // namespace
