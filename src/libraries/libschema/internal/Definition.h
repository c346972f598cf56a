// What the classes of definitions do alike.
#ifndef LIBSCHEMA_INTERNAL_DEFINITION_H_
#define LIBSCHEMA_INTERNAL_DEFINITION_H_

#include <fstream>
#include <string>
#include <vector>

class SchemaLexan;

namespace libschema {

// A copy of `text` in lower case (ASCII letters only).
std::string lowerCase(std::string text);

// The first of `names` in lower case; empty when there is none.
std::string firstNameLower(const std::vector<std::string> &names);

// Whether the lists have the same length and each element of `mine` occurs in
// `theirs`, in any place and any case. One-sided: see QORSchema.h.
bool listsMatch(const std::vector<std::string> &mine,
                const std::vector<std::string> &theirs);

// The entry of a definition in a report.
std::string oidAndName(const std::string &oid,
                       const std::vector<std::string> &names);

// Parsing.

// Goes past the token that `lex` stands on and past the "(" behind it, if there
// is one. Returns the token that is current then.
int enterDefinition(SchemaLexan *lex);

// Stores the text of the current token in `text`; empty when it has none.
void readText(SchemaLexan *lex, std::string *text);

// Appends that text to `texts`.
void appendText(SchemaLexan *lex, std::vector<std::string> *texts);

// Writing.

// The start of a line: `keyword`, "=( " and the OID. There is room for a line
// of usual length.
std::string startLine(const char *keyword, const std::string &oid);

// Appends "'name' " for each name.
void appendQuoted(std::string *line, const std::vector<std::string> &names);

// Appends the elements with `separator` between them.
void appendJoined(std::string *line, const std::vector<std::string> &elements,
                  const char *separator);

// Appends `keyword`, `value` and a blank; nothing when `value` is empty.
void appendField(std::string *line, const char *keyword,
                 const std::string &value);

// Writes the line, which is used up, and an end of line to `out`, and flushes.
void writeLine(std::ofstream &out, std::string line);

// Prints `label`, the value (or each element and a blank), and an end of line
// to standard output, and flushes.
void printField(const char *label, const std::string &value);
void printField(const char *label, const std::vector<std::string> &elements);

}  // namespace libschema

#endif  // LIBSCHEMA_INTERNAL_DEFINITION_H_
