// The exit statuses.
#ifndef SCHEMA_MIGRATE_EXITSTATUS_H_
#define SCHEMA_MIGRATE_EXITSTATUS_H_

// The same for all commands. With one of the first three, a command has printed
// its result; only apply has none to print with kFindings.
enum ExitStatus {
  kDone = 0,       // and nothing is wrong or to be done
  kDifferent = 1,  // differences, or changes to be made
  kFindings = 2,   // what an administrator has to look at
  kBadInput = 3,   // files whose content cannot be used
  kFileError = 4,  // files, directories, outputs that fail or are in the way
  kUsage = 5,      // arguments that make no sense
  kInternal = 6,   // a fault of the command itself
};

#endif  // SCHEMA_MIGRATE_EXITSTATUS_H_
