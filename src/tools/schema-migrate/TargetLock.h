// At most one run at a time writes a directory.
#ifndef SCHEMA_MIGRATE_TARGETLOCK_H_
#define SCHEMA_MIGRATE_TARGETLOCK_H_

#include <filesystem>

// While it exists, no other process has one for the same target. The lock is
// that of a file beside the target, which goes with it; the system ends the
// lock of a process that is killed, and the next one takes the file over.
class TargetLock {
 public:
  // `target`: as resolve() gives it. Throws Trouble when another process has
  // the lock or the file cannot be made.
  explicit TargetLock(const std::filesystem::path &target);
  ~TargetLock();

  TargetLock(const TargetLock &) = delete;
  TargetLock &operator=(const TargetLock &) = delete;

 private:
  std::filesystem::path m_path;
  int m_descriptor;
};

#endif  // SCHEMA_MIGRATE_TARGETLOCK_H_
