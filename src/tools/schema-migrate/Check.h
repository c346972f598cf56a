// The check of schema directories.
#ifndef SCHEMA_MIGRATE_CHECK_H_
#define SCHEMA_MIGRATE_CHECK_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "Finding.h"

struct CheckOptions {
  // From the old installations to the new release: the last is what the others
  // are to be carried into.
  std::vector<std::string> directories;
  std::optional<std::string> excludedOids;
  std::optional<std::string> modifiedOids;
  std::uintmax_t sizeLimit;  // of a file, in bytes
  bool strict;               // whether warnings count
};

struct CheckResult {
  std::vector<schemacheck::Finding> findings;
  // How many of them are errors, and warnings.
  std::size_t errors = 0;
  std::size_t warnings = 0;

  // Whether there is none that counts.
  bool passes(bool strict) const {
    return errors == 0 && (warnings == 0 || !strict);
  }
};

CheckResult check(const CheckOptions &options);

// Prints all findings, and how many there are.
void printCheck(const CheckResult &result, std::ostream *out);

#endif  // SCHEMA_MIGRATE_CHECK_H_
