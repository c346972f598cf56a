#include "Commands.h"

#include <algorithm>
#include <iostream>
#include <memory>

#include "Apply.h"
#include "Check.h"
#include "Clashes.h"
#include "Collisions.h"
#include "Compare.h"
#include "Dump.h"
#include "JsonReports.h"
#include "Migration.h"
#include "OidList.h"
#include "PlanReport.h"
#include "Refusal.h"
#include "Report.h"
#include "Restore.h"
#include "Schemas.h"
#include "Show.h"

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

ExitStatus runApply(const Options &options) {
  const ApplyOptions what{
      migrationOf(options), options.outDirectory,
      options.replace ? Existing::kReplace : Existing::kRefuse};
  const ApplyResult result = apply(what);
  warn(result.warnings);
  if (options.json) {
    printApplyJson(what, result, &std::cout);
  } else {
    printReport(what, result, &std::cout);
  }
  return kDone;
}

ExitStatus runCheck(const Options &options) {
  const CheckOptions what{options.directories, options.excludedOids,
                          options.modifiedOids, options.sizeLimit,
                          options.strict};
  const CheckResult result = check(what);
  if (options.json) {
    printCheckJson(what, result, &std::cout);
  } else {
    printCheck(result, &std::cout);
  }
  return statusOf(result.findings,
                  result.passes(what.strict) ? kDone : kFindings);
}

ExitStatus runCollisions(const Options &options) {
  const auto schemas = readSchemas(options);
  const Collisions collisions = findCollisions(schemas.get());
  std::optional<schemacheck::SchemaDirectory> old;
  std::optional<schemacheck::SchemaDirectory> release;
  std::optional<std::vector<Clash>> clashes;
  if (options.all) {
    old.emplace(options.oldDirectory);
    release.emplace(options.newDirectory);
    clashes =
        findClashes(*old, *release,
                    options.excludedOids ? readOidList(*options.excludedOids)
                                         : std::set<std::string>());
  }
  if (options.json) {
    printCollisionsJson(*schemas, collisions, clashes, &std::cout);
  } else {
    printCollisions(collisions, &std::cout);
    if (clashes) {
      printClashes(*clashes, &std::cout);
    }
  }
  return collisions.any() || (clashes && !clashes->empty()) ? kFindings : kDone;
}

ExitStatus runCompare(const Options &options) {
  const auto schemas = readSchemas(options);
  const Comparison comparison = compareSchemas(schemas.get());
  if (options.json) {
    printComparisonJson(*schemas, comparison, &std::cout);
  } else {
    printComparison(*schemas, comparison, &std::cout);
  }
  return comparison.equal() ? kDone : kDifferent;
}

ExitStatus runPlan(const Options &options) {
  const Migration migration(migrationOf(options));
  warn(migration.warnings());
  if (options.json) {
    printPlanJson(migration, &std::cout);
  } else {
    printPlan(migration, &std::cout);
  }
  if (!migration.stoppers().empty()) {
    return kFindings;
  }
  return migration.plan().changesAnything() ? kDifferent : kDone;
}

ExitStatus runRestore(const Options &options) {
  if (options.list) {
    printBackups(options.outDirectory, &std::cout);
    return kDone;
  }
  restore(options.outDirectory, options.backup, &std::cout);
  return kDone;
}

ExitStatus runShow(const Options &options) {
  const Shown shown(options.directory, options.keys);
  if (options.json) {
    printShownJson(shown, &std::cout);
    std::for_each(shown.keys().begin(), shown.keys().end(), printError);
  } else {
    printShown(shown);
  }
  return shown.isComplete() ? kDone : kFindings;
}

ExitStatus runDump(const Options &options) {
  dump(options.directory, options.excludedOids, options.table);
  return kDone;
}
