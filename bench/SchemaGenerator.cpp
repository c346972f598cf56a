#include "SchemaGenerator.h"

#include <fstream>
#include <string>

namespace {

constexpr char kSyntax[] = "1.3.6.1.4.1.1466.115.121.1.15";

// Names are in another order than OIDs, as in real schemas. Up to a million
// definitions have different ones.
std::string name(const char *kind, std::size_t number) {
  const std::size_t scattered = number * 611953 % 1000003;
  return "example-" + std::string(kind) + "-" + std::to_string(scattered);
}

std::string typeOid(std::size_t number) {
  return "1.3.6.1.4.1.99999.1." + std::to_string(number);
}

// Of the numbers of each 20, the new schema lacks two and has one in another
// form.
bool lacks(Age age, std::size_t number) {
  return age == Age::kNew && (number % 20 == 4 || number % 20 == 14);
}

bool differs(Age age, std::size_t number) {
  return age == Age::kNew && number % 20 == 9;
}

// A file; a failure throws.
class Output : public std::ofstream {
 public:
  explicit Output(const std::filesystem::path &path) {
    exceptions(failbit | badbit);
    open(path);
  }
};

// Each definition from its opening parenthesis on.

void writeType(std::size_t number, Age age, std::ostream *out) {
  *out << "( " << typeOid(number) << " NAME ( '" << name("attribute", number)
       << "' '" << name("alias", number)
       << "' ) DESC 'An attribute type of the example, the number of which is "
       << number << "' EQUALITY 2.5.13.2 SUBSTR 2.5.13.4 SYNTAX " << kSyntax
       << '{' << 64 + number % 7 * 64 + (differs(age, number) ? 1 : 0) << "} "
       << (number % 3 == 0 ? "SINGLE-VALUE " : "")
       << "USAGE userApplications )\n";
}

void writeStorage(std::size_t number, Age age, std::ostream *out) {
  *out << "( " << typeOid(number) << " DBNAME ( '" << name("COLUMN", number)
       << "' '" << name("COLUMN", number) << "' ) ACCESS-CLASS normal LENGTH "
       << 64 + number % 7 * 64 + (differs(age, number) ? 1 : 0)
       << " EQUALITY SUBSTR )\n";
}

void writeClass(std::size_t number, std::size_t types, Age age,
                std::ostream *out) {
  *out << "( 1.3.6.1.4.1.99999.2." << number << " NAME '"
       << name("class", number) << "' DESC 'An object class of the example' "
       << (number == 0 ? "ABSTRACT"
                       : "SUP ( " + name("class", number / 2) + " ) STRUCTURAL")
       << " MUST ( " << name("attribute", number % types) << " ) MAY ( "
       << name("attribute", (number + 1) % types) << " $ "
       << name("attribute", (number + 2) % types)
       << (differs(age, number) ? " $ cn" : "") << " ) )\n";
}

}  // namespace

Shares::Shares(std::size_t definitions)
    : types(definitions * 60 / 100),
      storage(definitions * 25 / 100),
      classes(definitions - types - storage) {}

void generateSchema(const std::filesystem::path &directory,
                    std::size_t definitions, Age age) {
  const Shares shares(definitions);
  Output attributes(directory / "V3.user.at");
  for (std::size_t number = 0; number < shares.types; ++number) {
    if (lacks(age, number)) {
      continue;
    }
    attributes << "attributetypes=";
    writeType(number, age, &attributes);
    if (number < shares.storage) {
      attributes << "QORAttributetypes=";
      writeStorage(number, age, &attributes);
    }
  }
  Output objects(directory / "V3.user.oc");
  for (std::size_t number = 0; number < shares.classes; ++number) {
    if (!lacks(age, number)) {
      objects << "objectclasses=";
      writeClass(number, shares.types, age, &objects);
    }
  }
}

void generateRfc4512(const std::filesystem::path &directory,
                     std::size_t definitions) {
  const Shares shares(definitions);
  Output attributes(directory / "attributetypes");
  for (std::size_t number = 0; number < shares.types; ++number) {
    writeType(number, Age::kOld, &attributes);
  }
  Output objects(directory / "objectclasses");
  for (std::size_t number = 0; number < shares.classes; ++number) {
    writeClass(number, shares.types, Age::kOld, &objects);
  }
}

void generateCorpus(const std::filesystem::path &directory,
                    std::size_t definitions) {
  std::filesystem::create_directories(directory / "old");
  std::filesystem::create_directories(directory / "new");
  generateSchema(directory / "old", definitions, Age::kOld);
  generateSchema(directory / "new", definitions, Age::kNew);
  generateRfc4512(directory, definitions);
}
