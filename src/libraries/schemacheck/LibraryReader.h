// What the library's own parsers make of a file.
#ifndef SCHEMACHECK_LIBRARYREADER_H_
#define SCHEMACHECK_LIBRARYREADER_H_

#include <cstddef>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "Attribute.h"
#include "Fields.h"
#include "GuardedLexan.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "SchemaFiles.h"
#include "TextBuffer.h"

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
  std::vector<FieldView> fields;
};

// Reads a text through the library's scanner and parsers, says where in the
// text they are, and can be told to go on elsewhere.
class LibraryReader : public GuardedLexan {
 public:
  // The text must outlive the reading.
  explicit LibraryReader(std::string_view text);

  int lexan() override;

  // Lets the library parse a definition as it would at this point. Stops a
  // parse that goes on behind `limit`. What is returned is valid until the next
  // parse.
  const Kept &parse(Kind kind, std::size_t limit);

  // The definition parsed last, which was of this kind, as the library would
  // write it.
  std::string line(Kind kind);

  // The offset behind the current token; for a number, behind the blanks that
  // follow it.
  std::size_t offset();

  // Makes the byte at `offset` the next one. The current token stays what it
  // is, until a parse passes over it.
  void goTo(std::size_t offset);

  // Goes on with another text, from its start. It must outlive the reading.
  void setText(std::string_view text);

  // Reads the token at `offset`, by itself, and returns its code.
  int scan(std::size_t offset);

 private:
  template <class Definition>
  void parseInto(Definition *definition, int keyword);

  TextBuffer m_text;
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

  // The definitions parsed last, and what the last of all was.
  Attribute m_type;
  ObjectClass m_class;
  QORAttribute m_storage;
  Kept m_kept{Kept::End::kElsewhere, 0, {}};
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_LIBRARYREADER_H_
