#include "FileCheck.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include "KeptComparison.h"
#include "LibraryReader.h"

namespace schemacheck {

namespace {

bool beginsSection(int token) {
  return token == TOK_ATTRIBUTETYPES || token == TOK_OBJECTCLASSES ||
         token == TOK_QORATTRIBUTETYPES;
}

const char *keywordOf(Kind kind) {
  static constexpr const char *kKeywords[kKinds] = {
      "attributetypes", "objectclasses", "QORAttributetypes"};
  return kKeywords[static_cast<std::size_t>(kind)];
}

bool isKeyword(std::string_view spelling) {
  for (const char *keyword :
       {"attributetypes", "attributeTypes", "objectclasses", "objectClasses",
        "QORAttributetypes", "QORattributeTypes"}) {
    if (spelling == keyword) {
      return true;
    }
  }
  return false;
}

// How far behind its end a definition is followed that has lost it. Without a
// limit, many of them would take the square of the file's size.
constexpr std::size_t kFollowed = 2048;

class FileCheck {
 public:
  explicit FileCheck(const StrictFile &file)
      : m_file(file),
        m_sections(file.reading.sections),
        m_library(
            std::string_view(file.text.bytes()).substr(0, file.reading.end)),
        m_comparison(file, &m_library) {}

  // The loop of SchemaManager::readFile().
  LibraryView run() {
    m_token = m_library.lexan();
    while (m_token != TOK_DONE) {
      if (beginsSection(m_token)) {
        reachSection(m_library.offset());
      } else {
        m_token = m_library.lexan();
      }
    }
    skipSections(m_file.reading.end + 1);
    reportOutside();
    if (m_file.reading.end < m_file.text.bytes().size()) {
      add(Code::kTooDamaged, m_file.reading.end,
          "expected a schema file, found " + std::to_string(kMostFaults) +
              " departures from its form; the rest is not checked");
    }
    return std::move(m_view);
  }

 private:
  void add(Code code, std::size_t offset, std::string message) {
    m_view.findings.push_back(
        findingAt(code, m_file.text, offset, std::move(message)));
  }

  // Whether a line goes on like a section whose keyword nobody knows: with "="
  // or "{" and a parenthesis.
  bool looksLikeSection(std::size_t offset) const {
    const std::string &bytes = m_file.text.bytes();
    const std::size_t opener = bytes.find_first_of("={\n", offset);
    if (opener == std::string::npos || bytes[opener] == '\n') {
      return false;
    }
    const std::size_t next = bytes.find_first_not_of(" \t", opener + 1);
    return next != std::string::npos && bytes[next] == '(';
  }

  // Reports what stands in no section and what in a block stands in no
  // definition.
  void reportOutside() {
    std::size_t end = 0;
    std::vector<Span> definitions;
    for (const Section &section : m_sections) {
      for (const Definition &definition : section.definitions) {
        definitions.push_back(definition.span);
      }
    }
    auto definition = definitions.begin();
    for (const Fault &fault : m_file.reading.faults) {
      while (definition != definitions.end() &&
             definition->begin <= fault.at.begin) {
        end = definition->end;
        ++definition;
      }
      if (fault.at.begin < end) {
        continue;
      }
      const std::string message =
          "expected " + fault.expected + ", found " + fault.found;
      if (fault.code == FaultCode::kDefinitionOutside) {
        add(Code::kOutsideSection, fault.at.begin,
            message + "; the library passes over it");
      } else if (fault.code == FaultCode::kStray &&
                 looksLikeSection(fault.at.begin)) {
        add(Code::kSectionSpelling, fault.at.begin,
            message + "; the library passes over it");
      } else if (fault.code == FaultCode::kStray) {
        add(Code::kStrayText, fault.at.begin, message);
      }
    }
  }

  void goOnAt(std::size_t offset) {
    m_library.goTo(offset);
    m_token = m_library.lexan();
  }

  static std::size_t endOf(const Section &section) {
    return section.definitions.empty() ? section.keyword.end
                                       : section.definitions.back().span.end;
  }

  // The library has come to a keyword that ends at `offset`.
  void reachSection(std::size_t offset) {
    if (skipSections(offset)) {
      return;
    }
    if (m_next == m_sections.size() ||
        m_sections[m_next].keyword.end != offset) {
      add(Code::kPhantom, offset - 1,
          "expected a section, found a word that is the keyword of one to the "
          "library alone");
      m_token = m_library.lexan();
      return;
    }
    const Section &section = m_sections[m_next++];
    const int opener = m_library.lexan();
    if (opener == '{') {
      checkBlock(section);
    } else if (opener == '=' && section.opener == '=') {
      checkSingle(section);
    } else {
      add(Code::kSectionOpener, section.keyword.end,
          "expected '=' or '{' behind " + std::string(section.spelling) +
              ", found " + openerOf(section, opener) +
              (opener == '=' ? "; the library reads one definition at most"
                             : "; the library gives the file up here"));
      checkApart(section);
    }
  }

  // What the library has found in the place of what opens the section.
  std::string openerOf(const Section &section, int token) const {
    if (token == '\r') {
      return "a carriage return";
    }
    // Where it is none to the grammar, either, the reading has a fault there.
    const auto fault = faultFrom(section.keyword.begin);
    if (fault == m_file.reading.faults.end()) {
      return "something else";
    }
    return fault->found;
  }

  // Reports the sections before `offset`, which the library has not noticed.
  bool skipSections(std::size_t offset) {
    bool any = false;
    while (m_next < m_sections.size() &&
           m_sections[m_next].keyword.end < offset) {
      skipSection(m_sections[m_next++]);
      any = true;
    }
    return any;
  }

  void skipSection(const Section &section) {
    const std::string_view bytes = m_file.text.bytes();
    const std::size_t end = section.keyword.end;
    const std::string effect =
        "; the library skips the section, definitions: " +
        std::to_string(section.definitions.size());
    if (!isKeyword(section.spelling)) {
      add(Code::kSectionSpelling, section.keyword.begin,
          std::string("expected ") + keywordOf(section.kind) + ", found " +
              std::string(section.spelling) + effect);
    } else if (end < bytes.size() && bytes[end] == '\t') {
      add(Code::kTab, end,
          "expected '=' or a blank behind " + std::string(section.spelling) +
              ", found a tab" + effect);
    } else if (end == bytes.size()) {
      add(Code::kNoNewline, section.keyword.begin,
          "expected a section, found its keyword alone");
    } else {
      add(Code::kUnreadable, section.keyword.begin,
          "expected a section to the library, found none" + effect);
    }
    checkApart(section);
  }

  // Lets the library read the definition, and compares.
  Agreement compare(const Definition &definition,
                    std::vector<Finding> *findings) {
    const Kept &kept =
        m_library.parse(definition.kind, definition.span.end + kFollowed);
    const Agreement agreement =
        m_comparison.compare(definition, kept, findings);
    if (!agreement.isThatDefinition) {
      m_view.lost.insert(&definition);
    } else if (!agreement.isExact) {
      std::vector<Field> &fields = m_view.kept[&definition];
      for (const FieldView &field : kept.fields) {
        fields.push_back(toField(field));
      }
    }
    return agreement;
  }

  // Checks the definitions of a section that the library does not come to.
  void checkApart(const Section &section) {
    for (const Definition &definition : section.definitions) {
      m_library.goTo(definition.span.begin);
      compare(definition, &m_view.findings);
      m_view.lost.insert(&definition);
    }
    goOnAt(endOf(section));
  }

  void checkSingle(const Section &section) {
    if (section.definitions.empty()) {
      add(Code::kSectionEmpty, section.keyword.begin,
          "expected a definition behind '=', found none; the library reads on "
          "for one");
      goOnAt(endOf(section));
      return;
    }
    check(section.definitions.front(), section.keyword.end);
  }

  void checkBlock(const Section &section) {
    std::size_t before = section.keyword.end;
    for (const Definition &definition : section.definitions) {
      check(definition, before);
      before = definition.span.end;
    }
    if (!section.closed) {
      add(Code::kSectionUnclosed, section.keyword.begin,
          "expected '}' at the end of the block of " +
              std::string(section.spelling) +
              ", found none; the library gives the file up here");
      goOnAt(endOf(section));
      return;
    }
    // Whatever stands before the closing brace is a definition to the library.
    while (m_token != '}') {
      const std::size_t at = m_library.offset() - 1;
      const Kept &kept = m_library.parse(section.kind, at + kFollowed);
      m_token = m_library.getCurrentToken();
      if (kept.end == Kept::End::kCutOff || kept.end == Kept::End::kEndless ||
          kept.end == Kept::End::kBeyond || !kept.fields.front().text.empty()) {
        add(Code::kPhantom, at,
            "expected '}' or a definition, found what is a definition to the "
            "library alone");
        goOnAt(endOf(section));
        return;
      }
    }
  }

  // Lets the library read the definition where it stands. What stands between
  // `before` and it, and is not layout, is part of it to the library.
  void check(const Definition &definition, std::size_t before) {
    std::vector<Finding> found;
    if (compare(definition, &found).isWhole) {
      m_token = m_library.getCurrentToken();
    } else {
      goOnAt(definition.span.end);
      blameGap(before, definition.span.begin, &found);
    }
    std::move(found.begin(), found.end(), std::back_inserter(m_view.findings));
  }

  // Where no cause of a difference is known, looks for it in the text before
  // the definition.
  void blameGap(std::size_t begin, std::size_t end,
                std::vector<Finding> *found) const {
    const auto knowsNoCause = [](const Finding &finding) {
      return finding.code == Code::kUnreadable ||
             finding.code == Code::kDiffers;
    };
    const auto rest =
        std::remove_if(found->begin(), found->end(), knowsNoCause);
    if (rest == found->end()) {
      return;
    }
    const auto stray = faultFrom(begin);
    const std::size_t carriageReturn = m_file.text.bytes().find('\r', begin);
    if (stray != m_file.reading.faults.end() && stray->at.begin < end) {
      found->erase(rest, found->end());
      found->push_back(findingAt(Code::kPhantom, m_file.text, stray->at.begin,
                                 "expected '(', found " + stray->found +
                                     ", which is part of the definition behind "
                                     "it to the library"));
    } else if (carriageReturn < end) {
      found->erase(rest, found->end());
      found->push_back(findingAt(
          Code::kCarriageReturn, m_file.text, carriageReturn,
          "expected '(', found a carriage return, which is part of the "
          "definition behind it to the library"));
    }
  }

  std::vector<Fault>::const_iterator faultFrom(std::size_t offset) const {
    const std::vector<Fault> &faults = m_file.reading.faults;
    return std::lower_bound(faults.begin(), faults.end(), offset,
                            [](const Fault &one, std::size_t begin) {
                              return one.at.begin < begin;
                            });
  }

  const StrictFile &m_file;
  const std::vector<Section> &m_sections;
  std::size_t m_next = 0;  // the section to come
  LibraryReader m_library;
  KeptComparison m_comparison;
  int m_token = 0;
  LibraryView m_view;
};

}  // namespace

LibraryView checkFile(const StrictFile &file) { return FileCheck(file).run(); }

}  // namespace schemacheck
