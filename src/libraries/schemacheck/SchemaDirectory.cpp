#include "SchemaDirectory.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <utility>

#include "EditDistance.h"
#include "FileText.h"

namespace fs = std::filesystem;

namespace schemacheck {

namespace {

// A misspelt name has at most this many characters wrong.
constexpr std::size_t kTypingErrors = 2;

// What some editors write before a text in UTF-8.
constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";

}  // namespace

SchemaDirectory::SchemaDirectory(fs::path path, std::uintmax_t sizeLimit)
    : m_path(std::move(path)), m_sizeLimit(sizeLimit) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(m_path, error), end; !error && entry != end;
       entry.increment(error)) {
    names.push_back(entry->path().filename().string());
  }
  if (error) {
    m_findings.push_back(findingOn(
        Code::kNotADirectory, m_path.string(),
        "expected a directory that can be read, found: " + error.message()));
    return;
  }
  std::sort(names.begin(), names.end());
  checkNames(names);
  for (std::size_t number = 0; number < kSchemaFiles.size(); ++number) {
    readFile(number);
  }
  addStatements();
}

void SchemaDirectory::addStatements() {
  std::size_t number = 0;
  for (const StrictFile &file : m_files) {
    for (const Section &section : file.reading.sections) {
      number += section.definitions.size();
    }
  }
  m_statements.reserve(number);
  for (const StrictFile &file : m_files) {
    for (const Section &section : file.reading.sections) {
      for (const Definition &definition : section.definitions) {
        m_statements.emplace_back(&file, &section, &definition);
      }
    }
  }
  for (Statement &statement : m_statements) {
    statement.setHeld(m_index.add(statement));
  }
}

// Looks for files whose names, in ascending order, seem to be meant for those
// of schema files.
void SchemaDirectory::checkNames(const std::vector<std::string> &names) {
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
    // Of two equally near names the one that is missing is meant.
    const auto distance = [&](const SchemaFile &file) {
      return std::pair(editDistance(lowerCase(name), lowerCase(file.name)),
                       isThere(file.name));
    };
    const SchemaFile &nearest =
        *std::min_element(kSchemaFiles.begin(), kSchemaFiles.end(),
                          [&](const SchemaFile &a, const SchemaFile &b) {
                            return distance(a) < distance(b);
                          });
    const auto [typingErrors, isTaken] = distance(nearest);
    const bool isMisspelt = typingErrors <= kTypingErrors && !isTaken;
    m_findings.push_back(
        findingOn(isMisspelt ? Code::kMisnamedFile : Code::kUnknownFile,
                  (m_path / name).string(),
                  "expected the name of a schema file, such as " +
                      std::string(nearest.name) + "; the file is not read"));
  }
}

void SchemaDirectory::readFile(std::size_t number) {
  const fs::path path = m_path / kSchemaFiles[number].name;
  std::error_code error;
  if (fs::symlink_status(path, error).type() == fs::file_type::not_found) {
    return;
  }
  std::optional<SourceText> read = readFileText(path, m_sizeLimit, &m_findings);
  if (!read) {
    return;
  }
  SourceText text = std::move(*read);
  if (text.bytes().empty() && number != kModifiedSchema) {
    m_findings.push_back(findingOn(Code::kEmptyFile, text.name(),
                                   "expected definitions, found an empty "
                                   "file"));
  }
  // The library passes over the mark as over all that is in no section.
  if (text.bytes().rfind(kByteOrderMark, 0) == 0) {
    text = SourceText(text.name(), "   " + text.bytes().substr(3));
  }
  Reading reading = readStrictly(text);
  m_files.push_back({number, std::move(text), std::move(reading)});
}

}  // namespace schemacheck
