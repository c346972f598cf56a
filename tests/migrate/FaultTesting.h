// Runs of the command in which a system call fails or kills it.
#ifndef TESTS_MIGRATE_FAULTTESTING_H_
#define TESTS_MIGRATE_FAULTTESTING_H_

#include <stdlib.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "ExitStatus.h"
#include "MigrateTesting.h"
#include "support/Child.h"

using Arguments = std::vector<std::string>;
using Contents = std::map<std::string, std::string>;

// The system calls after which something else is on disk or another process
// may go on. What is killed in between leaves what the next of them finds.
constexpr const char *kChangingCalls[] = {
    "chmod",   "close",  "fchmod",   "flock",     "fsync", "lchown",
    "mkdir",   "openat", "rename",   "renameat2", "rmdir", "setxattr",
    "symlink", "unlink", "unlinkat", "utimensat", "write", "writev",
};

// What a test that is for one system call is named after.
inline std::string callName(const testing::TestParamInfo<const char *> &info) {
  return info.param;
}

// From one number of a call to the next that fails. A sanitizer makes the
// command slow.
inline int stepOfSweep() { return isSanitized() ? 3 : 1; }

// In the new process: makes it a tracer that runs the command.
inline void execTracer(Arguments options, const Arguments &arguments) {
  // The leak checker does not work under a tracer.
  const char *before = getenv("ASAN_OPTIONS");
  const std::string others = before == nullptr ? "" : std::string(before) + ":";
  setenv("ASAN_OPTIONS", (others + "detect_leaks=0").c_str(), 1);
  options.insert(options.begin(), {"strace", "-qq"});
  options.push_back(SCHEMA_MIGRATE_COMMAND);
  options.insert(options.end(), arguments.begin(), arguments.end());
  std::vector<char *> argv;
  for (std::string &option : options) {
    argv.push_back(option.data());
  }
  argv.push_back(nullptr);
  execvp("strace", argv.data());
}

// The same with a fault, "write:error=EIO:when=3" for instance.
inline void execWithFault(const std::string &fault,
                          const Arguments &arguments) {
  execTracer(
      {"-f", "-o", "/dev/null", "-e",
       "trace=" + fault.substr(0, fault.find(':')), "-e", "inject=" + fault},
      arguments);
}

// What the files of a directory and the directories in it hold, by name; a mark
// for a directory that is not there.
inline Contents contentsOf(const std::filesystem::path &directory) {
  namespace fs = std::filesystem;
  if (!fs::exists(directory)) {
    return {{"not there", ""}};
  }
  Contents contents;
  for (const fs::directory_entry &entry :
       fs::recursive_directory_iterator(directory)) {
    const std::string name =
        entry.path().lexically_relative(directory).string();
    contents[name] = entry.is_symlink()     ? fs::read_symlink(entry).string()
                     : entry.is_directory() ? "a directory"
                                            : readText(entry);
  }
  return contents;
}

// While it exists, temporary directories are made in memory if the system has a
// directory for that: a sweep waits for the disk thousands of times.
class InMemory {
 public:
  InMemory() {
    const char *before = getenv("TMPDIR");
    m_before = before == nullptr ? "" : before;
    if (std::filesystem::is_directory("/dev/shm")) {
      setenv("TMPDIR", "/dev/shm", 1);
    }
  }
  ~InMemory() {
    if (m_before.empty()) {
      unsetenv("TMPDIR");
    } else {
      setenv("TMPDIR", m_before.c_str(), 1);
    }
  }

  InMemory(const InMemory &) = delete;
  InMemory &operator=(const InMemory &) = delete;

 private:
  std::string m_before;
};

// A test with an old installation and a release, and "out", which a test
// prepares as it was before the runs. One line is longer than any buffer.
class FaultTest : private InMemory, public MigrateTest {
 protected:
  static constexpr std::size_t kManyBytes = 20000;

  FaultTest() {
    write("old/V3.user.at",
          "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
          "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n"
          "attributetypes=( 1.3 NAME 'c' DESC '" +
              std::string(kManyBytes, 'x') + "' )\n");
    write("new/V3.config.at", "# kept\n");
    writeSmallRelease();
  }

  void SetUp() override {
    const CommandResult result = run({"--version"}, [] {
      execWithFault("fsync:error=EIO:when=1", {"--version"});
    });
    if (result.status != 0) {
      GTEST_SKIP() << "strace cannot trace here: " << result.error;
    }
  }

  // Runs the command with a fault.
  CommandResult runWithFault(const std::string &fault,
                             const Arguments &arguments) const {
    return run(arguments, [&] { execWithFault(fault, arguments); });
  }

  // How often the command, which must come to a result, makes a system call.
  int callsOf(const std::string &call, const Arguments &arguments) const {
    const CommandResult result = run(arguments, [&] {
      execTracer({"-f", "-o", "calls", "-e", "trace=" + call}, arguments);
    });
    EXPECT_LE(result.status, kFindings) << result.error;
    const std::string lines = read("calls");
    std::filesystem::remove(path("calls"));
    return static_cast<int>(std::count(lines.begin(), lines.end(), '\n'));
  }

  // The system calls of these names that the command makes, a line each, with
  // the paths of open files and below the root relative to it.
  std::string callsMade(const std::string &names,
                        const Arguments &arguments) const {
    const CommandResult result = run(arguments, [&] {
      execTracer({"-y", "-o", "calls", "-e", "trace=" + names}, arguments);
    });
    EXPECT_EQ(result.status, 0) << result.error;
    const std::string lines = relative(read("calls"));
    std::filesystem::remove(path("calls"));
    return lines;
  }

  // How often a system call is made before the command begins, for the
  // libraries that it loads.
  int callsToLoad(const std::string &call) const {
    return call == "write" ? 0 : callsOf(call, {"--version"});
  }

  // The names in the root without backups.
  Arguments plainNames() const {
    Arguments names;
    for (const std::string &name : namesIn(root())) {
      if (name.rfind("out.backup-", 0) != 0) {
        names.push_back(name);
      }
    }
    return names;
  }

  // What the backups hold, the oldest first.
  std::vector<Contents> backups() const {
    std::vector<Contents> all;
    for (const std::string &name : namesIn(root())) {
      if (name.rfind("out.backup-", 0) == 0) {
        all.push_back(contentsOf(path(name)));
      }
    }
    return all;
  }

  // "out" as it was, with something of all that is carried over.
  void makeFormer() const {
    removeOutAndBackups();
    std::filesystem::create_directory(path("out"));
    write("out/V3.user.at", "# former\n");
    write("out/notes", "of the site\n");
    std::filesystem::create_directory(path("out/more"));
    std::filesystem::create_symlink("../notes", path("out/more/link"));
    setxattr(path("out/notes").c_str(), "user.origin", "site", 4, 0);
    if (geteuid() == 0) {
      EXPECT_EQ(chown(path("out/notes").c_str(), 1000, 1000), 0);
    }
  }

  void removeOutAndBackups() const {
    for (const std::string &name : namesIn(root())) {
      if (name.rfind("out", 0) == 0) {
        std::filesystem::remove_all(path(name));
      }
    }
  }

  const FixedDate m_date;
};

#endif  // TESTS_MIGRATE_FAULTTESTING_H_
