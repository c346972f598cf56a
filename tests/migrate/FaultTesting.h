// Runs of the command in which a system call fails or kills it.
#ifndef TESTS_MIGRATE_FAULTTESTING_H_
#define TESTS_MIGRATE_FAULTTESTING_H_

#include <stdlib.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "AccessListTesting.h"
#include "ExitStatus.h"
#include "MigrateTesting.h"
#include "support/Child.h"

using Arguments = std::vector<std::string>;
using Contents = std::map<std::string, std::string>;

// The system calls after which something else is on disk. What is killed leaves
// what it finds that is killed at the next of these.
constexpr const char *kWritingCalls[] = {
    "chmod",    "fchmod",    "lchown", "mkdir",    "openat",  "removexattr",
    "rename",   "renameat2", "rmdir",  "setxattr", "symlink", "unlink",
    "unlinkat", "utimensat", "write",  "writev",
};
// Those that say so when it did not get there, and the one that keeps others
// off.
constexpr const char *kSettlingCalls[] = {"close", "flock", "fsync"};

// What a test that is for one system call is named after.
inline std::string callName(const testing::TestParamInfo<const char *> &info) {
  return info.param;
}

// In the new process: makes it a tracer that runs the command.
inline void execTracer(Arguments options, const Arguments &arguments) {
  // The leak checker does not work under a tracer.
  const char *before = getenv("ASAN_OPTIONS");
  const std::string others = before == nullptr ? "" : std::string(before) + ":";
  setenv("ASAN_OPTIONS", (others + "detect_leaks=0").c_str(), 1);
  options.insert(options.begin(), {"strace", "-qq", "-f"});
  options.push_back(SCHEMA_MIGRATE_COMMAND);
  options.insert(options.end(), arguments.begin(), arguments.end());
  std::vector<char *> argv;
  for (std::string &option : options) {
    argv.push_back(option.data());
  }
  argv.push_back(nullptr);
  execvp("strace", argv.data());
}

// Lets the command stop at the traced system calls alone, which saves half the
// time. No signal can be sent there.
constexpr char kStopsFew[] = "--seccomp-bpf";

// The options to trace these calls of a command that can have no thread beside
// its first: the tracer counts the calls of each by themselves.
inline Arguments tracing(const std::string &calls, const std::string &log) {
  return {"-o", log,
          "-e", "trace=" + calls + ",clone,clone3",
          "-e", "inject=clone,clone3:error=EAGAIN"};
}

// The same with a fault, "write:error=EIO:when=3" for instance.
inline void execWithFault(const std::string &fault,
                          const Arguments &arguments) {
  Arguments options = tracing(fault.substr(0, fault.find(':')), "/dev/null");
  options.insert(options.end(), {"-e", "inject=" + fault});
  if (fault.find(":signal=") == std::string::npos) {
    options.push_back(kStopsFew);
  }
  execTracer(options, arguments);
}

inline const Contents kNotThere = {{"not there", ""}};

// What the files of a directory and the directories in it hold, by name.
inline Contents contentsOf(const std::filesystem::path &directory) {
  namespace fs = std::filesystem;
  if (!fs::exists(directory)) {
    return kNotThere;
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
    if (result.status != 0 || !result.error.empty()) {
      GTEST_SKIP() << "strace cannot trace here: " << result.error;
    }
  }

  // Runs the command with a fault.
  CommandResult runWithFault(const std::string &fault,
                             const Arguments &arguments) const {
    return run(arguments, [&] { execWithFault(fault, arguments); });
  }

  // The numbers of those calls of one name that the command, which must come to
  // a result, makes itself, behind those for the libraries that it loads; of
  // those alone whose lines in the tracer's log hold `what`.
  std::vector<int> numbersOf(const std::string &call,
                             const Arguments &arguments,
                             const std::string &what = "") const {
    const CommandResult result = run(arguments, [&] {
      execTracer(tracing(call + ",rt_sigaction", "calls"), arguments);
    });
    EXPECT_LE(result.status, kFindings) << result.error;
    std::istringstream log(read("calls"));
    std::filesystem::remove(path("calls"));
    std::vector<int> numbers;
    int number = 0;
    for (std::string line; std::getline(log, line);) {
      if (line.find("(SIGXFSZ,") != std::string::npos) {
        numbers.clear();  // with which main() begins
      } else if (line.find(' ' + call + '(') != std::string::npos) {
        ++number;
        if (line.find(what) != std::string::npos) {
          numbers.push_back(number);
        }
      }
    }
    return numbers;
  }

  // Calls `runOnce` with the number of each of these calls, or of some under a
  // sanitizer, which makes the command slow, up to the first failure.
  void forEach(const std::vector<int> &numbers,
               const std::function<void(int)> &runOnce) const {
    const std::size_t step = isSanitized() ? 3 : 1;
    for (std::size_t i = 0; i < numbers.size() && !HasFailure(); i += step) {
      runOnce(numbers[i]);
    }
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
    return std::regex_replace(
        std::regex_replace(lines, std::regex("(^|\n)[0-9]+ +"), "$1"),
        std::regex("\\) += "), ") = ");
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

  // "out" as it was, with something of all that is carried over, where what is
  // made from now on gets an access list.
  void makeFormer() const {
    removexattr(root().c_str(), kDefault);
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
    setAccessList(root(), kDefault);
  }

  // Whether makeFormer() can make all of this here.
  bool isWholeFormer() const {
    return geteuid() == 0 && setAccessList(root(), kDefault);
  }

  // Makes what a run that was killed has left.
  void makeLeftOver() const {
    std::filesystem::create_directories(path(".out.partial-new/more"));
    write(".out.partial-new/more/file", "");
    write(".out.partial-new/schema-migrate.manifest", "");
  }

  void removeOutAndBackups() const {
    for (const std::string &name : namesIn(root())) {
      if (name.rfind("out", 0) == 0 || name.rfind(".out", 0) == 0) {
        std::filesystem::remove_all(path(name));
      }
    }
  }

  // Whether the root has not held this before, dates and inodes aside. What the
  // next run makes of it need be seen once only.
  bool isNewState() const {
    Contents state;
    for (const auto &[name, text] : contentsOf(root())) {
      state[withoutNumbers(name)] = text;
    }
    return m_states.insert(state).second;
  }

  // A text with DATE and INODE in the names that have such.
  static std::string withoutNumbers(const std::string &text) {
    static const std::regex kDate("backup-[0-9]{8}-[0-9]{6}");
    static const std::regex kInode("(complete|restore)-[0-9]+");
    return std::regex_replace(std::regex_replace(text, kDate, "backup-DATE"),
                              kInode, "$1-INODE");
  }

  const FixedDate m_date;

 private:
  mutable std::set<Contents> m_states;
};

#endif  // TESTS_MIGRATE_FAULTTESTING_H_
