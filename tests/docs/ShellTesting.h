// Command lines of sh.
#ifndef TESTS_DOCS_SHELLTESTING_H_
#define TESTS_DOCS_SHELLTESTING_H_

#include <cstdio>
#include <memory>
#include <string>

#include "MigrateTesting.h"

inline std::string quoted(const std::string &text) {
  return "'" + replaceAll(text, "'", "'\\''") + "'";
}

// What a command line prints.
inline std::string outputOf(const std::string &command) {
  const std::unique_ptr<FILE, int (*)(FILE *)> pipe(popen(command.c_str(), "r"),
                                                    pclose);
  std::string text;
  for (int c = fgetc(pipe.get()); c != EOF; c = fgetc(pipe.get())) {
    text += static_cast<char>(c);
  }
  return text;
}

#endif  // TESTS_DOCS_SHELLTESTING_H_
