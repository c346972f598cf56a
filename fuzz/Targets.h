// The fuzz targets. Each takes any input, ends, leaves nothing behind, and
// aborts the program where something is not as it must be.
#ifndef FUZZ_TARGETS_H_
#define FUZZ_TARGETS_H_

#include <string_view>

// The scanner against the model, token by token. The first byte says how many
// of the others end the buffer of the library's stream, behind a comment; with
// a 0 they are the whole file.
void fuzzScanner(std::string_view input);

// One definition, of the kind that the first byte selects: the parser against
// the model, what guards readings that never end, and the written line.
void fuzzDefinition(std::string_view input);

// A directory (see Input.h) read, written, and read again. The options say how
// many bytes of each file end the buffer of the library's stream, behind a
// comment; with none, or 0, there is no comment.
void fuzzSchema(std::string_view input);

// Two directories read, and then what the options say, in their order; after
// that the schemas are written and destroyed.
void fuzzTwoSchemas(std::string_view input);

// A list of OIDs, as one of excluded and one of modified definitions.
void fuzzLists(std::string_view input);

// The checks of a directory: what they let pass, the library reads as it says.
void fuzzCheck(std::string_view input);

// The plan of a migration between two directories, and what the library does.
void fuzzPlan(std::string_view input);

struct Target {
  const char *name;
  void (*run)(std::string_view input);
};

constexpr Target kTargets[] = {
    {"scanner", fuzzScanner}, {"definition", fuzzDefinition},
    {"schema", fuzzSchema},   {"two-schemas", fuzzTwoSchemas},
    {"lists", fuzzLists},     {"check", fuzzCheck},
    {"plan", fuzzPlan},
};

#endif  // FUZZ_TARGETS_H_
