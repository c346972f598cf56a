#include "DirectoryCheck.h"

#include <iterator>
#include <utility>

#include "DefinitionChecks.h"
#include "ReferenceChecks.h"

namespace schemacheck {

LibraryView checkFiles(const SchemaDirectory &directory) {
  LibraryView view{directory.findings(), {}, {}};
  for (const StrictFile &file : directory.files()) {
    LibraryView one = checkFile(file);
    std::move(one.findings.begin(), one.findings.end(),
              std::back_inserter(view.findings));
    view.kept.merge(one.kept);
    view.lost.merge(one.lost);
  }
  return view;
}

std::vector<Finding> checkDirectory(const SchemaDirectory &directory) {
  return checkDirectory(directory, checkFiles(directory));
}

std::vector<Finding> checkDirectory(const SchemaDirectory &directory,
                                    const LibraryView &view) {
  std::vector<Finding> findings = view.findings;
  for (auto *check : {checkDefinitions, checkReferences}) {
    std::vector<Finding> more = check(directory);
    std::move(more.begin(), more.end(), std::back_inserter(findings));
  }
  sortFindings(&findings);
  return findings;
}

}  // namespace schemacheck
