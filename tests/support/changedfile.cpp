// A library to be preloaded: while a process reads the file that CHANGED_FILE
// names, somebody changes it and changes it back. The opening of the number
// CHANGED_OPENING, from 1, finds the file with ".changed" behind its name.
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" FILE *fopen64(const char *path, const char *mode) {
  using Open = FILE *(*)(const char *, const char *);
  static const auto next = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "fopen64"));
  static int openings = 0;
  const char *changed = std::getenv("CHANGED_FILE");
  const char *number = std::getenv("CHANGED_OPENING");
  if (changed == nullptr || number == nullptr || path != std::string(changed) ||
      ++openings != std::atoi(number)) {
    return next(path, mode);
  }
  return next((std::string(path) + ".changed").c_str(), mode);
}
