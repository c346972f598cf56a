// Allocation functions that fail when a test says so, and count what is
// allocated. A program has them if it links FailingAllocation.cpp; nothing else
// of the program may allocate on other threads.
#ifndef TESTS_SUPPORT_FAILINGALLOCATION_H_
#define TESTS_SUPPORT_FAILINGALLOCATION_H_

#include <cstddef>
#include <functional>

// How many blocks of exactly `size` bytes there are, up to 4095 bytes; for
// 4096, how many of that size or more.
std::size_t blocksOfSize(std::size_t size);

// How many blocks there are.
std::size_t allBlocks();

// Runs `operation` while its n-th allocation fails (n counts from 1), alone or,
// if `lasting`, with all after it. Returns whether it got so far, and stores
// whether it threw std::bad_alloc. Any other exception passes.
bool failsAt(std::size_t n, bool lasting,
             const std::function<void()> &operation, bool *thrown);

#endif  // TESTS_SUPPORT_FAILINGALLOCATION_H_
