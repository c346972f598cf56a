// What the comparisons of the library with the model share.
#ifndef TESTS_MODEL_MODELTESTING_H_
#define TESTS_MODEL_MODELTESTING_H_

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "Attribute.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "model/Definitions.h"

// The number in the environment variable `name`, or `fallback`.
inline unsigned int setting(const char *name, unsigned int fallback) {
  const char *value = std::getenv(name);
  return value == nullptr ? fallback
                          : static_cast<unsigned int>(std::stoul(value));
}

// How many random cases a test runs, and the seed of the first; that of the
// second is one more, and so on. Printed, so that a failure can be repeated.
struct RandomCases {
  RandomCases() {
    std::cout << "RANDOM_TEST_SEED=" << seed << " RANDOM_TEST_RUNS=" << runs
              << std::endl;
  }

  const unsigned int seed = setting("RANDOM_TEST_SEED", std::random_device()());
  const unsigned int runs = setting("RANDOM_TEST_RUNS", 2000);
};

// All fields of a definition as one text, alike for the library's definitions
// and the model's.

inline std::string flag(const char *name, bool set) {
  return set ? std::string(" ") + name : "";
}

inline std::string fieldsOf(const Attribute &type) {
  return "oid " + testing::PrintToString(type.oid()) + " names " +
         testing::PrintToString(type.names()) + " description " +
         testing::PrintToString(type.description()) + " superiors " +
         testing::PrintToString(type.superiors()) + " equality " +
         type.equality() + " ordering " + type.ordering() + " substr " +
         type.substr() + " syntax " + testing::PrintToString(type.syntax()) +
         " usage " + testing::PrintToString(type.usage()) +
         flag("obsolete", type.isObsolete()) +
         flag("single", type.isSingleValue()) +
         flag("collective", type.isCollective()) +
         flag("modifiable", type.isUserModifiable());
}

inline std::string fieldsOf(const model::AttributeType &type) {
  return "oid " + testing::PrintToString(type.oid) + " names " +
         testing::PrintToString(type.names) + " description " +
         testing::PrintToString(type.description) + " superiors " +
         testing::PrintToString(type.superiors) + " equality " + type.equality +
         " ordering " + type.ordering + " substr " + type.substr + " syntax " +
         testing::PrintToString(type.syntax) + " usage " +
         testing::PrintToString(type.usage) + flag("obsolete", type.obsolete) +
         flag("single", type.singleValue) +
         flag("modifiable", type.userModification);
}

inline std::string fieldsOf(const ObjectClass &objectClass) {
  return "oid " + testing::PrintToString(objectClass.oid()) + " names " +
         testing::PrintToString(objectClass.names()) + " description " +
         testing::PrintToString(objectClass.description()) + " superiors " +
         testing::PrintToString(objectClass.superiors()) + " kind " +
         std::to_string(objectClass.structuralType()) + " must " +
         testing::PrintToString(objectClass.requiredAttributes()) + " may " +
         testing::PrintToString(objectClass.optionalAttributes()) +
         flag("obsolete", objectClass.isObsolete());
}

inline std::string fieldsOf(const model::ObjectClass &objectClass) {
  return "oid " + testing::PrintToString(objectClass.oid) + " names " +
         testing::PrintToString(objectClass.names) + " description " +
         testing::PrintToString(objectClass.description) + " superiors " +
         testing::PrintToString(objectClass.superiors) + " kind " +
         std::to_string(objectClass.kind) + " must " +
         testing::PrintToString(objectClass.must) + " may " +
         testing::PrintToString(objectClass.may) +
         flag("obsolete", objectClass.obsolete);
}

inline std::string fieldsOf(const QORAttribute &storage) {
  return "oid " + testing::PrintToString(storage.oid()) + " columns " +
         testing::PrintToString(storage.columnNames()) + " access class " +
         testing::PrintToString(storage.accessClass()) + " length " +
         testing::PrintToString(storage.length()) +
         flag("equality", storage.hasEquality()) +
         flag("ordering", storage.hasOrdering()) +
         flag("substr", storage.hasSubstr()) +
         flag("approx", storage.hasApprox());
}

inline std::string fieldsOf(const model::Storage &storage) {
  return "oid " + testing::PrintToString(storage.oid) + " columns " +
         testing::PrintToString(storage.columns) + " access class " +
         testing::PrintToString(storage.accessClass) + " length " +
         testing::PrintToString(storage.length) +
         flag("equality", storage.equality) +
         flag("ordering", storage.ordering) + flag("substr", storage.substr) +
         flag("approx", storage.approx);
}

#endif  // TESTS_MODEL_MODELTESTING_H_
