// The command dump, as a user runs it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CommandsTesting.h"

namespace {

constexpr char kAttributes[] = R"(AttributeTable contains:
Key
Value

a	oid --> 1.2
names --> A b 
description --> text
equality --> 2.1
syntax --> 2.4{8}
ordering --> 2.2
substr --> 2.3
superior --> 1.9 
usage --> dSAOperation


z	oid --> 1.1
names --> z 
description --> 
equality --> 
syntax --> 
ordering --> 
substr --> 
superior --> 
usage --> userApplications


)";

constexpr char kClasses[] = R"(ObjectClassTable contains:
Key	Value

c	

oid --> 1.3
names --> c d 
description --> text
superior --> e f 
structural type --> AUXILIARY
Obsolete --> YES
required Attrs --> g h 
optional Attrs --> i j 




)";

constexpr char kStorage[] = R"(QORAttributeTable contains:
Key
Value

1.2	oid --> 1.2
accessClass --> normal
length --> 4
equality --> YES
ordering --> NO
substr --> YES
approx --> NO
names--> x y 


)";

constexpr char kFiles[] = R"(OIDs from the V3.user.oc file
1.3

OIDs from the V3.user.at file
1.1
1.2

OIDs from the V3.qor.oc file

OIDs from the V3.qor.at file
1.2

OIDs from the V3.system.oc file

OIDs from the V3.system.at file

)";

constexpr char kNoneExcluded[] = "excluded oids\n\n";

class DumpTest : public ReadingCommandTest {
 protected:
  void writeSchema() const {
    write("old/V3.user.at",
          "attributetypes=( 1.2 NAME ( 'A' 'b' ) DESC 'text' SUP 1.9 EQUALITY "
          "2.1 ORDERING 2.2 SUBSTR 2.3 SYNTAX 2.4{8} USAGE dSAOperation )\n"
          "attributetypes=( 1.1 NAME 'z' SINGLE-VALUE )\n");
    write("old/V3.user.oc",
          "objectclasses=( 1.3 NAME ( 'c' 'd' ) DESC 'text' OBSOLETE SUP ( e $ "
          "f ) AUXILIARY MUST ( g $ h ) MAY ( i $ j ) )\n");
    write("old/V3.qor.at",
          "QORAttributetypes=( 1.2 DBNAME ( 'x' 'y' ) ACCESS-CLASS normal "
          "LENGTH 4 EQUALITY SUBSTR )\n");
  }
  CommandResult dump(const Arguments &more) const {
    Arguments arguments = {"dump", "--dir", "old"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return runReading(arguments);
  }
};

TEST_F(DumpTest, HelpHoldsAnExample) {
  expectResult(
      runReading({"dump", "--help"}), 0,
      std::string("Print the library's diagnostic dumps of a schema.\n"
                  "Usage: schema-migrate dump [OPTIONS]\n\n") +
          kCommonOptionsHelp +
          "  --dir DIR REQUIRED          Schema directory\n"
          "  --table TABLE:{attributes,classes,storage,files,excluded}\n"
          "                              What to print; everything if it is "
          "left out\n"
          "  --excluded-oids FILE        List of OIDs to show as excluded\n\n"
          "Example:\n"
          "  schema-migrate dump --dir /srv/schema --table classes\n\n" +
          exitStatusHelp(""),
      "");
}

TEST_F(DumpTest, EachTable) {
  writeSchema();
  const struct {
    const char *table;
    const char *text;
  } kCases[] = {
      {"attributes", kAttributes}, {"classes", kClasses},
      {"storage", kStorage},       {"files", kFiles},
      {"excluded", kNoneExcluded},
  };
  for (const auto &[table, text] : kCases) {
    SCOPED_TRACE(table);
    expectResult(dump({"--table", table}), 0, text, "");
  }
}

TEST_F(DumpTest, AllTables) {
  writeSchema();
  expectResult(
      dump({}), 0,
      std::string(kAttributes) + kClasses + kStorage + kFiles + kNoneExcluded,
      "");
}

TEST_F(DumpTest, TheExcludedOids) {
  writeSchema();
  write("list", "1.3\n1.1 # 1.2\n");
  expectResult(dump({"--excluded-oids", "list", "--table", "excluded"}), 0,
               "excluded oids\n1.1\n1.3\n\n", "");
  // They are listed, and change nothing else.
  expectResult(dump({"--excluded-oids", "list", "--table", "files"}), 0, kFiles,
               "");
  expectResult(dump({"--excluded-oids", "list"}), 0,
               std::string(kAttributes) + kClasses + kStorage + kFiles +
                   "excluded oids\n1.1\n1.3\n\n",
               "");
}

TEST_F(DumpTest, EachFileOfOids) {
  const struct {
    const char *file;
    int place;  // among the six
  } kCases[] = {
      {"V3.user.oc", 0},   {"V3.user.at", 1},   {"V3.qor.oc", 2},
      {"V3.qor.at", 3},    {"V3.system.oc", 4}, {"V3.system.at", 5},
      {"V3.config.at", 6}, {"V3.config.oc", 6}, {"V3.modifiedschema", 6},
  };
  const char *const kFileNames[] = {"V3.user.oc",   "V3.user.at",
                                    "V3.qor.oc",    "V3.qor.at",
                                    "V3.system.oc", "V3.system.at"};
  for (const auto &[file, place] : kCases) {
    SCOPED_TRACE(file);
    std::filesystem::remove_all(path("old"));
    std::filesystem::create_directory(path("old"));
    write(std::string("old/") + file,
          "objectclasses=( 1.1 NAME 'a' ABSTRACT )\n");
    std::string expected;
    for (int i = 0; i < 6; ++i) {
      expected += std::string("OIDs from the ") + kFileNames[i] + " file\n" +
                  (i == place ? "1.1\n\n" : "\n");
    }
    expectResult(dump({"--table", "files"}), 0, expected, "");
  }
}

TEST_F(DumpTest, OfAnEmptySchema) {
  write("old/V3.user.at", "");
  expectResult(dump({"--table", "attributes"}), 0,
               "AttributeTable contains:\nKey\nValue\n\n", "");
  expectResult(dump({"--table", "classes"}), 0,
               "ObjectClassTable contains:\nKey\tValue\n\n", "");
  expectResult(dump({"--table", "storage"}), 0,
               "QORAttributeTable contains:\nKey\nValue\n\n", "");
}

TEST_F(DumpTest, WarnsOfWhatIsIgnored) {
  write("old/V3.user.at",
        "QORAttributetypes=( 1.1 LENGTH 4 )\n"
        "QORAttributetypes=( 1.1 LENGTH 5 )\n");
  expectResult(dump({"--table", "excluded"}), 0, kNoneExcluded,
               "old/V3.user.at:2: warning: storage definition (1.1) is "
               "ignored: old/V3.user.at:1 defines the same OID\n");
}

TEST_F(DumpTest, WrongUsageAndBadInputAreTrouble) {
  writeSchema();
  write("list", "1.1");
  const std::string tables =
      " not in {attributes,classes,storage,files,excluded}";
  const struct {
    Arguments arguments;
    ExitStatus status;
    std::string error;
  } kCases[] = {
      {{"dump"}, kUsage, usageError("--dir is required")},
      {{"dump", "--dir", "old", "--table", "names"},
       kUsage,
       usageError("--table: names" + tables)},
      {{"dump", "--dir", "old", "--table", "Classes"},
       kUsage,
       usageError("--table: Classes" + tables)},
      {{"dump", "--dir", "old", "--table", ""},
       kUsage,
       usageError("--table: " + tables)},
      {{"dump", "--dir", "old", "--table"},
       kUsage,
       usageError("--table: 1 required TABLE:{attributes,classes,storage,files,"
                  "excluded} missing")},
      {{"dump", "--dir", "new"},
       kBadInput,
       "new: error: expected schema files (V3.user.at and so on), found "
       "none\n"},
      {{"dump", "--dir", "old", "--excluded-oids", "list"},
       kBadInput,
       "list:1: error: expected a newline at the end of the file, found none; "
       "the last word would be ignored\n"},
      {{"dump", "--dir", "old", "--excluded-oids", "none"},
       kFileError,
       "none: error: No such file or directory\n"},
  };
  for (const auto &[arguments, status, error] : kCases) {
    SCOPED_TRACE(error);
    expectResult(runReading(arguments), status, "", error);
  }
}

TEST_F(DumpTest, NamesTheFilesThatAreNotThere) {
  write("old/V3.user.at", "");
  expectResult(runAsItIs({"dump", "--dir", "old/", "--table", "excluded"}), 0,
               "excluded oids\n\n", onlyThere("old/", "V3.user.at"));
}

TEST_F(DumpTest, AFullDiskIsTrouble) {
  writeSchema();
  writeMissing("old");
  expectResult(run({"dump", "--dir", "old"},
                   [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); }),
               kFileError, "", "error: cannot write to standard output\n");
}

}  // namespace
