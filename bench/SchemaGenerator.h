// Schema directories of realistic shape, for measurements.
#ifndef BENCH_SCHEMAGENERATOR_H_
#define BENCH_SCHEMAGENERATOR_H_

#include <cstddef>
#include <filesystem>

// Writes the files of a directory with `definitions` definitions, of which 60
// in 100 are attribute types, 25 storage definitions and 15 object classes, of
// about 230 bytes each. The same number gives the same files.
void generateSchema(const std::filesystem::path &directory,
                    std::size_t definitions);

#endif  // BENCH_SCHEMAGENERATOR_H_
