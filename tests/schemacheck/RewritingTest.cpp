// What passes for plain reads back as the library writes it.
#include "Rewriting.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "LibraryReader.h"

using schemacheck::FieldView;
using schemacheck::isPlain;
using schemacheck::isSame;
using schemacheck::Kept;
using schemacheck::Kind;
using schemacheck::LibraryReader;

namespace {

constexpr std::string_view kValues[] = {
    "a",      "b-c_1",  "x\ty",   "-",        "-a",      "'a'",
    "'a b'",  "'x\ty'", "''",     "' '",      "'.'",     "'a''b'",
    "1.2",    "'1.2'",  "1",      "'1'",      "0",       "'0'",
    "1.2{3}", "1.2 ",   "1.2{3",  "'1.2{3}'", "'1.2{3'", "'1 a'",
    "NAME",   "'NAME'", "'name'", "'LENGTH'", "'MUST'",  "'attributeTypes'",
    "(",      ")",      "$",      "( 1.3 )",  "'( a'",   "'objectclasses'"};

std::string_view withoutQuotes(std::string_view value) {
  return value[0] == '\'' ? value.substr(1, value.size() - 2) : value;
}

// A value by itself, and one that repeats the text of the other.
bool canMatter(std::string_view value, std::string_view other) {
  return value == "'a'" || other == "'a'" || value == "1.2" || other == "1.2" ||
         withoutQuotes(value) == withoutQuotes(other);
}

struct Fields {
  Kind kind;
  const char *keyword;
  const char *begin;
  const char *end;
  std::vector<const char *> before;  // a value
};

void PrintTo(const Fields &fields, std::ostream *out) {
  *out << fields.keyword;
}

const Fields kFields[] = {
    {Kind::kAttributeType,
     "attributetypes",
     "NAME 'n'",
     "SINGLE-VALUE",
     {"", "NAME", "NAME ( 'n'", "DESC", "SUP", "SUP 1.3 SUP", "EQUALITY",
      "ORDERING", "SUBSTR", "SYNTAX", "OBSOLETE USAGE"}},
    {Kind::kObjectClass,
     "objectclasses",
     "NAME 'n'",
     "AUXILIARY",
     {"", "NAME", "NAME ( 'n'", "DESC", "SUP", "SUP (", "MUST", "MUST ( a $",
      "OBSOLETE MAY"}},
    {Kind::kStorage,
     "QORAttributetypes",
     "",
     "EQUALITY",
     {"", "DBNAME (", "ACCESS-CLASS", "LENGTH", "APPROX LENGTH"}},
};

class RewritingTest : public testing::TestWithParam<Fields> {
 protected:
  void check(const std::string &clauses) {
    const Kind kind = GetParam().kind;
    const std::string text = std::string(GetParam().keyword) + "=( 1.1 " +
                             GetParam().begin + " " + clauses + GetParam().end +
                             " ) ) \n";
    m_reader.setText(text);
    const Kept &kept = read(&m_reader, text);
    const std::string line = m_reader.line(kind);
    m_again.setText(line);
    const Kept &again = read(&m_again, line);
    bool same = again.end == Kept::End::kClosed;
    for (std::size_t i = 0; i < kept.fields.size(); ++i) {
      same = same && isSame(kept.fields[i], again.fields[i]);
    }
    const bool plain = isPlain(kind, kept.fields);
    EXPECT_TRUE(same || !plain) << text << line;
    m_plain += plain ? 1 : 0;
    m_lost += same ? 0 : 1;
  }

  const Kept &read(LibraryReader *reader, const std::string &text) const {
    reader->lexan();
    reader->lexan();
    return reader->parse(GetParam().kind, text.size());
  }

  LibraryReader m_reader{""};
  LibraryReader m_again{""};
  int m_plain = 0;
  int m_lost = 0;
};

TEST_P(RewritingTest, WhatIsPlainReadsBack) {
  for (const char *field : GetParam().before) {
    for (const char *next : GetParam().before) {
      for (const std::string_view value : kValues) {
        for (const std::string_view other : kValues) {
          if (canMatter(value, other)) {
            std::string clauses = std::string(field) + " ";
            clauses.append(value).append(" ").append(next);
            clauses.append(" ").append(other).append(" ");
            check(clauses);
          }
        }
      }
    }
  }
  EXPECT_GT(m_plain, 500);
  EXPECT_GT(m_lost, 500);
}

// What the library keeps in no case, as far as is known.
TEST(RewritingFieldTest, AValueOfAnotherFormIsNotPlain) {
  const auto isPlainAs = [](std::string_view name, std::string_view text) {
    FieldView field;
    field.name = name;
    field.text = text;
    return isPlain(Kind::kAttributeType, std::vector<FieldView>{field});
  };
  for (const std::string_view name : {"SYNTAX", "EQUALITY"}) {
    EXPECT_TRUE(isPlainAs(name, "")) << name;
    EXPECT_TRUE(isPlainAs(name, "1.2")) << name;
    EXPECT_FALSE(isPlainAs(name, "a")) << name;
    EXPECT_FALSE(isPlainAs(name, "1.2 ")) << name;
  }
  FieldView superiors;
  superiors.name = "SUP";
  superiors.form = FieldView::Form::kList;
  superiors.values = {"1.2"};
  EXPECT_TRUE(isPlain(Kind::kAttributeType, {superiors}));
  superiors.values = {"top"};
  EXPECT_FALSE(isPlain(Kind::kAttributeType, {superiors}));
  EXPECT_TRUE(isPlain(Kind::kObjectClass, {superiors}));
  EXPECT_TRUE(isPlainAs("SYNTAX", "1.2{3}"));
  for (const std::string_view syntax :
       {"{3}", "1.2{", "1.2{}", "1.2{3", "1.2{3}x", "1.2{x}", "a{3}"}) {
    EXPECT_FALSE(isPlainAs("SYNTAX", syntax)) << syntax;
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, RewritingTest, testing::ValuesIn(kFields));

}  // namespace
