// How far two words are apart.
#ifndef SCHEMACHECK_EDITDISTANCE_H_
#define SCHEMACHECK_EDITDISTANCE_H_

#include <cstddef>
#include <string>

namespace schemacheck {

// The fewest steps that make one word the other: a character is inserted,
// removed or replaced, or two neighbours are swapped, no place twice (optimal
// string alignment).
std::size_t editDistance(const std::string &a, const std::string &b);

}  // namespace schemacheck

#endif  // SCHEMACHECK_EDITDISTANCE_H_
