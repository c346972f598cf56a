// Inputs of any size, and what the library does with them; script/big measures
// it.
//
//   big_inputs make CASE SIZE DIR   writes the files of a case into DIR
//   big_inputs run CASE SIZE DIR    runs the library on them
//
// Fails when the library does not do with them what it should.
#include <cstddef>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>

#include "SchemaManager.h"

namespace {

const std::string kFile = "V3.user.at";
const std::string kArc = "1.3.6.1.4.1.42424.";

void require(bool held, const char *what) {
  if (!held) {
    throw std::runtime_error(what);
  }
}

class Output {
 public:
  Output(const std::string &directory, const std::string &name)
      : m_out(directory + '/' + name) {}

  template <class Value>
  Output &operator<<(const Value &value) {
    m_out << value;
    return *this;
  }

  void close() {
    m_out.close();
    require(m_out.good(), "a file cannot be written");
  }

 private:
  std::ofstream m_out;
};

// `number` as ten digits, which order as numbers do, below
// 9,000,000,000.
std::string digits(std::size_t number) {
  return std::to_string(1000000000 + number);
}

void read(SchemaManager *schema) {
  require(schema->readFile(kFile) == 0, "the file is not read");
}

void write(SchemaManager *schema, const std::string &directory) {
  require(schema->writeFile(directory, kFile + ".written") == 89,
          "an unknown file is written");
  require(schema->writeFile(directory + "/out", kFile) == 0,
          "the file is not written");
}

// A file of ordinary definitions of all kinds, of `size` bytes. It is read
// twice and compared with itself, which leaves nothing, merged into an empty
// schema, and written.
void makeFile(std::size_t size, const std::string &directory) {
  Output out(directory, kFile);
  std::size_t written = 0;
  std::size_t types = 0;
  for (; written < size; ++types) {
    const std::size_t i = types;
    const std::string number = digits(i);
    std::string text =
        "attributetypes=( " + kArc + "1." + number +
        " NAME ( 'site-attribute-" + number + "' 'site" + number +
        "' ) DESC 'An attribute of the site, " +
        "with a description of usual length' EQUALITY 2.5.13.2 SYNTAX " +
        "1.3.6.1.4.1.1466.115.121.1.15{256} SINGLE-VALUE USAGE " +
        "userApplications )\n";
    if (i % 2 == 0) {
      text += "QORAttributetypes=( " + kArc + "1." + number + " DBNAME ( 'c" +
              number + "' 'c" + number + "' ) ACCESS-CLASS normal LENGTH 256 " +
              "EQUALITY APPROX )\n";
    }
    if (i % 4 == 0) {
      text += "objectclasses=( " + kArc + "2." + number + " NAME 'site-class-" +
              number + "' DESC 'A class of the site' MUST site" + number +
              " MAY ( site" + number + " $ site-attribute-" + number + " ) )\n";
    }
    out << text;
    written += text.size();
  }
  out.close();
  Output count(directory, "count");
  count << types;
  count.close();
}

void runFile(std::size_t /*size*/, const std::string &directory) {
  std::size_t types = 0;
  std::ifstream(directory + "/count") >> types;
  SchemaManager old(directory), same(directory), release(directory);
  read(&old);
  read(&same);
  require(types > 0 && old.attributeTypes().size() == types &&
              old.attributeTypesByOid().size() == types &&
              old.storageDefinitions().size() == (types + 1) / 2 &&
              old.objectClasses().size() == (types + 3) / 4,
          "there are definitions missing");
  require(
      old.checkCollisions(&same) == 1 && old.attributeTypes().size() == types,
      "the check leaves something out");
  require(old.compSchemas(&same) == 1 && old.attributeTypes().empty() &&
              old.objectClasses().empty() && old.storageDefinitions().empty(),
          "equal definitions differ");
  require(release.mergeSchemas(&same) == 1, "the merge fails");
  require(release.attributeTypes().size() == types &&
              release.objectClasses().size() == (types + 3) / 4,
          "the merge leaves something out");
  write(&release, directory);
}

// Definitions of each kind with lists of `size` values, and of two schemas, the
// second one's in the opposite order and in capitals. They are compared, which
// leaves none, checked and merged, and written.
std::string list(std::size_t size, bool backwards, const char *before,
                 const char *behind) {
  std::string text;
  for (std::size_t i = 0; i < size; ++i) {
    text += before;
    text += backwards ? "SITE-NAME-" : "site-name-";
    text += digits(backwards ? size - 1 - i : i) + behind;
  }
  return text;
}

void makeNames(std::size_t size, const std::string &directory) {
  for (const bool backwards : {false, true}) {
    Output out(directory + (backwards ? "/new" : "/old"), kFile);
    // All first names are the same: they are the keys.
    out << "attributetypes=( " + kArc + "1.1 NAME ( 'a' "
        << list(size, backwards, "'", "' ")
        << ") DESC 'x' )\nobjectclasses=( " + kArc + "1.2 NAME 'c' SUP ( s "
        << list(size, backwards, "$ ", " ") << ") MUST ( cn "
        << list(size, backwards, "$ ", " ") << ") )\nQORAttributetypes=( "
        << kArc << "1.1 DBNAME ( " << list(size, backwards, "'", "' ")
        << ") )\n";
    out.close();
  }
}

void runNames(std::size_t size, const std::string &directory) {
  SchemaManager old(directory + "/old"), release(directory + "/new");
  read(&old);
  read(&release);
  require(old.attributeTypes().at("a")->names().size() == size + 1,
          "there are names missing");
  SchemaManager checked(directory + "/old");
  read(&checked);
  require(checked.checkCollisions(&release) == 1, "the check fails");
  require(checked.getAttrTable().size() > 20 * size, "the report is short");
  require(old.compSchemas(&release) == 1, "the comparison fails");
  require(old.attributeTypes().empty() && old.objectClasses().empty() &&
              old.storageDefinitions().empty(),
          "equal definitions differ");
  require(release.mergeSchemas(&checked) == 1, "the merge fails");
  write(&release, directory);
}

// A description of `size` bytes.
void makeString(std::size_t size, const std::string &directory) {
  for (const char *side : {"/old", "/new"}) {
    Output out(directory + side, kFile);
    const std::string text(size, 's');
    out << "attributetypes=( " << kArc << "1.1 NAME 'a' DESC '" << text
        << "' )\n";
    out.close();
  }
}

void runString(std::size_t size, const std::string &directory) {
  SchemaManager old(directory + "/old"), release(directory + "/new");
  read(&old);
  read(&release);
  require(old.attributeTypes().at("a")->description().size() == size,
          "the description is short");
  require(old.getAttr("a").getDescription().size() == size,
          "the copy is short");
  SchemaManager checked(directory + "/old");
  read(&checked);
  require(checked.checkCollisions(&release) == 1, "the check fails");
  require(old.compSchemas(&release) == 1, "the comparison fails");
  require(old.attributeTypes().empty(), "equal definitions differ");
  require(release.mergeSchemas(&checked) == 1, "the merge fails");
  write(&release, directory);
}

// A list of `size` OIDs in no order, which are read as excluded, looked up (one
// of a hundred), and withdrawn from the schema, which has one of a thousand.
std::string listed(std::size_t i) {
  return kArc + "1." + digits(i * 7919 % 1000000007);
}

void makeList(std::size_t size, const std::string &directory) {
  Output out(directory, "list");
  Output file(directory, kFile);
  for (std::size_t i = 0; i < size; ++i) {
    const std::string oid = listed(i);
    out << oid << (i % 100 == 0 ? " # a comment\n" : "\n");
    if (i % 1000 == 0) {
      file << "attributetypes=( " << oid << " NAME 'a" << i << "' DESC 'x' )\n";
    }
  }
  out.close();
  file.close();
}

void runList(std::size_t size, const std::string &directory) {
  SchemaManager schema(directory);
  read(&schema);
  require(schema.readExcludedOids(directory + "/list") == 0,
          "the list is not read");
  for (std::size_t i = 0; i < size; i += 100) {
    require(schema.isExcluded(listed(i)) == 1, "an OID is missing");
  }
  require(schema.isExcluded(kArc) == 0, "an OID is excluded");
  require(schema.modifySchema(directory + "/list") == 0,
          "the list is not read");
  require(schema.attributeTypes().empty(), "a definition is left");
}

struct Case {
  void (*make)(std::size_t size, const std::string &directory);
  void (*run)(std::size_t size, const std::string &directory);
};

const std::map<std::string, Case> kCases = {
    {"file", {makeFile, runFile}},
    {"names", {makeNames, runNames}},
    {"string", {makeString, runString}},
    {"list", {makeList, runList}},
};

}  // namespace

int main(int argc, char **argv) try {
  require(argc == 5, "expected make or run, a case, a size and a directory");
  const Case &which = kCases.at(argv[2]);
  const std::size_t size = std::stoull(argv[3]);
  (argv[1] == std::string("make") ? which.make : which.run)(size, argv[4]);
  return 0;
} catch (const std::exception &error) {
  std::cerr << "big_inputs: " << error.what() << '\n';
  return 1;
}
