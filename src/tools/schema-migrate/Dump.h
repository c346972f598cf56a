// The library's diagnostic dumps of a directory.
#ifndef SCHEMA_MIGRATE_DUMP_H_
#define SCHEMA_MIGRATE_DUMP_H_

#include <filesystem>
#include <optional>
#include <string>

// Prints to standard output what the library prints of `table`: "attributes",
// "classes", "storage", "files" (the OIDs of each file) or "excluded"; of all
// of them when it is empty. Throws Trouble when an input cannot be read.
void dump(const std::filesystem::path &directory,
          const std::optional<std::filesystem::path> &excludedOids,
          const std::string &table);

#endif  // SCHEMA_MIGRATE_DUMP_H_
