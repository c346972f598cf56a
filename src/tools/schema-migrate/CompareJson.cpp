#include "Json.h"
#include "JsonReports.h"

namespace {

using Compared = std::vector<ComparedDefinition>;

Json toJson(const std::vector<Difference> &differences) {
  Json fields = Json::array();
  for (const Difference &one : differences) {
    fields.push_back({{"field", one.old.name},
                      {"old", valuesOf(one.old)},
                      {"new", valuesOf(one.release)}});
  }
  return fields;
}

// A list with the named parts of each definition.
Json parts(const Compared &list, const std::vector<std::string> &keys) {
  Json json = Json::array();
  for (const ComparedDefinition &one : list) {
    const Json all = {{"old", ::toJson(one.old)},
                      {"new", ::toJson(one.release)},
                      {"fields", toJson(one.differences)},
                      {"sameOid", ::toJson(one.sameOid)}};
    Json part = Json::object();
    for (const std::string &key : keys) {
      part[key] = all[key];
    }
    json.push_back(std::move(part));
  }
  return json;
}

}  // namespace

void printComparisonJson(const Schemas &schemas, const Comparison &comparison,
                         std::ostream *out) {
  Json document = documentOf("compare");
  document["old"] = schemas.oldFiles().directory().string();
  document["new"] = schemas.newFiles().directory().string();
  document["identical"] = parts(comparison.identical, {"old", "new"});
  document["different"] = parts(comparison.different, {"old", "new", "fields"});
  document["onlyOld"] = parts(comparison.onlyOld, {"old", "sameOid"});
  document["onlyNew"] = parts(comparison.onlyNew, {"new"});
  document["excluded"] = parts(comparison.excluded, {"old"});
  print(document, out);
}
