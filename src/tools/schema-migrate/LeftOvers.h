// What a run makes beside the directory that it writes, and what of it a run
// that was killed leaves.
#ifndef SCHEMA_MIGRATE_LEFTOVERS_H_
#define SCHEMA_MIGRATE_LEFTOVERS_H_

#include <filesystem>
#include <string>
#include <vector>

#include "Trouble.h"

// Beside a target NAME lie, while it is written,
//
//   .NAME.partial-lock              the file that a run locks
//   .NAME.partial-new               the directory being made
//   .NAME.partial-complete-INODE    the same when it is to be exchanged with
//                                   the target; INODE is its own number
//   .NAME.partial-restore-INODE-D   the backup of the date D that is to be
//                                   exchanged
//
// Of the last two, what has another number than its name says is what the
// target was before the exchange. Nothing else keeps a record.

// While the directory is being made, it holds one of this name, and then the
// manifest; by these it is known for what it is.
constexpr char kScratchName[] = "schema-migrate.tmp";

constexpr char kLockSuffix[] = "lock";
constexpr char kNewSuffix[] = "new";

// The path with this end. `target` is as resolve() gives it, here and below.
std::filesystem::path workingPath(const std::filesystem::path &target,
                                  const std::string &suffix);

// Whether any of that lies beside the target, be it of a living run.
bool hasLeftOvers(const std::filesystem::path &target);

// Ends what a run has begun and not finished: removes the directory that was
// being made, gives a backup its name again, and makes a backup of what was
// replaced. Says so, a line for each. To be called under the target's lock.
// Throws Trouble when it fails or what lies there is of no run.
std::vector<std::string> settle(const std::filesystem::path &target);

// The same when a run fails, which has its own message: what cannot be settled
// is left to the next run.
void settleQuietly(const std::filesystem::path &target);

// The target is replaced, but what was there has not become a backup. The next
// settle() makes it one.
class Replaced : public Trouble {
 public:
  using Trouble::Trouble;
};

// Puts a complete directory, workingPath(target, kNewSuffix), in the place of
// the target, which exists, in one step, and makes a backup of what was there;
// returns the backup's name. Throws Replaced when only the backup fails, and
// Trouble when nothing is done; settle() removes the new directory then.
std::string replace(const std::filesystem::path &target);

// The same with `backup`, one of backupsOf(target), as the new directory.
std::string replaceByBackup(const std::filesystem::path &target,
                            const std::string &backup);

#endif  // SCHEMA_MIGRATE_LEFTOVERS_H_
