// A definition as a file states it.
#ifndef SCHEMACHECK_STATEMENT_H_
#define SCHEMACHECK_STATEMENT_H_

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Fields.h"
#include "SourceText.h"
#include "StrictReader.h"

namespace schemacheck {

// One file that could be read.
struct StrictFile {
  std::size_t number;  // an index of kSchemaFiles
  SourceText text;
  Reading reading;
};

// A definition that a file states.
class Statement {
 public:
  // None of them is owned.
  Statement(const StrictFile *inFile, const Section *inSection,
            const Definition *ofDefinition);

  const StrictFile *file;
  const Section *section;
  const Definition *definition;

  // Empty when it has none.
  const std::string &oid() const { return m_oid; }
  const std::string &firstName() const { return m_firstName; }
  // What a manager files it under: the first name in lower case, for storage
  // definitions the OID.
  const std::string &key() const { return m_key; }
  // Its fields as the file says them, in the form and order in which fieldsOf()
  // gives those of a definition that the library has read.
  std::vector<Field> fields() const { return fieldsOf(*definition); }
  // "attribute type 'cn' (2.5.4.3)"
  std::string inWords() const;
  // The line of its opening parenthesis.
  int line() const;
  // "FILE:LINE" of that.
  std::string place() const;
  // Whether a manager enters it in a table: it has an OID, or stands behind
  // "=".
  bool isEntered() const;
  // Whether it is the one of its directory that a manager holds under its key:
  // the first of those that are entered with it.
  bool isHeld() const { return m_isHeld; }
  // For the directory, once it has entered all that comes before.
  void setHeld(bool isHeld) { m_isHeld = isHeld; }
  // The values of a field, with their places; none when it lacks the field.
  std::vector<const Value *> valuesOf(std::string_view keyword) const;
  // Calls `function` with each of them.
  template <class Function>
  void forValuesOf(std::string_view keyword, Function function) const {
    for (const Clause &clause : definition->clauses) {
      if (clause.known && clause.keyword == keyword) {
        std::for_each(clause.values.begin(), clause.values.end(), function);
      }
    }
  }

 private:
  std::string m_oid;
  std::string m_firstName;
  std::string m_key;
  bool m_isHeld = false;
};

// The fields, as indexes, in which two definitions of a kind differ for the
// library when it compares `a` with `b`; with repeated values, `b` with `a` may
// be another matter.
std::vector<std::size_t> differingFields(const std::vector<FieldView> &a,
                                         const std::vector<FieldView> &b);

// The names of these fields: "DESC, MAY".
std::string differences(const std::vector<FieldView> &a,
                        const std::vector<FieldView> &b);

// The same of what the files say; whether there are none.
std::string differences(const Statement &a, const Statement &b);
bool isIdentical(const Statement &a, const Statement &b);

// "FILE:LINE, attribute type 'cn' (2.5.4.3)"
std::string inWordsWithPlace(const Statement &statement);

}  // namespace schemacheck

#endif  // SCHEMACHECK_STATEMENT_H_
