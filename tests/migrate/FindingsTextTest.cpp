#include "FindingsText.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>

#include "CommandsTesting.h"

namespace {

// What the command prints on standard output, a terminal, with NO_COLOR set to
// `noColour`, or not at all if that is null.
class FindingsTextTest : public MigrateTest {
 protected:
  std::string onTerminal(const Arguments &arguments,
                         const char *noColour) const {
    int terminal = -1;
    int other = -1;
    EXPECT_EQ(openpty(&terminal, &other, nullptr, nullptr, nullptr), 0);
    run(arguments, [other, noColour] {
      dup2(other, STDOUT_FILENO);
      if (noColour == nullptr) {
        unsetenv("NO_COLOR");
      } else {
        setenv("NO_COLOR", noColour, 1);
      }
    });
    close(other);
    // What was written comes in pieces, and then an error: nobody has the
    // terminal open any more.
    std::string text;
    char buffer[4096];
    ssize_t length = 0;
    while ((length = ::read(terminal, buffer, sizeof buffer)) > 0) {
      text.append(buffer, static_cast<std::size_t>(length));
    }
    close(terminal);
    return replaceAll(text, "\r\n", "\n");
  }
};

TEST_F(FindingsTextTest, HasColourOnATerminalOnly) {
  const Arguments check = {"check", "error:", "--excluded-oids", "list"};
  std::filesystem::create_directory(path("error:"));
  write("error:/V3.user.at", "attributetypes=( 1.1 NAME 'a' SYNTAX 1.9 )\n");
  write("list", "1.1");
  const std::string plain = run(check).out;
  EXPECT_EQ(plain.find('\033'), std::string::npos);
  EXPECT_EQ(onTerminal(check, "1"), plain);
  const std::string coloured =
      replaceAll(replaceAll(plain, ": error: [", ": \033[1;31merror:\033[0m ["),
                 ": warning: [", ": \033[1;35mwarning:\033[0m [");
  EXPECT_NE(coloured.find("31m"), std::string::npos);
  EXPECT_NE(coloured.find("35m"), std::string::npos);
  EXPECT_EQ(onTerminal(check, nullptr), coloured);
  EXPECT_EQ(onTerminal(check, ""), coloured);
}

TEST_F(FindingsTextTest, HasColourInAPlan) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC '\xE9' )\n");
  write("new/V3.user.at", "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n");
  const Arguments plan = {"plan", "--old", "old", "--new", "new"};
  EXPECT_EQ(
      onTerminal(plan, nullptr),
      replaceAll(run(plan).out, ": error: [", ": \033[1;31merror:\033[0m ["));
}

TEST_F(FindingsTextTest, JsonHasNoColour) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC '\xE9' )\n");
  const Arguments check = {"check", "old", "--format", "json"};
  EXPECT_EQ(onTerminal(check, nullptr), run(check).out);
}

}  // namespace
