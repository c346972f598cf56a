#include "TextBuffer.h"

namespace schemacheck {

// Nothing writes into what a buffer reads from, though it asks for the right.
void TextBuffer::setText(std::string_view text) {
  char *begin = const_cast<char *>(text.data());
  setg(begin, begin, begin + text.size());
}

std::streampos TextBuffer::seekoff(std::streamoff offset,
                                   std::ios::seekdir from,
                                   std::ios::openmode which) {
  return seekpos(from == std::ios::cur ? gptr() - eback() + offset : offset,
                 which);
}

std::streampos TextBuffer::seekpos(std::streampos position,
                                   std::ios::openmode) {
  if (position < 0 || position > egptr() - eback()) {
    return -1;
  }
  setg(eback(), eback() + std::streamoff(position), egptr());
  return position;
}

}  // namespace schemacheck
