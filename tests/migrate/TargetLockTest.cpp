#include "TargetLock.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "MigrateTesting.h"

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

constexpr char kOther[] =
    "out: error: another run of schema-migrate is writing this directory";

class TargetLockTest : public MigrateTest {
 protected:
  TargetLockTest() {
    fs::remove(path("old"));
    fs::remove(path("new"));
  }

  std::string refusal() const {
    return relative(troubleOf([this] { const TargetLock lock(path("out")); }));
  }
};

TEST_F(TargetLockTest, ThereIsOneAtATimeForATarget) {
  std::optional<TargetLock> lock;
  lock.emplace(path("out"));
  EXPECT_EQ(refusal(), kOther);
  const TargetLock other(path("other"));
  EXPECT_EQ(namesIn(root()),
            (Names{".other.partial-lock", ".out.partial-lock"}));
  lock.reset();
  EXPECT_EQ(namesIn(root()), Names{".other.partial-lock"});
  lock.emplace(path("out"));
}

TEST_F(TargetLockTest, OfAProcessThatIsKilledEnds) {
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    const TargetLock lock(path("out"));
    const ssize_t written = ::write(ready[1], "x", 1);
    while (written == 1) {
      pause();
    }
  }
  char byte = 0;
  ASSERT_EQ(::read(ready[0], &byte, 1), 1);
  EXPECT_EQ(refusal(), kOther);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_EQ(namesIn(root()), Names{".out.partial-lock"});
  { const TargetLock lock(path("out")); }
  EXPECT_EQ(namesIn(root()), Names());
}

TEST_F(TargetLockTest, NeedsAFileOfItsOwn) {
  EXPECT_EQ(relative(troubleOf([this] { TargetLock lock(path("no/out")); })),
            "no/out: error: cannot make a file beside it: No such file or "
            "directory");
  write("file", "text");
  fs::create_symlink("file", path(".out.partial-lock"));
  EXPECT_EQ(refusal(),
            "out: error: cannot make a file beside it: Too many levels of "
            "symbolic links");
  fs::remove(path(".out.partial-lock"));
  fs::create_directory(path(".out.partial-lock"));
  EXPECT_EQ(refusal(),
            "out: error: cannot make a file beside it: Is a directory");
}

// Many at once, again and again: never two at a time, and nothing is left.
TEST_F(TargetLockTest, IsHeldByOneOfMany) {
  constexpr int kProcesses = 4;
  constexpr int kTimes = 50;
  std::vector<pid_t> children;
  for (int i = 0; i < kProcesses; ++i) {
    children.push_back(fork());
    if (children.back() == 0) {
      for (int held = 0; held < kTimes;) {
        try {
          const TargetLock lock(path("out"));
          // Fails if another one is in here, too.
          if (mkdir(path("held").c_str(), 0777) != 0 ||
              rmdir(path("held").c_str()) != 0) {
            _exit(1);
          }
          ++held;
        } catch (const Trouble &) {
        }
      }
      _exit(0);
    }
  }
  for (const pid_t child : children) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
  }
  EXPECT_EQ(namesIn(root()), Names());
}

}  // namespace
