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

// Whether the name still leads to the open file: one who ends removes it, and
// who has opened it before then holds a lock that nobody else asks for.
bool isCurrent(int descriptor, const fs::path &path) {
  struct stat opened {};
  struct stat named {};
  return fstat(descriptor, &opened) == 0 && lstat(path.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
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
  const bool locked = flock(m_descriptor, LOCK_EX | LOCK_NB) == 0;
  const int error = errno;
  if (locked && isCurrent(m_descriptor, m_path)) {
    return;
  }
  close(m_descriptor);
  if (locked || error == EWOULDBLOCK) {
    fail("another run of schema-migrate is writing this directory");
  }
  fail("cannot lock a file beside it: " +
       std::generic_category().message(error));
}

TargetLock::~TargetLock() {
  unlink(m_path.c_str());
  close(m_descriptor);
}
