#include "Json.h"

#include <ostream>
#include <string_view>

using schemacheck::Finding;
using schemacheck::Severity;
using schemacheck::Statement;
using schemaplan::Verdict;

namespace {

constexpr int kFormatVersion = 1;
constexpr int kIndent = 2;

Json definition(Kind kind, const std::string &oid, const std::string &name,
                std::size_t file, int line) {
  return {{"kind", keyOf(kind)},
          {"oid", orNull(oid)},
          {"name", orNull(name)},
          {"file", kSchemaFiles[file].name},
          {"line", line}};
}

std::string withoutQuotes(const std::string &text) {
  const bool isQuoted =
      text.size() >= 2 && text.front() == '\'' && text.back() == '\'';
  return isQuoted ? text.substr(1, text.size() - 2) : text;
}

}  // namespace

Json documentOf(const char *command) {
  return {{"format", kFormatVersion}, {"command", command}};
}

void print(const Json &document, std::ostream *out) {
  *out << document.dump(kIndent, ' ', false, Json::error_handler_t::replace)
       << '\n';
}

const char *keyOf(Kind kind) {
  switch (kind) {
    case Kind::kAttributeType:
      return "attributeType";
    case Kind::kObjectClass:
      return "objectClass";
    case Kind::kStorage:
      break;
  }
  return "storageDefinition";
}

const char *keyOf(Verdict verdict) {
  switch (verdict) {
    case Verdict::kReplaces:
      return "replaces";
    case Verdict::kBlocked:
      return "blocked";
    default:
      return verdictName(verdict);
  }
}

Json orNull(const std::string &text) {
  return text.empty() ? Json(nullptr) : Json(text);
}

Json valuesOf(const schemacheck::Field &field) {
  Json values = field.values;
  if (std::string_view(field.name) == "DESC") {
    for (Json &value : values) {
      value = withoutQuotes(value.get<std::string>());
    }
  }
  return values;
}

Json toJson(const Entry *entry) {
  return entry == nullptr ? Json(nullptr)
                          : definition(entry->kind, entry->oid, entry->name,
                                       entry->file, entry->line);
}

Json toJson(const Statement *statement) {
  return statement == nullptr
             ? Json(nullptr)
             : definition(statement->definition->kind, statement->oid(),
                          statement->firstName(), statement->file->number,
                          statement->line());
}

Json toJson(const Finding &finding) {
  const bool isPlaced = finding.line != 0;
  return {{"file", finding.file},
          {"line", isPlaced ? Json(finding.line) : Json(nullptr)},
          {"column", isPlaced ? Json(finding.column) : Json(nullptr)},
          {"severity",
           finding.severity() == Severity::kError ? "error" : "warning"},
          {"code", describe(finding.code).name},
          {"message", finding.message},
          {"sourceLine", isPlaced ? Json(finding.sourceLine) : Json(nullptr)}};
}

Json toJson(const std::vector<Finding> &findings) {
  Json list = Json::array();
  for (const Finding &finding : findings) {
    list.push_back(toJson(finding));
  }
  return list;
}

Json toJson(const schemaplan::VerdictCounts &counts) {
  Json byKind = Json::object();
  for (std::size_t kind = 0; kind < kKinds; ++kind) {
    Json &byVerdict = byKind[keyOf(static_cast<Kind>(kind))];
    for (std::size_t i = 0; i < schemaplan::kVerdicts; ++i) {
      byVerdict[keyOf(static_cast<Verdict>(i))] = counts[kind][i];
    }
  }
  return byKind;
}
