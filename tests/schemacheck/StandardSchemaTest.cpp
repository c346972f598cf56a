#include "StandardSchema.h"

#include <gtest/gtest.h>

#include <string>

using schemacheck::isKeyString;
using schemacheck::isNumericOid;
using schemacheck::isStandardMatchingRule;
using schemacheck::isStandardSyntax;
using schemacheck::isUsage;

namespace {

TEST(StandardSchemaTest, Syntaxes) {
  for (const char *oid :
       {"1.3.6.1.4.1.1466.115.121.1.1", "1.3.6.1.4.1.1466.115.121.1.9",
        "1.3.6.1.4.1.1466.115.121.1.15", "1.3.6.1.4.1.1466.115.121.1.58",
        "1.3.6.1.1.1.0.0", "1.3.6.1.1.1.0.1", "1.3.6.1.1.15.1",
        "1.3.6.1.1.15.7", "1.3.6.1.1.16.1", "1.3.6.1.4.1.4203.1.1.2"}) {
    EXPECT_TRUE(isStandardSyntax(oid)) << oid;
  }
  for (const char *oid :
       {"", ".", "15", "DirectoryString", "1.3.6.1.4.1.1466.115.121.1",
        "1.3.6.1.4.1.1466.115.121.1.", "1.3.6.1.4.1.1466.115.121.1.0",
        "1.3.6.1.4.1.1466.115.121.1.59", "1.3.6.1.4.1.1466.115.121.1.015",
        "1.3.6.1.4.1.1466.115.121.1.15.1", "1.3.6.1.4.1.1466.115.121.1.15{8}",
        "1.3.6.1.4.1.1466.115.121.1.99999999999999999999", "1.3.6.1.1.1.0.2",
        "1.3.6.1.1.16.2", "2.5.13.2"}) {
    EXPECT_FALSE(isStandardSyntax(oid)) << oid;
  }
}

TEST(StandardSchemaTest, MatchingRules) {
  for (const char *oid :
       {"2.5.13.0", "2.5.13.2", "2.5.13.34", "2.5.13.61",
        "1.3.6.1.4.1.1466.109.114.1", "1.3.6.1.4.1.1466.109.114.3",
        "1.3.6.1.1.16.2", "1.3.6.1.1.16.3", "1.3.6.1.4.1.4203.1.2.2",
        "1.2.36.79672281.1.13.7"}) {
    EXPECT_TRUE(isStandardMatchingRule(oid)) << oid;
  }
  for (const char *oid :
       {"", "caseIgnoreMatch", "2.5.13", "2.5.13.62", "2.5.13.02",
        "1.3.6.1.4.1.1466.109.114.4", "1.3.6.1.1.16.1",
        "1.3.6.1.4.1.4203.1.2.1", "1.2.36.79672281.1.13.4",
        "1.3.6.1.4.1.1466.115.121.1.15"}) {
    EXPECT_FALSE(isStandardMatchingRule(oid)) << oid;
  }
}

TEST(StandardSchemaTest, NumericOids) {
  for (const char *text : {"0.9", "1.1", "2.5.4.3", "1.0.0", "1.10.100"}) {
    EXPECT_TRUE(isNumericOid(text)) << text;
  }
  for (const char *text : {"", "1", ".", "1.", ".1", "1..2", "1.02", "00.1",
                           "1.a", "a", "1.2{3}", "1.2 ", "-1.2"}) {
    EXPECT_FALSE(isNumericOid(text)) << text;
  }
}

TEST(StandardSchemaTest, KeyStrings) {
  for (const char *text : {"a", "Z", "cn", "x-1", "a--", "userSMIME2"}) {
    EXPECT_TRUE(isKeyString(text)) << text;
  }
  for (const char *text :
       {"", "1", "-a", "a_b", "a b", "a.b", "a;b", "\xC3\xA9", "a\xC3\xA9"}) {
    EXPECT_FALSE(isKeyString(text)) << text;
  }
}

TEST(StandardSchemaTest, UsagesInAnyCase) {
  for (const char *text :
       {"userApplications", "directoryOperation", "distributedOperation",
        "dSAOperation", "DSAOPERATION", "dsaoperation"}) {
    EXPECT_TRUE(isUsage(text)) << text;
  }
  for (const char *text :
       {"", "userApplication", "userApplicationss", "user"}) {
    EXPECT_FALSE(isUsage(text)) << text;
  }
}

}  // namespace
