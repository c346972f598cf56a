#include "Check.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <future>
#include <iterator>
#include <ostream>
#include <set>
#include <thread>
#include <utility>

#include "DirectoryCheck.h"
#include "FindingsText.h"
#include "ListChecks.h"
#include "Plan.h"
#include "SchemaDirectory.h"
#include "ldtr.h"

using schemacheck::Code;
using schemacheck::Finding;
using schemacheck::LibraryView;
using schemacheck::SchemaDirectory;
using schemacheck::Severity;
using schemaplan::Installation;

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

// What keeps `old` from being carried into `release`, but for what is wrong
// with it by itself.
std::vector<Finding> checkMerge(const Installation &old,
                                const Installation &release,
                                const std::set<std::string> &excludedOids) {
  schemaplan::Rules rules;
  rules.excludedOids = excludedOids;
  std::vector<Finding> findings =
      makePlan(old, release, nullptr, rules).stoppers();
  const auto isOfOneSide = [](const Finding &finding) {
    return finding.code == Code::kUnreadable || finding.code == Code::kNoOid ||
           finding.code == Code::kNamelessClass ||
           finding.code == Code::kShadowed;
  };
  findings.erase(std::remove_if(findings.begin(), findings.end(), isOfOneSide),
                 findings.end());
  return findings;
}

class Check {
 public:
  explicit Check(const CheckOptions &options)
      : m_directories(options.directories.size()) {
    checkDirectories(options);
    std::set<std::string> excluded;
    if (options.excludedOids) {
      excluded = checkList(*options.excludedOids);
    }
    if (options.modifiedOids) {
      checkList(*options.modifiedOids);
    }
    const Installation release = m_directories.back().installation();
    for (Directory &directory : m_directories) {
      std::vector<Finding> findings = std::move(directory.findings);
      if (&directory != &m_directories.back()) {
        const std::vector<Finding> more =
            checkMerge(directory.installation(), release, excluded);
        findings.insert(findings.end(), more.begin(), more.end());
        sortFindings(&findings);
      }
      add(std::move(findings));
    }
  }

  std::vector<Finding> takeFindings() { return std::move(m_findings); }

 private:
  struct Directory {
    std::optional<SchemaDirectory> schema;
    LibraryView view;
    std::vector<Finding> findings;  // of the directory by itself

    Installation installation() const { return {*schema, view}; }
  };

  // Reads and checks each directory by itself, as many at once as there are
  // processors; while the library is traced, one after the other, so that the
  // trace can be read.
  void checkDirectories(const CheckOptions &options) {
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
      for (std::size_t i = next++; i < m_directories.size(); i = next++) {
        Directory &directory = m_directories[i];
        directory.schema.emplace(options.directories[i], options.sizeLimit);
        directory.view = checkFiles(*directory.schema);
        directory.findings = checkDirectory(*directory.schema, directory.view);
      }
    };
    const std::size_t workers =
        trcEvents == 0
            ? std::min<std::size_t>(m_directories.size(),
                                    std::thread::hardware_concurrency())
            : 1;
    std::vector<std::future<void>> others;
    for (std::size_t i = 1; i < workers; ++i) {
      // Where no thread can be had, this one does all the work.
      others.push_back(
          std::async(std::launch::async | std::launch::deferred, work));
    }
    work();
    for (std::future<void> &other : others) {
      other.get();
    }
  }

  void add(std::vector<Finding> findings) {
    std::move(findings.begin(), findings.end(), std::back_inserter(m_findings));
  }

  // Returns the OIDs that the library reads from the list.
  std::set<std::string> checkList(const std::string &path) {
    std::vector<const SchemaDirectory *> directories;
    for (const Directory &directory : m_directories) {
      directories.push_back(&*directory.schema);
    }
    schemacheck::OidList list = schemacheck::checkOidList(path, directories);
    add(std::move(list.findings));
    return std::move(list.oids);
  }

  std::deque<Directory> m_directories;
  std::vector<Finding> m_findings;
};

}  // namespace

CheckResult check(const CheckOptions &options) {
  CheckResult result;
  result.findings = Check(options).takeFindings();
  result.errors = count(result.findings, Severity::kError);
  result.warnings = count(result.findings, Severity::kWarning);
  return result;
}

void printCheck(const CheckResult &result, std::ostream *out) {
  printFindings(result.findings, out);
  *out << inWords(result.errors, "error") << ", "
       << inWords(result.warnings, "warning") << '\n';
}
