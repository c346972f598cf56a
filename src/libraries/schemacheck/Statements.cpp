#include "Statements.h"

#include <algorithm>
#include <vector>

namespace schemacheck {

namespace {

// Whether the lists are of one length, and each value of `a` is found in `b`,
// in any case.
bool isContained(const std::vector<std::string> &a,
                 const std::vector<std::string> &b) {
  if (a.size() != b.size()) {
    return false;
  }
  std::vector<std::string> sorted;
  sorted.reserve(b.size());
  for (const std::string &value : b) {
    sorted.push_back(lowerCase(value));
  }
  std::sort(sorted.begin(), sorted.end());
  return std::all_of(a.begin(), a.end(), [&sorted](const std::string &value) {
    return std::binary_search(sorted.begin(), sorted.end(), lowerCase(value));
  });
}

}  // namespace

bool isIdentical(const Statement &a, const Statement &b) {
  return differences(a, b).empty();
}

std::string differences(const Statement &a, const Statement &b) {
  std::string names;
  for (std::size_t i = 0; i < a.fields.size(); ++i) {
    const Field &one = a.fields[i];
    const Field &other = b.fields[i];
    if (one.isList ? !isContained(one.values, other.values)
                   : one.values != other.values) {
      names += (names.empty() ? "" : ", ") + std::string(one.name);
    }
  }
  return names;
}

std::string inWordsWithPlace(const Statement &statement) {
  return statement.place() + ", " + statement.inWords();
}

}  // namespace schemacheck
