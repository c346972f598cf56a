// The option --format of the commands, as a user gives it. What they print is
// in the folder json, byte for byte.
#include <gtest/gtest.h>

#include <string>

#include "JsonTesting.h"

namespace {

class JsonOutputTest : public JsonTest {
 protected:
  void expectOutput(const std::string &file, const Arguments &arguments,
                    int status) const {
    EXPECT_EQ(documentOf(arguments, status).dump(2) + "\n",
              readText(std::string(JSON_EXPECTED_DIR) + '/' + file));
  }
};

TEST_F(JsonOutputTest, OfCheck) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'caf\xC3\xA9' )\n");
  write("list", "1.1\n");
  expectOutput(
      "check.json",
      {"check", "old", "--excluded-oids", "list", "--modified-oids", "none"},
      kFileError);
}

TEST_F(JsonOutputTest, OfPlan) {
  writeEverything();
  expectOutput("plan.json", commandLine("plan", {kBoth, kLists}), kFindings);
}

TEST_F(JsonOutputTest, OfPlanWithABase) {
  writeEverything();
  const Json plan = documentOf(
      commandLine("plan", {kBoth, kLists, kAccept, {"--base", "base"}}),
      kDifferent);
  EXPECT_EQ(plan["base"], "base");
  const Json &replacing = plan["definitions"][1];
  EXPECT_EQ(replacing["origin"], "both");
  EXPECT_EQ(replacing["changes"][0]["origin"], "administrator");
  EXPECT_EQ(replacing["changes"][1]["origin"], "release");
  EXPECT_EQ(replacing["changes"][2]["origin"], "both");
  EXPECT_EQ(plan["excludedOids"], Json({"1.4", "1.6"}));
  EXPECT_EQ(plan["refused"], false);
  EXPECT_EQ(plan["stoppers"], 0);
  for (const Json &definition : plan["definitions"]) {
    EXPECT_EQ(definition["stops"], false);
  }
}

TEST_F(JsonOutputTest, OfPlanWithErrors) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'caf\xC3\xA9' )\n");
  write("new/V3.user.at", "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n");
  expectOutput("plan-errors.json", commandLine("plan", {kBoth}), kFindings);
}

TEST_F(JsonOutputTest, OfApply) {
  writeEverything();
  expectOutput("apply.json",
               commandLine("apply", {kBoth, {"--out", "out"}, kLists, kAccept}),
               0);
}

TEST_F(JsonOutputTest, OfCompare) {
  writeEverything();
  write("old/V3.system.oc", "objectclasses=( 1.9 NAME 'm' AUXILIARY )\n");
  write("new/V3.system.oc", "objectclasses=( 2.9 NAME 'n' AUXILIARY )\n");
  expectOutput("compare.json",
               commandLine("compare", {kBoth, {"--excluded-oids", "excluded"}}),
               kDifferent);
}

TEST_F(JsonOutputTest, OfCollisions) {
  writeEverything();
  write("old/V3.qor.at",
        "objectclasses=( 2.3 NAME ( 'n' 'm' ) AUXILIARY )\n"
        "QORAttributetypes=( 1.2 LENGTH 4 )\n");
  write("new/V3.qor.at",
        "objectclasses=( 2.4 NAME 'N' AUXILIARY )\n"
        "QORAttributetypes=( 1.2 LENGTH 5 )\n");
  expectOutput("collisions.json", commandLine("collisions", {kBoth}),
               kFindings);
}

TEST_F(JsonOutputTest, OfAllCollisions) {
  writeEverything();
  expectOutput("collisions-all.json",
               commandLine("collisions", {kBoth, {"--all"}}), kFindings);
}

TEST_F(JsonOutputTest, OfShow) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' SUP 1.7 )\n"
        "QORAttributetypes=( 1.1 LENGTH 4 )\n");
  write("old/V3.user.oc",
        "objectclasses=( 2.1 NAME 'top' ABSTRACT MUST ( a ) )\n"
        "objectclasses=( 2.2 NAME 'k' SUP ( top ) STRUCTURAL )\n");
  expectOutput("show.json", {"show", "--dir", "old", "a", "K", "aa"},
               kFindings);
}

}  // namespace
