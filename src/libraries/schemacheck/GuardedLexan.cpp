#include "GuardedLexan.h"

namespace schemacheck {

namespace {

// A parse that ends does so within a few tokens of the end of the file.
constexpr int kEndsAllowed = 16;

bool takesValue(int token) {
  switch (token) {
    case TOK_DESC:
    case TOK_SUP:
    case TOK_EQUALITY:
    case TOK_ORDERING:
    case TOK_SUBSTR:
    case TOK_SYNTAX:
    case TOK_USAGE:
      return true;
    default:
      return false;
  }
}

bool endsNames(int token) {
  return takesValue(token) || token == TOK_OBSOLETE ||
         token == TOK_NO_USER_MODIFICATION || token == TOK_COLLECTIVE ||
         token == TOK_SINGLE_VALUE;
}

bool endsDefinition(int token) {
  return token == ')' || token == '}' || token == TOK_DONE ||
         token == TOK_ATTRIBUTETYPES || token == TOK_OBJECTCLASSES ||
         token == TOK_QORATTRIBUTETYPES;
}

}  // namespace

void GuardedLexan::beginDefinition(int keyword) {
  m_state = keyword == TOK_ATTRIBUTETYPES ? State::kField : State::kOutside;
  // In a block, the "(" of all definitions but the first is the current token.
  m_begins = getCurrentToken() != '(';
  m_definitionLine = getLineNumber();
}

int GuardedLexan::lexan() {
  const int token = SchemaLexan::lexan();
  if (m_begins && token != TOK_DONE) {
    m_begins = false;
    m_definitionLine = getLineNumber();
  }
  m_ends = token == TOK_DONE ? m_ends + 1 : 0;
  if (m_ends > kEndsAllowed) {
    throw EndlessReading(
        "expected another field behind a list of names, found the end of the "
        "file");
  }
  follow(token);
  return token;
}

void GuardedLexan::follow(int token) {
  if (m_state == State::kNames && endsNames(token)) {
    m_state = State::kField;
  }
  switch (m_state) {
    case State::kOutside:
    case State::kNames:
      break;
    case State::kValue:
      m_state = State::kField;
      break;
    case State::kName:
      m_state = State::kNames;
      break;
    default:  // State::kField
      if (token == TOK_COLLECTIVE) {
        throw EndlessReading(
            "COLLECTIVE is not supported in an attribute type");
      }
      if (token == TOK_NAME) {
        m_state = State::kName;
      } else if (takesValue(token)) {
        m_state = State::kValue;
      } else if (endsDefinition(token)) {
        m_state = State::kOutside;
      }
      break;
  }
}

}  // namespace schemacheck
