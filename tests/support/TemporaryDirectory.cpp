#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

std::string readText(const fs::path &path) {
  std::ifstream in(path, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << path;
  return {std::istreambuf_iterator<char>(in), {}};
}

TemporaryDirectory::TemporaryDirectory() {
  std::string pattern = (fs::temp_directory_path() / "schema-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("cannot make a directory like " + pattern);
  }
  m_path = pattern;
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  fs::remove_all(m_path, ignored);
}

std::string TemporaryDirectory::write(const std::string &name,
                                      const std::string &text) const {
  const fs::path path = m_path / name;
  std::ofstream out(path, std::ios::binary);
  out << text;
  out.close();
  EXPECT_TRUE(out.good()) << path;
  return path.string();
}

std::string TemporaryDirectory::read(const std::string &name) const {
  return readText(m_path / name);
}
