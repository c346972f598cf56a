// How far two words are apart.
#ifndef SCHEMACHECK_EDITDISTANCE_H_
#define SCHEMACHECK_EDITDISTANCE_H_

#include <cstddef>
#include <string>

namespace schemacheck {

// The fewest insertions, removals and replacements of a character that make
// one word the other (Levenshtein).
std::size_t editDistance(const std::string &a, const std::string &b);

}  // namespace schemacheck

#endif  // SCHEMACHECK_EDITDISTANCE_H_
