#include "model/Scanner.h"

#include <utility>

namespace model {

namespace {

struct Keyword {
  const char *text;
  int code;
};

constexpr int kKeywordCount = 25;

// In the order of their indexes.
constexpr Keyword kKeywords[kKeywordCount] = {
    {"objectclasses", kObjectClasses},
    {"NAME", kName},
    {"DESC", kDesc},
    {"SUP", kSup},
    {"AUXILIARY", kAuxiliary},
    {"MUST", kMust},
    {"MAY", kMay},
    {"STRUCTURAL", kStructural},
    {"attributetypes", kAttributeTypes},
    {"EQUALITY", kEquality},
    {"SYNTAX", kSyntax},
    {"SINGLE-VALUE", kSingleValue},
    {"USAGE", kUsage},
    {"NO-USER-MODIFICATION", kNoUserModification},
    {"QORAttributetypes", kQorAttributeTypes},
    {"ACCESS-CLASS", kAccessClass},
    {"DBNAME", kDbName},
    {"SUBSTR", kSubstr},
    {"REVERSE", kReverse},
    {"ORDERING", kOrdering},
    {"COLLECTIVE", kCollective},
    {"OBSOLETE", kObsolete},
    {"ABSTRACT", kAbstract},
    {"LENGTH", kLength},
    {"APPROX", kApprox},
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isPunctuation(char c) {
  return c > ' ' && c < 127 && !isDigit(c) && !isLetter(c);
}

bool isInWord(char c) {
  return isLetter(c) || isDigit(c) || c == '_' || c == '-' || c == '\t';
}

bool isInString(char c) {
  return isInWord(c) || c == ' ' || (isPunctuation(c) && c != '\'');
}

}  // namespace

Scanner::Scanner(std::string text, Trace *trace)
    : m_text(std::move(text)), m_trace(trace) {}

int Scanner::lexan() {
  const Operation operation(m_trace, 0x53040200);
  return operation.result(scan());
}

void Scanner::match(int token) {
  const Operation operation(m_trace, 0x53040300);
  if (m_current == token) {
    m_current = lexan();
  }
  operation.result(0);
}

std::string Scanner::text() const {
  if (m_index == -1) {
    return "";
  }
  return m_index < kKeywordCount ? kKeywords[m_index].text : m_entry;
}

bool Scanner::read() {
  if (m_at == m_text.size()) {
    m_end = true;
    return false;
  }
  m_c = m_text[m_at];
  ++m_at;
  return true;
}

int Scanner::scan() {
  if (!skipLayout()) {
    m_index = -1;
    return kDone;
  }
  if (isDigit(m_c)) {
    return number();
  }
  if (isLetter(m_c) || m_c == '\'' || m_c == '-') {
    return word();
  }
  m_index = -1;
  m_current = static_cast<unsigned char>(m_c);
  return m_current;
}

// False when there is nothing but layout.
bool Scanner::skipLayout() {
  while (read()) {
    if (m_c == '\n') {
      ++m_line;
    } else if (m_c == '#') {
      while (read() && m_c != '\n') {
      }
      ++m_line;
    } else if (m_c != ' ' && m_c != '\t') {
      return true;
    }
  }
  return false;
}

int Scanner::number() {
  std::string word;
  while (!m_end && (isDigit(m_c) || m_c == '.')) {
    word += m_c;
    read();
  }
  while (!m_end && m_c == ' ') {
    read();
  }
  int code = kNumber;
  if (!m_end && m_c == '{') {
    code = kNumberBad;
    word += m_c;
    read();
    if (isDigit(m_c)) {
      while (!m_end && isDigit(m_c)) {
        word += m_c;
        read();
      }
      if (m_c == '}') {
        word += m_c;
        read();
        code = kNumberLen;
      }
    }
  }
  if (m_end) {
    return kDone;
  }
  --m_at;
  return resolve(word, code);
}

int Scanner::word() {
  const bool quoted = m_c == '\'';
  if (quoted) {
    read();
  }
  std::string word;
  while (!m_end && (quoted ? isInString(m_c) : isInWord(m_c))) {
    word += m_c;
    read();
  }
  if (quoted) {
    read();
  }
  if (m_end) {
    return kDone;
  }
  --m_at;
  if (word == "objectClasses") {
    return resolve("objectclasses", kId);
  }
  if (word == "attributeTypes") {
    return resolve("attributetypes", kId);
  }
  if (word == "QORattributeTypes") {
    return resolve("QORAttributetypes", kId);
  }
  return resolve(word, kId);
}

// Makes `word` the current token: a keyword, what was scanned last with the
// code that it got then, or else a new one with this code.
int Scanner::resolve(const std::string &word, int code) {
  m_index = find(word);
  if (m_index == -1) {
    m_hasEntry = true;
    m_entry = word;
    m_entryCode = code;
    m_index = kKeywordCount;
  }
  m_current = m_index < kKeywordCount ? kKeywords[m_index].code : m_entryCode;
  return m_current;
}

int Scanner::find(const std::string &word) const {
  for (int i = 0; i < kKeywordCount; ++i) {
    if (word == kKeywords[i].text) {
      return i;
    }
  }
  return m_hasEntry && word == m_entry ? kKeywordCount : -1;
}

}  // namespace model
