#include "EditDistance.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace schemacheck {

std::size_t editDistance(const std::string &a, const std::string &b) {
  // Rows of the table of the distances between the beginnings of the words: the
  // one of `a` up to its i-th character, and the two before it.
  std::vector<std::size_t> row(b.size() + 1);
  std::vector<std::size_t> last(row.size());
  std::vector<std::size_t> secondLast(row.size());
  std::iota(row.begin(), row.end(), 0);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    secondLast.swap(last);
    last.swap(row);
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({row[j - 1] + 1, last[j] + 1, replaced});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        row[j] = std::min(row[j], secondLast[j - 2] + 1);
      }
    }
  }
  return row.back();
}

}  // namespace schemacheck
