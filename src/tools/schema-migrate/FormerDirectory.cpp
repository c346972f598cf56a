#include "FormerDirectory.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>

#include "Disk.h"
#include "FileAttributes.h"
#include "Manifest.h"
#include "SchemaFiles.h"
#include "Trouble.h"

namespace fs = std::filesystem;

using schemacheck::kSchemaFiles;
using schemacheck::SchemaFile;

namespace {

bool isSchemaFile(const std::string &name) {
  return std::any_of(
      kSchemaFiles.begin(), kSchemaFiles.end(),
      [&name](const SchemaFile &file) { return name == file.name; });
}

}  // namespace

FormerDirectory::FormerDirectory(fs::path path) : m_path(std::move(path)) {
  requireNoMountPoint(m_path);
  addState(m_path, &m_state);
  bool any = false;
  for (const fs::path &entry : entriesOf(m_path)) {
    const std::string name = entry.filename().string();
    if (isSchemaFile(name)) {
      any = true;
    } else if (name != kManifestName) {
      m_others.push_back(typeOf(entry) == fs::file_type::directory ? name + "/"
                                                                   : name);
    }
  }
  if (!any && !isEmpty()) {
    throw Trouble(kFileError,
                  errorAt(m_path, 0,
                          "expected a schema directory to replace (V3.user.at "
                          "and so on), found other files only"));
  }
}

void FormerDirectory::addState(const fs::path &path, State *state) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0) {
    failAt(path, "cannot look at it");
  }
  const auto time = [](const struct timespec &at) {
    return std::to_string(at.tv_sec) + '.' + std::to_string(at.tv_nsec);
  };
  (*state)[path.string()] = std::to_string(status.st_ino) + ' ' +
                            std::to_string(status.st_size) + ' ' +
                            time(status.st_mtim) + ' ' + time(status.st_ctim);
  if (S_ISDIR(status.st_mode)) {
    for (const fs::path &entry : entriesOf(path)) {
      addState(entry, state);
    }
  }
}

void FormerDirectory::copyOthers(const fs::path &directory) const {
  for (const std::string &name : m_others) {
    const std::string plain = name.substr(0, name.find('/'));
    copyTree(m_path / plain, directory / plain);
  }
}

void FormerDirectory::handOnAttributes(const fs::path &directory) const {
  for (const fs::path &file : entriesOf(directory)) {
    const std::string name = file.filename().string();
    if (!isSchemaFile(name) && name != kManifestName) {
      continue;
    }
    if (typeOf(m_path / name, Links::kFollow) == fs::file_type::regular) {
      copyAttributes(m_path / name, file);
    } else {
      copyOwner(m_path, file);
    }
  }
  copyAttributes(m_path, directory);
}

void FormerDirectory::requireUnchanged() const {
  State now;
  addState(m_path, &now);
  if (now != m_state) {
    throw Trouble(kFileError,
                  errorAt(m_path, 0,
                          "was changed while the result was made; run it again "
                          "when nothing changes the directory"));
  }
}
