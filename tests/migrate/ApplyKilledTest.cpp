// Runs that are killed at each of their system calls. Whatever has happened
// until then, the inputs are untouched, the output directory is the whole
// former or the whole new one, and the next run tidies up and succeeds.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "FaultTesting.h"

namespace fs = std::filesystem;

namespace {

const Arguments kApply = {"apply", "--old", "old", "--new",
                          "new",   "--out", "out"};
const Arguments kReplace = {"apply", "--old", "old", "--new",
                            "new",   "--out", "out", "--replace"};
const Arguments kRestore = {"restore", "--out", "out"};

class ApplyKilledTest : public FaultTest {
 protected:
  // Prepares, kills the command at its n-th call of each kind, and has `check`
  // look at what is there, for n = 1, 2, ... until a run completes. The number
  // of runs that were killed.
  int sweep(const Arguments &calls, const Arguments &arguments,
            const std::function<void()> &prepare,
            const std::function<void()> &check) const {
    int killed = 0;
    for (const std::string &call : calls) {
      for (int n = callsToLoad(call) + 1;; ++n) {
        const std::string fault =
            call + ":signal=KILL:when=" + std::to_string(n);
        SCOPED_TRACE(fault);
        removeOutAndBackups();
        prepare();
        const auto old = snapshotOf(path("old"));
        const auto release = snapshotOf(path("new"));
        const CommandResult result = runWithFault(fault, arguments);
        EXPECT_EQ(snapshotOf(path("old")), old);
        EXPECT_EQ(snapshotOf(path("new")), release);
        check();
        EXPECT_EQ(snapshotOf(path("old")), old);
        EXPECT_EQ(snapshotOf(path("new")), release);
        if (result.status != CommandResult::kKilled) {
          EXPECT_EQ(result.status, 0) << result.error;
          break;
        }
        if (HasFailure()) {
          return killed;
        }
        ++killed;
      }
    }
    return killed;
  }

  // The contents of "out" after a run that is not disturbed.
  Contents resultOf(const Arguments &arguments,
                    const std::function<void()> &prepare) const {
    prepare();
    EXPECT_EQ(run(arguments).status, 0);
    const Contents contents = contentsOf(path("out"));
    return contents;
  }

  void makeFormer() const {
    fs::create_directory(path("out"));
    write("out/V3.user.at", "# former\n");
    write("out/notes", "of the site\n");
  }
};

TEST_F(ApplyKilledTest, MakesAWholeDirectoryOrNone) {
  const Contents made = resultOf(kApply, [] {});
  const Contents none = {{"not there", ""}};
  const int killed = sweep(
      kChangingCalls, kApply, [] {},
      [&] {
        const Contents now = contentsOf(path("out"));
        EXPECT_TRUE(now == none || now == made);
        EXPECT_EQ(run(kApply).status, now == made ? 2 : 0);
        EXPECT_EQ(contentsOf(path("out")), made);
        EXPECT_EQ(namesIn(root()), (Arguments{"new", "old", "out"}));
      });
  EXPECT_GT(killed, 100);
}

TEST_F(ApplyKilledTest, FillsAnEmptyDirectoryWhollyOrNotAtAll) {
  const auto prepare = [this] { fs::create_directory(path("out")); };
  const Contents made = resultOf(kApply, prepare);
  const int killed =
      sweep({"chmod", "flock", "fsync", "mkdir", "rename", "unlink"}, kApply,
            prepare, [&] {
              const Contents now = contentsOf(path("out"));
              EXPECT_TRUE(now == Contents() || now == made);
              EXPECT_EQ(run(kApply).status, now == made ? 2 : 0);
              EXPECT_EQ(contentsOf(path("out")), made);
              EXPECT_EQ(namesIn(root()), (Arguments{"new", "old", "out"}));
            });
  EXPECT_GT(killed, 10);
}

TEST_F(ApplyKilledTest, ReplacesAWholeDirectoryByAWholeOne) {
  const auto prepare = [&] { makeFormer(); };
  const Contents made = resultOf(kReplace, prepare);
  const Contents former = {{"V3.user.at", "# former\n"},
                           {"notes", "of the site\n"}};
  EXPECT_EQ(backups(), std::vector<Contents>{former});
  const int killed = sweep(kChangingCalls, kReplace, prepare, [&] {
    const Contents now = contentsOf(path("out"));
    EXPECT_TRUE(now == former || now == made);
    EXPECT_EQ(run(kReplace).status, 0);
    EXPECT_EQ(contentsOf(path("out")), made);
    EXPECT_EQ(backups(), now == former ? std::vector<Contents>{former}
                                       : std::vector<Contents>({former, made}));
    EXPECT_EQ(plainNames(), (Arguments{"new", "old", "out"}));
  });
  EXPECT_GT(killed, 100);
}

TEST_F(ApplyKilledTest, RestoresAWholeDirectory) {
  for (const bool isThere : {true, false}) {
    SCOPED_TRACE(isThere);
    const Contents backup = {{"V3.user.at", "# former\n"},
                             {"notes", "of the site\n"}};
    const Contents failed = {{"V3.user.oc", "# failed\n"}};
    const auto prepare = [&] {
      makeFormer();
      fs::rename(path("out"), path("out.backup-20000101-000000"));
      if (isThere) {
        fs::create_directory(path("out"));
        write("out/V3.user.oc", "# failed\n");
      }
    };
    const int killed = sweep(kChangingCalls, kRestore, prepare, [&] {
      const Contents now = contentsOf(path("out"));
      EXPECT_TRUE(now == backup || now == failed || !isThere);
      // What a listing needs is done by any next run.
      const CommandResult next =
          run({"restore", "--out", "out", "--backup", "out.backup-1"});
      EXPECT_EQ(next.status, 2);
      EXPECT_EQ(contentsOf(path("out")), now);
      std::vector<Contents> rest;
      if (now != backup) {
        rest.push_back(backup);
      } else if (isThere) {
        rest.push_back(failed);
      }
      EXPECT_EQ(backups(), rest);
      Arguments names = {"new", "old"};
      if (now != Contents{{"not there", ""}}) {
        names.push_back("out");
      }
      EXPECT_EQ(plainNames(), names);
    });
    EXPECT_GT(killed, 5);
  }
}

}  // namespace
