// What a file says against what the library keeps of it.
#ifndef SCHEMACHECK_FILECHECK_H_
#define SCHEMACHECK_FILECHECK_H_

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "Fields.h"
#include "Finding.h"
#include "Statement.h"

namespace schemacheck {

// What the library makes of the definitions of one file or more.
struct LibraryView {
  std::vector<Finding> findings;
  // The fields of those that it keeps in another form than the file says, in
  // the order of fieldsOf().
  std::unordered_map<const Definition *, std::vector<Field>> kept;
  // Those that it does not read, or reads as something else.
  std::unordered_set<const Definition *> lost;
};

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
LibraryView checkFile(const StrictFile &file);

}  // namespace schemacheck

#endif  // SCHEMACHECK_FILECHECK_H_
