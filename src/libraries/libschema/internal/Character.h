// Character classes and case as in the C locale, whatever setlocale() says.
// Bytes of 128 or more belong to no class.
#ifndef LIBSCHEMA_INTERNAL_CHARACTER_H_
#define LIBSCHEMA_INTERNAL_CHARACTER_H_

namespace libschema {

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

constexpr bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }

inline char toLower(char c) {
  return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool isLetter(char c) { return isUpper(c) || (c >= 'a' && c <= 'z'); }

// Printable, and neither a letter, a digit nor a blank.
constexpr bool isPunctuation(char c) {
  return c > ' ' && c < 0x7F && !isLetter(c) && !isDigit(c);
}

}  // namespace libschema

#endif  // LIBSCHEMA_INTERNAL_CHARACTER_H_
