#include "FindingCodes.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "support/TemporaryDirectory.h"

using schemacheck::allCodes;
using schemacheck::Code;
using schemacheck::CodeDescription;
using schemacheck::describe;
using schemacheck::Severity;

namespace {

const char kIntroduction[] =
    R"(# Findings

What `schema-migrate check` prints: the code in brackets, and here what has
caused it and what to do about it. An error is what makes the library hang or
fail, and what makes it lose or change a definition; a warning is what it drops
without harm to the rest, and what the server may stumble over. Codes keep their
names.

| code | severity | cause | remedy |
|---|---|---|---|
)";

// docs/findings.md as it should be.
std::string document() {
  std::string text = kIntroduction;
  for (const CodeDescription &code : allCodes()) {
    text += std::string("| `") + code.name + "` | " +
            (code.severity == Severity::kError ? "error" : "warning") + " | " +
            code.cause + " | " + code.remedy + " |\n";
  }
  return text;
}

TEST(FindingCodesTest, AreAllInTheDocument) {
  EXPECT_EQ(readText(SCHEMA_DOCS_DIR "/findings.md"), document());
}

TEST(FindingCodesTest, AreDescribedInTheirOrder) {
  ASSERT_EQ(allCodes().front().code, Code::kNotADirectory);
  ASSERT_EQ(allCodes().back().code, Code::kListBadOid);
  for (std::size_t i = 0; i < allCodes().size(); ++i) {
    EXPECT_EQ(static_cast<std::size_t>(allCodes()[i].code), i);
    EXPECT_EQ(&describe(allCodes()[i].code), &allCodes()[i]);
  }
}

TEST(FindingCodesTest, HaveNamesOfTheirOwn) {
  std::set<std::string> names;
  for (const CodeDescription &code : allCodes()) {
    const std::string name = code.name;
    EXPECT_TRUE(names.insert(name).second) << name;
    EXPECT_EQ(name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ-"),
              std::string::npos)
        << name;
  }
}

// The document is a table, and texts are sentences.
TEST(FindingCodesTest, HaveTextsThatFitIntoATable) {
  for (const CodeDescription &code : allCodes()) {
    for (const std::string text : {code.cause, code.remedy}) {
      EXPECT_EQ(text.find_first_of("|\n\t"), std::string::npos) << code.name;
      ASSERT_FALSE(text.empty()) << code.name;
      EXPECT_TRUE(text[0] >= 'A' && text[0] <= 'Z') << code.name;
      EXPECT_TRUE(text.back() == '.' || text.back() == ')') << code.name;
    }
  }
}

}  // namespace
