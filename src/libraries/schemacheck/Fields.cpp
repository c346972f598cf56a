#include "Fields.h"

#include <algorithm>
#include <set>

#include "SchemaSymbolTable.h"

namespace schemacheck {

namespace {

constexpr std::string_view kSet = "yes";
constexpr std::string_view kNotSet = "no";

// Sets the fields of a definition one after the other.
class Views {
 public:
  explicit Views(std::vector<FieldView> *views) : m_views(*views) {}
  ~Views() { m_views.resize(m_number); }

  Views(const Views &) = delete;
  Views &operator=(const Views &) = delete;

  Views &text(const char *name, std::string_view text) {
    next(name, FieldView::Form::kText).text = text;
    return *this;
  }

  Views &flag(const char *name, bool isSet) {
    next(name, FieldView::Form::kFlag).text = isSet ? kSet : kNotSet;
    return *this;
  }

  Views &list(const char *name, const std::vector<std::string> &values) {
    FieldView &view = next(name, FieldView::Form::kList);
    view.text = {};
    view.values.assign(values.begin(), values.end());
    return *this;
  }

 private:
  FieldView &next(const char *name, FieldView::Form form) {
    if (m_number == m_views.size()) {
      m_views.emplace_back();
    }
    FieldView &view = m_views[m_number++];
    view.name = name;
    view.form = form;
    view.values.clear();
    return view;
  }

  std::vector<FieldView> &m_views;
  std::size_t m_number = 0;  // of those that are set
};

const char *classKind(int token) {
  switch (token) {
    case TOK_AUXILIARY:
      return "AUXILIARY";
    case TOK_ABSTRACT:
      return "ABSTRACT";
    default:
      return "STRUCTURAL";
  }
}

bool isClassKind(std::string_view keyword) {
  return keyword == "ABSTRACT" || keyword == "STRUCTURAL" ||
         keyword == "AUXILIARY";
}

// Enters the values of a clause into the field that it states.
void state(const Clause &clause, FieldView *field) {
  switch (field->form) {
    case FieldView::Form::kList:
      for (const Value &value : clause.values) {
        field->values.push_back(value.text);
      }
      break;
    case FieldView::Form::kFlag:
      field->text = kSet;
      break;
    default:  // FieldView::Form::kText
      if (isClassKind(clause.keyword)) {
        field->text = clause.keyword;
      } else if (!clause.values.empty()) {
        field->text = clause.values.front().text;
      }
      break;
  }
}

// Sets the fields of a definition that states none.
void viewNone(Kind kind, std::vector<FieldView> *views) {
  static const Attribute kType;
  static const ObjectClass kClass;
  static const QORAttribute kStorage;
  switch (kind) {
    case Kind::kAttributeType:
      viewFields(kType, views);
      break;
    case Kind::kObjectClass:
      viewFields(kClass, views);
      break;
    default:  // Kind::kStorage
      viewFields(kStorage, views);
      break;
  }
}

template <class T>
std::vector<Field> toFields(const T &definition) {
  std::vector<FieldView> views;
  viewFields(definition, &views);
  std::vector<Field> fields;
  fields.reserve(views.size());
  for (const FieldView &view : views) {
    fields.push_back(toField(view));
  }
  return fields;
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::set<std::string> lowerSet(const std::vector<std::string> &values) {
  std::set<std::string> lower;
  for (const std::string &value : values) {
    lower.insert(lowerCase(value));
  }
  return lower;
}

}  // namespace

std::string Field::text() const {
  std::string text;
  for (const std::string &value : values) {
    text += (text.empty() ? "" : " ") + value;
  }
  return values.empty() ? "(none)" : text;
}

bool sameValues(const Field &a, const Field &b) {
  return a.isList ? lowerSet(a.values) == lowerSet(b.values)
                  : a.values == b.values;
}

bool isSame(const FieldView &a, const FieldView &b) {
  return a.text == b.text && a.values == b.values;
}

void viewFields(const Attribute &attribute, std::vector<FieldView> *views) {
  Views(views)
      .text("OID", attribute.oid())
      .list("NAME", attribute.names())
      .text("DESC", attribute.description())
      .flag("OBSOLETE", attribute.isObsolete())
      .list("SUP", attribute.superiors())
      .text("EQUALITY", attribute.equality())
      .text("ORDERING", attribute.ordering())
      .text("SUBSTR", attribute.substr())
      .text("SYNTAX", attribute.syntax())
      .flag("SINGLE-VALUE", attribute.isSingleValue())
      .flag("COLLECTIVE", attribute.isCollective())
      .flag("NO-USER-MODIFICATION", !attribute.isUserModifiable())
      .text("USAGE", attribute.usage());
}

void viewFields(const ObjectClass &objectClass, std::vector<FieldView> *views) {
  Views(views)
      .text("OID", objectClass.oid())
      .list("NAME", objectClass.names())
      .text("DESC", objectClass.description())
      .flag("OBSOLETE", objectClass.isObsolete())
      .list("SUP", objectClass.superiors())
      .text("kind", classKind(objectClass.structuralType()))
      .list("MUST", objectClass.requiredAttributes())
      .list("MAY", objectClass.optionalAttributes());
}

void viewFields(const QORAttribute &storage, std::vector<FieldView> *views) {
  Views(views)
      .text("OID", storage.oid())
      .list("DBNAME", storage.columnNames())
      .text("ACCESS-CLASS", storage.accessClass())
      .text("LENGTH", storage.length())
      .flag("EQUALITY", storage.hasEquality())
      .flag("ORDERING", storage.hasOrdering())
      .flag("SUBSTR", storage.hasSubstr())
      .flag("APPROX", storage.hasApprox());
}

void viewFields(const Definition &definition, std::vector<FieldView> *views) {
  viewNone(definition.kind, views);
  if (definition.oid) {
    views->front().text = definition.oid->text;
  }
  for (const Clause &clause : definition.clauses) {
    const std::string_view name =
        isClassKind(clause.keyword) ? "kind" : clause.keyword;
    const auto field =
        std::find_if(views->begin(), views->end(),
                     [name](const FieldView &one) { return one.name == name; });
    if (clause.known && field != views->end()) {
      state(clause, &*field);
    }
  }
}

void viewFields(const std::vector<Field> &fields,
                std::vector<FieldView> *views) {
  Views all(views);
  for (const Field &field : fields) {
    if (field.isList) {
      all.list(field.name, field.values);
      continue;
    }
    std::string_view text;
    if (!field.values.empty()) {
      text = field.values.front();
    }
    if (std::string_view(field.name) == "DESC" && !text.empty()) {
      text = text.substr(1, text.size() - 2);  // without the quotes
    }
    all.text(field.name, text);
  }
}

Field toField(const FieldView &view) {
  const bool isList = view.form == FieldView::Form::kList;
  Field field{view.name.data(), {}, isList};
  if (isList) {
    field.values.assign(view.values.begin(), view.values.end());
  } else if (view.name == "DESC" && !view.text.empty()) {
    field.values.push_back("'" + std::string(view.text) + "'");
  } else if (!view.text.empty()) {
    field.values.emplace_back(view.text);
  }
  return field;
}

std::vector<Field> fieldsOf(const Attribute &attribute) {
  return toFields(attribute);
}

std::vector<Field> fieldsOf(const ObjectClass &objectClass) {
  return toFields(objectClass);
}

std::vector<Field> fieldsOf(const QORAttribute &storage) {
  return toFields(storage);
}

std::vector<Field> fieldsOf(const Definition &definition) {
  return toFields(definition);
}

std::string lowerCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), lower);
  return result;
}

bool isSameInAnyCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lower(x) == lower(y); });
}

}  // namespace schemacheck
