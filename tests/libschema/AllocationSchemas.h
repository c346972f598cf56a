// Schemas for tests of allocation failures.
#ifndef TESTS_LIBSCHEMA_ALLOCATIONSCHEMAS_H_
#define TESTS_LIBSCHEMA_ALLOCATIONSCHEMAS_H_

#include <cstddef>
#include <string>

#include "Attribute.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "support/FailingAllocation.h"

namespace allocation_schemas {

// A definition. Numbers stand for names and OIDs, which are too long for a
// string to hold them without an allocation. The kinds do not share OIDs.
inline std::string oidOf(const Kind &kind, int number) {
  return "1.3.6.1.4.1.42424." + std::to_string(&kind - kKinds) + '.' +
         std::to_string(number);
}
inline std::string nameOf(int number) {
  return "a-definition-with-the-number-" + std::to_string(number);
}
inline std::string line(const Kind &kind, int oid, int name,
                        const std::string &text) {
  return kind.line(oidOf(kind, oid), nameOf(name),
                   text + "-and-a-description-of-some-length");
}

// A file of definitions of all kinds.
inline std::string fileText() {
  std::string text;
  for (const Kind &kind : kKinds) {
    text += line(kind, 1, 1, "x") + line(kind, 2, 2, "x");
  }
  return text;
}

// Tables and sets of OIDs.
inline std::string contentOf(SchemaManager *schema) {
  std::string text = tablesOf(*schema);
  for (const char *file : kSearchedFiles) {
    text += file;
    for (const std::string &recorded : *schema->recordedOids(file)) {
      text += ' ' + recorded;
    }
    text += '\n';
  }
  return text;
}

// The blocks that are as large as a definition.
inline std::size_t definitionBlocks() {
  return blocksOfSize(sizeof(Attribute)) + blocksOfSize(sizeof(ObjectClass)) +
         blocksOfSize(sizeof(QORAttribute));
}

}  // namespace allocation_schemas

#endif  // TESTS_LIBSCHEMA_ALLOCATIONSCHEMAS_H_
