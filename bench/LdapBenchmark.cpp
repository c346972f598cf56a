// The measure: the schema parser of OpenLDAP's client library on the same
// attribute types and object classes.
#include <benchmark/benchmark.h>
#include <ldap.h>
#include <ldap_schema.h>

#include <cctype>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "Corpus.h"

namespace {

struct AttributeType {
  using Pointer =
      std::unique_ptr<LDAPAttributeType, decltype(&ldap_attributetype_free)>;
  static constexpr char kFile[] = "attributetypes";

  static Pointer parse(const std::string &line) {
    int code = 0;
    const char *error = nullptr;
    return Pointer(ldap_str2attributetype(line.c_str(), &code, &error,
                                          LDAP_SCHEMA_ALLOW_NONE),
                   ldap_attributetype_free);
  }
  static const char *name(const LDAPAttributeType &type) {
    return type.at_names[0];
  }
  static const char *oid(const LDAPAttributeType &type) { return type.at_oid; }
};

struct Class {
  using Pointer =
      std::unique_ptr<LDAPObjectClass, decltype(&ldap_objectclass_free)>;
  static constexpr char kFile[] = "objectclasses";

  static Pointer parse(const std::string &line) {
    int code = 0;
    const char *error = nullptr;
    return Pointer(ldap_str2objectclass(line.c_str(), &code, &error,
                                        LDAP_SCHEMA_ALLOW_NONE),
                   ldap_objectclass_free);
  }
  static const char *name(const LDAPObjectClass &objectClass) {
    return objectClass.oc_names[0];
  }
  static const char *oid(const LDAPObjectClass &objectClass) {
    return objectClass.oc_oid;
  }
};

template <class Kind>
std::vector<std::string> readLines(const Corpus &corpus) {
  std::ifstream file(corpus.rfc4512() / Kind::kFile);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    lines.push_back(line);
  }
  return lines;
}

template <class Kind>
std::vector<typename Kind::Pointer> parseAll(
    const std::vector<std::string> &lines) {
  std::vector<typename Kind::Pointer> parsed;
  parsed.reserve(lines.size());
  for (const std::string &line : lines) {
    parsed.push_back(Kind::parse(line));
  }
  return parsed;
}

// In memory, without the time to free what was parsed.
template <class Kind>
void parseInMemory(benchmark::State &state) {
  const std::vector<std::string> lines = readLines<Kind>(Corpus::of(state));
  for (auto _ : state) {
    IterationTime time(&state);
    const auto parsed = parseAll<Kind>(lines);
    time.stop();
  }
  reportTime(&state, lines.size());
}

// Both kinds.
void parseWithLibldap(benchmark::State &state) {
  const auto types = readLines<AttributeType>(Corpus::of(state));
  const auto classes = readLines<Class>(Corpus::of(state));
  for (auto _ : state) {
    IterationTime time(&state);
    const auto parsedTypes = parseAll<AttributeType>(types);
    const auto parsedClasses = parseAll<Class>(classes);
    time.stop();
  }
  reportTime(&state, types.size() + classes.size());
}

// The same job as readFile(): from the file to tables.
template <class Kind>
class Table {
 public:
  explicit Table(const Corpus &corpus) {
    std::ifstream file(corpus.rfc4512() / Kind::kFile);
    for (std::string line; std::getline(file, line); ++m_lines) {
      enter(Kind::parse(line));
    }
  }

  std::size_t lines() const { return m_lines; }

 private:
  using Pointer = typename Kind::Pointer;

  void enter(Pointer parsed) {
    if (parsed == nullptr) {
      throw std::runtime_error("cannot parse what was generated");
    }
    std::string name = Kind::name(*parsed);
    for (char &c : name) {
      c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    m_byOid.emplace(Kind::oid(*parsed), parsed.get());
    m_oids.insert(Kind::oid(*parsed));
    m_byName.emplace(std::move(name), std::move(parsed));
  }

  std::map<std::string, Pointer> m_byName;
  std::map<std::string, typename Pointer::pointer> m_byOid;
  std::set<std::string> m_oids;
  std::size_t m_lines = 0;
};

void readWithLibldap(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  std::size_t lines = 0;
  for (auto _ : state) {
    IterationTime time(&state);
    const Table<AttributeType> types(corpus);
    const Table<Class> classes(corpus);
    time.stop();
    lines = types.lines() + classes.lines();
  }
  reportTime(&state, lines);
}

BENCHMARK_TEMPLATE(parseInMemory, AttributeType)
    ->Apply(eachSize)
    ->UseManualTime();
BENCHMARK_TEMPLATE(parseInMemory, Class)->Apply(eachSize)->UseManualTime();
BENCHMARK(parseWithLibldap)->Apply(eachSize)->UseManualTime();
BENCHMARK(readWithLibldap)->Apply(eachSize)->UseManualTime();

}  // namespace
