#include "LibraryReader.h"

#include "Attribute.h"
#include "ObjectClass.h"
#include "QORAttribute.h"

namespace schemacheck {

int LibraryReader::lexan() {
  const int token = GuardedLexan::lexan();
  ++m_count;
  if (token == ')') {
    m_closingBefore = m_closing;
    m_closing = {m_count, offset()};
  }
  return token;
}

template <class Definition>
Kept LibraryReader::parseAs(int keyword) {
  Definition definition;
  Kept kept{Kept::End::kElsewhere, 0, {}};
  beginDefinition(keyword);
  try {
    if (definition.parse(this) == 0) {
      kept.end = Kept::End::kCutOff;
    }
  } catch (const EndlessReading &) {
    kept.end = Kept::End::kEndless;
  }
  // A parse reads one token more than the parenthesis that ends it.
  for (const Closing &closing : {m_closing, m_closingBefore}) {
    if (kept.end == Kept::End::kElsewhere && closing.count != 0 &&
        closing.count + 1 == m_count) {
      kept.end = Kept::End::kClosed;
      kept.closing = closing.offset;
    }
  }
  kept.fields = fieldsOf(definition);
  return kept;
}

Kept LibraryReader::parse(Kind kind) {
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
