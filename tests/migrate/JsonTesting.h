// Helpers of the tests of --format json.
#ifndef TESTS_MIGRATE_JSONTESTING_H_
#define TESTS_MIGRATE_JSONTESTING_H_

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdio.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "CommandsTesting.h"

using Json = nlohmann::ordered_json;

inline std::string schemaFile(const std::string &command) {
  return SCHEMA_DOCS_DIR "/json/" + command + ".schema.json";
}

inline Json readSchema(const std::string &command) {
  return Json::parse(readText(schemaFile(command)));
}

// What the validator says of each document by the schema of a command: "valid",
// or an error. Throws when it cannot be run, or finds the schema wrong.
inline std::vector<std::string> validate(const std::string &command,
                                         const std::vector<Json> &documents) {
  const TemporaryDirectory directory;
  std::string lines;
  for (const Json &document : documents) {
    lines += document.dump() + '\n';
  }
  const std::string line = "'" JSON_VALIDATOR "' '" + schemaFile(command) +
                           "' '" + directory.write("documents", lines) + "'";
  FILE *pipe = popen(line.c_str(), "r");
  std::string text;
  for (int c = getc(pipe); c != EOF; c = getc(pipe)) {
    text += static_cast<char>(c);
  }
  if (pclose(pipe) != 0) {
    throw std::runtime_error("cannot validate: is python3-jsonschema there?");
  }
  std::vector<std::string> results;
  std::istringstream stream(text);
  for (std::string result; std::getline(stream, result);) {
    results.push_back(result);
  }
  if (results.size() != documents.size()) {
    throw std::runtime_error("expected a line for each document");
  }
  return results;
}

// A test of the commands with and without --format json.
class JsonTest : public MigrateTest {
 protected:
  // Runs the command in both forms. Expects the same exit status and the same
  // on standard error, and on standard output one document of the command's
  // schema, indented, with an end of line. What the run leaves in "out" is
  // removed.
  Json documentOf(Arguments arguments, int status) const {
    const CommandResult text = runOnce(arguments);
    const std::string command = arguments.front();
    arguments.insert(arguments.end(), {"--format", "json"});
    const CommandResult result = runOnce(arguments);
    EXPECT_EQ(text.status, status);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.error, text.error);
    const Json document = Json::parse(result.out);
    EXPECT_EQ(result.out, document.dump(2) + "\n");
    EXPECT_EQ(document["format"], 1);
    EXPECT_EQ(document["command"], command);
    EXPECT_THAT(validate(command, {document}), testing::ElementsAre("valid"));
    return document;
  }

  // An installation and a release between which everything occurs: each
  // verdict, effect and origin, what stops a plan and what it breaks; with a
  // base, and lists.
  void writeEverything() const {
    std::filesystem::create_directory(path("base"));
    write("old/V3.user.at",
          "attributetypes=( 1.1 NAME 'same' DESC 'x' )\n"
          "attributetypes=( 1.2 NAME 'other' DESC 'old' SYNTAX 1.2{64} )\n"
          "attributetypes=( 1.3 NAME 'mine' DESC 'x' )\n"
          "QORAttributetypes=( 1.3 DBNAME ( 'c' 'd' ) LENGTH 4 )\n"
          "attributetypes=( 1.4 NAME 'listed' DESC 'x' )\n"
          "attributetypes=( 1.5 NAME 'SAME' DESC 'x' )\n"
          "attributetypes=( 1.6 NAME 'a' DESC 'x' )\n");
    write("old/V3.user.oc",
          "objectclasses=( 2.1 NAME 'k' AUXILIARY )\n"
          "objectclasses=( 2.2 NAME 'l' AUXILIARY MUST ( listed ) )\n");
    write("new/V3.system.at",
          "attributetypes=( 1.1 NAME 'same' DESC 'x' )\n"
          "attributetypes=( 1.2 NAME ( 'other' 'alias' ) DESC 'new' SYNTAX "
          "1.2{32} )\n"
          "attributetypes=( 1.9 NAME 'a' DESC 'x' )\n");
    write("new/V3.modifiedschema",
          "objectclasses=( 2.1 NAME 'k' AUXILIARY )\n");
    write("base/V3.system.at",
          "attributetypes=( 1.2 NAME ( 'other' 'alias' ) DESC 'old' SYNTAX "
          "1.2{16} )\n");
    write("excluded", "1.4\n");
    write("modified", "2.1\n9.9\n");
  }

 private:
  CommandResult runOnce(const Arguments &arguments) const {
    const CommandResult result = run(arguments, withoutLeakCheck);
    std::filesystem::remove_all(path("out"));
    return result;
  }
};

inline const Arguments kBoth = {"--old", "old", "--new", "new"};
inline const Arguments kLists = {"--excluded-oids", "excluded",
                                 "--modified-oids", "modified"};
inline const Arguments kAccept = {"--accept", "SHADOWED,NAME-OTHER-OID"};

// A command with its arguments.
inline Arguments commandLine(const std::string &command,
                             const std::vector<Arguments> &parts) {
  Arguments arguments = {command};
  for (const Arguments &part : parts) {
    arguments.insert(arguments.end(), part.begin(), part.end());
  }
  return arguments;
}

#endif  // TESTS_MIGRATE_JSONTESTING_H_
