#include "model/Ending.h"

#include <cstddef>

#include "model/Schema.h"

namespace model {

bool fileEnds(const std::string &text) {
  Trace untraced;
  try {
    Schema(&untraced).readFile({{"V3.user.at", text}}, "V3.user.at");
  } catch (const Endless &) {
    return false;
  }
  return true;
}

std::string endingFile(std::string text) {
  if (fileEnds(text)) {
    return text;
  }
  for (std::size_t at; (at = text.find("COLLECTIVE")) != std::string::npos;) {
    text.replace(at, 10, "OBSOLETE");
  }
  if (!fileEnds(text)) {
    text += "\n  DESC DESC 'd' ACCESS-CLASS c ) )\n";
  }
  return text;
}

bool listEnds(const std::string &text) {
  Trace untraced;
  try {
    Schema(&untraced).readExcludedOids(&text, "");
  } catch (const Endless &) {
    return false;
  }
  return true;
}

}  // namespace model
