// The checks on every file that differs from a clean one in a byte: they end,
// and where they find no error, the library holds what the file says.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "DirectoryCheck.h"
#include "SchemaManager.h"
#include "schemacheck/Agreement.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"

using schemacheck::checkDirectory;
using schemacheck::Finding;
using schemacheck::SchemaDirectory;
using schemacheck::Severity;

namespace {

const std::map<std::string, std::string> kClean = {
    {"V3.user.at",
     "# types\n"
     "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x y' SUP 1.2 EQUALITY "
     "2.5.13.2 SYNTAX 1.3.6.1.4.1.1466.115.121.1.15{8} SINGLE-VALUE )\n"
     "QORAttributetypes=( 1.1 DBNAME ( 'A' 'A' ) ACCESS-CLASS normal LENGTH "
     "8 EQUALITY )\n"
     "attributetypes {\n"
     "( 1.2 NAME 'c' OBSOLETE )\n"
     "( 1.3 NAME 'd'\n NO-USER-MODIFICATION USAGE dSAOperation ) }\n"
     "QORAttributetypes { ( 1.2 DBNAME ( 'C' ) APPROX ) ( 1.3 LENGTH 4 ) }\n"},
    {"V3.system.at",
     "attributetypes=(1.4 NAME('e''f')DESC'x'SYNTAX "
     "1.3.6.1.4.1.1466.115.121.1.15{8}SINGLE-VALUE)\r\n"
     "QORAttributetypes=(1.4 DBNAME('E')LENGTH 8)\r\n"},
    {"V3.user.oc",
     "objectclasses=( 3.1 NAME 'k' DESC 'z' SUP ( l ) AUXILIARY MUST ( a $ "
     "c ) MAY ( d ) )\n"
     "objectclasses { ( 3.2 NAME ( 'l' 'm' ) ABSTRACT MAY c ) }\n"},
};

bool hasError(const std::vector<Finding> &findings) {
  return std::any_of(findings.begin(), findings.end(),
                     [](const Finding &finding) {
                       return finding.severity() == Severity::kError;
                     });
}

class CheckEveryByteTest : public testing::Test {
 protected:
  // As a new file: the old one's blocks need not be waited for then.
  void write(const std::string &name, const std::string &text) {
    std::filesystem::remove(m_directory.path() / name);
    m_directory.write(name, text);
  }

  // Checks the directory as it is, and compares when no error was found.
  void check() {
    const SchemaDirectory directory(m_directory.path());
    const std::vector<Finding> findings = checkDirectory(directory);
    if (hasError(findings)) {
      ++m_refused;
      return;
    }
    ++m_accepted;
    leaksDefinitions([&] {
      compare(directory, findings);
      return true;
    });
  }

  void compare(const SchemaDirectory &directory,
               const std::vector<Finding> &findings) {
    SchemaManager schema(m_directory.path());
    for (const auto &[name, text] : kClean) {
      ASSERT_EQ(schema.readFile(name), 0U);
    }
    EXPECT_EQ(disagreement(directory, findings, schema), "");
  }

  TemporaryDirectory m_directory;
  int m_accepted = 0;
  int m_refused = 0;
};

TEST_F(CheckEveryByteTest, TheCleanOneHasNoFinding) {
  for (const auto &[name, text] : kClean) {
    write(name, text);
  }
  const SchemaDirectory directory(m_directory.path());
  std::string found;
  for (const Finding &finding : checkDirectory(directory)) {
    found += toText(finding);
  }
  EXPECT_EQ(found, "");
  check();
  EXPECT_EQ(m_accepted, 1);
}

TEST_F(CheckEveryByteTest, EachByteDeletedOrReplaced) {
  constexpr std::string_view kBytes(
      "'()${}=#\"\t\r\n\0\x80"
      "A1",
      16);
  for (const auto &[name, text] : kClean) {
    write(name, text);
  }
  for (const auto &[name, text] : kClean) {
    for (std::size_t i = 0; i < text.size() && !HasFailure(); ++i) {
      std::string changed = text;
      changed.erase(i, 1);
      SCOPED_TRACE(name + ": " + changed);
      write(name, changed);
      check();
      for (const char byte : kBytes) {
        changed = text;
        changed[i] = byte;
        SCOPED_TRACE(changed);
        write(name, changed);
        check();
      }
    }
    write(name, text);
  }
  // Most bytes of a clean file matter, and some do not.
  EXPECT_GT(m_refused, m_accepted);
  EXPECT_GT(m_accepted, 1000);
}

}  // namespace
