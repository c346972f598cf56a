#include "StrictTokens.h"

#include <algorithm>

#include "StrictGrammar.h"

namespace schemacheck {

namespace {

constexpr std::size_t kLongestText = 40;

// The first line of `text`, or as much of it as fits into a message.
std::string shortened(std::string_view text) {
  std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
  if (end > kLongestText) {
    end = kLongestText;
    // Not in the middle of a character in UTF-8.
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
      --end;
    }
  }
  return std::string(text.substr(0, end)) + (end < text.size() ? "..." : "");
}

}  // namespace

std::string inWords(const Token &token) {
  switch (token.type) {
    case Token::Type::kEnd:
      return "the end of the file";
    case Token::Type::kWord:
      return "the word '" + shortened(token.text) + "'";
    case Token::Type::kNumber:
      return "the number " + shortened(token.text);
    case Token::Type::kQuoted:
      return "the text '" + shortened(token.text) + "'";
    case Token::Type::kDoubleQuoted:
      return "the text \"" + shortened(token.text) + "\"";
    default:  // Token::Type::kCharacter
      return "'" + std::string(token.text) + "'";
  }
}

void StrictTokens::scan() {
  Token &token = m_ahead[(m_first + m_count++) % m_ahead.size()];
  if (m_stopped) {
    token = Token();
    token.span = {m_textEnd, m_textEnd};
  } else {
    token = m_scanner.next();
  }
}

void StrictTokens::stop() {
  if (!m_stopped) {
    m_stopped = true;
    m_textEnd = m_count == 0 ? m_end : peek(m_count - 1).span.end;
  }
}

Token StrictTokens::take() {
  const Token token = peek();
  m_first = (m_first + 1) % m_ahead.size();
  --m_count;
  m_end = token.span.end;
  return token;
}

bool StrictTokens::isWord(std::size_t i) {
  const Token::Type type = peek(i).type;
  return type == Token::Type::kWord || type == Token::Type::kNumber;
}

bool StrictTokens::isQuoted(std::size_t i) {
  const Token::Type type = peek(i).type;
  return type == Token::Type::kQuoted || type == Token::Type::kDoubleQuoted;
}

bool StrictTokens::isKeyword(Kind kind, std::size_t i) {
  if (peek(i).type != Token::Type::kWord) {
    return false;
  }
  const auto form = clauseForm(kind, peek(i).text);
  return form && form->known && form->exact;
}

bool StrictTokens::beginsClause(Kind kind, std::size_t i) {
  if (peek(i).type != Token::Type::kWord) {
    return false;
  }
  const auto form = clauseForm(kind, peek(i).text);
  if (!form || !form->known) {
    return false;
  }
  switch (form->takes) {
    case Takes::kNothing:
      return form->exact && !is('$', i + 1);
    case Takes::kNames:
    case Takes::kExtensions:
    case Takes::kText:
      return isQuoted(i + 1) || is('(', i + 1);
    case Takes::kOids:
      return is('(', i + 1) || (form->exact && isWord(i + 1));
    default:  // one value without quotes
      return form->exact && isWord(i + 1);
  }
}

bool StrictTokens::beginsDefinition(Kind kind, std::size_t i) {
  return is('(', i) && beginsBody(kind, i + 1);
}

bool StrictTokens::beginsBody(Kind kind, std::size_t i) {
  if (peek(i).type == Token::Type::kNumber) {
    return isKeyword(kind, i + 1);
  }
  return peek(i).type == Token::Type::kWord &&
         ((isKeyword(kind, i) && isQuoted(i + 1)) ||
          (!isKeyword(kind, i) && isKeyword(kind, i + 1) &&
           beginsClause(kind, i + 1)));
}

bool StrictTokens::beginsNamedDefinition(std::size_t i) {
  if (!is('(', i) || !isWord(i + 1)) {
    return false;
  }
  const std::string_view keyword = peek(i + 2).text;
  return peek(i + 2).type == Token::Type::kWord &&
         (keyword == "NAME" || keyword == "DBNAME") &&
         (isQuoted(i + 3) || is('(', i + 3));
}

bool StrictTokens::beginsSection(std::size_t i) {
  if (peek(i).type != Token::Type::kWord) {
    return false;
  }
  const auto form = sectionForm(peek(i).text);
  if (!form) {
    return false;
  }
  if (is('=', i + 1) || is('{', i + 1)) {
    return true;
  }
  const std::size_t definition = i + (is(':', i + 1) ? 2 : 1);
  return beginsDefinition(form->kind, definition);
}

}  // namespace schemacheck
