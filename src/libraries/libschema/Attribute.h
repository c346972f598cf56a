/// @file
/// Attribute types.
#ifndef LIBSCHEMA_ATTRIBUTE_H_
#define LIBSCHEMA_ATTRIBUTE_H_

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "QORSchema.h"

class SchemaLexan;

/// An attribute type description (RFC 4512, section 4.1.2), as in
///
///     attributetypes=( 2.5.4.3 NAME ( 'cn' 'commonName' ) SUP 2.5.4.41 )
///
/// Not everything that a description may hold is kept; parse() says what.
class Attribute : public QORSchema {
 public:
  /// An empty definition: for user applications, multi-valued, modifiable.
  Attribute();
  /// An independent copy.
  Attribute(const Attribute &) = default;
  /// Makes this an independent copy.
  Attribute &operator=(const Attribute &) = default;
  ~Attribute() override;

  /// Prints OID, names, description, matching rules, syntax, superiors and
  /// usage. The flags are not printed.
  void dump() override;

  /// Writes "attributetypes=( ... )". The line reads back to the same values if
  /// no name is a keyword, OID, syntax and usage are one word each, the usage
  /// is not empty, and no value repeats the text before it. But more than one
  /// superior reads back as the first, with the last in the place of the OID,
  /// and a COLLECTIVE one does not read back.
  void dump(std::ofstream &out) override;

  std::string getOid() override;
  std::string getDescription() override;
  std::vector<std::string> getSuperior() override;
  std::string getFirstName() override;
  std::vector<std::string> getNames() override;
  std::string getFirstNameLower() override;

  /// Fills this object, which is empty, from `lex`, which is not owned and
  /// stands on the token before the definition or on its opening parenthesis.
  /// Returns 1 when the definition ended with ")", which is consumed, or "}",
  /// which is not; 0 when a section keyword or the end of the file came first.
  /// What was read before that stays in the object.
  ///
  /// Kept on purpose:
  ///  - EQUALITY, ORDERING, SUBSTR and SUP keep a numeric OID; a name in its
  ///    place is dropped. Of a list in parentheses, here or behind DESC, SYNTAX
  ///    and USAGE, each element replaces the OID, and its ")" ends the
  ///    definition.
  ///  - Any other word, number without a length or quoted string replaces the
  ///    OID.
  ///  - A name that is a keyword is dropped, or taken for the field that it
  ///    spells. But "objectclasses" and "attributetypes" are names, in this
  ///    spelling whatever that of the file ('objectClasses').
  ///  - The names end at the next field. A ")" does not end them, so that a
  ///    definition whose last field is NAME runs on into the next one, and at
  ///    the end of the file never ends.
  ///  - A definition with COLLECTIVE never ends.
  int parse(SchemaLexan *lex);

  /// 1 when all fields of both are equal, 0 otherwise. Names and superiors are
  /// compared as lists (see QORSchema), everything else exactly. Neither object
  /// is changed.
  int attrsEqual(const Attribute &other);

  /// A copy of `s` in lower case (ASCII letters only).
  std::string convert(std::string s);

  /// "OID --> ", the OID, a newline, "Name --> ", the names separated by ", ",
  /// and two newlines.
  std::string getOidAndName();

  /// The equality matching rule, a numeric OID. This and the following
  /// operations give the fields without a copy, as in QORSchema.
  const std::string &equality() const { return m_equality; }
  /// The ordering matching rule, a numeric OID.
  const std::string &ordering() const { return m_ordering; }
  /// The substrings matching rule, a numeric OID.
  const std::string &substr() const { return m_substr; }
  /// The syntax, with its length suffix if there is one.
  const std::string &syntax() const { return m_syntax; }
  /// The usage as read, or "userApplications".
  const std::string &usage() const { return m_usage; }
  /// Whether SINGLE-VALUE was read.
  bool isSingleValue() const { return m_singlevalue != 1; }
  /// False in every definition that was parsed: COLLECTIVE never ends.
  bool isCollective() const { return m_collective; }
  /// False where NO-USER-MODIFICATION was read.
  bool isUserModifiable() const { return m_usermodification; }

 protected:
  std::string m_equality;      ///< a numeric OID, or empty
  std::string m_usage;         ///< as read, not checked
  std::string m_syntax;        ///< with its length suffix, if any
  std::string m_ordering;      ///< a numeric OID, or empty
  std::string m_substr;        ///< a numeric OID, or empty
  std::int32_t m_singlevalue;  ///< TOK_SINGLE_VALUE, or 1: multi-valued
  bool m_collective;           ///< COLLECTIVE
  bool m_usermodification;     ///< false: NO-USER-MODIFICATION
};

#endif  // LIBSCHEMA_ATTRIBUTE_H_
