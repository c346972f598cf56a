#include "SchemaLine.h"

#include <fstream>
#include <sstream>

#include "Untraced.h"

// The library writes to a file's stream; this one's text stays in memory.
std::string schemaLine(QORSchema *definition) {
  const Untraced untraced;
  std::stringbuf text;
  std::ofstream out;
  static_cast<std::ios &>(out).rdbuf(&text);
  definition->dump(out);
  std::string line = text.str();
  line.pop_back();
  return line;
}
