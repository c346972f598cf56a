#include "Json.h"
#include "JsonReports.h"

void printCheckJson(const CheckOptions &options, const CheckResult &result,
                    std::ostream *out) {
  Json document = documentOf("check");
  document["directories"] = options.directories;
  document["findings"] = toJson(result.findings);
  document["counts"] = {{"errors", result.errors},
                        {"warnings", result.warnings}};
  print(document, out);
}
