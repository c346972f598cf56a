#include "Manifest.h"

#include <sstream>
#include <system_error>

#include "Disk.h"
#include "SchemaFiles.h"
#include "Sha256.h"
#include "Trouble.h"

namespace fs = std::filesystem;

namespace {

// The sum of a file that may be missing, or be none: reading a pipe would not
// end.
std::string sumIfReadable(const fs::path &path) {
  std::error_code ignored;
  if (!fs::is_regular_file(path, ignored)) {
    return "";
  }
  try {
    return sha256Of(path);
  } catch (const Trouble &) {
    return "";
  }
}

// A line as sha256sum writes it: a name with a backslash or a newline has them
// escaped, and a backslash before the line.
std::string sumLine(const std::string &sum, const std::string &name) {
  std::string escaped;
  for (const char c : name) {
    switch (c) {
      case '\\':
        escaped += "\\\\";
        break;
      case '\n':
        escaped += "\\n";
        break;
      case '\r':
        escaped += "\\r";
        break;
      default:
        escaped += c;
    }
  }
  return (escaped == name ? "" : "\\") + sum + "  " + escaped + '\n';
}

std::string sumLines(const fs::path &directory, const std::string &prefix) {
  std::string lines;
  for (const fs::path &path : entriesOf(directory)) {
    const std::string name = prefix + path.filename().string();
    const fs::file_type type = typeOf(path);
    if (type == fs::file_type::directory) {
      lines += sumLines(path, name + "/");
    } else if (type == fs::file_type::regular && name != kManifestName) {
      lines += sumLine(sha256Of(path), name);
    }
  }
  return lines;
}

// A path that keeps to its line.
std::string printable(const fs::path &path) {
  std::string text = path.string();
  for (char &c : text) {
    if (c == '\n' || c == '\r') {
      c = '?';
    }
  }
  return text;
}

}  // namespace

void Manifest::addDirectory(const std::string &what,
                            const fs::path &directory) {
  Input input{what, directory, {}};
  for (const schemacheck::SchemaFile &file : schemacheck::kSchemaFiles) {
    const fs::path path = directory / file.name;
    input.files.push_back({path, sumIfReadable(path)});
  }
  m_inputs.push_back(input);
}

void Manifest::addFile(const std::string &what, const fs::path &file) {
  m_inputs.push_back({what, file, {{file, sumIfReadable(file)}}});
}

void Manifest::requireUnchanged() const {
  for (const Input &input : m_inputs) {
    for (const Sum &file : input.files) {
      const std::string now =
          file.sum.empty() ? sumIfReadable(file.path) : sha256Of(file.path);
      if (now != file.sum) {
        throw Trouble(kFileError,
                      errorAt(file.path, 0,
                              "was changed while the migration ran; run it "
                              "again when nothing changes the file"));
      }
    }
  }
}

std::string Manifest::text(const std::string &plan,
                           const fs::path &directory) const {
  std::string text = "# schema-migrate " SCHEMA_MIGRATE_VERSION
                     ", manifest 1\n"
                     "# check the files below with: sha256sum -c " +
                     std::string(kManifestName) + "\n#\n";
  for (const Input &input : m_inputs) {
    text +=
        "# " + input.what + ": " + printable(fs::absolute(input.path)) + '\n';
    for (const Sum &file : input.files) {
      if (!file.sum.empty()) {
        text +=
            "#   " + file.sum + "  " + printable(file.path.filename()) + '\n';
      }
    }
  }
  if (!plan.empty()) {
    text += "#\n# plan:\n";
    std::istringstream in(plan);
    for (std::string line; std::getline(in, line);) {
      text += line.empty() ? "#\n" : "#   " + line + '\n';
    }
  }
  return text + sumLines(directory, "");
}
