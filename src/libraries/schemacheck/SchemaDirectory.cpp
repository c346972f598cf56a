#include "SchemaDirectory.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>
#include <utility>

#include "EditDistance.h"

namespace fs = std::filesystem;

namespace schemacheck {

namespace {

// A misspelt name has at most this many characters wrong.
constexpr std::size_t kTypingErrors = 2;

std::string reason(int error) { return std::generic_category().message(error); }

// The whole file; nothing when it cannot be read.
std::optional<std::string> readBytes(const fs::path &path, std::size_t size) {
  std::ifstream in(path, std::ios::binary);
  std::string bytes;
  bytes.reserve(size);
  char buffer[1 << 16];
  while (in.good()) {
    in.read(buffer, sizeof buffer);
    bytes.append(buffer, static_cast<std::size_t>(in.gcount()));
  }
  return in.eof() ? std::optional(std::move(bytes)) : std::nullopt;
}

const std::string *firstOf(const std::vector<std::string> &values) {
  return values.empty() ? nullptr : &values.front();
}

}  // namespace

std::string Statement::oid() const {
  return definition->oid ? definition->oid->text : "";
}

std::string Statement::firstName() const {
  for (const Field &field : fields) {
    if (std::string_view(field.name) == "NAME") {
      const std::string *name = firstOf(field.values);
      return name == nullptr ? "" : *name;
    }
  }
  return "";
}

std::string Statement::key() const {
  return definition->kind == Kind::kStorage ? oid() : lowerCase(firstName());
}

std::string Statement::inWords() const {
  const std::string name = firstName();
  return std::string(kindName(definition->kind)) +
         (name.empty() ? "" : " '" + name + "'") + " (" + oid() + ")";
}

std::string Statement::place() const {
  return file->text.name() + ":" +
         std::to_string(file->text.position(definition->span.begin).line);
}

SchemaDirectory::SchemaDirectory(fs::path path, std::uintmax_t sizeLimit)
    : m_path(std::move(path)), m_sizeLimit(sizeLimit) {
  std::error_code error;
  const fs::directory_iterator opened(m_path, error);
  if (error) {
    m_findings.push_back(findingOn(
        Code::kNotADirectory, m_path.string(),
        "expected a directory that can be read, found: " + error.message()));
    return;
  }
  checkNames();
  for (std::size_t number = 0; number < kSchemaFiles.size(); ++number) {
    readFile(number);
  }
  for (const StrictFile &file : m_files) {
    for (const Section &section : file.reading.sections) {
      for (const Definition &definition : section.definitions) {
        m_statements.push_back(
            {&file, &section, &definition, fieldsOf(definition)});
      }
    }
  }
}

// Looks for files whose names seem to be meant for those of schema files.
void SchemaDirectory::checkNames() {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(m_path, error), end; !error && entry != end;
       entry.increment(error)) {
    names.push_back(entry->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  const auto isThere = [&names](const std::string &name) {
    return std::binary_search(names.begin(), names.end(), name);
  };
  bool any = false;
  for (const SchemaFile &file : kSchemaFiles) {
    any = any || isThere(file.name);
  }
  if (!any) {
    m_findings.push_back(
        findingOn(Code::kNoFiles, m_path.string(),
                  "expected schema files (V3.user.at and so on), found none"));
  }
  for (const std::string &name : names) {
    const bool isKnown = std::any_of(
        kSchemaFiles.begin(), kSchemaFiles.end(),
        [&name](const SchemaFile &file) { return name == file.name; });
    if (isKnown || lowerCase(name.substr(0, 2)) != "v3") {
      continue;
    }
    const SchemaFile *nearest = nullptr;
    std::size_t least = 0;
    for (const SchemaFile &file : kSchemaFiles) {
      const std::size_t steps =
          editDistance(lowerCase(name), lowerCase(file.name));
      if (nearest == nullptr || steps < least) {
        nearest = &file;
        least = steps;
      }
    }
    const bool isMisspelt = least <= kTypingErrors && !isThere(nearest->name);
    m_findings.push_back(
        findingOn(isMisspelt ? Code::kMisnamedFile : Code::kUnknownFile,
                  (m_path / name).string(),
                  "expected the name of a schema file, such as " +
                      std::string(nearest->name) + "; the file is not read"));
  }
}

void SchemaDirectory::readFile(std::size_t number) {
  const fs::path path = m_path / kSchemaFiles[number].name;
  const std::string name = path.string();
  const auto add = [this, &name](Code code, std::string message) {
    m_findings.push_back(findingOn(code, name, std::move(message)));
  };
  std::error_code error;
  if (fs::symlink_status(path, error).type() == fs::file_type::not_found) {
    return;
  }
  const fs::file_status status = fs::status(path, error);
  if (error || !fs::is_regular_file(status)) {
    add(Code::kNotAFile, error ? "expected a file, found: " + error.message()
                               : "expected a regular file, found another kind");
    return;
  }
  const std::uintmax_t size = fs::file_size(path, error);
  if (!error && size > m_sizeLimit) {
    add(Code::kLargeFile, "expected at most " + std::to_string(m_sizeLimit) +
                              " bytes, found " + std::to_string(size));
    return;
  }
  errno = 0;
  std::optional<std::string> bytes =
      readBytes(path, static_cast<std::size_t>(error ? 0 : size));
  if (!bytes) {
    add(Code::kUnreadableFile,
        "expected a file that can be read, found: " + reason(errno));
    return;
  }
  if (bytes->empty()) {
    add(Code::kEmptyFile, "expected definitions, found an empty file");
  }
  SourceText text(name, std::move(*bytes));
  const std::size_t zero = text.bytes().find('\0');
  if (zero != std::string::npos) {
    m_findings.push_back(findingAt(Code::kBinaryFile, text, zero,
                                   "expected text, found a zero byte; the file "
                                   "is not checked"));
    return;
  }
  Reading reading = readStrictly(text);
  m_files.push_back({number, std::move(text), std::move(reading)});
}

}  // namespace schemacheck
