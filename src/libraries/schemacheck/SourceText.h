// The text of a file, and the places in it.
#ifndef SCHEMACHECK_SOURCETEXT_H_
#define SCHEMACHECK_SOURCETEXT_H_

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace schemacheck {

// From one byte of a text up to, not including, another.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;
};

// A place for the user: both count from 1, the column in bytes.
struct Position {
  int line;
  int column;
};

// The bytes of one file, whatever they are. A line ends with a line feed, which
// may have a carriage return before it.
class SourceText {
 public:
  // `name` is the file as the user is to see it.
  SourceText(std::string name, std::string bytes);

  const std::string &name() const { return m_name; }
  const std::string &bytes() const { return *m_bytes; }

  // The same bytes, for those who hold parts of them and may outlive this
  // object.
  std::shared_ptr<const std::string> sharedBytes() const { return m_bytes; }

  // The place of a byte; one behind the text is taken for the text's end. Takes
  // time logarithmic in the number of lines.
  Position position(std::size_t offset) const;

  // A line without its end; empty when there is no such line. Valid as long as
  // this object is.
  std::string_view line(int line) const;

 private:
  std::string m_name;
  std::shared_ptr<const std::string> m_bytes;  // never null
  std::vector<std::size_t> m_lineStarts;  // offsets, ascending; never empty
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_SOURCETEXT_H_
