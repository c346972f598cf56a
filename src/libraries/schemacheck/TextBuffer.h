// A text as a stream of characters.
#ifndef SCHEMACHECK_TEXTBUFFER_H_
#define SCHEMACHECK_TEXTBUFFER_H_

#include <ios>
#include <streambuf>
#include <string_view>

namespace schemacheck {

// Reads a text that is not copied, and must outlive the reading.
class TextBuffer : public std::streambuf {
 public:
  // Goes on with `text`, from its start.
  void setText(std::string_view text);

 protected:
  // From the start, or from where the reading is. -1, and nothing changes, when
  // there is no such place.
  std::streampos seekoff(std::streamoff offset, std::ios::seekdir from,
                         std::ios::openmode which) override;
  std::streampos seekpos(std::streampos position,
                         std::ios::openmode which) override;
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_TEXTBUFFER_H_
