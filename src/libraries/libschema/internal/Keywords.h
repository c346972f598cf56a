// The keywords of schema files.
#ifndef LIBSCHEMA_INTERNAL_KEYWORDS_H_
#define LIBSCHEMA_INTERNAL_KEYWORDS_H_

#include <array>
#include <string_view>

#include "SchemaSymbolTable.h"

namespace libschema {

struct Keyword {
  std::string_view text;
  int token;
};

// In the order of the indexes. REVERSE, the youngest token, stands ahead of
// ORDERING: indexes and codes do not run in step.
inline constexpr std::array<Keyword, 25> kKeywords = {{
    {"objectclasses", TOK_OBJECTCLASSES},
    {"NAME", TOK_NAME},
    {"DESC", TOK_DESC},
    {"SUP", TOK_SUP},
    {"AUXILIARY", TOK_AUXILIARY},
    {"MUST", TOK_MUST},
    {"MAY", TOK_MAY},
    {"STRUCTURAL", TOK_STRUCTURAL},
    {"attributetypes", TOK_ATTRIBUTETYPES},
    {"EQUALITY", TOK_EQUALITY},
    {"SYNTAX", TOK_SYNTAX},
    {"SINGLE-VALUE", TOK_SINGLE_VALUE},
    {"USAGE", TOK_USAGE},
    {"NO-USER-MODIFICATION", TOK_NO_USER_MODIFICATION},
    {"QORAttributetypes", TOK_QORATTRIBUTETYPES},
    {"ACCESS-CLASS", TOK_ACCESS_CLASS},
    {"DBNAME", TOK_DBNAME},
    {"SUBSTR", TOK_SUBSTR},
    {"REVERSE", TOK_REVERSE},
    {"ORDERING", TOK_ORDERING},
    {"COLLECTIVE", TOK_COLLECTIVE},
    {"OBSOLETE", TOK_OBSOLETE},
    {"ABSTRACT", TOK_ABSTRACT},
    {"LENGTH", TOK_LENGTH},
    {"APPROX", TOK_APPROX},
}};

// The index of the keyword that is exactly `word`, or -1: what lookUpValue()
// gives for a new SchemaSymbolTable, in constant time and without a copy.
int findKeyword(std::string_view word);

}  // namespace libschema

#endif  // LIBSCHEMA_INTERNAL_KEYWORDS_H_
