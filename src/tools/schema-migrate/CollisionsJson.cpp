#include "Json.h"
#include "JsonReports.h"

namespace {

Json toJson(const std::vector<Colliding> &list) {
  Json json = Json::array();
  for (const Colliding &one : list) {
    json.push_back({{"kind", keyOf(one.kind)},
                    {"oid", orNull(one.oid)},
                    {"names", one.names}});
  }
  return json;
}

Json toJson(const std::vector<Clash> &clashes) {
  Json json = Json::array();
  for (const Clash &clash : clashes) {
    json.push_back({{"old", ::toJson(clash.old)},
                    {"new", ::toJson(clash.release)},
                    {"sameOid", clash.sameOid},
                    {"sameNames", clash.sameNames}});
  }
  return json;
}

}  // namespace

void printCollisionsJson(const Schemas &schemas, const Collisions &collisions,
                         const std::optional<std::vector<Clash>> &clashes,
                         std::ostream *out) {
  Json document = documentOf("collisions");
  document["old"] = schemas.oldFiles().directory().string();
  document["new"] = schemas.newFiles().directory().string();
  document["objectClasses"] = toJson(collisions.objectClasses);
  document["attributeTypes"] = toJson(collisions.attributeTypes);
  document["storageDefinitions"] = toJson(collisions.storageDefinitions);
  document["clashes"] = clashes ? toJson(*clashes) : Json(nullptr);
  print(document, out);
}
