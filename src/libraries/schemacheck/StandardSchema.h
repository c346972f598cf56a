// Syntaxes and matching rules that the standards define, and the forms that
// they give to OIDs and names.
#ifndef SCHEMACHECK_STANDARDSCHEMA_H_
#define SCHEMACHECK_STANDARDSCHEMA_H_

#include <string_view>

namespace schemacheck {

// By their OIDs, without a length.
bool isStandardSyntax(std::string_view oid);
bool isStandardMatchingRule(std::string_view oid);

// numericoid, keystring and usage of RFC 4512, sections 1.4 and 4.1.2.
bool isNumericOid(std::string_view text);
bool isKeyString(std::string_view text);
bool isUsage(std::string_view text);

}  // namespace schemacheck

#endif  // SCHEMACHECK_STANDARDSCHEMA_H_
