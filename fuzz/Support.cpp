#include "Support.h"

#include <stdlib.h>

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <new>
#include <set>

#include "SchemaLexan.h"

namespace fs = std::filesystem;

namespace {

// Memory for the book-keeping of operator new, which cannot use that itself.
template <class T>
struct PlainAllocator {
  using value_type = T;
  PlainAllocator() = default;
  template <class U>
  PlainAllocator(const PlainAllocator<U> &) {}
  T *allocate(std::size_t count) {
    void *memory = std::malloc(count * sizeof(T));
    if (memory == nullptr) {
      throw std::bad_alloc();
    }
    return static_cast<T *>(memory);
  }
  void deallocate(T *memory, std::size_t) { std::free(memory); }
  template <class U>
  bool operator==(const PlainAllocator<U> &) const {
    return true;
  }
  template <class U>
  bool operator!=(const PlainAllocator<U> &) const {
    return false;
  }
};

using Blocks = std::set<void *, std::less<void *>, PlainAllocator<void *>>;

// Whether new blocks are followed, and those that are, while they live.
bool followed = false;

// Never destroyed: memory is released until the process has ended.
Blocks &blocks() {
  static Blocks &all = *new (std::malloc(sizeof(Blocks))) Blocks;
  return all;
}

void *newBlock(std::size_t size) {
  void *block = std::malloc(size == 0 ? 1 : size);
  if (followed && block != nullptr) {
    blocks().insert(block);
  }
  return block;
}

void deleteBlock(void *block) {
  if (!blocks().empty()) {
    blocks().erase(block);
  }
  std::free(block);
}

// The manager's own pointer to the analyser of its latest file.
SchemaLexan *&analyserOf(SchemaManager &schema);

template <SchemaLexan *SchemaManager::*kMember>
struct Opened {
  friend SchemaLexan *&analyserOf(SchemaManager &schema) {
    return schema.*kMember;
  }
};

template struct Opened<&SchemaManager::m_lexan>;

// The directory of the process.
class Root {
 public:
  Root() {
    std::string pattern = (fs::temp_directory_path() / "fuzz-XXXXXX").string();
    expect(mkdtemp(pattern.data()) != nullptr, "a directory for files");
    m_path = pattern;
  }
  ~Root() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
  }

  Root(const Root &) = delete;
  Root &operator=(const Root &) = delete;

  const fs::path &path() const { return m_path; }

 private:
  fs::path m_path;
};

}  // namespace

// All forms together, for a sanitizer wants each block freed by what has
// allocated it.

void *operator new(std::size_t size, const std::nothrow_t &) noexcept {
  return newBlock(size);
}

void *operator new[](std::size_t size, const std::nothrow_t &) noexcept {
  return newBlock(size);
}

void *operator new(std::size_t size) {
  if (void *block = newBlock(size)) {
    return block;
  }
  throw std::bad_alloc();
}

void *operator new[](std::size_t size) { return operator new(size); }

void operator delete(void *block) noexcept { deleteBlock(block); }

void operator delete[](void *block) noexcept { deleteBlock(block); }

void operator delete(void *block, std::size_t) noexcept { deleteBlock(block); }

void operator delete[](void *block, std::size_t) noexcept {
  deleteBlock(block);
}

void expectEqual(const std::string &actual, const std::string &expected,
                 const char *what) {
  if (actual != expected) {
    std::fprintf(stderr, "%s: expected\n%s\nfound\n%s\n", what,
                 expected.c_str(), actual.c_str());
    std::abort();
  }
}

void expect(bool holds, const char *what) {
  if (!holds) {
    std::fprintf(stderr, "expected %s\n", what);
    std::abort();
  }
}

std::string acrossTheBuffer(const std::string &text, std::size_t ahead) {
  constexpr std::size_t kBuffer = 8191;  // of the standard library's stream
  if (ahead == 0 || ahead > kBuffer - 2) {
    return text;
  }
  return '#' + std::string(kBuffer - ahead - 2, '-') + '\n' + text;
}

void fixDate() { setenv("SOURCE_DATE_EPOCH", "1000000000", 1); }

Scratch::Scratch(const std::string &name) {
  static const Root root;
  const fs::path path = root.path() / name;
  m_path = path.string();
  if (!fs::create_directory(path)) {
    for (const fs::directory_entry &entry : fs::directory_iterator(path)) {
      fs::remove(entry.path());
    }
  }
}

void Scratch::write(const std::string &name, const std::string &text) const {
  std::ofstream out(path(name), std::ios::binary);
  out << text;
  out.close();
  expect(out.good(), "a written file");
}

void Scratch::write(const std::map<std::string, std::string> &files) const {
  for (const auto &[name, text] : files) {
    write(name, text);
  }
}

std::string Scratch::read(const std::string &name) const {
  std::ifstream in(path(name), std::ios::binary);
  expect(in.is_open(), "a file");
  return {std::istreambuf_iterator<char>(in), {}};
}

Readings::Readings() {
  expect(blocks().empty(), "nothing left from the reading before");
}

Readings::~Readings() {
  expect(m_leaks || blocks().empty(),
         "no definition left behind, where none is by contract");
  Blocks left;
  left.swap(blocks());
  for (void *block : left) {
    std::free(block);
  }
}

unsigned int Readings::read(SchemaManager *schema, const std::string &name,
                            bool leaks) {
  m_leaks = m_leaks || leaks;
  followed = true;
  const unsigned int result = schema->readFile(name);
  followed = false;
  if (result != 0) {
    delete analyserOf(*schema);
    analyserOf(*schema) = nullptr;
  }
  return result;
}
