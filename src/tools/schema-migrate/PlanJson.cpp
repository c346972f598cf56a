#include "Json.h"
#include "JsonReports.h"
#include "PlanReport.h"

using schemaplan::FieldChange;
using schemaplan::Origin;
using schemaplan::Plan;
using schemaplan::PlannedDefinition;

namespace {

Json toJson(Origin origin) {
  switch (origin) {
    case Origin::kUnknown:
      return nullptr;
    case Origin::kAdministrator:
      return "administrator";
    case Origin::kRelease:
      return "release";
    case Origin::kBoth:
      break;
  }
  return "both";
}

Json changesOf(const PlannedDefinition &planned) {
  Json changes = Json::array();
  for (std::size_t i = 0; i < planned.changes.size(); ++i) {
    const FieldChange &change = planned.changes[i];
    const Origin origin = planned.changeOrigins.empty()
                              ? Origin::kUnknown
                              : planned.changeOrigins[i];
    changes.push_back({{"field", change.old.name},
                       {"effect", effectName(change.effect)},
                       {"release", valuesOf(change.release)},
                       {"old", valuesOf(change.old)},
                       {"origin", toJson(origin)}});
  }
  return changes;
}

Json toJson(const PlannedDefinition &planned) {
  Json json = ::toJson(planned.statement);
  json["verdict"] = keyOf(planned.verdict);
  json["counterpart"] = ::toJson(planned.counterpart);
  json["changes"] = changesOf(planned);
  json["origin"] = toJson(planned.origin);
  json["reason"] = orNull(planned.reason);
  json["obstacle"] =
      planned.obstacle ? ::toJson(*planned.obstacle) : Json(nullptr);
  json["stops"] = planned.stops;
  return json;
}

}  // namespace

void printPlanJson(const Migration &migration, std::ostream *out) {
  const MigrationOptions &options = migration.options();
  const Plan &plan = migration.plan();
  requireComplete(plan, migration.oldDirectory());

  Json definitions = Json::array();
  for (const PlannedDefinition &planned : plan.definitions) {
    definitions.push_back(toJson(planned));
  }
  const std::size_t stoppers = migration.stoppers().size();
  Json document = documentOf("plan");
  document["old"] = options.oldDirectory.string();
  document["new"] = options.newDirectory.string();
  document["base"] = options.baseDirectory
                         ? Json(options.baseDirectory->string())
                         : Json(nullptr);
  document["definitions"] = std::move(definitions);
  document["excludedOids"] = plan.excludedOids;
  document["withdrawn"] = Json::array();
  for (const schemacheck::Statement *statement : plan.withdrawn) {
    document["withdrawn"].push_back(::toJson(statement));
  }
  document["broken"] = ::toJson(plan.breakages);
  document["errors"] = ::toJson(migration.errors());
  document["counts"] = ::toJson(plan.counts());
  document["changesAnything"] = plan.changesAnything();
  document["refused"] = stoppers != 0;
  document["stoppers"] = stoppers;
  print(document, out);
}
