#include "support/FailingAllocation.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t kHeader = 16;  // holds the size; keeps the alignment
constexpr std::size_t kMaxSize = 4096;

std::size_t blocks[kMaxSize + 1];  // by size; larger ones count as of kMaxSize
std::size_t blocksInAll = 0;

// Which allocation fails.
struct {
  std::size_t left = 0;  // until the one that fails; 0: none does
  bool lasting = false;  // all after that one fail, too
  bool failed = false;
} failure;

bool failsNow() {
  if (failure.failed) {
    return failure.lasting;
  }
  failure.failed = failure.left == 1;
  failure.left -= failure.left == 0 ? 0 : 1;
  return failure.failed;
}

void *allocate(std::size_t size) noexcept {
  void *block = failsNow() ? nullptr : std::malloc(size + kHeader);
  if (block == nullptr) {
    return nullptr;
  }
  *static_cast<std::size_t *>(block) = size;
  ++blocks[std::min(size, kMaxSize)];
  ++blocksInAll;
  return static_cast<char *>(block) + kHeader;
}

void *allocateOrThrow(std::size_t size) {
  void *memory = allocate(size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

void release(void *memory) noexcept {
  if (memory != nullptr) {
    void *block = static_cast<char *>(memory) - kHeader;
    --blocks[std::min(*static_cast<std::size_t *>(block), kMaxSize)];
    --blocksInAll;
    std::free(block);
  }
}

}  // namespace

void *operator new(std::size_t size) { return allocateOrThrow(size); }
void *operator new[](std::size_t size) { return allocateOrThrow(size); }
void *operator new(std::size_t size, const std::nothrow_t &) noexcept {
  return allocate(size);
}
void *operator new[](std::size_t size, const std::nothrow_t &) noexcept {
  return allocate(size);
}
void operator delete(void *memory) noexcept { release(memory); }
void operator delete[](void *memory) noexcept { release(memory); }
void operator delete(void *memory, std::size_t) noexcept { release(memory); }
void operator delete[](void *memory, std::size_t) noexcept { release(memory); }
void operator delete(void *memory, const std::nothrow_t &) noexcept {
  release(memory);
}
void operator delete[](void *memory, const std::nothrow_t &) noexcept {
  release(memory);
}

std::size_t blocksOfSize(std::size_t size) { return blocks[size]; }

std::size_t allBlocks() { return blocksInAll; }

bool failsAt(std::size_t n, bool lasting,
             const std::function<void()> &operation, bool *thrown) {
  *thrown = false;
  failure = {n, lasting, false};
  try {
    operation();
  } catch (const std::bad_alloc &) {
    *thrown = true;
  } catch (...) {
    failure = {};
    throw;
  }
  const bool failed = failure.failed;
  failure = {};
  return failed;
}
