#include "Apply.h"

#include <sstream>
#include <utility>

#include "Carrying.h"
#include "Disk.h"
#include "Finding.h"
#include "FormerDirectory.h"
#include "Manifest.h"
#include "OutputDirectory.h"
#include "PlanReport.h"
#include "Refusal.h"
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

// Throws Refusal if something stops the migration.
void requireNoStoppers(const Migration &migration) {
  std::vector<schemacheck::Finding> stoppers = migration.stoppers();
  if (!stoppers.empty()) {
    throw Refusal(
        kFindings, std::move(stoppers),
        "nothing was written; mend the files, or leave out what is not "
        "to be carried: with --excluded-oids, --decisions, --leave-out, "
        "or --accept for errors that are acceptable\n");
  }
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
  result.changesAnything = migration.plan().changesAnything();
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

// What names files of the working directory, which is gone when it is read,
// names them as they would have been called.
std::string asInOutput(std::string text, const fs::path &working,
                       const fs::path &out) {
  for (std::size_t at = text.find(working.string()); at != std::string::npos;
       at = text.find(working.string(), at + out.string().size())) {
    text.replace(at, working.string().size(), out.string());
  }
  return text;
}

// Where the directory lies, relative if its path is; it may be a link to
// elsewhere.
fs::path parentAsGiven(const fs::path &directory) {
  const fs::path parent =
      (directory.has_filename() ? directory : directory.parent_path())
          .parent_path();
  const fs::path real = resolve(directory).parent_path();
  std::error_code ignored;
  return fs::equivalent(parent.empty() ? "." : parent, real, ignored) ? parent
                                                                      : real;
}

// Says what the directory is made from.
Manifest manifestOf(const MigrationOptions &inputs) {
  Manifest manifest;
  manifest.addDirectory("old installation", inputs.oldDirectory);
  manifest.addDirectory("new release", inputs.newDirectory);
  if (inputs.baseDirectory) {
    manifest.addDirectory("old release", *inputs.baseDirectory);
  }
  const auto add = [&manifest](const char *what,
                               const std::optional<fs::path> &file) {
    if (file) {
      manifest.addFile(what, *file);
    }
  };
  add("excluded OIDs", inputs.excludedOids);
  add("modified OIDs", inputs.modifiedOids);
  add("decisions", inputs.decisions);
  return manifest;
}

// Throws Trouble with the first of these errors, and how many more there are.
// The line that an error shows is of a file that is about to go.
void requireNoLosses(const std::vector<std::string> &errors) {
  if (errors.empty()) {
    return;
  }
  const std::string &first = errors.front();
  std::string text = first.substr(0, first.find('\n'));
  if (errors.size() > 1) {
    text += " (and " + std::to_string(errors.size() - 1) + " more)";
  }
  throw Trouble(kFileError,
                text +
                    "; nothing was written, since the files do not read back "
                    "as they should; is there room on the disk?");
}

std::string textOfPlan(const Migration &migration) {
  std::ostringstream text;
  printPlan(migration, &text);
  return text.str();
}

// Makes the files in the working directory, sees that they hold what they
// should, and says so in `result`.
void makeResult(const Migration &migration, const Manifest &manifest,
                const OutputDirectory &out, Carrying *carrying,
                ApplyResult *result) {
  const fs::path &working = out.working();
  carrying->write(working, out.scratch());
  const SchemaDirectory written(working);
  const Losses losses = findLosses(written, migration);
  requireNoLosses(losses.errors);
  result->written = countDefinitions(written);
  findWhatStays(written, &result->withdrawals);
  result->warnings.insert(result->warnings.end(), losses.warnings.begin(),
                          losses.warnings.end());
  if (const FormerDirectory *former = out.former()) {
    former->copyOthers(working);
    result->kept = former->others();
  }
  manifest.requireUnchanged();
  writeNewFile(working / kManifestName,
               manifest.text(textOfPlan(migration), working));
}

}  // namespace

ApplyResult apply(const ApplyOptions &options) {
  const MigrationOptions &inputs = options.migration;
  for (const fs::path &input :
       {inputs.oldDirectory, inputs.newDirectory,
        inputs.baseDirectory.value_or(inputs.newDirectory)}) {
    requireOutside(input, options.outDirectory, "a directory");
    if (options.existing == Existing::kReplace) {
      requireOutside(options.outDirectory, input, "a directory");
    }
  }
  const Manifest manifest = manifestOf(inputs);
  const Migration migration(inputs);
  requireComplete(migration.plan(), migration.oldDirectory());
  requireNoStoppers(migration);
  ApplyResult result = describeInput(migration);

  Carrying carrying(migration);
  try {
    carrying.compare();
    carrying.merge();
  } catch (const InternalError &) {
    manifest.requireUnchanged();  // or else it is no fault of the command
    throw;
  }
  carrying.withdraw();
  result.withdrawals = carrying.withdrawals();

  const fs::path parent = parentAsGiven(options.outDirectory);
  OutputDirectory out(options.outDirectory, options.existing);
  const fs::path working = out.working();
  warn(out.notes());
  try {
    makeResult(migration, manifest, out, &carrying, &result);
    out.commit();
  } catch (const Trouble &trouble) {
    throw Trouble(trouble.status(),
                  asInOutput(trouble.what(), working, options.outDirectory));
  }
  if (!out.backup().empty()) {
    result.backup = (parent / out.backup()).string();
  }
  return result;
}
