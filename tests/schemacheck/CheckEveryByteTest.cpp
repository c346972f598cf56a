// The checks on every file that differs from a clean one in a byte: they end,
// and where they find no error, the library holds what the file says.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "DirectoryCheck.h"
#include "SchemaManager.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"

using schemacheck::checkDirectory;
using schemacheck::Clause;
using schemacheck::Code;
using schemacheck::Field;
using schemacheck::fieldsOf;
using schemacheck::Finding;
using schemacheck::Kind;
using schemacheck::Position;
using schemacheck::SchemaDirectory;
using schemacheck::Severity;
using schemacheck::Statement;

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

// The fields of a definition that a warning names as dropped or respelt.
std::set<std::string> namedFields(const Statement &statement,
                                  const std::vector<Finding> &findings) {
  std::set<std::string> names;
  for (const Finding &finding : findings) {
    if (finding.file != statement.file->text.name() ||
        (finding.code != Code::kRuleByName &&
         finding.code != Code::kSuperiorByName &&
         finding.code != Code::kSuperiorByNumber &&
         finding.code != Code::kSpelling)) {
      continue;
    }
    for (const Clause &clause : statement.definition->clauses) {
      const Position begin = statement.file->text.position(clause.span.begin);
      const Position end = statement.file->text.position(clause.span.end);
      if (std::pair(begin.line, begin.column) <=
              std::pair(finding.line, finding.column) &&
          std::pair(finding.line, finding.column) <
              std::pair(end.line, end.column)) {
        names.emplace(clause.keyword);
      }
    }
  }
  return names;
}

// The fields of the definition that the manager holds under the key; none when
// it holds none.
template <class Definition>
std::vector<Field> held(const std::map<std::string, Definition *> &table,
                        const std::string &key) {
  const auto found = table.find(key);
  return found == table.end() ? std::vector<Field>() : fieldsOf(*found->second);
}

std::vector<Field> held(const SchemaManager &schema,
                        const Statement &statement) {
  switch (statement.definition->kind) {
    case Kind::kAttributeType:
      return held(schema.attributeTypes(), statement.key());
    case Kind::kObjectClass:
      return held(schema.objectClasses(), statement.key());
    case Kind::kStorage:
      break;
  }
  return held(schema.storageDefinitions(), statement.key());
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
    std::set<std::pair<Kind, std::string>> keys;
    for (const Statement &statement : directory.statements()) {
      keys.emplace(statement.definition->kind, statement.key());
      const std::vector<Field> fields = held(schema, statement);
      const std::vector<Field> stated = statement.fields();
      ASSERT_EQ(fields.size(), stated.size());
      const std::set<std::string> named = namedFields(statement, findings);
      for (std::size_t i = 0; i < fields.size(); ++i) {
        if (named.count(fields[i].name) == 0) {
          EXPECT_EQ(fields[i].values, stated[i].values) << fields[i].name;
        }
      }
    }
    EXPECT_EQ(schema.attributeTypes().size() + schema.objectClasses().size() +
                  schema.storageDefinitions().size(),
              keys.size());
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
