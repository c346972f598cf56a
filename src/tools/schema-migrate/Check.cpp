#include "Check.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <ostream>
#include <set>
#include <utility>

#include "DirectoryCheck.h"
#include "ListChecks.h"
#include "MergeChecks.h"
#include "SchemaDirectory.h"

using schemacheck::Finding;
using schemacheck::SchemaDirectory;
using schemacheck::Severity;

namespace {

std::size_t count(const std::vector<Finding> &findings, Severity severity) {
  return static_cast<std::size_t>(std::count_if(
      findings.begin(), findings.end(), [severity](const Finding &finding) {
        return finding.severity() == severity;
      }));
}

// "1 error", "2 errors"
std::string inWords(std::size_t number, const std::string &what) {
  return std::to_string(number) + ' ' + what + (number == 1 ? "" : "s");
}

class Check {
 public:
  explicit Check(const CheckOptions &options) {
    for (const std::string &path : options.directories) {
      m_directories.emplace_back(path, options.sizeLimit);
    }
    std::set<std::string> excluded;
    if (options.excludedOids) {
      excluded = checkList(*options.excludedOids);
    }
    if (options.modifiedOids) {
      checkList(*options.modifiedOids);
    }
    const SchemaDirectory &release = m_directories.back();
    for (const SchemaDirectory &directory : m_directories) {
      std::vector<Finding> findings = checkDirectory(directory);
      if (&directory != &release) {
        const std::vector<Finding> more =
            checkMerge(directory, release, excluded);
        findings.insert(findings.end(), more.begin(), more.end());
        sortFindings(&findings);
      }
      add(std::move(findings));
    }
  }

  const std::vector<Finding> &findings() const { return m_findings; }

 private:
  void add(std::vector<Finding> findings) {
    std::move(findings.begin(), findings.end(), std::back_inserter(m_findings));
  }

  // Returns the OIDs that the library reads from the list.
  std::set<std::string> checkList(const std::string &path) {
    std::vector<const SchemaDirectory *> directories;
    for (const SchemaDirectory &directory : m_directories) {
      directories.push_back(&directory);
    }
    schemacheck::OidList list = schemacheck::checkOidList(path, directories);
    add(std::move(list.findings));
    return std::move(list.oids);
  }

  std::deque<SchemaDirectory> m_directories;
  std::vector<Finding> m_findings;
};

}  // namespace

bool printCheck(const CheckOptions &options, std::ostream *out) {
  const Check check(options);
  for (const Finding &finding : check.findings()) {
    *out << toText(finding);
  }
  const std::size_t errors = count(check.findings(), Severity::kError);
  const std::size_t warnings = count(check.findings(), Severity::kWarning);
  *out << inWords(errors, "error") << ", " << inWords(warnings, "warning")
       << '\n';
  return errors == 0 && (warnings == 0 || !options.strict);
}
