// What the library does with a fixed corpus, for a count of its instructions;
// script/instructions runs it under callgrind.
//
// Works in the current directory, which is empty, with relative names: no path
// has an influence on the count. Prints each phase with the number of
// definitions in it.
#include <gnu/libc-version.h>
#include <valgrind/callgrind.h>

#include <cstddef>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "SchemaGenerator.h"
#include "SchemaManager.h"

namespace {

constexpr std::size_t kDefinitions = 10000;
constexpr const char *kFiles[] = {"V3.user.at", "V3.user.oc"};

void require(bool held, const char *what) {
  if (!held) {
    throw std::runtime_error(what);
  }
}

// Counts the instructions of `work` alone, as those of `phase`.
template <class Work>
void count(const char *phase, std::size_t definitions, const Work &work) {
  CALLGRIND_START_INSTRUMENTATION;
  work();
  CALLGRIND_STOP_INSTRUMENTATION;
  CALLGRIND_DUMP_STATS_AT(phase);
  std::cout << phase << ' ' << definitions << '\n';
}

struct Schemas {
  SchemaManager old{"old"};
  SchemaManager release{"new"};

  void read() {
    for (const char *file : kFiles) {
      require(old.readFile(file) == 0 && release.readFile(file) == 0,
              "a file is not read");
    }
  }

  std::size_t size() const { return size(old) + size(release); }

 private:
  static std::size_t size(const SchemaManager &schema) {
    return schema.attributeTypes().size() + schema.objectClasses().size() +
           schema.storageDefinitions().size();
  }
};

void run() {
  auto migrated = std::make_unique<Schemas>();
  Schemas checked;
  checked.read();
  const std::size_t size = checked.size();
  count("read", size, [&] { migrated->read(); });
  count("compare", kDefinitions,
        [&] { migrated->old.compSchemas(&migrated->release); });
  count("merge", kDefinitions,
        [&] { migrated->release.mergeSchemas(&migrated->old); });
  count("write", migrated->size(), [&] {
    for (const char *file : kFiles) {
      require(migrated->release.writeFile("written", file) == 0,
              "a file is not written");
    }
  });
  count("collide", kDefinitions,
        [&] { checked.old.checkCollisions(&checked.release); });
  count("destroy", size, [&] { migrated.reset(); });
}

}  // namespace

int main() {
  try {
    std::cout << "compiler " << LIBSCHEMA_COMPILER << "\nlibrary glibc "
              << gnu_get_libc_version() << '\n';
    generateCorpus(".", kDefinitions);
    std::filesystem::create_directory("written");
    run();
    return 0;
  } catch (const std::exception &error) {
    std::cerr << "instructions: " << error.what() << '\n';
    return 1;
  }
}
