// The names that a mistyped one may have meant.
#ifndef SCHEMA_MIGRATE_NEAREST_H_
#define SCHEMA_MIGRATE_NEAREST_H_

#include <set>
#include <string>
#include <vector>

// At most three of `candidates`, nearest first: those that become `word`, in
// any case, by the fewest insertions, removals and replacements of a character,
// and by no more than a third of its length (at least one).
std::vector<std::string> nearest(const std::string &word,
                                 const std::set<std::string> &candidates);

#endif  // SCHEMA_MIGRATE_NEAREST_H_
