// What the library's own parsers make of a file.
#ifndef SCHEMACHECK_LIBRARYREADER_H_
#define SCHEMACHECK_LIBRARYREADER_H_

#include <cstddef>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "Fields.h"
#include "GuardedLexan.h"
#include "SchemaFiles.h"

namespace schemacheck {

// A definition as the library keeps it.
struct Kept {
  enum class End {
    kClosed,     // behind a ")"
    kElsewhere,  // before a "(" or "}"
    kBeyond,     // not before the limit that was set
    kCutOff,     // nowhere: the library gives the file up
    kEndless,    // never: the library would go on for ever
  };
  End end;
  std::size_t closing;  // the offset behind that ")"; of kClosed only
  std::vector<Field> fields;
  std::string line;  // as the library would write it
};

// Reads a text through the library's scanner and parsers, says where in the
// text they are, and can be told to go on elsewhere.
class LibraryReader : public GuardedLexan {
 public:
  explicit LibraryReader(const std::string &text);

  int lexan() override;

  // Lets the library parse a definition as it would at this point. Stops a
  // parse that goes on behind `limit`.
  Kept parse(Kind kind, std::size_t limit);

  // The offset behind the current token; for a number, behind the blanks that
  // follow it.
  std::size_t offset();

  // Makes the byte at `offset` the next one. The current token stays what it
  // is, until a parse passes over it.
  void goTo(std::size_t offset);

  // Goes on with another text, from its start.
  void setText(const std::string &text);

  // Reads the token at `offset`, by itself, and returns its code.
  int scan(std::size_t offset);

 private:
  template <class Definition>
  Kept parseAs(int keyword);

  std::stringbuf m_text;
  std::size_t m_limit;
  std::stringbuf m_line;
  std::ofstream m_writer;  // to m_line

  // The tokens read, and the two closing parentheses read last: how many tokens
  // had been read by then, and the offset behind it.
  struct Closing {
    std::size_t count = 0;
    std::size_t offset = 0;
  };
  std::size_t m_count = 0;
  Closing m_closing;
  Closing m_closingBefore;
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_LIBRARYREADER_H_
