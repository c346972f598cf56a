#include "OutputDirectory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "MigrateTesting.h"

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

constexpr char kNotFree[] =
    "expected nothing or an empty directory there, found something; the result "
    "goes to a new directory";

void writeFile(const fs::path &path, const std::string &text) {
  std::ofstream(path) << text;
}

// In a directory of its own, which is empty but for what a test puts there.
class OutputDirectoryTest : public MigrateTest {
 protected:
  OutputDirectoryTest() {
    fs::remove(path("old"));
    fs::remove(path("new"));
  }

  // Where the files of `target` are made first.
  static std::string workingName(const std::string &target) {
    return "." + target + ".partial-new";
  }
  // The file that is locked.
  static std::string lockName(const std::string &target) {
    return "." + target + ".partial-lock";
  }

  // What the constructor throws; it must change nothing.
  std::string refusal(const fs::path &target) const {
    const auto before = snapshotOf(root());
    const std::string trouble =
        relative(troubleOf([&target] { const OutputDirectory out(target); }));
    EXPECT_EQ(snapshotOf(root()), before);
    return trouble;
  }

  // What commit() throws; it must change nothing but the working directory.
  std::string commitTrouble(OutputDirectory *out) const {
    const auto state = [&] {
      auto all = snapshotOf(root());
      const std::string working = out->working().filename().string();
      all.erase(all.lower_bound(working), all.lower_bound(working + "~"));
      return all;
    };
    const auto before = state();
    const std::string trouble = relative(troubleOf([out] { out->commit(); }));
    EXPECT_EQ(state(), before);
    return trouble;
  }
};

TEST_F(OutputDirectoryTest, MakesAnEmptyDirectoryBesideTheTarget) {
  const OutputDirectory out(path("out"));
  EXPECT_EQ(out.working(), fs::canonical(root()) / workingName("out"));
  EXPECT_EQ(namesIn(root()), (Names{lockName("out"), workingName("out")}));
  EXPECT_EQ(namesIn(out.working()), Names{"schema-migrate.tmp"});
  EXPECT_EQ(out.scratch(), out.working() / "schema-migrate.tmp");
  EXPECT_EQ(fs::status(out.working()).permissions(), fs::perms::owner_all);
  EXPECT_EQ(out.notes(), Names());
  EXPECT_EQ(out.former(), nullptr);
}

TEST_F(OutputDirectoryTest, RemovesWhatWasMadeUnlessCommitted) {
  {
    const OutputDirectory out(path("out"));
    writeFile(out.working() / "file", "text");
    fs::create_directory(out.working() / "directory");
    writeFile(out.working() / "directory/file", "text");
  }
  EXPECT_EQ(namesIn(root()), Names());
}

TEST_F(OutputDirectoryTest, AppearsWhenCommitted) {
  {
    OutputDirectory out(path("out"));
    writeFile(out.working() / "one", "text\n");
    writeFile(out.working() / "two", "");
    EXPECT_FALSE(fs::exists(path("out")));
    out.commit();
    EXPECT_EQ(out.working(), fs::path());
  }
  EXPECT_EQ(namesIn(root()), Names{"out"});
  EXPECT_EQ(namesIn(path("out")), (Names{"one", "two"}));
  EXPECT_EQ(read("out/one"), "text\n");
  EXPECT_EQ(read("out/two"), "");
}

// As any directory that is made, it is open to whom the umask leaves it.
TEST_F(OutputDirectoryTest, HasThePermissionsThatTheUmaskLeaves) {
  const mode_t before = umask(027);
  OutputDirectory(path("out")).commit();
  umask(before);
  EXPECT_EQ(fs::status(path("out")).permissions(), fs::perms(0750));
}

TEST_F(OutputDirectoryTest, MayBeEmptyWhenCommitted) {
  OutputDirectory(path("out")).commit();
  EXPECT_EQ(namesIn(root()), Names{"out"});
  EXPECT_EQ(namesIn(path("out")), Names());
}

TEST_F(OutputDirectoryTest, TakesThePlaceOfAnEmptyDirectory) {
  fs::create_directory(path("out"));
  OutputDirectory out(path("out"));
  writeFile(out.working() / "file", "text");
  EXPECT_EQ(namesIn(path("out")), Names());
  out.commit();
  EXPECT_EQ(namesIn(root()), (Names{lockName("out"), "out"}));
  EXPECT_EQ(namesIn(path("out")), Names{"file"});
}

TEST_F(OutputDirectoryTest, LeavesAnEmptyDirectoryUnlessCommitted) {
  fs::create_directory(path("out"));
  const auto before = snapshotOf(root());
  {
    const OutputDirectory out(path("out"));
    writeFile(out.working() / "file", "text");
  }
  EXPECT_EQ(snapshotOf(root()), before);
}

TEST_F(OutputDirectoryTest, TakesATargetWithASlashAtItsEnd) {
  for (const bool exists : {false, true}) {
    SCOPED_TRACE(exists);
    fs::remove_all(path("out"));
    if (exists) {
      fs::create_directory(path("out"));
    }
    {
      OutputDirectory out(path("out") / "");
      EXPECT_EQ(out.working().filename(), workingName("out"));
      writeFile(out.working() / "file", "text");
      out.commit();
    }
    EXPECT_EQ(namesIn(root()), Names{"out"});
    EXPECT_EQ(namesIn(path("out")), Names{"file"});
  }
}

TEST_F(OutputDirectoryTest, ResolvesDotsInTheTarget) {
  {
    OutputDirectory out(path("missing/../out/."));
    EXPECT_EQ(namesIn(root()), (Names{lockName("out"), workingName("out")}));
    out.commit();
  }
  EXPECT_EQ(namesIn(root()), Names{"out"});
}

// The working directory must lie on the file system of the target.
TEST_F(OutputDirectoryTest, FollowsSymbolicLinks) {
  fs::create_directories(path("real/empty"));
  fs::create_directory_symlink("real", path("link"));
  fs::create_directory_symlink("real/empty", path("link-to-empty"));
  const Names top{"link", "link-to-empty", "real"};
  {
    OutputDirectory out(path("link/out"));
    EXPECT_EQ(namesIn(path("real")),
              (Names{lockName("out"), workingName("out"), "empty"}));
    out.commit();
  }
  EXPECT_EQ(namesIn(path("real")), (Names{"empty", "out"}));
  {
    OutputDirectory out(path("link-to-empty"));
    EXPECT_EQ(namesIn(path("real")),
              (Names{lockName("empty"), workingName("empty"), "empty", "out"}));
    writeFile(out.working() / "file", "text");
    out.commit();
  }
  EXPECT_TRUE(fs::is_symlink(path("link-to-empty")));
  EXPECT_EQ(namesIn(path("real/empty")), Names{"file"});
  EXPECT_EQ(namesIn(root()), top);
}

TEST_F(OutputDirectoryTest, RefusesATargetThatIsNotFree) {
  fs::create_directory(path("full"));
  write("full/file", "");
  fs::create_directory_symlink("full", path("link"));
  fs::create_symlink("nowhere", path("dangling"));
  write("file", "");
  ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
  for (const char *name : {"full", "full/file", "dangling", "file", "fifo"}) {
    EXPECT_EQ(refusal(path(name)), std::string(name) + ": error: " + kNotFree);
  }
  EXPECT_EQ(refusal(path("link")), std::string("full: error: ") + kNotFree);
  EXPECT_EQ(refusal(path("full/")), std::string("full: error: ") + kNotFree);
  EXPECT_EQ(refusal("/"), std::string("/: error: ") + kNotFree);
}

TEST_F(OutputDirectoryTest, RefusesATargetWithoutAParent) {
  write("file", "");
  EXPECT_EQ(refusal(path("missing/out")),
            "missing: error: cannot read the directory: No such file or "
            "directory");
  EXPECT_EQ(refusal(path("file/out")),
            "file: error: cannot read the directory: Not a directory");
  EXPECT_EQ(refusal("/proc/out"),
            "/proc/out: error: cannot make a file beside it: No such file or "
            "directory");
}

TEST_F(OutputDirectoryTest, RefusesALinkThatLeadsNowhere) {
  fs::create_symlink("loop", path("loop"));
  EXPECT_EQ(refusal(path("loop")),
            "loop: error: Too many levels of symbolic links");
  EXPECT_EQ(refusal(path("loop/out")),
            "loop/out: error: Too many levels of symbolic links");
}

TEST_F(OutputDirectoryTest, LeavesWhatIsOfOtherTargetsAlone) {
  const Names others{".out",
                     ".out.partial-complete-",
                     ".out.partial-complete-12x",
                     ".out.partial-complete-x",
                     ".out.partial-newer",
                     ".out.partial-restore-12",
                     ".out.partial-restore-12-other.backup-1",
                     ".output.partial-new",
                     "x.out.partial-new"};
  for (const std::string &name : others) {
    fs::create_directory(path(name));
    write(name + "/file", "text");
  }
  {
    const OutputDirectory out(path("out"));
    EXPECT_EQ(out.notes(), Names());
  }
  EXPECT_EQ(namesIn(root()), others);
  for (const std::string &name : others) {
    EXPECT_EQ(read(name + "/file"), "text");
  }
}

TEST_F(OutputDirectoryTest, OfTwoForOneTargetTheSecondIsRefused) {
  fs::create_directory_symlink(".", path("link"));
  std::optional<OutputDirectory> first;
  first.emplace(path("out"));
  writeFile(first->working() / "file", "first");
  for (const char *name : {"out", "out/", "link/out"}) {
    EXPECT_EQ(refusal(path(name)),
              "out: error: another run of schema-migrate is writing this "
              "directory");
  }
  OutputDirectory(path("other")).commit();
  first->commit();
  first.reset();
  EXPECT_EQ(refusal(path("out")), std::string("out: error: ") + kNotFree);
  EXPECT_EQ(namesIn(root()), (Names{"link", "other", "out"}));
  EXPECT_EQ(read("out/file"), "first");
}

TEST_F(OutputDirectoryTest, FailsToCommitWhenAFileHasTakenThePlace) {
  std::optional<OutputDirectory> out;
  out.emplace(path("out"));
  write("out", "text");
  EXPECT_EQ(commitTrouble(&*out),
            "out: error: cannot create the directory: File exists");
  out.reset();
  EXPECT_EQ(namesIn(root()), Names{"out"});
  EXPECT_EQ(read("out"), "text");
}

TEST_F(OutputDirectoryTest, FailsToCommitWhenADirectoryHasTakenThePlace) {
  std::optional<OutputDirectory> out;
  out.emplace(path("out"));
  fs::create_directory(path("out"));
  EXPECT_EQ(commitTrouble(&*out),
            "out: error: cannot create the directory: File exists");
  out.reset();
  EXPECT_EQ(namesIn(root()), Names{"out"});
}

TEST_F(OutputDirectoryTest, FailsToCommitWhenAnEmptyDirectoryIsNoLonger) {
  fs::create_directory(path("out"));
  std::optional<OutputDirectory> out;
  out.emplace(path("out"));
  write("out/file", "text");
  EXPECT_EQ(commitTrouble(&*out),
            "out: error: was changed while the result was made; run it again "
            "when nothing changes the directory");
  out.reset();
  EXPECT_EQ(namesIn(root()), Names{"out"});
  EXPECT_EQ(read("out/file"), "text");
}

TEST_F(OutputDirectoryTest, FailsToCommitWhenTheFormerIsChanged) {
  fs::create_directory(path("out"));
  write("out/V3.user.at", "former");
  fs::create_directory(path("out/more"));
  for (const char *name : {"V3.user.at", "V3.user.oc", "more/file"}) {
    std::optional<OutputDirectory> out;
    out.emplace(path("out"), Existing::kReplace);
    write(std::string("out/") + name, "by somebody else");
    EXPECT_EQ(commitTrouble(&*out),
              "out: error: was changed while the result was made; run it again "
              "when nothing changes the directory");
    out.reset();
    EXPECT_EQ(namesIn(root()), Names{"out"});
    EXPECT_EQ(read(std::string("out/") + name), "by somebody else");
  }
  OutputDirectory out(path("out"), Existing::kReplace);
  out.commit();
  EXPECT_EQ(namesIn(path("out")), Names());
  EXPECT_EQ(namesIn(path(out.backup())),
            (Names{"V3.user.at", "V3.user.oc", "more"}));
}

TEST_F(OutputDirectoryTest, KeepsModeAndOwnerOfAnEmptyDirectory) {
  fs::create_directory(path("out"));
  ASSERT_EQ(chmod(path("out").c_str(), 02750), 0);
  const bool isRoot = geteuid() == 0;
  if (isRoot) {
    ASSERT_EQ(chown(path("out").c_str(), 1234, 1235), 0);
    ASSERT_EQ(chmod(path("out").c_str(), 02750), 0);
  }
  {
    OutputDirectory out(path("out"));
    writeFile(out.working() / "V3.user.at", "text");
    out.commit();
  }
  struct stat status {};
  for (const char *name : {"out", "out/V3.user.at"}) {
    ASSERT_EQ(stat(path(name).c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, isRoot ? 1234 : geteuid()) << name;
    EXPECT_EQ(status.st_gid, isRoot ? 1235 : getegid()) << name;
  }
  ASSERT_EQ(stat(path("out").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 02750U);
}

TEST_F(OutputDirectoryTest, FailsToCommitWhenItsFilesAreGone) {
  std::optional<OutputDirectory> out;
  out.emplace(path("out"));
  // Nothing can be written to a directory that is not there any more.
  fs::remove_all(out->working());
  EXPECT_EQ(commitTrouble(&*out),
            workingName("out") +
                ": error: cannot set the mode: No such file or directory");
  out.reset();
  EXPECT_EQ(namesIn(root()), Names());
}

TEST_F(OutputDirectoryTest, LeavesNoFileOpen) {
  const Names before = namesIn("/proc/self/fd");
  {
    OutputDirectory out(path("out"));
    writeFile(out.working() / "file", "text");
    out.commit();
  }
  {
    OutputDirectory out(path("other"));
    fs::remove_all(out.working());
    commitTrouble(&out);
  }
  EXPECT_EQ(namesIn("/proc/self/fd"), before);
}

}  // namespace
