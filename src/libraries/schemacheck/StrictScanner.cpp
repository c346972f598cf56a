#include "StrictScanner.h"

#include <algorithm>
#include <array>
#include <utility>

#include "StrictGrammar.h"

namespace schemacheck {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kNoWord = "()$'\"{}=# \t\r\n";

constexpr bool isBlank(char c) { return c == ' ' || c == '\t'; }

constexpr bool isLayout(char c) { return isBlank(c) || c == '\r' || c == '\n'; }

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

// What an apostrophe stands between.
bool isTextCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || isDigit(c) ||
         c == '-' || static_cast<unsigned char>(c) >= 128;
}

// By the byte, whether a word goes on with it.
constexpr std::array<bool, 256> kGoesOn = [] {
  std::array<bool, 256> goesOn{};
  for (std::size_t byte = 0; byte < goesOn.size(); ++byte) {
    goesOn[byte] = kNoWord.find(static_cast<char>(byte)) == kNoWord.npos;
  }
  return goesOn;
}();

// Digits and dots, and a digit among them.
bool isNumber(std::string_view word) {
  bool hasDigit = false;
  for (const char c : word) {
    if (isDigit(c)) {
      hasDigit = true;
    } else if (c != '.') {
      return false;
    }
  }
  return hasDigit;
}

}  // namespace

StrictScanner::StrictScanner(std::string_view text, std::size_t offset)
    : m_text(text), m_offset(offset) {
  const std::size_t mark = kByteOrderMark.size();
  if (offset == 0 && text.substr(0, mark) == kByteOrderMark) {
    m_offset = mark;
  }
}

Token StrictScanner::next() {
  m_offset = skipLayout(m_offset);
  if (m_offset == m_text.size()) {
    return finish(Token::Type::kEnd, m_offset, "");
  }
  switch (m_text[m_offset]) {
    case '\'':
      return scanQuoted();
    case '"':
      return scanDoubleQuoted();
    case '(':
    case ')':
    case '$':
    case '=':
    case '{':
    case '}':
    case ':':
      return finish(Token::Type::kCharacter, m_offset + 1,
                    m_text.substr(m_offset, 1));
    default:
      return scanRun();
  }
}

char StrictScanner::at(std::size_t offset) const {
  return offset < m_text.size() ? m_text[offset] : '\0';
}

// The end of the line, before the carriage return if there is one.
std::size_t StrictScanner::lineEnd(std::size_t offset) const {
  const std::size_t newline = m_text.find('\n', offset);
  if (newline == m_text.npos) {
    return m_text.size();
  }
  return newline > offset && m_text[newline - 1] == '\r' ? newline - 1
                                                         : newline;
}

// The first line feed from `begin` on; `end` if there is none before that.
std::size_t StrictScanner::newlineIn(std::size_t begin, std::size_t end) const {
  const std::size_t newline = m_text.substr(begin, end - begin).find('\n');
  return newline == m_text.npos ? end : begin + newline;
}

std::size_t StrictScanner::skipBlanks(std::size_t offset) const {
  while (isBlank(at(offset))) {
    ++offset;
  }
  return offset;
}

std::size_t StrictScanner::skipLayout(std::size_t offset) const {
  while (offset < m_text.size()) {
    const char c = m_text[offset];
    if (c == '#') {
      offset = lineEnd(offset);
    } else if (isLayout(c)) {
      ++offset;
    } else {
      break;
    }
  }
  return offset;
}

std::size_t StrictScanner::wordEnd(std::size_t offset) const {
  while (offset < m_text.size() &&
         kGoesOn[static_cast<unsigned char>(m_text[offset])]) {
    ++offset;
  }
  return offset;
}

std::string_view StrictScanner::wordAt(std::size_t offset) const {
  return m_text.substr(offset, wordEnd(offset) - offset);
}

Token StrictScanner::finish(Token::Type type, std::size_t end,
                            std::string_view text) {
  const Token token{type, {m_offset, end}, text, true};
  m_offset = end;
  return token;
}

std::string_view StrictScanner::keep(std::string text) {
  m_texts.push_front(std::move(text));
  return m_texts.front();
}

Token StrictScanner::scanQuoted() {
  const std::size_t begin = m_offset + 1;
  if (m_stringEnd <= m_offset) {
    findStringEnd(begin);
  }
  if (m_stringCloses) {
    return finish(Token::Type::kQuoted, m_stringEnd + 1,
                  m_text.substr(begin, m_stringEnd - begin));
  }
  const std::size_t end = lineEnd(begin);
  Token token =
      finish(Token::Type::kQuoted, end, m_text.substr(begin, end - begin));
  token.intact = false;
  return token;
}

void StrictScanner::findStringEnd(std::size_t offset) {
  while (true) {
    const std::size_t quote =
        std::min(m_text.find('\'', offset), m_text.size());
    for (std::size_t newline = newlineIn(offset, quote); newline < quote;
         newline = newlineIn(newline + 1, quote)) {
      if (beginsGrammar(newline + 1)) {
        m_stringEnd = newline;
        m_stringCloses = false;
        return;
      }
    }
    if (quote == m_text.size() || !isApostrophe(quote)) {
      m_stringEnd = quote;
      m_stringCloses = quote < m_text.size();
      return;
    }
    offset = quote + 1;
  }
}

// A keyword directly behind a quote has only lost its blank.
bool StrictScanner::isApostrophe(std::size_t quote) const {
  return isTextCharacter(at(quote - 1)) && isTextCharacter(at(quote + 1)) &&
         !isClauseKeyword(wordAt(quote + 1));
}

bool StrictScanner::beginsGrammar(std::size_t lineStart) const {
  const std::size_t begin = skipBlanks(lineStart);
  if (at(begin) == '(') {
    return beginsDefinition(begin);
  }
  const std::string_view word = wordAt(begin);
  std::size_t next = skipBlanks(begin + word.size());
  if (const auto section = sectionForm(word)) {
    return section->plural && (at(next) == '=' || at(next) == '{');
  }
  if (at(next) == '(') {
    next = skipBlanks(next + 1);
  }
  return isClauseKeyword(word) && at(next) == '\'';
}

bool StrictScanner::beginsDefinition(std::size_t parenthesis) const {
  const std::size_t begin = skipBlanks(parenthesis + 1);
  const std::string_view oid = wordAt(begin);
  return isNumber(oid) &&
         isClauseKeyword(wordAt(skipLayout(begin + oid.size())));
}

Token StrictScanner::scanDoubleQuoted() {
  const std::size_t begin = m_offset + 1;
  const std::size_t end = m_text.find_first_of("\"\n", begin);
  if (at(end) != '"') {
    return finish(Token::Type::kCharacter, begin, "\"");
  }
  return finish(Token::Type::kDoubleQuoted, end + 1,
                m_text.substr(begin, end - begin));
}

// A number or a word. A colon at the end is none of it: the files of others
// have it behind the keyword of a section.
Token StrictScanner::scanRun() {
  std::string_view run = wordAt(m_offset);
  while (run.back() == ':') {
    run.remove_suffix(1);
  }
  const bool number = isNumber(run);
  Token token = finish(number ? Token::Type::kNumber : Token::Type::kWord,
                       m_offset + run.size(), run);
  if (number) {
    scanLength(&token);
  }
  return token;
}

// "{", digits and "}", also behind blanks. Something else in braces, and a
// brace directly behind the number without another, can only be a length that
// is damaged.
void StrictScanner::scanLength(Token *number) {
  const std::size_t open = skipBlanks(m_offset);
  if (at(open) != '{') {
    return;
  }
  const std::size_t begin = skipBlanks(open + 1);
  std::string_view length = wordAt(begin);
  std::size_t end = skipBlanks(begin + length.size());
  const bool closed = at(end) == '}';
  if (closed) {
    ++end;
  } else if (open == m_offset) {
    length = wordAt(open + 1);
    end = open + 1 + length.size();
  } else {
    return;
  }
  const std::size_t size = length.size() + (closed ? 2 : 1);
  if (end == m_offset + size) {
    number->text = m_text.substr(number->span.begin, end - number->span.begin);
  } else {
    number->text =
        keep(std::string(number->text).append("{").append(length).append("}"));
  }
  number->intact = closed && end - open == length.size() + 2 &&
                   !length.empty() &&
                   std::all_of(length.begin(), length.end(), isDigit);
  number->span.end = end;
  m_offset = end;
}

}  // namespace schemacheck
