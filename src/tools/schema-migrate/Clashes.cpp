#include "Clashes.h"

#include <algorithm>
#include <iterator>
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

class Finder {
 public:
  Finder(const SchemaDirectory &old, const SchemaDirectory &release,
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

  std::vector<Clash> takeClashes() { return std::move(m_clashes); }

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
    std::vector<Clash> shared;
    std::unordered_map<const Statement *, std::size_t> numbers;
    const auto take = [&](const Index &index, const std::string &key,
                          const auto &add) {
      const auto found = index.find(key);
      if (key.empty() || found == index.end()) {
        return;
      }
      const Statements &others = found->second;
      for (std::size_t i = 0; i < others.size(); ++i) {
        if (areHalves(statement, *others[i]) ||
            areSame(statement, *others[i])) {
          continue;
        }
        const auto [number, isNew] = numbers.emplace(others[i], shared.size());
        if (isNew) {
          shared.push_back({&statement, others[i]});
        }
        add(&shared[number->second]);
      }
    };
    take(m_withOid, statement.oid(),
         [](Clash *clash) { clash->sameOid = true; });
    for (const std::string &name : namesOf(statement)) {
      take(m_withName, name,
           [&name](Clash *clash) { clash->sameNames.push_back(name); });
    }
    std::move(shared.begin(), shared.end(), std::back_inserter(m_clashes));
  }

  Index m_withOid;  // of the release
  Index m_withName;
  std::vector<Clash> m_clashes;
};

// "OID 1.2, name 'cn'"
std::string sharedInWords(const Clash &clash) {
  std::string text = clash.sameOid ? "OID " + clash.old->oid() : "";
  for (const std::string &name : clash.sameNames) {
    text += (text.empty() ? "name '" : ", name '") + name + "'";
  }
  return text;
}

}  // namespace

std::vector<Clash> findClashes(const SchemaDirectory &old,
                               const SchemaDirectory &release,
                               const std::set<std::string> &excludedOids) {
  return Finder(old, release, excludedOids).takeClashes();
}

void printClashes(const std::vector<Clash> &clashes, std::ostream *out) {
  *out << "All clashes of names and OIDs: " << clashes.size() << '\n';
  for (const Clash &clash : clashes) {
    *out << "  " << inWordsWithPlace(*clash.old) << ", and "
         << inWordsWithPlace(*clash.release) << ": " << sharedInWords(clash)
         << '\n';
  }
}
