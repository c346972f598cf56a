#include "Clashes.h"

#include <ostream>
#include <unordered_map>
#include <utility>
#include <vector>

using schemacheck::Kind;
using schemacheck::lowerCase;
using schemacheck::SchemaDirectory;
using schemacheck::Statement;
using schemacheck::Value;

namespace {

// Of the definitions that have one name or OID, as many are looked at.
constexpr std::size_t kMostOfOne = 100;

using Statements = std::vector<const Statement *>;

bool areHalves(const Statement &a, const Statement &b) {
  const Kind one = a.definition->kind;
  const Kind other = b.definition->kind;
  return (one == Kind::kStorage && other == Kind::kAttributeType) ||
         (one == Kind::kAttributeType && other == Kind::kStorage);
}

bool areSame(const Statement &a, const Statement &b) {
  return a.definition->kind == b.definition->kind && a.key() == b.key() &&
         isIdentical(a, b);
}

class Clashes {
 public:
  Clashes(const SchemaDirectory &old, const SchemaDirectory &release,
          const std::set<std::string> &excludedOids) {
    for (const Statement &statement : release.statements()) {
      m_withOid[statement.oid()].push_back(&statement);
      for (const std::string &name : namesOf(statement)) {
        m_withName[name].push_back(&statement);
      }
    }
    for (const Statement &statement : old.statements()) {
      if (excludedOids.count(statement.oid()) == 0) {
        look(statement);
      }
    }
  }

  const std::vector<std::string> &lines() const { return m_lines; }

 private:
  using Index = std::unordered_map<std::string, Statements>;

  static std::set<std::string> namesOf(const Statement &statement) {
    std::set<std::string> names;
    for (const Value *name : statement.valuesOf("NAME")) {
      names.insert(lowerCase(name->text));
    }
    return names;
  }

  void look(const Statement &statement) {
    // What the statement shares with others, in the order in which it is found.
    std::vector<std::pair<const Statement *, std::string>> shared;
    std::unordered_map<const Statement *, std::size_t> numbers;
    const auto take = [&](const Index &index, const std::string &key,
                          const std::string &what) {
      const auto found = index.find(key);
      if (key.empty() || found == index.end()) {
        return;
      }
      const Statements &others = found->second;
      for (std::size_t i = 0; i < others.size() && i < kMostOfOne; ++i) {
        if (areHalves(statement, *others[i]) ||
            areSame(statement, *others[i])) {
          continue;
        }
        const auto [number, isNew] = numbers.emplace(others[i], shared.size());
        if (isNew) {
          shared.emplace_back(others[i], what);
        } else {
          shared[number->second].second += ", " + what;
        }
      }
    };
    take(m_withOid, statement.oid(), "OID " + statement.oid());
    for (const std::string &name : namesOf(statement)) {
      take(m_withName, name, "name '" + name + "'");
    }
    for (const auto &[other, what] : shared) {
      m_lines.push_back(inWordsWithPlace(statement) + ", and " +
                        inWordsWithPlace(*other) + ": " + what);
    }
  }

  Index m_withOid;  // of the release
  Index m_withName;
  std::vector<std::string> m_lines;
};

}  // namespace

bool printClashes(const SchemaDirectory &old, const SchemaDirectory &release,
                  const std::set<std::string> &excludedOids,
                  std::ostream *out) {
  const Clashes clashes(old, release, excludedOids);
  *out << "All clashes of names and OIDs: " << clashes.lines().size() << '\n';
  for (const std::string &line : clashes.lines()) {
    *out << "  " << line << '\n';
  }
  return !clashes.lines().empty();
}
