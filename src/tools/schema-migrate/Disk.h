// Steps on the file system that say why they fail. All throw Trouble, which
// names the path.
#ifndef SCHEMA_MIGRATE_DISK_H_
#define SCHEMA_MIGRATE_DISK_H_

#include <filesystem>
#include <string>
#include <vector>

// "PATH: error: ACTION: REASON", the reason being that of errno.
[[noreturn]] void failAt(const std::filesystem::path &path,
                         const std::string &action);

// The path with symbolic links resolved and without a slash at its end; the
// last parts need not exist.
std::filesystem::path resolve(const std::filesystem::path &path);

// Whether a link itself is meant, or what it leads to.
enum class Links { kStop, kFollow };

// What a path is; not_found if there is nothing.
std::filesystem::file_type typeOf(const std::filesystem::path &path,
                                  Links links = Links::kStop);

// Whether anything has the name, a link that leads nowhere included.
bool isThere(const std::filesystem::path &path);

// The paths of what a directory holds, in order.
std::vector<std::filesystem::path> entriesOf(
    const std::filesystem::path &directory);

// The mode is less what the process's mask takes away.
void makeDirectory(const std::filesystem::path &path, unsigned int mode = 0777);

unsigned int modeOf(const std::filesystem::path &path);
void setMode(const std::filesystem::path &path, unsigned int mode);

// All that a file holds, which must be a regular one.
std::string textOf(const std::filesystem::path &path);

// Writes a new file, and waits until it is on disk.
void writeNewFile(const std::filesystem::path &path, const std::string &text);

// Copies a file, following links, to a new one with the same mode, and waits
// until it is on disk.
void copyFile(const std::filesystem::path &from,
              const std::filesystem::path &to);

// Waits until a file is on disk, or the names in a directory.
void sync(const std::filesystem::path &path);

// The same for a directory and all that it holds.
void syncAll(const std::filesystem::path &directory);

// Waits until the name that a complete directory has got is on disk. The
// message of a failure says that it is there all the same.
void syncName(const std::filesystem::path &directory);

// Removes a file, or a directory with all that it holds.
void removeAll(const std::filesystem::path &directory);

// Renames; false when something has the name already.
bool renameToFree(const std::filesystem::path &from,
                  const std::filesystem::path &to);

// Exchanges two directories in one step.
void exchange(const std::filesystem::path &one,
              const std::filesystem::path &other);

// Throws Trouble when a file system is mounted on the directory.
void requireNoMountPoint(const std::filesystem::path &directory);

// The number by which the file system knows a directory under any name.
std::string inodeOf(const std::filesystem::path &path);

#endif  // SCHEMA_MIGRATE_DISK_H_
