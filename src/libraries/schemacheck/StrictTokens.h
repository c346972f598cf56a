// The tokens of a schema file, with a look ahead at what they begin.
#ifndef SCHEMACHECK_STRICTTOKENS_H_
#define SCHEMACHECK_STRICTTOKENS_H_

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

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

  // The token after `i` others; valid until the next call.
  const Token &peek(std::size_t i = 0);

  // Removes the next token.
  Token take();

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
  Token endToken() const;

  StrictScanner m_scanner;
  std::deque<Token> m_ahead;  // scanned and not yet taken
  bool m_stopped = false;
  std::size_t m_textEnd;
  std::size_t m_end = 0;
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_STRICTTOKENS_H_
