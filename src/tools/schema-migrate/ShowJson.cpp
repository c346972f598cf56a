#include "Json.h"
#include "JsonReports.h"

namespace {

Json fieldsOf(const ShownDefinition &shown) {
  Json fields = Json::array();
  for (const schemacheck::Field &field : shown.fields) {
    fields.push_back({{"field", field.name}, {"values", valuesOf(field)}});
  }
  return fields;
}

Json superiorsOf(const ShownDefinition &shown) {
  Json list = Json::array();
  for (const ShownSuperior &superior : shown.superiors) {
    list.push_back(
        {{"name", superior.name}, {"definition", toJson(superior.entry)}});
  }
  return list;
}

Json inheritedBy(const ShownDefinition &shown) {
  Json list = Json::array();
  for (const Inherited &one : shown.inherited) {
    list.push_back({{"from", one.from},
                    {"required", one.required},
                    {"optional", one.optional}});
  }
  return list;
}

Json toJson(const ShownDefinition &shown) {
  Json json = ::toJson(shown.entry);
  json["fields"] = fieldsOf(shown);
  json["text"] = shown.line;
  json["superiors"] = superiorsOf(shown);
  json["inherited"] = inheritedBy(shown);
  json["storage"] = shown.storage ? toJson(*shown.storage) : Json(nullptr);
  return json;
}

}  // namespace

void printShownJson(const Shown &shown, std::ostream *out) {
  Json results = Json::array();
  for (const ShownKey &one : shown.keys()) {
    Json definitions = Json::array();
    for (const ShownDefinition &definition : one.definitions) {
      definitions.push_back(toJson(definition));
    }
    results.push_back(
        {{"key", one.key}, {"definitions", std::move(definitions)}});
  }
  Json document = documentOf("show");
  document["directory"] = shown.files().directory().string();
  document["results"] = std::move(results);
  print(document, out);
}
