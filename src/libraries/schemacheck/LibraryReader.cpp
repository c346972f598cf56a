#include "LibraryReader.h"

#include "Attribute.h"
#include "ObjectClass.h"
#include "QORAttribute.h"

namespace schemacheck {

namespace {

constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

// Thrown out of a parse that has passed the limit.
struct BeyondLimit {};

}  // namespace

LibraryReader::LibraryReader(const std::string &text)
    : GuardedLexan("", ""),
      m_text(text, std::ios::in),
      m_limit(kNoLimit),
      m_line(std::ios::out) {
  closeFile();  // there was none
  readFrom(&m_text);
  static_cast<std::ios &>(m_writer).rdbuf(&m_line);
}

void LibraryReader::setText(const std::string &text) {
  m_text.str(text);
  goTo(0);
}

int LibraryReader::lexan() {
  const int token = GuardedLexan::lexan();
  ++m_count;
  if (m_limit != kNoLimit && offset() > m_limit) {
    throw BeyondLimit();
  }
  if (token == ')') {
    m_closingBefore = m_closing;
    m_closing = {m_count, offset()};
  }
  return token;
}

template <class Definition>
Kept LibraryReader::parseAs(int keyword) {
  Definition definition;
  Kept kept{Kept::End::kElsewhere, 0, {}, ""};
  beginDefinition(keyword);
  try {
    if (definition.parse(this) == 0) {
      kept.end = Kept::End::kCutOff;
    }
  } catch (const EndlessReading &) {
    kept.end = Kept::End::kEndless;
  } catch (const BeyondLimit &) {
    kept.end = Kept::End::kBeyond;
  }
  m_limit = kNoLimit;
  // A parse reads one token more than the parenthesis that ends it.
  for (const Closing &closing : {m_closing, m_closingBefore}) {
    if (kept.end == Kept::End::kElsewhere && closing.count != 0 &&
        closing.count + 1 == m_count) {
      kept.end = Kept::End::kClosed;
      kept.closing = closing.offset;
    }
  }
  kept.fields = fieldsOf(definition);
  m_line.str("");
  definition.dump(m_writer);
  kept.line = m_line.str();
  return kept;
}

Kept LibraryReader::parse(Kind kind, std::size_t limit) {
  m_limit = limit;
  switch (kind) {
    case Kind::kAttributeType:
      return parseAs<Attribute>(TOK_ATTRIBUTETYPES);
    case Kind::kObjectClass:
      return parseAs<ObjectClass>(TOK_OBJECTCLASSES);
    case Kind::kStorage:
      break;
  }
  return parseAs<QORAttribute>(TOK_QORATTRIBUTETYPES);
}

std::size_t LibraryReader::offset() {
  return static_cast<std::size_t>(position());
}

void LibraryReader::goTo(std::size_t offset) {
  reposition(static_cast<std::streamoff>(offset), 1);
}

int LibraryReader::scan(std::size_t offset) {
  beginDefinition(TOK_DONE);  // outside of all definitions
  goTo(offset);
  return lexan();
}

}  // namespace schemacheck
