// What in a definition the library may stumble over.
#ifndef SCHEMACHECK_SUSPECTS_H_
#define SCHEMACHECK_SUSPECTS_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "FindingCodes.h"
#include "LibraryReader.h"
#include "SchemaDirectory.h"

namespace schemacheck {

// A possible reason for the library to keep something else than the file says.
// Whether it is one depends on the rest of the definition, and shows in what
// the library has kept.
struct Suspect {
  Code code;  // if it is the reason
  std::size_t offset;
  std::string message;
  // The only field that it can change; none: any of them, and where the
  // definition ends.
  std::string_view field{};
  // How it is reported where it has done no harm; not at all without a code.
  std::optional<Code> harmless = std::nullopt;
  // Whether it is reported whatever the library has kept.
  bool always = false;
};

// The findings of one code in a definition. What is damaged beyond that is not
// a definition any more.
constexpr std::size_t kMostFindings = 100;

// The suspects of a definition. Of those that are alike but for the place, it
// holds no more than lead to findings.
class SuspectList {
 public:
  void add(Suspect suspect);

  std::vector<Suspect> take() { return std::move(m_suspects); }

 private:
  // Suspects that are alike: the first, and how many there are.
  struct Group {
    std::size_t first;
    std::size_t size;
  };

  std::vector<Suspect> m_suspects;
  std::vector<Group> m_groups;
};

// The clauses of a definition that the library is known to read in its own way,
// and its departures from the grammar.
std::vector<Suspect> suspectClauses(const StrictFile &file,
                                    const Definition &definition);

// The tokens of a definition that the library's scanner does not read as one,
// or reads as something else. Leaves the reader somewhere else in the file.
std::vector<Suspect> suspectTokens(const StrictFile &file,
                                   const Definition &definition,
                                   LibraryReader *library);

}  // namespace schemacheck

#endif  // SCHEMACHECK_SUSPECTS_H_
