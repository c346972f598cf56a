// The check of schema directories.
#ifndef SCHEMA_MIGRATE_CHECK_H_
#define SCHEMA_MIGRATE_CHECK_H_

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

struct CheckOptions {
  // From the old installations to the new release: the last is what the others
  // are to be carried into.
  std::vector<std::string> directories;
  std::optional<std::string> excludedOids;
  std::optional<std::string> modifiedOids;
  std::uintmax_t sizeLimit;  // of a file, in bytes
  bool strict;               // whether warnings count
};

// Prints all findings, and how many there are. Returns whether there is none
// that counts.
bool printCheck(const CheckOptions &options, std::ostream *out);

#endif  // SCHEMA_MIGRATE_CHECK_H_
