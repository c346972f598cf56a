// How the tool reports findings because of which it does not go on.
#ifndef SCHEMA_MIGRATE_REFUSAL_H_
#define SCHEMA_MIGRATE_REFUSAL_H_

#include <string>
#include <vector>

#include "Finding.h"
#include "Trouble.h"

// what() is the findings as toText() gives them, and the advice.
class Refusal : public Trouble {
 public:
  // `advice`: lines for the user that follow them, each with its newline.
  Refusal(ExitStatus status, std::vector<schemacheck::Finding> findings,
          std::string advice);

  // For who prints them in another way.
  const std::vector<schemacheck::Finding> &findings() const {
    return m_findings;
  }
  const std::string &advice() const { return m_advice; }

 private:
  std::vector<schemacheck::Finding> m_findings;
  std::string m_advice;
};

// Whether the finding is of a file or directory that is not there or cannot be
// read, and not of what is in it.
bool isFileError(const schemacheck::Finding &finding);

// kFileError if one of the findings is such an error, and `otherwise` if none.
ExitStatus statusOf(const std::vector<schemacheck::Finding> &findings,
                    ExitStatus otherwise);

#endif  // SCHEMA_MIGRATE_REFUSAL_H_
