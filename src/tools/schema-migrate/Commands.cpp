#include "Commands.h"

#include <iostream>
#include <memory>

#include "Apply.h"
#include "Check.h"
#include "Clashes.h"
#include "Collisions.h"
#include "Compare.h"
#include "Dump.h"
#include "Migration.h"
#include "OidList.h"
#include "PlanReport.h"
#include "Report.h"
#include "Restore.h"
#include "Schemas.h"
#include "Show.h"
#include "Trouble.h"

namespace {

// Reads both directories and the excluded OIDs, and warns of files that are not
// there and of what is ignored.
std::unique_ptr<Schemas> readSchemas(const Options &options) {
  auto schemas =
      std::make_unique<Schemas>(options.oldDirectory, options.newDirectory);
  if (options.excludedOids) {
    schemas->readExcludedOids(*options.excludedOids);
  }
  for (const Inventory *files : {&schemas->oldFiles(), &schemas->newFiles()}) {
    warn(files->missingFiles());
    warn(files->ignoredEntries());
  }
  return schemas;
}

// How the migration is to be planned and carried out.
MigrationOptions migrationOf(const Options &options) {
  return {options.oldDirectory, options.newDirectory, options.baseDirectory,
          options.excludedOids, options.modifiedOids, options.decisions,
          options.preference,   options.leaveOut,     options.accepted,
          options.sizeLimit};
}

}  // namespace

int runApply(const Options &options) {
  const ApplyOptions what{
      migrationOf(options), options.outDirectory,
      options.replace ? Existing::kReplace : Existing::kRefuse};
  const ApplyResult result = apply(what);
  warn(result.warnings);
  printReport(what, result, &std::cout);
  return kDone;
}

int runCheck(const Options &options) {
  const CheckOptions what{options.directories, options.excludedOids,
                          options.modifiedOids, options.sizeLimit,
                          options.strict};
  return printCheck(what, &std::cout) ? kDone : kFound;
}

int runCollisions(const Options &options) {
  const auto schemas = readSchemas(options);
  bool any = printCollisions(schemas.get(), &std::cout);
  if (options.all) {
    const schemacheck::SchemaDirectory old(options.oldDirectory);
    const schemacheck::SchemaDirectory release(options.newDirectory);
    const std::set<std::string> excluded =
        options.excludedOids ? readOidList(*options.excludedOids)
                             : std::set<std::string>();
    any = printClashes(old, release, excluded, &std::cout) || any;
  }
  return any ? kFound : kDone;
}

int runCompare(const Options &options) {
  const auto schemas = readSchemas(options);
  return printComparison(schemas.get(), &std::cout) ? kDone : kFound;
}

int runPlan(const Options &options) {
  const Migration migration(migrationOf(options));
  warn(migration.warnings());
  printPlan(migration, &std::cout);
  if (!migration.stoppers().empty()) {
    return kTrouble;
  }
  return migration.plan().changesAnything() ? kFound : kDone;
}

int runRestore(const Options &options) {
  if (options.list) {
    return printBackups(options.outDirectory, &std::cout) ? kDone : kFound;
  }
  restore(options.outDirectory, options.backup, &std::cout);
  return kDone;
}

int runShow(const Options &options) {
  return show(options.directory, options.keys) ? kDone : kFound;
}

int runDump(const Options &options) {
  dump(options.directory, options.excludedOids, options.table);
  return kDone;
}
