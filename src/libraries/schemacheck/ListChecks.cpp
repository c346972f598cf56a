#include "ListChecks.h"

#include <map>
#include <optional>
#include <unordered_set>
#include <utility>

#include "FileText.h"
#include "StandardSchema.h"

namespace schemacheck {

namespace {

// What separates words: isspace() of the C locale.
constexpr char kWhiteSpace[] = " \t\n\v\f\r";

class ListChecks {
 public:
  ListChecks(const SourceText &text,
             const std::vector<const SchemaDirectory *> &directories)
      : m_text(text), m_bytes(text.bytes()) {
    for (const SchemaDirectory *directory : directories) {
      for (const Statement &statement : directory->statements()) {
        m_defined.insert(statement.oid());
      }
    }
  }

  OidList run() {
    std::size_t at = m_bytes.find_first_not_of(kWhiteSpace);
    while (at != std::string::npos) {
      std::size_t end = m_bytes.find_first_of(kWhiteSpace, at);
      const std::string word = m_bytes.substr(at, end - at);
      if (word.find('#') != std::string::npos) {
        end = m_bytes.find('\n', at);
        if (end == std::string::npos) {
          addEndless(at, word);
        }
      } else if (end == std::string::npos) {
        add(Code::kListUnterminated, at,
            "expected a newline behind '" + word +
                "', found the end of the file; the library ignores the word");
      } else {
        take(at, word);
      }
      at = m_bytes.find_first_not_of(kWhiteSpace, end);
    }
    return std::move(m_list);
  }

 private:
  void add(Code code, std::size_t offset, std::string message) {
    m_list.findings.push_back(
        findingAt(code, m_text, offset, std::move(message)));
  }

  // The library passes over a comment of one word, as over any last word.
  void addEndless(std::size_t at, const std::string &word) {
    const bool isOneWord = at + word.size() == m_bytes.size();
    add(Code::kListUnterminated, at,
        std::string("expected a newline at the end of the comment, found the "
                    "end of the file") +
            (isOneWord ? "" : "; the library would never come back"));
  }

  void take(std::size_t at, const std::string &word) {
    m_list.oids.insert(word);
    const auto [first, isNew] = m_firstOf.try_emplace(word, at);
    if (!isNew) {
      add(Code::kListRepeated, at,
          "expected each OID once, found " + word +
              " again; it stands on line " +
              std::to_string(m_text.position(first->second).line) + " already");
    } else if (m_defined.count(word) == 0) {
      if (isNumericOid(word)) {
        add(Code::kListUnknown, at,
            "expected the OID of a definition, found " + word +
                ", which no definition has");
      } else {
        add(Code::kListBadOid, at,
            "expected an OID of numbers and dots, found '" + word + "'");
      }
    }
  }

  const SourceText &m_text;
  const std::string &m_bytes;
  std::unordered_set<std::string> m_defined;     // all OIDs of definitions
  std::map<std::string, std::size_t> m_firstOf;  // where each word stands first
  OidList m_list;
};

}  // namespace

OidList checkOidList(const std::filesystem::path &path,
                     const std::vector<const SchemaDirectory *> &directories,
                     std::uintmax_t sizeLimit) {
  OidList list;
  const std::optional<SourceText> text =
      readFileText(path, sizeLimit, &list.findings);
  return text ? ListChecks(*text, directories).run() : list;
}

}  // namespace schemacheck
