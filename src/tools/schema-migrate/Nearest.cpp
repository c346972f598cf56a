#include "Nearest.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "EditDistance.h"
#include "Fields.h"

using schemacheck::editDistance;
using schemacheck::lowerCase;

namespace {

constexpr std::size_t kMost = 3;

}  // namespace

std::vector<std::string> nearest(const std::string &word,
                                 const std::set<std::string> &candidates) {
  const std::string lower = lowerCase(word);
  const std::size_t limit = std::max<std::size_t>(1, word.size() / 3);
  std::vector<std::pair<std::size_t, std::string>> ranked;
  for (const std::string &candidate : candidates) {
    const std::size_t steps = editDistance(lower, lowerCase(candidate));
    if (steps <= limit) {
      ranked.emplace_back(steps, candidate);
    }
  }
  std::sort(ranked.begin(), ranked.end());
  std::vector<std::string> names;
  for (const auto &[steps, name] : ranked) {
    if (names.size() < kMost) {
      names.push_back(name);
    }
  }
  return names;
}
