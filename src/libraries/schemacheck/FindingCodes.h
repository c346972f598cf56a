// The codes of findings.
#ifndef SCHEMACHECK_FINDINGCODES_H_
#define SCHEMACHECK_FINDINGCODES_H_

#include <array>
#include <cstddef>

namespace schemacheck {

// An error is what makes the library hang or fail, and what makes it lose or
// change a definition; a warning is what it drops without harm to the rest, and
// what the server may stumble over.
enum class Severity { kWarning, kError };

enum class Code {
  // Files.
  kNotADirectory,
  kNoFiles,
  kUnknownFile,
  kMisnamedFile,
  kNotAFile,
  kUnreadableFile,
  kEmptyFile,
  kLargeFile,
  kBinaryFile,
  kTooDamaged,
  // Readings that do not end.
  kCollective,
  kEndlessNames,
  // Text that the library takes for something else.
  kNonAscii,
  kApostrophe,
  kLineBreak,
  kQuoteUnclosed,
  kDoubleQuotes,
  kTab,
  kCarriageReturn,
  kQuotedKeyword,
  kQuotedNumber,
  kNoNewline,
  kKeywordSpelling,
  kOddCharacter,
  kBadLength,
  // Definitions that run into the next one, or are not read.
  kSectionSpelling,
  kSectionOpener,
  kSectionUnclosed,
  kSectionEmpty,
  kOutsideSection,
  kStrayText,
  kUnclosed,
  kNamesLast,
  kColumnsLast,
  kBareListLast,
  kPhantom,
  kUnreadable,
  // Fields that are lost, or that take the place of others.
  kUnknownField,
  kIgnoredField,
  kSuperiorList,
  kOidInList,
  kMissingValue,
  kBadValue,
  kBadForm,
  kListForm,
  kQuotes,
  kRuleByName,
  kSuperiorByName,
  kSuperiorByNumber,
  kSecondSuperior,
  kRepeatedField,
  kReverse,
  kSpelling,
  kRewriting,
  kDiffers,
  // Definitions against each other.
  kNoOid,
  kNoName,
  kNamelessClass,
  kShadowed,
  kRepeatedDefinition,
  kOidTwice,
  kOidOfTwoKinds,
  kNameTwice,
  kStorageWithoutType,
  kStorageApart,
  kNoStorage,
  kSharedColumn,
  kWrongFile,
  // What the schema refers to, and the forms of names.
  kUndefinedSuperior,
  kSuperiorCycle,
  kUndefinedAttribute,
  kUnknownSyntax,
  kUnknownRule,
  kRequiredAndOptional,
  kBadOid,
  kBadName,
  kBadUsage,
  // Of a merge into a release.
  kNameOtherOid,
  kOidOtherName,
  kNotMergeable,
  kInCopiedFile,
  kChangedByBoth,
  kPreferenceSplit,
  // Lists of OIDs.
  kListUnterminated,
  kListUnknown,
  kListRepeated,
  kListBadOid,
};

struct CodeDescription {
  Code code;
  const char *name;  // as printed; never changes
  Severity severity;
  const char *cause;
  const char *remedy;
};

constexpr std::size_t kCodes = static_cast<std::size_t>(Code::kListBadOid) + 1;

// All codes, in the order of the enumeration.
const std::array<CodeDescription, kCodes> &allCodes();

const CodeDescription &describe(Code code);

}  // namespace schemacheck

#endif  // SCHEMACHECK_FINDINGCODES_H_
