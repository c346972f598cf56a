// Whether a manager holds what the checks say that it will.
#ifndef TESTS_SCHEMACHECK_AGREEMENT_H_
#define TESTS_SCHEMACHECK_AGREEMENT_H_

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Finding.h"
#include "SchemaDirectory.h"
#include "SchemaManager.h"

namespace agreement {

using schemacheck::Clause;
using schemacheck::Code;
using schemacheck::Field;
using schemacheck::fieldsOf;
using schemacheck::Finding;
using schemacheck::Kind;
using schemacheck::Position;
using schemacheck::SchemaDirectory;
using schemacheck::Statement;

// The fields of a definition that a warning names as dropped or respelt.
inline std::set<std::string> namedFields(const Statement &statement,
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

inline std::vector<Field> held(const SchemaManager &schema,
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

}  // namespace agreement

// How a manager that has read the files differs from what they say, where
// `findings`, which are those of the directory, hold no error; empty: it does
// not.
inline std::string disagreement(
    const schemacheck::SchemaDirectory &directory,
    const std::vector<schemacheck::Finding> &findings,
    const SchemaManager &schema) {
  using namespace agreement;
  std::string text;
  std::set<std::pair<Kind, std::string>> keys;
  for (const Statement &statement : directory.statements()) {
    keys.emplace(statement.definition->kind, statement.key());
    const std::vector<Field> fields = held(schema, statement);
    const std::vector<Field> stated = statement.fields();
    if (fields.size() != stated.size()) {
      text += statement.inWords() + " is not held\n";
      continue;
    }
    const std::set<std::string> named = namedFields(statement, findings);
    for (std::size_t i = 0; i < fields.size(); ++i) {
      if (named.count(fields[i].name) == 0 &&
          fields[i].values != stated[i].values) {
        text += statement.inWords() + ": " + fields[i].name + " is " +
                fields[i].text() + " and not " + stated[i].text() + '\n';
      }
    }
  }
  if (schema.attributeTypes().size() + schema.objectClasses().size() +
          schema.storageDefinitions().size() !=
      keys.size()) {
    text += "there are other definitions than those of the files\n";
  }
  return text;
}

#endif  // TESTS_SCHEMACHECK_AGREEMENT_H_
