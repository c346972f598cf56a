// Reads the files that are to be checked.
#ifndef SCHEMACHECK_FILETEXT_H_
#define SCHEMACHECK_FILETEXT_H_

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "Finding.h"
#include "SourceText.h"

namespace schemacheck {

// The whole of a file, in one go. Nothing, and a finding on why, unless it is a
// regular file of at most `sizeLimit` bytes that can be read to its end and
// holds no zero byte.
std::optional<SourceText> readFileText(const std::filesystem::path &path,
                                       std::uintmax_t sizeLimit,
                                       std::vector<Finding> *findings);

}  // namespace schemacheck

#endif  // SCHEMACHECK_FILETEXT_H_
