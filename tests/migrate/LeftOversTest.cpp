#include "LeftOvers.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "Backups.h"
#include "Disk.h"
#include "MigrateTesting.h"

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

constexpr char kBackup[] = "out.backup-20000101-000000";
constexpr char kDate[] = "20000101-000000";

class LeftOversTest : public MigrateTest {
 protected:
  LeftOversTest() {
    fs::remove(path("old"));
    fs::remove(path("new"));
  }

  fs::path target() const { return path("out"); }

  // Makes a directory with one file, and returns its inode.
  std::string make(const std::string &name) const {
    fs::create_directory(path(name));
    write(name + "/file", name);
    return inodeOf(path(name));
  }

  Names settled() const { return relative(settle(target())); }
};

TEST_F(LeftOversTest, AreNoneWhereNothingIs) {
  make("out");
  EXPECT_FALSE(hasLeftOvers(target()));
  EXPECT_EQ(settled(), Names());
  EXPECT_EQ(namesIn(root()), Names{"out"});
}

TEST_F(LeftOversTest, ADirectoryBeingMadeIsRemoved) {
  // From its first moment to its last.
  for (const Names &held :
       {Names{}, Names{"schema-migrate.tmp/"},
        Names{"schema-migrate.tmp/", "more/", "file"},
        Names{"schema-migrate.tmp/", "file", "schema-migrate.manifest"},
        Names{"file", "schema-migrate.manifest"}}) {
    fs::create_directory(path(".out.partial-new"));
    for (const std::string &name : held) {
      if (name.back() == '/') {
        fs::create_directory(path(".out.partial-new/" + name));
      } else {
        write(".out.partial-new/" + name, "");
      }
    }
    EXPECT_TRUE(hasLeftOvers(target()));
    EXPECT_EQ(settled(), Names{".out.partial-new: note: removed; a run that "
                               "was killed had left it"});
    EXPECT_EQ(namesIn(root()), Names());
  }
}

// Its name alone makes nothing a directory of ours.
TEST_F(LeftOversTest, ADirectoryThatNoRunHasMadeIsNotTouched) {
  make(".out.partial-new");
  const auto before = snapshotOf(root());
  EXPECT_EQ(relative(troubleOf([this] { settle(target()); })),
            ".out.partial-new: error: expected a directory that a killed run "
            "has left, found something else; remove it");
  EXPECT_EQ(snapshotOf(root()), before);
}

TEST_F(LeftOversTest, ACompleteDirectoryThatWasNotExchangedIsRemoved) {
  make("out");
  const std::string name = ".out.partial-complete-" + make("x");
  fs::rename(path("x"), path(name));
  EXPECT_TRUE(hasLeftOvers(target()));
  EXPECT_EQ(settled(), Names{name + ": note: removed; a run that was killed "
                                    "had left it"});
  EXPECT_EQ(namesIn(root()), Names{"out"});
  EXPECT_EQ(read("out/file"), "out");
}

TEST_F(LeftOversTest, WhatWasExchangedBecomesABackup) {
  make("former");
  const std::string name = ".out.partial-complete-" + make("out");
  fs::rename(path("former"), path(name));
  const Names notes = settled();
  const Names backups = backupsOf(target());
  ASSERT_EQ(backups.size(), 1U);
  EXPECT_EQ(notes, Names{backups[0] + ": note: holds what a run that was "
                                      "killed has replaced"});
  EXPECT_EQ(namesIn(root()), (Names{"out", backups[0]}));
  EXPECT_EQ(read(backups[0] + "/file"), "former");
}

TEST_F(LeftOversTest, ABackupOnItsWayGetsItsNameAgain) {
  make("out");
  const std::string name = ".out.partial-restore-" + make("x") + "-" + kDate;
  fs::rename(path("x"), path(name));
  EXPECT_TRUE(hasLeftOvers(target()));
  EXPECT_EQ(settled(),
            Names{std::string(kBackup) + ": note: has its name again; a run "
                                         "that was killed had it moved"});
  EXPECT_EQ(namesIn(root()), (Names{"out", kBackup}));
  EXPECT_EQ(read(std::string(kBackup) + "/file"), "x");
}

TEST_F(LeftOversTest, WhatARestoreHasExchangedBecomesABackup) {
  make("former");
  const std::string name = ".out.partial-restore-" + make("out") + "-" + kDate;
  fs::rename(path("former"), path(name));
  EXPECT_EQ(settled().size(), 1U);
  const Names backups = backupsOf(target());
  ASSERT_EQ(backups.size(), 1U);
  EXPECT_NE(backups[0], kBackup);
  EXPECT_EQ(read(backups[0] + "/file"), "former");
  EXPECT_EQ(read("out/file"), "out");
}

// No name is taken from anything.
TEST_F(LeftOversTest, ABackupWhoseNameIsTakenStays) {
  make(kBackup);
  const std::string name = ".out.partial-restore-" + make("x") + "-" + kDate;
  fs::rename(path("x"), path(name));
  const auto before = snapshotOf(root());
  EXPECT_EQ(relative(troubleOf([this] { settle(target()); })),
            std::string(kBackup) +
                ": error: expected nothing there, found something; the name is "
                "that of " +
                name);
  settleQuietly(target());
  EXPECT_EQ(snapshotOf(root()), before);
}

TEST_F(LeftOversTest, WhatIsNoDirectoryIsNotTouched) {
  make("out");
  for (const char *name : {".out.partial-new", ".out.partial-complete-12"}) {
    const std::string message = std::string(name) +
                                ": error: expected a directory that a killed "
                                "run has left, found something else; remove it";
    write(name, "text");
    EXPECT_EQ(relative(troubleOf([this] { settle(target()); })), message);
    EXPECT_EQ(read(name), "text");
    fs::remove(path(name));
    fs::create_directory_symlink("out", path(name));
    EXPECT_EQ(relative(troubleOf([this] { settle(target()); })), message);
    fs::remove(path(name));
  }
  EXPECT_EQ(read("out/file"), "out");
}

TEST_F(LeftOversTest, ReplaceExchangesAndMakesABackup) {
  make("out");
  make(".out.partial-new");
  const std::string backup = replace(target());
  EXPECT_EQ(namesIn(root()), (Names{"out", backup}));
  EXPECT_EQ(read("out/file"), ".out.partial-new");
  EXPECT_EQ(read(backup + "/file"), "out");
}

TEST_F(LeftOversTest, ReplaceFailsWhereThereIsNothing) {
  make(".out.partial-new");
  EXPECT_EQ(relative(troubleOf([this] { replace(target()); })),
            "out: error: cannot replace the directory: No such file or "
            "directory");
  settleQuietly(target());
  EXPECT_EQ(namesIn(root()), Names());
}

// What the next run says of a killed one, with the command itself.
TEST_F(LeftOversTest, TheNextRunSaysWhatItFinds) {
  fs::create_directory(path("old"));
  fs::create_directory(path("new"));
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  writeSmallRelease();
  const std::string removed =
      ".out.partial-new: note: removed; a run that was killed had left it\n";
  make(".out.partial-new");
  write(".out.partial-new/schema-migrate.manifest", "");
  write(".out.partial-lock", "");
  const Names arguments = {"apply", "--old", "old", "--new",
                           "new",   "--out", "out"};
  CommandResult result = run(arguments);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, removed);
  EXPECT_EQ(namesIn(root()), (Names{"new", "old", "out"}));

  // Also when it is refused, and when nothing but the lock is there.
  make(".out.partial-new");
  write(".out.partial-new/schema-migrate.manifest", "");
  result = run(arguments);
  EXPECT_EQ(result.status, kFileError);
  EXPECT_EQ(namesIn(root()), (Names{"new", "old", "out"}));
  write(".out.partial-lock", "");
  EXPECT_EQ(run(arguments).status, kFileError);
  EXPECT_EQ(namesIn(root()), (Names{"new", "old", "out"}));
}

}  // namespace
