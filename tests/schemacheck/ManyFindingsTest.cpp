// What is said of a definition that has the same thing wrong very often: a
// hundred times, and that there is more.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "CheckTesting.h"
#include "DirectoryCheck.h"

using schemacheck::Finding;
using schemacheck::SchemaDirectory;

namespace {

constexpr char kMore[] = "; more of these in the definition are not shown";

// How often each code is found.
using Numbers = std::map<std::string, std::size_t>;

struct ManyCase {
  const char *name;
  std::string before;  // the text of V3.modifiedschema: this,
  std::string one;     // this as often as the test says,
  std::string after;   // and this
  Numbers numbers;     // for a hundred and fifty
};

void PrintTo(const ManyCase &many, std::ostream *out) { *out << many.name; }

class ManyFindingsTest : public CheckTest,
                         public testing::WithParamInterface<ManyCase> {
 protected:
  std::vector<Finding> check(std::size_t number) const {
    std::string text = GetParam().before;
    for (std::size_t i = 0; i < number; ++i) {
      text += GetParam().one;
    }
    write({{"V3.modifiedschema", text + GetParam().after}});
    return checkDirectory(SchemaDirectory(path()));
  }

  static Numbers numbersOf(const std::vector<Finding> &findings) {
    Numbers numbers;
    for (const Finding &finding : findings) {
      ++numbers[describe(finding.code).name];
    }
    return numbers;
  }

  // How many codes are found a hundred times.
  static auto hundreds() {
    const Numbers &numbers = GetParam().numbers;
    return std::count_if(numbers.begin(), numbers.end(),
                         [](const auto &code) { return code.second == 100; });
  }

  // How many findings say that there are more.
  static auto saysMore(const std::vector<Finding> &findings) {
    return std::count_if(
        findings.begin(), findings.end(), [](const Finding &finding) {
          return finding.message.find(kMore) != std::string::npos;
        });
  }
};

TEST_P(ManyFindingsTest, ShowsAHundred) {
  const std::vector<Finding> findings = check(150);
  EXPECT_EQ(numbersOf(findings), GetParam().numbers);
  EXPECT_EQ(saysMore(findings), hundreds());
}

// One more may be needed for what the first accounts for.
TEST_P(ManyFindingsTest, ShowsTheSameOfAFew) {
  for (const std::size_t number : {100U, 101U, 102U, 103U}) {
    const std::vector<Finding> findings = check(number + 1);
    EXPECT_EQ(numbersOf(findings), GetParam().numbers) << number;
    EXPECT_EQ(saysMore(findings), hundreds()) << number;
  }
  EXPECT_EQ(saysMore(check(98)), 0);
}

const ManyCase kMany[] = {
    {"Words",
     "objectclasses=( 2.1 NAME 'k' DESC 'x' ",
     "FOO ",
     "STRUCTURAL )\n",
     {{"UNKNOWN-FIELD", 100}}},
    {"Texts",
     "objectclasses=( 2.1 NAME 'k' DESC '",
     "''",
     "' STRUCTURAL )\n",
     {{"UNKNOWN-FIELD", 100}}},
    {"QuotesOfWhichTheFirstMatter",
     "attributetypes=( 1.1 NAME 'k' ",
     "EQUALITY '2.5.13.2' ",
     ")\n",
     {{"BAD-VALUE", 1}, {"QUOTES", 100}, {"REPEATED-FIELD", 100}}},
    {"Quotes",
     "objectclasses=( 2.1 NAME 'k' AUXILIARY SUP ( k ",
     "$ 'k' ",
     ") )\n",
     {{"QUOTES", 100}, {"SUPERIOR-CYCLE", 1}}},
};

INSTANTIATE_TEST_SUITE_P(Many, ManyFindingsTest, testing::ValuesIn(kMany));

}  // namespace
