#include "Backups.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "MigrateTesting.h"

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

class BackupsTest : public MigrateTest {
 protected:
  fs::path target() const { return path("out"); }
};

TEST_F(BackupsTest, AreListedFromTheOldestToTheNewest) {
  EXPECT_EQ(backupsOf(target()), Names());
  const Names inOrder{
      "out.backup-20001231-235959",    "out.backup-20010101-000000",
      "out.backup-20010101-000000-2",  "out.backup-20010101-000000-9",
      "out.backup-20010101-000000-10", "out.backup-20010101-000001"};
  for (const std::string &name : inOrder) {
    fs::create_directory(path(name));
  }
  EXPECT_EQ(backupsOf(target()), inOrder);
}

TEST_F(BackupsTest, AreDirectoriesOfTheirFormOnly) {
  for (const char *name :
       {"out.backup-", "out.backup-2001", "out.backup-20010101-00000",
        "out.backup-20010101-0000000", "out.backup-20010101-000000-",
        "out.backup-20010101-000000-0", "out.backup-20010101-000000-x",
        "out.backup-20010101-000000.old", "xout.backup-20010101-000000",
        "out2.backup-20010101-000000"}) {
    fs::create_directory(path(name));
  }
  write("out.backup-20010101-000000", "a file");
  fs::create_directory_symlink("old", path("out.backup-20010101-000001"));
  EXPECT_EQ(backupsOf(target()), Names());
}

TEST_F(BackupsTest, HaveTheTimeInTheirNamesAndANumberWhenItIsTaken) {
  Names names;
  for (int number = 1; number <= 4; ++number) {
    fs::create_directory(path("former"));
    write("former/file", std::to_string(number));
    names.push_back(keepAsBackup(path("former"), target()));
    EXPECT_EQ(backupsOf(target()), names);
    EXPECT_FALSE(fs::exists(path("former")));
  }
  EXPECT_EQ(names[0].substr(0, 13), "out.backup-20");
  EXPECT_EQ(read(names[3] + "/file"), "4");
}

TEST_F(BackupsTest, NothingHappensWhenThereIsNothing) {
  const auto before = snapshotOf(root());
  const std::string trouble =
      relative(troubleOf([&] { keepAsBackup(path("missing"), target()); }));
  const std::string end =
      ": error: cannot create the directory: No such file or directory";
  EXPECT_EQ(trouble.substr(0, 11), "out.backup-");
  EXPECT_EQ(trouble.substr(trouble.find(':')), end);
  EXPECT_EQ(snapshotOf(root()), before);
}

}  // namespace
