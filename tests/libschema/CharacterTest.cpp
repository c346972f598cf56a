#include "internal/Character.h"

#include <gtest/gtest.h>

#include <cctype>

namespace {

// The tests run in the C locale.
TEST(CharacterTest, ClassesAndCaseAreThoseOfTheCLocale) {
  for (int byte = 0; byte < 256; ++byte) {
    SCOPED_TRACE(byte);
    const char c = static_cast<char>(byte);
    EXPECT_EQ(libschema::isDigit(c), std::isdigit(byte) != 0);
    EXPECT_EQ(libschema::isUpper(c), std::isupper(byte) != 0);
    EXPECT_EQ(libschema::isLetter(c), std::isalpha(byte) != 0);
    EXPECT_EQ(libschema::isPunctuation(c), std::ispunct(byte) != 0);
    EXPECT_EQ(libschema::toLower(c), static_cast<char>(std::tolower(byte)));
  }
}

}  // namespace
