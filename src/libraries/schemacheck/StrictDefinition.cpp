#include "StrictDefinition.h"

namespace schemacheck {

namespace {

Span firstOf(Span span) { return {span.begin, span.begin + 1}; }

}  // namespace

// definition = "(" oid *clause ")"
Definition DefinitionReader::read(Kind kind, bool inBlock) {
  m_reader.begin(kind);
  Definition definition;
  definition.kind = kind;
  definition.span.begin = m_tokens.peek().span.begin;
  if (m_tokens.is('(')) {
    m_tokens.take();
  } else {
    m_reader.fault(FaultCode::kUnopened, m_tokens.peek().span,
                   "'(' at the start of the definition",
                   inWords(m_tokens.peek()));
  }
  readOid(&definition);
  while (!atEnd(kind, inBlock)) {
    if (m_tokens.isWord() || m_tokens.isQuoted() || m_tokens.is('(')) {
      m_clauses.push_back(m_reader.read());
    } else {
      m_reader.skipStray("a keyword or ')'");
    }
  }
  definition.clauses = m_store.clauses.take(&m_clauses);
  definition.closed = m_tokens.is(')');
  if (definition.closed) {
    m_tokens.take();
  } else {
    m_reader.fault(FaultCode::kUnclosed, firstOf(definition.span),
                   "')' at the end of the definition",
                   inWords(m_tokens.peek()));
  }
  definition.span.end = m_tokens.end();
  return definition;
}

void DefinitionReader::readOid(Definition *definition) {
  if (m_reader.atValue() && !m_tokens.beginsClause(definition->kind)) {
    definition->oid =
        m_reader.valueOf(m_tokens.take(), ClauseReader::Style::kOids, "'('");
  } else {
    m_reader.fault(FaultCode::kOidMissing, firstOf(definition->span),
                   "an OID behind '('", inWords(m_tokens.peek()));
  }
}

// A ")" before another clause is one too many, and so is one that belongs to a
// list without "(".
bool DefinitionReader::atEnd(Kind kind, bool inBlock) {
  if (!m_tokens.is(')')) {
    return m_reader.endsDefinition() || m_tokens.beginsDefinition(kind) ||
           (inBlock && m_tokens.is('(') &&
            m_tokens.peek(1).type == Token::Type::kNumber);
  }
  return !(m_tokens.isKeyword(kind, 1) && m_tokens.beginsClause(kind, 1)) &&
         !(m_reader.lacksOpening() && m_tokens.is(')', 1));
}

}  // namespace schemacheck
