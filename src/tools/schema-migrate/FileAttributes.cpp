#include "FileAttributes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "Disk.h"
#include "Trouble.h"

namespace fs = std::filesystem;

namespace {

struct stat statusOf(const fs::path &path, bool followed) {
  struct stat status {};
  if ((followed ? stat(path.c_str(), &status) : lstat(path.c_str(), &status)) !=
      0) {
    failAt(path, "cannot look at it");
  }
  return status;
}

// The names of the extended attributes; none where there cannot be any.
std::vector<std::string> attributeNames(const fs::path &path) {
  const ssize_t size = listxattr(path.c_str(), nullptr, 0);
  if (size == -1 && errno == ENOTSUP) {
    return {};
  }
  std::string list(static_cast<std::size_t>(size == -1 ? 0 : size), '\0');
  const ssize_t length =
      size == -1 ? -1 : listxattr(path.c_str(), list.data(), list.size());
  if (length == -1) {
    failAt(path, "cannot read the extended attributes");
  }
  std::vector<std::string> names;
  for (std::size_t at = 0; at < static_cast<std::size_t>(length);
       at += names.back().size() + 1) {
    names.emplace_back(&list[at]);
  }
  return names;
}

// The value of an extended attribute; nothing if it cannot be read.
std::optional<std::string> attributeOf(const fs::path &path,
                                       const std::string &name) {
  const ssize_t size = getxattr(path.c_str(), name.c_str(), nullptr, 0);
  if (size == -1) {
    return {};
  }
  std::string value(static_cast<std::size_t>(size), '\0');
  const ssize_t length =
      getxattr(path.c_str(), name.c_str(), value.data(), value.size());
  if (length == -1) {
    return {};
  }
  value.resize(static_cast<std::size_t>(length));
  return value;
}

void copyExtendedAttributes(const fs::path &from, const fs::path &to) {
  for (const std::string &name : attributeNames(from)) {
    const std::optional<std::string> value = attributeOf(from, name);
    if (!value) {
      failAt(from, "cannot read the extended attribute " + name);
    }
    if (attributeOf(to, name) != value &&
        setxattr(to.c_str(), name.c_str(), value->data(), value->size(), 0) !=
            0) {
      failAt(to, "cannot keep the extended attribute " + name);
    }
  }
}

// An access list that the new one has from the directory in which it was made.
void removeOtherAccessLists(const fs::path &from, const fs::path &to) {
  for (const char *name :
       {"system.posix_acl_access", "system.posix_acl_default"}) {
    if (attributeOf(to, name) && !attributeOf(from, name) &&
        removexattr(to.c_str(), name) != 0) {
      failAt(to, "cannot remove the access list");
    }
  }
}

void setOwner(const fs::path &path, const struct stat &from) {
  const struct stat now = statusOf(path, false);
  if ((now.st_uid != from.st_uid || now.st_gid != from.st_gid) &&
      lchown(path.c_str(), from.st_uid, from.st_gid) != 0) {
    failAt(path, "cannot keep the owner and group");
  }
}

void setTime(const fs::path &path, const struct stat &from) {
  const struct timespec times[2] = {from.st_atim, from.st_mtim};
  if (utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW) != 0) {
    failAt(path, "cannot keep the time of modification");
  }
}

void copyTree(const fs::path &from, const fs::path &to, dev_t device) {
  const struct stat status = statusOf(from, false);
  std::error_code error;
  if (status.st_dev != device) {
    throw Trouble(kFileError,
                  errorAt(from, 0,
                          "cannot carry this over: it is on another file "
                          "system"));
  }
  if (S_ISREG(status.st_mode)) {
    copyFile(from, to);
  } else if (S_ISLNK(status.st_mode)) {
    fs::copy_symlink(from, to, error);
  } else if (S_ISDIR(status.st_mode)) {
    makeDirectory(to);
    for (const fs::path &path : entriesOf(from)) {
      copyTree(path, to / path.filename(), device);
    }
  } else {
    throw Trouble(kFileError,
                  errorAt(from, 0,
                          "cannot carry this over: expected a file, a "
                          "directory or a link, found something else"));
  }
  if (error) {
    throw Trouble(kFileError,
                  errorAt(to, 0, "cannot copy: " + error.message()));
  }
  if (S_ISLNK(status.st_mode)) {
    setOwner(to, status);
  } else {
    copyAttributes(from, to);
  }
  setTime(to, status);
}

}  // namespace

// The mode comes last: a change of owner takes bits of it away.
void copyAttributes(const fs::path &from, const fs::path &to) {
  const struct stat status = statusOf(from, true);
  setOwner(to, status);
  copyExtendedAttributes(from, to);
  removeOtherAccessLists(from, to);
  if (chmod(to.c_str(), status.st_mode & 07777U) != 0) {
    failAt(to, "cannot keep the mode");
  }
}

void copyOwner(const fs::path &from, const fs::path &to) {
  setOwner(to, statusOf(from, true));
}

void copyTree(const fs::path &from, const fs::path &to) {
  copyTree(from, to, statusOf(from.parent_path(), true).st_dev);
}
