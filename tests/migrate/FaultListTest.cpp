// The lists of system calls that the tests with faults go through are whole:
// the command, in all that it does to a directory, makes no call beside them
// but such as change nothing, and makes each of them.
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "FaultTesting.h"

namespace fs = std::filesystem;

namespace {

using Names = std::set<std::string>;

// Those that read, ask, wait, and keep memory, threads and signals; a file of
// memfd_create() has no name.
const Names kHarmlessCalls = {
    "access",
    "arch_prctl",
    "brk",
    "clone3",
    "execve",
    "exit",
    "exit_group",
    "fcntl",
    "futex",
    "getcwd",
    "getdents64",
    "getrandom",
    "getxattr",
    "ioctl",
    "listxattr",
    "lseek",
    "madvise",
    "memfd_create",
    "mmap",
    "mprotect",
    "munmap",
    "newfstatat",
    "pread64",
    "prlimit64",
    "read",
    "readlink",
    "rseq",
    "rt_sigaction",
    "rt_sigprocmask",
    "set_robust_list",
    "set_tid_address",
    "statx",
};

class FaultListTest : public FaultTest {
 protected:
  // Runs the command, which comes to this status.
  void runTraced(const Arguments &arguments, int status) {
    const CommandResult result = run(arguments, [&] {
      execTracer({"-o", "calls"}, arguments);
    });
    EXPECT_EQ(result.status, status) << result.error;
    std::istringstream log(read("calls"));
    fs::remove(path("calls"));
    for (std::string line; std::getline(log, line);) {
      std::smatch call;
      if (std::regex_search(line, call,
                            std::regex("^[0-9]+ +([a-z0-9_]+)\\("))) {
        m_names.insert(call[1]);
      }
    }
  }

  Names m_names;  // of the calls so far
};

TEST_F(FaultListTest, IsWhole) {
  if (isSanitized()) {
    GTEST_SKIP() << "a sanitizer makes calls of its own";
  }
  const Arguments create = {"apply", "--old", "old", "--new",
                            "new",   "--out", "out"};
  Arguments replace = create;
  replace.insert(replace.end(), {"--replace"});
  Arguments all = replace;
  all.insert(all.end(),
             {"--base", "old", "--excluded-oids", "list", "--modified-oids",
              "list", "--decisions", "decisions", "--trace", "trace"});
  write("list", "1.1\n");
  write("decisions", "1.2 old\n");

  runTraced(create, kDone);
  runTraced(create, kFileError);  // something is there
  fs::remove_all(path("out"));
  fs::create_directory(path("out"));
  runTraced(create, kDone);
  makeFormer();
  runTraced(replace, kDone);
  runTraced({"restore", "--out", "out"}, kDone);
  makeFormer();
  makeLeftOver();
  runTraced(all, kDone);

  Names known(std::begin(kWritingCalls), std::end(kWritingCalls));
  known.insert(std::begin(kSettlingCalls), std::end(kSettlingCalls));
  Names changing;
  for (const std::string &name : m_names) {
    if (kHarmlessCalls.count(name) == 0) {
      changing.insert(name);
    }
  }
  if (!isWholeFormer()) {
    GTEST_SKIP() << "no access lists, or no owners to keep";
  }
  EXPECT_EQ(changing, known);
}

}  // namespace
