// What a file says against what the library keeps of it.
#ifndef SCHEMACHECK_FILECHECK_H_
#define SCHEMACHECK_FILECHECK_H_

#include <vector>

#include "SchemaDirectory.h"

namespace schemacheck {

// Reads the text of a file as SchemaManager::readFile() does, but through a
// scanner that stops what would never end, and compares each
// definition with the strict reading. Every difference is a finding: on what
// has caused it, or, where no cause is known, on the field that differs.
//
// Where the library loses its way, the finding says so, and the check goes on
// with the next definition as if it had not, so that one run finds all.
// Without an error among the findings, the library reads the file as it stands:
// the same definitions, in the same order, with the same fields but for those
// that a warning names.
//
// Takes time linear in the size of the file.
std::vector<Finding> checkFile(const StrictFile &file);

}  // namespace schemacheck

#endif  // SCHEMACHECK_FILECHECK_H_
