#include "StrictReader.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "StrictDefinition.h"
#include "StrictGrammar.h"
#include "StrictTokens.h"

namespace schemacheck {

namespace {

class FileReader {
 public:
  explicit FileReader(const SourceText &text)
      : m_text(text),
        m_tokens(text.bytes()),
        m_definition(&m_tokens, &m_reading) {}

  // file = *( section / stray )
  Reading run() {
    while (m_tokens.peek().type != Token::Type::kEnd) {
      if (const auto form = nextSection()) {
        m_reading.sections.push_back(readSection(form->kind));
      } else if (atDefinitionOutside()) {
        skipDefinition();
      } else {
        skipStray(nullptr);
      }
    }
    m_reading.end = m_tokens.textEnd();
    m_reading.store.bytes = m_text.sharedBytes();
    m_reading.store.texts = m_tokens.takeTexts();
    // What is missing is found later than what comes before its end.
    std::stable_sort(
        m_reading.faults.begin(), m_reading.faults.end(),
        [](const Fault &a, const Fault &b) { return a.at.begin < b.at.begin; });
    return std::move(m_reading);
  }

 private:
  // What the next token begins. Outside of a section the keyword of another
  // needs nothing behind it.
  std::optional<SectionForm> nextSection() {
    if (m_tokens.peek().type != Token::Type::kWord) {
      return std::nullopt;
    }
    const auto form = sectionForm(m_tokens.peek().text);
    const bool begins =
        form && (form->plural || m_tokens.is('(', 1) || m_tokens.is('=', 1) ||
                 m_tokens.is('{', 1) || m_tokens.is(':', 1));
    return begins ? form : std::nullopt;
  }

  // section = keyword ( "=" definition / "{" *definition "}" )
  Section readSection(Kind kind) {
    const Token word = m_tokens.take();
    Section section;
    section.kind = kind;
    section.keyword = word.span;
    section.spelling = word.text;
    if (m_tokens.is('=') && m_tokens.is('{', 1)) {
      m_tokens.take();
      fault(FaultCode::kSectionOpener, section.keyword,
            "either '=' or '{' behind " + std::string(section.spelling),
            "both");
    }
    if (m_tokens.is('{')) {
      readBlock(&section);
    } else {
      readSingle(&section);
    }
    section.definitions = m_reading.store.definitions.take(&m_definitions);
    return section;
  }

  void readSingle(Section *section) {
    if (m_tokens.is('=')) {
      section->opener = '=';
      m_tokens.take();
    } else {
      fault(FaultCode::kSectionOpener, section->keyword,
            "'=' or '{' behind " + std::string(section->spelling),
            inWords(m_tokens.peek()));
    }
    if (m_tokens.is('(', 1) && (m_tokens.is(':') || m_tokens.is('='))) {
      if (section->opener != 0) {
        fault(FaultCode::kStray, m_tokens.peek().span, "'(' behind '='",
              inWords(m_tokens.peek()));
      }
      m_tokens.take();
    }
    if (m_tokens.is('(') ||
        (section->opener != 0 && m_tokens.beginsBody(section->kind))) {
      readDefinition(*section);
    } else if (section->opener != 0) {
      fault(FaultCode::kDefinitionMissing, section->keyword, "'(' behind '='",
            inWords(m_tokens.peek()));
    }
  }

  void readBlock(Section *section) {
    section->opener = '{';
    m_tokens.take();
    while (!m_tokens.is('}')) {
      if (m_tokens.peek().type == Token::Type::kEnd ||
          m_tokens.beginsSection()) {
        section->closed = false;
        fault(
            FaultCode::kSectionUnclosed, section->keyword,
            "'}' at the end of the block of " + std::string(section->spelling),
            inWords(m_tokens.peek()));
        return;
      }
      if (m_tokens.is('(') || atDefinition(section->kind)) {
        readDefinition(*section);
      } else {
        skipStray(section);
      }
    }
    m_tokens.take();
  }

  void readDefinition(const Section &section) {
    m_definitions.push_back(
        m_definition.read(section.kind, section.opener == '{'));
  }

  // Whether a definition begins in the stray text of a block.
  bool atDefinition(Kind kind) {
    return m_tokens.beginsBody(kind) || m_tokens.beginsDefinition(kind) ||
           (m_tokens.is('(') && m_tokens.peek(1).type == Token::Type::kNumber);
  }

  bool atDefinitionOutside() {
    const Token &oid = m_tokens.peek(1);
    return m_tokens.beginsNamedDefinition() ||
           m_tokens.beginsDefinition(Kind::kAttributeType) ||
           m_tokens.beginsDefinition(Kind::kObjectClass) ||
           m_tokens.beginsDefinition(Kind::kStorage) ||
           (m_tokens.is('(') && oid.type == Token::Type::kNumber &&
            oid.text.find('.') != oid.text.npos);
  }

  // Skips a definition without a section, up to where it ends or the next
  // begins.
  void skipDefinition() {
    const std::size_t begin = m_tokens.peek().span.begin;
    int depth = 0;
    do {
      depth += m_tokens.is('(') ? 1 : 0;
      depth -= m_tokens.is(')') ? 1 : 0;
      m_tokens.take();
    } while (depth > 0 && m_tokens.peek().type != Token::Type::kEnd &&
             !m_tokens.beginsSection() && !m_tokens.beginsNamedDefinition());
    fault(FaultCode::kDefinitionOutside, {begin, m_tokens.end()},
          "the keyword of a section before the definition", "'('");
  }

  // Skips what belongs to nothing, in the block of a section or outside of all.
  void skipStray(const Section *section) {
    const Token first = m_tokens.take();
    while (m_tokens.peek().type != Token::Type::kEnd &&
           !(section == nullptr
                 ? nextSection() || atDefinitionOutside()
                 : m_tokens.is('}') || m_tokens.beginsSection() ||
                       atDefinition(section->kind))) {
      m_tokens.take();
    }
    const int line = m_text.position(first.span.begin).line;
    if (line != m_strayLine) {
      fault(FaultCode::kStray, {first.span.begin, m_tokens.end()},
            section == nullptr ? "the keyword of a section" : "'(' or '}'",
            inWords(first));
    }
    m_strayLine = m_text.position(m_tokens.end()).line;
  }

  void fault(FaultCode code, Span at, std::string expected, std::string found) {
    m_reading.faults.push_back(
        {code, at, std::move(expected), std::move(found)});
    if (m_reading.faults.size() >= kMostFaults) {
      m_tokens.stop();
    }
  }

  const SourceText &m_text;
  StrictTokens m_tokens;
  Reading m_reading;
  DefinitionReader m_definition;
  std::vector<Definition> m_definitions;  // of the section that is being read
  int m_strayLine = 0;  // that of the end of the last stray text
};

}  // namespace

const Clause *Definition::find(std::string_view keyword) const {
  const auto found = std::find_if(
      clauses.begin(), clauses.end(),
      [keyword](const Clause &clause) { return clause.keyword == keyword; });
  return found == clauses.end() ? nullptr : &*found;
}

Reading readStrictly(const SourceText &text) { return FileReader(text).run(); }

}  // namespace schemacheck
