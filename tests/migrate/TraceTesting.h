// Helpers of the tests of traces.
#ifndef TESTS_MIGRATE_TRACETESTING_H_
#define TESTS_MIGRATE_TRACETESTING_H_

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "CommandsTesting.h"

// The lines of a trace without their times, which are checked for their form.
inline Arguments withoutTimes(const std::string &text) {
  static const std::regex kTime(
      "([01][0-9]|2[0-3]):[0-5][0-9]:[0-5][0-9]\\.[0-9]{6} (.*)");
  Arguments found;
  std::istringstream in(text);
  std::string line;
  while (std::getline(in, line)) {
    std::smatch match;
    EXPECT_TRUE(std::regex_match(line, match, kTime)) << line;
    found.push_back(match[2]);
  }
  EXPECT_TRUE(text.empty() || text.back() == '\n');
  return found;
}

// What is read and dumped below.
constexpr char kClassFile[] = "objectclasses=( 1.1 ABSTRACT )\n";

// What a trace of `dump --table classes` holds of it.
inline const Arguments kTrace = {
    "> SchemaManager::readFile",
    "  > SchemaLexan::fileIsOpen",
    "  < SchemaLexan::fileIsOpen 1",
    "  > SchemaLexan::lexan",
    "  < SchemaLexan::lexan 1002",
    "  > SchemaLexan::lexan",
    "  < SchemaLexan::lexan 61",
    "  > ObjectClass::parse",
    "    > SchemaLexan::match",
    "      > SchemaLexan::lexan",
    "      < SchemaLexan::lexan 40",
    "    < SchemaLexan::match 0",
    "    > SchemaLexan::match",
    "      > SchemaLexan::lexan",
    "      < SchemaLexan::lexan 2024",
    "    < SchemaLexan::match 0",
    "    > SchemaLexan::lexan",
    "    < SchemaLexan::lexan 1023",
    "    > SchemaLexan::lexan",
    "    < SchemaLexan::lexan 41",
    "    > SchemaLexan::lexan",
    "    < SchemaLexan::lexan 260",
    "  < ObjectClass::parse 1",
    "  > SchemaLexan::lexan",
    "  < SchemaLexan::lexan 260",
    "  > SchemaLexan::lexan",
    "  < SchemaLexan::lexan 260",
    "  = SchemaManager::readFile: readFile: Successfully parsed the file, "
    "V3.user.oc.",
    "< SchemaManager::readFile 0",
    "> SchemaManager::dumpOcTable",
    "  > ObjectClass::dump()",
    "  < ObjectClass::dump() 0",
    "< SchemaManager::dumpOcTable 0",
};

// Those lines that begin so, behind blanks.
inline Arguments beginning(const Arguments &all, const std::string &marks,
                           bool nested) {
  Arguments found;
  for (const std::string &line : all) {
    const std::size_t mark = line.find_first_not_of(' ');
    if (marks.find(line[mark]) != std::string::npos) {
      found.push_back(nested ? line : line.substr(mark));
    }
  }
  return found;
}

// A test of traces of the command on a small "old".
class TraceTest : public MigrateTest {
 protected:
  TraceTest() { write("old/V3.user.oc", kClassFile); }

  // What a run says of the files that are not there.
  static std::string warningsOf(const Arguments &arguments) {
    std::string warnings;
    for (const std::string &argument : arguments) {
      if (arguments[0] != "apply" && argument == "old") {
        warnings += onlyThere("old", "V3.user.oc");
      }
    }
    return warnings;
  }

  // The trace of a run that must succeed.
  Arguments traceOf(Arguments arguments, const std::string &mask) const {
    arguments.insert(arguments.end(), {"--trace", "trace"});
    if (!mask.empty()) {
      arguments.insert(arguments.end(), {"--trace-events", mask});
    }
    const CommandResult result = run(arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, warningsOf(arguments));
    const std::string text = read("trace");
    std::filesystem::remove(path("trace"));
    return withoutTimes(text);
  }
};

inline const Arguments kDump = {"dump", "--dir", "old", "--table", "classes"};

#endif  // TESTS_MIGRATE_TRACETESTING_H_
