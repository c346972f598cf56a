// What the tests of SchemaLexan share: tokens and dumps as readable text.
#ifndef TESTS_LIBSCHEMA_SCHEMALEXANTESTING_H_
#define TESTS_LIBSCHEMA_SCHEMALEXANTESTING_H_

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <memory>
#include <string>

#include "SchemaLexan.h"
#include "support/TemporaryDirectory.h"

// A token code by name: "TOK_ID", "'('" for a character that can be seen, and
// the number, such as "13", for every other code.
inline std::string tokenName(int code) {
  switch (code) {
#define TOKEN(name) \
  case name:        \
    return #name
    TOKEN(TOK_ID);
    TOKEN(TOK_DONE);
    TOKEN(TOK_OBJECTCLASSES);
    TOKEN(TOK_NAME);
    TOKEN(TOK_DESC);
    TOKEN(TOK_SUP);
    TOKEN(TOK_AUXILIARY);
    TOKEN(TOK_MUST);
    TOKEN(TOK_MAY);
    TOKEN(TOK_STRUCTURAL);
    TOKEN(TOK_ATTRIBUTETYPES);
    TOKEN(TOK_EQUALITY);
    TOKEN(TOK_SYNTAX);
    TOKEN(TOK_SINGLE_VALUE);
    TOKEN(TOK_USAGE);
    TOKEN(TOK_NO_USER_MODIFICATION);
    TOKEN(TOK_QORATTRIBUTETYPES);
    TOKEN(TOK_ACCESS_CLASS);
    TOKEN(TOK_DBNAME);
    TOKEN(TOK_SUBSTR);
    TOKEN(TOK_ORDERING);
    TOKEN(TOK_COLLECTIVE);
    TOKEN(TOK_OBSOLETE);
    TOKEN(TOK_ABSTRACT);
    TOKEN(TOK_LENGTH);
    TOKEN(TOK_APPROX);
    TOKEN(TOK_REVERSE);
    TOKEN(TOK_NUMBER);
    TOKEN(TOK_NUMBER_LEN);
    TOKEN(TOK_NUMBER_BAD);
#undef TOKEN
    default:
      return code > ' ' && code < 127
                 ? std::string{'\'', static_cast<char>(code), '\''}
                 : std::to_string(code);
  }
}

// The current token: "TOK_ID(cn)", or the name alone when it has no text. A tab
// in the text is shown as "\t".
inline std::string currentToken(SchemaLexan &lexan) {
  std::string shown = tokenName(lexan.getCurrentToken());
  std::string text;
  if (lexan.getStringValue(lexan.getTokenValIndex(), text) == 0) {
    for (std::size_t at = 0; (at = text.find('\t', at)) != std::string::npos;) {
      text.replace(at, 1, "\\t");
    }
    shown += '(' + text + ')';
  }
  return shown;
}

// All tokens to the end of the file, with the number of the line ahead of the
// first token of each: "1: TOK_ATTRIBUTETYPES(attributetypes) '=' '(' 2: ')'
// TOK_DONE". Stops after `limit` tokens.
inline std::string allTokens(SchemaLexan &lexan, std::size_t limit = 100000) {
  std::string list;
  int line = 0;
  for (std::size_t count = 0; count < limit; ++count) {
    const int code = lexan.lexan();
    if (lexan.getLineNumber() != line) {
      line = lexan.getLineNumber();
      list += std::to_string(line) + ": ";
    }
    if (code == TOK_DONE) {
      return list + "TOK_DONE";
    }
    list += currentToken(lexan) + ' ';
  }
  return list + "and so on";
}

// The lines of the keywords in a table's dump, behind `margin`.
inline std::string keywordLines(const std::string &margin) {
  std::string text;
  for (const char *line : {"0 1002 \"objectclasses\"",
                           "1 1003 \"NAME\"",
                           "2 1004 \"DESC\"",
                           "3 1005 \"SUP\"",
                           "4 1006 \"AUXILIARY\"",
                           "5 1007 \"MUST\"",
                           "6 1008 \"MAY\"",
                           "7 1009 \"STRUCTURAL\"",
                           "8 1010 \"attributetypes\"",
                           "9 1011 \"EQUALITY\"",
                           "10 1012 \"SYNTAX\"",
                           "11 1013 \"SINGLE-VALUE\"",
                           "12 1014 \"USAGE\"",
                           "13 1015 \"NO-USER-MODIFICATION\"",
                           "14 1016 \"QORAttributetypes\"",
                           "15 1017 \"ACCESS-CLASS\"",
                           "16 1018 \"DBNAME\"",
                           "17 1019 \"SUBSTR\"",
                           "18 1026 \"REVERSE\"",
                           "19 1020 \"ORDERING\"",
                           "20 1021 \"COLLECTIVE\"",
                           "21 1022 \"OBSOLETE\"",
                           "22 1023 \"ABSTRACT\"",
                           "23 1024 \"LENGTH\"",
                           "24 1025 \"APPROX\""}) {
    text += margin + line + " keyword\n";
  }
  return text;
}

// For tests of one analyser at a time.
class SchemaLexanFixture : public testing::Test {
 protected:
  static constexpr char kName[] = "V3.user.at";

  // An analyser of a new file with this text.
  SchemaLexan &open(const std::string &text) {
    m_directory.write(kName, text);
    m_lexan = std::make_unique<SchemaLexan>(m_directory.string(), kName);
    return *m_lexan;
  }

  // What the analyser writes with dump().
  std::string dumped(SchemaLexan &lexan, int indent) {
    std::ofstream out(m_directory.path() / "dump");
    lexan.dump(indent, out);
    out.close();
    return m_directory.read("dump");
  }

  // What it writes when these are its members and the lines of the scanned
  // entries, without a margin.
  static std::string dump(const std::string &tokenvalindex,
                          const std::string &lineNum,
                          const std::string &lookahead,
                          const std::string &scanned) {
    return "SchemaLexan\n"
           "{ \n"
           "  m_filename \"V3.user.at\"\n"
           "  m_tokenvalindex " +
           tokenvalindex + "\n  m_line_num " + lineNum + "\n  m_lookahead " +
           lookahead + "\n  m_symtable \n" + keywordLines("\t") + scanned +
           "}\n";
  }

  const TemporaryDirectory m_directory;
  std::unique_ptr<SchemaLexan> m_lexan;
};

#endif  // TESTS_LIBSCHEMA_SCHEMALEXANTESTING_H_
