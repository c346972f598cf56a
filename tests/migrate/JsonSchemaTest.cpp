// The schemas of the documents: they are exact, and reject what departs.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "Backups.h"
#include "FindingCodes.h"
#include "JsonTesting.h"

namespace {

const char *const kCommands[] = {"apply",   "check", "collisions",
                                 "compare", "plan",  "show"};

// A document, and documents that depart from it in one place each.
struct Departures {
  std::vector<Json> documents;
  std::vector<std::string> places;  // in the same order
};

// A place without the numbers of entries: all entries of a list are alike.
std::string inGeneral(const Json::json_pointer &place) {
  std::string text;
  for (const char c : place.to_string()) {
    text += c >= '0' && c <= '9' ? '*' : c;
  }
  return text;
}

// Adds `document` with each key of each object removed, with one added, and
// with each value of another type.
void addDepartures(const Json &document, const Json::json_pointer &place,
                   std::set<std::string> *seen, Departures *departures) {
  const Json &value = document.at(place);
  const auto add = [&](const char *what, auto change) {
    if (seen->insert(what + inGeneral(place)).second) {
      departures->documents.push_back(document);
      change(&departures->documents.back());
      departures->places.push_back(what + place.to_string());
    }
  };
  add("another type: ", [&](Json *changed) {
    (*changed)[place] = value.is_boolean() ? Json("x") : Json(true);
  });
  if (value.is_object()) {
    add("surplus: ", [&](Json *changed) { (*changed)[place]["surplus"] = 1; });
    for (const auto &entry : value.items()) {
      const std::string what = "without " + entry.key() + ": ";
      add(what.c_str(),
          [&](Json *changed) { (*changed)[place].erase(entry.key()); });
    }
  }
  if (value.is_structured()) {
    for (const auto &entry : value.items()) {
      addDepartures(document,
                    value.is_object() ? place / entry.key()
                                      : place / static_cast<std::size_t>(
                                                    std::stoul(entry.key())),
                    seen, departures);
    }
  }
}

class JsonSchemaTest : public JsonTest {
 protected:
  // Expects that the schema rejects everything that departs from a document in
  // one place, of which there are `number`.
  static void expectExact(const Json &document, std::size_t number) {
    const std::string command = document["command"];
    std::set<std::string> seen;
    Departures departures;
    addDepartures(document, Json::json_pointer(), &seen, &departures);
    EXPECT_EQ(departures.documents.size(), number);
    const std::vector<std::string> results =
        validate(command, departures.documents);
    for (std::size_t i = 0; i < results.size(); ++i) {
      EXPECT_NE(results[i], "valid") << departures.places[i];
    }
  }
};

TEST_F(JsonSchemaTest, IsExactForCheck) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  expectExact(documentOf({"check", "old"}, 0), 18);
}

TEST_F(JsonSchemaTest, IsExactForPlan) {
  writeEverything();
  expectExact(
      documentOf(
          commandLine("plan", {kBoth, kLists, kAccept, {"--base", "base"}}),
          kDifferent),
      177);
}

TEST_F(JsonSchemaTest, IsExactForApply) {
  writeEverything();
  expectExact(
      documentOf(
          commandLine("apply", {kBoth, {"--out", "out"}, kLists, kAccept}), 0),
      130);
}

TEST_F(JsonSchemaTest, IsExactForApplyThatReplaces) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("new/V3.user.at", "");
  std::filesystem::create_directory(path("out"));
  write("out/V3.user.at", "");
  write("out/notes", "");
  const CommandResult result = run(commandLine(
      "apply", {kBoth, {"--out", "out", "--replace"}, {"--format", "json"}}));
  EXPECT_EQ(result.status, kDone);
  const Json document = Json::parse(result.out);
  EXPECT_THAT(validate("apply", {document}), testing::ElementsAre("valid"));
  const std::vector<std::string> backups = backupsOf(path("out"));
  ASSERT_EQ(backups.size(), 1U);
  EXPECT_EQ(document["backup"], backups[0]);
  EXPECT_EQ(document["kept"], Json({"notes"}));
  expectExact(document, 116);
}

TEST_F(JsonSchemaTest, IsExactForCompare) {
  writeEverything();
  write("old/V3.system.oc", "objectclasses=( 1.9 NAME 'm' AUXILIARY )\n");
  write("new/V3.system.oc", "objectclasses=( 2.9 NAME 'n' AUXILIARY )\n");
  expectExact(documentOf(commandLine("compare",
                                     {kBoth, {"--excluded-oids", "excluded"}}),
                         kDifferent),
              146);
}

TEST_F(JsonSchemaTest, IsExactForCollisions) {
  writeEverything();
  write("old/V3.qor.at",
        "objectclasses=( 2.3 NAME 'n' AUXILIARY )\n"
        "QORAttributetypes=( 1.2 LENGTH 4 )\n");
  write("new/V3.qor.at",
        "objectclasses=( 2.4 NAME 'N' AUXILIARY )\n"
        "QORAttributetypes=( 1.2 LENGTH 5 )\n");
  expectExact(
      documentOf(commandLine("collisions", {kBoth, {"--all"}}), kFindings), 77);
}

TEST_F(JsonSchemaTest, IsExactForShow) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' DESC 'x' SUP 1.7 )\n"
        "QORAttributetypes=( 1.1 DBNAME ( 'c' 'd' ) LENGTH 4 )\n");
  write("old/V3.user.oc",
        "objectclasses=( 2.1 NAME 'top' ABSTRACT MUST ( a ) MAY ( a ) )\n"
        "objectclasses=( 2.2 NAME 'k' SUP ( top ) STRUCTURAL )\n");
  expectExact(documentOf({"show", "--dir", "old", "a", "K"}, 0), 107);
}

TEST_F(JsonSchemaTest, RejectsAnotherVersionAndAnotherCommand) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  const Json document = documentOf({"check", "old"}, 0);
  std::vector<Json> others(2, document);
  others[0]["format"] = 2;
  others[1]["command"] = "plan";
  EXPECT_THAT(validate("check", others),
              testing::ElementsAre("$.format: 1 was expected",
                                   "$.command: 'check' was expected"));
}

// Each object that a schema describes is closed, and lists what it requires.
void expectClosed(const Json &schema, const std::string &place) {
  if (schema.is_object() && schema.value("type", Json()) == "object") {
    EXPECT_EQ(schema.value("additionalProperties", Json()), false) << place;
    std::vector<std::string> keys;
    for (const auto &entry : schema.at("properties").items()) {
      keys.push_back(entry.key());
    }
    EXPECT_EQ(schema.value("required", Json()), Json(keys)) << place;
  }
  if (schema.is_structured()) {
    for (const auto &entry : schema.items()) {
      expectClosed(entry.value(), place + '/' + entry.key());
    }
  }
}

TEST(JsonSchemaFileTest, HasATitleAndADescriptionAndIsClosed) {
  for (const std::string command : kCommands) {
    const Json schema = readSchema(command);
    EXPECT_EQ(schema["title"],
              "What " + command + " prints with --format json");
    EXPECT_TRUE(schema["description"].is_string());
    EXPECT_EQ(schema["properties"]["command"]["const"], command);
    expectClosed(schema, command);
  }
}

TEST(JsonSchemaFileTest, SaysTheSameOfWhatSeveralHave) {
  std::map<std::string, Json> parts;
  for (const std::string command : kCommands) {
    const Json schema = readSchema(command);
    for (const auto &part : schema["$defs"].items()) {
      EXPECT_EQ(parts.emplace(part.key(), part.value()).first->second,
                part.value())
          << command << ' ' << part.key();
    }
  }
}

TEST(JsonSchemaFileTest, ListsTheCodesOfFindings) {
  Json codes = Json::array();
  for (const schemacheck::CodeDescription &code : schemacheck::allCodes()) {
    codes.push_back(code.name);
  }
  EXPECT_EQ(
      readSchema("check")["$defs"]["finding"]["properties"]["code"]["enum"],
      codes);
}

}  // namespace
