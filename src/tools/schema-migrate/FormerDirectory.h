// The directory that a result replaces.
#ifndef SCHEMA_MIGRATE_FORMERDIRECTORY_H_
#define SCHEMA_MIGRATE_FORMERDIRECTORY_H_

#include <filesystem>
#include <map>
#include <string>
#include <vector>

// Hands on to the new directory what is not the migration's: the mode and owner
// of the directory and of each schema file, and all other files.
class FormerDirectory {
 public:
  // Remembers what `path` holds. An empty directory will do. Throws Trouble
  // when it cannot be read, is where a file system is mounted, or holds files
  // but no schema file.
  explicit FormerDirectory(std::filesystem::path path);

  bool isEmpty() const { return m_state.size() == 1; }

  // What it holds besides the schema files and the manifest, in order; a name
  // of a directory ends in a slash.
  const std::vector<std::string> &others() const { return m_others; }

  // Copies the others into `directory`.
  void copyOthers(const std::filesystem::path &directory) const;

  // Gives `directory` and its files the attributes of the former and of its
  // files of the same names. A file that the former does not have gets the
  // owner of the directory.
  void handOnAttributes(const std::filesystem::path &directory) const;

  // Throws Trouble when it is no longer as it was.
  void requireUnchanged() const;

 private:
  // What shows a change, for the directory itself and all below.
  using State = std::map<std::string, std::string>;
  static void addState(const std::filesystem::path &path, State *state);

  std::filesystem::path m_path;
  State m_state;
  std::vector<std::string> m_others;
};

#endif  // SCHEMA_MIGRATE_FORMERDIRECTORY_H_
