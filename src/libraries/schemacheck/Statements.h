// Definitions beside each other.
#ifndef SCHEMACHECK_STATEMENTS_H_
#define SCHEMACHECK_STATEMENTS_H_

#include <string>

#include "SchemaDirectory.h"

namespace schemacheck {

// Whether the library takes two definitions of a kind for equal when it
// compares `a` with `b`; with repeated values, `b` with `a` may be another
// matter.
bool isIdentical(const Statement &a, const Statement &b);

// The names of the fields in which two definitions of a kind differ: "DESC,
// MAY". Empty if they are identical.
std::string differences(const Statement &a, const Statement &b);

// "FILE:LINE, attribute type 'cn' (2.5.4.3)"
std::string inWordsWithPlace(const Statement &statement);

}  // namespace schemacheck

#endif  // SCHEMACHECK_STATEMENTS_H_
