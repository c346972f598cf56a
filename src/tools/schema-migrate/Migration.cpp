#include "Migration.h"

#include <algorithm>
#include <future>

#include "Decisions.h"
#include "DefinitionChecks.h"
#include "ListChecks.h"
#include "Refusal.h"
#include "Untraced.h"

namespace fs = std::filesystem;

using schemacheck::Code;
using schemacheck::Finding;
using schemacheck::Severity;
using schemacheck::Statement;

namespace {

// Adds those findings that keep the rest from being looked at.
void addFatal(const std::vector<Finding> &findings,
              std::vector<Finding> *fatal) {
  std::copy_if(findings.begin(), findings.end(), std::back_inserter(*fatal),
               [](const Finding &finding) {
                 return finding.severity() == Severity::kError &&
                        !canBeAccepted(finding.code);
               });
}

// Throws Refusal with these findings.
void requireNone(std::vector<Finding> fatal) {
  if (!fatal.empty()) {
    const ExitStatus status = statusOf(fatal, kBadInput);
    throw Refusal(status, std::move(fatal), "");
  }
}

}  // namespace

bool canBeAccepted(Code code) {
  switch (code) {
    case Code::kNotADirectory:
    case Code::kNoFiles:
    case Code::kNotAFile:
    case Code::kUnreadableFile:
    case Code::kLargeFile:
    case Code::kBinaryFile:
    case Code::kTooDamaged:
    case Code::kCollective:
    case Code::kEndlessNames:
    // The library gives the file up, or reads other definitions than are there.
    case Code::kSectionOpener:
    case Code::kSectionUnclosed:
    case Code::kSectionEmpty:
    case Code::kPhantom:
    case Code::kUnreadable:
    // The library would write what it cannot read back.
    case Code::kSecondSuperior:
    case Code::kRewriting:
    case Code::kListUnterminated:
      return false;
    default:
      return true;
  }
}

Migration::Source::Source(const fs::path &path, std::uintmax_t sizeLimit)
    : directory(path, sizeLimit), view(checkFiles(directory)) {}

Migration::Migration(const MigrationOptions &options) : m_options(options) {
  const Untraced untraced;
  readSources();
  const schemaplan::Rules rules = readRules();
  m_plan = makePlan(m_old->installation, m_new->installation,
                    m_base ? &m_base->installation : nullptr, rules);

  for (const Source *source : {m_old.get(), m_new.get(), m_base.get()}) {
    if (source != nullptr) {
      takeErrors(source->view.findings);
    }
  }
  for (const Statement &statement : m_new->directory.statements()) {
    if (m_errors.empty() && !m_new->installation.isRead(statement)) {
      m_errors.push_back(schemaplan::notRead(statement));
    }
  }
  schemacheck::sortFindings(&m_errors);
}

std::vector<Finding> Migration::stoppers() const {
  std::vector<Finding> stoppers = m_errors;
  for (Finding &finding : m_plan.stoppers()) {
    // What the library does not read has been reported with its cause, unless
    // that is accepted.
    if (finding.code != Code::kUnreadable || m_errors.empty()) {
      stoppers.push_back(std::move(finding));
    }
  }
  schemacheck::sortFindings(&stoppers);
  return stoppers;
}

// The directories have nothing to do with each other.
void Migration::readSources() {
  const auto read = [this](const fs::path &path) {
    return std::make_unique<const Source>(path, m_options.sizeLimit);
  };
  // Where no thread can be had, get() does the work.
  auto old = std::async(std::launch::async | std::launch::deferred, read,
                        m_options.oldDirectory);
  m_new = read(m_options.newDirectory);
  // While the old one is still being read.
  takeErrors(checkDefinitions(m_new->directory));
  if (m_options.baseDirectory) {
    m_base = read(*m_options.baseDirectory);
  }
  m_old = old.get();

  std::vector<Finding> fatal;
  for (const Source *source : {m_old.get(), m_new.get(), m_base.get()}) {
    if (source != nullptr) {
      addFatal(source->directory.findings(), &fatal);
    }
  }
  requireNone(std::move(fatal));
}

schemaplan::Rules Migration::readRules() {
  schemaplan::Rules rules;
  rules.preference = m_options.preference;
  rules.leaveOut = m_options.leaveOut;
  rules.accepted = m_options.accepted;
  if (m_options.excludedOids) {
    rules.excludedOids = readList(*m_options.excludedOids);
  }
  if (m_options.modifiedOids) {
    rules.modifiedOids = readList(*m_options.modifiedOids);
  }
  if (m_options.decisions) {
    readDecisions(&rules);
  }
  return rules;
}

std::set<std::string> Migration::readList(const fs::path &path) {
  schemacheck::OidList list =
      schemacheck::checkOidList(path, {&m_old->directory, &m_new->directory});
  std::vector<Finding> fatal;
  addFatal(list.findings, &fatal);
  requireNone(std::move(fatal));
  takeErrors(list.findings);
  takeWarnings(list.findings);
  return std::move(list.oids);
}

// A decision for a definition that a list takes away is a contradiction.
void Migration::requireUnlisted(const std::set<std::string> &oids,
                                const char *list, const std::string &oid,
                                int line) const {
  if (oids.count(oid) != 0) {
    throw Trouble(kBadInput,
                  errorAt(*m_options.decisions, line,
                          "expected an OID that may be carried, found " + oid +
                              ", which is in the list of " + list + " ones"));
  }
}

void Migration::readDecisions(schemaplan::Rules *rules) {
  const auto isKnown = [this](const std::string &oid) {
    const schemacheck::DefinitionIndex &index = m_old->directory.index();
    return index.withOid(schemacheck::Kind::kAttributeType, oid) != nullptr ||
           index.withOid(schemacheck::Kind::kObjectClass, oid) != nullptr ||
           index.withOid(schemacheck::Kind::kStorage, oid) != nullptr;
  };
  for (const auto &[oid, decision] : ::readDecisions(*m_options.decisions)) {
    if (decision.side == schemaplan::Side::kOld) {
      requireUnlisted(rules->excludedOids, "excluded", oid, decision.line);
      requireUnlisted(rules->modifiedOids, "modified", oid, decision.line);
    }
    if (!isKnown(oid)) {
      m_warnings.push_back(m_options.decisions->string() + ":" +
                           std::to_string(decision.line) +
                           ": warning: no definition of the old installation "
                           "has the OID " +
                           oid);
    }
    rules->decisions.emplace(oid, decision.side);
  }
}

void Migration::takeErrors(const std::vector<Finding> &findings) {
  std::copy_if(findings.begin(), findings.end(), std::back_inserter(m_errors),
               [this](const Finding &finding) {
                 return finding.severity() == Severity::kError &&
                        m_options.accepted.count(finding.code) == 0;
               });
}

void Migration::takeWarnings(const std::vector<Finding> &findings) {
  for (const Finding &finding : findings) {
    if (finding.severity() == Severity::kWarning) {
      std::string text = toText(finding);
      text.pop_back();
      m_warnings.push_back(std::move(text));
    }
  }
}
