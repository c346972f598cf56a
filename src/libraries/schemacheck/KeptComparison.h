// A definition as it is written against what the library has kept of it.
#ifndef SCHEMACHECK_KEPTCOMPARISON_H_
#define SCHEMACHECK_KEPTCOMPARISON_H_

#include <vector>

#include "LibraryReader.h"
#include "SchemaDirectory.h"

namespace schemacheck {

// Reports how the two differ, and why, and what in the definition is not by the
// grammar. Returns whether the library has kept all of it but for what is
// known to be dropped, and has stopped where the definition ends; if not, it is
// left anywhere in the file. `reader` is another one, for what the library
// would write of the definition.
bool compareWithKept(const StrictFile &file, const Definition &definition,
                     const Kept &kept, LibraryReader *library,
                     LibraryReader *reader, std::vector<Finding> *findings);

}  // namespace schemacheck

#endif  // SCHEMACHECK_KEPTCOMPARISON_H_
