#include "OutputDirectory.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

#include "Trouble.h"

namespace fs = std::filesystem;

namespace {

[[noreturn]] void failAt(const fs::path &path, const std::string &action) {
  throw Trouble(
      errorAt(path, 0, action + ": " + std::generic_category().message(errno)));
}

// Waits until a file or a directory is on disk.
void sync(const fs::path &path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor == -1) {
    failAt(path, "cannot open");
  }
  if (fsync(descriptor) != 0) {
    const int error = errno;
    close(descriptor);
    errno = error;
    failAt(path, "cannot write to disk");
  }
  close(descriptor);
}

// The path with symbolic links resolved and without a slash at its end; empty
// when it cannot be resolved.
fs::path resolve(const fs::path &path, std::error_code *error) {
  const fs::path resolved = fs::weakly_canonical(fs::absolute(path), *error);
  return resolved.has_filename() ? resolved : resolved.parent_path();
}

fs::path resolve(const fs::path &path) {
  std::error_code error;
  fs::path resolved = resolve(path, &error);
  if (error) {
    throw Trouble(errorAt(path, 0, error.message()));
  }
  return resolved;
}

void requireFree(const fs::path &target) {
  std::error_code error;
  if (!fs::exists(fs::symlink_status(target, error))) {
    return;
  }
  if (!fs::is_directory(target, error) || !fs::is_empty(target, error) ||
      error) {
    throw Trouble(errorAt(
        target, 0,
        "expected nothing or an empty directory there, found something; the "
        "result goes to a new directory"));
  }
}

}  // namespace

void requireOutside(const fs::path &directory, const fs::path &path,
                    const std::string &what) {
  std::error_code ignored;
  const fs::path outer = resolve(directory, &ignored);
  const fs::path inner = resolve(path, &ignored);
  const auto ends =
      std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end());
  if (!outer.empty() && ends.first == outer.end()) {
    throw Trouble(errorAt(path, 0,
                          "expected " + what + " outside " +
                              directory.string() + ", found one inside"));
  }
}

OutputDirectory::OutputDirectory(const fs::path &target)
    : m_target(resolve(target)) {
  requireFree(m_target);
  const std::string stem = "." + m_target.filename().string() + ".partial-" +
                           std::to_string(getpid()) + "-";
  for (int number = 0; m_working.empty(); ++number) {
    const fs::path working =
        m_target.parent_path() / (stem + std::to_string(number));
    if (mkdir(working.c_str(), 0777) == 0) {
      m_working = working;
    } else if (errno != EEXIST) {
      failAt(working, "cannot create the directory");
    }
  }
}

OutputDirectory::~OutputDirectory() {
  if (!m_working.empty()) {
    std::error_code ignored;
    fs::remove_all(m_working, ignored);
  }
}

void OutputDirectory::commit() {
  std::error_code error;
  for (const fs::directory_entry &file :
       fs::directory_iterator(m_working, error)) {
    sync(file.path());
  }
  if (error) {
    throw Trouble(
        errorAt(m_working, 0, "cannot read the directory: " + error.message()));
  }
  sync(m_working);
  // An empty directory of that name gives way; anything else makes it fail.
  if (std::rename(m_working.c_str(), m_target.c_str()) != 0) {
    failAt(m_target, "cannot create the directory");
  }
  m_working.clear();
}
