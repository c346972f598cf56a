#include "Refusal.h"

#include <algorithm>
#include <utility>

using schemacheck::Code;
using schemacheck::Finding;

namespace {

std::string textOf(const std::vector<Finding> &findings,
                   const std::string &advice) {
  std::string text;
  for (const Finding &finding : findings) {
    text += toText(finding);
  }
  text += advice;
  if (!text.empty() && text.back() == '\n') {
    text.pop_back();
  }
  return text;
}

}  // namespace

Refusal::Refusal(ExitStatus status, std::vector<Finding> findings,
                 std::string advice)
    : Trouble(status, textOf(findings, advice)),
      m_findings(std::move(findings)),
      m_advice(std::move(advice)) {}

bool isFileError(const Finding &finding) {
  return finding.code == Code::kNotADirectory ||
         finding.code == Code::kNotAFile ||
         finding.code == Code::kUnreadableFile;
}

ExitStatus statusOf(const std::vector<Finding> &findings,
                    ExitStatus otherwise) {
  return std::any_of(findings.begin(), findings.end(), isFileError) ? kFileError
                                                                    : otherwise;
}
