#include "Report.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "MigrateTesting.h"

using schemaplan::Verdict;

namespace {

Counts &counts(ApplyResult *result, Verdict verdict) {
  return result->verdicts[static_cast<std::size_t>(verdict)];
}

ApplyOptions options() { return {{"old/dir/", "new dir"}, "../out"}; }

std::string report(const ApplyResult &result) {
  std::ostringstream out;
  printReport(options(), result, &out);
  return out.str();
}

// A result of directories that have all files.
ApplyResult complete() {
  ApplyResult result;
  result.inOld.fill(true);
  result.inNew.fill(true);
  return result;
}

TEST(ReportTest, OfNothingHasTheSumsAlone) {
  EXPECT_EQ(report(complete()), R"(old installation: old/dir/
                                              read  identical   excluded      added   replaced
  all                                            0          0          0          0          0

new release: new dir
result: ../out
                                           release     result
  all                                            0          0
)");
}

TEST(ReportTest, SaysThatAListHasNoOid) {
  ApplyOptions listed = options();
  listed.migration.modifiedOids = "list";
  std::ostringstream out;
  printReport(listed, complete(), &out);
  EXPECT_EQ(out.str(), report(complete()) +
                           "\nmodified schema: list\n"
                           "  no OID in the list\n");
}

TEST(ReportTest, NamesTheFilesThatAreNotThere) {
  ApplyResult result = complete();
  result.inOld[fileIndex("V3.user.at")] = false;
  result.inNew.fill(false);
  result.inNew[fileIndex("V3.qor.at")] = true;
  EXPECT_EQ(report(result), R"(old installation: old/dir/
  not there: V3.user.at
                                              read  identical   excluded      added   replaced
  all                                            0          0          0          0          0

new release: new dir
  not there: V3.user.at V3.user.oc V3.qor.oc V3.system.at V3.system.oc V3.config.at V3.config.oc V3.modifiedschema
result: ../out
                                           release     result
  all                                            0          0
)");
}

TEST(ReportTest, HasARowForEachFileAndKindWithANumber) {
  ApplyResult result = complete();
  const std::size_t userAt = fileIndex("V3.user.at");
  const std::size_t systemOc = fileIndex("V3.system.oc");
  const std::size_t modified = fileIndex("V3.modifiedschema");
  result.oldRead[userAt] = {21, 0, 12345};
  counts(&result, Verdict::kIdentical)[userAt] = {1, 0, 1};
  counts(&result, Verdict::kExcluded)[userAt] = {2, 0, 20};
  counts(&result, Verdict::kAdded)[userAt] = {3, 0, 300};
  counts(&result, Verdict::kReplaces)[userAt] = {5, 0, 4000};
  counts(&result, Verdict::kShadowed)[userAt] = {10, 0, 8024};
  result.oldRead[systemOc] = {0, 7, 0};
  counts(&result, Verdict::kAdded)[systemOc] = {0, 7, 0};
  counts(&result, Verdict::kReplaces)[modified] = {0, 0, 1};
  result.newRead[userAt] = {9, 8, 7};
  result.written[userAt] = {10, 8, 9};
  result.newRead[modified] = {6, 0, 0};
  result.written[systemOc] = {0, 0, 1};
  EXPECT_EQ(report(result), R"(old installation: old/dir/
                                              read  identical   excluded      added   replaced   shadowed
  V3.user.at        attribute types             21          1          2          3          5         10
                    storage definitions      12345          1         20        300       4000       8024
  V3.system.oc      object classes               7          0          0          7          0          0
  V3.modifiedschema storage definitions          0          0          0          0          1          0
  all                                        12373          2         22        310       4006       8034

new release: new dir
result: ../out
                                           release     result
  V3.user.at        attribute types              9         10
                    object classes               8          8
                    storage definitions          7          9
  V3.system.oc      storage definitions          0          1
  V3.modifiedschema attribute types              6          0
  all                                           30         28
)");
}

TEST(ReportTest, HasAColumnForEachVerdictThatADefinitionMeets) {
  ApplyResult result = complete();
  const std::size_t userAt = fileIndex("V3.user.at");
  result.oldRead[userAt] = {6, 0, 0};
  counts(&result, Verdict::kWithdrawn)[userAt] = {1, 0, 0};
  counts(&result, Verdict::kShadowed)[userAt] = {2, 0, 0};
  counts(&result, Verdict::kBlocked)[userAt] = {3, 0, 0};
  EXPECT_EQ(report(result), R"(old installation: old/dir/
                                              read  identical   excluded      added   replaced  withdrawn   shadowed   left out
  V3.user.at        attribute types              6          0          0          0          0          1          2          3
  all                                            6          0          0          0          0          1          2          3

new release: new dir
result: ../out
                                           release     result
  all                                            0          0
)");
}

}  // namespace
