#include "Withdrawals.h"

#include <map>

#include "Inventory.h"

using schemacheck::SchemaDirectory;
using schemacheck::Statement;

namespace {

// What an OID leads to first, in words; empty when it leads to nothing.
std::string describeByOid(const SchemaManager &schema, const std::string &oid) {
  const auto objectClass = schema.objectClassesByOid().find(oid);
  if (objectClass != schema.objectClassesByOid().end()) {
    return describe(Kind::kObjectClass, objectClass->second->getFirstName(),
                    oid);
  }
  const auto attribute = schema.attributeTypesByOid().find(oid);
  if (attribute != schema.attributeTypesByOid().end()) {
    return describe(Kind::kAttributeType, attribute->second->getFirstName(),
                    oid);
  }
  return schema.storageDefinitions().count(oid) != 0
             ? describe(Kind::kStorage, "", oid)
             : "";
}

}  // namespace

std::vector<Withdrawal> withdrawalsFrom(const SchemaManager &merged,
                                        const SchemaDirectory &release,
                                        const std::set<std::string> &oids) {
  std::set<std::string> modified;
  for (const Statement &statement : release.statements()) {
    if (statement.file->number == schemacheck::kModifiedSchema &&
        statement.isEntered()) {
      modified.insert(statement.oid());
    }
  }
  std::vector<Withdrawal> withdrawals;
  for (const std::string &oid : oids) {
    const bool hasStorage = merged.objectClassesByOid().count(oid) == 0 &&
                            merged.attributeTypesByOid().count(oid) != 0 &&
                            merged.storageDefinitions().count(oid) != 0;
    withdrawals.push_back({oid, describeByOid(merged, oid), hasStorage,
                           modified.count(oid) != 0, "", false});
  }
  return withdrawals;
}

void findWhatIsLeft(const schemaplan::Plan &plan,
                    std::vector<Withdrawal> *withdrawals) {
  std::map<std::string, Withdrawal *> unknown;
  for (Withdrawal &one : *withdrawals) {
    if (one.definition.empty()) {
      unknown.emplace(one.oid, &one);
    }
  }
  for (const schemaplan::PlannedDefinition &planned : plan.definitions) {
    const Statement &statement = *planned.statement;
    const auto found = unknown.find(statement.oid());
    if (planned.verdict != schemaplan::Verdict::kWithdrawn ||
        found == unknown.end()) {
      continue;
    }
    Withdrawal &one = *found->second;
    if (statement.definition->kind == Kind::kStorage) {
      one.hasStorage = true;
    } else {
      one.definition = statement.inWords();
    }
    one.isLeft = true;
  }
  for (const auto &[oid, one] : unknown) {
    if (one->hasStorage && one->definition.empty()) {
      one->definition = describe(Kind::kStorage, "", oid);
      one->hasStorage = false;
    }
  }
}

void findWhatStays(const SchemaDirectory &written,
                   std::vector<Withdrawal> *withdrawals) {
  for (Withdrawal &one : *withdrawals) {
    for (const Kind kind : {Kind::kAttributeType, Kind::kObjectClass}) {
      const Statement *found = written.index().withOid(kind, one.oid);
      if (!one.definition.empty() && found != nullptr) {
        one.staysIn = kSchemaFiles[found->file->number].name;
      }
    }
  }
}
