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

// Compares the definitions of a file, one after the other.
class KeptComparison {
 public:
  // `library` is what reads the file. Neither is owned.
  KeptComparison(const StrictFile &file, LibraryReader *library)
      : m_file(file), m_library(*library) {}

  // Reports how the two differ, and why, and what in the definition is not by
  // the grammar.
  Agreement compare(const Definition &definition, const Kept &kept,
                    std::vector<Finding> *findings);

 private:
  const StrictFile &m_file;
  LibraryReader &m_library;
  LibraryReader m_reader{""};     // of what the library would write
  std::vector<FieldView> m_said;  // the fields as they are written
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_KEPTCOMPARISON_H_
