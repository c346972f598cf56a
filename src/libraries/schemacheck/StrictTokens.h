// The tokens of a schema file, with a look ahead at what they begin.
#ifndef SCHEMACHECK_STRICTTOKENS_H_
#define SCHEMACHECK_STRICTTOKENS_H_

#include <array>
#include <cstddef>
#include <forward_list>
#include <string>
#include <string_view>
#include <utility>

#include "StrictReader.h"
#include "StrictScanner.h"

namespace schemacheck {

// A token in a fault's text: "'$'", "the word 'cn'", "the end of the file". A
// long text is cut.
std::string inWords(const Token &token);

// The questions below look at the token `i` tokens behind the next one. None
// looks more than five tokens ahead.
class StrictTokens {
 public:
  explicit StrictTokens(std::string_view text)
      : m_scanner(text), m_textEnd(text.size()) {}

  // The token after `i` others; valid until it is taken.
  const Token &peek(std::size_t i = 0) {
    while (m_count <= i) {
      scan();
    }
    return m_ahead[(m_first + i) % m_ahead.size()];
  }

  // Removes the next token.
  Token take();

  // Holds a text for the reader; see StrictScanner.h.
  std::string_view keep(std::string text) {
    return m_scanner.keep(std::move(text));
  }
  std::forward_list<std::string> takeTexts() { return m_scanner.takeTexts(); }

  // Lets the text end behind the tokens that were looked at already.
  void stop();

  // Where the text ends, so far as it was stopped.
  std::size_t textEnd() const { return m_textEnd; }

  // Where the token taken last ends.
  std::size_t end() const { return m_end; }

  bool is(char character, std::size_t i = 0) { return peek(i).is(character); }
  bool isWord(std::size_t i = 0);
  bool isQuoted(std::size_t i = 0);  // in quotes of either kind

  // A keyword of a definition of this kind, exactly as it is spelled.
  bool isKeyword(Kind kind, std::size_t i = 0);

  // A keyword in any case and what must follow it; one in upper case may be
  // followed by what is less certain. A name such as "name" or "desc" in a list
  // is none.
  bool beginsClause(Kind kind, std::size_t i = 0);

  // "(", an OID and a keyword; a name for an OID only in front of a clause.
  bool beginsDefinition(Kind kind, std::size_t i = 0);

  // What follows the "(" of a definition: an OID and a keyword.
  bool beginsBody(Kind kind, std::size_t i = 0);

  // "(", an OID and names, which is no list of values either.
  bool beginsNamedDefinition(std::size_t i = 0);

  // The keyword of a section, and "=", "{" or a definition behind it.
  bool beginsSection(std::size_t i = 0);

 private:
  void scan();

  StrictScanner m_scanner;
  // The tokens scanned and not yet taken: how many, and the place of the first.
  // Those behind it follow, and the last place is followed by the first.
  std::array<Token, 8> m_ahead;
  std::size_t m_first = 0;
  std::size_t m_count = 0;
  bool m_stopped = false;
  std::size_t m_textEnd;
  std::size_t m_end = 0;
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_STRICTTOKENS_H_
