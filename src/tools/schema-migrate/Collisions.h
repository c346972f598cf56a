// The collision report.
#ifndef SCHEMA_MIGRATE_COLLISIONS_H_
#define SCHEMA_MIGRATE_COLLISIONS_H_

#include <iosfwd>
#include <string>
#include <vector>

#include "Schemas.h"

struct Colliding {
  Kind kind;
  std::string oid;
  std::vector<std::string> names;
};

// The definitions of an old installation that collide with the release, as the
// library finds them, and what it says of them.
struct Collisions {
  std::vector<Colliding> objectClasses;
  std::vector<Colliding> attributeTypes;
  std::vector<Colliding> storageDefinitions;
  std::string text;

  bool any() const {
    return !objectClasses.empty() || !attributeTypes.empty() ||
           !storageDefinitions.empty();
  }
};

// What is identical in both, or excluded, does not count. Uses the schemas up:
// nothing else can be done with them afterwards.
Collisions findCollisions(Schemas *schemas);

// Prints the library's three collision texts.
void printCollisions(const Collisions &collisions, std::ostream *out);

#endif  // SCHEMA_MIGRATE_COLLISIONS_H_
