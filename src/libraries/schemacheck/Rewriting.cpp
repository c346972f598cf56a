#include "Rewriting.h"

#include <algorithm>
#include <string_view>

#include "StrictGrammar.h"

namespace schemacheck {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isKeyword(std::string_view text) {
  return isClauseKeyword(text) || sectionForm(text);
}

// What is quoted when it is written. That the library holds it means that it
// can stand between quotes; a text that begins with a digit may be taken for
// the number before it.
bool isText(std::string_view text) {
  return !text.empty() && isLetter(text[0]) && !isKeyword(text);
}

// What is written without quotes.
bool isWord(std::string_view text) {
  return isText(text) && std::all_of(text.begin(), text.end(), [](char c) {
           return isLetter(c) || isDigit(c) || c == '-' || c == '_';
         });
}

bool isNumber(std::string_view text) {
  return !text.empty() && isDigit(text[0]) &&
         std::all_of(text.begin(), text.end(),
                     [](char c) { return isDigit(c) || c == '.'; });
}

bool isNumberOrNone(std::string_view text) {
  return text.empty() || isNumber(text);
}

// A number that may have a length.
bool isSyntax(std::string_view text) {
  const std::size_t brace = std::min(text.find('{'), text.size());
  const std::string_view length = text.substr(brace);
  return isNumberOrNone(text.substr(0, brace)) &&
         (length.empty() ||
          (brace != 0 && length.size() > 2 && length.back() == '}' &&
           std::all_of(length.begin() + 1, length.end() - 1, isDigit)));
}

bool areAll(bool (*isForm)(std::string_view), const FieldView &field) {
  return std::all_of(field.values.begin(), field.values.end(), isForm);
}

bool isPlain(Kind kind, const FieldView &field) {
  if (field.name == "OID" || field.name == "LENGTH") {
    return isNumber(field.text);
  }
  if (field.name == "NAME") {
    return !field.values.empty() && areAll(isText, field);
  }
  if (field.name == "DBNAME") {
    return areAll(isText, field);
  }
  if (field.name == "DESC") {
    return field.text.empty() || isText(field.text);
  }
  if (field.name == "SUP" && kind == Kind::kAttributeType) {
    return field.values.size() <= 1 && areAll(isNumber, field);
  }
  if (field.form == FieldView::Form::kList) {
    return areAll(isWord, field);
  }
  if (field.name == "SYNTAX") {
    return isSyntax(field.text);
  }
  if (field.name == "USAGE") {
    return isWord(field.text);
  }
  if (field.name == "ACCESS-CLASS") {
    return field.text.empty() || isWord(field.text);
  }
  if (field.name == "COLLECTIVE") {
    return field.text == "no";
  }
  return field.form == FieldView::Form::kFlag || field.name == "kind" ||
         isNumberOrNone(field.text);
}

}  // namespace

bool isPlain(Kind kind, const std::vector<FieldView> &fields) {
  return std::all_of(
      fields.begin(), fields.end(),
      [kind](const FieldView &field) { return isPlain(kind, field); });
}

}  // namespace schemacheck
