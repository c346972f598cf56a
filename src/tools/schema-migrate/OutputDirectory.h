// A directory that appears whole or not at all, and what it must not hold.
#ifndef SCHEMA_MIGRATE_OUTPUTDIRECTORY_H_
#define SCHEMA_MIGRATE_OUTPUTDIRECTORY_H_

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "FormerDirectory.h"
#include "LeftOvers.h"
#include "TargetLock.h"

// What may be where the directory is to be.
enum class Existing {
  kRefuse,   // nothing, or an empty directory
  kReplace,  // a schema directory as well, which becomes a backup
};

// Files are made in a working directory beside the target, and the working
// directory gets the target's name when all of them are on disk. Unless
// commit() has done so, the destructor removes what was made; what the process
// leaves when it is killed, the next one for the same target removes
// (LeftOvers.h). Of two at a time for one target the second is refused.
class OutputDirectory {
 public:
  // Makes the working directory; its parent must exist. Throws Trouble when
  // that fails or the target is not free.
  explicit OutputDirectory(const std::filesystem::path &target,
                           Existing existing = Existing::kRefuse);
  ~OutputDirectory();

  OutputDirectory(const OutputDirectory &) = delete;
  OutputDirectory &operator=(const OutputDirectory &) = delete;

  // Where to put the files.
  const std::filesystem::path &working() const { return m_working; }

  // A directory in that for what is not to stay; commit() removes it.
  std::filesystem::path scratch() const { return m_working / kScratchName; }

  // What a run that was killed had left, a line each: "FILE: note: MESSAGE".
  const std::vector<std::string> &notes() const { return m_notes; }

  // The directory that is to be replaced, or null.
  const FormerDirectory *former() const {
    return m_former && !m_former->isEmpty() ? &*m_former : nullptr;
  }

  // Brings the files to disk and gives the directory its name, with the mode
  // and owner of what had the name before. Throws Trouble when that fails, and
  // then the target is as before; if not, the message says so.
  void commit();

  // The name of the backup that commit() has made; empty if it made none.
  const std::string &backup() const { return m_backup; }

 private:
  void requireSuitable() const;

  std::filesystem::path m_target;  // as resolve() gives it
  Existing m_existing;
  std::optional<TargetLock> m_lock;
  std::vector<std::string> m_notes;
  std::optional<FormerDirectory> m_former;  // what has the name
  std::filesystem::path m_working;          // empty once committed
  unsigned int m_mode = 0;  // of the directory, if there was none
  std::string m_backup;
};

// Throws Trouble when `path` is the directory or lies in it, whatever links
// lead there; `what` is to lie outside, "a directory" or "a file". What cannot
// be resolved lies outside.
void requireOutside(const std::filesystem::path &directory,
                    const std::filesystem::path &path, const std::string &what);

#endif  // SCHEMA_MIGRATE_OUTPUTDIRECTORY_H_
