#include <algorithm>
#include <future>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "Breakages.h"
#include "DefinitionChecks.h"
#include "MergeRules.h"
#include "Plan.h"

namespace schemaplan {

using schemacheck::Code;
using schemacheck::Finding;
using schemacheck::Kind;
using schemacheck::kModifiedSchema;
using schemacheck::kSchemaFiles;
using schemacheck::Statement;

namespace {

using Group = std::vector<PlannedDefinition *>;

constexpr unsigned int bitOf(std::size_t file) { return 1U << file; }

// The files that are copied from the release, as bits.
constexpr unsigned int copiedFiles() {
  unsigned int files = 0;
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    files |= kSchemaFiles[file].written ? 0 : bitOf(file);
  }
  return files;
}

constexpr unsigned int kCopiedFiles = copiedFiles();

// Where the merge records what it adds: it does not matter which it is.
constexpr unsigned int kSomeWrittenFile = bitOf(0);

// Whether a list of OIDs can hold it.
bool canBeListed(std::string_view oid) {
  return !oid.empty() &&
         oid.find_first_of("# \t\n\v\f\r") == std::string_view::npos;
}

bool isOfKey(const Statement &statement, const Statement &other) {
  return statement.definition->kind == other.definition->kind &&
         statement.key() == other.key();
}

class Planner {
 public:
  Planner(const Installation &old, const Installation &release,
          const Installation *base, const Rules &rules)
      : m_old(old),
        m_release(release),
        m_rules(rules),
        m_origins(old, release, base),
        m_mergeRules(old, release) {
    m_plan.excludedOids = rules.excludedOids;
  }

  Plan run() {
    matchAll();
    recordFiles();
    excludeListed();
    findCarried();
    for (const auto &[oid, group] : m_carried) {
      decide(std::string(oid), group);
    }
    obstruct();
    for (const auto &[oid, group] : m_carried) {
      settle(std::string(oid), group);
    }
    withdraw();
    makeResult();
    m_plan.breakages =
        findBreakages(m_old, m_release, m_plan.result, m_plan.resultByOid);
    return std::move(m_plan);
  }

 private:
  // The fields of the two sides, for one comparison at a time.
  struct Fields {
    std::vector<schemacheck::FieldView> old;
    std::vector<schemacheck::FieldView> release;
  };

  // In two halves at once: no definition's verdict asks for another's.
  void matchAll() {
    const std::vector<Statement> &statements = m_old.directory.statements();
    m_plan.definitions.resize(statements.size());
    const auto match = [&](std::size_t begin, std::size_t end) {
      Fields fields;
      for (std::size_t i = begin; i < end; ++i) {
        m_plan.definitions[i] = matched(statements[i], &fields);
      }
    };
    const std::size_t half = statements.size() / 2;
    // Where no thread can be had, get() does the work.
    auto first = std::async(std::launch::async | std::launch::deferred, match,
                            std::size_t{0}, half);
    match(half, statements.size());
    first.get();
  }

  // The verdict that follows from the two sides alone.
  PlannedDefinition matched(const Statement &statement, Fields *fields) const {
    PlannedDefinition planned{&statement, Verdict::kBlocked};
    if (!m_old.isRead(statement)) {
      planned.obstacle = notRead(statement);
      planned.obstacle->message += "; check says why";
    } else if (!statement.isEntered()) {
      planned.obstacle = findingAt(
          Code::kNoOid, statement.file->text, statement.definition->span.begin,
          "expected an OID behind '(', found none; the library drops the "
          "definition");
    } else if (!statement.isHeld()) {
      planned.verdict = Verdict::kShadowed;
      planned.counterpart = m_old.directory.index().holder(
          statement.definition->kind, statement.key());
      Finding finding = repetition(statement, *planned.counterpart);
      if (finding.severity() == schemacheck::Severity::kError) {
        planned.obstacle = std::move(finding);
      }
    } else {
      match(&planned, fields);
    }
    planned.stops = planned.obstacle && !isAccepted(*planned.obstacle);
    return planned;
  }

  void match(PlannedDefinition *planned, Fields *fields) const {
    const Statement &statement = *planned->statement;
    const Statement *other = m_mergeRules.counterpart(statement);
    planned->counterpart = other;
    planned->verdict = Verdict::kAdded;
    if (other != nullptr && isOfKey(statement, *other)) {
      m_old.viewFields(statement, &fields->old);
      m_release.viewFields(*other, &fields->release);
      planned->changes = changesBetween(statement.definition->kind,
                                        fields->release, fields->old);
      planned->verdict =
          planned->changes.empty() ? Verdict::kIdentical : Verdict::kReplaces;
      planned->changeOrigins =
          m_origins.ofChanges(statement, *other, planned->changes);
      planned->origin = Origins::together(planned->changeOrigins);
    } else {
      planned->origin = m_origins.ofDifference(statement, other);
    }
  }

  // What the library does not read at all it cannot be made to read.
  bool isAccepted(const Finding &finding) const {
    return finding.code != Code::kUnreadable &&
           m_rules.accepted.count(finding.code) != 0;
  }

  void exclude(PlannedDefinition *planned, const std::string &reason) {
    planned->verdict = Verdict::kExcluded;
    planned->reason = reason;
    planned->stops = false;
  }

  void excludeListed() {
    for (PlannedDefinition &planned : m_plan.definitions) {
      const std::string &oid = planned.statement->oid();
      if (planned.verdict == Verdict::kBlocked) {
        continue;
      }
      const auto decision = m_rules.decisions.find(oid);
      if (m_rules.excludedOids.count(oid) != 0) {
        exclude(&planned, "its OID is in the list of excluded ones");
      } else if (decision != m_rules.decisions.end() &&
                 decision->second == Side::kNew &&
                 planned.verdict != Verdict::kIdentical) {
        if (!canBeListed(oid)) {
          block(&planned, unlistable(*planned.statement));
          continue;
        }
        exclude(&planned, "decided for the release's side");
        m_plan.excludedOids.insert(oid);
      } else if (isCarried(planned) && m_rules.modifiedOids.count(oid) != 0 &&
                 filesOf(oid) == 0 && canBeListed(oid)) {
        // The release lacks it: what was to be withdrawn is not brought back.
        planned.verdict = Verdict::kWithdrawn;
        m_plan.excludedOids.insert(oid);
      }
    }
  }

  static bool isCarried(const PlannedDefinition &planned) {
    return planned.verdict == Verdict::kAdded ||
           planned.verdict == Verdict::kReplaces;
  }

  // Those with one OID go together: what excludes one excludes all.
  void findCarried() {
    std::unordered_map<std::string_view, std::size_t> numbers;
    for (PlannedDefinition &planned : m_plan.definitions) {
      if (isCarried(planned)) {
        const std::string &oid = planned.statement->oid();
        const auto [group, isNew] = numbers.emplace(oid, m_carried.size());
        if (isNew) {
          m_carried.push_back({oid, {}});
        }
        m_carried[group->second].second.push_back(&planned);
      }
    }
  }

  // What the preference says of the definitions of one OID.
  void decide(const std::string &oid, const Group &group) {
    if (m_rules.preference == Preference::kOld ||
        m_rules.decisions.count(oid) != 0) {
      return;
    }
    Origin origin = Origin::kUnknown;
    bool clashes = false;
    bool isPartNew = false;
    for (const PlannedDefinition *planned : group) {
      if (planned->counterpart == nullptr) {
        isPartNew = true;
      } else {
        clashes = true;
        origin = Origins::together({origin, planned->origin});
      }
    }
    if (!clashes) {
      return;
    }
    const bool byChange = m_rules.preference == Preference::kChanged;
    if (byChange && origin == Origin::kAdministrator) {
      return;
    }
    if (byChange && origin != Origin::kRelease) {
      stop(group, Code::kChangedByBoth,
           "expected one side to have changed what has this OID since the old "
           "release, found that both have; decide on " +
               oid);
    } else if (!canBeListed(oid)) {
      for (PlannedDefinition *planned : group) {
        block(planned, unlistable(*planned->statement));
      }
    } else if (isPartNew) {
      stop(group, Code::kPreferenceSplit,
           "expected the release to have all that has this OID, found that it "
           "has only a part; decide on " +
               oid);
    } else {
      m_plan.excludedOids.insert(oid);
      for (PlannedDefinition *planned : group) {
        exclude(planned, byChange ? "the release has changed it"
                                  : "the release's is preferred");
      }
    }
  }

  void stop(const Group &group, Code code, const std::string &message) {
    for (PlannedDefinition *planned : group) {
      const schemacheck::Definition &definition =
          *planned->statement->definition;
      const std::size_t offset =
          definition.oid ? definition.oid->span.begin : definition.span.begin;
      block(planned,
            findingAt(code, planned->statement->file->text, offset, message));
    }
  }

  static Finding unlistable(const Statement &statement) {
    return findingAt(Code::kPreferenceSplit, statement.file->text,
                     statement.definition->span.begin,
                     "expected an OID that a list of excluded ones can hold, "
                     "found '" +
                         statement.oid() +
                         "'; the release's side cannot be taken");
  }

  static void block(PlannedDefinition *planned, Finding finding) {
    planned->verdict = Verdict::kBlocked;
    planned->obstacle = std::move(finding);
    planned->stops = true;
  }

  MergeRules::Fate fateOf(const PlannedDefinition &planned) const {
    if (!m_old.isRead(*planned.statement) || !planned.statement->isHeld()) {
      return MergeRules::Fate::kDropped;
    }
    return isCarried(planned) || planned.verdict == Verdict::kBlocked
               ? MergeRules::Fate::kCarried
               : MergeRules::Fate::kRemoved;
  }

  void obstruct() {
    for (const auto &[oid, group] : m_carried) {
      m_mergeRules.watch(oid);
    }
    for (const PlannedDefinition &planned : m_plan.definitions) {
      m_mergeRules.add(*planned.statement, fateOf(planned));
    }
    for (PlannedDefinition &planned : m_plan.definitions) {
      if (isCarried(planned)) {
        std::optional<Finding> finding =
            m_mergeRules.obstacleTo(*planned.statement);
        if (finding) {
          block(&planned, std::move(*finding));
        }
      }
    }
    for (const auto &[oid, group] : m_carried) {
      const auto isBlockedType = [](const PlannedDefinition *planned) {
        return planned->verdict == Verdict::kBlocked &&
               planned->statement->definition->kind == Kind::kAttributeType;
      };
      if (std::any_of(group.begin(), group.end(), isBlockedType)) {
        leaveWithType(group);
      }
    }
  }

  // A storage definition goes with its attribute type.
  static void leaveWithType(const Group &group) {
    for (PlannedDefinition *planned : group) {
      if (isCarried(*planned) &&
          planned->statement->definition->kind == Kind::kStorage) {
        planned->verdict = Verdict::kBlocked;
        planned->reason = "its attribute type cannot be carried";
      }
    }
  }

  // How the rules leave out a definition that cannot be carried.
  enum class Way { kNone, kLeaveOut, kAccepted };

  Way wayOut(const PlannedDefinition &planned) const {
    if (!planned.obstacle) {
      return Way::kNone;
    }
    if (planned.obstacle->code == Code::kNotMergeable &&
        !isRecorded(*planned.statement)) {
      return m_rules.leaveOut ? Way::kLeaveOut : Way::kNone;
    }
    return isAccepted(*planned.obstacle) ? Way::kAccepted : Way::kNone;
  }

  // Leaves out the definitions of one OID if the rules allow it for all of
  // them.
  void settle(const std::string &oid, const Group &group) {
    std::vector<Way> ways;
    Way ofType = Way::kNone;
    for (const PlannedDefinition *planned : group) {
      ways.push_back(wayOut(*planned));
      if (planned->statement->definition->kind == Kind::kAttributeType) {
        ofType = ways.back();
      }
    }
    for (std::size_t i = 0; i < group.size(); ++i) {
      if (group[i]->verdict == Verdict::kBlocked && !group[i]->obstacle) {
        ways[i] = ofType;
      }
    }
    if (!canBeListed(oid) ||
        std::count(ways.begin(), ways.end(), Way::kNone) != 0) {
      return;
    }
    m_plan.excludedOids.insert(oid);
    for (std::size_t i = 0; i < group.size(); ++i) {
      group[i]->stops = false;
      if (ways[i] == Way::kLeaveOut) {
        exclude(group[i], "left out: a merge cannot add it");
      }
    }
  }

  // The files that hold an OID in the result, as bits.
  unsigned int filesOf(const std::string &oid) const {
    const auto files = m_files.find(oid);
    return files == m_files.end() ? 0 : files->second;
  }

  // What only V3.modifiedschema records, and is withdrawn from it, is not
  // written; it may stand in a file that is copied, though.
  bool isWithdrawn(const Statement &statement) const {
    const std::string &oid = statement.oid();
    return m_rules.modifiedOids.count(oid) != 0 &&
           (filesOf(oid) & ~kCopiedFiles) == bitOf(kModifiedSchema) &&
           m_copied.count({statement.definition->kind, oid}) == 0;
  }

  void recordFiles() {
    if (m_rules.modifiedOids.empty()) {
      return;
    }
    for (const Statement &statement : m_release.directory.statements()) {
      if (statement.isEntered()) {
        m_files[statement.oid()] |= bitOf(statement.file->number);
        if (!kSchemaFiles[statement.file->number].written) {
          m_copied.emplace(statement.definition->kind, statement.oid());
        }
      }
    }
  }

  void withdraw() {
    if (m_rules.modifiedOids.empty()) {
      return;
    }
    for (const PlannedDefinition &planned : m_plan.definitions) {
      if (planned.verdict == Verdict::kAdded) {
        m_files[planned.statement->oid()] |= kSomeWrittenFile;
      }
    }
    for (PlannedDefinition &planned : m_plan.definitions) {
      if ((planned.verdict == Verdict::kIdentical ||
           planned.verdict == Verdict::kReplaces) &&
          isWithdrawn(*planned.statement)) {
        planned.verdict = Verdict::kWithdrawn;
      }
    }
  }

  bool isFoundByOid(const Statement &statement) const {
    const Kind kind = statement.definition->kind;
    return kind != Kind::kStorage && m_release.directory.index().withOid(
                                         kind, statement.oid()) == &statement;
  }

  void makeResult() {
    std::set<const Statement *> replaced;
    for (const PlannedDefinition &planned : m_plan.definitions) {
      if (planned.verdict == Verdict::kReplaces) {
        replaced.insert(planned.counterpart);
      }
    }
    for (const Statement &statement : m_release.directory.statements()) {
      if (!statement.isEntered()) {
        continue;
      }
      if (isWithdrawn(statement)) {
        m_plan.withdrawn.push_back(&statement);
        continue;
      }
      if (!statement.isHeld()) {
        if (isFoundByOid(statement)) {
          m_plan.resultByOid.push_back({&m_release, &statement});
        }
      } else if (replaced.count(&statement) == 0) {
        m_plan.result.push_back({&m_release, &statement});
      }
    }
    for (const PlannedDefinition &planned : m_plan.definitions) {
      if (isCarried(planned)) {
        m_plan.result.push_back({&m_old, planned.statement});
      }
    }
  }

  const Installation &m_old;
  const Installation &m_release;
  const Rules &m_rules;
  const Origins m_origins;
  MergeRules m_mergeRules;
  Plan m_plan;
  // The definitions to be carried by OID, in the order of reading.
  std::vector<std::pair<std::string_view, Group>> m_carried;
  // Of the release, and of what is added, if anything is to be withdrawn: the
  // files that hold an OID, as bits, and what stands in files that are copied.
  std::unordered_map<std::string, unsigned int> m_files;
  std::set<std::pair<Kind, std::string>> m_copied;
};

}  // namespace

Plan makePlan(const Installation &old, const Installation &release,
              const Installation *base, const Rules &rules) {
  return Planner(old, release, base, rules).run();
}

}  // namespace schemaplan
