// How the tool reports that it cannot go on.
#ifndef SCHEMA_MIGRATE_TROUBLE_H_
#define SCHEMA_MIGRATE_TROUBLE_H_

#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "ExitStatus.h"

// Something is wrong with the input or the file system. what() is one or more
// lines for the user, without a final newline; a line about a place in a file
// reads "FILE:LINE: error: MESSAGE".
class Trouble : public std::runtime_error {
 public:
  // `status`: with which the command ends because of it.
  Trouble(ExitStatus status, const std::string &text)
      : std::runtime_error(text), m_status(status) {}

  ExitStatus status() const { return m_status; }

 private:
  ExitStatus m_status;
};

// What cannot be: the command has a fault. what() is a line for the user.
class InternalError : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

// "FILE: error: MESSAGE", or with the line if it is positive.
inline std::string errorAt(const std::filesystem::path &file, int line,
                           const std::string &message) {
  const std::string where =
      line > 0 ? file.string() + ":" + std::to_string(line) : file.string();
  return where + ": error: " + message;
}

// Prints the lines on standard error.
inline void warn(const std::vector<std::string> &lines) {
  for (const std::string &line : lines) {
    std::cerr << line << '\n';
  }
}

#endif  // SCHEMA_MIGRATE_TROUBLE_H_
