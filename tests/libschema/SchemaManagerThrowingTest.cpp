// Operations that run out of memory.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstddef>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <utility>

#include "SchemaManager.h"
#include "ldtr.h"
#include "libschema/SchemaManagerTesting.h"
#include "libschema/SchemaManagerTexts.h"
#include "support/Child.h"

namespace {

void printRecord(const ldtr_record &record, void * /*context*/) {
  std::fprintf(stderr, "%s %x %ld\n",
               record.type == ldtr_record::Type::kEntry  ? "entry"
               : record.type == ldtr_record::Type::kExit ? "exit"
                                                         : "debug",
               record.id, record.code);
}

// More than malloc has in reserve for any thread.
constexpr std::size_t kLongText = std::size_t{80} << 20U;

// Runs `operation` with a text that is too long for a second one of its length
// to find memory, and with everything traced.
ChildResult runWithLittleMemory(
    const std::function<void(SchemaManager *, std::string)> &operation) {
  const auto schema = makeSchema({{"V3.user.oc", classLine("2.1", "k")}});
  return runInChild([&] {
    rlimit limit = {};
    getrlimit(RLIMIT_AS, &limit);
    if (limit.rlim_cur == RLIM_INFINITY) {
      std::fputs("unlimited", stderr);
      return;
    }
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    limit.rlim_cur = pages * 4096 + kLongText + (kLongText >> 1U);
    setrlimit(RLIMIT_AS, &limit);
    std::string text(kLongText, 'x');
    ldtr_set_sink(printRecord, nullptr);
    trcEvents = ~0U;
    operation(schema.get(), std::move(text));
  });
}

struct ThrowingCall {
  const char *name;
  std::function<void(SchemaManager *, std::string)> run;
  std::string records;
};

const ThrowingCall kThrowingCalls[] = {
    {"GetAttr",
     [](SchemaManager *schema, std::string text) {
       schema->getAttr(std::move(text));
     },
     "entry 53050400 0\nexit 53050400 0\n"},
    {"ReadFile",
     [](SchemaManager *schema, std::string text) {
       schema->readFile(std::move(text));
     },
     "entry 53051000 0\nexit 53051000 0\n"},
    {"WriteFile",
     [](SchemaManager *schema, std::string text) {
       schema->writeFile(std::move(text), "V3.user.oc");
     },
     "entry 53051100 0\nexit 53051100 0\n"},
    {"WriteSetToFile",
     [](SchemaManager *schema, std::string text) {
       schema->writeSetToFile({}, std::move(text));
     },
     "entry 53051200 0\nexit 53051200 0\n"},
    {"ReadExcludedOids",
     [](SchemaManager *schema, std::string text) {
       schema->readExcludedOids(std::move(text));
     },
     "entry 53051300 0\nexit 53051300 0\n"},
    {"DelOidFromFileSet",
     [](SchemaManager *schema, std::string text) {
       schema->delOidFromFileSet(std::move(text));
     },
     "entry 53051400 0\nexit 53051400 0\n"},
};

TEST(SchemaManagerThrowingTest, ExitIsTracedWhenAnExceptionPasses) {
  for (const ThrowingCall &throwing : kThrowingCalls) {
    SCOPED_TRACE(throwing.name);
    const ChildResult result = runWithLittleMemory(throwing.run);
    if (result.error == "unlimited") {
      GTEST_SKIP() << "a sanitizer does not throw when memory is short";
    }
    EXPECT_EQ(result.end, ChildResult::End::kOutOfMemory);
    EXPECT_EQ(result.error.substr(0, 200), throwing.records);
  }
}

}  // namespace
