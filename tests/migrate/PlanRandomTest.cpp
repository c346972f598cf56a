// Plans and migrations of random directories, in which names and OIDs collide
// in every way, under random rules: each definition has one verdict, what is
// written is what was planned, and each preference has its way.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Apply.h"
#include "MigrateTesting.h"
#include "Migration.h"
#include "PlanReport.h"
#include "support/ContractLeaks.h"

namespace fs = std::filesystem;

using schemacheck::Code;
using schemacheck::SchemaDirectory;
using schemacheck::Statement;
using schemaplan::PlannedDefinition;
using schemaplan::Preference;
using schemaplan::Verdict;

namespace {

constexpr const char *kNames[] = {"a", "b", "c", "d", "e", "f"};
constexpr const char *kOids[] = {"1.1", "1.2", "1.3", "1.4", "1.5", "1.6"};
constexpr const char *kFiles[] = {"V3.user.at",   "V3.user.oc",
                                  "V3.system.at", "V3.qor.oc",
                                  "V3.config.at", "V3.modifiedschema"};
constexpr const char *kDescriptions[] = {"x", "y", "z"};
constexpr const char *kLengths[] = {"4", "5", "6"};

constexpr Code kAcceptable[] = {
    Code::kShadowed,       Code::kNameOtherOid,       Code::kOidOtherName,
    Code::kInCopiedFile,   Code::kStorageWithoutType, Code::kNotMergeable,
    Code::kOidTwice,       Code::kOidOfTwoKinds,      Code::kChangedByBoth,
    Code::kPreferenceSplit};

struct Definition {
  std::string file;
  std::string before;  // the line up to the value
  std::string value;
  std::string after;
};

std::string randomValue(const Definition &definition, Random *random) {
  return definition.before.back() == '\'' ? random->oneOf(kDescriptions)
                                          : random->oneOf(kLengths);
}

Definition randomDefinition(Random *random) {
  Definition definition;
  definition.file = random->once(3) ? random->oneOf(kFiles) : "V3.user.at";
  std::string oid = random->oneOf(kOids);
  // Mostly a name goes with an OID.
  const std::string name =
      random->once(12) ? random->oneOf(kNames) : kNames[oid.back() - '1'];
  switch (random->below(5)) {
    case 0:
    case 1:
      definition.before =
          "attributetypes=( " + oid + " NAME '" + name + "' DESC '";
      definition.after = "' )\n";
      break;
    case 2:
      // Mostly the OIDs of object classes are others.
      oid += random->once(12) ? "" : ".1";
      definition.before =
          "objectclasses=( " + oid + " NAME '" + name + "' DESC '";
      definition.after = "' AUXILIARY )\n";
      break;
    default:
      definition.before = "QORAttributetypes=( " + oid + " LENGTH ";
      definition.after = " )\n";
      break;
  }
  definition.value = randomValue(definition, random);
  return definition;
}

using Definitions = std::vector<Definition>;

// What may have become of a directory.
Definitions changed(const Definitions &before, Random *random) {
  Definitions after;
  for (Definition definition : before) {
    if (random->once(4)) {
      definition.value = randomValue(definition, random);
    }
    if (!random->once(8)) {
      after.push_back(definition);
    }
  }
  for (std::size_t i = random->below(5); i > 0; --i) {
    after.push_back(randomDefinition(random));
  }
  return after;
}

// The fields of a definition, to be compared.
std::string textOf(const Statement *statement) {
  std::string text;
  if (statement != nullptr) {
    for (const schemacheck::Field &field : statement->fields()) {
      text += std::string(field.name) + ' ' + field.text() + ' ';
    }
  }
  return text;
}

const Statement *sameIn(const SchemaDirectory &directory,
                        const Statement &statement) {
  return directory.index().holder(statement.definition->kind, statement.key());
}

class PlanRandomTest : public MigrateTest {
 protected:
  void makeRound(Random *random) {
    for (const char *name : {"old", "new", "base", "out", "again"}) {
      fs::remove_all(path(name));
    }
    m_trace.clear();
    const Definitions base = changed({}, random);
    writeDirectory("base", base);
    writeDirectory("old", changed(base, random));
    writeDirectory("new", changed(base, random));
    m_options = {path("old"), path("new")};
    m_options.baseDirectory = path("base");
    m_options.excludedOids = writeList("excluded", 10, random);
    m_options.modifiedOids = writeList("modified", 10, random);
    m_options.decisions = writeDecisions(random);
    m_options.preference = static_cast<Preference>(random->below(3));
    m_options.leaveOut = random->once(2);
    m_options.accepted.clear();
    for (const Code code : kAcceptable) {
      if (random->once(2)) {
        m_options.accepted.insert(code);
      }
    }
    m_trace += "preference " +
               std::to_string(static_cast<int>(m_options.preference)) +
               (m_options.leaveOut ? ", leaving out" : "") + '\n';
    for (const Code code : m_options.accepted) {
      m_trace += std::string("accepting ") + describe(code).name + '\n';
    }
  }

  void expectRound() {
    const Migration migration(m_options);
    requireComplete(migration.plan(), migration.oldDirectory());
    expectSum(migration);
    if (!migration.stoppers().empty()) {
      EXPECT_THROW(applyTo("out"), Trouble);
      EXPECT_FALSE(fs::exists(path("out")));
      return;
    }
    ++m_done;
    try {
      applyTo("out");
    } catch (const std::exception &error) {
      FAIL() << error.what();
    }
    const SchemaDirectory written(path("out"));
    for (const PlannedDefinition &planned : migration.plan().definitions) {
      SCOPED_TRACE(planned.statement->place() + ' ' +
                   verdictName(planned.verdict));
      if (!isLostAnyway(*planned.statement, migration)) {
        expectWritten(planned, migration, written);
      }
    }
    expectPreference(migration, written);

    // What is planned once more is nothing, unless the release has lost by
    // itself what kept something from being carried, or that was written from a
    // file that is copied into one that is not.
    if (m_warnings.find(" is not in the result ") == std::string::npos &&
        m_options.accepted.count(Code::kInCopiedFile) == 0) {
      m_options.newDirectory = path("out");
      const Migration again(m_options);
      EXPECT_FALSE(again.plan().changesAnything());
    }
  }

  std::string m_trace;
  int m_done = 0;

 private:
  void writeDirectory(const std::string &directory,
                      const Definitions &definitions) {
    fs::create_directory(path(directory));
    std::map<std::string, std::string> files;
    files["V3.user.at"];
    for (const Definition &definition : definitions) {
      files[definition.file] +=
          definition.before + definition.value + definition.after;
    }
    for (const auto &[name, text] : files) {
      write(directory + '/' + name, text);
      m_trace += directory + '/' + name + ":\n" + text;
    }
  }

  fs::path writeList(const std::string &name, std::size_t times,
                     Random *random) {
    std::string text;
    for (const char *oid : kOids) {
      text += random->once(times) ? std::string(oid) + '\n' : "";
    }
    return writeTraced(name, text);
  }

  fs::path writeDecisions(Random *random) {
    m_decisions.clear();
    std::string text;
    for (const char *oid : kOids) {
      if (random->once(8) && read("excluded").find(oid) == std::string::npos) {
        // What a list takes away cannot be decided for.
        const bool isListed = read("modified").find(oid) != std::string::npos;
        m_decisions[oid] = random->once(2) && !isListed ? "old" : "new";
        text += oid + (' ' + m_decisions[oid]) + '\n';
      }
    }
    return writeTraced("decisions", text);
  }

  fs::path writeTraced(const std::string &name, const std::string &text) {
    write(name, text);
    m_trace += name + ":\n" + text;
    return path(name);
  }

  void applyTo(const std::string &name) {
    m_warnings = lines(leaksDefinitions([&] {
                         return apply({m_options, path(name)});
                       }).warnings);
  }

  // Whether there is a warning that the release contradicts itself, so that
  // writing it loses its definition of this key.
  bool isLostAnyway(const Statement &statement,
                    const Migration &migration) const {
    const Statement *ofRelease = sameIn(migration.newDirectory(), statement);
    return ofRelease != nullptr &&
           m_warnings.find(ofRelease->inWords() +
                           " is not in the result as it stands here") !=
               std::string::npos;
  }

  static void expectSum(const Migration &migration) {
    std::size_t sum = 0;
    for (const auto &ofKind : migration.plan().counts()) {
      for (const std::size_t number : ofKind) {
        sum += number;
      }
    }
    std::size_t stated = 0;
    for (const auto &file : migration.oldDirectory().files()) {
      for (const auto &section : file.reading.sections) {
        stated += section.definitions.size();
      }
    }
    EXPECT_EQ(sum, stated);
  }

  static void expectWritten(const PlannedDefinition &planned,
                            const Migration &migration,
                            const SchemaDirectory &written) {
    const Statement &statement = *planned.statement;
    const std::string found = textOf(sameIn(written, statement));
    const Statement *ofRelease = sameIn(migration.newDirectory(), statement);
    switch (planned.verdict) {
      case Verdict::kIdentical:
      case Verdict::kAdded:
      case Verdict::kReplaces:
        EXPECT_EQ(found, textOf(&statement));
        break;
      case Verdict::kWithdrawn:
        // Another definition may have its name.
        EXPECT_EQ(found.find("OID " + statement.oid() + ' '),
                  std::string::npos);
        break;
      case Verdict::kExcluded:
      case Verdict::kShadowed:
      case Verdict::kBlocked:
        // Another definition of that key may have been carried, and the
        // release's may have been withdrawn.
        if (migration.oldDirectory().index().holder(
                statement.definition->kind, statement.key()) == &statement &&
            !found.empty()) {
          EXPECT_EQ(found, textOf(ofRelease));
        }
        break;
    }
  }

  // What both sides hold under a key and an OID, and the base, too.
  void expectPreference(const Migration &migration,
                        const SchemaDirectory &written) {
    const SchemaDirectory base(path("base"));
    const std::string excluded = read("excluded") + read("modified");
    for (const Statement &statement : migration.oldDirectory().statements()) {
      const Statement *ofRelease = sameIn(migration.newDirectory(), statement);
      if (sameIn(migration.oldDirectory(), statement) != &statement ||
          ofRelease == nullptr || isLostAnyway(statement, migration) ||
          ofRelease->oid() != statement.oid() ||
          excluded.find(statement.oid()) != std::string::npos ||
          wasAccepted(migration, statement)) {
        continue;
      }
      SCOPED_TRACE(statement.place());
      const bool isOld = isOldAskedFor(statement, *ofRelease, base);
      EXPECT_EQ(textOf(sameIn(written, statement)),
                textOf(isOld ? &statement : ofRelease));
      ++m_preferred;
    }
  }

  // Whether a part of what has the OID was left out because that is acceptable.
  static bool wasAccepted(const Migration &migration,
                          const Statement &statement) {
    for (const PlannedDefinition &planned : migration.plan().definitions) {
      if (planned.statement->oid() == statement.oid() && planned.obstacle) {
        return true;
      }
    }
    return false;
  }

  bool isOldAskedFor(const Statement &statement, const Statement &ofRelease,
                     const SchemaDirectory &base) const {
    const auto decision = m_decisions.find(statement.oid());
    if (decision != m_decisions.end()) {
      return decision->second == "old";
    }
    switch (m_options.preference) {
      case Preference::kOld:
        return true;
      case Preference::kNew:
        return false;
      case Preference::kChanged:
        break;
    }
    // Only one side has changed it, or the migration would have stopped.
    const Statement *before = sameIn(base, statement);
    return before != nullptr && textOf(before) == textOf(&ofRelease);
  }

 protected:
  int m_preferred = 0;

 private:
  MigrationOptions m_options;
  std::string m_warnings;
  std::map<std::string, std::string> m_decisions;
};

TEST_F(PlanRandomTest, WhatIsWrittenIsWhatWasPlanned) {
  Random random;
  SCOPED_TRACE(random.seed());
  for (int round = 0; round < 300 && !HasFailure(); ++round) {
    makeRound(&random);
    SCOPED_TRACE(m_trace);
    expectRound();
  }
  EXPECT_GT(m_done, 60);
  EXPECT_GT(m_preferred, 60);
}

}  // namespace
