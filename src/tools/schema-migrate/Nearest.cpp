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
  if (word.empty()) {
    return {};
  }
  using Ranked = std::vector<std::pair<std::size_t, std::string>>;
  const std::string lower = lowerCase(word);
  const std::size_t limit = std::max<std::size_t>(1, word.size() / 3);
  Ranked near;
  Ranked beginning;
  for (const std::string &candidate : candidates) {
    const std::string other = lowerCase(candidate);
    const std::size_t steps = editDistance(lower, other);
    if (steps <= limit) {
      near.emplace_back(steps, candidate);
    } else if (other.compare(0, lower.size(), lower) == 0) {
      beginning.emplace_back(steps, candidate);
    }
  }
  Ranked &ranked = near.empty() ? beginning : near;
  std::sort(ranked.begin(), ranked.end());
  std::vector<std::string> names;
  std::set<std::string> seen;
  for (const auto &[steps, name] : ranked) {
    if (names.size() < kMost && seen.insert(lowerCase(name)).second) {
      names.push_back(name);
    }
  }
  return names;
}

std::string didYouMean(const std::string &word,
                       const std::set<std::string> &candidates) {
  std::string question;
  for (const std::string &name : nearest(word, candidates)) {
    question += (question.empty() ? "; did you mean '" : " or '") + name + "'";
  }
  return question.empty() ? "" : question + "?";
}
