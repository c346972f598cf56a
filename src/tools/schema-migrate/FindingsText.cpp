#include "FindingsText.h"

#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string>

using schemacheck::Finding;
using schemacheck::Severity;

namespace {

bool isColoured(const std::ostream *out) {
  const char *noColour = std::getenv("NO_COLOR");
  const int file = out == &std::cout   ? STDOUT_FILENO
                   : out == &std::cerr ? STDERR_FILENO
                                       : -1;
  return (noColour == nullptr || *noColour == '\0') && isatty(file) == 1;
}

std::string inColour(const Finding &finding) {
  const bool isError = finding.severity() == Severity::kError;
  const std::string word = isError ? "error:" : "warning:";
  std::string text = toText(finding);
  // Only the place stands between the name of the file and the word.
  const std::size_t at = text.find(word, finding.file.size());
  text.insert(at + word.size(), "\033[0m");
  text.insert(at, isError ? "\033[1;31m" : "\033[1;35m");
  return text;
}

}  // namespace

void printFindings(const std::vector<Finding> &findings, std::ostream *out) {
  const bool coloured = isColoured(out);
  for (const Finding &finding : findings) {
    *out << (coloured ? inColour(finding) : toText(finding));
  }
}
