// The faults of ApplyFaultTest where nothing is replaced: a new directory, an
// empty one, one beside what a killed run has left, and a backup that comes
// back.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "FaultTesting.h"

namespace fs = std::filesystem;

namespace {

const Arguments kCreate = {"apply", "--old", "old", "--new",
                           "new",   "--out", "out"};
const Arguments kRestore = {"restore", "--out", "out"};

// Each test is for one system call.
class CreateFaultTest : public FaultTest,
                        public testing::WithParamInterface<const char *> {
 protected:
  // Prepares, lets the n-th call of the command fail, with one error after the
  // other, and has `check` look at what is there, for each n.
  void sweep(const Arguments &arguments, const std::function<void()> &prepare,
             const std::function<void(const CommandResult &)> &check) const {
    const std::string call = GetParam();
    if (isSanitized() && call == "write") {
      return;  // a sanitizer asks by writing whether memory can be read
    }
    constexpr const char *kErrors[] = {"EIO", "ENOSPC", "EDQUOT"};
    prepare();
    forEach(numbersOf(call, arguments), [&](int n) {
      const std::string fault =
          call + ":error=" + kErrors[n % 3] + ":when=" + std::to_string(n);
      SCOPED_TRACE(fault);
      prepare();
      const auto old = snapshotOf(path("old"));
      const auto release = snapshotOf(path("new"));
      const CommandResult result = runWithFault(fault, arguments);
      EXPECT_TRUE(result.status == kDone || result.status == kFileError)
          << result.status << ' ' << result.error;
      const std::string error = replaceAll(result.error,
                                           ".out.partial-new: note: removed; a "
                                           "run that was killed had left it\n",
                                           "");
      EXPECT_EQ(std::count(error.begin(), error.end(), '\n'),
                result.status == kDone ? 0 : 1)
          << error;
      EXPECT_EQ(error.find("error: ") == std::string::npos,
                result.status == kDone)
          << error;
      check(result);
      EXPECT_EQ(snapshotOf(path("old")), old);
      EXPECT_EQ(snapshotOf(path("new")), release);
    });
  }
};

TEST_P(CreateFaultTest, CreatesAWholeDirectoryOrNone) {
  removeOutAndBackups();
  EXPECT_EQ(run(kCreate).status, kDone);
  const Contents made = contentsOf(path("out"));
  for (const std::string what : {"nothing", "empty", "left over"}) {
    SCOPED_TRACE(what);
    const auto prepare = [&] {
      removeOutAndBackups();
      if (what == "empty") {
        fs::create_directory(path("out"));
      } else if (what == "left over") {
        makeLeftOver();
      }
    };
    prepare();
    const Contents former = contentsOf(path("out"));
    sweep(kCreate, prepare, [&](const CommandResult &result) {
      const Contents now = contentsOf(path("out"));
      EXPECT_TRUE(now == made || (now == former && result.status != kDone));
      if (result.status != kDone) {
        EXPECT_EQ(result.error.find("complete") != std::string::npos,
                  now == made)
            << result.error;
      }
      if (!isNewState()) {
        return;
      }
      EXPECT_EQ(run(kCreate).status, now == made ? kFileError : kDone);
      EXPECT_EQ(contentsOf(path("out")), made);
      EXPECT_EQ(namesIn(root()), (Arguments{"new", "old", "out"}));
    });
  }
}

TEST_P(CreateFaultTest, RestoresAWholeDirectoryOrNone) {
  makeFormer();
  const Contents backup = contentsOf(path("out"));
  const Contents failed = {{"V3.user.oc", "# failed\n"}};
  const auto prepare = [&] {
    makeFormer();
    fs::rename(path("out"), path("out.backup-20000101-000000"));
    fs::create_directory(path("out"));
    write("out/V3.user.oc", "# failed\n");
  };
  sweep(kRestore, prepare, [&](const CommandResult &result) {
    const Contents now = contentsOf(path("out"));
    EXPECT_TRUE(now == backup || (now == failed && result.status != kDone));
    if (!isNewState()) {
      return;
    }
    EXPECT_EQ(
        run({"restore", "--out", "out", "--backup", "out.backup-1"}).status,
        kFileError);
    EXPECT_EQ(contentsOf(path("out")), now);
    EXPECT_EQ(backups(),
              std::vector<Contents>{now == backup ? failed : backup});
    EXPECT_EQ(plainNames(), (Arguments{"new", "old", "out"}));
  });
}

INSTANTIATE_TEST_SUITE_P(Calls, CreateFaultTest,
                         testing::Values("chmod", "fchmod", "flock", "fsync",
                                         "mkdir", "rename", "renameat2",
                                         "rmdir", "unlink", "unlinkat",
                                         "write"),
                         callName);

}  // namespace
