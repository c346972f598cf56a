// The faults of ApplyFaultTest where nothing is replaced: a new directory, an
// empty one, and a backup that comes back.
#include <gtest/gtest.h>

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
  // Prepares, lets the n-th call of the command fail, and has `check` look at
  // what is there, for each n and error.
  void sweep(const Arguments &arguments, const std::function<void()> &prepare,
             const std::function<void(const CommandResult &)> &check) const {
    const std::string call = GetParam();
    if (isSanitized() && call == "write") {
      return;  // a sanitizer asks by writing whether memory can be read
    }
    prepare();
    const int last = callsOf(call, arguments);
    for (const std::string error : {"EIO", "ENOSPC", "EDQUOT"}) {
      for (int n = callsToLoad(call) + 1; n <= last && !HasFailure();
           n += stepOfSweep()) {
        const std::string fault =
            call + ":error=" + error + ":when=" + std::to_string(n);
        SCOPED_TRACE(fault);
        prepare();
        const auto old = snapshotOf(path("old"));
        const auto release = snapshotOf(path("new"));
        const CommandResult result = runWithFault(fault, arguments);
        EXPECT_TRUE(result.status == kDone || result.status == kFileError)
            << result.status << ' ' << result.error;
        EXPECT_EQ(result.status == kDone,
                  result.error.find("error: ") == std::string::npos)
            << result.error;
        check(result);
        EXPECT_EQ(snapshotOf(path("old")), old);
        EXPECT_EQ(snapshotOf(path("new")), release);
      }
    }
  }
};

TEST_P(CreateFaultTest, CreatesAWholeDirectoryOrNone) {
  removeOutAndBackups();
  EXPECT_EQ(run(kCreate).status, kDone);
  const Contents made = contentsOf(path("out"));
  for (const bool isThere : {false, true}) {
    SCOPED_TRACE(isThere);
    const auto prepare = [&] {
      removeOutAndBackups();
      if (isThere) {
        fs::create_directory(path("out"));
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
