// What a schema file says, by the grammar and not by what the library makes of
// it.
#ifndef SCHEMACHECK_STRICTREADER_H_
#define SCHEMACHECK_STRICTREADER_H_

#include <forward_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Pool.h"
#include "SchemaFiles.h"
#include "SourceText.h"

namespace schemacheck {

struct Value {
  enum class Form { kWord, kNumber, kNumberWithLength, kQuoted, kDoubleQuoted };

  Form form;
  std::string_view text;  // without quotes, otherwise as written; "1.2.3{64}"
  Span span;              // with the quotes
};

// One field of a definition: a keyword and its values.
struct Clause {
  // In upper case if it is a keyword, otherwise as written. Empty for values
  // that stand alone.
  std::string_view keyword;
  Span keywordSpan;  // of that; empty, at the first value, without a keyword
  Span span;         // from the keyword to the last value or the ")"
  bool parenthesised = false;  // whether the values stand in parentheses
  PoolList<Value> values;
  // Whether definitions of this kind have such a field; all have those whose
  // keywords begin with "X-".
  bool known = false;
};

struct Definition {
  Kind kind;
  Span span;  // from "(" to behind ")", or to where it was taken to end
  std::optional<Value> oid;
  PoolList<Clause> clauses;
  bool closed = false;  // whether it has its ")"

  // The first clause with the keyword, if there is one.
  const Clause *find(std::string_view keyword) const;
};

// A keyword, and one definition or a block of them.
struct Section {
  Kind kind;
  Span keyword;
  // The keyword as written, in whatever case or number.
  std::string_view spelling;
  char opener = 0;     // '=' or '{'; 0 if neither follows the keyword
  bool closed = true;  // whether a block has its "}"
  PoolList<Definition> definitions;
};

// Departures from the grammar.
enum class FaultCode {
  // Around definitions.
  kStray,              // what belongs to nothing; also in a definition
  kDefinitionOutside,  // a definition in no section; it was not read
  kSectionOpener,      // neither "=" nor "{" behind the keyword, or both
  kSectionUnclosed,    // a block without "}"
  kDefinitionMissing,  // no definition behind the keyword or "="
  kUnopened,           // a definition without "("
  kUnclosed,           // a definition without ")"
  // In definitions.
  kOidMissing,
  kKeywordCase,       // a keyword that is not in upper case
  kValueMissing,      // a clause without its value
  kNumberMissing,     // a word in the place of a number
  kLengthUnexpected,  // a length behind something else than a syntax
  kLengthMalformed,   // such as {ab}
  // Quotes.
  kQuotesMissing,
  kQuotesUnexpected,
  kDoubleQuotes,
  kQuoteUnclosed,
  // Lists.
  kDollarMissing,
  kDollarUnexpected,
  kListUnclosed,
  kListUnexpected,  // a list in the place of a value
  kListUnopened,    // a list with "$" and without parentheses
  kListNested,      // parentheses within a list
};

struct Fault {
  FaultCode code;
  // What is wrong; what is missing: that to which it belongs. Faults of a
  // definition lie within its span.
  Span at;
  // "expected `expected`, found `found`"
  std::string expected;
  std::string found;
};

// A file with this many faults is read no further: it is something else than a
// schema file, and what it holds would fill the memory.
constexpr std::size_t kMostFaults = 10000;

// What the lists and texts of a reading lie in.
struct ReadingStore {
  Pool<Definition> definitions;
  Pool<Clause> clauses;
  Pool<Value> values;
  std::shared_ptr<const std::string> bytes;  // of the file
  std::forward_list<std::string> texts;      // those that stand nowhere in it
};

// All that it leads to is valid as long as it is, or what it was moved to.
struct Reading {
  std::vector<Section> sections;
  std::vector<Fault> faults;  // in the order of their positions
  std::size_t end = 0;        // how far the file was read
  ReadingStore store;
};

// Reads a file by the grammar of RFC 4512, sections 4.1.1 and 4.1.2, in
// sections such as "attributetypes=( ... )" and "objectclasses { ( ... ) }".
// What the library itself writes is without fault: names in a row without
// parentheses, and no names at all.
//
// A text with faults is read as a person would take it to be meant, so that one
// damaged definition leaves the others alone: a definition that is not closed
// ends where the next one or the next section begins, a list that is not closed
// where the next clause begins.
//
// Takes time and memory linear in the size of the file, and no deeper stack for
// deeper nesting.
Reading readStrictly(const SourceText &text);

}  // namespace schemacheck

#endif  // SCHEMACHECK_STRICTREADER_H_
