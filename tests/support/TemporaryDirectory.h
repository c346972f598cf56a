// A directory for one test, and files.
#ifndef TESTS_SUPPORT_TEMPORARYDIRECTORY_H_
#define TESTS_SUPPORT_TEMPORARYDIRECTORY_H_

#include <filesystem>
#include <string>

// The content of a file, byte by byte. A file that cannot be read fails the
// test.
std::string readText(const std::filesystem::path &path);

// A new, empty directory that is removed with all it holds.
class TemporaryDirectory {
 public:
  TemporaryDirectory();
  ~TemporaryDirectory();

  TemporaryDirectory(const TemporaryDirectory &) = delete;
  TemporaryDirectory &operator=(const TemporaryDirectory &) = delete;

  const std::filesystem::path &path() const { return m_path; }
  std::string string() const { return m_path.string(); }

  // Writes a file into the directory and returns its path.
  std::string write(const std::string &name, const std::string &text) const;
  // What a file of the directory holds.
  std::string read(const std::string &name) const;

 private:
  std::filesystem::path m_path;
};

#endif  // TESTS_SUPPORT_TEMPORARYDIRECTORY_H_
