#include "OutputDirectory.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string>

#include "Disk.h"
#include "LeftOvers.h"
#include "Trouble.h"

namespace fs = std::filesystem;

namespace {

// The path as resolve() gives it; empty when it cannot be resolved.
fs::path resolveOrNothing(const fs::path &path) {
  try {
    return resolve(path);
  } catch (const Trouble &) {
    return {};
  }
}

// Whether `inner` is `outer` or lies in it, be it by another name: a directory
// may be mounted at several places.
bool isIn(const fs::path &outer, const fs::path &inner) {
  if (outer.empty()) {
    return false;
  }
  const auto ends =
      std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end());
  if (ends.first == outer.end()) {
    return true;
  }
  std::error_code ignored;
  for (fs::path path = inner; path.has_relative_path();
       path = path.parent_path()) {
    if (fs::equivalent(outer, path, ignored)) {
      return true;
    }
  }
  return false;
}

}  // namespace

void requireOutside(const fs::path &directory, const fs::path &path,
                    const std::string &what) {
  const fs::path outer = resolveOrNothing(directory);
  const fs::path inner = resolveOrNothing(path);
  if (isIn(outer, inner)) {
    throw Trouble(
        kUsage, errorAt(path, 0,
                        "expected " + what + " outside " + directory.string() +
                            ", found one inside"));
  }
}

OutputDirectory::OutputDirectory(const fs::path &target, Existing existing)
    : m_target(resolve(target)), m_existing(existing) {
  // What a killed run has left goes even when the target is refused.
  if (!m_target.has_filename() || !hasLeftOvers(m_target)) {
    requireSuitable();
  }
  m_lock.emplace(m_target);
  m_notes = settle(m_target);
  requireSuitable();
  if (isThere(m_target)) {
    m_former.emplace(m_target);
  }
  const fs::path working = workingPath(m_target, kNewSuffix);
  // What is carried over may be private, and gets its modes later.
  makeDirectory(working, 0700);
  try {
    makeDirectory(working / kScratchName);
    m_mode = modeOf(working / kScratchName);
  } catch (const Trouble &) {
    settleQuietly(m_target);
    throw;
  }
  m_working = working;
}

void OutputDirectory::requireSuitable() const {
  if (!isThere(m_target)) {
    return;
  }
  const bool isDirectory =
      typeOf(m_target, Links::kFollow) == fs::file_type::directory;
  if (m_existing == Existing::kReplace && m_target.has_filename()) {
    if (!isDirectory) {
      throw Trouble(kFileError,
                    errorAt(m_target, 0,
                            "expected nothing or a directory there, found "
                            "something else"));
    }
    return;
  }
  if (!isDirectory || !entriesOf(m_target).empty()) {
    throw Trouble(kFileError, errorAt(m_target, 0,
                                      "expected nothing or an empty directory "
                                      "there, found something; the "
                                      "result goes to a new directory"));
  }
}

OutputDirectory::~OutputDirectory() {
  if (!m_working.empty()) {
    std::error_code ignored;
    fs::remove_all(m_working, ignored);
    settleQuietly(m_target);
  }
}

void OutputDirectory::commit() {
  removeAll(scratch());
  if (m_former) {
    m_former->handOnAttributes(m_working);
  } else {
    setMode(m_working, m_mode);
  }
  syncAll(m_working);
  if (m_former) {
    m_former->requireUnchanged();
  }
  if (former() != nullptr) {
    try {
      m_backup = replace(m_target);
    } catch (const Replaced &) {
      m_working.clear();
      throw;
    }
    m_working.clear();
    return;
  }
  if (m_former) {
    // It gives way if it is still empty; anything else makes it fail.
    if (std::rename(m_working.c_str(), m_target.c_str()) != 0) {
      failAt(m_target, "cannot create the directory");
    }
  } else if (!renameToFree(m_working, m_target)) {
    errno = EEXIST;
    failAt(m_target, "cannot create the directory");
  }
  m_working.clear();
  syncName(m_target);
}
