#include "LibraryReader.h"

namespace schemacheck {

namespace {

constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

// Thrown out of a parse that has passed the limit.
struct BeyondLimit {};

}  // namespace

LibraryReader::LibraryReader(std::string_view text)
    : GuardedLexan("", ""), m_limit(kNoLimit), m_line(std::ios::out) {
  closeFile();  // there was none
  m_text.setText(text);
  readFrom(&m_text);
  static_cast<std::ios &>(m_writer).rdbuf(&m_line);
}

void LibraryReader::setText(std::string_view text) {
  m_text.setText(text);
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
void LibraryReader::parseInto(Definition *definition, int keyword) {
  static const Definition kEmpty;
  *definition = kEmpty;
  m_kept.end = Kept::End::kElsewhere;
  m_kept.closing = 0;
  beginDefinition(keyword);
  try {
    if (definition->parse(this) == 0) {
      m_kept.end = Kept::End::kCutOff;
    }
  } catch (const EndlessReading &) {
    m_kept.end = Kept::End::kEndless;
  } catch (const BeyondLimit &) {
    m_kept.end = Kept::End::kBeyond;
  }
  m_limit = kNoLimit;
  // A parse reads one token more than the parenthesis that ends it.
  for (const Closing &closing : {m_closing, m_closingBefore}) {
    if (m_kept.end == Kept::End::kElsewhere && closing.count != 0 &&
        closing.count + 1 == m_count) {
      m_kept.end = Kept::End::kClosed;
      m_kept.closing = closing.offset;
    }
  }
  viewFields(*definition, &m_kept.fields);
}

const Kept &LibraryReader::parse(Kind kind, std::size_t limit) {
  m_limit = limit;
  switch (kind) {
    case Kind::kAttributeType:
      parseInto(&m_type, TOK_ATTRIBUTETYPES);
      break;
    case Kind::kObjectClass:
      parseInto(&m_class, TOK_OBJECTCLASSES);
      break;
    default:  // Kind::kStorage
      parseInto(&m_storage, TOK_QORATTRIBUTETYPES);
      break;
  }
  return m_kept;
}

std::string LibraryReader::line(Kind kind) {
  m_line.str("");
  switch (kind) {
    case Kind::kAttributeType:
      m_type.dump(m_writer);
      break;
    case Kind::kObjectClass:
      m_class.dump(m_writer);
      break;
    default:  // Kind::kStorage
      m_storage.dump(m_writer);
      break;
  }
  return m_line.str();
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
