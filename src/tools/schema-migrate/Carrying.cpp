#include "Carrying.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "Disk.h"
#include "Inventory.h"
#include "OidList.h"
#include "Schemas.h"
#include "Trouble.h"

namespace fs = std::filesystem;

using schemacheck::SchemaDirectory;
using schemacheck::Statement;
using schemacheck::StrictFile;
using schemaplan::Installation;
using schemaplan::PlannedDefinition;

namespace {

// A list of OIDs for the library, which reads such from files only. It is in
// memory, and gone with this.
class ListInMemory {
 public:
  explicit ListInMemory(const std::set<std::string> &oids)
      : m_descriptor(memfd_create("oids", MFD_CLOEXEC)) {
    std::string text;
    for (const std::string &oid : oids) {
      text += oid + '\n';
    }
    std::size_t written = 0;
    while (m_descriptor != -1 && written < text.size()) {
      const ssize_t length =
          ::write(m_descriptor, text.data() + written, text.size() - written);
      if (length <= 0) {
        break;
      }
      written += static_cast<std::size_t>(length);
    }
    if (m_descriptor == -1 || written < text.size()) {
      const std::string reason = std::generic_category().message(errno);
      release();
      throw Trouble(kFileError, "error: cannot make a list of OIDs: " + reason);
    }
  }
  ~ListInMemory() { release(); }

  ListInMemory(const ListInMemory &) = delete;
  ListInMemory &operator=(const ListInMemory &) = delete;

  // Valid as long as this object is.
  std::string path() const {
    return "/proc/self/fd/" + std::to_string(m_descriptor);
  }

 private:
  void release() {
    if (m_descriptor != -1) {
      close(m_descriptor);
    }
  }

  const int m_descriptor;
};

bool holds(const SchemaManager &schema, const Statement &statement) {
  return holds(schema, statement.definition->kind,
               std::string(statement.key()));
}

// Reads the schema files that a directory has into `schema`, which is one for
// that directory. Throws Trouble when one cannot be read.
void readFiles(const Installation &installation, SchemaManager *schema) {
  const SchemaDirectory &directory = installation.directory;
  for (const StrictFile &file : directory.files()) {
    requireRead(schema->readFile(kSchemaFiles[file.number].name) == 0,
                file.text.name());
  }
  for (const Statement &statement : directory.statements()) {
    requireRead(!statement.isHeld() || !installation.isRead(statement) ||
                    holds(*schema, statement),
                statement.file->text.name());
  }
}

}  // namespace

Carrying::Carrying(const Migration &migration)
    : m_migration(migration),
      m_old(migration.options().oldDirectory.string()),
      m_new(migration.options().newDirectory.string()) {
  readFiles(migration.oldInstallation(), &m_old);
  readFiles(migration.newInstallation(), &m_new);
  readExcludedOids();
}

void Carrying::readExcludedOids() {
  const std::set<std::string> &oids = m_migration.plan().excludedOids;
  if (oids.empty()) {
    return;
  }
  const ListInMemory list(oids);
  ::readExcludedOids(list.path(), oids, &m_old);
}

void Carrying::compare() {
  if (m_old.compSchemas(&m_new) == 0) {
    throw InternalError("the comparison of the two schemas failed");
  }
  for (const PlannedDefinition &planned : m_migration.plan().definitions) {
    const bool isToBeCarried = m_migration.plan().isMerged(planned);
    const Statement &statement = *planned.statement;
    if (statement.isHeld() && holds(m_old, statement) != isToBeCarried) {
      throw InternalError(statement.place() + ": " + statement.inWords() +
                          (isToBeCarried
                               ? " is planned to be carried, and is not"
                               : " would be carried, and is not planned to "
                                 "be"));
    }
  }
}

void Carrying::merge() {
  if (m_new.mergeSchemas(&m_old) == 0) {
    throw InternalError("the merge of the two schemas failed");
  }
}

void Carrying::withdraw() {
  if (!m_migration.options().modifiedOids) {
    return;
  }
  m_withdrawals =
      withdrawalsFrom(m_new, m_migration.newDirectory(),
                      readOidList(*m_migration.options().modifiedOids));
  findWhatIsLeft(m_migration.plan(), &m_withdrawals);
  const fs::path &list = *m_migration.options().modifiedOids;
  if (m_new.modifySchema(list.string()) != 0) {
    throw Trouble(kFileError, errorAt(list, 0, "cannot open the file"));
  }
}

void Carrying::write(const fs::path &directory, const fs::path &scratch) {
  for (const schemacheck::SchemaFile &file : kSchemaFiles) {
    if (!file.written) {
      continue;
    }
    if (m_new.writeFile(scratch.string(), file.name) != 0) {
      throw Trouble(kFileError, errorAt(scratch / file.name, 0,
                                        "cannot open the file for writing"));
    }
    copyFile(scratch / file.name, directory / file.name);
    removeAll(scratch / file.name);
  }
  for (const StrictFile &file : m_migration.newDirectory().files()) {
    if (kSchemaFiles[file.number].written) {
      continue;
    }
    copyFile(file.text.name(), directory / kSchemaFiles[file.number].name);
  }
}
