#include "Report.h"

#include <iomanip>
#include <ostream>
#include <string>
#include <vector>

using schemaplan::Verdict;

namespace {

constexpr int kFileWidth = 18;
constexpr int kKindWidth = 19;
constexpr int kNumberWidth = 11;

constexpr Kind kAllKinds[] = {Kind::kAttributeType, Kind::kObjectClass,
                              Kind::kStorage};

struct Column {
  const char *heading;
  const Counts *counts;
};

void printRow(const std::string &file, const std::string &kind,
              const std::vector<std::string> &cells, std::ostream *out) {
  *out << "  " << std::left << std::setw(kFileWidth) << file
       << std::setw(kKindWidth) << kind << std::right;
  for (const std::string &cell : cells) {
    *out << std::setw(kNumberWidth) << cell;
  }
  *out << '\n';
}

// A row for each file and kind in which some column has a number, and the sums.
void printTable(const std::vector<Column> &columns, std::ostream *out) {
  std::vector<std::string> cells;
  cells.reserve(columns.size());
  for (const Column &column : columns) {
    cells.emplace_back(column.heading);
  }
  printRow("", "", cells, out);

  std::vector<std::size_t> sums(columns.size());
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    std::string name = kSchemaFiles[file].name;
    for (const Kind kind : kAllKinds) {
      bool any = false;
      for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::size_t number =
            (*columns[i].counts)[file][static_cast<std::size_t>(kind)];
        cells[i] = std::to_string(number);
        sums[i] += number;
        any = any || number != 0;
      }
      if (any) {
        printRow(name, kindName(kind, true), cells, out);
        name.clear();
      }
    }
  }
  for (std::size_t i = 0; i < columns.size(); ++i) {
    cells[i] = std::to_string(sums[i]);
  }
  printRow("all", "", cells, out);
}

void printMissing(const Presence &present, std::ostream *out) {
  std::string names;
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    if (!present[file]) {
      names += std::string(" ") + kSchemaFiles[file].name;
    }
  }
  if (!names.empty()) {
    *out << "  not there:" << names << '\n';
  }
}

std::string inWords(const Withdrawal &one) {
  if (one.definition.empty()) {
    return "no definition has the OID " + one.oid;
  }
  const std::string what =
      one.definition + (one.hasStorage ? " with its storage definition" : "");
  if (one.isLeft) {
    return what + " is not carried: the release lacks it";
  }
  const std::string file = kSchemaFiles[schemacheck::kModifiedSchema].name;
  if (one.staysIn.empty()) {
    return what + " was withdrawn";
  }
  return what +
         (one.wasModified ? " was withdrawn from " + file + ", and"
                          : " is not in " + file + ", and") +
         " stays in " + one.staysIn;
}

// Not every migration has definitions of each of these verdicts.
const char *columnOf(Verdict verdict) {
  switch (verdict) {
    case Verdict::kReplaces:
      return "replaced";
    case Verdict::kBlocked:
      return "left out";
    default:
      return verdictName(verdict);
  }
}

bool isAlwaysShown(Verdict verdict) {
  return verdict == Verdict::kIdentical || verdict == Verdict::kExcluded ||
         verdict == Verdict::kAdded || verdict == Verdict::kReplaces;
}

std::vector<Column> columnsOf(const ApplyResult &result) {
  std::vector<Column> columns = {{"read", &result.oldRead}};
  for (const Verdict verdict :
       {Verdict::kIdentical, Verdict::kExcluded, Verdict::kAdded,
        Verdict::kReplaces, Verdict::kWithdrawn, Verdict::kShadowed,
        Verdict::kBlocked}) {
    const Counts &counts = result.verdicts[static_cast<std::size_t>(verdict)];
    if (isAlwaysShown(verdict) || counts != Counts{}) {
      columns.push_back({columnOf(verdict), &counts});
    }
  }
  return columns;
}

}  // namespace

void printReport(const ApplyOptions &options, const ApplyResult &result,
                 std::ostream *out) {
  const MigrationOptions &inputs = options.migration;
  *out << "old installation: " << inputs.oldDirectory.string() << '\n';
  printMissing(result.inOld, out);
  printTable(columnsOf(result), out);
  *out << "\nnew release: " << inputs.newDirectory.string() << '\n';
  printMissing(result.inNew, out);
  *out << "result: " << options.outDirectory.string() << '\n';
  if (!result.backup.empty()) {
    *out << "  what was there is now in " << result.backup << '\n';
  }
  for (const std::string &name : result.kept) {
    *out << "  kept from there: " << name << '\n';
  }
  printTable({{"release", &result.newRead}, {"result", &result.written}}, out);
  if (!result.changesAnything) {
    *out << "\nnothing was to be done: the new release has it all\n";
  }
  if (inputs.modifiedOids) {
    *out << "\nmodified schema: " << inputs.modifiedOids->string() << '\n'
         << (result.withdrawals.empty() ? "  no OID in the list\n" : "");
  }
  for (const Withdrawal &one : result.withdrawals) {
    *out << "  " << inWords(one) << '\n';
  }
}
