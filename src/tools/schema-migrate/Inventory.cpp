#include "Inventory.h"

#include <sstream>
#include <system_error>
#include <utility>

#include "Attribute.h"
#include "Disk.h"
#include "GuardedLexan.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "Trouble.h"
#include "Untraced.h"

namespace fs = std::filesystem;

using schemacheck::EndlessReading;
using schemacheck::GuardedLexan;

namespace {

bool beginsSection(int token) {
  return token == TOK_ATTRIBUTETYPES || token == TOK_OBJECTCLASSES ||
         token == TOK_QORATTRIBUTETYPES;
}

// Fills `entry` with what one definition holds. False when it does not parse.
template <class Definition>
bool parse(GuardedLexan *lexan, Kind kind, Entry *entry) {
  Definition definition;
  const bool complete = definition.parse(lexan) != 0;
  entry->kind = kind;
  entry->oid = definition.getOid();
  entry->name = definition.getFirstName();
  entry->key =
      kind == Kind::kStorage ? entry->oid : definition.getFirstNameLower();
  return complete;
}

bool parse(GuardedLexan *lexan, int keyword, Entry *entry) {
  lexan->beginDefinition(keyword);
  switch (keyword) {
    case TOK_ATTRIBUTETYPES:
      return parse<Attribute>(lexan, Kind::kAttributeType, entry);
    case TOK_OBJECTCLASSES:
      return parse<ObjectClass>(lexan, Kind::kObjectClass, entry);
    default:
      return parse<QORAttribute>(lexan, Kind::kStorage, entry);
  }
}

// The analyser of a file that has been read.
class TextLexan : public GuardedLexan {
 public:
  explicit TextLexan(const std::string &text)
      : GuardedLexan("", ""), m_text(text, std::ios::in) {
    readFrom(&m_text);
  }

 private:
  std::stringbuf m_text;
};

}  // namespace

Inventory::Inventory(fs::path directory) : m_directory(std::move(directory)) {
  const Untraced untraced;
  std::error_code error;
  if (!fs::is_directory(m_directory, error)) {
    throw Trouble(kFileError,
                  errorAt(m_directory, 0,
                          error ? error.message() : "expected a directory"));
  }
  bool any = false;
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    const fs::path path = m_directory / kSchemaFiles[file].name;
    m_present[file] =
        fs::symlink_status(path, error).type() != fs::file_type::not_found;
    if (m_present[file]) {
      any = true;
      readFile(file, textOf(path));
    }
  }
  if (!any) {
    throw Trouble(kBadInput,
                  errorAt(m_directory, 0,
                          "expected schema files (V3.user.at and so on), found "
                          "none"));
  }
}

std::vector<std::string> Inventory::missingFiles() const {
  std::string names;
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    if (!hasFile(file)) {
      names += std::string(" ") + kSchemaFiles[file].name;
    }
  }
  if (names.empty()) {
    return {};
  }
  return {m_directory.string() + ": warning: not there:" + names};
}

std::string Inventory::place(const Entry &entry) const {
  return (m_directory / kSchemaFiles[entry.file].name).string() + ":" +
         std::to_string(entry.line);
}

std::string describe(Kind kind, const std::string &name,
                     const std::string &oid) {
  return std::string(kindName(kind)) + (name.empty() ? "" : " '" + name + "'") +
         " (" + oid + ")";
}

std::string describe(const Entry &entry) {
  return describe(entry.kind, entry.name, entry.oid);
}

bool Inventory::isFoundByOidOnly(const Entry &entry) const {
  return !entry.held() && firstWithOid(entry.kind, entry.oid) == &entry;
}

std::string Inventory::warningOf(const Entry &entry) const {
  std::string reason = "it has no OID";
  if (!entry.dropped) {
    reason = place(m_entries[entry.shadowedBy]) + " defines the same " +
             (entry.kind == Kind::kStorage ? "OID" : "first name");
  }
  return place(entry) + ": warning: " + describe(entry) +
         (isFoundByOidOnly(entry) ? " is found by its OID only: "
                                  : " is ignored: ") +
         reason;
}

std::vector<std::string> Inventory::ignoredEntries() const {
  std::vector<std::string> lines;
  for (const Entry &entry : m_entries) {
    if (!entry.held()) {
      lines.push_back(warningOf(entry));
    }
  }
  return lines;
}

// The loop of SchemaManager::readFile().
void Inventory::readFile(std::size_t file, const std::string &text) {
  const fs::path path = m_directory / kSchemaFiles[file].name;
  TextLexan lexan(text);
  Entry entry{Kind::kAttributeType, file,  0,    "", "", "",
              Entry::kNone,         false, false};

  const auto readDefinition = [&](int keyword, bool inBraces) {
    const bool complete = parse(&lexan, keyword, &entry);
    entry.line = lexan.definitionLine();
    if (!complete) {
      throw Trouble(kBadInput,
                    errorAt(path, entry.line,
                            "cannot read this definition to its ')'; look for "
                            "a missing parenthesis, a quote too many or too "
                            "few, or a character outside ASCII"));
    }
    entry.dropped = inBraces && entry.oid.empty();
    add(entry);
  };

  try {
    int token = lexan.lexan();
    while (token != TOK_DONE) {
      if (!beginsSection(token)) {
        token = lexan.lexan();
        continue;
      }
      const int opener = lexan.lexan();
      if (opener == '=') {
        readDefinition(token, false);
      } else if (opener == '{') {
        do {
          readDefinition(token, true);
        } while (lexan.getCurrentToken() != '}');
      } else {
        throw Trouble(kBadInput,
                      errorAt(path, lexan.getLineNumber(),
                              "expected '=' or '{' behind the keyword of a "
                              "section"));
      }
      token = lexan.getCurrentToken();
    }
  } catch (const EndlessReading &endless) {
    throw Trouble(kBadInput,
                  errorAt(path, lexan.getLineNumber(),
                          std::string("cannot read the definition that begins "
                                      "on line ") +
                              std::to_string(lexan.definitionLine()) + ": " +
                              endless.what()));
  }
}

void Inventory::add(Entry entry) {
  if (!entry.dropped) {
    const auto kind = static_cast<std::size_t>(entry.kind);
    const std::size_t number = m_entries.size();
    const auto [holder, isNew] = m_holders[kind].try_emplace(entry.key, number);
    entry.shadowedBy = isNew ? Entry::kNone : holder->second;
    if (!isNew) {
      m_entries[holder->second].repeated = true;
    }
    m_firstWithOid[kind].try_emplace(entry.oid, number);
  }
  m_entries.push_back(std::move(entry));
}

const Entry *Inventory::find(const Index &index, const std::string &key) const {
  const auto found = index.find(key);
  return found == index.end() ? nullptr : &m_entries[found->second];
}

const Entry *Inventory::holder(Kind kind, const std::string &key) const {
  return find(m_holders[static_cast<std::size_t>(kind)], key);
}

const Entry *Inventory::firstWithOid(Kind kind, const std::string &oid) const {
  return find(m_firstWithOid[static_cast<std::size_t>(kind)], oid);
}
