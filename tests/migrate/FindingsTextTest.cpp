#include "FindingsText.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>

#include "CommandsTesting.h"

namespace {

// What the command prints on a terminal, its output or its error, with NO_COLOR
// set to `noColour`, or not at all if that is null.
class FindingsTextTest : public MigrateTest {
 protected:
  std::string onTerminal(const Arguments &arguments, const char *noColour,
                         int file = STDOUT_FILENO) const {
    int terminal = -1;
    int other = -1;
    EXPECT_EQ(openpty(&terminal, &other, nullptr, nullptr, nullptr), 0);
    run(arguments, [other, noColour, file] {
      dup2(other, file);
      if (noColour == nullptr) {
        unsetenv("NO_COLOR");
      } else {
        setenv("NO_COLOR", noColour, 1);
      }
    });
    // Now nobody can write, so that reading comes to an end.
    close(other);
    std::string text;
    char buffer[4096];
    while (const ssize_t length = ::read(terminal, buffer, sizeof buffer)) {
      if (length == -1) {
        break;
      }
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

TEST_F(FindingsTextTest, HasColourInARefusal) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC '\xE9' )\n");
  write("new/V3.user.at", "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n");
  const Arguments apply = {"apply", "--old", "old", "--new",
                           "new",   "--out", "out"};
  const std::string plain = run(apply).error;
  EXPECT_EQ(plain.find('\033'), std::string::npos);
  EXPECT_EQ(onTerminal(apply, "1", STDERR_FILENO), plain);
  const std::string coloured =
      replaceAll(plain, ": error: [", ": \033[1;31merror:\033[0m [");
  EXPECT_NE(coloured, plain);
  EXPECT_EQ(onTerminal(apply, nullptr, STDERR_FILENO), coloured);
}

TEST_F(FindingsTextTest, JsonHasNoColour) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC '\xE9' )\n");
  const Arguments check = {"check", "old", "--format", "json"};
  EXPECT_EQ(onTerminal(check, nullptr), run(check).out);
}

}  // namespace
