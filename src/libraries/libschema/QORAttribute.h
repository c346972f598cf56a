/// @file
/// Storage definitions of attribute types.
#ifndef LIBSCHEMA_QORATTRIBUTE_H_
#define LIBSCHEMA_QORATTRIBUTE_H_

#include <fstream>
#include <string>
#include <vector>

#include "Attribute.h"

/// How the server stores the attribute type that has the same OID, as in
///
///     QORAttributetypes=( 2.5.4.3 DBNAME ( 'CN' 'CN' ) LENGTH 256 EQUALITY )
///
/// Of the fields of an attribute type only the OID is filled.
class QORAttribute : public Attribute {
 public:
  /// An empty definition: length "0", no flag set.
  QORAttribute();
  /// An independent copy.
  QORAttribute(const QORAttribute &) = default;
  /// Makes this an independent copy.
  QORAttribute &operator=(const QORAttribute &) = default;
  ~QORAttribute() override;

  /// Prints the OID and the storage fields.
  void dump() override;

  /// Writes "QORAttributetypes=( ... )". The line reads back to the same values
  /// if no column name is a keyword and the access class and the length are one
  /// word each.
  void dump(std::ofstream &out) override;

  /// Fills this object, which is empty, from `lex`, which is not owned and
  /// stands on the token before the definition or on its opening parenthesis.
  /// Returns 1 when the definition ended with ")", which is consumed, or "}",
  /// which is not; 0 when "attributetypes" or the end of the file came first.
  /// What was read before that stays in the object.
  ///
  /// Kept on purpose:
  ///  - Any word, number without a length or quoted string that belongs to no
  ///    field replaces the OID; NAME is not known here, so that a name does.
  ///  - The token behind DBNAME is passed over as the list's "(", whatever it
  ///    is: without parentheses the first column name is lost.
  ///  - The DBNAME list ends at its ")" or at the next field, but not at
  ///    REVERSE. Without parentheses and as the last field it takes the
  ///    definition's own ")" and the parse runs on. A list that the end of the
  ///    file cuts off never ends.
  ///  - A column name that is a keyword is treated like a name in Attribute.
  ///  - ACCESS-CLASS and LENGTH take whatever token follows.
  ///  - REVERSE is dropped.
  int parse(SchemaLexan *lex);

  /// 1 when OID and storage fields of both are equal, 0 otherwise. The column
  /// names are compared as lists (see QORSchema), everything else exactly;
  /// names, description and the other fields of an attribute type are not
  /// compared. Neither object is changed.
  int qorAttrsEqual(const QORAttribute &other);

  /// A copy of `s` in lower case (ASCII letters only).
  std::string convert(std::string s);
  /// As in Attribute. There is no name to print after parse().
  std::string getOidAndName();

  /// The names of the columns. This and the following operations give the
  /// fields without a copy, as in QORSchema.
  const std::vector<std::string> &columnNames() const { return m_dbnames; }
  /// The access class; empty where none was given.
  const std::string &accessClass() const { return m_accessclass; }
  /// The length as text; "0" where none was given.
  const std::string &length() const { return m_length; }
  /// Whether EQUALITY was read.
  bool hasEquality() const { return m_equalityflag; }
  /// Whether ORDERING was read.
  bool hasOrdering() const { return m_orderingflag; }
  /// Whether SUBSTR was read.
  bool hasSubstr() const { return m_substrflag; }
  /// Whether APPROX was read.
  bool hasApprox() const { return m_approxflag; }

 private:
  std::vector<std::string> m_dbnames;  // the column names, in the order read
  std::string m_accessclass;           // empty: not given
  std::string m_length;                // "0": not given
  bool m_equalityflag;
  bool m_orderingflag;
  bool m_substrflag;
  bool m_approxflag;
};

#endif  // LIBSCHEMA_QORATTRIBUTE_H_
