// The command compare on the examples.
#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <string>

#include "CommandsTesting.h"

namespace {

// Behind the identical definitions, with the list of excluded OIDs.
constexpr char kBehindIdentical[] =
    R"(different: 16
  attribute type 'altServer' (1.3.6.1.4.1.1466.101.120.6), old-installation/V3.config.at:27 and new-release/V3.system.at:76
    DESC
      old: 'Addresses of replicas'
      new: 'Other servers to ask when this one is away'
  attribute type 'description' (2.5.4.13), old-installation/V3.system.at:92 and new-release/V3.system.at:104
    SYNTAX
      old: 1.3.6.1.4.1.1466.115.121.1.15{4096}
      new: 1.3.6.1.4.1.1466.115.121.1.15{1024}
  attribute type 'labeledUri' (1.3.6.1.4.1.250.1.57), old-installation/V3.user.at:63 and new-release/V3.user.at:28
    DESC
      old: 'Web page and its caption'
      new: 'URI with an optional label'
    SYNTAX
      old: 1.3.6.1.4.1.1466.115.121.1.15{2000}
      new: 1.3.6.1.4.1.1466.115.121.1.15
  attribute type 'personalTitle' (0.9.2342.19200300.100.1.40), old-installation/V3.modifiedschema:8 and new-release/V3.modifiedschema:11
    DESC
      old: 'Form of address'
      new: 'Title that goes before the name'
  attribute type 'telephoneNumber' (2.5.4.20), old-installation/V3.system.at:167 and new-release/V3.system.at:224
    SYNTAX
      old: 1.3.6.1.4.1.1466.115.121.1.50{64}
      new: 1.3.6.1.4.1.1466.115.121.1.50{32}
  attribute type 'title' (2.5.4.12), old-installation/V3.system.at:72 and new-release/V3.system.at:97
    DESC
      old: 'Job title'
      new: 'Title of the person in the organization'
  object class 'device' (2.5.6.14), old-installation/V3.system.oc:83 and new-release/V3.system.oc:87
    MAY
      old: serialNumber seeAlso owner ou o l description exampleAssetTag
      new: serialNumber seeAlso owner ou o l description
  object class 'extensibleObject' (1.3.6.1.4.1.1466.101.120.111), old-installation/V3.config.oc:7 and new-release/V3.system.oc:9
    DESC
      old: 'May hold any attribute'
      new: 'Entry that may hold any user attribute'
  object class 'groupOfUniqueNames' (2.5.6.17), old-installation/V3.system.oc:76 and new-release/V3.system.oc:72
    DESC
      old: 'Group of unique names'
      new: 'Group whose members are given by unique name'
  object class 'labeledUriObject' (1.3.6.1.4.1.250.3.15), old-installation/V3.user.oc:16 and new-release/V3.user.oc:16
    DESC
      old: 'Object with a web page'
      new: 'Object that has labeled URIs'
    MAY
      old: labeledUri description
      new: labeledURI
  object class 'rFC822LocalPart' (0.9.2342.19200300.100.4.14), old-installation/V3.modifiedschema:14 and new-release/V3.modifiedschema:47
    DESC
      old: 'Mailbox of a domain'
      new: 'Local part of an Internet mail address'
  storage definition (0.9.2342.19200300.100.1.3), old-installation/V3.system.at:261 and new-release/V3.system.at:272
    SUBSTR
      old: yes
      new: no
  storage definition (1.3.6.1.4.1.250.1.57), old-installation/V3.user.at:68 and new-release/V3.user.at:29
    LENGTH
      old: 2000
      new: 240
  storage definition (2.5.4.13), old-installation/V3.system.at:97 and new-release/V3.system.at:130
    LENGTH
      old: 4096
      new: 1024
  storage definition (2.5.4.20), old-installation/V3.system.at:170 and new-release/V3.system.at:245
    LENGTH
      old: 64
      new: 32
  storage definition (2.5.4.3), old-installation/V3.system.at:45 and new-release/V3.system.at:114
    APPROX
      old: no
      new: yes
only in the old schema: 36
  attribute type 'dmdName' (2.5.4.54), old-installation/V3.qor.at:37
  attribute type 'exampleAssetTag' (1.3.6.1.4.1.32473.1.8), old-installation/V3.user.at:137
  attribute type 'exampleBadgeNumber' (1.3.6.1.4.1.32473.1.1), old-installation/V3.user.at:72
  attribute type 'exampleCostCentre' (1.3.6.1.4.1.32473.1.2), old-installation/V3.user.at:80
  attribute type 'exampleDeskCode' (1.3.6.1.4.1.32473.1.4), old-installation/V3.user.at:96
  attribute type 'exampleEmergencyContact' (1.3.6.1.4.1.32473.1.5), old-installation/V3.user.at:104
  attribute type 'exampleHireDate' (1.3.6.1.4.1.32473.1.3), old-installation/V3.user.at:88
  attribute type 'exampleLeaveDays' (1.3.6.1.4.1.32473.1.7), old-installation/V3.user.at:119
  attribute type 'exampleNickname' (1.3.6.1.4.1.32473.1.10), old-installation/V3.user.at:127
  attribute type 'exampleParkingPermit' (1.3.6.1.4.1.32473.1.6), old-installation/V3.user.at:111
  attribute type 'exampleProjectLead' (1.3.6.1.4.1.32473.1.11), old-installation/V3.user.at:144
  attribute type 'exampleWarrantyEnd' (1.3.6.1.4.1.32473.1.9), old-installation/V3.user.at:141
  attribute type 'presentationAddress' (2.5.4.29), old-installation/V3.system.at:249
  attribute type 'protocolInformation' (2.5.4.48), old-installation/V3.system.at:251
  attribute type 'supportedApplicationContext' (2.5.4.30), old-installation/V3.system.at:250
  object class 'applicationEntity' (2.5.6.12), old-installation/V3.system.oc:93
  object class 'dmd' (2.5.6.20), old-installation/V3.qor.oc:43
  object class 'exampleAsset' (1.3.6.1.4.1.32473.2.3), old-installation/V3.user.oc:27
  object class 'exampleContractor' (1.3.6.1.4.1.32473.2.2), old-installation/V3.user.oc:24
  object class 'exampleEmployee' (1.3.6.1.4.1.32473.2.1), old-installation/V3.user.oc:20
  object class 'exampleProject' (1.3.6.1.4.1.32473.2.4), old-installation/V3.user.oc:31
  storage definition (1.3.6.1.4.1.32473.1.1), old-installation/V3.user.at:77
  storage definition (1.3.6.1.4.1.32473.1.10), old-installation/V3.user.at:131
  storage definition (1.3.6.1.4.1.32473.1.11), old-installation/V3.user.at:153
  storage definition (1.3.6.1.4.1.32473.1.2), old-installation/V3.user.at:85
  storage definition (1.3.6.1.4.1.32473.1.3), old-installation/V3.user.at:93
  storage definition (1.3.6.1.4.1.32473.1.4), old-installation/V3.user.at:101
  storage definition (1.3.6.1.4.1.32473.1.5), old-installation/V3.user.at:108
  storage definition (1.3.6.1.4.1.32473.1.6), old-installation/V3.user.at:116
  storage definition (1.3.6.1.4.1.32473.1.7), old-installation/V3.user.at:124
  storage definition (1.3.6.1.4.1.32473.1.8), old-installation/V3.user.at:148
  storage definition (1.3.6.1.4.1.32473.1.9), old-installation/V3.user.at:150
  storage definition (2.5.4.29), old-installation/V3.system.at:252
  storage definition (2.5.4.30), old-installation/V3.system.at:253
  storage definition (2.5.4.48), old-installation/V3.system.at:254
  storage definition (2.5.4.54), old-installation/V3.qor.at:38
only in the new schema: 12
  attribute type 'entryDN' (1.3.6.1.1.20), new-release/V3.system.at:35
  attribute type 'entryUUID' (1.3.6.1.1.16.4), new-release/V3.system.at:33
  attribute type 'supportedAlgorithms' (2.5.4.52), new-release/V3.qor.at:19
  attribute type 'supportedFeatures' (1.3.6.1.4.1.4203.1.3.5), new-release/V3.config.at:14
  attribute type 'uniqueIdentifier' (0.9.2342.19200300.100.1.44), new-release/V3.modifiedschema:33
  object class 'uidObject' (1.3.6.1.1.3.1), new-release/V3.config.oc:8
  object class 'userSecurityInformation' (2.5.6.18), new-release/V3.qor.oc:16
  storage definition (0.9.2342.19200300.100.1.44), new-release/V3.modifiedschema:40
  storage definition (1.3.6.1.1.16.4), new-release/V3.system.at:34
  storage definition (1.3.6.1.1.20), new-release/V3.system.at:36
  storage definition (1.3.6.1.4.1.4203.1.3.5), new-release/V3.config.at:33
  storage definition (2.5.4.52), new-release/V3.qor.at:26
excluded: 7
  attribute type 'exampleFaxGateway' (1.3.6.1.4.1.32473.1.12), old-installation/V3.user.at:159
  attribute type 'knowledgeInformation' (2.5.4.2), old-installation/V3.config.at:29
  attribute type 'userPassword' (2.5.4.35), old-installation/V3.system.at:85
  object class 'exampleFaxUser' (1.3.6.1.4.1.32473.2.5), old-installation/V3.user.oc:37
  storage definition (1.3.6.1.4.1.32473.1.12), old-installation/V3.user.at:160
  storage definition (2.5.4.2), old-installation/V3.config.at:36
  storage definition (2.5.4.35), old-installation/V3.system.at:90
)";

// The definitions of a schema that a text does not mention, as the command
// lists them.
std::string notIn(const std::string &text, const std::string &directory) {
  const Inventory files(directory);
  std::size_t number = 0;
  std::string found;
  for (const Kind kind :
       {Kind::kAttributeType, Kind::kObjectClass, Kind::kStorage}) {
    std::map<std::string, std::string> byKey;
    for (const Entry &entry : files.entries()) {
      if (entry.kind == kind &&
          text.find("\n  " + describe(entry) + ", ") == std::string::npos) {
        byKey[entry.key] = describe(entry);
      }
    }
    number += byKey.size();
    for (const auto &[key, description] : byKey) {
      found += "  " + description + '\n';
    }
  }
  return "identical: " + std::to_string(number) + '\n' + found;
}

TEST(CompareExamplesTest, EachDefinitionIsInOneSection) {
  const std::string identical = notIn(
      kBehindIdentical, std::string(SCHEMA_EXAMPLES_DIR) + "/old-installation");
  EXPECT_EQ(identical.substr(0, identical.find('\n')), "identical: 228");
  expectResult(
      runOnExamples({"compare", "--old", "old-installation", "--new",
                     "new-release", "--excluded-oids", "excluded-oids.txt"}),
      1, identical + kBehindIdentical, "");
}

TEST(CompareExamplesTest, AnExampleIsEqualToItself) {
  for (const std::string directory : {"old-installation", "new-release"}) {
    expectResult(
        runOnExamples({"compare", "--old", directory, "--new", directory}), 0,
        notIn("", std::string(SCHEMA_EXAMPLES_DIR) + '/' + directory) +
            "different: 0\nonly in the old schema: 0\n"
            "only in the new schema: 0\nexcluded: 0\n",
        "");
  }
}

}  // namespace
