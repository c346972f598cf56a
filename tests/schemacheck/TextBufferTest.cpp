#include "TextBuffer.h"

#include <gtest/gtest.h>

#include <istream>
#include <sstream>
#include <string>

using schemacheck::TextBuffer;

namespace {

// What is read of a stream on the buffer when this is done, and how.
template <class Buffer>
std::string readingOf(Buffer *buffer) {
  constexpr auto kIn = std::ios::in;
  std::string reading;
  const auto read = [&](const char *what, std::streamoff result) {
    const int next = buffer->sbumpc();
    reading += std::string(what) + ' ' + std::to_string(result) + ' ' +
               (next == EOF ? "end" : std::string(1, char(next))) + '\n';
  };
  read("start", buffer->pubseekoff(0, std::ios::cur, kIn));
  read("second", buffer->pubseekoff(0, std::ios::cur, kIn));
  read("back", buffer->sungetc());
  read("third", buffer->pubseekoff(0, std::ios::cur, kIn));
  read("on", buffer->pubseekoff(1, std::ios::cur, kIn));
  read("first", buffer->pubseekpos(0, kIn));
  read("end", buffer->pubseekpos(6, kIn));
  read("behind the end", buffer->pubseekpos(7, kIn));
  read("before the start", buffer->pubseekoff(-1, std::ios::beg, kIn));
  read("far back", buffer->pubseekoff(-7, std::ios::cur, kIn));
  read("last", buffer->pubseekoff(5, std::ios::beg, kIn));
  read("end again", buffer->pubseekoff(0, std::ios::cur, kIn));
  return reading;
}

TEST(TextBufferTest, ReadsAsABufferOfTheStandardLibrary) {
  const std::string text = "abcdef";
  std::stringbuf standard(text, std::ios::in);
  TextBuffer buffer;
  buffer.setText(text);
  const std::string reading = readingOf(&buffer);
  EXPECT_EQ(reading, readingOf(&standard));
  EXPECT_EQ(reading.substr(0, 20), "start 0 a\nsecond 1 b");
}

TEST(TextBufferTest, IsAtItsEndWithoutAText) {
  TextBuffer buffer;
  EXPECT_EQ(buffer.sbumpc(), EOF);
  buffer.setText("");
  EXPECT_EQ(buffer.sbumpc(), EOF);
}

TEST(TextBufferTest, BeginsAnewWithEachText) {
  TextBuffer buffer;
  buffer.setText("abc");
  EXPECT_EQ(buffer.sbumpc(), 'a');
  buffer.setText("x");
  EXPECT_EQ(buffer.sbumpc(), 'x');
  EXPECT_EQ(buffer.sbumpc(), EOF);
}

}  // namespace
