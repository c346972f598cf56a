// The plan of the examples. What it prints is compared with the README by the
// tests of the documents.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "CommandsTesting.h"

namespace {

CommandResult planOfExamples(const std::string &release, Arguments more = {}) {
  Arguments arguments = {
      "plan",  "--old",           "examples/old-installation", "--new",
      release, "--excluded-oids", "examples/excluded-oids.txt"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return runCommand(std::filesystem::path(SCHEMA_EXAMPLES_DIR).parent_path(),
                    arguments);
}

TEST(PlanExamplesTest, SaysWhatIsToBeDone) {
  const CommandResult result = planOfExamples("examples/new-release");
  EXPECT_EQ(result.status, kDifferent);
  EXPECT_EQ(result.error, "");
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
