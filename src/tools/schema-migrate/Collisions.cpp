#include "Collisions.h"

#include <ostream>

#include "SchemaManager.h"

bool printCollisions(Schemas *schemas, std::ostream *out) {
  SchemaManager &colliding = *schemas->oldSchema();
  colliding.compSchemas(schemas->newSchema());
  colliding.checkCollisions(schemas->newSchema());
  *out << colliding.getOcTable() << colliding.getAttrTable()
       << colliding.getQORAttrTable();
  return !colliding.objectClasses().empty() ||
         !colliding.attributeTypes().empty() ||
         !colliding.storageDefinitions().empty();
}
