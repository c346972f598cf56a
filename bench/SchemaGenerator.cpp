#include "SchemaGenerator.h"

#include <fstream>
#include <string>

namespace {

constexpr char kSyntax[] = "1.3.6.1.4.1.1466.115.121.1.15";

std::string name(const char *kind, std::size_t number) {
  return "example-" + std::string(kind) + "-" + std::to_string(number);
}

std::string typeOid(std::size_t number) {
  return "1.3.6.1.4.1.99999.1." + std::to_string(number);
}

void writeType(std::size_t number, std::ostream *out) {
  *out << "attributetypes=( " << typeOid(number) << " NAME ( '"
       << name("attribute", number) << "' '" << name("alias", number)
       << "' ) DESC 'An attribute type of the example, the number of which is "
       << number << "' EQUALITY 2.5.13.2 SUBSTR 2.5.13.4 SYNTAX " << kSyntax
       << '{' << 64 + number % 7 * 64 << "} "
       << (number % 3 == 0 ? "SINGLE-VALUE " : "")
       << "USAGE userApplications )\n";
}

void writeStorage(std::size_t number, std::ostream *out) {
  *out << "QORAttributetypes=( " << typeOid(number) << " DBNAME ( '"
       << name("COLUMN", number) << "' '" << name("COLUMN", number)
       << "' ) ACCESS-CLASS normal LENGTH " << 64 + number % 7 * 64
       << " EQUALITY SUBSTR )\n";
}

void writeClass(std::size_t number, std::size_t types, std::ostream *out) {
  *out << "objectclasses=( 1.3.6.1.4.1.99999.2." << number << " NAME '"
       << name("class", number)
       << "' DESC 'An object class of the example' SUP ( "
       << name("class", number / 2) << " ) "
       << (number == 0 ? "ABSTRACT" : "STRUCTURAL") << " MUST ( "
       << name("attribute", number % types) << " ) MAY ( "
       << name("attribute", (number + 1) % types) << " $ "
       << name("attribute", (number + 2) % types) << " ) )\n";
}

}  // namespace

void generateSchema(const std::filesystem::path &directory,
                    std::size_t definitions) {
  const std::size_t types = definitions * 60 / 100;
  const std::size_t storage = definitions * 25 / 100;
  const std::size_t classes = definitions - types - storage;
  std::ofstream attributes(directory / "V3.user.at");
  for (std::size_t number = 0; number < types; ++number) {
    writeType(number, &attributes);
    if (number < storage) {
      writeStorage(number, &attributes);
    }
  }
  std::ofstream objects(directory / "V3.user.oc");
  for (std::size_t number = 0; number < classes; ++number) {
    writeClass(number, types, &objects);
  }
}
