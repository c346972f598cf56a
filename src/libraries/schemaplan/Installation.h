// One side of a migration.
#ifndef SCHEMAPLAN_INSTALLATION_H_
#define SCHEMAPLAN_INSTALLATION_H_

#include <string>
#include <string_view>
#include <vector>

#include "DirectoryCheck.h"
#include "SchemaDirectory.h"

namespace schemaplan {

// The files of a directory, and what the library makes of them, which is
// checkFiles() of the directory. Both must outlive what refers to them.
struct Installation {
  const schemacheck::SchemaDirectory &directory;
  const schemacheck::LibraryView &view;

  // Puts in `views` the fields of a definition of the directory as the library
  // keeps them; they are valid as long as the directory and the view are.
  void viewFields(const schemacheck::Statement &statement,
                  std::vector<schemacheck::FieldView> *views) const {
    const auto kept = view.kept.find(statement.definition);
    if (kept == view.kept.end()) {
      schemacheck::viewFields(*statement.definition, views);
    } else {
      schemacheck::viewFields(kept->second, views);
    }
  }

  // Whether the library reads it, as a definition of its OID and name.
  bool isRead(const schemacheck::Statement &statement) const {
    return view.lost.count(statement.definition) == 0;
  }
};

// A definition of one of the sides.
struct SidedDefinition {
  const Installation *side;
  const schemacheck::Statement *statement;

  // As above.
  void viewFields(std::vector<schemacheck::FieldView> *views) const {
    side->viewFields(*statement, views);
  }
};

// Whether a merge can add from the file that the definition stands in.
inline bool isRecorded(const schemacheck::Statement &statement) {
  return schemacheck::kSchemaFiles[statement.file->number].recorded;
}

}  // namespace schemaplan

#endif  // SCHEMAPLAN_INSTALLATION_H_
