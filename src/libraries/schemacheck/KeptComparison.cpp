#include "KeptComparison.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "Rewriting.h"
#include "Suspects.h"

namespace schemacheck {

namespace {

// How what the library has kept of a definition differs from what stands there.
struct Difference {
  std::vector<std::string_view> fields;  // the names of those that differ
  bool end = false;                      // it ends elsewhere

  bool any() const { return end || !fields.empty(); }

  bool has(std::string_view field) const {
    return std::find(fields.begin(), fields.end(), field) != fields.end();
  }

  // Whether the field differs; from now on it does not count.
  bool take(std::string_view field) {
    const auto found = std::find(fields.begin(), fields.end(), field);
    const bool differs = found != fields.end();
    if (differs) {
      fields.erase(found);
    }
    return differs;
  }
};

// "DESC 'a text'"
std::string inWords(const FieldView &field) {
  return std::string(field.name) + " " + toField(field).text();
}

bool canBeEndless(Code code) {
  return code == Code::kCollective || code == Code::kEndlessNames ||
         code == Code::kNamesLast || code == Code::kColumnsLast ||
         code == Code::kUnclosed;
}

// The comparison of one definition.
class Comparison {
 public:
  Comparison(const StrictFile &file, const Definition &definition,
             const std::vector<FieldView> &said, const Kept &kept,
             LibraryReader *library, LibraryReader *reader,
             std::vector<Finding> *findings)
      : m_file(file),
        m_definition(definition),
        m_said(said),
        m_kept(kept),
        m_library(*library),
        m_reader(*reader),
        m_findings(*findings) {}

  Agreement run() {
    Difference difference = compare();
    Agreement agreement;
    agreement.isExact = difference.fields.empty();
    agreement.isThatDefinition = !difference.end && hasItsKeys();
    if (difference.any()) {
      takeSpellings(&difference);
    }
    // First those that account for one field each.
    std::vector<Suspect> others;
    for (const Suspect &suspect : suspectClauses(m_file, m_definition)) {
      if (suspect.field.empty()) {
        others.push_back(suspect);
      } else if (difference.take(suspect.field)) {
        add(suspect.code, suspect.offset,
            suspect.message + keeps(suspect.field));
      } else if (suspect.harmless) {
        add(*suspect.harmless, suspect.offset, suspect.message);
      }
    }
    if (difference.any()) {
      const std::vector<Suspect> tokens =
          suspectTokens(m_file, m_definition, &m_library);
      others.insert(others.end(), tokens.begin(), tokens.end());
      blame(others, difference);
      return agreement;
    }
    for (const Suspect &suspect : others) {
      if (suspect.always || suspect.harmless) {
        add(suspect.always ? suspect.code : *suspect.harmless, suspect.offset,
            suspect.message);
      }
    }
    if (!m_hasError) {
      rewrite();
    }
    agreement.isWhole = true;
    return agreement;
  }

 private:
  void add(Code code, std::size_t offset, std::string message) {
    m_hasError = m_hasError || describe(code).severity == Severity::kError;
    const std::size_t number = ++m_numbers[code];
    if (number > kMostFindings) {
      return;
    }
    if (number == kMostFindings) {
      message += "; more of these in the definition are not shown";
    }
    m_findings.push_back(
        findingAt(code, m_file.text, offset, std::move(message)));
  }

  // Compares with what is read of the definition once the library has written
  // it. (That an object class without a name cannot be read is said elsewhere.)
  void rewrite() {
    const Kind kind = m_definition.kind;
    if (isPlain(kind, m_kept.fields) ||
        (kind == Kind::kObjectClass && m_kept.fields[1].values.empty())) {
      return;
    }
    const std::string line = m_library.line(kind);
    m_reader.setText(line);
    m_reader.lexan();  // the keyword
    m_reader.lexan();  // "="
    const Kept &again = m_reader.parse(kind, line.size());
    for (std::size_t i = 0; i < again.fields.size(); ++i) {
      if (!isSame(m_kept.fields[i], again.fields[i])) {
        add(Code::kRewriting, m_definition.span.begin,
            "expected " + inWords(m_kept.fields[i]) +
                " to read back as it is written, found " +
                toField(again.fields[i]).text());
      }
    }
    if (again.end != Kept::End::kClosed && !m_hasError) {
      add(Code::kRewriting, m_definition.span.begin,
          "expected the definition to end where it does when it is written, "
          "found that it does not");
    }
  }

  // Names that are keywords of sections are kept in the spelling of those.
  void takeSpellings(Difference *difference) {
    for (const FieldView &field : m_kept.fields) {
      std::vector<Value> values;
      for (const Clause &clause : m_definition.clauses) {
        if (clause.known && clause.keyword == field.name) {
          values.insert(values.end(), clause.values.begin(),
                        clause.values.end());
        }
      }
      const auto sameInLowerCase = [](const Value &value,
                                      std::string_view text) {
        return isSameInAnyCase(value.text, text);
      };
      if (field.form != FieldView::Form::kList ||
          !std::equal(values.begin(), values.end(), field.values.begin(),
                      field.values.end(), sameInLowerCase) ||
          !difference->take(field.name)) {
        continue;
      }
      for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i].text != field.values[i]) {
          add(Code::kSpelling, values[i].span.begin,
              "expected " + inQuotes(values[i].text) +
                  " to be kept; the library keeps " +
                  inQuotes(field.values[i]));
        }
      }
    }
  }

  Difference compare() const {
    Difference difference;
    for (std::size_t i = 0; i < m_said.size(); ++i) {
      if (!isSame(m_said[i], m_kept.fields[i])) {
        difference.fields.push_back(m_said[i].name);
      }
    }
    difference.end = m_kept.end != Kept::End::kClosed ||
                     m_kept.closing != m_definition.span.end;
    return difference;
  }

  // Whether the OID and the first name are the definition's.
  bool hasItsKeys() const {
    const auto first = [](const FieldView &field) {
      return field.values.empty() ? std::string_view() : field.values.front();
    };
    return m_said[0].text == m_kept.fields[0].text &&
           (m_definition.kind == Kind::kStorage ||
            isSameInAnyCase(first(m_said[1]), first(m_kept.fields[1])));
  }

  // Reports what has caused the difference.
  void blame(const std::vector<Suspect> &suspects,
             const Difference &difference) {
    const std::string effect = effectOf(difference);
    const bool isEndlessKnown =
        std::any_of(suspects.begin(), suspects.end(),
                    [](const Suspect &one) { return canBeEndless(one.code); });
    bool blamed = false;
    for (const Suspect &suspect : suspects) {
      const bool isEndless = m_kept.end == Kept::End::kEndless &&
                             (suspect.code == Code::kNamesLast ||
                              suspect.code == Code::kColumnsLast);
      const Code code = isEndless ? Code::kEndlessNames : suspect.code;
      const bool isError = describe(code).severity == Severity::kError;
      blamed = blamed || isError;
      const bool hasEffect = isError && (m_kept.end != Kept::End::kEndless ||
                                         canBeEndless(code) || !isEndlessKnown);
      add(code, suspect.offset, suspect.message + (hasEffect ? effect : ""));
    }
    if (blamed) {
      return;
    }
    if (difference.end) {
      add(Code::kUnreadable, m_definition.span.begin,
          "expected the definition to end at its ')'" + effect);
      return;
    }
    for (const FieldView &field : m_said) {
      if (difference.has(field.name)) {
        add(Code::kDiffers, m_definition.span.begin,
            "expected " + inWords(field) + " to be kept" + keeps(field.name));
      }
    }
  }

  std::string effectOf(const Difference &difference) const {
    if (m_kept.end == Kept::End::kEndless) {
      return "; the library would never come back";
    }
    if (m_kept.end == Kept::End::kCutOff) {
      return "; the library gives the file up here";
    }
    if (difference.end) {
      return m_kept.end == Kept::End::kClosed &&
                     m_kept.closing < m_definition.span.end
                 ? "; the library ends the definition too early"
                 : "; the library does not end the definition at its ')'";
    }
    return keeps(difference.fields.front());
  }

  // What has become of a field.
  std::string keeps(std::string_view name) const {
    const FieldView &field = *std::find_if(
        m_kept.fields.begin(), m_kept.fields.end(),
        [name](const FieldView &one) { return one.name == name; });
    return field.text.empty() && field.values.empty()
               ? "; the library drops it"
               : "; the library keeps " + inWords(field);
  }

  const StrictFile &m_file;
  const Definition &m_definition;
  const std::vector<FieldView> &m_said;
  const Kept &m_kept;
  LibraryReader &m_library;
  LibraryReader &m_reader;
  bool m_hasError = false;  // whether one was reported
  std::vector<Finding> &m_findings;
  std::map<Code, std::size_t> m_numbers;  // of findings
};

}  // namespace

Agreement KeptComparison::compare(const Definition &definition,
                                  const Kept &kept,
                                  std::vector<Finding> *findings) {
  viewFields(definition, &m_said);
  return Comparison(m_file, definition, m_said, kept, &m_library, &m_reader,
                    findings)
      .run();
}

}  // namespace schemacheck
