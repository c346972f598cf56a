// The names that a mistyped one may have meant.
#ifndef SCHEMA_MIGRATE_NEAREST_H_
#define SCHEMA_MIGRATE_NEAREST_H_

#include <set>
#include <string>
#include <vector>

// At most three of `candidates`, nearest first: those that become `word`, in
// any case, by the fewest steps (schemacheck::editDistance), and by no more
// than a third of its length, one at least. If there is none, those that begin
// with `word`. Of those that are equal but for case there is one; of the empty
// word there is none.
std::vector<std::string> nearest(const std::string &word,
                                 const std::set<std::string> &candidates);

// The end of a message about an unknown word: "; did you mean 'a' or 'b'?", or
// nothing if no candidate is near.
std::string didYouMean(const std::string &word,
                       const std::set<std::string> &candidates);

#endif  // SCHEMA_MIGRATE_NEAREST_H_
