// What the tests of the checks share.
#ifndef TESTS_SCHEMACHECK_CHECKTESTING_H_
#define TESTS_SCHEMACHECK_CHECKTESTING_H_

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "Finding.h"
#include "support/TemporaryDirectory.h"

// Texts by the names of files, which may lie in directories.
using Files = std::map<std::string, std::string>;

// Some files, and the complete text of what a check finds in them.
struct CheckCase {
  const char *name;
  Files files;
  const char *text;
};

inline void PrintTo(const CheckCase &checkCase, std::ostream *out) {
  *out << checkCase.name;
}

inline std::string nameOf(const testing::TestParamInfo<CheckCase> &info) {
  return info.param.name;
}

// A directory to check.
class CheckTest : public testing::Test {
 protected:
  void write(const Files &files) const {
    for (const auto &[name, text] : files) {
      std::filesystem::create_directories(
          (m_directory.path() / name).parent_path());
      m_directory.write(name, text);
    }
  }

  std::filesystem::path path(const std::string &name = "") const {
    return name.empty() ? m_directory.path() : m_directory.path() / name;
  }

  // The findings in their order, with "./" for the directory.
  std::string textOf(std::vector<schemacheck::Finding> findings) const {
    sortFindings(&findings);
    std::string text;
    for (const schemacheck::Finding &finding : findings) {
      text += toText(finding);
    }
    const std::string &directory = m_directory.string();
    for (std::size_t at = text.find(directory); at != std::string::npos;
         at = text.find(directory, at)) {
      text.replace(at, directory.size(), ".");
    }
    return text;
  }

 private:
  TemporaryDirectory m_directory;
};

#endif  // TESTS_SCHEMACHECK_CHECKTESTING_H_
