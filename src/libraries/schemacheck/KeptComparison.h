// A definition as it is written against what the library has kept of it.
#ifndef SCHEMACHECK_KEPTCOMPARISON_H_
#define SCHEMACHECK_KEPTCOMPARISON_H_

#include <vector>

#include "LibraryReader.h"
#include "SchemaDirectory.h"

namespace schemacheck {

// How what the library has kept stands to the definition.
struct Agreement {
  // It is all of it but for what is known to be dropped, and the library has
  // stopped where the definition ends. If not, it is anywhere in the file.
  bool isWhole = false;
  // No field differs.
  bool isExact = false;
  // It ends where the definition does, and has its OID and first name.
  bool isThatDefinition = false;
};

// Reports how the two differ, and why, and what in the definition is not by the
// grammar. `reader` is another one, for what the library would write of the
// definition.
Agreement compareWithKept(const StrictFile &file, const Definition &definition,
                          const Kept &kept, LibraryReader *library,
                          LibraryReader *reader,
                          std::vector<Finding> *findings);

}  // namespace schemacheck

#endif  // SCHEMACHECK_KEPTCOMPARISON_H_
