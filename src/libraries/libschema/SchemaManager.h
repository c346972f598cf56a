/// @file
/// One schema: the definitions of a schema directory.
#ifndef LIBSCHEMA_SCHEMAMANAGER_H_
#define LIBSCHEMA_SCHEMAMANAGER_H_

#include <map>
#include <set>
#include <string>
#include <vector>

#include "Attribute.h"
#include "DefinitionWalk.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "internal/KeptDefinitions.h"

class SchemaLexan;
namespace libschema {
class TraceScope;
}

/// Holds the attribute types, object classes and storage definitions read from
/// the schema files of one directory, and which file each OID came from. A
/// migration reads the old installation and the new release, takes out of the
/// old one what the release has anyway, moves the rest into the new one and
/// writes that:
///
///     SchemaManager oldSchema("old/schema"), newSchema("new/schema");
///     for (const char *file : {"V3.user.at", "V3.user.oc", ...}) {
///       if (oldSchema.readFile(file) != 0) ...
///       if (newSchema.readFile(file) != 0) ...
///     }
///     oldSchema.readExcludedOids("excluded-oids");
///     oldSchema.compSchemas(&newSchema);
///     if (newSchema.mergeSchemas(&oldSchema) == 0) ...
///     newSchema.writeFile("merged/schema", "V3.user.at");
///
/// The files, and where the OIDs found in each are recorded (whatever kind of
/// definition they belong to):
///
///     V3.user.oc    V3.qor.oc    V3.system.oc    one set each
///     V3.user.at    V3.qor.at    V3.system.at    one set each
///     V3.modifiedschema                          a set
///     V3.config.at  V3.config.oc                 nowhere; cannot be written
///
/// Attribute types and object classes are filed under their first name in lower
/// case, storage definitions under their OID; these tables own the definitions.
/// Attribute types and object classes are also filed under their OID. A key
/// that is taken keeps its first definition, so that of two definitions with
/// the same first name the second can be reached only by its OID, if at all.
/// Kept on purpose: the manager never frees such a definition. Keys are
/// compared byte by byte.
///
/// File operations return 0 for success; operations on two schemas,
/// isExcluded() and isModFileEmpty() return 1 for success or yes. Nothing is
/// thrown but allocation failures, after which a manager is fit for
/// destruction.
///
/// A manager belongs to one thread; two managers are independent, except while
/// an operation runs with both.
///
/// An operation on two schemas may be given the same schema twice: a comparison
/// then takes everything out of the owning tables, a merge changes nothing, and
/// a check finds everything to collide that has its key in a table.
class SchemaManager {
 public:
  /// An empty schema. `workingDir` is the directory that readFile() reads from.
  explicit SchemaManager(std::string workingDir);

  /// Deletes what the owning tables hold, and what has left them and no other
  /// manager keeps. A definition that was never in an owning table stays (see
  /// above), as does the analyser of a file that was not read to its end.
  ~SchemaManager();

  SchemaManager(const SchemaManager &) = delete;
  SchemaManager &operator=(const SchemaManager &) = delete;

  /// A copy of an attribute type. `key` is its first name in any case, or else
  /// its OID. The key must be present: the program is aborted, with a line on
  /// standard error, when it is not. So it is in the other lookups.
  Attribute getAttr(std::string key);

  /// A copy of a storage definition, by its OID.
  QORAttribute getQORAttr(std::string oid);

  /// A copy of an object class. `key` is its first name in lower case, or else
  /// its OID. Kept on purpose: unlike getAttr(), this does not lower the key.
  ObjectClass getObjClass(std::string key);

  /// A copy of `s` in lower case (ASCII letters only).
  std::string convert(std::string s);

  /// Reads the file `fileName` of the directory, one of the nine names above,
  /// and adds its definitions to what is there. Returns 0 when the file was
  /// read to its end, for which a read error passes (a directory reads as an
  /// empty file); 1 when it cannot be opened, or when a definition does not
  /// parse or a section keyword is followed by neither "=" nor "{", and then
  /// what came before stays added; 89 when the file is there but its name is
  /// none of the nine, and nothing is read.
  ///
  /// The file is a sequence of sections: "attributetypes", "objectclasses" or
  /// "QORAttributetypes", then "=" and a definition, or any number of
  /// definitions in braces. Everything else is skipped.
  ///
  /// Kept on purpose: a definition that fails to parse, has no OID in braces,
  /// or finds its keys taken is never freed; nor is the analyser of a file that
  /// was not read to its end. A definition whose parse never ends (see the
  /// classes) keeps this from returning: callers that read files of unknown
  /// origin check them first.
  unsigned int readFile(std::string fileName);

  /// Writes the definitions recorded for the file `fileName` to a file of that
  /// name in the directory `dir`, which must be there, as writeSetToFile()
  /// does. Returns what that returns, or 89 when the name is none of the seven
  /// that can be written, and no file is touched. The schema is not changed.
  unsigned int writeFile(std::string dir, std::string fileName);

  /// Writes the definitions of `oids` to the file `path`, in the order of the
  /// OIDs: the object class with the OID; else the attribute type with it and
  /// its storage definition; else nothing. A comment with a time stamp comes
  /// first, unless `oids` is empty. An existing file is replaced. Returns 1
  /// when the file cannot be opened, and 0 otherwise.
  ///
  /// Kept on purpose: a failure to write or to close is not reported. A caller
  /// that must know reads the file back.
  unsigned int writeSetToFile(std::set<std::string> oids, std::string path);

  /// Adds the OIDs in the file `path`, which is taken as it is, to the excluded
  /// ones. Returns 0, or 1 when the file cannot be opened, and nothing changes.
  /// A read error passes for the end of the file.
  ///
  /// The file holds words separated by white space. A word that contains "#"
  /// begins a comment: it and the rest of its line are ignored. Kept on
  /// purpose: a last word with nothing after it is ignored too, and a comment
  /// on a last line without a newline keeps this from returning.
  unsigned int readExcludedOids(std::string path);

  /// 1 if exactly this OID is excluded, 0 otherwise.
  unsigned int isExcluded(std::string oid);

  /// Removes the OID from the first set of a user, qor or system file that
  /// holds it, in the order V3.user.oc, V3.user.at, V3.qor.oc, V3.qor.at,
  /// V3.system.oc, V3.system.at. Returns 0, or 32 when none does, and nothing
  /// changes. The definition stays in the tables.
  unsigned int delOidFromFileSet(std::string oid);

  /// Takes out of this schema what `other` holds in the same form under the
  /// same key, and what is excluded. Returns 1. The parts do it for one kind
  /// each.
  ///
  /// Attribute types and object classes leave the table of names, and their OID
  /// its set as by delOidFromFileSet(): one recorded for two of those files
  /// stays in the second set, and what is in that of V3.modifiedschema stays.
  /// They can still be reached by OID, and stay in memory until the manager
  /// goes. Storage definitions leave their table, and their OID stays recorded.
  /// `other`, which is not null, is only read.
  ///
  /// Kept on purpose: an attribute type or object class is looked for under its
  /// first name alone, whatever its OID; one that has that name among others
  /// there is not found.
  unsigned int compSchemas(SchemaManager *other);
  /// The part of compSchemas() for attribute types.
  unsigned int compAttrTables(SchemaManager *other);
  /// The part of compSchemas() for storage definitions.
  unsigned int compQORAttrTables(SchemaManager *other);
  /// The part of compSchemas() for object classes.
  unsigned int compObjTables(SchemaManager *other);

  /// Moves the definitions of `old`, which is not null, into this schema. The
  /// parts do it for one kind each, in the order below. One that has the key of
  /// a definition here replaces it; another is added, and its OID is recorded
  /// for the same file as in `old`.
  ///
  /// Returns 1, and `old` has no definitions left but those that only their OID
  /// leads to. Returns 0 at the first definition to be added whose OID is
  /// recorded for no user, qor or system file of `old`; those of its kind
  /// before it then stand in both schemas, kinds merged before have moved, the
  /// later parts are left undone, and both schemas can be used and destroyed as
  /// always. When it throws, each definition stands in one of the two schemas.
  ///
  /// Kept on purpose: the merge does not see to it that what it has moved can
  /// be written. A definition that has the name but not the OID of one here
  /// replaces it, the name and the OID of that one leave the tables, and no
  /// file is recorded for the new OID: writeFile() then writes neither. One
  /// that has the OID but not the name of one here stands under its name only,
  /// and is not written. Callers that must lose nothing compare the OIDs first.
  unsigned int mergeSchemas(SchemaManager *old);
  /// The part of mergeSchemas() for attribute types.
  unsigned int mergeAttrs(SchemaManager *old);
  /// The part of mergeSchemas() for storage definitions.
  unsigned int mergeQORAttrs(SchemaManager *old);
  /// The part of mergeSchemas() for object classes.
  unsigned int mergeObjClasses(SchemaManager *old);

  /// This schema's set of the kind of the first set of `old` that holds the
  /// OID, in the order of delOidFromFileSet(); null when none does. The set
  /// belongs to this schema and is valid as long as it. No schema is changed.
  std::set<std::string> *findOidInSet(SchemaManager *old, std::string oid);

  /// Leaves in this schema what collides with `other`, and takes everything
  /// else out of the tables; returns 1. The parts do it for one kind each. To
  /// be called on a schema that is not merged or written afterwards; the sets
  /// of OIDs and the tables by OID stay as they are. `other` is only read.
  ///
  /// A definition collides when `other` has one of its kind under the same
  /// first name, in any case, or any under its OID as the key. Kept on purpose:
  /// these keys are the first names of attribute types and object classes, and
  /// the OIDs of storage definitions only.
  unsigned int checkCollisions(SchemaManager *other);
  /// The part of checkCollisions() for object classes, which comes first.
  unsigned int checkObjClasses(SchemaManager *other);
  /// The part of checkCollisions() for attribute types.
  unsigned int checkAttrs(SchemaManager *other);
  /// The part of checkCollisions() for storage definitions.
  unsigned int checkQORAttrs(SchemaManager *other);

  /// The text for the user after checkCollisions(): a heading and the OID and
  /// names of each object class in the table, or a line that says that there is
  /// none. Can be asked for at any time, and changes nothing.
  std::string getOcTable();
  /// The same for attribute types. Kept on purpose: the heading lacks the word
  /// "definition" that the others have.
  std::string getAttrTable();
  /// The same for storage definitions, which have no names.
  std::string getQORAttrTable();

  /// Withdraws the definitions whose OIDs stand in the file `path`, which has
  /// the form of a list of excluded OIDs, with the same oddities. Returns 0, or
  /// 1 when the file cannot be opened, and nothing changes.
  ///
  /// An OID withdraws the object class, or else the attribute type, or else the
  /// storage definition that has it, or nothing: the definition leaves its
  /// owning table, and the OID the set of V3.modifiedschema. Attribute types
  /// and object classes can still be reached by OID.
  unsigned int modifySchema(std::string path);

  /// Removes the OID from the set of V3.modifiedschema. Returns 0, or 32 when
  /// it is not there.
  unsigned int delOidFromModSch(std::string oid);

  /// 1 if the set of V3.modifiedschema is empty, 0 otherwise.
  unsigned int isModFileEmpty();

  /// Prints the table of attribute types, with the fields of each, to standard
  /// output for diagnosis.
  void dumpAttrTable();
  /// Prints the table of storage definitions.
  void dumpQORAttrTable();
  /// Prints the table of object classes. Kept on purpose: a tab stands between
  /// the "Key" and the "Value" of its heading, not a newline.
  void dumpOcTable();
  /// Prints the OIDs of V3.user.oc, one a line, in their order.
  void dumpUserOc();
  /// Prints the OIDs of V3.user.at.
  void dumpUserAt();
  /// Prints the OIDs of V3.qor.oc.
  void dumpQorOc();
  /// Prints the OIDs of V3.qor.at.
  void dumpQorAt();
  /// Prints the OIDs of V3.system.oc.
  void dumpSysOc();
  /// Prints the OIDs of V3.system.at.
  void dumpSysAt();
  /// Prints the excluded OIDs.
  void dumpEOids();

  /// The attribute types for reading, in the order of their first names in
  /// lower case. See DefinitionWalk for this and the following walks. Those by
  /// OID also come to what has left the table of names, and pass over a
  /// definition whose OID was taken.
  DefinitionWalk<Attribute> eachAttributeType() const {
    return DefinitionWalk<Attribute>(m_attr_table);
  }
  /// The attribute types in the order of their OIDs.
  DefinitionWalk<Attribute> eachAttributeTypeByOid() const {
    return DefinitionWalk<Attribute>(m_attr_oid_table);
  }
  /// The object classes in the order of their first names in lower case.
  DefinitionWalk<ObjectClass> eachObjectClass() const {
    return DefinitionWalk<ObjectClass>(m_oc_table);
  }
  /// The object classes in the order of their OIDs.
  DefinitionWalk<ObjectClass> eachObjectClassByOid() const {
    return DefinitionWalk<ObjectClass>(m_oc_oid_table);
  }
  /// The storage definitions in the order of their OIDs.
  DefinitionWalk<QORAttribute> eachStorageDefinition() const {
    return DefinitionWalk<QORAttribute>(m_qor_attr_table);
  }

  /// The OIDs recorded for the file `fileName`, in ascending order; null for
  /// any other name than the seven that can be written. Valid as long as the
  /// manager, and each change shows in it.
  const std::set<std::string> *recordedOids(const std::string &fileName) const;

  /// What readExcludedOids() has read, in ascending order. Valid as long as the
  /// manager.
  const std::set<std::string> &excludedOids() const { return m_excluded_oids; }
  /// The directory that readFile() reads from. Valid as long as the manager.
  const std::string &workingDirectory() const { return m_working_dir; }

  /// The table of attribute types by first name in lower case. This and the
  /// following tables are for callers that need a definition's operations,
  /// which are not const. The definitions belong to the manager, and must be
  /// neither deleted nor parsed again; tables and definitions are valid until
  /// the manager changes.
  const std::map<std::string, Attribute *> &attributeTypes() const {
    return m_attr_table;
  }
  /// The table of attribute types by OID.
  const std::map<std::string, Attribute *> &attributeTypesByOid() const {
    return m_attr_oid_table;
  }
  /// The table of object classes by first name in lower case.
  const std::map<std::string, ObjectClass *> &objectClasses() const {
    return m_oc_table;
  }
  /// The table of object classes by OID.
  const std::map<std::string, ObjectClass *> &objectClassesByOid() const {
    return m_oc_oid_table;
  }
  /// The table of storage definitions by OID.
  const std::map<std::string, QORAttribute *> &storageDefinitions() const {
    return m_qor_attr_table;
  }

 private:
  template <class Definition>
  using Table = std::map<std::string, Definition *>;
  using OidSet = std::set<std::string>;

  // The files of a schema directory.
  struct File;
  static const File kFiles[];
  static const File *findFile(const std::string &name);

  // What differs between the three kinds of definitions, and what is done alike
  // with each.
  struct AttributeKind;
  struct ObjectClassKind;
  struct StorageKind;
  template <class Kind>
  class Merge;
  template <class Kind>
  class Comparison;
  template <class Kind>
  unsigned int checkTable(SchemaManager *other);
  bool hasKey(const std::string &oid) const;
  template <class Kind>
  typename Kind::Definition *lookUp(const std::string &key);
  template <class Kind>
  void withdraw(const std::string &oid);
  template <class Kind>
  using Entry = typename Table<typename Kind::Definition>::iterator;
  template <class Kind>
  void removeOwned(Entry<Kind> entry);
  template <class Kind>
  std::vector<typename Kind::Definition *> removeOwned(
      const std::vector<Entry<Kind>> &entries);
  template <class Definition>
  void deleteOwned(const Table<Definition> &table);

  // What readFile() does once m_lexan is there.
  class Reading;
  unsigned int readOpenedFile(const std::string &fileName,
                              libschema::TraceScope *trace);

  // writeSetToFile(), isExcluded(), delOidFromFileSet(), delOidFromModSch() and
  // findOidInSet() without the copies of sets and OIDs.
  unsigned int writeSet(const OidSet &oids, const std::string &path);
  unsigned int findExcluded(const std::string &oid);
  unsigned int removeFromFileSet(const std::string &oid);
  unsigned int removeFromModSch(const std::string &oid);
  OidSet *findSet(SchemaManager *old, const std::string &oid);

  SchemaLexan *m_lexan;  // of the latest readFile(); not owned; dangles after a
                         // successful one
  Table<Attribute> m_attr_table;         // by first name in lower case; owning
  Table<ObjectClass> m_oc_table;         // by first name in lower case; owning
  Table<QORAttribute> m_qor_attr_table;  // by OID; owning
  Table<Attribute> m_attr_oid_table;     // by OID; not owning
  Table<ObjectClass> m_oc_oid_table;     // by OID; not owning
  std::string m_working_dir;             // as given to the constructor
  OidSet m_user_at;                      // the OIDs of V3.user.at, and so on
  OidSet m_user_oc;
  OidSet m_qor_at;
  OidSet m_qor_oc;
  OidSet m_sys_at;
  OidSet m_sys_oc;
  OidSet m_mod_schema;     // the OIDs of V3.modifiedschema
  OidSet m_excluded_oids;  // what readExcludedOids() has read

  libschema::KeptDefinitions m_kept;  // owned besides the three tables
};

#endif  // LIBSCHEMA_SCHEMAMANAGER_H_
