// Schema directories of realistic shape, for measurements.
#ifndef BENCH_SCHEMAGENERATOR_H_
#define BENCH_SCHEMAGENERATOR_H_

#include <cstddef>
#include <filesystem>

// Which of two schemas that are to be compared. Of 100 definitions of the old
// one, the new one has 85 in the same form and 5 in another, and lacks 10.
enum class Age { kOld, kNew };

// How many of `definitions` are of a kind: of 100, 60 are attribute types, 25
// storage definitions and 15 object classes.
struct Shares {
  explicit Shares(std::size_t definitions);

  std::size_t types;
  std::size_t storage;
  std::size_t classes;
};

// Writes V3.user.at and V3.user.oc with `definitions` definitions of about 230
// bytes each (a new schema: those of them that it has). The same arguments give
// the same files.
void generateSchema(const std::filesystem::path &directory,
                    std::size_t definitions, Age age);

// Writes the attribute types and the object classes of the old schema as RFC
// 4512 has them, one a line, to attributetypes and objectclasses.
void generateRfc4512(const std::filesystem::path &directory,
                     std::size_t definitions);

// Makes the directories old and new in `directory`, which may be there, and
// writes the two schemas to them, and the RFC 4512 lines beside them. Throws
// when a file cannot be written.
void generateCorpus(const std::filesystem::path &directory,
                    std::size_t definitions);

#endif  // BENCH_SCHEMAGENERATOR_H_
