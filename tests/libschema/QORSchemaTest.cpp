#include "QORSchema.h"

#include <gtest/gtest.h>

#include <clocale>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "Attribute.h"
#include "DefinitionTesting.h"
#include "ObjectClass.h"
#include "QORAttribute.h"

using definitions::parsed;
using definitions::printed;
using definitions::written;

namespace {

using List = std::vector<std::string>;

TEST(QORSchemaTest, IsAnAbstractPolymorphicBase) {
  EXPECT_TRUE(std::is_abstract_v<QORSchema>);
  EXPECT_TRUE(std::has_virtual_destructor_v<QORSchema>);
  EXPECT_TRUE((std::is_base_of_v<QORSchema, Attribute>));
  EXPECT_TRUE((std::is_base_of_v<QORSchema, ObjectClass>));
  EXPECT_TRUE((std::is_base_of_v<Attribute, QORAttribute>));
  EXPECT_TRUE((std::is_convertible_v<Attribute *, QORSchema *>));
  EXPECT_TRUE((std::is_convertible_v<ObjectClass *, QORSchema *>));
  EXPECT_TRUE((std::is_convertible_v<QORAttribute *, Attribute *>));
}

// Whose member a pointer to an operation points to says who declares it.
template <class Class, class Operation>
constexpr bool kDeclares = false;
template <class Class, class Result, class... Arguments>
constexpr bool kDeclares<Class, Result (Class::*)(Arguments...)> = true;

TEST(QORSchemaTest, EachClassDeclaresItsOperations) {
  EXPECT_TRUE((kDeclares<Attribute, decltype(&Attribute::getOid)>));
  EXPECT_TRUE((kDeclares<Attribute, decltype(&Attribute::getDescription)>));
  EXPECT_TRUE((kDeclares<Attribute, decltype(&Attribute::getSuperior)>));
  EXPECT_TRUE((kDeclares<Attribute, decltype(&Attribute::getFirstName)>));
  EXPECT_TRUE((kDeclares<Attribute, decltype(&Attribute::getNames)>));
  EXPECT_TRUE((kDeclares<Attribute, decltype(&Attribute::getFirstNameLower)>));
  EXPECT_TRUE((kDeclares<ObjectClass, decltype(&ObjectClass::getOid)>));
  EXPECT_TRUE((kDeclares<ObjectClass, decltype(&ObjectClass::getDescription)>));
  EXPECT_TRUE((kDeclares<ObjectClass, decltype(&ObjectClass::getSuperior)>));
  EXPECT_TRUE((kDeclares<ObjectClass, decltype(&ObjectClass::getFirstName)>));
  EXPECT_TRUE((kDeclares<ObjectClass, decltype(&ObjectClass::getNames)>));
  EXPECT_TRUE(
      (kDeclares<ObjectClass, decltype(&ObjectClass::getFirstNameLower)>));

  // A storage definition takes its getters from the attribute type.
  EXPECT_TRUE((kDeclares<Attribute, decltype(&QORAttribute::getOid)>));
  EXPECT_TRUE((kDeclares<Attribute, decltype(&QORAttribute::getDescription)>));
  EXPECT_TRUE((kDeclares<Attribute, decltype(&QORAttribute::getSuperior)>));
  EXPECT_TRUE((kDeclares<Attribute, decltype(&QORAttribute::getFirstName)>));
  EXPECT_TRUE((kDeclares<Attribute, decltype(&QORAttribute::getNames)>));
  EXPECT_TRUE(
      (kDeclares<Attribute, decltype(&QORAttribute::getFirstNameLower)>));
}

TEST(QORSchemaTest, OperationsHaveTheirSignatures) {
  EXPECT_TRUE((std::is_same_v<decltype(&Attribute::parse),
                              int (Attribute::*)(SchemaLexan *)>));
  EXPECT_TRUE((std::is_same_v<decltype(&ObjectClass::parse),
                              int (ObjectClass::*)(SchemaLexan *)>));
  EXPECT_TRUE((std::is_same_v<decltype(&QORAttribute::parse),
                              int (QORAttribute::*)(SchemaLexan *)>));
  EXPECT_TRUE((std::is_same_v<decltype(&Attribute::attrsEqual),
                              int (Attribute::*)(const Attribute &)>));
  EXPECT_TRUE((std::is_same_v<decltype(&ObjectClass::objsEqual),
                              int (ObjectClass::*)(const ObjectClass &)>));
  EXPECT_TRUE((std::is_same_v<decltype(&QORAttribute::qorAttrsEqual),
                              int (QORAttribute::*)(const QORAttribute &)>));
  EXPECT_TRUE((std::is_same_v<decltype(&Attribute::convert),
                              std::string (Attribute::*)(std::string)>));
  EXPECT_TRUE((std::is_same_v<decltype(&ObjectClass::convert),
                              std::string (ObjectClass::*)(std::string)>));
  EXPECT_TRUE((std::is_same_v<decltype(&QORAttribute::convert),
                              std::string (QORAttribute::*)(std::string)>));
  EXPECT_TRUE((std::is_same_v<decltype(&Attribute::getOidAndName),
                              std::string (Attribute::*)()>));
  EXPECT_TRUE((std::is_same_v<decltype(&ObjectClass::getOidAndName),
                              std::string (ObjectClass::*)()>));
  EXPECT_TRUE((std::is_same_v<decltype(&QORAttribute::getOidAndName),
                              std::string (QORAttribute::*)()>));
}

TEST(QORSchemaTest, DefinitionsAreReadAndDeletedThroughTheBase) {
  std::vector<std::unique_ptr<QORSchema>> definitions;
  definitions.push_back(std::make_unique<Attribute>(parsed<Attribute>(
      "attributetypes=( 1.1 NAME ( 'A' 'b' ) DESC 'd' SUP 2.1 SUP 2.2 )")));
  definitions.push_back(std::make_unique<ObjectClass>(parsed<ObjectClass>(
      "objectclasses=( 1.2 NAME ( 'C' 'd' ) DESC 'e' SUP ( s $ t ) )")));
  definitions.push_back(std::make_unique<QORAttribute>(
      parsed<QORAttribute>("QORAttributetypes=( 1.3 DBNAME ( 'X' ) )")));

  std::string all;
  for (const auto &definition : definitions) {
    for (const std::string &text :
         {definition->getOid(), definition->getDescription(),
          definition->getFirstName(), definition->getFirstNameLower()}) {
      all += "<" + text + ">";
    }
    for (const std::string &name : definition->getNames()) {
      all += " name " + name;
    }
    for (const std::string &superior : definition->getSuperior()) {
      all += " superior " + superior;
    }
    all += "\n" + written(*definition) + printed(*definition);
    EXPECT_EQ(definition->oid(), definition->getOid());
    EXPECT_EQ(definition->names(), definition->getNames());
  }
  EXPECT_EQ(all,
            "<1.1><d><A><a> name A name b superior 2.1 superior 2.2\n"
            "attributetypes=( 1.1 NAME ( 'A' 'b'  )  DESC 'd' SUP 2.1 2.2 "
            "USAGE userApplications  )\n"
            "oid --> 1.1\nnames --> A b \ndescription --> d\n"
            "equality --> \nsyntax --> \nordering --> \nsubstr --> \n"
            "superior --> 2.1 2.2 \nusage --> userApplications\n"
            "<1.2><e><C><c> name C name d superior s superior t\n"
            "objectclasses=( 1.2 NAME 'C' 'd'  DESC 'e' SUP ( s $ t ) "
            "STRUCTURAL )\n"
            "\n\noid --> 1.2\nnames --> C d \ndescription --> e\n"
            "superior --> s t \nstructural type --> STRUCTURAL\n"
            "Obsolete --> NO\nrequired Attrs --> \n"
            "optional Attrs --> \n\n\n"
            "<1.3><><><>\n"
            "QORAttributetypes=( 1.3 DBNAME ( 'X'  ) )\n"
            "oid --> 1.3\naccessClass --> \nlength --> 0\n"
            "equality --> NO\nordering --> NO\nsubstr --> NO\n"
            "approx --> NO\nnames--> X \n");
}

TEST(QORSchemaTest, ReturnedListsAreCopies) {
  auto attribute = parsed<Attribute>("attributetypes=( 1.1 NAME 'a' SUP 2.1 )");
  auto objectClass =
      parsed<ObjectClass>("objectclasses=( 1.1 NAME 'a' SUP 2.1 SUP s )");
  for (QORSchema *definition : {static_cast<QORSchema *>(&attribute),
                                static_cast<QORSchema *>(&objectClass)}) {
    const List superior = definition->getSuperior();
    definition->getNames().push_back("x");
    definition->getSuperior().clear();
    EXPECT_EQ(definition->getNames(), List{"a"});
    EXPECT_EQ(definition->getSuperior(), superior);
    EXPECT_EQ(superior.size(), 1U);
  }
}

// Names the tests of a class.
struct ClassName {
  template <class Definition>
  static std::string GetName(int /*index*/) {
    return std::is_same_v<Definition, Attribute>     ? "Attribute"
           : std::is_same_v<Definition, ObjectClass> ? "ObjectClass"
                                                     : "QORAttribute";
  }
};

// What the classes of attribute types and object classes do alike with names.
template <class Definition>
class NamedDefinitionTest : public testing::Test {};

template <class Definition>
Definition named(const std::string &names);

template <>
Attribute named<Attribute>(const std::string &names) {
  return parsed<Attribute>("attributetypes=( 2.5.4.3 NAME ( " + names +
                           " ) USAGE x )");
}

template <>
ObjectClass named<ObjectClass>(const std::string &names) {
  return parsed<ObjectClass>("objectclasses=( 2.5.4.3 NAME ( " + names +
                             " ) ABSTRACT )");
}

using NamedDefinitions = testing::Types<Attribute, ObjectClass>;
TYPED_TEST_SUITE(NamedDefinitionTest, NamedDefinitions, ClassName);

TYPED_TEST(NamedDefinitionTest, GivesTheFirstName) {
  const struct {
    std::string names, first, lower;
  } kTable[] = {
      {"", "", ""},
      {"''", "", ""},
      {"'' 'B'", "", ""},
      {"'cn'", "cn", "cn"},
      {"'commonName'", "commonName", "commonname"},
      {"'commonName' 'CN'", "commonName", "commonname"},
      {"'CN' 'commonName' 'x'", "CN", "cn"},
      {"'ABCDEFGHIJKLMNOPQRSTUVWXYZ'", "ABCDEFGHIJKLMNOPQRSTUVWXYZ",
       "abcdefghijklmnopqrstuvwxyz"},
      {"' X-1.2 [@]_Z '", " X-1.2 [@]_Z ", " x-1.2 [@]_z "},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.names);
    auto definition = named<TypeParam>(row.names);
    EXPECT_EQ(definition.getFirstName(), row.first);
    EXPECT_EQ(definition.getFirstNameLower(), row.lower);
  }
}

TYPED_TEST(NamedDefinitionTest, ListsOidAndNames) {
  EXPECT_EQ(named<TypeParam>("").getOidAndName(),
            "OID --> 2.5.4.3\nName --> \n\n");
  EXPECT_EQ(named<TypeParam>("'cn'").getOidAndName(),
            "OID --> 2.5.4.3\nName --> cn\n\n");
  EXPECT_EQ(named<TypeParam>("'cn' 'commonName'").getOidAndName(),
            "OID --> 2.5.4.3\nName --> cn, commonName\n\n");
  EXPECT_EQ(named<TypeParam>("'cn' '' 'CN'").getOidAndName(),
            "OID --> 2.5.4.3\nName --> cn, , CN\n\n");
  EXPECT_EQ(TypeParam().getOidAndName(), "OID --> \nName --> \n\n");
}

template <class Definition>
class DefinitionTest : public testing::Test {};

using Definitions = testing::Types<Attribute, ObjectClass, QORAttribute>;
TYPED_TEST_SUITE(DefinitionTest, Definitions, ClassName);

TYPED_TEST(DefinitionTest, ConvertLowersTheAsciiLetters) {
  TypeParam definition;
  EXPECT_EQ(definition.convert(""), "");
  EXPECT_EQ(definition.convert("commonName"), "commonname");
  EXPECT_EQ(definition.convert("2.5.4.3-X_y Z"), "2.5.4.3-x_y z");
  EXPECT_EQ(definition.convert("  A\t\n "), "  a\t\n ");
  std::string bytes;
  std::string lower;
  for (int byte = 0; byte < 256; ++byte) {
    const bool upper = byte >= 'A' && byte <= 'Z';
    bytes += static_cast<char>(byte);
    lower += static_cast<char>(upper ? byte + 32 : byte);
  }
  const std::string argument = bytes;
  EXPECT_EQ(definition.convert(argument), lower);
  EXPECT_EQ(argument, bytes);
}

// Whatever locale the program has set. Where none of these is installed, the
// C locale is left.
TYPED_TEST(DefinitionTest, ConvertKnowsNoLocale) {
  std::string bytes;
  for (int byte = 128; byte < 256; ++byte) {
    bytes += static_cast<char>(byte);
  }
  TypeParam definition;
  for (const char *locale : {"C", "C.UTF-8", "de_DE.ISO-8859-1", "de_DE",
                             "en_US.ISO-8859-1", "tr_TR.ISO-8859-9"}) {
    SCOPED_TRACE(locale);
    std::setlocale(LC_ALL, locale);
    const std::string converted = definition.convert(bytes + "I");
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(converted, bytes + "i");
  }
}

}  // namespace
