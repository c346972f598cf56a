// apply --replace, as a user runs it.
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "AccessListTesting.h"
#include "Backups.h"
#include "MigrateTesting.h"

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

class ReplaceTest : public MigrateTest {
 protected:
  ReplaceTest() {
    write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
    writeSmallRelease();
    fs::create_directory(path("out"));
    write("out/V3.user.at", "# former\n");
  }

  CommandResult replace(const std::string &out = "out") const {
    return run(
        {"apply", "--old", "old", "--new", "new", "--out", out, "--replace"});
  }

  // Runs it; it must fail and change nothing. The error.
  std::string refusal(const std::string &out = "out",
                      ExitStatus status = kFileError) const {
    const auto before = snapshotOf(root());
    const CommandResult result = replace(out);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(snapshotOf(root()), before);
    return result.error;
  }

  // The one backup.
  std::string backup() const {
    const Names all = backupsOf(path("out"));
    EXPECT_EQ(all.size(), 1U);
    return all.empty() ? "" : all[0];
  }

  struct stat statusOf(const std::string &name) const {
    struct stat status {};
    EXPECT_EQ(lstat(path(name).c_str(), &status), 0) << name;
    return status;
  }

  const FixedDate m_date;
};

const Names kWritten = {
    "V3.modifiedschema", "V3.qor.at",  "V3.qor.oc",  "V3.system.at",
    "V3.system.oc",      "V3.user.at", "V3.user.oc", "schema-migrate.manifest"};

TEST_F(ReplaceTest, KeepsTheFormerAsABackup) {
  const auto former = snapshotOf(path("out"));
  const CommandResult result = replace("out/");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
  EXPECT_NE(result.out.find("\nresult: out/\n  what was there is now in " +
                            backup() + "\n   "),
            std::string::npos)
      << result.out;
  EXPECT_EQ(namesIn(path("out")), kWritten);
  EXPECT_EQ(snapshotOf(path(backup())), former);
  EXPECT_EQ(namesIn(root()), (Names{"new", "old", "out", backup()}));
}

TEST_F(ReplaceTest, MakesADirectoryWhereThereIsNone) {
  fs::remove_all(path("out"));
  EXPECT_EQ(replace().status, 0);
  EXPECT_EQ(namesIn(path("out")), kWritten);
  fs::remove_all(path("out"));
  fs::create_directory(path("out"));
  EXPECT_EQ(replace().status, 0);
  EXPECT_EQ(namesIn(path("out")), kWritten);
  EXPECT_EQ(namesIn(root()), (Names{"new", "old", "out"}));
}

TEST_F(ReplaceTest, ReplacesWhatALinkLeadsTo) {
  fs::create_directory(path("dir"));
  fs::rename(path("out"), path("dir/real"));
  fs::create_directory_symlink("dir/real", path("out"));
  EXPECT_EQ(replace().status, 0);
  EXPECT_TRUE(fs::is_symlink(path("out")));
  EXPECT_EQ(namesIn(path("dir/real")), kWritten);
  const Names backups = backupsOf(path("dir/real"));
  ASSERT_EQ(backups.size(), 1U);
  EXPECT_EQ(namesIn(path("dir/" + backups[0])), Names{"V3.user.at"});
}

// A server may need what else lies in its schema directory.
TEST_F(ReplaceTest, KeepsOtherFiles) {
  write("out/notes", "of the site\n");
  write("out/V3.user.at~", "by an editor\n");
  fs::create_directories(path("out/more/deep"));
  write("out/more/deep/file", "text");
  fs::create_symlink("../notes", path("out/more/link"));
  fs::create_symlink("nowhere", path("out/dangling"));
  fs::permissions(path("out/notes"), fs::perms(0640));
  fs::permissions(path("out/more"), fs::perms(0700));
  ASSERT_EQ(setxattr(path("out/notes").c_str(), "user.origin", "site", 4, 0),
            0);
  fs::last_write_time(path("out/notes"),
                      fs::file_time_type() - std::chrono::hours(24));
  auto former = snapshotOf(path("out"));

  const CommandResult result = replace();
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.out.find("  kept from there: V3.user.at~\n"
                            "  kept from there: dangling\n"
                            "  kept from there: more/\n"
                            "  kept from there: notes\n"),
            std::string::npos)
      << result.out;
  EXPECT_EQ(snapshotOf(path(backup())), former);
  auto made = snapshotOf(path("out"));
  for (const std::string &name : kWritten) {
    EXPECT_EQ(made.erase(name), 1U);
  }
  former.erase("V3.user.at");
  EXPECT_EQ(made, former);
  char value[8] = "";
  EXPECT_EQ(
      getxattr(path("out/notes").c_str(), "user.origin", value, sizeof value),
      4);
  EXPECT_STREQ(value, "site");
  // The copy is no link to the backup's file.
  EXPECT_NE(statusOf("out/notes").st_ino, statusOf(backup() + "/notes").st_ino);
}

TEST_F(ReplaceTest, KeepsModeAndOwner) {
  const bool isRoot = geteuid() == 0;
  const auto set = [&](const std::string &name, uid_t owner, mode_t mode) {
    if (isRoot) {
      ASSERT_EQ(chown(path(name).c_str(), owner, owner + 1), 0);
    }
    ASSERT_EQ(chmod(path(name).c_str(), mode), 0);
  };
  set("out", 1000, 02750);
  set("out/V3.user.at", 2000, 0604);
  ASSERT_EQ(
      setxattr(path("out/V3.user.at").c_str(), "user.origin", "site", 4, 0), 0);
  EXPECT_EQ(replace().status, 0);
  const auto expectKept = [&](const std::string &name, uid_t owner,
                              mode_t mode) {
    const struct stat status = statusOf(name);
    EXPECT_EQ(status.st_mode & 07777U, mode) << name;
    if (isRoot) {
      EXPECT_EQ(status.st_uid, owner) << name;
      EXPECT_EQ(status.st_gid, owner + 1) << name;
    }
  };
  const mode_t mask = umask(0);
  umask(mask);
  expectKept("out", 1000, 02750);
  expectKept("out/V3.user.at", 2000, 0604);
  // What is new belongs to whom the directory belongs.
  expectKept("out/V3.user.oc", 1000, 0666 & ~mask);
  expectKept("out/schema-migrate.manifest", 1000, 0666 & ~mask);
  EXPECT_EQ(getxattr(path("out/V3.user.at").c_str(), "user.origin", nullptr, 0),
            4);
}

TEST_F(ReplaceTest, KeepsAccessListsAndTakesNoOthers) {
  const auto get = [&](const std::string &name, const char *list) {
    char value[100];
    const ssize_t length =
        getxattr(path(name).c_str(), list, value, sizeof value);
    return length < 0 ? "none"
                      : std::string(value, static_cast<std::size_t>(length));
  };
  write("out/V3.user.oc", "");
  write("out/notes", "");
  // What is made in the root gets the list of the root.
  if (!setAccessList(path("out/V3.user.at"), kAccess) ||
      !setAccessList(path("out/notes"), kAccess) ||
      !setAccessList(root(), kDefault)) {
    GTEST_SKIP() << "no access lists here";
  }
  const CommandResult result = replace();
  EXPECT_EQ(result.status, 0) << result.error;
  EXPECT_EQ(get("out/V3.user.at", kAccess), kAccessList);
  EXPECT_EQ(get("out/notes", kAccess), kAccessList);
  EXPECT_EQ(get("out/V3.user.oc", kAccess), "none");
  EXPECT_EQ(get("out", kAccess), "none");
  EXPECT_EQ(get("out", kDefault), "none");
}

TEST_F(ReplaceTest, RefusesWhatBelongsToOthersAndCannotBeKeptSo) {
  if (geteuid() != 0 || prctl(PR_CAPBSET_READ, CAP_SETPCAP) != 1) {
    GTEST_SKIP() << "owners cannot be changed here";
  }
  ASSERT_EQ(chown(path("out/V3.user.at").c_str(), 2000, 2001), 0);
  const auto before = snapshotOf(root());
  const CommandResult result = run(
      {"apply", "--old", "old", "--new", "new", "--out", "out", "--replace"},
      [] { prctl(PR_CAPBSET_DROP, CAP_CHOWN); });
  EXPECT_EQ(result.status, kFileError);
  EXPECT_EQ(result.error,
            "out/V3.user.at: error: cannot keep the owner and group: Operation "
            "not permitted\n");
  EXPECT_EQ(snapshotOf(root()), before);
}

// A schema file that the result does not have is in the backup alone, and so is
// the former manifest.
TEST_F(ReplaceTest, KeepsNoSchemaFile) {
  write("out/V3.config.at", "# former\n");
  write("out/schema-migrate.manifest", "# former\n");
  EXPECT_EQ(replace().status, 0);
  EXPECT_EQ(namesIn(path("out")), kWritten);
  EXPECT_NE(read("out/schema-migrate.manifest"), "# former\n");
  EXPECT_EQ(namesIn(path(backup())),
            (Names{"V3.config.at", "V3.user.at", "schema-migrate.manifest"}));
}

TEST_F(ReplaceTest, RefusesWhatCannotBeCopied) {
  ASSERT_EQ(mkfifo(path("out/fifo").c_str(), 0600), 0);
  EXPECT_EQ(refusal(),
            "out/fifo: error: cannot carry this over: expected a file, a "
            "directory or a link, found something else\n");
}

TEST_F(ReplaceTest, RefusesWhatIsNoSchemaDirectory) {
  fs::remove(path("out/V3.user.at"));
  write("out/notes", "of the site\n");
  EXPECT_EQ(refusal(),
            "out: error: expected a schema directory to replace (V3.user.at "
            "and so on), found other files only\n");
  EXPECT_EQ(refusal("out/notes"),
            "out/notes: error: expected nothing or a directory there, found "
            "something else\n");
}

TEST_F(ReplaceTest, RefusesTheInputs) {
  EXPECT_EQ(refusal("new", kUsage),
            "new: error: expected a directory outside new, found one inside\n");
  EXPECT_EQ(refusal(".", kUsage),
            "old: error: expected a directory outside ., found one inside\n");
  EXPECT_EQ(refusal("/", kUsage),
            "old: error: expected a directory outside /, found one inside\n");
}

// What is not replaced hides nothing of the former.
TEST_F(ReplaceTest, ChangesNothingWhenTheMigrationFails) {
  write("old/V3.user.oc",
        "objectclasses=( 2.1 NAME 'Top' DESC 'x' ABSTRACT )\n");
  EXPECT_EQ(refusal("out", kFindings)
                .find("old/V3.user.oc:1:17: error: [NAME-OTHER-OID] "),
            0U);
}

TEST_F(ReplaceTest, TheBackupOfALinkedDirectoryLiesWhereTheDirectoryDoes) {
  fs::create_directories(path("far/real"));
  write("far/real/V3.user.at", "# former\n");
  fs::create_directory_symlink("far/real", path("link"));
  const CommandResult result = replace("link");
  EXPECT_EQ(result.status, 0);
  const Names all = backupsOf(path("far/real"));
  ASSERT_EQ(all.size(), 1U);
  EXPECT_NE(result.out.find("\nresult: link\n  what was there is now in far/" +
                            all[0] + '\n'),
            std::string::npos)
      << result.out;
}

}  // namespace
