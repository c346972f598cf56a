// Output directories on file systems of their own.
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "MigrateTesting.h"

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

// "disk" is a file system in memory, which only this process and those that it
// starts can see.
class MountTest : public MigrateTest {
 protected:
  MountTest() {
    std::string definitions;
    for (int i = 0; i < 200; ++i) {
      definitions += "attributetypes=( 1.1." + std::to_string(i) + " NAME 'a" +
                     std::to_string(i) + "' DESC 'x' )\n";
    }
    write("old/V3.user.at", definitions);
    write("new/V3.config.at", "# " + std::string(6000, 'x') + "\n");
    writeSmallRelease();
    fs::create_directory(path("disk"));
  }

  void SetUp() override {
    if (unshare(CLONE_NEWNS) != 0 ||
        mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("none", path("disk").c_str(), "tmpfs", 0, "size=4m") != 0) {
      GTEST_SKIP() << "cannot mount a file system: " << std::strerror(errno);
    }
    m_isMounted = true;
  }

  void TearDown() override {
    if (m_isMounted) {
      EXPECT_EQ(umount2(path("disk").c_str(), MNT_DETACH), 0);
    }
  }

  // Mounts it anew, as it is, with other options.
  void remount(unsigned long flags, const char *options) const {
    EXPECT_EQ(mount("none", path("disk").c_str(), "tmpfs", MS_REMOUNT | flags,
                    options),
              0)
        << std::strerror(errno);
  }

  CommandResult apply(const std::string &out, const Names &more = {}) const {
    Names arguments = {"apply", "--old", "old", "--new", "new", "--out", out};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
  }

  const FixedDate m_date;
  bool m_isMounted = false;
};

constexpr char kMounted[] =
    "disk: error: a file system is mounted there, so that it cannot be "
    "replaced; name a directory in it\n";

TEST_F(MountTest, AnotherFileSystemWillDo) {
  EXPECT_EQ(apply("disk/out").error, "");
  EXPECT_EQ(namesIn(path("disk/out")).size(), 9U);
  EXPECT_EQ(apply("disk/out", {"--replace"}).error, "");
  EXPECT_EQ(run({"restore", "--out", "disk/out"}).error, "");
  EXPECT_EQ(namesIn(path("disk")).size(), 2U);
}

TEST_F(MountTest, AMountPointIsNotReplaced) {
  for (const Names &more : {Names(), Names{"--replace"}}) {
    const CommandResult result = apply("disk", more);
    EXPECT_EQ(result.status, kFileError);
    EXPECT_EQ(result.error, kMounted);
  }
  write("disk/V3.user.at", "");
  EXPECT_EQ(apply("disk", {"--replace"}).error, kMounted);
  fs::create_directory(path("disk.backup-20000101-000000"));
  write("disk.backup-20000101-000000/V3.user.at", "");
  const CommandResult result = run({"restore", "--out", "disk"});
  EXPECT_EQ(result.status, kFileError);
  EXPECT_EQ(result.error, kMounted);
  EXPECT_EQ(namesIn(root()),
            (Names{"disk", "disk.backup-20000101-000000", "new", "old"}));
}

// A directory is an input under whatever name it is mounted.
TEST_F(MountTest, AnInputThatIsMountedElsewhereIsAnInput) {
  fs::create_directory(path("mounted"));
  ASSERT_EQ(
      mount(root().c_str(), path("mounted").c_str(), nullptr, MS_BIND, nullptr),
      0);
  const auto before = snapshotOf(path("old"));
  for (const char *out : {"mounted/old/out", "mounted/old"}) {
    const CommandResult result = apply(out, {"--replace"});
    EXPECT_EQ(result.status, kUsage);
    EXPECT_EQ(result.error, std::string(out) +
                                ": error: expected a directory outside old, "
                                "found one inside\n");
  }
  EXPECT_EQ(snapshotOf(path("old")), before);
  EXPECT_EQ(umount(path("mounted").c_str()), 0);
}

// What lies on another file system would not be exchanged, but copied.
TEST_F(MountTest, AFileSystemInTheFormerDirectoryIsNotCarriedOver) {
  fs::create_directories(path("disk/out/deep"));
  write("disk/out/V3.user.at", "# former\n");
  ASSERT_EQ(mount("none", path("disk/out/deep").c_str(), "tmpfs", 0, nullptr),
            0);
  const auto before = snapshotOf(path("disk/out"));
  const CommandResult result = apply("disk/out", {"--replace"});
  EXPECT_EQ(result.status, kFileError);
  EXPECT_EQ(result.error,
            "disk/out/deep: error: cannot carry this over: it is on another "
            "file system\n");
  EXPECT_EQ(snapshotOf(path("disk/out")), before);
  EXPECT_EQ(namesIn(path("disk")), Names{"out"});
}

TEST_F(MountTest, NothingIsWrittenToAReadOnlyFileSystem) {
  fs::create_directory(path("disk/empty"));
  fs::create_directory(path("disk/full"));
  write("disk/full/V3.user.at", "# former\n");
  fs::create_directory(path("disk/full.backup-20000101-000000"));
  remount(MS_RDONLY, nullptr);
  const auto before = snapshotOf(root());
  const auto error = [](const std::string &out) {
    return out +
           ": error: cannot make a file beside it: Read-only file system\n";
  };
  EXPECT_EQ(apply("disk/out").error, error("disk/out"));
  EXPECT_EQ(apply("disk/empty").error, error("disk/empty"));
  EXPECT_EQ(apply("disk/full", {"--replace"}).error, error("disk/full"));
  EXPECT_EQ(run({"restore", "--out", "disk/full"}).error, error("disk/full"));
  EXPECT_EQ(snapshotOf(root()), before);
}

// With room for one more page each time, until there is enough.
TEST_F(MountTest, AFullFileSystemLeavesTheFormer) {
  fs::create_directory(path("disk/out"));
  write("disk/out/V3.user.at", "# former\n");
  write("disk/out/notes", std::string(5000, 'x'));
  const auto before = snapshotOf(path("disk"));
  const auto inputs = snapshotOf(path("old"));
  const long page = sysconf(_SC_PAGESIZE);
  int failures = 0;
  for (long pages = 4;; ++pages) {
    SCOPED_TRACE(pages);
    ASSERT_LT(pages, 100);
    remount(0, ("size=" + std::to_string(pages * page)).c_str());
    const CommandResult result = apply("disk/out", {"--replace"});
    EXPECT_EQ(snapshotOf(path("old")), inputs);
    if (result.status == 0) {
      break;
    }
    ++failures;
    EXPECT_EQ(result.status, kFileError);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.error.find("error: "), std::string::npos);
    EXPECT_LE(std::count(result.error.begin(), result.error.end(), '\n'), 13);
    EXPECT_EQ(snapshotOf(path("disk")), before) << result.error;
  }
  EXPECT_GT(failures, 5);
  EXPECT_EQ(namesIn(path("disk/out")).size(), 10U);
  EXPECT_EQ(namesIn(path("disk")).size(), 2U);
}

}  // namespace
