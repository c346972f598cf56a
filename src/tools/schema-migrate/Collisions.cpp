#include "Collisions.h"

#include <map>
#include <ostream>
#include <string>

#include "SchemaManager.h"

namespace {

template <class Definition>
std::vector<Colliding> listOf(
    Kind kind, const std::map<std::string, Definition *> &table) {
  std::vector<Colliding> list;
  list.reserve(table.size());
  for (const auto &entry : table) {
    list.push_back({kind, entry.second->oid(), entry.second->names()});
  }
  return list;
}

}  // namespace

Collisions findCollisions(Schemas *schemas) {
  SchemaManager &colliding = *schemas->oldSchema();
  colliding.compSchemas(schemas->newSchema());
  colliding.checkCollisions(schemas->newSchema());
  std::string text = colliding.getOcTable();
  text += colliding.getAttrTable();
  text += colliding.getQORAttrTable();
  return {listOf(Kind::kObjectClass, colliding.objectClasses()),
          listOf(Kind::kAttributeType, colliding.attributeTypes()),
          listOf(Kind::kStorage, colliding.storageDefinitions()), text};
}

void printCollisions(const Collisions &collisions, std::ostream *out) {
  *out << collisions.text;
}
