#include "DirectoryCheck.h"

#include <iterator>
#include <utility>

#include "DefinitionChecks.h"
#include "FileCheck.h"
#include "ReferenceChecks.h"

namespace schemacheck {

std::vector<Finding> checkDirectory(const SchemaDirectory &directory) {
  std::vector<Finding> findings = directory.findings();
  const auto add = [&findings](std::vector<Finding> more) {
    std::move(more.begin(), more.end(), std::back_inserter(findings));
  };
  for (const StrictFile &file : directory.files()) {
    add(checkFile(file));
  }
  add(checkDefinitions(directory));
  add(checkReferences(directory));
  sortFindings(&findings);
  return findings;
}

}  // namespace schemacheck
