// The three kinds of definitions, for what SchemaManager does alike with each:
// the tables of a kind, the key and the comparison of its definitions, and how
// a definition is looked up.
#ifndef LIBSCHEMA_INTERNAL_KINDS_H_
#define LIBSCHEMA_INTERNAL_KINDS_H_

#include <map>
#include <string>

#include "SchemaManager.h"
#include "internal/Definition.h"
#include "internal/Trace.h"

namespace libschema {

// The definition filed under `key`, or null.
template <class Definition>
Definition *findIn(const std::map<std::string, Definition *> &table,
                   const std::string &key) {
  const auto entry = table.find(key);
  return entry == table.end() ? nullptr : entry->second;
}

}  // namespace libschema

struct SchemaManager::AttributeKind {
  using Definition = Attribute;
  static constexpr libschema::Function kLookUp =
      libschema::Function::kManagerGetAttr;
  static constexpr const char *kLookUpName = "getAttr";
  static constexpr bool kComparisonUpdatesFileSets = true;

  static Table<Attribute> &owning(SchemaManager *schema) {
    return schema->m_attr_table;
  }
  static Table<Attribute> *byOid(SchemaManager *schema) {
    return &schema->m_attr_oid_table;
  }
  static std::string key(Attribute *attribute) {
    return attribute->getFirstNameLower();
  }
  static Attribute *find(SchemaManager *schema, const std::string &key) {
    Attribute *named =
        libschema::findIn(schema->m_attr_table, libschema::lowerCase(key));
    return named != nullptr ? named
                            : libschema::findIn(schema->m_attr_oid_table, key);
  }
  static int equal(Attribute *mine, Attribute *theirs) {
    return mine->attrsEqual(*theirs);
  }
};

struct SchemaManager::ObjectClassKind {
  using Definition = ObjectClass;
  static constexpr libschema::Function kLookUp =
      libschema::Function::kManagerGetObjClass;
  static constexpr const char *kLookUpName = "getObjClass";
  static constexpr bool kComparisonUpdatesFileSets = true;

  static Table<ObjectClass> &owning(SchemaManager *schema) {
    return schema->m_oc_table;
  }
  static Table<ObjectClass> *byOid(SchemaManager *schema) {
    return &schema->m_oc_oid_table;
  }
  static std::string key(ObjectClass *objectClass) {
    return objectClass->getFirstNameLower();
  }
  static ObjectClass *find(SchemaManager *schema, const std::string &key) {
    ObjectClass *named = libschema::findIn(schema->m_oc_table, key);
    return named != nullptr ? named
                            : libschema::findIn(schema->m_oc_oid_table, key);
  }
  static int equal(ObjectClass *mine, ObjectClass *theirs) {
    return mine->objsEqual(*theirs);
  }
};

// There is one table: it owns, and its keys are OIDs. Kept on purpose: the OIDs
// of storage definitions that a comparison removes stay recorded.
struct SchemaManager::StorageKind {
  using Definition = QORAttribute;
  static constexpr libschema::Function kLookUp =
      libschema::Function::kManagerGetQORAttr;
  static constexpr const char *kLookUpName = "getQORAttr";
  static constexpr bool kComparisonUpdatesFileSets = false;

  static Table<QORAttribute> &owning(SchemaManager *schema) {
    return schema->m_qor_attr_table;
  }
  static Table<QORAttribute> *byOid(SchemaManager * /*schema*/) {
    return nullptr;
  }
  static std::string key(QORAttribute *attribute) {
    return attribute->getOid();
  }
  static QORAttribute *find(SchemaManager *schema, const std::string &key) {
    return libschema::findIn(schema->m_qor_attr_table, key);
  }
  static int equal(QORAttribute *mine, QORAttribute *theirs) {
    return mine->qorAttrsEqual(*theirs);
  }
};

#endif  // LIBSCHEMA_INTERNAL_KINDS_H_
