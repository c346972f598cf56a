// The files of a schema directory, as they are written.
#ifndef SCHEMACHECK_SCHEMADIRECTORY_H_
#define SCHEMACHECK_SCHEMADIRECTORY_H_

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <string>
#include <vector>

#include "DefinitionIndex.h"
#include "Finding.h"
#include "SchemaFiles.h"
#include "Statement.h"

namespace schemacheck {

// Reads the files of one directory strictly. It holds what the files say,
// whatever the library makes of it; see FileCheck.h for that.
class SchemaDirectory {
 public:
  static constexpr std::uintmax_t kDefaultLimit = std::uintmax_t{64} << 20;

  // Never throws on account of what it finds: findings() says what cannot be
  // read. Files larger than `sizeLimit` bytes are not read.
  explicit SchemaDirectory(std::filesystem::path path,
                           std::uintmax_t sizeLimit = kDefaultLimit);

  SchemaDirectory(const SchemaDirectory &) = delete;
  SchemaDirectory &operator=(const SchemaDirectory &) = delete;

  const std::filesystem::path &path() const { return m_path; }

  // In the order in which they are read.
  const std::deque<StrictFile> &files() const { return m_files; }

  // All definitions, in the order in which a manager reads them.
  const std::vector<Statement> &statements() const { return m_statements; }

  // The same by name and by OID.
  const DefinitionIndex &index() const { return m_index; }

  // What is wrong with the files as files.
  const std::vector<Finding> &findings() const { return m_findings; }

 private:
  void checkNames(const std::vector<std::string> &names);
  void readFile(std::size_t number);
  void addStatements();

  std::filesystem::path m_path;
  std::uintmax_t m_sizeLimit;
  std::deque<StrictFile> m_files;
  std::vector<Statement> m_statements;
  DefinitionIndex m_index;
  std::vector<Finding> m_findings;
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_SCHEMADIRECTORY_H_
