#include "Statement.h"

#include <algorithm>

namespace schemacheck {

namespace {

// Whether the lists are of one length, and each value of `a` is found in `b`,
// in any case.
bool isContained(const std::vector<std::string> &a,
                 const std::vector<std::string> &b) {
  if (a.size() != b.size()) {
    return false;
  }
  std::vector<std::string> sorted;
  sorted.reserve(b.size());
  for (const std::string &value : b) {
    sorted.push_back(lowerCase(value));
  }
  std::sort(sorted.begin(), sorted.end());
  return std::all_of(a.begin(), a.end(), [&sorted](const std::string &value) {
    return std::binary_search(sorted.begin(), sorted.end(), lowerCase(value));
  });
}

}  // namespace

std::string Statement::oid() const {
  return definition->oid ? definition->oid->text : "";
}

std::string Statement::firstName() const {
  for (const Field &field : fields) {
    if (std::string_view(field.name) == "NAME") {
      return field.values.empty() ? "" : field.values.front();
    }
  }
  return "";
}

std::string Statement::key() const {
  return definition->kind == Kind::kStorage ? oid() : lowerCase(firstName());
}

std::string Statement::inWords() const {
  const std::string name = firstName();
  return std::string(kindName(definition->kind)) +
         (name.empty() ? "" : " '" + name + "'") + " (" + oid() + ")";
}

std::string Statement::place() const {
  return file->text.name() + ":" +
         std::to_string(file->text.position(definition->span.begin).line);
}

bool Statement::isEntered() const {
  return definition->oid || section->opener == '=';
}

std::vector<const Value *> Statement::valuesOf(std::string_view keyword) const {
  std::vector<const Value *> values;
  for (const Clause &clause : definition->clauses) {
    if (clause.known && clause.keyword == keyword) {
      for (const Value &value : clause.values) {
        values.push_back(&value);
      }
    }
  }
  return values;
}

bool isIdentical(const Statement &a, const Statement &b) {
  return differences(a, b).empty();
}

std::string differences(const Statement &a, const Statement &b) {
  std::string names;
  for (std::size_t i = 0; i < a.fields.size(); ++i) {
    const Field &one = a.fields[i];
    const Field &other = b.fields[i];
    if (one.isList ? !isContained(one.values, other.values)
                   : one.values != other.values) {
      names += (names.empty() ? "" : ", ") + std::string(one.name);
    }
  }
  return names;
}

std::string inWordsWithPlace(const Statement &statement) {
  return statement.place() + ", " + statement.inWords();
}

}  // namespace schemacheck
