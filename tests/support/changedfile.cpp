// A library to be preloaded, which makes reading what it can be at worst.
//
// CHANGED_FILE names a file that somebody changes while a process reads it:
//   CHANGED_OPENING: the opening of this number, from 1, finds the file with
//     ".changed" behind its name, and no other does;
//   CHANGED_READ, CHANGED_SIZE: before the read of this number, from 1, the
//     file is cut to this size; the name must be the file's real path.
// READ_AT_MOST: as many bytes are what a read of any file comes back with.
#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

template <class Function>
Function *next(const char *name) {
  return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

// A number from the environment; 0 if there is none.
std::size_t numberOf(const char *name) {
  const char *text = std::getenv(name);
  return text == nullptr ? 0 : std::strtoul(text, nullptr, 10);
}

std::string changedFile() {
  const char *name = std::getenv("CHANGED_FILE");
  return name == nullptr ? "" : name;
}

// Whether `file`, an open one, is that which changes.
bool isChangedFile(int file) {
  const std::string link = "/proc/self/fd/" + std::to_string(file);
  char path[4096];
  const ssize_t length = readlink(link.c_str(), path, sizeof path);
  return length > 0 &&
         std::string(path, static_cast<std::size_t>(length)) == changedFile();
}

}  // namespace

extern "C" FILE *fopen64(const char *path, const char *mode) {
  static const auto real = next<FILE *(const char *, const char *)>("fopen64");
  static std::size_t openings = 0;
  if (path != changedFile() || ++openings != numberOf("CHANGED_OPENING")) {
    return real(path, mode);
  }
  return real((std::string(path) + ".changed").c_str(), mode);
}

extern "C" ssize_t read(int file, void *buffer, std::size_t size) {
  static const auto real = next<ssize_t(int, void *, std::size_t)>("read");
  static std::size_t reads = 0;
  const std::size_t number = numberOf("CHANGED_READ");
  if (number != 0 && isChangedFile(file) && ++reads == number) {
    const auto left = static_cast<off_t>(numberOf("CHANGED_SIZE"));
    if (truncate(changedFile().c_str(), left) != 0) {
      std::abort();
    }
  }
  const std::size_t most = numberOf("READ_AT_MOST");
  return real(file, buffer, most == 0 ? size : std::min(size, most));
}
