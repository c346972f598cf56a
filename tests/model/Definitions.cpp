#include "model/Definitions.h"

#include <cstddef>
#include <initializer_list>

namespace model {

namespace {

bool isOneOf(int token, std::initializer_list<int> tokens) {
  for (const int candidate : tokens) {
    if (candidate == token) {
      return true;
    }
  }
  return false;
}

// Passes over the token behind the section's keyword, and a "(" behind that.
int begin(Scanner *scanner) {
  scanner->match(scanner->current());
  scanner->match('(');
  return scanner->current();
}

// Reads the next token and, if it is one of these, its text.
void readValue(Scanner *scanner, std::initializer_list<int> tokens,
               std::string *value) {
  if (isOneOf(scanner->lexan(), tokens)) {
    *value = scanner->text();
  }
}

std::string quoted(const Names &names) {
  std::string text;
  for (const std::string &name : names) {
    text += "'" + name + "' ";
  }
  return text;
}

std::string joined(const Names &names, const std::string &separator) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    text += (i == 0 ? "" : separator) + names[i];
  }
  return text;
}

std::string inDollars(const std::string &keyword, const Names &names) {
  return names.empty() ? "" : keyword + " ( " + joined(names, " $ ") + " ) ";
}

std::string field(const std::string &keyword, const std::string &value) {
  return value.empty() ? "" : keyword + " " + value + " ";
}

std::string describe(const std::string &text) {
  return text.empty() ? "" : " DESC '" + text + "' ";
}

// An attribute type's names; returns the token that ends them.
int readTypeNames(Scanner *scanner, Names *names) {
  scanner->match(kName);
  int t = kName;
  while (
      !isOneOf(t, {kDesc, kSyntax, kObsolete, kSup, kUsage, kNoUserModification,
                   kCollective, kSingleValue, kSubstr, kOrdering, kEquality})) {
    if (t == kDone) {
      throw Endless();
    }
    if (isOneOf(scanner->current(), {kId, kObjectClasses, kAttributeTypes})) {
      names->push_back(scanner->text());
    }
    t = scanner->lexan();
  }
  return t;
}

// An object class's names; returns the token that ends them.
int readClassNames(Scanner *scanner, Names *names) {
  scanner->match(kName);
  int t = kName;
  while (!isOneOf(t, {kDesc, kStructural, kAuxiliary, kAbstract, kObsolete,
                      kSup, kMust, kMay})) {
    if (t == kDone) {
      throw Endless();
    }
    if (scanner->current() == kId) {
      names->push_back(scanner->text());
    }
    t = scanner->lexan();
  }
  return t;
}

// An object class's list between dollars; returns the token behind it.
int readList(Scanner *scanner, Names *names) {
  int u = scanner->current();
  while (isOneOf(u, {kId, '$', kObjectClasses, kAttributeTypes})) {
    if (u != '$') {
      names->push_back(scanner->text());
    }
    u = scanner->lexan();
  }
  scanner->match(')');
  return scanner->current();
}

// The columns of a storage definition; returns the token behind them.
int readColumns(Scanner *scanner, Names *columns) {
  scanner->match(kDbName);
  int t = kDbName;
  while (!isOneOf(t, {kAccessClass, kLength, kEquality, kApprox, kSubstr,
                      kOrdering, ')'})) {
    if (t == kDone) {
      throw Endless();
    }
    if (isOneOf(t, {kId, kObjectClasses, kAttributeTypes})) {
      columns->push_back(scanner->text());
    }
    t = scanner->lexan();
  }
  return t == ')' ? scanner->lexan() : t;
}

// The end of a definition at the token `t`.
int end(Scanner *scanner, int t) {
  if (t == ')') {
    scanner->lexan();
    return 1;
  }
  return t == '}' || t == '(' ? 1 : 0;
}

}  // namespace

std::string lower(std::string text) {
  for (char &c : text) {
    if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    }
  }
  return text;
}

int AttributeType::parse(Scanner *scanner, Trace *trace) {
  const Operation operation(trace, 0x53010200);
  return operation.result(readFields(scanner));
}

int AttributeType::readFields(Scanner *scanner) {
  int t = begin(scanner);
  while (!isOneOf(t, {kQorAttributeTypes, kDone, kObjectClasses,
                      kAttributeTypes, ')', '}'})) {
    if (t == kName) {
      t = readTypeNames(scanner, &names);
      continue;
    }
    if (t == kNumber || t == kId) {
      oid = scanner->text();
    } else if (t == kDesc) {
      readValue(scanner, {kId}, &description);
    } else if (t == kObsolete) {
      obsolete = true;
    } else if (t == kSup) {
      if (scanner->lexan() == kNumber) {
        superiors.push_back(scanner->text());
      }
    } else if (t == kEquality) {
      readValue(scanner, {kNumber}, &equality);
    } else if (t == kOrdering) {
      readValue(scanner, {kNumber}, &ordering);
    } else if (t == kSubstr) {
      readValue(scanner, {kNumber}, &substr);
    } else if (t == kSyntax) {
      readValue(scanner, {kNumber, kNumberLen, kId}, &syntax);
    } else if (t == kSingleValue) {
      singleValue = true;
    } else if (t == kCollective) {
      throw Endless();
    } else if (t == kNoUserModification) {
      userModification = false;
    } else if (t == kUsage) {
      readValue(scanner, {kId}, &usage);
    }
    t = scanner->lexan();
  }
  return end(scanner, t);
}

std::string AttributeType::written(Trace *trace) const {
  const Operation operation(trace, 0x53010300);
  operation.result(0);
  return line();
}

std::string AttributeType::line() const {
  return "attributetypes=( " + oid + " NAME ( " + quoted(names) + " ) " +
         describe(description) + (obsolete ? "OBSOLETE " : "") +
         field("SUP", joined(superiors, " ")) + field("EQUALITY", equality) +
         field("ORDERING", ordering) + field("SUBSTR", substr) +
         field("SYNTAX", syntax) + (singleValue ? "SINGLE-VALUE " : "") +
         (userModification ? "" : "NO-USER-MODIFICATION ") +
         field("USAGE", usage) + " )\n";
}

int ObjectClass::parse(Scanner *scanner, Trace *trace) {
  const Operation operation(trace, 0x53030200);
  return operation.result(readFields(scanner));
}

int ObjectClass::readFields(Scanner *scanner) {
  int t = begin(scanner);
  while (!isOneOf(t, {kObjectClasses, kDone, ')', '}', '('})) {
    if (t == kName) {
      t = readClassNames(scanner, &names);
      continue;
    }
    if (t == kMust || t == kMay) {
      scanner->match(t);
      scanner->match('(');
      t = readList(scanner, t == kMust ? &must : &may);
      continue;
    }
    if (t == kSup) {
      const int u = scanner->lexan();
      if (u == '(') {
        scanner->match('(');
        t = readList(scanner, &superiors);
        continue;
      }
      if (u == kId) {
        superiors.push_back(scanner->text());
      }
    } else if (t == kNumber || t == kId) {
      oid = scanner->text();
    } else if (t == kNumberBad) {
      return 0;
    } else if (t == kDesc) {
      readValue(scanner, {kId}, &description);
    } else if (isOneOf(t, {kStructural, kAbstract, kAuxiliary})) {
      kind = t;
    } else if (t == kObsolete) {
      obsolete = true;
    }
    t = scanner->lexan();
  }
  return end(scanner, t);
}

std::string ObjectClass::written(Trace *trace) const {
  const Operation operation(trace, 0x53030300);
  operation.result(0);
  return line();
}

std::string ObjectClass::line() const {
  return "objectclasses=( " + oid + " NAME " + quoted(names) +
         describe(description) + (obsolete ? "OBSOLETE " : "") +
         inDollars("SUP", superiors) +
         (kind == kAuxiliary  ? "AUXILIARY "
          : kind == kAbstract ? "ABSTRACT "
                              : "STRUCTURAL ") +
         inDollars("MUST", must) + inDollars("MAY", may) + ")\n";
}

int Storage::parse(Scanner *scanner, Trace *trace) {
  const Operation operation(trace, 0x53020100);
  return operation.result(readFields(scanner));
}

int Storage::readFields(Scanner *scanner) {
  int t = begin(scanner);
  while (!isOneOf(t, {kAttributeTypes, kDone, ')', '}'})) {
    if (t == kDbName) {
      t = readColumns(scanner, &columns);
      continue;
    }
    if (t == kNumber || t == kId) {
      oid = scanner->text();
    } else if (t == kAccessClass) {
      scanner->lexan();
      accessClass = scanner->text();
    } else if (t == kLength) {
      scanner->lexan();
      length = scanner->text();
    } else if (t == kEquality) {
      equality = true;
    } else if (t == kOrdering) {
      ordering = true;
    } else if (t == kSubstr) {
      substr = true;
    } else if (t == kApprox) {
      approx = true;
    }
    t = scanner->lexan();
  }
  return end(scanner, t);
}

std::string Storage::written(Trace *trace) const {
  const Operation operation(trace, 0x53020300);
  operation.result(0);
  return line();
}

std::string Storage::line() const {
  return "QORAttributetypes=( " + oid + " " +
         (columns.empty() ? "" : "DBNAME ( " + quoted(columns) + " ) ") +
         field("ACCESS-CLASS", accessClass) +
         (length == "0" ? "" : "LENGTH " + length + " ") +
         (equality ? "EQUALITY " : "") + (ordering ? "ORDERING " : "") +
         (substr ? "SUBSTR " : "") + (approx ? "APPROX " : "") + ")\n";
}

}  // namespace model
