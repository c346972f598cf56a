// What a migration starts from, and what it plans.
#ifndef SCHEMA_MIGRATE_MIGRATION_H_
#define SCHEMA_MIGRATE_MIGRATION_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "DirectoryCheck.h"
#include "Plan.h"
#include "SchemaDirectory.h"

struct MigrationOptions {
  std::filesystem::path oldDirectory;  // the old installation's schema
  std::filesystem::path newDirectory;  // the new release's
  std::optional<std::filesystem::path> baseDirectory = {};  // the old release's
  std::optional<std::filesystem::path> excludedOids = {};
  std::optional<std::filesystem::path> modifiedOids = {};
  std::optional<std::filesystem::path> decisions = {};
  schemaplan::Preference preference = schemaplan::Preference::kOld;
  bool leaveOut = false;
  std::set<schemacheck::Code> accepted = {};
  // Of a file, in bytes.
  std::uintmax_t sizeLimit = schemacheck::SchemaDirectory::kDefaultLimit;
};

// Whether a migration can go on where this was found.
bool canBeAccepted(schemacheck::Code code);

// The directories as they are read strictly and as the library reads them, the
// lists, and the plan. Nothing is written.
class Migration {
 public:
  // Throws Trouble when something cannot be read.
  explicit Migration(const MigrationOptions &options);

  Migration(const Migration &) = delete;
  Migration &operator=(const Migration &) = delete;

  const MigrationOptions &options() const { return m_options; }
  const schemacheck::SchemaDirectory &oldDirectory() const {
    return m_old->directory;
  }
  const schemacheck::SchemaDirectory &newDirectory() const {
    return m_new->directory;
  }
  const schemaplan::Installation &oldInstallation() const {
    return m_old->installation;
  }
  const schemaplan::Installation &newInstallation() const {
    return m_new->installation;
  }
  const schemaplan::Plan &plan() const { return m_plan; }

  // The errors in the files and the lists, so far as they are not accepted.
  const std::vector<schemacheck::Finding> &errors() const { return m_errors; }

  // These, and what the plan stops at: the migration is not to be carried out
  // while there are any.
  std::vector<schemacheck::Finding> stoppers() const;

  // What else the user should know, in lines.
  const std::vector<std::string> &warnings() const { return m_warnings; }

 private:
  // A directory, and what the library makes of it.
  struct Source {
    Source(const std::filesystem::path &path, std::uintmax_t sizeLimit);

    const schemacheck::SchemaDirectory directory;
    const schemacheck::LibraryView view;
    const schemaplan::Installation installation{directory, view};
  };

  void readSources();
  schemaplan::Rules readRules();
  std::set<std::string> readList(const std::filesystem::path &path);
  void readDecisions(schemaplan::Rules *rules);
  void requireUnlisted(const std::set<std::string> &oids, const char *list,
                       const std::string &oid, int line) const;
  void takeErrors(const std::vector<schemacheck::Finding> &findings);
  void takeWarnings(const std::vector<schemacheck::Finding> &findings);

  const MigrationOptions m_options;
  std::unique_ptr<const Source> m_old;
  std::unique_ptr<const Source> m_new;
  std::unique_ptr<const Source> m_base;  // may be null
  schemaplan::Plan m_plan;
  std::vector<schemacheck::Finding> m_errors;
  std::vector<std::string> m_warnings;
};

#endif  // SCHEMA_MIGRATE_MIGRATION_H_
