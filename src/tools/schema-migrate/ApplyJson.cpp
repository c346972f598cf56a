#include "Json.h"
#include "JsonReports.h"

using schemaplan::kVerdicts;
using schemaplan::Verdict;

namespace {

// Of each file and kind of which there is any definition.
Json countsOf(const ApplyResult &result) {
  Json rows = Json::array();
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    for (std::size_t kind = 0; kind < kKinds; ++kind) {
      const std::size_t read = result.oldRead[file][kind];
      const std::size_t release = result.newRead[file][kind];
      const std::size_t written = result.written[file][kind];
      if (read + release + written == 0) {
        continue;
      }
      Json row = {{"file", kSchemaFiles[file].name},
                  {"kind", keyOf(static_cast<Kind>(kind))},
                  {"read", read}};
      for (std::size_t i = 0; i < kVerdicts; ++i) {
        row[keyOf(static_cast<Verdict>(i))] = result.verdicts[i][file][kind];
      }
      row["release"] = release;
      row["result"] = written;
      rows.push_back(std::move(row));
    }
  }
  return rows;
}

Json summaryOf(const ApplyResult &result) {
  schemaplan::VerdictCounts counts{};
  for (std::size_t i = 0; i < kVerdicts; ++i) {
    for (const auto &ofFile : result.verdicts[i]) {
      for (std::size_t kind = 0; kind < kKinds; ++kind) {
        counts[kind][i] += ofFile[kind];
      }
    }
  }
  return toJson(counts);
}

Json withdrawalsOf(const ApplyResult &result) {
  Json list = Json::array();
  for (const Withdrawal &one : result.withdrawals) {
    list.push_back({{"oid", one.oid},
                    {"definition", orNull(one.definition)},
                    {"hasStorage", one.hasStorage},
                    {"wasModified", one.wasModified},
                    {"isLeft", one.isLeft},
                    {"staysIn", orNull(one.staysIn)}});
  }
  return list;
}

}  // namespace

void printApplyJson(const ApplyOptions &options, const ApplyResult &result,
                    std::ostream *out) {
  const MigrationOptions &inputs = options.migration;
  Json document = documentOf("apply");
  document["old"] = inputs.oldDirectory.string();
  document["new"] = inputs.newDirectory.string();
  document["out"] = options.outDirectory.string();
  document["changesAnything"] = result.changesAnything;
  document["backup"] = orNull(result.backup);
  document["kept"] = result.kept;
  document["notThere"] = {{"old", missingFiles(result.inOld)},
                          {"new", missingFiles(result.inNew)}};
  document["files"] = countsOf(result);
  document["counts"] = summaryOf(result);
  document["modifiedOids"] =
      inputs.modifiedOids ? Json(inputs.modifiedOids->string()) : Json(nullptr);
  document["withdrawals"] = withdrawalsOf(result);
  document["warnings"] = result.warnings;
  print(document, out);
}
