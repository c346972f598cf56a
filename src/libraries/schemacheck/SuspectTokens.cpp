#include <algorithm>
#include <string_view>

#include "Finding.h"
#include "StrictGrammar.h"
#include "StrictScanner.h"
#include "Suspects.h"

namespace schemacheck {

namespace {

bool isLetterOrDigit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
         (c >= '0' && c <= '9');
}

bool isNonAscii(char c) { return static_cast<unsigned char>(c) >= 128; }

bool isWordCharacter(char c) {
  return isLetterOrDigit(c) || c == '_' || c == '-';
}

// What the library's scanner takes into a quoted string.
bool isQuotedCharacter(char c) {
  return c == '\t' || (c >= ' ' && c <= '~' && c != '\'');
}

bool isNumber(int token) {
  return token == TOK_NUMBER || token == TOK_NUMBER_LEN ||
         token == TOK_NUMBER_BAD;
}

class Tokens {
 public:
  Tokens(const StrictFile &file, LibraryReader *library)
      : m_bytes(file.text.bytes()), m_library(*library) {}

  std::vector<Suspect> run(const Definition &definition) {
    for (const Clause &clause : definition.clauses) {
      for (const Value &value : clause.values) {
        m_values.push_back(value.span.begin);
      }
    }
    StrictScanner scanner(m_bytes, definition.span.begin);
    std::size_t before = definition.span.begin;
    while (true) {
      const Token token = scanner.next();
      if (token.type == Token::Type::kEnd ||
          token.span.begin >= definition.span.end) {
        return m_suspects.take();
      }
      lookForReturn(definition, before, token.span.begin);
      if (token.intact && token.type != Token::Type::kDoubleQuoted) {
        compare(token);  // the others are faults of their own
      }
      before = token.span.end;
    }
  }

 private:
  void add(Code code, std::size_t offset, std::string message) {
    m_suspects.add({code, offset, std::move(message)});
  }

  // A carriage return is a token to the library, and does harm between the
  // keyword and the last value of a field.
  void lookForReturn(const Definition &definition, std::size_t begin,
                     std::size_t end) {
    const std::size_t at = m_bytes.substr(begin, end - begin).find('\r');
    if (at == std::string_view::npos) {
      return;
    }
    for (const Clause &clause : definition.clauses) {
      if (clause.span.begin <= begin && end <= clause.span.end) {
        add(Code::kCarriageReturn, begin + at,
            "expected a blank or a line feed within " +
                std::string(clause.keyword) + ", found a carriage return");
        return;
      }
    }
  }

  // Lets the library scan the token by itself.
  void compare(const Token &token) {
    const int code = m_library.scan(token.span.begin);
    const bool isQuoted = token.type == Token::Type::kQuoted;
    if (code == TOK_DONE) {
      add(Code::kNoNewline, token.span.begin,
          "expected a newline behind the last word of the file, found none");
    } else if (!isSameEnd(token, m_library.offset()) ||
               (token.type == Token::Type::kWord && code < 256)) {
      explain(token);
    } else if (token.type == Token::Type::kWord && code != TOK_ID &&
               isValue(token)) {
      add(Code::kQuotedKeyword, token.span.begin,
          "expected a name that is no keyword, found " + inQuotes(token.text));
    } else if (isQuoted && isNumber(code)) {
      add(Code::kQuotedNumber, token.span.begin,
          "expected another text than that of the number before it, found " +
              inQuotes(token.text));
    } else if (isQuoted && code != TOK_ID) {
      add(Code::kQuotedKeyword, token.span.begin,
          "expected a text that is no keyword, found " + inQuotes(token.text));
    } else if (token.type == Token::Type::kNumber && code == TOK_ID) {
      add(Code::kQuotedNumber, token.span.begin,
          "expected another number than the text before it, found " +
              std::string(token.text));
    }
  }

  // Whether a word that the library reads as a keyword is a value. Lists of
  // names hold the keywords of sections all the same.
  bool isValue(const Token &token) const {
    return !sectionForm(token.text) &&
           std::binary_search(m_values.begin(), m_values.end(),
                              token.span.begin);
  }

  // Behind a number the library passes over blanks.
  bool isSameEnd(const Token &token, std::size_t end) const {
    if (end < token.span.end) {
      return false;
    }
    const std::string_view more =
        m_bytes.substr(token.span.end, end - token.span.end);
    return more.empty() || (token.type == Token::Type::kNumber &&
                            more.find_first_not_of(' ') == more.npos);
  }

  // Finds the character that made the library's token another one.
  void explain(const Token &token) {
    const bool isQuoted = token.type == Token::Type::kQuoted;
    std::size_t at = token.span.begin + (isQuoted ? 1 : 0);
    const std::size_t end = token.span.end - (isQuoted ? 1 : 0);
    while (at < end && (isQuoted ? isQuotedCharacter(m_bytes[at])
                                 : isWordCharacter(m_bytes[at]))) {
      ++at;
    }
    const char c = at < m_bytes.size() ? m_bytes[at] : '\0';
    if (at < end && isNonAscii(c)) {
      add(Code::kNonAscii, at,
          "expected ASCII characters, found a byte outside ASCII");
    } else if (isQuoted && c == '\'') {
      add(Code::kApostrophe, at,
          "expected a quoted text without apostrophes, found one");
    } else if (isQuoted && (c == '\n' || c == '\r')) {
      add(Code::kLineBreak, at,
          "expected the closing quote on the same line, found the line's end");
    } else if (!isQuoted && c == '\t') {
      add(Code::kTab, at,
          "expected a blank behind " + inQuotes(token.text) + ", found a tab");
    } else if (isQuoted) {
      add(Code::kOddCharacter, at,
          "expected printable characters, found a control character");
    } else {
      add(Code::kOddCharacter, at < end ? at : token.span.begin,
          "expected letters, digits and hyphens after a letter, found " +
              inQuotes(token.text));
    }
  }

  std::string_view m_bytes;
  LibraryReader &m_library;
  std::vector<std::size_t> m_values;  // where they begin, ascending
  SuspectList m_suspects;
};

}  // namespace

std::vector<Suspect> suspectTokens(const StrictFile &file,
                                   const Definition &definition,
                                   LibraryReader *library) {
  return Tokens(file, library).run(definition);
}

}  // namespace schemacheck
