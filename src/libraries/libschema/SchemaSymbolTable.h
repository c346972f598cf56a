/// @file
/// The token codes of schema files and the table of their keywords.
#ifndef LIBSCHEMA_SCHEMASYMBOLTABLE_H_
#define LIBSCHEMA_SCHEMASYMBOLTABLE_H_

#include "CSymbolTable.h"

/// What SchemaLexan::lexan() returns. A character that starts no word and no
/// number is its own code: its value as an unsigned byte, 0 to 255.
enum : int {
  TOK_ID = 259,    ///< a name or a quoted string that is not a keyword
  TOK_DONE = 260,  ///< end of input

  TOK_OBJECTCLASSES = 1002,         ///< the keyword objectclasses
  TOK_NAME = 1003,                  ///< the keyword NAME
  TOK_DESC = 1004,                  ///< the keyword DESC
  TOK_SUP = 1005,                   ///< the keyword SUP
  TOK_AUXILIARY = 1006,             ///< the keyword AUXILIARY
  TOK_MUST = 1007,                  ///< the keyword MUST
  TOK_MAY = 1008,                   ///< the keyword MAY
  TOK_STRUCTURAL = 1009,            ///< the keyword STRUCTURAL
  TOK_ATTRIBUTETYPES = 1010,        ///< the keyword attributetypes
  TOK_EQUALITY = 1011,              ///< the keyword EQUALITY
  TOK_SYNTAX = 1012,                ///< the keyword SYNTAX
  TOK_SINGLE_VALUE = 1013,          ///< the keyword SINGLE-VALUE
  TOK_USAGE = 1014,                 ///< the keyword USAGE
  TOK_NO_USER_MODIFICATION = 1015,  ///< the keyword NO-USER-MODIFICATION
  TOK_QORATTRIBUTETYPES = 1016,     ///< the keyword QORAttributetypes
  TOK_ACCESS_CLASS = 1017,          ///< the keyword ACCESS-CLASS
  TOK_DBNAME = 1018,                ///< the keyword DBNAME
  TOK_SUBSTR = 1019,                ///< the keyword SUBSTR
  TOK_ORDERING = 1020,              ///< the keyword ORDERING
  TOK_COLLECTIVE = 1021,            ///< the keyword COLLECTIVE
  TOK_OBSOLETE = 1022,              ///< the keyword OBSOLETE
  TOK_ABSTRACT = 1023,              ///< the keyword ABSTRACT
  TOK_LENGTH = 1024,                ///< the keyword LENGTH
  TOK_APPROX = 1025,                ///< the keyword APPROX
  TOK_REVERSE = 1026,               ///< the keyword REVERSE

  TOK_NUMBER = 2024,      ///< digits and dots, such as 2.5.4.3 or 32
  TOK_NUMBER_LEN = 2025,  ///< a number with a length suffix, such as 1.2.3{64}
  TOK_NUMBER_BAD = 2026,  ///< a number with a malformed suffix, such as 1.2.3{x
};

/// A symbol table that holds the 25 keywords of schema files from the start, at
/// the indexes 0 to 24. Texts that a scanner adds follow from index 25 on.
class SchemaSymbolTable : public CSymbolTable {
 public:
  /// A table of the keywords.
  SchemaSymbolTable();
  ~SchemaSymbolTable() override;
};

#endif  // LIBSCHEMA_SCHEMASYMBOLTABLE_H_
