#include "Nearest.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

#include "Attribute.h"

namespace {

constexpr std::size_t kMost = 3;

// The Levenshtein distance.
std::size_t distance(const std::string &a, const std::string &b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), 0);
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, replaced});
    }
  }
  return row.back();
}

}  // namespace

std::vector<std::string> nearest(const std::string &word,
                                 const std::set<std::string> &candidates) {
  const std::string lower = Attribute().convert(word);
  const std::size_t limit = std::max<std::size_t>(1, word.size() / 3);
  std::vector<std::pair<std::size_t, std::string>> ranked;
  for (const std::string &candidate : candidates) {
    const std::size_t steps = distance(lower, Attribute().convert(candidate));
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
