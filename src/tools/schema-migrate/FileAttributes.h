// What a file is besides its content.
#ifndef SCHEMA_MIGRATE_FILEATTRIBUTES_H_
#define SCHEMA_MIGRATE_FILEATTRIBUTES_H_

#include <filesystem>

// All throw Trouble when something cannot be kept. Symbolic links are followed
// in `from`, which is only read.

// Gives the new file or directory `to` the owner, group, extended attributes
// (access lists among them) and mode of `from`.
void copyAttributes(const std::filesystem::path &from,
                    const std::filesystem::path &to);

// Gives it the owner and group alone.
void copyOwner(const std::filesystem::path &from,
               const std::filesystem::path &to);

// Copies a file, a directory with all that it holds, or a symbolic link, with
// these attributes and the times of modification. Throws Trouble also when
// there is something else, or another file system.
void copyTree(const std::filesystem::path &from,
              const std::filesystem::path &to);

#endif  // SCHEMA_MIGRATE_FILEATTRIBUTES_H_
