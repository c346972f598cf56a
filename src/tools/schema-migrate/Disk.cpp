#include "Disk.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <string_view>
#include <system_error>

#include "Trouble.h"

namespace fs = std::filesystem;

namespace {

// The result of a call that reads or writes, which is made again when a signal
// has come in between.
template <class Call>
ssize_t lengthOf(const Call &call) {
  ssize_t length = -1;
  do {
    length = call();
  } while (length == -1 && errno == EINTR);
  return length;
}

// An open file. close() reports what the destructor cannot.
class Descriptor {
 public:
  Descriptor(const fs::path &path, int flags)
      : m_path(path), m_number(open(path.c_str(), flags | O_CLOEXEC, 0666)) {
    if (m_number == -1) {
      failAt(path, "cannot open");
    }
  }
  ~Descriptor() {
    if (m_number != -1) {
      ::close(m_number);
    }
  }

  Descriptor(const Descriptor &) = delete;
  Descriptor &operator=(const Descriptor &) = delete;

  void write(std::string_view text) const {
    while (!text.empty()) {
      const ssize_t length = lengthOf(
          [this, text] { return ::write(m_number, text.data(), text.size()); });
      if (length == -1) {
        failAt(m_path, "cannot write");
      }
      text.remove_prefix(static_cast<std::size_t>(length));
    }
  }

  // The number of bytes read into the buffer; 0 at the end of the file.
  std::size_t read(char *buffer, std::size_t size) const {
    const ssize_t length = lengthOf(
        [this, buffer, size] { return ::read(m_number, buffer, size); });
    if (length == -1) {
      failAt(m_path, "cannot read");
    }
    return static_cast<std::size_t>(length);
  }

  mode_t mode() const {
    struct stat status {};
    if (fstat(m_number, &status) != 0) {
      failAt(m_path, "cannot look at it");
    }
    return status.st_mode & 07777U;
  }

  void setMode(mode_t mode) const {
    if (fchmod(m_number, mode) != 0) {
      failAt(m_path, "cannot set the mode");
    }
  }

  // Some file systems cannot sync a directory, and say so by EINVAL.
  void sync(bool isDirectory) const {
    if (fsync(m_number) != 0 && !(isDirectory && errno == EINVAL)) {
      failAt(m_path, "cannot write to disk");
    }
  }

  void close() {
    const int number = m_number;
    m_number = -1;
    if (::close(number) != 0) {
      failAt(m_path, "cannot write to disk");
    }
  }

 private:
  const fs::path &m_path;
  int m_number;  // -1 once closed
};

// Whether renameat2() failed because the kernel or the file system cannot do
// what the flag asks for.
bool isUnsupported() { return errno == EINVAL || errno == ENOSYS; }

struct stat statusOf(const fs::path &path) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0) {
    failAt(path, "cannot look at it");
  }
  return status;
}

}  // namespace

void failAt(const fs::path &path, const std::string &action) {
  throw Trouble(
      kFileError,
      errorAt(path, 0, action + ": " + std::generic_category().message(errno)));
}

fs::path resolve(const fs::path &path) {
  std::error_code error;
  fs::path resolved = fs::weakly_canonical(fs::absolute(path), error);
  if (error) {
    throw Trouble(kFileError, errorAt(path, 0, error.message()));
  }
  return resolved.has_filename() ? resolved : resolved.parent_path();
}

fs::file_type typeOf(const fs::path &path, Links links) {
  std::error_code error;
  const fs::file_status status = links == Links::kFollow
                                     ? fs::status(path, error)
                                     : fs::symlink_status(path, error);
  if (status.type() == fs::file_type::none) {
    throw Trouble(kFileError,
                  errorAt(path, 0, "cannot look at it: " + error.message()));
  }
  return status.type();
}

bool isThere(const fs::path &path) {
  return typeOf(path) != fs::file_type::not_found;
}

std::vector<fs::path> entriesOf(const fs::path &directory) {
  std::vector<fs::path> paths;
  std::error_code error;
  for (fs::directory_iterator entry(directory, error), end;
       !error && entry != end; entry.increment(error)) {
    paths.push_back(entry->path());
  }
  if (error) {
    throw Trouble(
        kFileError,
        errorAt(directory, 0, "cannot read the directory: " + error.message()));
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

void makeDirectory(const fs::path &path, unsigned int mode) {
  if (mkdir(path.c_str(), mode) != 0) {
    failAt(path, "cannot create the directory");
  }
}

unsigned int modeOf(const fs::path &path) {
  return statusOf(path).st_mode & 07777U;
}

void setMode(const fs::path &path, unsigned int mode) {
  if (chmod(path.c_str(), mode) != 0) {
    failAt(path, "cannot set the mode");
  }
}

std::string textOf(const fs::path &path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (error) {
    throw Trouble(kFileError, errorAt(path, 0, error.message()));
  }
  if (!fs::is_regular_file(status)) {
    throw Trouble(
        kFileError,
        errorAt(path, 0, "expected a regular file, found something else"));
  }
  const Descriptor in(path, O_RDONLY);
  std::string text;
  char buffer[1 << 16];
  while (const std::size_t length = in.read(buffer, sizeof buffer)) {
    text.append(buffer, length);
  }
  return text;
}

void writeNewFile(const fs::path &path, const std::string &text) {
  Descriptor file(path, O_WRONLY | O_CREAT | O_EXCL);
  file.write(text);
  file.sync(false);
  file.close();
}

void copyFile(const fs::path &from, const fs::path &to) {
  const Descriptor in(from, O_RDONLY);
  Descriptor out(to, O_WRONLY | O_CREAT | O_EXCL);
  char buffer[1 << 16];
  while (const std::size_t length = in.read(buffer, sizeof buffer)) {
    out.write(std::string_view(buffer, length));
  }
  out.setMode(in.mode());
  out.sync(false);
  out.close();
}

void sync(const fs::path &path) {
  const bool isDirectory = S_ISDIR(statusOf(path).st_mode);
  Descriptor file(path, O_RDONLY);
  file.sync(isDirectory);
  file.close();
}

void syncAll(const fs::path &directory) {
  for (const fs::path &path : entriesOf(directory)) {
    const mode_t mode = statusOf(path).st_mode;
    if (S_ISDIR(mode)) {
      syncAll(path);
    } else if (S_ISREG(mode)) {
      sync(path);
    }
  }
  sync(directory);
}

void syncName(const fs::path &directory) {
  try {
    sync(directory.parent_path());
  } catch (const Trouble &trouble) {
    throw Trouble(
        trouble.status(),
        std::string(trouble.what()) + "; " + directory.string() +
            " is complete, but its name may be gone if the machine stops now");
  }
}

void removeAll(const fs::path &directory) {
  std::error_code error;
  fs::remove_all(directory, error);
  if (error) {
    throw Trouble(kFileError,
                  errorAt(directory, 0, "cannot remove: " + error.message()));
  }
}

bool renameToFree(const fs::path &from, const fs::path &to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(),
                RENAME_NOREPLACE) == 0) {
    return true;
  }
  // Where that is not known, look first; rename() replaces no directory that
  // holds anything.
  if (isUnsupported()) {
    if (isThere(to)) {
      return false;
    }
    if (std::rename(from.c_str(), to.c_str()) == 0) {
      return true;
    }
  }
  if (errno != EEXIST && errno != ENOTEMPTY) {
    failAt(to, "cannot create the directory");
  }
  return false;
}

void exchange(const fs::path &one, const fs::path &other) {
  if (renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(),
                RENAME_EXCHANGE) != 0) {
    // Some overlays know the flag, and cannot do it to all directories.
    if (isUnsupported() || errno == EXDEV) {
      throw Trouble(kFileError,
                    errorAt(other, 0,
                            "cannot replace the directory: its file system "
                            "cannot exchange two directories in one step"));
    }
    failAt(other, "cannot replace the directory");
  }
}

void requireNoMountPoint(const fs::path &directory) {
  struct statx status {};
  if (statx(AT_FDCWD, directory.c_str(), AT_SYMLINK_NOFOLLOW, 0, &status) !=
      0) {
    failAt(directory, "cannot look at it");
  }
  if ((status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0) {
    throw Trouble(kFileError,
                  errorAt(directory, 0,
                          "a file system is mounted there, so that it cannot "
                          "be replaced; name a directory in it"));
  }
}

std::string inodeOf(const fs::path &path) {
  return std::to_string(statusOf(path).st_ino);
}
