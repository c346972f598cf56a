// What documents hold of unusual input: every verdict, odd bytes, failures.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "JsonTesting.h"

namespace {

using Strings = std::set<std::string>;

// The strings that stand under a key, wherever.
void collect(const Json &json, const std::string &key, Strings *found) {
  if (!json.is_structured()) {
    return;
  }
  for (const auto &entry : json.items()) {
    if (json.is_object() && entry.key() == key && entry.value().is_string()) {
      found->insert(entry.value());
    }
    collect(entry.value(), key, found);
  }
}

class JsonCompletenessTest : public JsonTest {};

TEST_F(JsonCompletenessTest, PlansReachAllThatTheSchemaAllows) {
  writeEverything();
  write("base/V3.system.at",
        "attributetypes=( 1.2 NAME ( 'other' 'alias' ) DESC 'old' SYNTAX "
        "1.2{16} )\n"
        "attributetypes=( 1.3 NAME 'mine' DESC 'x' )\n"
        "attributetypes=( 1.6 NAME 'a' DESC 'x' )\n");
  const std::vector<Json> plans = {
      documentOf(commandLine("plan", {kBoth, kLists, {"--base", "base"}}),
                 kFindings),
      documentOf(commandLine("plan", {kBoth, kLists, kAccept}), kDifferent)};
  const Json parts = readSchema("plan")["$defs"];
  for (const std::string key : {"verdict", "effect", "origin", "kind"}) {
    const Json &part =
        key == "effect" ? parts["change"]["properties"]["effect"] : parts[key];
    Strings found;
    for (const Json &plan : plans) {
      collect(plan["definitions"], key, &found);
    }
    EXPECT_EQ(found, part["enum"].get<Strings>()) << key;
  }
}

TEST_F(JsonCompletenessTest, PlansThatChangeNothing) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("new/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  const Json plan = documentOf(commandLine("plan", {kBoth}), 0);
  EXPECT_EQ(plan["changesAnything"], false);
  EXPECT_EQ(plan["refused"], false);
  EXPECT_EQ(plan["stoppers"], 0);
}

TEST_F(JsonCompletenessTest, OfEmptyFiles) {
  write("old/V3.user.at", "");
  write("new/V3.user.at", "");
  documentOf({"check", "old", "new"}, 0);
  documentOf(commandLine("plan", {kBoth}), 0);
  EXPECT_EQ(documentOf(commandLine("apply", {kBoth, {"--out", "out"}}),
                       0)["changesAnything"],
            false);
  documentOf(commandLine("compare", {kBoth}), 0);
  documentOf(commandLine("collisions", {kBoth, {"--all"}}), 0);
  documentOf({"show", "--dir", "old", "a"}, kFindings);
}

TEST_F(JsonCompletenessTest, OfWhatStaysAlthoughItIsToBeWithdrawn) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("new/V3.system.oc", "objectclasses=( 2.4 NAME 'k' ABSTRACT )\n");
  write("list", "2.4\n");
  const Json apply = documentOf(
      commandLine("apply",
                  {kBoth, {"--out", "out", "--modified-oids", "list"}}),
      0);
  EXPECT_EQ(apply["withdrawals"],
            Json::array({{{"oid", "2.4"},
                          {"definition", "object class 'k' (2.4)"},
                          {"hasStorage", false},
                          {"wasModified", false},
                          {"isLeft", false},
                          {"staysIn", "V3.system.oc"}}}));
}

TEST_F(JsonCompletenessTest, OfDefinitionsWithNothingAroundThem) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
        "QORAttributetypes=( 1.2 LENGTH 4 )\n"
        "objectclasses=( 1.3 NAME 'k' SUP none ABSTRACT )\n");
  const Json results =
      documentOf({"show", "--dir", "old", "a", "1.2", "k"}, 0)["results"];
  for (const Json &result : results) {
    ASSERT_EQ(result["definitions"].size(), 1U);
    EXPECT_EQ(result["definitions"][0]["inherited"], Json::array());
    EXPECT_EQ(result["definitions"][0]["storage"], nullptr);
  }
  EXPECT_EQ(results[2]["definitions"][0]["superiors"],
            Json::parse(R"([{"name": "none", "definition": null}])"));
}

// Neither an OID nor a name.
TEST_F(JsonCompletenessTest, OfNamelessDefinitions) {
  write("old/V3.user.at", "attributetypes=( DESC 'x' )\n");
  write("new/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  for (const Json &definition :
       {documentOf(commandLine("plan", {kBoth}), kFindings)["definitions"][0],
        documentOf(commandLine("compare", {kBoth}),
                   kDifferent)["onlyOld"][0]["old"]}) {
    EXPECT_EQ(definition["oid"], nullptr);
    EXPECT_EQ(definition["name"], nullptr);
  }
  EXPECT_EQ(documentOf({"show", "--dir", "old", ""}, 0)["results"].size(), 1U);
}

TEST_F(JsonCompletenessTest, BytesOutsideUtf8AreReplaced) {
  std::string bytes;
  for (int c = 1; c < 256; ++c) {
    if (c != '\n' && c != '\'') {
      bytes += static_cast<char>(c);
    }
  }
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a\xFF' DESC '\xE9" + bytes + "' )\n");
  write("new/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("list", "1.\xFF");
  const Json check =
      documentOf({"check", "old", "new", "--excluded-oids", "list"}, kFindings);
  EXPECT_NE(check.dump().find("\xEF\xBF\xBD"), std::string::npos);
  documentOf(commandLine("plan", {kBoth}), kFindings);
  EXPECT_EQ(documentOf({"show", "--dir", "new", "\xFF"}, kFindings)["results"],
            Json::parse(R"([{"key": "\uFFFD", "definitions": []}])"));
}

TEST_F(JsonCompletenessTest, OfTheExamples) {
  std::filesystem::copy(SCHEMA_EXAMPLES_DIR "/old-installation", path("old"));
  std::filesystem::copy(SCHEMA_EXAMPLES_DIR "/new-release", path("new"));
  std::filesystem::copy(SCHEMA_EXAMPLES_DIR "/excluded-oids.txt",
                        path("excluded"));
  std::filesystem::copy(SCHEMA_EXAMPLES_DIR "/modified-oids.txt",
                        path("modified"));
  documentOf(commandLine("check", {{"old", "new"}, kLists}), 0);
  const Json plan =
      documentOf(commandLine("plan", {kBoth, kLists}), kDifferent);
  const Json apply =
      documentOf(commandLine("apply", {kBoth, {"--out", "out"}, kLists}), 0);
  EXPECT_EQ(apply["counts"], plan["counts"]);
  documentOf(commandLine("compare", {kBoth}), kDifferent);
  documentOf(commandLine("collisions", {kBoth, {"--all"}}), kFindings);
  documentOf({"show", "--dir", "new", "person", "cn", "2.5.4.3"}, 0);
}

// check has findings instead.
TEST_F(JsonCompletenessTest, AFailureLeavesStandardOutputEmpty) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  const std::vector<Arguments> failing = {
      commandLine("plan", {kBoth}),
      commandLine("apply", {kBoth, {"--out", "out"}}),
      commandLine("compare", {kBoth}),
      commandLine("collisions", {kBoth, {"--all"}}),
      {"show", "--dir", "new", "a"}};
  for (Arguments arguments : failing) {
    const CommandResult text = run(arguments);
    arguments.insert(arguments.end(), {"--format", "json"});
    const CommandResult result = run(arguments);
    EXPECT_EQ(result.status, text.status) << arguments.front();
    EXPECT_EQ(result.out, "") << arguments.front();
    EXPECT_EQ(result.error, text.error) << arguments.front();
    EXPECT_NE(result.error, "") << arguments.front();
  }
}

TEST_F(JsonCompletenessTest, TheFormsAreTextAndJson) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  expectResult(run({"check", "old", "--format", "text"}), 0,
               run({"check", "old"}).out, "");
  expectResult(run({"check", "old", "--format", "xml"}), kUsage, "",
               usageError("--format: xml not in {text,json}"));
}

}  // namespace
