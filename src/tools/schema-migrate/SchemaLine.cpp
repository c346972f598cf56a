#include "SchemaLine.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <system_error>

#include "Trouble.h"
#include "Untraced.h"

namespace {

// A file in memory, for as long as the object exists.
class MemoryFile {
 public:
  MemoryFile() : m_descriptor(memfd_create("definition", MFD_CLOEXEC)) {
    if (m_descriptor == -1) {
      fail("make");
    }
  }
  ~MemoryFile() { close(m_descriptor); }

  MemoryFile(const MemoryFile &) = delete;
  MemoryFile &operator=(const MemoryFile &) = delete;

  std::string path() const {
    return "/proc/self/fd/" + std::to_string(m_descriptor);
  }

  // Throws Trouble with the reason in errno.
  [[noreturn]] static void fail(const std::string &action) {
    throw Trouble("error: cannot " + action + " a file in memory: " +
                  std::generic_category().message(errno));
  }

 private:
  const int m_descriptor;
};

}  // namespace

// The library writes to files only; this one is in memory.
std::string schemaLine(QORSchema *definition) {
  const Untraced untraced;
  const MemoryFile file;
  std::ofstream out(file.path());
  if (!out) {
    MemoryFile::fail("open");
  }
  definition->dump(out);
  out.close();
  if (!out) {
    MemoryFile::fail("write");
  }
  std::ifstream in(file.path());
  std::string line;
  if (!std::getline(in, line)) {
    MemoryFile::fail("read");
  }
  return line;
}
