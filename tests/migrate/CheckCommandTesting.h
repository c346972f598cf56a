// Helpers of the tests of the command check.
#ifndef TESTS_MIGRATE_CHECKCOMMANDTESTING_H_
#define TESTS_MIGRATE_CHECKCOMMANDTESTING_H_

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "CommandsTesting.h"
#include "support/Child.h"

// Lets the command use a second of the processor's time and some memory.
inline void withLimits() {
  if (isSanitized()) {  // which takes more of both
    withoutLeakCheck();
    return;
  }
  const rlimit seconds = {1, 1};
  setrlimit(RLIMIT_CPU, &seconds);
  const rlimit bytes = {rlim_t{192} << 20, rlim_t{192} << 20};
  setrlimit(RLIMIT_AS, &bytes);
}

// A directory "d" and everything that is to be said of it.
struct CheckCase {
  const char *name;
  std::vector<std::pair<std::string, std::string>> files;
  std::string findings;
};

inline void PrintTo(const CheckCase &check, std::ostream *out) {
  *out << check.name;
}

inline std::string nameOf(const testing::TestParamInfo<CheckCase> &info) {
  return info.param.name;
}

inline std::size_t count(const std::string &text, const std::string &part) {
  std::size_t number = 0;
  for (std::size_t at = text.find(part); at != std::string::npos;
       at = text.find(part, at + 1)) {
    ++number;
  }
  return number;
}

// The findings, and behind them the line with their numbers.
inline std::string withSum(const std::string &findings) {
  const std::size_t errors = count(findings, ": error: [");
  const std::size_t warnings = count(findings, ": warning: [");
  return findings + std::to_string(errors) +
         (errors == 1 ? " error, " : " errors, ") + std::to_string(warnings) +
         (warnings == 1 ? " warning\n" : " warnings\n");
}

class CheckCommandTest : public ReadingCommandTest,
                         public testing::WithParamInterface<CheckCase> {
 protected:
  void SetUp() override {
    std::filesystem::create_directory(path("d"));
    for (const auto &[name, text] : GetParam().files) {
      write("d/" + name, text);
    }
  }

  // Expects the findings, whole, within the limits.
  void expectFindings() const {
    const std::string &findings = GetParam().findings;
    expectResult(run({"check", "d"}, withLimits),
                 count(findings, ": error: [") == 0 ? kDone : kFindings,
                 withSum(findings), "");
    expectResult(run({"check", "--strict", "d"}, withLimits),
                 findings.empty() ? kDone : kFindings, withSum(findings), "");
  }
};

#endif  // TESTS_MIGRATE_CHECKCOMMANDTESTING_H_
