// A scanner that stops readings which would never end.
#ifndef SCHEMACHECK_GUARDEDLEXAN_H_
#define SCHEMACHECK_GUARDEDLEXAN_H_

#include <stdexcept>
#include <string>

#include "SchemaLexan.h"

namespace schemacheck {

// Thrown by a GuardedLexan out of a definition's parse(). what() says why the
// parse would not end.
class EndlessReading : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Reads as SchemaLexan does, and throws EndlessReading where a definition's
// parse() would go on without end: when COLLECTIVE takes effect in an attribute
// type, and when the end of the file has come and the parse does not take
// notice.
class GuardedLexan : public SchemaLexan {
 public:
  using SchemaLexan::SchemaLexan;

  // To be called before each parse(): `keyword` is the token of the section.
  void beginDefinition(int keyword);

  // The line on which the definition begins; known after its parse().
  int definitionLine() const { return m_definitionLine; }

  int lexan() override;

 private:
  // Where an attribute type's parse stands, so far as it matters to COLLECTIVE.
  enum class State {
    kOutside,  // not in an attribute type
    kField,    // the next token is looked at as the start of a field
    kValue,    // the next token is the value of a field
    kName,     // the next token is the first behind NAME, and ends nothing
    kNames,    // in the names behind that
  };

  void follow(int token);

  State m_state = State::kOutside;
  bool m_begins = false;  // whether the first token is yet to come
  int m_definitionLine = 0;
  int m_ends = 0;  // how often in a row the end of the file was returned
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_GUARDEDLEXAN_H_
