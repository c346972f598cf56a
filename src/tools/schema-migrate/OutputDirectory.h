// A directory that appears whole or not at all, and what it must not hold.
#ifndef SCHEMA_MIGRATE_OUTPUTDIRECTORY_H_
#define SCHEMA_MIGRATE_OUTPUTDIRECTORY_H_

#include <filesystem>
#include <string>

// Files are made in a working directory beside the target, and the working
// directory gets the target's name when all of them are on disk. Unless
// commit() has returned, the destructor removes what was made.
class OutputDirectory {
 public:
  // Makes the working directory. `target` must not exist or be an empty
  // directory; its parent must exist. Throws Trouble otherwise.
  explicit OutputDirectory(const std::filesystem::path &target);
  ~OutputDirectory();

  OutputDirectory(const OutputDirectory &) = delete;
  OutputDirectory &operator=(const OutputDirectory &) = delete;

  // Where to put the files.
  const std::filesystem::path &working() const { return m_working; }

  // Brings the files to disk and gives the directory its name. Throws Trouble
  // when that fails, and then the target is as before.
  void commit();

 private:
  std::filesystem::path m_target;   // absolute
  std::filesystem::path m_working;  // empty once committed
};

// Throws Trouble when `path` is the directory or lies in it, whatever links
// lead there; `what` is to lie outside, "a directory" or "a file". What cannot
// be resolved lies outside.
void requireOutside(const std::filesystem::path &directory,
                    const std::filesystem::path &path, const std::string &what);

#endif  // SCHEMA_MIGRATE_OUTPUTDIRECTORY_H_
