#include "PlanReport.h"

#include <algorithm>
#include <ostream>
#include <sstream>

#include "FindingsText.h"
#include "Trouble.h"

using schemacheck::Finding;
using schemacheck::Kind;
using schemacheck::kindName;
using schemacheck::SchemaDirectory;
using schemacheck::Statement;
using schemaplan::FieldChange;
using schemaplan::Origin;
using schemaplan::Plan;
using schemaplan::PlannedDefinition;
using schemaplan::Verdict;

namespace {

constexpr Verdict kAllVerdicts[] = {Verdict::kIdentical, Verdict::kExcluded,
                                    Verdict::kShadowed,  Verdict::kWithdrawn,
                                    Verdict::kAdded,     Verdict::kReplaces,
                                    Verdict::kBlocked};

constexpr Kind kAllKinds[] = {Kind::kAttributeType, Kind::kObjectClass,
                              Kind::kStorage};

// "V3.user.at:12"
std::string placeOf(const Statement &statement) {
  return std::string(schemacheck::kSchemaFiles[statement.file->number].name) +
         ":" + std::to_string(statement.line());
}

const char *verdictInSummary(Verdict verdict) {
  switch (verdict) {
    case Verdict::kReplaces:
      return "replacing the release's";
    case Verdict::kBlocked:
      return "that cannot be carried";
    default:
      return verdictName(verdict);
  }
}

const char *originName(Origin origin) {
  switch (origin) {
    case Origin::kUnknown:
      return "";
    case Origin::kAdministrator:
      return "changed by the administrator";
    case Origin::kRelease:
      return "changed by the release";
    case Origin::kBoth:
      break;
  }
  return "changed by both";
}

// Of a definition that the release lacks.
const char *lackName(Origin origin) {
  switch (origin) {
    case Origin::kUnknown:
      return "";
    case Origin::kAdministrator:
      return "added by the administrator";
    case Origin::kRelease:
      return "dropped by the release";
    case Origin::kBoth:
      break;
  }
  return "changed by the administrator, dropped by the release";
}

// Names and values may hold what a terminal takes for commands.
std::string withoutControls(std::string text) {
  std::replace_if(
      text.begin(), text.end(),
      [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte < ' ' && c != '\n') || byte == 127;
      },
      '?');
  return text;
}

class Printer {
 public:
  Printer(const Migration &migration, std::ostream *out)
      : m_migration(migration), m_plan(migration.plan()), m_out(*out) {}

  void print() {
    const MigrationOptions &options = m_migration.options();
    m_text << "old installation: " << options.oldDirectory.string() << '\n'
           << "new release: " << options.newDirectory.string() << '\n';
    if (options.baseDirectory) {
      m_text << "old release: " << options.baseDirectory->string() << '\n';
    }
    for (const Verdict verdict : kAllVerdicts) {
      printVerdict(verdict);
    }
    printWithdrawn();
    m_out << withoutControls(m_text.str());
    printFindings("broken in the result", m_plan.breakages);
    printFindings("errors in the files", m_migration.errors());
    const std::size_t errors = m_migration.stoppers().size();
    if (errors != 0) {
      m_out << "\napply refuses to do this: " << errors
            << (errors == 1 ? " error" : " errors") << '\n';
    } else if (!m_plan.changesAnything()) {
      m_out << "\nnothing to do: the release has all that is to be carried\n";
    } else {
      m_out << '\n';
    }
    m_out << summaryOf(m_plan) << '\n';
  }

 private:
  // What goes from the release.
  void printWithdrawn() {
    if (m_plan.withdrawn.empty()) {
      return;
    }
    m_text << "\nwithdrawn from the release: " << m_plan.withdrawn.size()
           << '\n';
    for (const Statement *statement : m_plan.withdrawn) {
      m_text << "  " << placeOf(*statement) << ": " << statement->inWords()
             << '\n';
    }
  }

  void printVerdict(Verdict verdict) {
    const auto number =
        std::count_if(m_plan.definitions.begin(), m_plan.definitions.end(),
                      [verdict](const PlannedDefinition &planned) {
                        return planned.verdict == verdict;
                      });
    m_text << '\n' << verdictName(verdict) << ": " << number << '\n';
    for (const PlannedDefinition &planned : m_plan.definitions) {
      if (planned.verdict == verdict) {
        printDefinition(planned);
      }
    }
  }

  void printDefinition(const PlannedDefinition &planned) {
    const Statement &statement = *planned.statement;
    m_text << "  " << placeOf(statement) << ": " << statement.inWords();
    switch (planned.verdict) {
      case Verdict::kIdentical:
      case Verdict::kWithdrawn:
        break;
      case Verdict::kExcluded:
        m_text << ": " << planned.reason;
        if (!planned.changes.empty()) {
          printCounterpart(planned);
        }
        break;
      case Verdict::kShadowed:
        m_text << ": " << placeOf(*planned.counterpart) << " has the same "
               << (statement.definition->kind == Kind::kStorage ? "OID"
                                                                : "first name");
        if (planned.obstacle) {
          printObstacle(planned);
        }
        break;
      case Verdict::kAdded:
        printOrigin(lackName(planned.origin));
        break;
      case Verdict::kReplaces:
        printCounterpart(planned);
        break;
      case Verdict::kBlocked:
        printObstacle(planned);
        break;
    }
    m_text << '\n';
    if (planned.verdict == Verdict::kReplaces ||
        planned.verdict == Verdict::kExcluded) {
      printChanges(planned);
    }
  }

  void printObstacle(const PlannedDefinition &planned) {
    if (!planned.obstacle) {
      m_text << ": " << planned.reason;
      return;
    }
    m_text << (planned.stops ? "" : ": accepted") << "\n    ["
           << describe(planned.obstacle->code).name << "] "
           << planned.obstacle->message;
  }

  void printCounterpart(const PlannedDefinition &planned) {
    m_text << "; the release's is at " << placeOf(*planned.counterpart);
    printOrigin(originName(planned.origin));
  }

  void printOrigin(const std::string &origin) {
    if (!origin.empty()) {
      m_text << "; " << origin;
    }
  }

  void printChanges(const PlannedDefinition &planned) {
    for (std::size_t i = 0; i < planned.changes.size(); ++i) {
      const FieldChange &change = planned.changes[i];
      m_text << "    " << change.old.name << ": " << effectName(change.effect);
      if (!planned.changeOrigins.empty()) {
        printOrigin(originName(planned.changeOrigins[i]));
      }
      m_text << "\n      release: " << change.release.text()
             << "\n      old:     " << change.old.text() << '\n';
    }
  }

  void printFindings(const char *heading,
                     const std::vector<Finding> &findings) {
    m_out << '\n' << heading << ": " << findings.size() << '\n';
    ::printFindings(findings, &m_out);
  }

  const Migration &m_migration;
  const Plan &m_plan;
  std::ostringstream m_text;  // of the definitions
  std::ostream &m_out;
};

}  // namespace

void printPlan(const Migration &migration, std::ostream *out) {
  requireComplete(migration.plan(), migration.oldDirectory());
  Printer(migration, out).print();
}

void requireComplete(const Plan &plan, const SchemaDirectory &directory) {
  auto planned = plan.definitions.begin();
  std::size_t without = 0;
  for (const schemacheck::StrictFile &file : directory.files()) {
    for (const schemacheck::Section &section : file.reading.sections) {
      for (const schemacheck::Definition &definition : section.definitions) {
        if (planned != plan.definitions.end() &&
            planned->statement->definition == &definition) {
          ++planned;
        } else {
          ++without;
        }
      }
    }
  }
  if (planned != plan.definitions.end()) {
    throw InternalError(planned->statement->place() + ": " +
                        planned->statement->inWords() +
                        " has a verdict too many");
  }
  if (without != 0) {
    throw InternalError("definitions of " + directory.path().string() +
                        " without a verdict: " + std::to_string(without));
  }
}

std::string summaryOf(const Plan &plan) {
  const schemaplan::VerdictCounts counts = plan.counts();
  std::string text = std::to_string(plan.definitions.size()) + " definition" +
                     (plan.definitions.size() == 1 ? "" : "s");
  const char *separator = ": ";
  for (const Kind kind : kAllKinds) {
    std::size_t all = 0;
    std::string parts;
    for (const Verdict verdict : kAllVerdicts) {
      const std::size_t number = counts[static_cast<std::size_t>(kind)]
                                       [static_cast<std::size_t>(verdict)];
      if (number != 0) {
        parts += (parts.empty() ? "" : ", ") + std::to_string(number) + ' ' +
                 verdictInSummary(verdict);
      }
      all += number;
    }
    if (all != 0) {
      text += separator + std::to_string(all) + ' ' + kindName(kind, all != 1) +
              " (" + parts + ")";
      separator = ", ";
    }
  }
  return text;
}
