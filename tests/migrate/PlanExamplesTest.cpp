// The plan of the examples, and what the README shows of it.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "CommandsTesting.h"

namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const std::string &text) {
  Lines lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

CommandResult planOfExamples(const std::string &release, Arguments more = {}) {
  Arguments arguments = {
      "plan",  "--old",           "examples/old-installation", "--new",
      release, "--excluded-oids", "examples/excluded-oids.txt"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return runCommand(std::filesystem::path(SCHEMA_EXAMPLES_DIR).parent_path(),
                    arguments);
}

// The block of the README that begins with the command, without its indent.
Lines shownInReadme() {
  const Lines all = linesOf(readText(
      std::filesystem::path(SCHEMA_EXAMPLES_DIR).parent_path() / "README.md"));
  Lines shown;
  for (const std::string &line : all) {
    const bool isInBlock = line.rfind("    ", 0) == 0 || line.empty();
    if (shown.empty() ? line.rfind("    $ schema-migrate plan", 0) == 0
                      : isInBlock) {
      shown.push_back(line.substr(line.empty() ? 0 : 4));
    } else if (!shown.empty()) {
      break;
    }
  }
  return shown;
}

// Whether the shown line is the printed one; "..." at its end stands for more.
bool isShownAs(const std::string &printed, const std::string &shown) {
  constexpr std::string_view kMore = "...";
  return shown.size() >= kMore.size() &&
                 shown.substr(shown.size() - kMore.size()) == kMore
             ? printed.rfind(shown.substr(0, shown.size() - kMore.size()), 0) ==
                   0
             : printed == shown;
}

TEST(PlanExamplesTest, IsWhatTheReadmeShows) {
  const CommandResult result = planOfExamples("examples/new-release");
  EXPECT_EQ(result.status, kDifferent);
  EXPECT_EQ(result.error, "");
  const Lines printed = linesOf(result.out);
  Lines shown = shownInReadme();
  ASSERT_GT(shown.size(), 30U);
  shown.erase(shown.begin(), shown.begin() + 3);  // the command
  auto line = printed.begin();
  bool maySkip = false;
  for (const std::string &one : shown) {
    if (one.find_first_not_of(' ') == one.find("...")) {
      maySkip = true;
      continue;
    }
    while (maySkip && line != printed.end() && !isShownAs(*line, one)) {
      ++line;
    }
    if (one.empty() && line == printed.end()) {
      break;  // the block has ended
    }
    ASSERT_TRUE(line != printed.end() && isShownAs(*line, one)) << one;
    ++line;
    maySkip = false;
  }
  EXPECT_TRUE(line == printed.end());
}

class PlanExamplesResultTest : public MigrateTest {};

// With the decision that the README suggests.
TEST_F(PlanExamplesResultTest, AnotherPlanOnTheResultHasNothingToDo) {
  write("decisions", "2.5.4.3 new\n");
  const std::string decisions = path("decisions").string();
  const CommandResult applied = runCommand(
      std::filesystem::path(SCHEMA_EXAMPLES_DIR).parent_path(),
      {"apply", "--old", "examples/old-installation", "--new",
       "examples/new-release", "--excluded-oids", "examples/excluded-oids.txt",
       "--decisions", decisions, "--out", path("out").string()});
  EXPECT_EQ(applied.status, 0);
  EXPECT_EQ(applied.error, "");
  const CommandResult again =
      planOfExamples(path("out").string(), {"--decisions", decisions});
  EXPECT_EQ(again.status, 0);
  EXPECT_NE(again.out.find("\nnothing to do: the release has all that is to be "
                           "carried\n287 definitions: "),
            std::string::npos)
      << again.out;
}

}  // namespace
