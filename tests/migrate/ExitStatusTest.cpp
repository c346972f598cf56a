// The exit statuses as scripts see them: the numbers. (A fault of the command,
// 6, is in InternalErrorTest.)
#include "ExitStatus.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>
#include <ostream>
#include <string>

#include "CommandsTesting.h"
#include "support/Child.h"

namespace {

constexpr char kType[] = "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n";

struct StatusCase {
  int status;
  Arguments arguments;
};

void PrintTo(const StatusCase &statusCase, std::ostream *out) {
  *out << statusCase.status;
  for (const std::string &argument : statusCase.arguments) {
    *out << ' ' << argument;
  }
}

// `old` and `new` are the same; `more` has a definition more; `wrong` has an
// error, `clash` collides with `old`, and `endless` is not to be read.
class ExitStatusTest : public MigrateTest,
                       public testing::WithParamInterface<StatusCase> {
 protected:
  ExitStatusTest() {
    write("list", "1.1\n");
    write("cut", "1.1");
    write("decisions", "1.1 maybe\n");
    writeDirectory("old", kType);
    writeDirectory("new", kType);
    writeDirectory("more", std::string(kType) +
                               "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n");
    writeDirectory("wrong", "attributetypes=( 1.1 NAME 'a' DESC '\xE9' )\n");
    writeDirectory("clash", "attributetypes=( 1.2 NAME 'A' DESC 'x' )\n");
    writeDirectory("endless", "attributetypes=( 1.1 COLLECTIVE )\n");
    writeDirectory("unterminated", "attributetypes=( 1.1 NAME 'a'\n");
    std::filesystem::create_directory(path("none"));
  }

  void writeDirectory(const std::string &name, const std::string &text) const {
    std::filesystem::create_directories(path(name));
    write(name + "/V3.user.at", text);
  }
};

TEST_P(ExitStatusTest, IsThis) {
  const CommandResult result = run(GetParam().arguments, withoutLeakCheck);
  EXPECT_EQ(result.status, GetParam().status) << result.error;
}

const StatusCase kCases[] = {
    {0, {"--help"}},
    {0, {"--version"}},
    {0, {"plan", "--old", "old", "--new", "new"}},
    {0, {"plan", "--old", "old", "--new", "more"}},
    {0, {"apply", "--old", "more", "--new", "new", "--out", "out"}},
    {0, {"restore", "--out", "old", "--list"}},
    {0, {"check", "old", "new"}},
    {0, {"compare", "--old", "old", "--new", "new"}},
    {0, {"collisions", "--old", "old", "--new", "more"}},
    {0, {"show", "--dir", "old", "a"}},
    {0, {"dump", "--dir", "old"}},

    {1, {"plan", "--old", "more", "--new", "new"}},
    {1, {"compare", "--old", "old", "--new", "more"}},

    {2, {"plan", "--old", "clash", "--new", "new"}},
    {2, {"plan", "--old", "wrong", "--new", "new"}},
    {2, {"apply", "--old", "clash", "--new", "new", "--out", "out"}},
    {2, {"check", "wrong"}},
    {2, {"check", "clash", "new"}},
    {2, {"check", "old", "--excluded-oids", "cut"}},
    {2, {"collisions", "--old", "clash", "--new", "new"}},
    {2, {"show", "--dir", "old", "b"}},

    {3, {"plan", "--old", "none", "--new", "new"}},
    {3, {"plan", "--old", "old", "--new", "new", "--excluded-oids", "cut"}},
    {3, {"plan", "--old", "old", "--new", "new", "--decisions", "decisions"}},
    {3, {"plan", "--old", "old", "--new", "new", "--max-size", "3"}},
    {3, {"apply", "--old", "old", "--new", "none", "--out", "out"}},
    {3, {"compare", "--old", "none", "--new", "new"}},
    {3, {"compare", "--old", "unterminated", "--new", "new"}},
    {3, {"collisions", "--old", "endless", "--new", "new"}},
    {3, {"show", "--dir", "endless", "a"}},
    {3, {"dump", "--dir", "endless"}},

    {4, {"plan", "--old", "missing", "--new", "new"}},
    {4, {"plan", "--old", "old", "--new", "new", "--base", "list"}},
    {4, {"plan", "--old", "old", "--new", "new", "--decisions", "missing"}},
    {4, {"plan", "--old", "old", "--new", "new", "--modified-oids", "new"}},
    {4, {"apply", "--old", "old", "--new", "new", "--out", "more"}},
    {4, {"apply", "--old", "old", "--new", "new", "--out", "missing/out"}},
    {4, {"restore", "--out", "old"}},
    {4, {"check", "missing"}},
    {4, {"check", "old", "--excluded-oids", "missing"}},
    {4, {"compare", "--old", "missing", "--new", "new"}},
    {4, {"collisions", "--old", "old", "--new", "list"}},
    {4, {"show", "--dir", "missing", "a"}},
    {4, {"dump", "--dir", "old", "--excluded-oids", "missing"}},
    {4, {"dump", "--dir", "old", "--trace", "missing/trace"}},

    {5, {}},
    {5, {"migrate"}},
    {5, {"plan", "--old", "old"}},
    {5, {"plan", "--old", "old", "--new", "new", "--prefer", "changed"}},
    {5, {"apply", "--old", "old", "--new", "new", "--out", "old/out"}},
    {5, {"restore"}},
    {5, {"check", "old", "--format", "yaml"}},
    {5, {"compare", "--old", "old", "--new", "new", "--base", "old"}},
    {5, {"collisions"}},
    {5, {"show", "--dir", "old"}},
    {5, {"dump", "--dir", "old", "--trace", "t", "--trace-events", "0"}},
};

INSTANTIATE_TEST_SUITE_P(All, ExitStatusTest, testing::ValuesIn(kCases));

using ExitStatusFaultTest = ExitStatusTest;

TEST_F(ExitStatusFaultTest, OfACurrentDirectoryThatIsGone) {
  std::filesystem::create_directory(path("gone"));
  const CommandResult result =
      runCommand(path("gone"), {"restore", "--out", "x"},
                 [this] { rmdir(path("gone").c_str()); });
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.error.substr(0, 7), "error: ");
}

TEST_F(ExitStatusFaultTest, OfTooLittleMemory) {
  if (isSanitized()) {
    GTEST_SKIP() << "the sanitizers need more memory";
  }
  writeDirectory("large", std::string(std::size_t{60} << 20, '#') + '\n');
  const CommandResult result = run({"check", "large"}, [] {
    const rlimit bytes = {rlim_t{64} << 20, rlim_t{64} << 20};
    setrlimit(RLIMIT_AS, &bytes);
  });
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.error, "error: not enough memory\n");
}

}  // namespace
