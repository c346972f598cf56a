// Readings that by design never end, and much the same ones that do.
#ifndef TESTS_MODEL_ENDING_H_
#define TESTS_MODEL_ENDING_H_

#include <string>

namespace model {

// Whether the reading of a schema file ends.
bool fileEnds(const std::string &text);

// The text if its reading ends, or one much like it whose reading does: without
// COLLECTIVE, and with a tail that ends all lists of names.
std::string endingFile(std::string text);

// Whether the reading of a list of OIDs ends.
bool listEnds(const std::string &text);

}  // namespace model

#endif  // TESTS_MODEL_ENDING_H_
