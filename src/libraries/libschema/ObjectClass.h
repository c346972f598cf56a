/// @file
/// Object classes.
#ifndef LIBSCHEMA_OBJECTCLASS_H_
#define LIBSCHEMA_OBJECTCLASS_H_

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "QORSchema.h"

class SchemaLexan;

/// An object class description (RFC 4512, section 4.1.1), as in
///
///     objectclasses=( 2.5.6.6 NAME 'person' SUP top MUST ( sn $ cn ) )
class ObjectClass : public QORSchema {
 public:
  /// An empty definition of a structural class.
  ObjectClass();
  /// An independent copy.
  ObjectClass(const ObjectClass &) = default;
  /// Makes this an independent copy.
  ObjectClass &operator=(const ObjectClass &) = default;
  ~ObjectClass() override;

  /// Prints every field. The last lines are not flushed.
  void dump() override;

  /// Writes "objectclasses=( ... )". The line reads back to the same values if
  /// there is a name, and no name in it is a keyword. Kept on purpose: names
  /// never stand in parentheses; without a name the word that follows is lost,
  /// and reading it back may never end.
  void dump(std::ofstream &out) override;

  std::string getOid() override;
  std::string getDescription() override;
  std::vector<std::string> getSuperior() override;
  std::string getFirstName() override;
  std::vector<std::string> getNames() override;
  std::string getFirstNameLower() override;

  /// Fills this object, which is empty, from `lex`, which is not owned and
  /// stands on the token before the definition or on its opening parenthesis.
  /// Returns 1 when the definition ended with ")", which is consumed, or with
  /// "}" or "(", which are not; 0 when "objectclasses" or the end of the file
  /// came first, or a malformed length suffix (but not among the names, nor
  /// directly behind DESC or SUP). What was read before that stays in the
  /// object.
  ///
  /// Kept on purpose:
  ///  - SUP takes a word, a quoted string or a list in parentheses, DESC a word
  ///    or a quoted string; another token in their place is dropped, a number
  ///    behind SUP too.
  ///  - Any other word, number without a length or quoted string replaces the
  ///    OID. A number ends a list, and so replaces the OID too.
  ///  - A name that is a keyword is dropped, or taken for the field that it
  ///    spells. The lists take "objectclasses" and "attributetypes", in this
  ///    spelling whatever that of the file.
  ///  - The names end at the next field. A ")" does not end them, so that a
  ///    definition whose last field is NAME runs on into the next one, and at
  ///    the end of the file never ends.
  ///  - A ")" after MUST or MAY ends the list, whether or not a "(" began it.
  int parse(SchemaLexan *lex);

  /// 1 when all fields of both are equal, 0 otherwise. Names, superiors and
  /// attributes are compared as lists (see QORSchema), everything else exactly.
  /// Neither object is changed.
  int objsEqual(const ObjectClass &other);

  /// A copy of the required attributes in the order read.
  std::vector<std::string> getReqAttrs();
  /// A copy of the optional attributes in the order read.
  std::vector<std::string> getOptAttrs();

  /// A copy of `s` in lower case (ASCII letters only).
  std::string convert(std::string s);

  /// "OID --> ", the OID, a newline, "Name --> ", the names separated by ", ",
  /// and two newlines.
  std::string getOidAndName();

  /// The kind of the class: TOK_STRUCTURAL, TOK_AUXILIARY or TOK_ABSTRACT.
  std::int32_t structuralType() const { return m_structuraltype; }
  /// The required attributes without a copy, as in QORSchema.
  const std::vector<std::string> &requiredAttributes() const {
    return m_reqattrs;
  }
  /// The optional attributes without a copy.
  const std::vector<std::string> &optionalAttributes() const {
    return m_optattrs;
  }

 private:
  // TOK_STRUCTURAL, TOK_AUXILIARY or TOK_ABSTRACT.
  std::int32_t m_structuraltype;
  std::vector<std::string> m_reqattrs;
  std::vector<std::string> m_optattrs;
};

#endif  // LIBSCHEMA_OBJECTCLASS_H_
