#include "TargetLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "LeftOvers.h"
#include "Trouble.h"

namespace fs = std::filesystem;

namespace {

// Locks the file. The result is 0, why that fails, or EWOULDBLOCK when another
// run has the lock, or the name leads to the open file no more: one who ends
// removes it, and who has opened it before then holds a lock that nobody else
// asks for.
int lock(int descriptor, const fs::path &path) {
  struct stat opened {};
  struct stat named {};
  if (flock(descriptor, LOCK_EX | LOCK_NB) != 0 ||
      fstat(descriptor, &opened) != 0) {
    return errno;
  }
  if (lstat(path.c_str(), &named) != 0) {
    return errno == ENOENT ? EWOULDBLOCK : errno;
  }
  return opened.st_dev == named.st_dev && opened.st_ino == named.st_ino
             ? 0
             : EWOULDBLOCK;
}

}  // namespace

TargetLock::TargetLock(const fs::path &target)
    : m_path(workingPath(target, kLockSuffix)),
      m_descriptor(open(m_path.c_str(),
                        O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600)) {
  const auto fail = [&target](const std::string &reason) {
    throw Trouble(kFileError, errorAt(target, 0, reason));
  };
  if (m_descriptor == -1) {
    fail("cannot make a file beside it: " +
         std::generic_category().message(errno));
  }
  const int error = lock(m_descriptor, m_path);
  if (error == 0) {
    return;
  }
  close(m_descriptor);
  fail(error == EWOULDBLOCK
           ? "another run of schema-migrate is writing this directory"
           : "cannot lock a file beside it: " +
                 std::generic_category().message(error));
}

TargetLock::~TargetLock() {
  unlink(m_path.c_str());
  close(m_descriptor);
}
