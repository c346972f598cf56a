// Traces of the library's operations.
#include "TraceFile.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "TraceTesting.h"
#include "ldtr.h"

namespace fs = std::filesystem;

namespace {

// The names of the functions of each class, in the order of their ids.
const std::vector<std::vector<std::string>> kFunctions = {
    {"Attribute::attrsEqual", "Attribute::parse", "Attribute::dump(ofstream)",
     "Attribute::dump()"},
    {"QORAttribute::parse", "QORAttribute::qorAttrsEqual",
     "QORAttribute::dump(ofstream)", "QORAttribute::dump()"},
    {"ObjectClass::objsEqual", "ObjectClass::parse",
     "ObjectClass::dump(ofstream)", "ObjectClass::dump()"},
    {"SchemaLexan::lookUp", "SchemaLexan::lexan", "SchemaLexan::match",
     "SchemaLexan::insertString", "SchemaLexan::insertCharacter",
     "SchemaLexan::dumpTable", "SchemaLexan::dump",
     "SchemaLexan::getLineNumber", "SchemaLexan::getFileName",
     "SchemaLexan::getWorkingDir", "SchemaLexan::fileIsOpen"},
    {"SchemaManager::dumpAttrTable",     "SchemaManager::dumpQORAttrTable",
     "SchemaManager::dumpOcTable",       "SchemaManager::getAttr",
     "SchemaManager::getQORAttr",        "SchemaManager::getObjClass",
     "SchemaManager::dumpUserOc",        "SchemaManager::dumpUserAt",
     "SchemaManager::dumpQorOc",         "SchemaManager::dumpQorAt",
     "SchemaManager::dumpSysOc",         "SchemaManager::dumpSysAt",
     "SchemaManager::compObjTables",     "SchemaManager::compAttrTables",
     "SchemaManager::compQORAttrTables", "SchemaManager::readFile",
     "SchemaManager::writeFile",         "SchemaManager::writeSetToFile",
     "SchemaManager::readExcludedOids",  "SchemaManager::delOidFromFileSet",
     "SchemaManager::mergeSchemas",      "SchemaManager::mergeAttrs",
     "SchemaManager::mergeQORAttrs",     "SchemaManager::mergeObjClasses",
     "SchemaManager::findOidInSet",      "SchemaManager::dumpEOids",
     "SchemaManager::compSchemas",       "SchemaManager::checkCollisions",
     "SchemaManager::modifySchema",      "SchemaManager::isExcluded",
     "SchemaManager::delOidFromModSch",  "SchemaManager::checkObjClasses",
     "SchemaManager::checkAttrs",        "SchemaManager::checkQORAttrs",
     "SchemaManager::getOcTable",        "SchemaManager::getQORAttrTable",
     "SchemaManager::getAttrTable",      "SchemaManager::isModFileEmpty"},
};

TEST(FunctionNameTest, OfEachFunctionOfTheLibrary) {
  for (std::size_t number = 0; number < kFunctions.size(); ++number) {
    const auto classId = 0x53000000U | (static_cast<unsigned int>(number) + 1U)
                                           << 16;
    for (unsigned int i = 0; i < 256; ++i) {
      const unsigned int id = classId | i << 8;
      char hexadecimal[16];
      std::snprintf(hexadecimal, sizeof hexadecimal, "0x%08x", id);
      const bool known = i >= 1 && i <= kFunctions[number].size();
      EXPECT_EQ(functionName(id),
                known ? kFunctions[number][i - 1] : hexadecimal);
    }
  }
}

TEST(FunctionNameTest, OfOthersIsTheIdInHexadecimal) {
  EXPECT_EQ(functionName(0), "0x00000000");
  EXPECT_EQ(functionName(0x53010101), "0x53010101");
  EXPECT_EQ(functionName(0x53060100), "0x53060100");
  EXPECT_EQ(functionName(0x52010100), "0x52010100");
  EXPECT_EQ(functionName(0xFFFFFFFF), "0xffffffff");
}

class TraceFileTest : public TraceTest {};

TEST_F(TraceFileTest, OfARunThatFailsEndsThere) {
  write("old/V3.user.oc", "objectclasses=( 1.1 NAME 'a'\n");
  const CommandResult result =
      run({"dump", "--dir", "old", "--trace", "trace"});
  EXPECT_EQ(result.status, kBadInput);
  // What was refused is not read by the library; so there is nothing to keep.
  EXPECT_FALSE(fs::exists(path("trace")));

  write("old/V3.user.at", kClassFile);
  write("new/V3.user.at", "");
  write("list", "1.1");
  EXPECT_EQ(run({"collisions", "--old", "new", "--new", "new",
                 "--excluded-oids", "list", "--trace", "trace"})
                .status,
            kBadInput);
  EXPECT_NE(read("trace"), "");
}

TEST_F(TraceFileTest, ARunThatFailsRemovesNothingButItsOwnFile) {
  write("old/V3.user.oc", "objectclasses=( 1.1 NAME 'a'\n");
  fs::create_symlink("/dev/null", path("null"));
  fs::create_symlink("target", path("link"));
  for (const char *trace : {"/dev/null", "null", "link"}) {
    SCOPED_TRACE(trace);
    EXPECT_EQ(run({"dump", "--dir", "old", "--trace", trace}).status,
              kBadInput);
    EXPECT_TRUE(fs::exists("/dev/null"));
    EXPECT_TRUE(fs::is_symlink(path("null")));
    EXPECT_TRUE(fs::is_symlink(path("link")));
    EXPECT_FALSE(fs::exists(path("target")));
  }
}

TEST_F(TraceFileTest, OfARunThatSucceedsStaysThoughEmpty) {
  EXPECT_EQ(traceOf(kDump, "0x10000"), Arguments());
}

TEST_F(TraceFileTest, MustNotLieInTheResult) {
  write("new/V3.user.at", "objectclasses=( 1.1 NAME 'a'\n");
  fs::create_directory(path("empty"));
  fs::create_directory_symlink("empty", path("link"));
  const struct {
    const char *out;
    const char *trace;
  } kCases[] = {
      {"out", "out"},          {"out", "out/"},
      {"out", "out/trace"},    {"out", "./new/../out/a/trace"},
      {"out/", "out/trace"},   {"empty", "empty/trace"},
      {"empty", "link/trace"}, {"link", "empty/trace"},
  };
  const auto before = snapshotOf(root());
  for (const auto &[out, trace] : kCases) {
    SCOPED_TRACE(trace);
    expectResult(run({"apply", "--old", "old", "--new", "new", "--out", out,
                      "--trace", trace}),
                 kUsage, "",
                 std::string(trace) + ": error: expected a file outside " +
                     out + ", found one inside\n");
    EXPECT_EQ(snapshotOf(root()), before);
  }
  write("old/V3.user.oc", "");
  write("new/V3.user.at", "");
  const CommandResult result = run({"apply", "--old", "old", "--new", "new",
                                    "--out", "out", "--trace", "out.trace"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
}

TEST_F(TraceFileTest, MustNotBeThere) {
  write("trace", "text\n");
  fs::create_symlink("trace", path("link"));
  const struct {
    const char *trace;
    const char *error;
  } kCases[] = {
      {"trace",
       "trace: error: expected no file there for the trace, found one"},
      {"link", "link: error: expected no file there for the trace, found one"},
      {"old/V3.user.oc",
       "old/V3.user.oc: error: expected no file there for the trace, found "
       "one"},
      {"old", "old: error: cannot open the file for the trace"},
      {"missing/trace",
       "missing/trace: error: cannot open the file for the trace"},
  };
  const auto before = snapshotOf(root());
  for (const auto &[trace, error] : kCases) {
    SCOPED_TRACE(trace);
    Arguments arguments = kDump;
    arguments.insert(arguments.end(), {"--trace", trace});
    expectResult(run(arguments), kFileError, "", std::string(error) + '\n');
    EXPECT_EQ(snapshotOf(root()), before);
  }
}

TEST_F(TraceFileTest, AFullDiskIsTrouble) {
  const std::string error =
      warningsOf(kDump) + "/dev/full: error: cannot write the trace\n";
  Arguments arguments = kDump;
  arguments.insert(arguments.end(), {"--trace", "/dev/full"});
  const CommandResult result = run(arguments);
  expectResult(result, kFileError, run(kDump).out, error);
}

TEST_F(TraceFileTest, AFullDiskDoesNotUndoAResult) {
  write("new/V3.user.at", "");
  write("old/V3.user.oc", "");
  const CommandResult result = run({"apply", "--old", "old", "--new", "new",
                                    "--out", "out", "--trace", "/dev/full"});
  EXPECT_EQ(result.status, kFileError);
  EXPECT_EQ(result.error,
            "/dev/full: error: cannot write the trace; the result is complete "
            "in out\n");
  EXPECT_EQ(snapshotOf(path("out")).size(), 8U);
}

TEST_F(TraceFileTest, WrongMasks) {
  const auto before = snapshotOf(root());
  for (const std::string mask : {"", "-1", "4294967296", "0x100000000", "0x",
                                 "xyz", "1.5", "0x1000z", "0x1000,1"}) {
    SCOPED_TRACE(mask);
    Arguments arguments = kDump;
    arguments.insert(arguments.end(), {"--trace", "t", "--trace-events", mask});
    expectResult(
        run(arguments), kUsage, "",
        usageError(mask.empty()
                       ? "--trace-events: expected a number, found "
                         "nothing"
                       : "Could not convert: --trace-events = " + mask));
  }
  for (const std::string mask : {"0", "1", "0x00000fff", "0xfbfccfff"}) {
    SCOPED_TRACE(mask);
    Arguments arguments = kDump;
    arguments.insert(arguments.end(), {"--trace", "t", "--trace-events", mask});
    expectResult(run(arguments), kUsage, "",
                 usageError("--trace-events: the mask has none of the bits "
                            "0x04033000, so that nothing would be traced"));
  }
  Arguments arguments = kDump;
  arguments.insert(arguments.end(), {"--trace-events", "0x1000"});
  expectResult(run(arguments), kUsage, "",
               usageError("--trace-events requires --trace"));
  EXPECT_EQ(snapshotOf(root()), before);
}

// The time of day in microseconds.
using Microseconds = std::chrono::microseconds;
constexpr Microseconds kDay = std::chrono::hours(24);

Microseconds timeOfDay(const std::string &line) {
  int hours = 0;
  int minutes = 0;
  int seconds = 0;
  int fraction = 0;
  EXPECT_EQ(std::sscanf(line.c_str(), "%d:%d:%d.%d", &hours, &minutes, &seconds,
                        &fraction),
            4);
  return std::chrono::hours(hours) + std::chrono::minutes(minutes) +
         std::chrono::seconds(seconds) + Microseconds(fraction);
}

// In a zone that is ahead of UTC by `ahead`.
Microseconds timeOfDayNow(Microseconds ahead) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return (std::chrono::floor<Microseconds>(now) + ahead) % kDay;
}

// The zone is not UTC, and its hour has one digit.
TEST_F(TraceFileTest, TellsTheLocalTimeOfDay) {
  using std::chrono::hours;
  const auto hour = std::chrono::floor<hours>(timeOfDayNow(hours(0)));
  const hours aheadHours = (hours(26) - hour) % hours(24);
  const auto ahead = aheadHours + std::chrono::minutes(13);
  const std::string zone =
      "AHEAD-" + std::to_string(aheadHours.count()) + ":13";

  const Microseconds before = timeOfDayNow(ahead);
  Arguments arguments = kDump;
  arguments.insert(arguments.end(), {"--trace", "trace"});
  const CommandResult result =
      run(arguments, [&zone] { setenv("TZ", zone.c_str(), 1); });
  const Microseconds after = timeOfDayNow(ahead);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(withoutTimes(read("trace")), kTrace);
  EXPECT_LE(before, timeOfDay(read("trace")));
  EXPECT_LE(timeOfDay(read("trace")), after);
}

TEST_F(TraceFileTest, AMessageIsOneLine) {
  TraceFile trace(path("trace"), 0x04000000);
  for (const char *text : {"text", "text\n\n", "", "\n"}) {
    ldtr_formater_local(0x53051000, 0x03400000, nullptr)
        .debug(0x04000000, "%s", text);
  }
  trace.close();
  EXPECT_EQ(
      withoutTimes(read("trace")),
      (Arguments{
          "= SchemaManager::readFile: text", "= SchemaManager::readFile: text",
          "= SchemaManager::readFile: ", "= SchemaManager::readFile: "}));
}

TEST_F(TraceFileTest, EndsWithItsObject) {
  {
    TraceFile trace(path("trace"), 0x1000);
    EXPECT_EQ(trcEvents, 0x1000U);
    ldtr_write(0x03200000, 0x53051000, nullptr);
    ldtr_write(0x03200000, 0x12345678, nullptr);
    ldtr_exit_errcode(0x12345678, 33, 0x1000, -5, nullptr);
    trace.close();
    EXPECT_EQ(trcEvents, 0U);
  }
  EXPECT_EQ(withoutTimes(read("trace")),
            (Arguments{"> SchemaManager::readFile", "  > 0x12345678",
                       "  < 0x12345678 -5"}));
  { TraceFile trace(path("second"), 0x3000); }
  EXPECT_EQ(trcEvents, 0U);
  ldtr_write(0x03200000, 0x53051000, nullptr);
  EXPECT_FALSE(fs::exists(path("second")));
}

// Operations and walks of tables are asked for by bits of their own.
TEST_F(TraceFileTest, ExitsWithoutEntriesLieWhereTheyAre) {
  const auto enter = [](unsigned int id) {
    ldtr_write(0x03200000, id, nullptr);
  };
  const auto leave = [](unsigned int id) {
    ldtr_exit_errcode(id, 33, 0x1000, 0, nullptr);
  };
  {
    TraceFile trace(path("trace"), 0x12000);
    leave(1);
    enter(2);
    leave(3);
    enter(4);
    enter(4);
    leave(3);
    leave(2);
    leave(4);
    leave(4);
    leave(3);
    leave(2);
    leave(2);
    trace.close();
  }
  EXPECT_EQ(
      withoutTimes(read("trace")),
      (Arguments{"< 0x00000001 0", "> 0x00000002", "  < 0x00000003 0",
                 "  > 0x00000004", "    > 0x00000004", "      < 0x00000003 0",
                 "      < 0x00000002 0", "    < 0x00000004 0",
                 "  < 0x00000004 0", "  < 0x00000003 0", "< 0x00000002 0",
                 "< 0x00000002 0"}));
}

}  // namespace
