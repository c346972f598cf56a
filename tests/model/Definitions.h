// The three kinds of definitions once more: fields, parsers and written lines,
// slow and obvious.
#ifndef TESTS_MODEL_DEFINITIONS_H_
#define TESTS_MODEL_DEFINITIONS_H_

#include <string>
#include <vector>

#include "model/Scanner.h"
#include "model/Trace.h"

namespace model {

using Names = std::vector<std::string>;

// Thrown where a reading never ends.
struct Endless {};

std::string lower(std::string text);

struct AttributeType {
  std::string oid;
  Names names;
  std::string description;
  Names superiors;
  bool obsolete = false;
  std::string equality;
  std::string ordering;
  std::string substr;
  std::string syntax;
  std::string usage = "userApplications";
  bool singleValue = false;
  bool userModification = true;

  // Returns 1, or 0 when the definition is cut off.
  int parse(Scanner *scanner, Trace *trace);
  // The line in a written file.
  std::string written(Trace *trace) const;
  // What a schema files it under.
  std::string key() const { return names.empty() ? "" : lower(names[0]); }

 private:
  int readFields(Scanner *scanner);
  std::string line() const;
};

struct ObjectClass {
  std::string oid;
  Names names;
  std::string description;
  Names superiors;
  bool obsolete = false;
  int kind = kStructural;
  Names must;
  Names may;

  int parse(Scanner *scanner, Trace *trace);
  std::string written(Trace *trace) const;
  std::string key() const { return names.empty() ? "" : lower(names[0]); }

 private:
  int readFields(Scanner *scanner);
  std::string line() const;
};

struct Storage {
  std::string oid;
  Names columns;
  std::string accessClass;
  std::string length = "0";
  bool equality = false;
  bool ordering = false;
  bool substr = false;
  bool approx = false;

  int parse(Scanner *scanner, Trace *trace);
  std::string written(Trace *trace) const;

 private:
  int readFields(Scanner *scanner);
  std::string line() const;
};

}  // namespace model

#endif  // TESTS_MODEL_DEFINITIONS_H_
