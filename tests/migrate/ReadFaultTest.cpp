// The commands that only read, when each single system call by which they read
// fails in turn: they say so, or print what they print without a fault.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "CommandsTesting.h"
#include "FaultTesting.h"

namespace {

class ReadFaultTest : public FaultTest,
                      public testing::WithParamInterface<Arguments> {
 protected:
  ReadFaultTest() {
    write("old/V3.qor.at", "attributetypes=( 1.4 NAME 'd' DESC 'x' )\n");
    write("new/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'y' )\n");
    write("list", "1.2\n");
    write("decisions", "1.3 new\n");
  }
};

TEST_P(ReadFaultTest, IsSaidOrDoesNotMatter) {
  const CommandResult right = run(GetParam());
  const struct {
    std::string call;
    std::string error;
    const char *more;  // from the first that fails on
  } kFaults[] = {
      {"getdents64", "EIO", ""}, {"lseek", "EIO", ""},
      {"newfstatat", "EIO", ""}, {"openat", "EIO", ""},
      {"read", "EIO", ""},       {"read", "EINTR", ""},
      {"openat", "EMFILE", "+"},
  };
  const auto before = snapshotOf(root());
  for (const auto &[call, error, more] : kFaults) {
    forEach(numbersOf(call, GetParam()),
            [&, call = call, error = error, more = more](int n) {
              const std::string fault = call + ":error=" + error +
                                        ":when=" + std::to_string(n) + more;
              SCOPED_TRACE(fault);
              const CommandResult result = runWithFault(fault, GetParam());
              if (result.status == kFileError && error != "EINTR") {
                const std::string all = result.out + result.error;
                const std::size_t at = all.find(": error: ");
                EXPECT_NE(at, std::string::npos);
                EXPECT_TRUE(at == all.rfind(": error: ") || *more != 0) << all;
              } else {
                expectResult(result, right.status, right.out, right.error);
              }
              EXPECT_EQ(snapshotOf(root()), before);
            });
  }
}

std::string commandName(const testing::TestParamInfo<Arguments> &info) {
  return info.param[0];
}

INSTANTIATE_TEST_SUITE_P(
    Commands, ReadFaultTest,
    testing::Values(Arguments{"plan", "--old", "old", "--new", "new",
                              "--excluded-oids", "list"},
                    Arguments{"check", "old", "new", "--excluded-oids", "list"},
                    Arguments{"compare", "--old", "old", "--new", "new",
                              "--excluded-oids", "list"},
                    Arguments{"collisions", "--old", "old", "--new", "new",
                              "--excluded-oids", "list"},
                    Arguments{"show", "--dir", "old", "a", "1.4"},
                    Arguments{"dump", "--dir", "old", "--excluded-oids",
                              "list"}),
    commandName);

}  // namespace
