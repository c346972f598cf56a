// All checks of schema directories.
#ifndef SCHEMACHECK_DIRECTORYCHECK_H_
#define SCHEMACHECK_DIRECTORYCHECK_H_

#include <vector>

#include "FileCheck.h"
#include "SchemaDirectory.h"

namespace schemacheck {

// What the library makes of the files of a directory, and what is wrong with
// them as files; nothing of how the definitions stand to each other.
LibraryView checkFiles(const SchemaDirectory &directory);

// Everything that is to be said of one directory, by itself, in the order of
// its files:
//
//   SchemaDirectory directory("/srv/schema");
//   for (const Finding &finding : checkDirectory(directory)) {
//     std::cout << toText(finding);
//   }
//
// Ends on every input, in time n log n of the size of the files. Where there is
// no error among the findings, a SchemaManager that reads the same files ends,
// too, and holds the definitions that they state, with all fields but those
// that a warning names as dropped.
std::vector<Finding> checkDirectory(const SchemaDirectory &directory);

}  // namespace schemacheck

#endif  // SCHEMACHECK_DIRECTORYCHECK_H_
