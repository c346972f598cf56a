// The token codes of schema files and the table of their keywords.
#ifndef LIBSCHEMA_SCHEMASYMBOLTABLE_H_
#define LIBSCHEMA_SCHEMASYMBOLTABLE_H_

#include "CSymbolTable.h"

// What SchemaLexan::lexan() returns. A character that starts no word and no
// number is its own code: its value as an unsigned byte, 0 to 255.
enum : int {
  TOK_ID = 259,    // a name or a quoted string that is not a keyword
  TOK_DONE = 260,  // end of input

  TOK_OBJECTCLASSES = 1002,
  TOK_NAME = 1003,
  TOK_DESC = 1004,
  TOK_SUP = 1005,
  TOK_AUXILIARY = 1006,
  TOK_MUST = 1007,
  TOK_MAY = 1008,
  TOK_STRUCTURAL = 1009,
  TOK_ATTRIBUTETYPES = 1010,
  TOK_EQUALITY = 1011,
  TOK_SYNTAX = 1012,
  TOK_SINGLE_VALUE = 1013,
  TOK_USAGE = 1014,
  TOK_NO_USER_MODIFICATION = 1015,
  TOK_QORATTRIBUTETYPES = 1016,
  TOK_ACCESS_CLASS = 1017,
  TOK_DBNAME = 1018,
  TOK_SUBSTR = 1019,
  TOK_ORDERING = 1020,
  TOK_COLLECTIVE = 1021,
  TOK_OBSOLETE = 1022,
  TOK_ABSTRACT = 1023,
  TOK_LENGTH = 1024,
  TOK_APPROX = 1025,
  TOK_REVERSE = 1026,

  TOK_NUMBER = 2024,      // digits and dots, such as 2.5.4.3 or 32
  TOK_NUMBER_LEN = 2025,  // a number with a length suffix, such as 1.2.3{64}
  TOK_NUMBER_BAD = 2026,  // a number with a malformed suffix, such as 1.2.3{x
};

// A symbol table that holds the 25 keywords of schema files from the start, at
// the indexes 0 to 24. Texts that a scanner adds follow from index 25 on.
class SchemaSymbolTable : public CSymbolTable {
 public:
  SchemaSymbolTable();
  ~SchemaSymbolTable() override;
};

#endif  // LIBSCHEMA_SCHEMASYMBOLTABLE_H_
