#include "Statement.h"

#include <algorithm>

namespace schemacheck {

namespace {

// Whether the lists are of one length, and each value of `a` is found in `b`,
// in any case.
bool isContained(const std::vector<std::string_view> &a,
                 const std::vector<std::string_view> &b) {
  if (a.size() != b.size()) {
    return false;
  }
  if (std::equal(a.begin(), a.end(), b.begin(), isSameInAnyCase)) {
    return true;
  }
  std::vector<std::string> sorted;
  sorted.reserve(b.size());
  for (const std::string_view value : b) {
    sorted.push_back(lowerCase(value));
  }
  std::sort(sorted.begin(), sorted.end());
  return std::all_of(a.begin(), a.end(), [&sorted](std::string_view value) {
    return std::binary_search(sorted.begin(), sorted.end(), lowerCase(value));
  });
}

bool isEqual(const FieldView &a, const FieldView &b) {
  return a.form == FieldView::Form::kList ? isContained(a.values, b.values)
                                          : a.text == b.text;
}

std::string_view firstNameOf(const Definition &definition) {
  for (const Clause &clause : definition.clauses) {
    if (clause.known && clause.keyword == "NAME" && !clause.values.empty()) {
      return clause.values.front().text;
    }
  }
  return "";
}

}  // namespace

Statement::Statement(const StrictFile *inFile, const Section *inSection,
                     const Definition *ofDefinition)
    : file(inFile),
      section(inSection),
      definition(ofDefinition),
      m_oid(definition->oid ? definition->oid->text : ""),
      m_firstName(firstNameOf(*definition)),
      m_key(definition->kind == Kind::kStorage ? m_oid
                                               : lowerCase(m_firstName)) {}

std::string Statement::inWords() const {
  return std::string(kindName(definition->kind)) +
         (m_firstName.empty() ? "" : " '" + m_firstName + "'") + " (" + m_oid +
         ")";
}

int Statement::line() const {
  return file->text.position(definition->span.begin).line;
}

std::string Statement::place() const {
  return file->text.name() + ":" + std::to_string(line());
}

bool Statement::isEntered() const {
  return definition->oid || section->opener == '=';
}

std::vector<const Value *> Statement::valuesOf(std::string_view keyword) const {
  std::vector<const Value *> values;
  forValuesOf(keyword,
              [&values](const Value &value) { values.push_back(&value); });
  return values;
}

std::vector<std::size_t> differingFields(const std::vector<FieldView> &a,
                                         const std::vector<FieldView> &b) {
  std::vector<std::size_t> differing;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (!isEqual(a[i], b[i])) {
      differing.push_back(i);
    }
  }
  return differing;
}

std::string differences(const std::vector<FieldView> &a,
                        const std::vector<FieldView> &b) {
  std::string names;
  for (const std::size_t field : differingFields(a, b)) {
    names.append(names.empty() ? "" : ", ").append(a[field].name);
  }
  return names;
}

std::string differences(const Statement &a, const Statement &b) {
  std::vector<FieldView> ofA;
  std::vector<FieldView> ofB;
  viewFields(*a.definition, &ofA);
  viewFields(*b.definition, &ofB);
  return differences(ofA, ofB);
}

bool isIdentical(const Statement &a, const Statement &b) {
  return differences(a, b).empty();
}

std::string inWordsWithPlace(const Statement &statement) {
  return statement.place() + ", " + statement.inWords();
}

}  // namespace schemacheck
