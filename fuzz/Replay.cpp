// Runs a fuzz target on the files of a corpus, once each: what an ordinary
// build tests.
//
//   fuzz_replay TARGET FILE-OR-DIRECTORY...
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "Targets.h"

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> filesIn(const fs::path &path) {
  if (!fs::is_directory(path)) {
    return {path};
  }
  std::vector<fs::path> files;
  for (const fs::directory_entry &entry : fs::directory_iterator(path)) {
    files.push_back(entry.path());
  }
  return files;
}

}  // namespace

int main(int argc, char **argv) {
  for (const Target &target : kTargets) {
    if (argc < 3 || std::strcmp(argv[1], target.name) != 0) {
      continue;
    }
    std::size_t runs = 0;
    for (int i = 2; i < argc; ++i) {
      for (const fs::path &file : filesIn(argv[i])) {
        std::ifstream in(file, std::ios::binary);
        const std::string input{std::istreambuf_iterator<char>(in), {}};
        // Says which one it was when the target aborts.
        std::fprintf(stderr, "%s\n", file.c_str());
        target.run(input);
        ++runs;
      }
    }
    std::printf("%s: %zu inputs\n", target.name, runs);
    return runs == 0 ? 1 : 0;
  }
  std::fprintf(stderr, "usage: fuzz_replay TARGET FILE-OR-DIRECTORY...\n");
  return 2;
}
