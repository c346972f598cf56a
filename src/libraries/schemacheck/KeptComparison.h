// A definition as it is written against what the library has kept of it.
#ifndef SCHEMACHECK_KEPTCOMPARISON_H_
#define SCHEMACHECK_KEPTCOMPARISON_H_

#include <vector>

#include "LibraryReader.h"
#include "SchemaDirectory.h"

namespace schemacheck {

// Compares the definitions of a file, one after the other.
class KeptComparison {
 public:
  // `library` is what reads the file. Neither is owned.
  KeptComparison(const StrictFile &file, LibraryReader *library)
      : m_file(file), m_library(*library) {}

  // Reports how the two differ, and why, and what in the definition is not by
  // the grammar. Returns whether the library has kept all of it but for what is
  // known to be dropped, and has stopped where the definition ends; if not, it
  // is left anywhere in the file.
  bool compare(const Definition &definition, const Kept &kept,
               std::vector<Finding> *findings);

 private:
  const StrictFile &m_file;
  LibraryReader &m_library;
  LibraryReader m_reader{""};     // of what the library would write
  std::vector<FieldView> m_said;  // the fields as they are written
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_KEPTCOMPARISON_H_
