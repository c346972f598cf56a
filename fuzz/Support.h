// What the targets share.
#ifndef FUZZ_SUPPORT_H_
#define FUZZ_SUPPORT_H_

#include <cstddef>
#include <map>
#include <memory>
#include <string>

#include "SchemaManager.h"

// Aborts with both texts when they are not the same.
void expectEqual(const std::string &actual, const std::string &expected,
                 const char *what);

// Aborts when it is false.
void expect(bool holds, const char *what);

// The text behind a comment that is so long that `ahead` bytes of the text end
// the buffer of the library's stream and the others have to be fetched; the
// text itself for 0.
std::string acrossTheBuffer(const std::string &text, std::size_t ahead);

// Gives all written files the same time stamp, kTimeStamp.
void fixDate();
constexpr char kTimeStamp[] = "2001-09-09T01:46:40+00:00";

// A directory of the process, which is empty before each input and removed at
// the end of the process.
class Scratch {
 public:
  explicit Scratch(const std::string &name);

  const std::string &path() const { return m_path; }
  std::string path(const std::string &name) const {
    return m_path + '/' + name;
  }

  void write(const std::string &name, const std::string &text) const;
  void write(const std::map<std::string, std::string> &files) const;
  std::string read(const std::string &name) const;

 private:
  std::string m_path;
};

// Schemas whose reading may leave behind, as the library's contract says,
// definitions and analysers that nobody frees. These are freed here, once the
// schemas are gone, so that every other leak is seen.
class Readings {
 public:
  Readings();
  // Frees what is left. Aborts when there is anything although the model said
  // that there would not be.
  ~Readings();

  Readings(const Readings &) = delete;
  Readings &operator=(const Readings &) = delete;

  // Reads a file. `leaks` is what the model says.
  unsigned int read(SchemaManager *schema, const std::string &name, bool leaks);

  // Something else has left behind, by contract, what was read.
  void allowLeaks() { m_leaks = true; }

 private:
  bool m_leaks = false;
};

#endif  // FUZZ_SUPPORT_H_
