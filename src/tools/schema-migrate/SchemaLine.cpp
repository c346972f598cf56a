#include "SchemaLine.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <system_error>

#include "Trouble.h"

// The library writes to files only; this one is in memory.
std::string schemaLine(QORSchema *definition) {
  const int descriptor = memfd_create("definition", MFD_CLOEXEC);
  if (descriptor == -1) {
    throw Trouble("error: cannot make a file in memory: " +
                  std::generic_category().message(errno));
  }
  const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
  {
    std::ofstream out(path);
    definition->dump(out);
  }
  std::ifstream in(path);
  std::string line;
  std::getline(in, line);
  close(descriptor);
  return line;
}
