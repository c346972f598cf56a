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
//
// Several threads may read and check directories at the same time, each its
// own, or check one that was read before; none may change the library's event
// mask meanwhile. While that asks for a trace, their records come mixed.
std::vector<Finding> checkDirectory(const SchemaDirectory &directory);

// The same, when the files were checked already.
std::vector<Finding> checkDirectory(const SchemaDirectory &directory,
                                    const LibraryView &view);

}  // namespace schemacheck

#endif  // SCHEMACHECK_DIRECTORYCHECK_H_
