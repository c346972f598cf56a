#include "Input.h"

#include <cstddef>

namespace {

constexpr const char *kFiles[] = {
    "V3.user.at",   "V3.user.oc",   "V3.qor.at",
    "V3.qor.oc",    "V3.system.at", "V3.system.oc",
    "V3.config.at", "V3.config.oc", "V3.modifiedschema"};

}  // namespace

Input::Input(std::string_view text) {
  std::string *file = &oldFiles[kFiles[0]];
  while (!text.empty()) {
    const std::size_t newline = text.find('\n');
    const std::size_t size =
        newline == std::string_view::npos ? text.size() : newline + 1;
    const std::string_view line = text.substr(0, size);
    text.remove_prefix(size);
    if (line.size() > 1 && line[0] == '%') {
      begin(line[1], line.substr(2), &file);
    } else {
      *file += line;
    }
  }
}

// Sets `file` to where the lines behind this one belong.
void Input::begin(char letter, std::string_view line, std::string **file) {
  if (letter >= 'a' && letter <= 'i') {
    *file = &oldFiles[kFiles[letter - 'a']];
  } else if (letter >= 'A' && letter <= 'I') {
    *file = &newFiles[kFiles[letter - 'A']];
  } else if (letter == 'x') {
    *file = &excludedOids;
  } else if (letter == 'y') {
    *file = &modifiedOids;
  } else if (letter == 'o') {
    for (const char c : line) {
      if (c >= '0' && c <= '9') {
        options += c;
      }
    }
  }
}
