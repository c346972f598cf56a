// schema-migrate restore.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "Backups.h"
#include "MigrateTesting.h"

namespace fs = std::filesystem;

namespace {

using Arguments = std::vector<std::string>;

constexpr char kOlder[] = "out.backup-20000101-000000";
constexpr char kNewer[] = "out.backup-20000202-000000";

class RestoreTest : public MigrateTest {
 protected:
  RestoreTest() {
    fs::remove(path("old"));
    fs::remove(path("new"));
    for (const char *name : {"out", kOlder, kNewer}) {
      fs::create_directory(path(name));
      write(std::string(name) + "/V3.user.at", name);
    }
  }

  CommandResult restore(const Arguments &more = {}) const {
    Arguments arguments = {"restore", "--out", "out"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
  }

  std::string refusal(const Arguments &more = {}) const {
    const auto before = snapshotOf(root());
    const CommandResult result = restore(more);
    EXPECT_EQ(result.status, kFileError);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(snapshotOf(root()), before);
    return result.error;
  }

  std::string newest() const { return backupsOf(path("out")).back(); }
};

TEST_F(RestoreTest, BringsTheNewestBackupBack) {
  const auto backup = snapshotOf(path(kNewer));
  const auto former = snapshotOf(path("out"));
  const CommandResult result = restore();
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.out, std::string("restored: out, from ") + kNewer +
                            "\nwhat was there is now in " + newest() +
                            "\nother backups: " + kOlder + "\n");
  EXPECT_EQ(snapshotOf(path("out")), backup);
  EXPECT_EQ(snapshotOf(path(newest())), former);
  EXPECT_EQ(namesIn(root()), (Arguments{"out", kOlder, newest()}));
}

TEST_F(RestoreTest, UndoesItselfTheSecondTime) {
  EXPECT_EQ(restore().status, 0);
  EXPECT_EQ(restore().status, 0);
  EXPECT_EQ(read("out/V3.user.at"), "out");
  EXPECT_EQ(read(newest() + "/V3.user.at"), kNewer);
}

TEST_F(RestoreTest, BringsTheNamedBackupBack) {
  EXPECT_EQ(restore({"--backup", kOlder}).status, 0);
  EXPECT_EQ(read("out/V3.user.at"), kOlder);
  EXPECT_EQ(restore({"--backup", path(kNewer).string()}).status, 0);
  EXPECT_EQ(read("out/V3.user.at"), kNewer);
  // The two that this has made.
  const Arguments made = backupsOf(path("out"));
  ASSERT_EQ(made.size(), 2U);
  EXPECT_EQ(read(made[0] + "/V3.user.at"), "out");
  EXPECT_EQ(restore({"--backup", "./" + made[0]}).status, 0);
  EXPECT_EQ(read("out/V3.user.at"), "out");
}

TEST_F(RestoreTest, BringsBackWhatIsGone) {
  fs::remove_all(path("out"));
  const CommandResult result = restore();
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, std::string("restored: out, from ") + kNewer +
                            "\nother backups: " + kOlder + "\n");
  EXPECT_EQ(read("out/V3.user.at"), kNewer);
  EXPECT_EQ(namesIn(root()), (Arguments{"out", kOlder}));
}

// Whatever has become of the directory: that is what a backup is for.
TEST_F(RestoreTest, ReplacesAnyDirectory) {
  fs::remove(path("out/V3.user.at"));
  write("out/rest", "text");
  EXPECT_EQ(restore().status, 0);
  EXPECT_EQ(read("out/V3.user.at"), kNewer);
  EXPECT_EQ(read(newest() + "/rest"), "text");
}

TEST_F(RestoreTest, RefusesABackupThatIsNone) {
  fs::create_directory(path("elsewhere"));
  fs::create_directory(path("elsewhere/") / kOlder);
  for (const std::string &name :
       {std::string("out"), std::string("out.backup-2"),
        std::string("elsewhere/") + kOlder, std::string("missing/") + kOlder}) {
    EXPECT_EQ(refusal({"--backup", name}),
              "out: error: expected the name of one of its backups, found '" +
                  name + "'; there are: " + kOlder + ' ' + kNewer + '\n');
  }
}

TEST_F(RestoreTest, RefusesWhenThereIsNoBackup) {
  fs::remove_all(path(kOlder));
  fs::remove_all(path(kNewer));
  EXPECT_EQ(refusal(),
            "out: error: expected a backup beside it "
            "(out.backup-YYYYMMDD-HHMMSS), found none\n");
  EXPECT_EQ(run({"restore", "--out", "/"}).error,
            "/: error: expected a directory with a name\n");
}

TEST_F(RestoreTest, RefusesToReplaceAFile) {
  fs::remove_all(path("out"));
  write("out", "text");
  EXPECT_EQ(refusal(),
            "out: error: expected a directory there, found something else\n");
}

TEST_F(RestoreTest, ListsTheBackups) {
  const auto before = snapshotOf(root());
  CommandResult result = restore({"--list"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, std::string(kNewer) + '\n' + kOlder + '\n');
  EXPECT_EQ(snapshotOf(root()), before);
  fs::remove_all(path(kOlder));
  fs::remove_all(path(kNewer));
  result = restore({"--list"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out + result.error, "");
}

TEST_F(RestoreTest, BringsBackWhatApplyHasReplaced) {
  fs::remove_all(path(kOlder));
  fs::remove_all(path(kNewer));
  fs::create_directory(path("old"));
  fs::create_directory(path("new"));
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  writeSmallRelease();
  const auto former = snapshotOf(path("out"));
  EXPECT_EQ(run({"apply", "--old", "old", "--new", "new", "--out", "out",
                 "--replace"})
                .status,
            0);
  const auto made = snapshotOf(path("out"));
  EXPECT_EQ(restore().status, 0);
  EXPECT_EQ(snapshotOf(path("out")), former);
  EXPECT_EQ(snapshotOf(path(newest())), made);
}

TEST_F(RestoreTest, ABackupWithoutSchemaFilesIsNotPutBack) {
  const std::string empty = "out.backup-20990101-000000";
  fs::create_directory(path(empty));
  const auto before = snapshotOf(root());
  const CommandResult result = restore();
  EXPECT_EQ(result.status, kFileError);
  EXPECT_EQ(result.error,
            empty +
                ": error: expected schema files (V3.user.at and so on) in "
                "the backup, found none\n");
  EXPECT_EQ(snapshotOf(root()), before);
}

// A clock that was set back changes nothing of that.
TEST_F(RestoreTest, TwiceUndoesItWhateverTheClockSays) {
  fs::rename(path(kOlder), path("out.backup-20980101-000000"));
  fs::rename(path(kNewer), path("out.backup-20990101-000000"));
  const auto before = snapshotOf(path("out"));
  EXPECT_EQ(restore().status, 0);
  EXPECT_EQ(newest(), "out.backup-20980101-000000-2");
  EXPECT_EQ(restore().status, 0);
  EXPECT_EQ(snapshotOf(path("out")), before);
}

}  // namespace
