// The command check: what takes the place of an OID.
#include "CheckCommandTesting.h"

namespace {

class CheckOidTest : public CheckCommandTest {};

TEST_P(CheckOidTest, FindsThisAndNoMore) { expectFindings(); }

const CheckCase kOid[] = {
    {"Extension",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' X-ORIGIN 'user defined' )\n"}},
     "d/V3.user.at:1:40: error: [UNKNOWN-FIELD] expected a field of an "
     "attribute type, found 'X-ORIGIN'; the library keeps OID user defined\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' X-ORIGIN 'user defined' )\n"
     "                                       ^\n"},
    {"ExtensionWithAList",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' X-ORIGIN ( 'RFC 1' 'RFC 2' ) )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:40: error: [UNKNOWN-FIELD] expected a field of an "
     "attribute type, found 'X-ORIGIN'; the library ends the definition too "
     "early\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' X-ORIGIN ( 'RFC 1' 'RFC 2' ) )\n"
     "                                       ^\n"},
    {"ExtensionWithAListInAClass",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT X-ORIGIN ( 'RFC 1' 'RFC 2' ) )\n"
       "objectclasses=( 2.9 NAME 'next' ABSTRACT )\n"}},
     "d/V3.user.oc:1:39: error: [UNKNOWN-FIELD] expected a field of an object "
     "class, found 'X-ORIGIN'; the library does not end the definition at its "
     "')'\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT X-ORIGIN ( 'RFC 1' 'RFC 2' ) )\n"
     "                                      ^\n"},
    {"TwoExtensions",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' X-A 'b' X-C 'd' )\n"}},
     "d/V3.user.at:1:40: error: [UNKNOWN-FIELD] expected a field of an "
     "attribute type, found 'X-A'; the library keeps OID d\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' X-A 'b' X-C 'd' )\n"
     "                                       ^\n"
     "d/V3.user.at:1:48: error: [UNKNOWN-FIELD] expected a field of an "
     "attribute type, found 'X-C'; the library keeps OID d\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' X-A 'b' X-C 'd' )\n"
     "                                               ^\n"},
    {"AnExtensionAmongNames",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' X-A 'b' DESC 'x' )\n"}},
     "d/V3.user.at:1:22: error: [NAMES-LAST] expected another field behind the "
     "names, found 'X-A'; the library keeps NAME a X-A b\n"
     "attributetypes=( 1.1 NAME 'a' X-A 'b' DESC 'x' )\n"
     "                     ^\n"
     "d/V3.user.at:1:31: error: [UNKNOWN-FIELD] expected a field of an "
     "attribute type, found 'X-A'; the library keeps NAME a X-A b\n"
     "attributetypes=( 1.1 NAME 'a' X-A 'b' DESC 'x' )\n"
     "                              ^\n"},
    {"UnknownWord",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' INDEXED )\n"}},
     "d/V3.user.at:1:40: error: [UNKNOWN-FIELD] expected a field of an "
     "attribute type, found 'INDEXED'; the library keeps OID INDEXED\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' INDEXED )\n"
     "                                       ^\n"},
    {"UnknownText",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' 'y' )\n"}},
     "d/V3.user.at:1:40: error: [UNKNOWN-FIELD] expected a field of an "
     "attribute type, found 'y'; the library keeps OID y\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' 'y' )\n"
     "                                       ^\n"},
    {"UnknownNumber",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' 2.2 )\n"}},
     "d/V3.user.at:1:40: error: [UNKNOWN-FIELD] expected a field of an "
     "attribute type, found '2.2'; the library keeps OID 2.2\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' 2.2 )\n"
     "                                       ^\n"},
    {"ListOfSuperiors",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' SUP ( b $ c ) )\n"
       "attributetypes=( 1.2 NAME ( 'b' 'c' ) DESC 'x' )\n"}},
     "d/V3.user.at:1:31: error: [SUPERIOR-LIST] expected one superior without "
     "parentheses, found a list; the library ends the definition too early\n"
     "attributetypes=( 1.1 NAME 'a' SUP ( b $ c ) )\n"
     "                              ^\n"},
    {"OidInMust",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a $ 1.9 $ next ) )\n"},
      {"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.oc:1:50: error: [OID-IN-LIST] expected a name, found the OID "
     "1.9; the library ends the definition too early\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a $ 1.9 $ next ) )\n"
     "                                                 ^\n"},
    {"OidInMay",
     {{"V3.user.oc", "objectclasses=( 2.1 NAME 'k' ABSTRACT MAY ( 1.9 ) )\n"},
      {"V3.user.at", "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.oc:1:45: error: [OID-IN-LIST] expected a name, found the OID "
     "1.9; the library ends the definition too early\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MAY ( 1.9 ) )\n"
     "                                            ^\n"},
    {"OidAsMust",
     {{"V3.user.oc", "objectclasses=( 2.1 NAME 'k' MUST 1.9 ABSTRACT )\n"},
      {"V3.user.at", "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.oc:1:35: error: [OID-IN-LIST] expected a name, found the OID "
     "1.9; the library keeps OID 1.9\n"
     "objectclasses=( 2.1 NAME 'k' MUST 1.9 ABSTRACT )\n"
     "                                  ^\n"},
    {"OidInSuperiors",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' SUP ( 2.9 ) ABSTRACT )\n"
       "objectclasses=( 2.9 NAME 'next' ABSTRACT )\n"}},
     "d/V3.user.oc:1:36: error: [OID-IN-LIST] expected a name, found the OID "
     "2.9; the library ends the definition too early\n"
     "objectclasses=( 2.1 NAME 'k' SUP ( 2.9 ) ABSTRACT )\n"
     "                                   ^\n"},
    {"NameInStorage",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'cn' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 NAME 'cn' DBNAME ( 'CN' ) )\n"}},
     "d/V3.user.at:2:25: error: [UNKNOWN-FIELD] expected a field of a storage "
     "definition, found 'NAME'; the library keeps OID cn\n"
     "QORAttributetypes=( 1.1 NAME 'cn' DBNAME ( 'CN' ) )\n"
     "                        ^\n"},
    {"DoubleQuotes",
     {{"V3.user.at", "attributetypes=( 1.1 NAME \"a\" DESC \"two words\" )\n"}},
     "d/V3.user.at:1:27: error: [DOUBLE-QUOTES] expected single quotes behind "
     "NAME, found the text \"a\"; the library keeps OID words\n"
     "attributetypes=( 1.1 NAME \"a\" DESC \"two words\" )\n"
     "                          ^\n"
     "d/V3.user.at:1:36: error: [DOUBLE-QUOTES] expected single quotes behind "
     "DESC, found the text \"two words\"; the library keeps OID words\n"
     "attributetypes=( 1.1 NAME \"a\" DESC \"two words\" )\n"
     "                                   ^\n"},
    {"FieldOfAnotherKind",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' MUST ( b $ c ) )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:40: error: [UNKNOWN-FIELD] expected a field of an "
     "attribute type, found 'MUST'; the library ends the definition too early\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' MUST ( b $ c ) )\n"
     "                                       ^\n"},
    {"FlagOfAnotherKind",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' APPROX STRUCTURAL )\n"}},
     "d/V3.user.at:1:40: warning: [IGNORED-FIELD] expected a field of an "
     "attribute type, found 'APPROX'\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' APPROX STRUCTURAL )\n"
     "                                       ^\n"
     "d/V3.user.at:1:47: warning: [IGNORED-FIELD] expected a field of an "
     "attribute type, found 'STRUCTURAL'\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' APPROX STRUCTURAL )\n"
     "                                              ^\n"},
    {"KeywordForAnOid",
     {{"V3.user.at",
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
       "QORAttributetypes=( SINGLE-VALUE LENGTH 4 )\n"}},
     "d/V3.user.at:1:18: warning: [NO-STORAGE] expected a storage definition "
     "with the OID 1.9, found none\n"
     "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
     "                 ^\n"
     "d/V3.user.at:2:19: error: [DIFFERS] expected OID SINGLE-VALUE to be "
     "kept; the library drops it\n"
     "QORAttributetypes=( SINGLE-VALUE LENGTH 4 )\n"
     "                  ^\n"
     "d/V3.user.at:2:21: error: [STORAGE-WITHOUT-TYPE] expected an attribute "
     "type with the OID SINGLE-VALUE, found none; the library never writes the "
     "storage definition\n"
     "QORAttributetypes=( SINGLE-VALUE LENGTH 4 )\n"
     "                    ^\n"
     "d/V3.user.at:2:21: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found 'SINGLE-VALUE'\n"
     "QORAttributetypes=( SINGLE-VALUE LENGTH 4 )\n"
     "                    ^\n"},
    {"KeywordInLowerCase",
     {{"V3.user.at", "attributetypes=( 1.1 name 'a' desc 'x' )\n"}},
     "d/V3.user.at:1:22: error: [KEYWORD-SPELLING] expected NAME, found the "
     "word 'name'; the library keeps OID x\n"
     "attributetypes=( 1.1 name 'a' desc 'x' )\n"
     "                     ^\n"
     "d/V3.user.at:1:31: error: [KEYWORD-SPELLING] expected DESC, found the "
     "word 'desc'; the library keeps OID x\n"
     "attributetypes=( 1.1 name 'a' desc 'x' )\n"
     "                              ^\n"},
};

INSTANTIATE_TEST_SUITE_P(Oid, CheckOidTest, testing::ValuesIn(kOid), nameOf);

}  // namespace
