// What the library's own parsers make of a file.
#ifndef SCHEMACHECK_LIBRARYREADER_H_
#define SCHEMACHECK_LIBRARYREADER_H_

#include <cstddef>
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
    kCutOff,     // nowhere: the library gives the file up
    kEndless,    // never: the library would go on for ever
  };
  End end;
  std::size_t closing;  // the offset behind that ")"; of kClosed only
  std::vector<Field> fields;
};

// Reads a file through the library's scanner and parsers, says where in the
// file they are, and can be told to go on elsewhere.
class LibraryReader : public GuardedLexan {
 public:
  using GuardedLexan::GuardedLexan;

  int lexan() override;

  // Lets the library parse a definition as it would at this point.
  Kept parse(Kind kind);

  // The offset behind the current token; for a number, behind the blanks that
  // follow it.
  std::size_t offset();

  // Makes the byte at `offset` the next one. The current token stays what it
  // is, until a parse passes over it.
  void goTo(std::size_t offset);

  // Reads the token at `offset`, by itself, and returns its code.
  int scan(std::size_t offset);

 private:
  template <class Definition>
  Kept parseAs(int keyword);

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
