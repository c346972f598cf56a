#include "Apply.h"

#include "Carrying.h"
#include "Finding.h"
#include "OutputDirectory.h"
#include "PlanReport.h"
#include "ResultCheck.h"
#include "Trouble.h"

namespace fs = std::filesystem;

using schemacheck::SchemaDirectory;
using schemacheck::Statement;
using schemacheck::StrictFile;
using schemaplan::PlannedDefinition;

namespace {

std::size_t &numberIn(Counts *counts, const Statement &statement) {
  return (*counts)[statement.file->number]
                  [static_cast<std::size_t>(statement.definition->kind)];
}

Counts countDefinitions(const SchemaDirectory &directory) {
  Counts counts{};
  for (const Statement &statement : directory.statements()) {
    ++numberIn(&counts, statement);
  }
  return counts;
}

Presence presenceIn(const SchemaDirectory &directory) {
  Presence presence{};
  for (const StrictFile &file : directory.files()) {
    presence[file.number] = true;
  }
  return presence;
}

// What is to be said of a definition that the library does not hold under its
// name, or for storage definitions under its OID; nothing if it does.
// `consequence`: of one that its OID leads to all the same.
std::vector<std::string> ignored(const SchemaDirectory &directory,
                                 const Statement &statement,
                                 const char *consequence) {
  const std::string start =
      statement.place() + ": warning: " + statement.inWords();
  if (!statement.isEntered()) {
    return {start + " is ignored: it has no OID"};
  }
  const Kind kind = statement.definition->kind;
  const schemacheck::DefinitionIndex &index = directory.index();
  const Statement *holder = index.holder(kind, statement.key());
  if (holder == &statement) {
    return {};
  }
  if (kind == Kind::kStorage) {
    return {start + " is ignored: " + holder->place() +
            " defines the same OID"};
  }
  const std::string reason = holder->place() + " defines the same first name";
  return {index.withOid(kind, statement.oid()) == &statement
              ? start + " is found by its OID only: " + reason + consequence
              : start + " is ignored: " + reason};
}

std::vector<std::string> ignoredIn(const Migration &migration) {
  std::vector<std::string> warnings;
  const auto take = [&warnings](const std::vector<std::string> &lines) {
    warnings.insert(warnings.end(), lines.begin(), lines.end());
  };
  for (const PlannedDefinition &planned : migration.plan().definitions) {
    if (planned.verdict != schemaplan::Verdict::kExcluded) {
      take(ignored(migration.oldDirectory(), *planned.statement,
                   "; it is not carried"));
    }
  }
  for (const Statement &statement : migration.newDirectory().statements()) {
    take(ignored(migration.newDirectory(), statement, ""));
  }
  return warnings;
}

// Throws Trouble if something stops the migration.
void requireNoStoppers(const Migration &migration) {
  const std::vector<schemacheck::Finding> stoppers = migration.stoppers();
  if (stoppers.empty()) {
    return;
  }
  std::string text;
  for (const schemacheck::Finding &finding : stoppers) {
    text += toText(finding);
  }
  throw Trouble(text +
                "nothing was written; mend the files, list the OIDs of what is "
                "not to be carried as excluded, or name the codes that are "
                "acceptable with --accept");
}

ApplyResult describeInput(const Migration &migration) {
  ApplyResult result;
  result.oldRead = countDefinitions(migration.oldDirectory());
  result.newRead = countDefinitions(migration.newDirectory());
  result.inOld = presenceIn(migration.oldDirectory());
  result.inNew = presenceIn(migration.newDirectory());
  for (const PlannedDefinition &planned : migration.plan().definitions) {
    ++numberIn(&result.verdicts[static_cast<std::size_t>(planned.verdict)],
               *planned.statement);
  }
  result.warnings = migration.warnings();
  for (std::string &warning : ignoredIn(migration)) {
    result.warnings.push_back(std::move(warning));
  }
  for (const schemacheck::Finding &breakage : migration.plan().breakages) {
    std::string text = toText(breakage);
    text.pop_back();
    result.warnings.push_back(std::move(text));
  }
  return result;
}

// Reads the result back. It is gone when it is not what it should be, so the
// message names the files as they would have been called.
void checkResult(const Migration &migration, const fs::path &working,
                 const fs::path &out, ApplyResult *result) {
  const SchemaDirectory written(working);
  const Losses losses = findLosses(written, migration);
  std::string text;
  for (std::string error : losses.errors) {
    if (error.rfind(working.string(), 0) == 0) {
      error.replace(0, working.string().size(), out.string());
    }
    text += error + '\n';
  }
  if (!text.empty()) {
    throw Trouble(text +
                  "nothing was written; the files do not read back as they "
                  "should; is there room on the disk?");
  }
  result->written = countDefinitions(written);
  findWhatStays(written, &result->withdrawals);
  result->warnings.insert(result->warnings.end(), losses.warnings.begin(),
                          losses.warnings.end());
}

}  // namespace

ApplyResult apply(const ApplyOptions &options) {
  const MigrationOptions &inputs = options.migration;
  for (const fs::path &input :
       {inputs.oldDirectory, inputs.newDirectory,
        inputs.baseDirectory.value_or(inputs.newDirectory)}) {
    requireOutside(input, options.outDirectory, "a directory");
  }
  const Migration migration(inputs);
  requireComplete(migration.plan(), migration.oldDirectory());
  requireNoStoppers(migration);
  ApplyResult result = describeInput(migration);

  Carrying carrying(migration);
  carrying.compare();
  carrying.merge();
  carrying.withdraw();
  result.withdrawals = carrying.withdrawals();

  OutputDirectory out(options.outDirectory);
  carrying.write(out.working());
  checkResult(migration, out.working(), options.outDirectory, &result);
  out.commit();
  return result;
}
