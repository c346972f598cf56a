// The command show, as a user runs it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CommandsTesting.h"

namespace {

// The dump of an object class without description, from its fields.
struct ShownClass {
  std::string oid;
  std::string names;
  std::string superiors;
  std::string kind;
  std::string required;
  std::string optional;
};

// Each word with a blank behind it.
std::string dumpOf(const ShownClass &one) {
  return "\n\noid --> " + one.oid + "\nnames --> " + one.names +
         "\ndescription --> \nsuperior --> " + one.superiors +
         "\nstructural type --> " + one.kind +
         "\nObsolete --> NO\nrequired Attrs --> " + one.required +
         "\noptional Attrs --> " + one.optional + "\n\n\n";
}

// The dump of an attribute type that has an OID, names, a superior and a
// syntax at most.
std::string dumpOf(const std::string &oid, const std::string &names,
                   const std::string &superior, const std::string &syntax) {
  return "oid --> " + oid + "\nnames --> " + names +
         "\ndescription --> \nequality --> \nsyntax --> " + syntax +
         "\nordering --> \nsubstr --> \nsuperior --> " + superior +
         "\nusage --> userApplications\n";
}

// All that is shown of a storage definition of one column, but its place.
std::string storage(const std::string &oid, const std::string &column,
                    const std::string &length) {
  return "oid --> " + oid + "\naccessClass --> \nlength --> " + length +
         "\nequality --> NO\nordering --> NO\nsubstr --> NO\napprox --> NO\n"
         "names--> " +
         column + " \nQORAttributetypes=( " + oid + " DBNAME ( '" + column +
         "'  ) LENGTH " + length + " )\n\n";
}

class ShowTest : public ReadingCommandTest {
 protected:
  CommandResult show(const Arguments &keys) const {
    Arguments arguments = {"show", "--dir", "old"};
    arguments.insert(arguments.end(), keys.begin(), keys.end());
    return runReading(arguments);
  }
};

TEST_F(ShowTest, HelpHoldsAnExample) {
  expectResult(
      runReading({"show", "--help"}), 0,
      std::string("Show definitions with their superiors, what they inherit, "
                  "and how they are stored.\n"
                  "Usage: schema-migrate show [OPTIONS] name...\n\n"
                  "Positionals:\n"
                  "  name NAME-OR-OID ... REQUIRED\n"
                  "                              Names, in any case, or "
                  "OIDs\n\n") +
          kCommonOptionsHelp + kFormatHelp +
          "  --dir DIR REQUIRED          Schema directory\n\n"
          "Example:\n"
          "  schema-migrate show --dir /srv/schema person 2.5.4.3\n\n" +
          exitStatusHelp("  2 a name or an OID that nothing has\n"),
      "");
}

TEST_F(ShowTest, WrongUsageAndBadInputAreTrouble) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' COLLECTIVE )\n");
  const struct {
    Arguments arguments;
    ExitStatus status;
    std::string error;
  } kCases[] = {
      {{"show", "--dir", "new"}, kUsage, usageError("name is required")},
      {{"show", "top"}, kUsage, usageError("--dir is required")},
      {{"show", "--dir", "new", "top"},
       kBadInput,
       "new: error: expected schema files (V3.user.at and so on), found "
       "none\n"},
      {{"show", "--dir", "none", "top"},
       kFileError,
       "none: error: No such file or directory\n"},
  };
  for (const auto &[arguments, status, error] : kCases) {
    SCOPED_TRACE(error);
    expectResult(runReading(arguments), status, "", error);
  }
  const CommandResult endless = show({"a"});
  EXPECT_EQ(endless.status, kBadInput);
  EXPECT_EQ(endless.out, "");
  EXPECT_NE(endless.error, "");
}

TEST_F(ShowTest, AnAttributeTypeByAnyNameInAnyCaseAndByOid) {
  write("old/V3.system.at",
        "attributetypes=( 1.1 NAME ( 'Name' 'alias' 'third' ) "
        "SYNTAX 2.1{8} )\n\n"
        "QORAttributetypes=( 1.1 DBNAME ( 'col' ) LENGTH 4 )\n");
  const std::string expected =
      "attribute type 'Name' (1.1), old/V3.system.at:1\n" +
      dumpOf("1.1", "Name alias third ", "", "2.1{8}") +
      "attributetypes=( 1.1 NAME ( 'Name' 'alias' 'third'  ) SYNTAX 2.1{8} "
      "USAGE userApplications  )\n"
      "storage definition (1.1), old/V3.system.at:3\n" +
      storage("1.1", "col", "4");
  for (const char *key :
       {"Name", "name", "NAME", "alias", "ALIAS", "Third", "1.1"}) {
    SCOPED_TRACE(key);
    expectResult(show({key}), 0, expected, "");
  }
}

TEST_F(ShowTest, AnAttributeTypeWithoutStorage) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' SYNTAX 2.1 )\n");
  expectResult(show({"a"}), 0,
               "attribute type 'a' (1.1), old/V3.user.at:1\n" +
                   dumpOf("1.1", "a ", "", "2.1") +
                   "attributetypes=( 1.1 NAME ( 'a'  ) SYNTAX 2.1 USAGE "
                   "userApplications  )\n"
                   "no storage definition\n\n",
               "");
}

TEST_F(ShowTest, AStorageDefinitionWithoutAttributeTypeByOidOnly) {
  write("old/V3.qor.at",
        "QORAttributetypes=( 1.1 DBNAME ( 'column' ) LENGTH 4 )\n");
  expectResult(show({"1.1"}), 0,
               "storage definition (1.1), old/V3.qor.at:1\n" +
                   storage("1.1", "column", "4"),
               "");
  expectResult(show({"column"}), kFindings, "",
               "old: error: nothing is called 'column'\n");
}

TEST_F(ShowTest, EachFieldOfEachKind) {
  write("old/V3.system.at",
        "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'text' OBSOLETE SUP 9.9 "
        "EQUALITY 2.1 ORDERING 2.2 SUBSTR 2.3 SYNTAX 2.4{8} SINGLE-VALUE "
        "NO-USER-MODIFICATION USAGE dSAOperation )\n"
        "QORAttributetypes=( 1.1 DBNAME ( 'c' 'd' ) ACCESS-CLASS normal "
        "LENGTH 4 EQUALITY ORDERING SUBSTR APPROX )\n"
        "objectclasses=( 1.2 NAME ( 'c' 'd' ) DESC 'text' OBSOLETE SUP ( e $ "
        "f ) AUXILIARY MUST ( g $ h ) MAY ( i $ j ) )\n");
  expectResult(
      show({"1.1", "1.2"}), 0,
      "attribute type 'a' (1.1), old/V3.system.at:1\n"
      "oid --> 1.1\nnames --> a b \ndescription --> text\nequality --> 2.1\n"
      "syntax --> 2.4{8}\nordering --> 2.2\nsubstr --> 2.3\n"
      "superior --> 9.9 \nusage --> dSAOperation\n"
      "attributetypes=( 1.1 NAME ( 'a' 'b'  )  DESC 'text' OBSOLETE SUP 9.9 "
      "EQUALITY 2.1 ORDERING 2.2 SUBSTR 2.3 SYNTAX 2.4{8} SINGLE-VALUE "
      "NO-USER-MODIFICATION USAGE dSAOperation  )\n"
      "superior '9.9' is not defined\n"
      "storage definition (1.1), old/V3.system.at:2\n"
      "oid --> 1.1\naccessClass --> normal\nlength --> 4\nequality --> YES\n"
      "ordering --> YES\nsubstr --> YES\napprox --> YES\nnames--> c d \n"
      "QORAttributetypes=( 1.1 DBNAME ( 'c' 'd'  ) ACCESS-CLASS normal LENGTH "
      "4 EQUALITY ORDERING SUBSTR APPROX )\n\n"
      "object class 'c' (1.2), old/V3.system.at:3\n"
      "\n\noid --> 1.2\nnames --> c d \ndescription --> text\n"
      "superior --> e f \nstructural type --> AUXILIARY\nObsolete --> YES\n"
      "required Attrs --> g h \noptional Attrs --> i j \n\n\n"
      "objectclasses=( 1.2 NAME 'c' 'd'  DESC 'text' OBSOLETE SUP ( e $ f "
      ") AUXILIARY MUST ( g $ h ) MAY ( i $ j ) )\n"
      "superior 'e' is not defined\n"
      "superior 'f' is not defined\n\n",
      "");
}

TEST_F(ShowTest, TheSuperiorsOfAnAttributeTypeToTheTop) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' SUP 1.2 )\n"
        "attributetypes=( 1.3 NAME 'c' SUP 1.4 )\n");
  write("old/V3.system.at", "attributetypes=( 1.2 NAME 'b' SUP 1.3 )\n");
  expectResult(show({"a"}), 0,
               "attribute type 'a' (1.1), old/V3.user.at:1\n" +
                   dumpOf("1.1", "a ", "1.2 ", "") +
                   "attributetypes=( 1.1 NAME ( 'a'  ) SUP 1.2 USAGE "
                   "userApplications  )\n"
                   "superior attribute type 'b' (1.2), old/V3.system.at:1\n"
                   "superior attribute type 'c' (1.3), old/V3.user.at:2\n"
                   "superior '1.4' is not defined\n"
                   "no storage definition\n\n",
               "");
}

TEST_F(ShowTest, TheSuperiorsOfAnObjectClassAndWhatItInherits) {
  write("old/V3.user.oc",
        "objectclasses=( 1.1 NAME 'a' SUP ( B $ c ) MAY ( x ) )\n"
        "objectclasses=( 1.2 NAME ( 'b' 'bb' ) SUP top MUST ( y $ z ) )\n"
        "objectclasses=( 1.3 NAME ( 'd' 'c' ) SUP top MUST ( u ) "
        "MAY ( v $ w ) )\n"
        "objectclasses=( 1.4 NAME 'top' ABSTRACT MUST ( objectClass ) )\n");
  expectResult(
      show({"a"}), 0,
      "object class 'a' (1.1), old/V3.user.oc:1\n" +
          dumpOf({"1.1", "a ", "B c ", "STRUCTURAL", "", "x "}) +
          "objectclasses=( 1.1 NAME 'a' SUP ( B $ c ) STRUCTURAL MAY ( x ) )\n"
          "superior object class 'b' (1.2), old/V3.user.oc:2\n"
          "superior object class 'd' (1.3), old/V3.user.oc:3\n"
          "superior object class 'top' (1.4), old/V3.user.oc:4\n"
          "required by 'b': y z\n"
          "required by 'd': u\n"
          "optional by 'd': v w\n"
          "required by 'top': objectClass\n\n",
      "");
}

TEST_F(ShowTest, ACycleOfSuperiorsOnce) {
  write("old/V3.user.oc",
        "objectclasses=( 1.1 NAME 'a' SUP b MAY ( x ) )\n"
        "objectclasses=( 1.2 NAME 'b' SUP ( c $ b ) MAY ( y ) )\n"
        "objectclasses=( 1.3 NAME 'c' SUP a MAY ( z ) )\n");
  expectResult(
      show({"b"}), 0,
      "object class 'b' (1.2), old/V3.user.oc:2\n" +
          dumpOf({"1.2", "b ", "c b ", "STRUCTURAL", "", "y "}) +
          "objectclasses=( 1.2 NAME 'b' SUP ( c $ b ) STRUCTURAL MAY ( y ) )\n"
          "superior object class 'c' (1.3), old/V3.user.oc:3\n"
          "superior object class 'a' (1.1), old/V3.user.oc:1\n"
          "optional by 'c': z\n"
          "optional by 'a': x\n\n",
      "");
  write("old/V3.user.oc", "");
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' SUP 1.1 )\n");
  expectResult(show({"a"}), 0,
               "attribute type 'a' (1.1), old/V3.user.at:1\n" +
                   dumpOf("1.1", "a ", "1.1 ", "") +
                   "attributetypes=( 1.1 NAME ( 'a'  ) SUP 1.1 USAGE "
                   "userApplications  )\n"
                   "no storage definition\n\n",
               "");
}

TEST_F(ShowTest, AMissingSuperiorOfSeveralOnce) {
  write("old/V3.user.oc",
        "objectclasses=( 1.1 NAME 'a' SUP ( b $ gone ) ABSTRACT )\n"
        "objectclasses=( 1.2 NAME 'b' SUP GONE ABSTRACT )\n");
  expectResult(show({"a"}), 0,
               "object class 'a' (1.1), old/V3.user.oc:1\n" +
                   dumpOf({"1.1", "a ", "b gone ", "ABSTRACT", "", ""}) +
                   "objectclasses=( 1.1 NAME 'a' SUP ( b $ gone ) ABSTRACT )\n"
                   "superior object class 'b' (1.2), old/V3.user.oc:2\n"
                   "superior 'gone' is not defined\n\n",
               "");
}

TEST_F(ShowTest, ASuperiorWithoutName) {
  write("old/V3.user.oc",
        "objectclasses=( 1.1 SUP top MUST ( x ) MAY ( y ) )\n"
        "objectclasses=( 1.2 NAME 'child' SUP '1.1' )\n"
        "objectclasses=( 1.3 NAME 'top' ABSTRACT )\n");
  expectResult(show({"child"}), 0,
               "object class 'child' (1.2), old/V3.user.oc:2\n" +
                   dumpOf({"1.2", "child ", "1.1 ", "STRUCTURAL", "", ""}) +
                   "objectclasses=( 1.2 NAME 'child' SUP ( 1.1 ) STRUCTURAL )\n"
                   "superior object class (1.1), old/V3.user.oc:1\n"
                   "superior object class 'top' (1.3), old/V3.user.oc:3\n"
                   "required by '1.1': x\n"
                   "optional by '1.1': y\n\n",
               "");
}

TEST_F(ShowTest, ASuperiorIsTheOneWithTheFirstNameRatherThanAnAlias) {
  write("old/V3.user.oc",
        "objectclasses=( 1.1 NAME ( 'a' 'top' ) ABSTRACT )\n"
        "objectclasses=( 1.2 NAME 'Top' ABSTRACT )\n"
        "objectclasses=( 1.3 NAME 'x' SUP tOP )\n");
  expectResult(show({"x"}), 0,
               "object class 'x' (1.3), old/V3.user.oc:3\n" +
                   dumpOf({"1.3", "x ", "tOP ", "STRUCTURAL", "", ""}) +
                   "objectclasses=( 1.3 NAME 'x' SUP ( tOP ) STRUCTURAL )\n"
                   "superior object class 'Top' (1.2), old/V3.user.oc:2\n\n",
               "");
}

TEST_F(ShowTest, ASuperiorThatIsAnAliasOfTwoIsTheFirstByName) {
  write("old/V3.user.oc",
        "objectclasses=( 1.1 NAME ( 'b' 'alias' ) ABSTRACT )\n"
        "objectclasses=( 1.2 NAME ( 'a' 'alias' ) ABSTRACT )\n"
        "objectclasses=( 1.3 NAME 'x' SUP alias )\n");
  expectResult(show({"x"}), 0,
               "object class 'x' (1.3), old/V3.user.oc:3\n" +
                   dumpOf({"1.3", "x ", "alias ", "STRUCTURAL", "", ""}) +
                   "objectclasses=( 1.3 NAME 'x' SUP ( alias ) STRUCTURAL )\n"
                   "superior object class 'a' (1.2), old/V3.user.oc:2\n\n",
               "");
}

TEST_F(ShowTest, OfTwoWithOneOidTheSuperiorIsTheFirst) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'b' SYNTAX 2.1 )\n"
        "attributetypes=( 1.1 NAME 'a' SYNTAX 2.1 )\n"
        "attributetypes=( 1.2 NAME 'c' SUP 1.1 )\n");
  expectResult(show({"c"}), 0,
               "attribute type 'c' (1.2), old/V3.user.at:3\n" +
                   dumpOf("1.2", "c ", "1.1 ", "") +
                   "attributetypes=( 1.2 NAME ( 'c'  ) SUP 1.1 USAGE "
                   "userApplications  )\n"
                   "superior attribute type 'b' (1.1), old/V3.user.at:1\n"
                   "no storage definition\n\n",
               "");
}

TEST_F(ShowTest, OidsAreMatchedExactly) {
  write("old/V3.user.at",
        "attributetypes=( 'a-oid' NAME 'a' SYNTAX 2.1 )\n"
        "QORAttributetypes=( 'A-OID' DBNAME ( 'A' ) LENGTH 4 )\n"
        "attributetypes=( 'x' NAME 'A-OID' SYNTAX 2.1 )\n");
  const std::string type =
      "attribute type 'a' (a-oid), old/V3.user.at:1\n" +
      dumpOf("a-oid", "a ", "", "2.1") +
      "attributetypes=( a-oid NAME ( 'a'  ) SYNTAX 2.1 USAGE userApplications "
      " )\n"
      "no storage definition\n\n";
  const std::string named =
      "attribute type 'A-OID' (x), old/V3.user.at:3\n" +
      dumpOf("x", "A-OID ", "", "2.1") +
      "attributetypes=( x NAME ( 'A-OID'  ) SYNTAX 2.1 USAGE userApplications "
      " )\n"
      "no storage definition\n\n";
  const std::string column = "storage definition (A-OID), old/V3.user.at:2\n" +
                             storage("A-OID", "A", "4");
  expectResult(show({"a-oid"}), 0, named + type, "");
  expectResult(show({"A-OID"}), 0, named + column, "");
  expectResult(show({"A-Oid"}), 0, named, "");
}

TEST_F(ShowTest, AllDefinitionsThatAKeyLeadsTo) {
  write("old/V3.user.oc",
        "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n"
        "objectclasses=( 1.2 NAME 'A' AUXILIARY )\n"  // reached by its OID only
        "objectclasses=( 1.1 NAME ( 'b' 'a' ) ABSTRACT )\n");
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' SYNTAX 2.1 )\n"
        "QORAttributetypes=( 1.1 DBNAME ( 'a' ) LENGTH 4 )\n");
  const std::string type =
      "attribute type 'a' (1.1), old/V3.user.at:1\n" +
      dumpOf("1.1", "a ", "", "2.1") +
      "attributetypes=( 1.1 NAME ( 'a'  ) SYNTAX 2.1 USAGE userApplications  "
      ")\n"
      "storage definition (1.1), old/V3.user.at:2\n" +
      storage("1.1", "a", "4");
  const std::string a = "object class 'a' (1.1), old/V3.user.oc:1\n" +
                        dumpOf({"1.1", "a ", "", "ABSTRACT", "", ""}) +
                        "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n\n";
  const std::string second = "object class 'A' (1.2), old/V3.user.oc:2\n" +
                             dumpOf({"1.2", "A ", "", "AUXILIARY", "", ""}) +
                             "objectclasses=( 1.2 NAME 'A' AUXILIARY )\n\n";
  const std::string b = "object class 'b' (1.1), old/V3.user.oc:3\n" +
                        dumpOf({"1.1", "b a ", "", "ABSTRACT", "", ""}) +
                        "objectclasses=( 1.1 NAME 'b' 'a' ABSTRACT )\n\n";
  const std::string warning =
      "old/V3.user.oc:2: warning: object class 'A' (1.2) is found by its "
      "OID only: old/V3.user.oc:1 defines the same first name\n";
  expectResult(show({"a"}), 0, type + a + b + second, warning);
  expectResult(show({"1.1"}), 0, type + a + b, "");
  expectResult(show({"1.2"}), 0, second, warning);
  expectResult(show({"b"}), 0, b, "");
}

TEST_F(ShowTest, NamesTheFilesThatAreNotThere) {
  write("old/V3.user.oc", "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n");
  const CommandResult result = runAsItIs({"show", "--dir", "old", "a"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, onlyThere("old", "V3.user.oc"));
}

TEST_F(ShowTest, WarnsOfWhatTheKeysLeadToAlone) {
  write("old/V3.user.oc",
        "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n"
        "objectclasses=( 1.2 NAME ( 'A' 'alias' ) AUXILIARY )\n"
        "objectclasses=( 1.2 NAME 'a' AUXILIARY )\n"
        "objectclasses=( 1.3 NAME 'b' ABSTRACT )\n"
        "objectclasses { ( NAME 'b' ABSTRACT ) }\n");
  const std::string byOid =
      "old/V3.user.oc:2: warning: object class 'A' (1.2) is found by its OID "
      "only: old/V3.user.oc:1 defines the same first name\n";
  const std::string ignored =
      "old/V3.user.oc:3: warning: object class 'a' (1.2) is ignored: "
      "old/V3.user.oc:1 defines the same first name\n";
  const std::string noOid =
      "old/V3.user.oc:5: warning: object class 'b' () is ignored: it has no "
      "OID\n";
  EXPECT_EQ(show({"1.1"}).error, "");
  EXPECT_EQ(show({"1.2"}).error, byOid + ignored);
  EXPECT_EQ(show({"ALIAS"}).error, byOid);
  EXPECT_EQ(show({"a"}).error, byOid + ignored);
  EXPECT_EQ(show({"B"}).error, noOid);
  EXPECT_EQ(show({"b", "alias", "1.2"}).error, byOid + ignored + noOid);
}

TEST_F(ShowTest, AllAttributeTypesThatAKeyLeadsTo) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME 'a' SYNTAX 2.1 )\n"
        "attributetypes=( 1.2 NAME 'A' SYNTAX 2.2 )\n"  // by its OID only
        "attributetypes=( 1.1 NAME ( 'b' 'a' ) SYNTAX 2.3 )\n");
  const auto shown = [](const std::string &place, const std::string &oid,
                        const std::string &names, const std::string &quoted,
                        const std::string &syntax) {
    return place + dumpOf(oid, names, "", syntax) + "attributetypes=( " + oid +
           " NAME ( " + quoted + "  ) SYNTAX " + syntax +
           " USAGE userApplications  )\nno storage definition\n\n";
  };
  const std::string a = shown("attribute type 'a' (1.1), old/V3.user.at:1\n",
                              "1.1", "a ", "'a'", "2.1");
  const std::string second =
      shown("attribute type 'A' (1.2), old/V3.user.at:2\n", "1.2", "A ", "'A'",
            "2.2");
  const std::string b = shown("attribute type 'b' (1.1), old/V3.user.at:3\n",
                              "1.1", "b a ", "'b' 'a'", "2.3");
  const std::string warning =
      "old/V3.user.at:2: warning: attribute type 'A' (1.2) is found by its OID "
      "only: old/V3.user.at:1 defines the same first name\n";
  expectResult(show({"a"}), 0, a + b + second, warning);
  expectResult(show({"1.1"}), 0, a + b, "");
  expectResult(show({"1.2"}), 0, second, warning);
  expectResult(show({"b"}), 0, b, "");
}

TEST_F(ShowTest, AStorageDefinitionBehindAnObjectClassWithItsOid) {
  write("old/V3.user.oc",
        "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n"
        "QORAttributetypes=( 1.1 DBNAME ( 'column' ) LENGTH 4 )\n");
  const std::string a = "object class 'a' (1.1), old/V3.user.oc:1\n" +
                        dumpOf({"1.1", "a ", "", "ABSTRACT", "", ""}) +
                        "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n\n";
  expectResult(show({"1.1"}), 0,
               a + "storage definition (1.1), old/V3.user.oc:2\n" +
                   storage("1.1", "column", "4"),
               "");
  expectResult(show({"a"}), 0, a, "");
}

// Some write a word in place of an OID. Its case counts.
TEST_F(ShowTest, AWordInPlaceOfAnOid) {
  write("old/V3.user.at",
        "attributetypes=( Cn-OID NAME 'cn' SYNTAX 2.1 )\n"
        "QORAttributetypes=( Cn-OID DBNAME ( 'x' ) LENGTH 4 )\n"
        "QORAttributetypes=( Sn-OID DBNAME ( 'y' ) LENGTH 5 )\n");
  const std::string type =
      "attribute type 'cn' (Cn-OID), old/V3.user.at:1\n" +
      dumpOf("Cn-OID", "cn ", "", "2.1") +
      "attributetypes=( Cn-OID NAME ( 'cn'  ) SYNTAX 2.1 USAGE "
      "userApplications  )\n"
      "storage definition (Cn-OID), old/V3.user.at:2\n" +
      storage("Cn-OID", "x", "4");
  const std::string alone = "storage definition (Sn-OID), old/V3.user.at:3\n" +
                            storage("Sn-OID", "y", "5");
  expectResult(show({"Cn-OID", "Sn-OID"}), 0, type + alone, "");
  expectResult(show({"CN-oid", "Sn-OID"}), kFindings, alone,
               "old: error: nothing is called 'CN-oid'; did you mean 'Cn-OID' "
               "or 'Sn-OID'?\n");
}

TEST_F(ShowTest, SeveralKeysInTheirOrder) {
  write("old/V3.user.oc",
        "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n"
        "objectclasses=( 1.2 NAME 'b' AUXILIARY )\n");
  const std::string a = "object class 'a' (1.1), old/V3.user.oc:1\n" +
                        dumpOf({"1.1", "a ", "", "ABSTRACT", "", ""}) +
                        "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n\n";
  const std::string b = "object class 'b' (1.2), old/V3.user.oc:2\n" +
                        dumpOf({"1.2", "b ", "", "AUXILIARY", "", ""}) +
                        "objectclasses=( 1.2 NAME 'b' AUXILIARY )\n\n";
  expectResult(show({"b", "a"}), 0, b + a, "");
  expectResult(show({"a", "a"}), 0, a + a, "");
  expectResult(show({"b", "unknown", "a", "other"}), kFindings, b + a,
               "old: error: nothing is called 'unknown'\n"
               "old: error: nothing is called 'other'\n");
  expectResult(show({"unknown", "a"}), kFindings, a,
               "old: error: nothing is called 'unknown'\n");
}

TEST_F(ShowTest, AnUnknownNameWithTheNearestOnes) {
  write("old/V3.user.at",
        "attributetypes=( 1.11 NAME ( 'cn' 'commonName' ) DESC 'x' )\n"
        "attributetypes=( 1.12 NAME 'telephoneNumber' DESC 'x' )\n"
        "attributetypes=( 1.13 NAME 'co' DESC 'x' )\n"
        "attributetypes=( 1.14 NAME 'C' DESC 'x' )\n");
  const struct {
    const char *key;
    const char *nearest;
  } kCases[] = {
      {"telefonNumber", "; did you mean 'telephoneNumber'?"},
      {"COMMONNAMES", "; did you mean 'commonName'?"},
      {"cm", "; did you mean 'C' or 'cn' or 'co'?"},
      {"tele", "; did you mean 'telephoneNumber'?"},
      {"1.1", "; did you mean '1.11' or '1.12' or '1.13'?"},
      {"nothing", ""},
      {"", ""},
  };
  for (const auto &[key, nearest] : kCases) {
    SCOPED_TRACE(key);
    expectResult(show({key}), kFindings, "",
                 std::string("old: error: nothing is called '") + key + "'" +
                     nearest + "\n");
  }
}

constexpr char kShownExamples[] =
    R"(object class 'uidObject' (1.3.6.1.1.3.1), new-release/V3.config.oc:8


oid --> 1.3.6.1.1.3.1
names --> uidObject 
description --> Object that has a login name
superior --> top 
structural type --> AUXILIARY
Obsolete --> NO
required Attrs --> uid 
optional Attrs --> 


objectclasses=( 1.3.6.1.1.3.1 NAME 'uidObject'  DESC 'Object that has a login name' SUP ( top ) AUXILIARY MUST ( uid ) )
superior object class 'top' (2.5.6.0), new-release/V3.system.oc:5
required by 'top': objectClass

attribute type 'cn' (2.5.4.3), new-release/V3.system.at:87
oid --> 2.5.4.3
names --> cn commonName 
description --> Names by which the object is commonly known
equality --> 
syntax --> 
ordering --> 
substr --> 
superior --> 2.5.4.41 
usage --> userApplications
attributetypes=( 2.5.4.3 NAME ( 'cn' 'commonName'  )  DESC 'Names by which the object is commonly known' SUP 2.5.4.41 USAGE userApplications  )
superior attribute type 'name' (2.5.4.41), new-release/V3.system.at:81
storage definition (2.5.4.3), new-release/V3.system.at:114
oid --> 2.5.4.3
accessClass --> normal
length --> 240
equality --> YES
ordering --> NO
substr --> YES
approx --> YES
names--> CN CN 
QORAttributetypes=( 2.5.4.3 DBNAME ( 'CN' 'CN'  ) ACCESS-CLASS normal LENGTH 240 EQUALITY SUBSTR APPROX )

)";

TEST(ShowExamplesTest, AClassWithItsSuperiorsAndATypeWithItsStorage) {
  expectResult(runOnExamples({"show", "--dir", "new-release", "UIDOBJECT",
                              "commonName", "uids"}),
               kFindings, kShownExamples,
               "new-release: error: nothing is called 'uids'; did you mean "
               "'uid'?\n");
}

}  // namespace
