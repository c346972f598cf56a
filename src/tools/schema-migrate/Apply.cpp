#include "Apply.h"

#include "Conflicts.h"
#include "Disk.h"
#include "FormerDirectory.h"
#include "Inventory.h"
#include "Manifest.h"
#include "OidList.h"
#include "OutputDirectory.h"
#include "ResultCheck.h"
#include "SchemaManager.h"
#include "Trouble.h"

namespace fs = std::filesystem;

namespace {

Counts countEntries(const Inventory &inventory) {
  Counts counts{};
  for (const Entry &entry : inventory.entries()) {
    ++counts[entry.file][static_cast<std::size_t>(entry.kind)];
  }
  return counts;
}

// Writes the files that the library can write, and copies the others from the
// release.
void writeFiles(const fs::path &directory, Schemas *schemas) {
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    const char *name = kSchemaFiles[file].name;
    const fs::path path = directory / name;
    if (kSchemaFiles[file].written) {
      if (schemas->newSchema()->writeFile(directory.string(), name) != 0) {
        throw Trouble(errorAt(path, 0, "cannot open the file for writing"));
      }
    } else if (schemas->newFiles().hasFile(file)) {
      copyFile(schemas->newFiles().directory() / name, path);
    }
  }
}

// The inventory of the written files.
Inventory readBack(const fs::path &working) {
  try {
    return Inventory(working);
  } catch (const Trouble &trouble) {
    throw Trouble(std::string(trouble.what()) +
                  "\nnothing was written; the result would not read back");
  }
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

// Says what the directory is made from.
Manifest manifestOf(const ApplyOptions &options) {
  Manifest manifest;
  manifest.addDirectory("old installation", options.oldDirectory);
  manifest.addDirectory("new release", options.newDirectory);
  if (options.excludedOids) {
    manifest.addFile("excluded OIDs", *options.excludedOids);
  }
  if (options.modifiedOids) {
    manifest.addFile("modified OIDs", *options.modifiedOids);
  }
  return manifest;
}

// What withdraw() has done, and which file holds a definition all the same.
std::vector<Withdrawal> withdrawalsIn(const Inventory &written,
                                      const Schemas &schemas) {
  std::vector<Withdrawal> withdrawals = schemas.withdrawals();
  for (Withdrawal &one : withdrawals) {
    for (const Kind kind : {Kind::kAttributeType, Kind::kObjectClass}) {
      const Entry *entry = written.firstWithOid(kind, one.oid);
      if (!one.definition.empty() && entry != nullptr) {
        one.staysIn = kSchemaFiles[entry->file].name;
      }
    }
  }
  return withdrawals;
}

// The definitions that no name leads to. The merge goes by names, so that of
// the old installation it carries none of these.
std::vector<std::string> warningsOf(const Schemas &schemas) {
  std::vector<std::string> warnings;
  const Inventory &oldFiles = schemas.oldFiles();
  for (const Entry &entry : oldFiles.entries()) {
    if (!entry.held()) {
      warnings.push_back(
          oldFiles.warningOf(entry) +
          (oldFiles.isFoundByOidOnly(entry) ? "; it is not carried" : ""));
    }
  }
  const std::vector<std::string> ofRelease =
      schemas.newFiles().ignoredEntries();
  warnings.insert(warnings.end(), ofRelease.begin(), ofRelease.end());
  return warnings;
}

// Throws Trouble with these lines and an advice, if there are any.
void requireNone(const std::vector<std::string> &errors, const char *advice) {
  if (errors.empty()) {
    return;
  }
  std::string text;
  for (const std::string &error : errors) {
    text += error + '\n';
  }
  throw Trouble(text + "nothing was written; " + advice);
}

// The first lines, and how many more there are.
std::vector<std::string> firstOf(std::vector<std::string> lines) {
  constexpr std::size_t kShown = 10;
  if (lines.size() > kShown) {
    const std::string more = std::to_string(lines.size() - kShown);
    lines.resize(kShown);
    lines.push_back("and " + more + " more");
  }
  return lines;
}

// Makes the files in the working directory, sees that they hold what they
// should, and says so in `result`.
void makeResult(const ApplyOptions &options, const Manifest &manifest,
                const OutputDirectory &out, Schemas *schemas,
                ApplyResult *result) {
  const fs::path &working = out.working();
  writeFiles(working, schemas);
  const Inventory written = readBack(working);
  const Losses losses = findLosses(written, schemas);
  requireNone(firstOf(losses.errors),
              "the files do not read back as they should; is there room on the "
              "disk?");
  result->written = countEntries(written);
  result->withdrawals = withdrawalsIn(written, *schemas);
  result->warnings.insert(result->warnings.end(), losses.warnings.begin(),
                          losses.warnings.end());
  if (const FormerDirectory *former = out.former()) {
    former->copyOthers(working);
    result->kept = former->others();
  }
  manifest.requireUnchanged();
  writeNewFile(working / kManifestName, manifest.text(options.plan, working));
}

}  // namespace

ApplyResult apply(const ApplyOptions &options) {
  for (const fs::path &input : {options.oldDirectory, options.newDirectory}) {
    requireOutside(input, options.outDirectory, "a directory");
    if (options.existing == Existing::kReplace) {
      requireOutside(options.outDirectory, input, "a directory");
    }
  }
  const Manifest manifest = manifestOf(options);

  Schemas schemas(options.oldDirectory, options.newDirectory);
  if (options.excludedOids) {
    schemas.readExcludedOids(*options.excludedOids);
  }
  if (options.modifiedOids) {
    readOidList(*options.modifiedOids);  // a bad list is reported first
  }
  schemas.compare();
  requireNone(findConflicts(&schemas),
              "to leave a definition of the old installation out, list its OID "
              "in the file of excluded OIDs");
  schemas.merge();
  if (options.modifiedOids) {
    schemas.withdraw(*options.modifiedOids);
  }
  requireNone(findUnwritable(schemas), "mend the files of the new release");

  ApplyResult result;
  result.oldRead = countEntries(schemas.oldFiles());
  result.newRead = countEntries(schemas.newFiles());
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    result.inOld[file] = schemas.oldFiles().hasFile(file);
    result.inNew[file] = schemas.newFiles().hasFile(file);
  }
  for (std::size_t i = 0; i < schemas.fates().size(); ++i) {
    const Entry &entry = schemas.oldFiles().entries()[i];
    Counts &counts = result.fates[static_cast<std::size_t>(schemas.fates()[i])];
    ++counts[entry.file][static_cast<std::size_t>(entry.kind)];
  }
  result.warnings = warningsOf(schemas);

  OutputDirectory out(options.outDirectory, options.existing);
  const fs::path working = out.working();
  warn(out.notes());
  try {
    makeResult(options, manifest, out, &schemas, &result);
    out.commit();
  } catch (const Trouble &trouble) {
    throw Trouble(asInOutput(trouble.what(), working, options.outDirectory));
  }
  result.backup = out.backup();
  return result;
}
