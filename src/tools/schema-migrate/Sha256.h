// SHA-256 sums of files.
#ifndef SCHEMA_MIGRATE_SHA256_H_
#define SCHEMA_MIGRATE_SHA256_H_

#include <filesystem>
#include <string>

// The sum of a file's content, in 64 hexadecimal digits. Throws Trouble when
// the file cannot be read.
std::string sha256Of(const std::filesystem::path &path);

#endif  // SCHEMA_MIGRATE_SHA256_H_
