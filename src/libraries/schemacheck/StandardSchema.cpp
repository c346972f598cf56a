#include "StandardSchema.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

namespace schemacheck {

namespace {

// OIDs `prefix`.`first` to `prefix`.`last`.
struct Arc {
  std::string_view prefix;
  unsigned first;
  unsigned last;
};

constexpr Arc kSyntaxes[] = {
    // RFC 4517, RFC 4523, RFC 3672, RFC 2252.
    {"1.3.6.1.4.1.1466.115.121.1", 1, 58},
    // nisNetgroupTriple, bootParameter: RFC 2307.
    {"1.3.6.1.1.1.0", 0, 1},
    // Assertions about certificates, algorithm identifiers: RFC 4523.
    {"1.3.6.1.1.15", 1, 7},
    // UUID: RFC 4530.
    {"1.3.6.1.1.16", 1, 1},
    // Authentication password: RFC 3112.
    {"1.3.6.1.4.1.4203.1.1", 2, 2},
};

constexpr Arc kMatchingRules[] = {
    // RFC 4517, RFC 4523, X.509, X.520.
    {"2.5.13", 0, 61},
    // caseExactIA5Match, caseIgnoreIA5Match, caseIgnoreIA5SubstringsMatch:
    // RFC 4517.
    {"1.3.6.1.4.1.1466.109.114", 1, 3},
    // uuidMatch, uuidOrderingMatch: RFC 4530.
    {"1.3.6.1.1.16", 2, 3},
    // authPasswordExactMatch, authPasswordMatch: RFC 3112.
    {"1.3.6.1.4.1.4203.1.2", 2, 3},
    // componentFilterMatch, rdnMatch, presentMatch, allComponentsMatch,
    // directoryComponentsMatch: RFC 3687.
    {"1.2.36.79672281.1.13", 2, 3},
    {"1.2.36.79672281.1.13", 5, 7},
};

constexpr std::string_view kUsages[] = {"userApplications",
                                        "directoryOperation",
                                        "distributedOperation", "dSAOperation"};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// number = DIGIT / ( LDIGIT 1*DIGIT )
bool isNumber(std::string_view text) {
  return !text.empty() && (text.size() == 1 || text[0] != '0') &&
         std::all_of(text.begin(), text.end(), isDigit);
}

bool isIn(const Arc &arc, std::string_view oid) {
  const std::size_t dot = oid.rfind('.');
  if (dot == std::string_view::npos || oid.substr(0, dot) != arc.prefix ||
      !isNumber(oid.substr(dot + 1))) {
    return false;
  }
  unsigned number = 0;
  const auto [end, error] =
      std::from_chars(oid.data() + dot + 1, oid.data() + oid.size(), number);
  return error == std::errc() && number >= arc.first && number <= arc.last;
}

template <std::size_t N>
bool isInAny(const Arc (&arcs)[N], std::string_view oid) {
  return std::any_of(std::begin(arcs), std::end(arcs),
                     [oid](const Arc &arc) { return isIn(arc, oid); });
}

}  // namespace

bool isStandardSyntax(std::string_view oid) { return isInAny(kSyntaxes, oid); }

bool isStandardMatchingRule(std::string_view oid) {
  return isInAny(kMatchingRules, oid);
}

// numericoid = number 1*( DOT number )
bool isNumericOid(std::string_view text) {
  std::size_t dot = text.find('.');
  if (dot == std::string_view::npos) {
    return false;
  }
  while (dot != std::string_view::npos) {
    if (!isNumber(text.substr(0, dot))) {
      return false;
    }
    text.remove_prefix(dot + 1);
    dot = text.find('.');
  }
  return isNumber(text);
}

// keystring = ALPHA *( ALPHA / DIGIT / HYPHEN )
bool isKeyString(std::string_view text) {
  return !text.empty() && isLetter(text[0]) &&
         std::all_of(text.begin(), text.end(), [](char c) {
           return isLetter(c) || isDigit(c) || c == '-';
         });
}

// The strings of a grammar are the same in any case.
bool isUsage(std::string_view text) {
  const auto same = [](char a, char b) { return lower(a) == lower(b); };
  return std::any_of(std::begin(kUsages), std::end(kUsages),
                     [&](std::string_view usage) {
                       return std::equal(usage.begin(), usage.end(),
                                         text.begin(), text.end(), same);
                     });
}

}  // namespace schemacheck
