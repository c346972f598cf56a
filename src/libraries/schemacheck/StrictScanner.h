// The tokens of a schema file as its author means them.
#ifndef SCHEMACHECK_STRICTSCANNER_H_
#define SCHEMACHECK_STRICTSCANNER_H_

#include <cstddef>
#include <forward_list>
#include <string>
#include <string_view>
#include <utility>

#include "SourceText.h"

namespace schemacheck {

struct Token {
  enum class Type {
    kCharacter,     // one of ( ) $ = { } : "
    kWord,          // any other run of characters
    kNumber,        // digits and dots; a length such as {64} may follow
    kQuoted,        // 'text'
    kDoubleQuoted,  // "text", which no schema file should hold
    kEnd,           // the end of the text
  };

  Type type = Type::kEnd;
  Span span;  // with the quotes, and with the length of a number
  // What is between the quotes, as it is written; of a number without the
  // blanks before and within the length; otherwise what `span` holds. Valid as
  // long as the text and the scanner are.
  std::string_view text;
  // False for a quoted string without a closing quote and for a number whose
  // length is not made of a brace, digits and a brace.
  bool intact = true;

  bool is(char character) const {
    return type == Type::kCharacter && text[0] == character;
  }
  bool hasLength() const {
    return type == Type::kNumber && text.find('{') != text.npos;
  }
};

// Splits a text into tokens, separated by blanks, tabs, line ends and comments
// from "#" to the end of the line. This is not what the library's scanner
// reads: a quoted string holds any bytes, a word more than letters, and the
// last token needs no newline behind it.
//
// A quote between two letters or digits ("It's") is an apostrophe and belongs
// to the text. A string without a closing quote ends where its first line does.
// It is taken to have none when there is no other quote in the rest of the
// text, and when one of its further lines begins like a section, a definition
// or a clause with a quoted value.
//
// Takes time linear in the size of the text, which must outlive the scanner.
class StrictScanner {
 public:
  // Begins at `offset`, which must not be within a token or a comment.
  explicit StrictScanner(std::string_view text, std::size_t offset = 0);

  // The next token; at the end of the text, and for every further call, kEnd.
  Token next();

  // Holds a text that stands nowhere in the file as it is.
  std::string_view keep(std::string text);

  // Hands over the texts held so far. They stay where they are.
  std::forward_list<std::string> takeTexts() { return std::move(m_texts); }

 private:
  char at(std::size_t offset) const;  // '\0' behind the text
  std::size_t lineEnd(std::size_t offset) const;
  std::size_t newlineIn(std::size_t begin, std::size_t end) const;
  std::size_t skipBlanks(std::size_t offset) const;
  std::size_t skipLayout(std::size_t offset) const;
  std::size_t wordEnd(std::size_t offset) const;
  std::string_view wordAt(std::size_t offset) const;

  Token scanQuoted();
  Token scanDoubleQuoted();
  Token scanRun();
  void scanLength(Token *number);
  Token finish(Token::Type type, std::size_t end, std::string_view text);

  bool isApostrophe(std::size_t quote) const;
  bool beginsGrammar(std::size_t lineStart) const;
  bool beginsDefinition(std::size_t parenthesis) const;
  void findStringEnd(std::size_t offset);

  std::string_view m_text;
  std::size_t m_offset;  // of the byte to be scanned next
  std::forward_list<std::string> m_texts;

  // The end of the string that was looked for last, which is also that of
  // every other string that begins before it: the closing quote, or where the
  // grammar goes on without one. What has been looked through once is thereby
  // not looked through again.
  std::size_t m_stringEnd = 0;
  bool m_stringCloses = false;
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_STRICTSCANNER_H_
