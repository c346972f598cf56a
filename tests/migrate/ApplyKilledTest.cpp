// Runs that are killed at each of their system calls after which something else
// is on disk. Whatever has happened until then, the inputs are untouched, the
// output directory is the whole former or the whole new one, and the next run
// tidies up and succeeds.
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
const Arguments kReplace = {"apply", "--old", "old", "--new",
                            "new",   "--out", "out", "--replace"};
const Arguments kRestore = {"restore", "--out", "out"};

// Each test is for one system call.
class ApplyKilledTest : public FaultTest,
                        public testing::WithParamInterface<const char *> {
 protected:
  // Prepares, kills the command at the n-th call, and has `check` look at what
  // is there, for each n.
  void sweep(const Arguments &arguments, const std::function<void()> &prepare,
             const std::function<void()> &check) const {
    const std::string call = GetParam();
    const auto prepareAll = [&] {
      removeOutAndBackups();
      prepare();
    };
    prepareAll();
    // A file that is opened as it is stays as it is.
    const std::vector<int> numbers =
        numbersOf(call, arguments, call == "openat" ? "O_CREAT" : "");
    forEach(numbers, [&](int n) {
      const std::string fault = call + ":signal=KILL:when=" + std::to_string(n);
      SCOPED_TRACE(fault);
      prepareAll();
      const auto old = snapshotOf(path("old"));
      const auto release = snapshotOf(path("new"));
      const CommandResult result = runWithFault(fault, arguments);
      EXPECT_EQ(result.status, CommandResult::kKilled) << result.error;
      check();
      EXPECT_EQ(snapshotOf(path("old")), old);
      EXPECT_EQ(snapshotOf(path("new")), release);
    });
  }

  // The contents of "out" after a run that is not disturbed.
  Contents resultOf(const Arguments &arguments,
                    const std::function<void()> &prepare) const {
    prepare();
    EXPECT_EQ(run(arguments).status, 0);
    return contentsOf(path("out"));
  }
};

TEST_P(ApplyKilledTest, MakesAWholeDirectoryOrNone) {
  const Contents made = resultOf(kCreate, [] {});
  const auto check = [&] {
    const Contents now = contentsOf(path("out"));
    EXPECT_TRUE(now == kNotThere || now == made);
    if (!isNewState()) {
      return;
    }
    EXPECT_EQ(run(kCreate).status, now == made ? kFileError : kDone);
    EXPECT_EQ(contentsOf(path("out")), made);
    EXPECT_EQ(namesIn(root()), (Arguments{"new", "old", "out"}));
  };
  sweep(
      kCreate, [] {}, check);
  sweep(
      kCreate, [this] { makeLeftOver(); }, check);
}

TEST_P(ApplyKilledTest, ReplacesAWholeDirectoryByAWholeOne) {
  const auto prepare = [this] { makeFormer(); };
  prepare();
  const Contents former = contentsOf(path("out"));
  const Contents made = resultOf(kReplace, prepare);
  EXPECT_EQ(backups(), std::vector<Contents>{former});
  sweep(kReplace, prepare, [&] {
    const Contents now = contentsOf(path("out"));
    EXPECT_TRUE(now == former || now == made);
    if (!isNewState()) {
      return;
    }
    EXPECT_EQ(run(kReplace).status, 0);
    EXPECT_EQ(contentsOf(path("out")), made);
    EXPECT_EQ(backups(), now == former ? std::vector<Contents>{former}
                                       : std::vector<Contents>({former, made}));
    EXPECT_EQ(plainNames(), (Arguments{"new", "old", "out"}));
  });
}

INSTANTIATE_TEST_SUITE_P(Calls, ApplyKilledTest,
                         testing::ValuesIn(kWritingCalls), callName);

// The calls that restore and the filling of an empty directory are about.
class FewKilledTest : public ApplyKilledTest {};

TEST_P(FewKilledTest, FillsAnEmptyDirectoryWhollyOrNotAtAll) {
  const auto prepare = [this] { fs::create_directory(path("out")); };
  const Contents made = resultOf(kCreate, prepare);
  sweep(kCreate, prepare, [&] {
    const Contents now = contentsOf(path("out"));
    EXPECT_TRUE(now == Contents() || now == made);
    EXPECT_EQ(run(kCreate).status, now == made ? kFileError : kDone);
    EXPECT_EQ(contentsOf(path("out")), made);
    EXPECT_EQ(namesIn(root()), (Arguments{"new", "old", "out"}));
  });
}

TEST_P(FewKilledTest, RestoresAWholeDirectory) {
  makeFormer();
  const Contents backup = contentsOf(path("out"));
  const Contents failed = {{"V3.user.oc", "# failed\n"}};
  for (const bool isThere : {true, false}) {
    SCOPED_TRACE(isThere);
    const auto prepare = [&] {
      makeFormer();
      fs::rename(path("out"), path("out.backup-20000101-000000"));
      if (isThere) {
        fs::create_directory(path("out"));
        write("out/V3.user.oc", "# failed\n");
      }
    };
    sweep(kRestore, prepare, [&] {
      const Contents now = contentsOf(path("out"));
      EXPECT_TRUE(now == backup || now == (isThere ? failed : kNotThere));
      // A run that is refused tidies up, too.
      EXPECT_EQ(
          run({"restore", "--out", "out", "--backup", "out.backup-1"}).status,
          kFileError);
      EXPECT_EQ(contentsOf(path("out")), now);
      std::vector<Contents> rest;
      if (now != backup) {
        rest.push_back(backup);
      } else if (isThere) {
        rest.push_back(failed);
      }
      EXPECT_EQ(backups(), rest);
      Arguments names = {"new", "old"};
      if (now != kNotThere) {
        names.emplace_back("out");
      }
      EXPECT_EQ(plainNames(), names);
    });
  }
}

INSTANTIATE_TEST_SUITE_P(Calls, FewKilledTest,
                         testing::Values("chmod", "mkdir", "rename",
                                         "renameat2", "unlink"),
                         callName);

}  // namespace
