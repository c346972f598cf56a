// What definitions refer to, and the forms of their names.
#ifndef SCHEMACHECK_REFERENCECHECKS_H_
#define SCHEMACHECK_REFERENCECHECKS_H_

#include <vector>

#include "SchemaDirectory.h"

namespace schemacheck {

// Looks for superiors and attributes that nothing in the directory defines, by
// any of their names in any case or by OID; for superiors that lead back to
// where they began, once for all definitions that lead to each other; for
// attributes that a class both requires and allows; for syntaxes and matching
// rules that no standard names (StandardSchema.h); and for OIDs, names and
// usages that are not in the form of RFC 4512. A library that reads the
// definitions does not mind any of this; the server may.
//
// Takes time n log n in the size of the definitions, and no deeper stack for
// longer chains of superiors.
std::vector<Finding> checkReferences(const SchemaDirectory &directory);

}  // namespace schemacheck

#endif  // SCHEMACHECK_REFERENCECHECKS_H_
