// What a trace of the library's operations holds.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "TraceTesting.h"

namespace fs = std::filesystem;

namespace {

class TraceContentTest : public TraceTest {
 protected:
  // The operations that a run begins.
  Arguments begunBy(const Arguments &arguments) const {
    Arguments begun;
    for (const std::string &line : traceOf(arguments, "")) {
      if (line.find("> SchemaManager::") != std::string::npos) {
        begun.push_back(line);
      }
    }
    return begun;
  }
};

// With the beginnings of the writing of all files behind them.
Arguments andWriting(Arguments begun) {
  for (int file = 0; file < 7; ++file) {
    begun.insert(begun.end(), {"> SchemaManager::writeFile",
                               "  > SchemaManager::writeSetToFile"});
  }
  return begun;
}

TEST_F(TraceContentTest, HoldsEachCallOfTheLibraryOnce) {
  EXPECT_EQ(traceOf(kDump, ""), kTrace);
}

TEST_F(TraceContentTest, LeavesTheOutputAsItIs) {
  const CommandResult without = run(kDump);
  Arguments traced = kDump;
  traced.insert(traced.end(), {"--trace", "trace"});
  expectResult(run(traced), without.status, without.out, without.error);
}

TEST_F(TraceContentTest, TheMaskSaysWhatIsTraced) {
  const struct {
    Arguments masks;
    Arguments trace;
  } kCases[] = {
      {{"0x1000", "4096", "0X1000", "0x00001000", "0x3000", "0x1001"},
       beginning(kTrace, "<>", true)},
      {{"0x2000", "8192"}, beginning(kTrace, "<", false)},
      {{"0x4000000", "0x04000000", "67108864"}, beginning(kTrace, "=", false)},
      {{"0x04001000"}, kTrace},
      {{"0x04033000", "0xffffffff", "4294967295"}, kTrace},
      {{"0x10000", "0x20000", "0xfbffcfff"}, {}},
  };
  for (const auto &[masks, trace] : kCases) {
    for (const std::string &mask : masks) {
      SCOPED_TRACE(mask);
      EXPECT_EQ(traceOf(kDump, mask), trace);
    }
  }
}

TEST_F(TraceContentTest, TheWalksOfTablesHaveBitsOfTheirOwn) {
  write("old/V3.user.oc", "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n");
  write("list", "1.1\n");
  Arguments expected = {
      "> SchemaManager::compAttrTables",
      "< SchemaManager::compAttrTables 1",
      "> SchemaManager::compQORAttrTables",
      "< SchemaManager::compQORAttrTables 1",
      "> SchemaManager::compObjTables",
      "  > SchemaManager::isExcluded",
      "  < SchemaManager::isExcluded 0",
      "  > SchemaManager::delOidFromFileSet",
      "  < SchemaManager::delOidFromFileSet 0",
      "< SchemaManager::compObjTables 1",
      "> SchemaManager::mergeAttrs",
      "< SchemaManager::mergeAttrs 1",
      "> SchemaManager::mergeQORAttrs",
      "< SchemaManager::mergeQORAttrs 1",
      "> SchemaManager::mergeObjClasses",
      "< SchemaManager::mergeObjClasses 1",
      "> SchemaManager::delOidFromModSch",
      "< SchemaManager::delOidFromModSch 32",
  };
  for (int file = 0; file < 7; ++file) {
    expected.insert(expected.end(), {"> SchemaManager::writeSetToFile",
                                     "< SchemaManager::writeSetToFile 0"});
  }
  const auto masked = [this](const std::string &mask) {
    const Arguments trace = traceOf({"apply", "--old", "old", "--new", "old",
                                     "--out", "out", "--modified-oids", "list"},
                                    mask);
    fs::remove_all(path("out"));
    return trace;
  };
  EXPECT_EQ(masked("0x10000"), expected);
  EXPECT_EQ(masked("0x20000"), beginning(expected, "<", false));
}

// What the command asks the library to check on a migration is left out.
TEST_F(TraceContentTest, OfAMigrationHoldsItsStepsAlone) {
  write("old/V3.user.oc", "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n");
  write("new/V3.user.at", "");
  const Arguments expected = {
      "> SchemaManager::readFile",
      "> SchemaManager::readFile",
      "> SchemaManager::compSchemas",
      "  > SchemaManager::compAttrTables",
      "  > SchemaManager::compQORAttrTables",
      "  > SchemaManager::compObjTables",
      "    > SchemaManager::getObjClass",
      "    > SchemaManager::isExcluded",
      "> SchemaManager::mergeSchemas",
      "  > SchemaManager::mergeAttrs",
      "  > SchemaManager::mergeQORAttrs",
      "  > SchemaManager::mergeObjClasses",
      "    > SchemaManager::findOidInSet",
  };
  EXPECT_EQ(begunBy({"apply", "--old", "old", "--new", "new", "--out", "out"}),
            andWriting(expected));
}

// Neither is the making of the plan, which acts through the excluded OIDs.
TEST_F(TraceContentTest, OfAPreferenceHoldsTheListOfOids) {
  write("old/V3.user.oc", "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n");
  write("new/V3.user.oc", "objectclasses=( 1.1 NAME 'a' AUXILIARY )\n");
  const Arguments expected = {
      "> SchemaManager::readFile",
      "> SchemaManager::readFile",
      "> SchemaManager::readExcludedOids",
      "> SchemaManager::compSchemas",
      "  > SchemaManager::compAttrTables",
      "  > SchemaManager::compQORAttrTables",
      "  > SchemaManager::compObjTables",
      "    > SchemaManager::getObjClass",
      "    > SchemaManager::getObjClass",
      "    > SchemaManager::isExcluded",
      "    > SchemaManager::delOidFromFileSet",
      "> SchemaManager::mergeSchemas",
      "  > SchemaManager::mergeAttrs",
      "  > SchemaManager::mergeQORAttrs",
      "  > SchemaManager::mergeObjClasses",
  };
  EXPECT_EQ(begunBy({"apply", "--old", "old", "--new", "new", "--out", "out",
                     "--prefer", "new"}),
            andWriting(expected));
}

TEST_F(TraceContentTest, EachCommandIsTraced) {
  write("old/V3.user.oc", "");
  const struct {
    Arguments arguments;
    const char *last;  // operation
  } kCases[] = {
      {{"collisions", "--old", "old", "--new", "old"},
       "< SchemaManager::getQORAttrTable 0"},
      {{"compare", "--old", "old", "--new", "old"},
       "< SchemaManager::readFile 0"},
      {{"dump", "--dir", "old"}, "< SchemaManager::dumpEOids 0"},
      {{"apply", "--old", "old", "--new", "old", "--out", "out"},
       "< SchemaManager::writeFile 0"},
  };
  for (const auto &[arguments, last] : kCases) {
    SCOPED_TRACE(arguments[0]);
    const Arguments trace = traceOf(arguments, "");
    ASSERT_FALSE(trace.empty());
    EXPECT_EQ(trace.front(), "> SchemaManager::readFile");
    EXPECT_EQ(trace.back(), last);
  }
}

TEST_F(TraceContentTest, TheCommandsOwnQuestionsAreNotTraced) {
  const Arguments reading(kTrace.begin(), kTrace.end() - 4);
  Arguments readingBoth = reading;
  readingBoth.insert(readingBoth.end(), reading.begin(), reading.end());
  EXPECT_EQ(traceOf({"compare", "--old", "old", "--new", "old"}, ""),
            readingBoth);
  Arguments showing = reading;
  showing.insert(showing.end(),
                 {"> ObjectClass::dump()", "< ObjectClass::dump() 0"});
  EXPECT_EQ(traceOf({"show", "--dir", "old", "1.1"}, ""), showing);
}

TEST_F(TraceContentTest, OfAnUnknownNameIsWritten) {
  Arguments arguments = {"show", "--dir", "old", "x", "--trace", "trace"};
  const CommandResult result = run(arguments);
  expectResult(result, kFindings, "",
               warningsOf(arguments) + "old: error: nothing is called 'x'\n");
  const Arguments trace = withoutTimes(read("trace"));
  EXPECT_EQ(trace, Arguments(kTrace.begin(), kTrace.end() - 4));
}

}  // namespace
