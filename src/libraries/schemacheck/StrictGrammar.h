// The keywords of schema files, and what follows each.
#ifndef SCHEMACHECK_STRICTGRAMMAR_H_
#define SCHEMACHECK_STRICTGRAMMAR_H_

#include <optional>
#include <string_view>

#include "SchemaFiles.h"

namespace schemacheck {

// What follows the keyword of a clause.
enum class Takes {
  kNothing,
  kNames,       // quoted names in parentheses, one without, or none
  kExtensions,  // quoted strings in parentheses, or one without
  kText,        // a quoted string
  kOids,        // "( OID $ OID )", or one OID without parentheses
  kOid,         // a word or a number
  kSyntax,      // the same with or without a length
  kNumber,
};

struct ClauseForm {
  std::string_view keyword;  // in upper case; empty for X- extensions
  Takes takes;
  // Whether definitions of the kind that was asked for have such a clause. If
  // not, those of another kind do.
  bool known;
  bool exact;  // whether the word is in upper case
};

// The clause that `word`, in any case, begins in a definition of the kind.
std::optional<ClauseForm> clauseForm(Kind kind, std::string_view word);

// Whether `word`, as it is written, begins a clause in some definition.
bool isClauseKeyword(std::string_view word);

struct SectionForm {
  Kind kind;
  bool plural;  // false: "attributetype", known from the files of others
};

// The section that `word`, in any case, begins.
std::optional<SectionForm> sectionForm(std::string_view word);

}  // namespace schemacheck

#endif  // SCHEMACHECK_STRICTGRAMMAR_H_
