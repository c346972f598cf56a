// What the comparisons of the library with the model share.
#ifndef TESTS_MODEL_MODELTESTING_H_
#define TESTS_MODEL_MODELTESTING_H_

#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

#include "support/Child.h"

// The number in the environment variable `name`, or `fallback`.
inline unsigned int setting(const char *name, unsigned int fallback) {
  const char *value = std::getenv(name);
  return value == nullptr ? fallback
                          : static_cast<unsigned int>(std::stoul(value));
}

// How many random cases a test runs, fewer under a sanitizer, and the seed of
// the first; that of the second is one more, and so on. Printed, so that a
// failure can be repeated.
struct RandomCases {
  RandomCases() {
    std::cout << "RANDOM_TEST_SEED=" << seed << " RANDOM_TEST_RUNS=" << runs
              << std::endl;
  }

  const unsigned int seed = setting("RANDOM_TEST_SEED", std::random_device()());
  const unsigned int runs =
      setting("RANDOM_TEST_RUNS", isSanitized() ? 200 : 2000);
};

#endif  // TESTS_MODEL_MODELTESTING_H_
