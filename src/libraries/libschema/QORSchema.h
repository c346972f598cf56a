/// @file
/// The base of all schema definitions.
#ifndef LIBSCHEMA_QORSCHEMA_H_
#define LIBSCHEMA_QORSCHEMA_H_

#include <fstream>
#include <string>
#include <vector>

/// One definition of a schema file: an attribute type, an object class or a
/// storage definition. It is created empty, filled once by its class's parse(),
/// and only read from then on. Whoever created it deletes it; the definitions
/// that SchemaManager::readFile() creates belong to the manager. Copies are
/// independent.
///
/// Lists of names are equal in the comparisons of all classes when they have
/// the same length and each name of this object's list occurs in the other's,
/// in any place and any case. Kept on purpose: this is containment, not
/// counting, and so one-sided: ( 'a' 'a' ) equals ( 'a' 'b' ), but not the
/// other way round.
class QORSchema {
 public:
  virtual ~QORSchema() = default;

  /// Prints the definition to standard output for diagnosis, a field a line.
  /// The object stays as it is, as in every operation but parse().
  virtual void dump() = 0;

  /// Writes the definition to `out`, which is open, as one line of a schema
  /// file and flushes. A failure to write is left in the state of `out`.
  virtual void dump(std::ofstream &out) = 0;

  /// A copy of the OID as written in the file; empty before the definition was
  /// parsed, and where it has none.
  virtual std::string getOid() = 0;

  /// A copy of the description without its quotes; empty when there is none.
  virtual std::string getDescription() = 0;

  /// A copy of the superiors in the order read; no element when there is none.
  virtual std::vector<std::string> getSuperior() = 0;

  /// A copy of the first name. Empty when there is none, although callers
  /// should not ask an object class without a name.
  virtual std::string getFirstName() = 0;

  /// A copy of the names in the order read; no element when there is none.
  virtual std::vector<std::string> getNames() = 0;

  /// The first name in lower case (ASCII letters only); empty when there is
  /// none. The key under which a manager files attribute types and object
  /// classes.
  virtual std::string getFirstNameLower() = 0;

  /// The OID without a copy. What this and the following operations return is
  /// for reading, and valid as long as the object. Texts are empty and lists
  /// have no element where the definition has no such field.
  const std::string &oid() const { return m_oid; }
  /// The names.
  const std::vector<std::string> &names() const { return m_names; }
  /// The description.
  const std::string &description() const { return m_description; }
  /// The superiors.
  const std::vector<std::string> &superiors() const { return m_superior; }
  /// Whether the definition is marked as OBSOLETE.
  bool isObsolete() const { return m_obsolete; }

 protected:
  /// An empty definition.
  QORSchema() = default;
  /// An independent copy.
  QORSchema(const QORSchema &) = default;
  /// Makes this an independent copy.
  QORSchema &operator=(const QORSchema &) = default;

  std::vector<std::string> m_names;     ///< in the order read
  std::string m_oid;                    ///< empty until parsed
  std::string m_description;            ///< without quotes; empty: none
  std::vector<std::string> m_superior;  ///< in the order read
  bool m_obsolete = false;              ///< OBSOLETE
};

#endif  // LIBSCHEMA_QORSCHEMA_H_
