#include "FindingCodes.h"

namespace schemacheck {

namespace {

constexpr std::array<CodeDescription, kCodes> kDescriptions = {{
    {Code::kNotADirectory, "NOT-A-DIRECTORY", Severity::kError,
     "The directory is not there, is no directory, or may not be read.",
     "Check the path and its permissions."},
    {Code::kNoFiles, "NO-FILES", Severity::kError,
     "The directory holds none of the nine schema files.",
     "Name the directory that holds V3.user.at and the others."},
    {Code::kUnknownFile, "UNKNOWN-FILE", Severity::kWarning,
     "The name begins with V3 but is not that of a schema file, so the file is "
     "not read; backups are such files.",
     "Move the file elsewhere, or rename it if it is meant to be read."},
    {Code::kMisnamedFile, "MISNAMED-FILE", Severity::kError,
     "The name is almost that of a schema file that is not there. The file is "
     "not read, and what it defines is lost.",
     "Rename the file."},
    {Code::kNotAFile, "NOT-A-FILE", Severity::kError,
     "A directory, a device or a broken link has the name of a schema file.",
     "Put the file itself there."},
    {Code::kUnreadableFile, "UNREADABLE-FILE", Severity::kError,
     "The file cannot be opened or read to its end.",
     "Check its permissions and the disk."},
    {Code::kEmptyFile, "EMPTY-FILE", Severity::kWarning,
     "The file holds nothing. The library writes such files for sets without "
     "definitions. (V3.modifiedschema is often empty, and not reported.)",
     "None if the file is meant to be empty."},
    {Code::kLargeFile, "LARGE-FILE", Severity::kError,
     "The file is larger than the limit, and is not checked.",
     "Raise the limit if the file is what it should be."},
    {Code::kBinaryFile, "BINARY-FILE", Severity::kError,
     "The file holds a zero byte, as compressed files and texts in UTF-16 do. "
     "It is not checked further.",
     "Put the text in ASCII there."},
    {Code::kTooDamaged, "TOO-DAMAGED", Severity::kError,
     "The file departs from the form of schema files so often that it seems to "
     "be something else. It is not checked further.",
     "Put the right file there, or mend what was found so far."},
    {Code::kCollective, "COLLECTIVE", Severity::kError,
     "The library does not return from an attribute type with COLLECTIVE.",
     "Take COLLECTIVE out, or take the definition out."},
    {Code::kEndlessNames, "ENDLESS-NAMES", Severity::kError,
     "After NAME, or DBNAME without its closing parenthesis, the library looks "
     "for the next field; where the file ends before there is one it does not "
     "return.",
     "Put another field behind the names, such as DESC, or STRUCTURAL in an "
     "object class."},
    {Code::kNonAscii, "NON-ASCII", Severity::kError,
     "A byte of 128 or more ends a quoted text for the library, and what "
     "follows is read as fields.",
     "Write the text in ASCII."},
    {Code::kApostrophe, "APOSTROPHE", Severity::kError,
     "An apostrophe ends a quoted text for the library, and what follows is "
     "read as fields.",
     "Write the text without it."},
    {Code::kLineBreak, "LINE-BREAK", Severity::kError,
     "The end of the line ends a quoted text for the library, and what follows "
     "is read as fields.",
     "Write the text on one line."},
    {Code::kQuoteUnclosed, "QUOTE-UNCLOSED", Severity::kError,
     "A quoted text has no closing quote.", "Add it."},
    {Code::kDoubleQuotes, "DOUBLE-QUOTES", Severity::kError,
     "The library does not know double quotes; the words between them are read "
     "as fields or take the place of the OID.",
     "Use single quotes."},
    {Code::kTab, "TAB", Severity::kError,
     "A tab directly behind a word belongs to the word for the library, so "
     "that a keyword is none.",
     "Put a blank there."},
    {Code::kCarriageReturn, "CARRIAGE-RETURN", Severity::kError,
     "A carriage return is a character of its own to the library. It ends a "
     "list, or takes the place of a value.",
     "End lines with a line feed alone."},
    {Code::kQuotedKeyword, "QUOTED-KEYWORD", Severity::kError,
     "A quoted text or a name that is also a keyword (MAY, NAME, DESC ...) is "
     "read as the keyword.",
     "Write it in another case, or choose another text."},
    {Code::kQuotedNumber, "QUOTED-NUMBER", Severity::kError,
     "A quoted text that equals the number before it is read as a number, and "
     "a number that equals the text before it as a text; the field loses its "
     "value.",
     "Change the text."},
    {Code::kNoNewline, "NO-NEWLINE", Severity::kError,
     "The last word of a file is lost if nothing stands behind it.",
     "End the file with a newline."},
    {Code::kKeywordSpelling, "KEYWORD-SPELLING", Severity::kError,
     "Keywords of fields are known in upper case only; in another case they "
     "take the place of the OID.",
     "Write the keyword in upper case."},
    {Code::kOddCharacter, "ODD-CHARACTER", Severity::kError,
     "A word holds a character that ends it for the library, or a text a "
     "control character; what follows is read as another word.",
     "Use letters, digits and hyphens."},
    {Code::kBadLength, "BAD-LENGTH", Severity::kError,
     "A length in braces is not made of digits, stands where there is none, or "
     "a number is none.",
     "Write the number, or the length as {64} behind the syntax."},
    {Code::kSectionSpelling, "SECTION-SPELLING", Severity::kError,
     "The library knows attributetypes, attributeTypes, objectclasses, "
     "objectClasses, QORAttributetypes and QORattributeTypes; a section with "
     "its keyword in another spelling is passed over with all its definitions.",
     "Write the keyword in one of these spellings."},
    {Code::kSectionOpener, "SECTION-OPENER", Severity::kError,
     "Behind the keyword of a section stands neither = nor {. The library "
     "gives the file up.",
     "Write = before one definition, or braces around several."},
    {Code::kSectionUnclosed, "SECTION-UNCLOSED", Severity::kError,
     "A block of definitions has no closing brace. The library gives the file "
     "up.",
     "Add the brace."},
    {Code::kSectionEmpty, "SECTION-EMPTY", Severity::kError,
     "No definition stands behind = in a section; the library reads on for "
     "one.",
     "Add the definition, or take the section out."},
    {Code::kOutsideSection, "OUTSIDE-SECTION", Severity::kError,
     "A definition stands in no section; the library passes over it.",
     "Write the keyword of a section and = before it."},
    {Code::kStrayText, "STRAY-TEXT", Severity::kWarning,
     "Text belongs to no section or definition; the library passes over it.",
     "Make it a comment with #, or take it out."},
    {Code::kUnclosed, "UNCLOSED", Severity::kError,
     "A definition lacks a parenthesis; the library reads on into the next "
     "one.",
     "Add the parenthesis."},
    {Code::kNamesLast, "NAMES-LAST", Severity::kError,
     "After NAME the library looks for the next field, beyond the end of the "
     "definition if there is none that it knows, and the definition loses its "
     "end.",
     "Put another field behind the names, such as DESC, or STRUCTURAL in an "
     "object class."},
    {Code::kColumnsLast, "COLUMNS-LAST", Severity::kError,
     "Without parentheses around the column names the library reads on for the "
     "next field, beyond the end of the definition if there is none that it "
     "knows.",
     "Put the names in parentheses."},
    {Code::kBareListLast, "BARE-LIST-LAST", Severity::kError,
     "Without parentheses around the last list of an object class the library "
     "takes the parenthesis of the definition for that of the list, and gives "
     "the file up.",
     "Put the list in parentheses."},
    {Code::kPhantom, "PHANTOM", Severity::kError,
     "The library takes text that belongs to no definition for one, or for the "
     "keyword of a section.",
     "Make the text a comment with #, or take it out."},
    {Code::kUnreadable, "UNREADABLE", Severity::kError,
     "The library does not read this as it is written, for a reason that has "
     "no code of its own.",
     "Write the definition in the form of the others."},
    {Code::kUnknownField, "UNKNOWN-FIELD", Severity::kError,
     "The library does not know the field (X- extensions, fields of other "
     "kinds, stray words and texts); what it holds takes the place of the OID "
     "or ends the definition.",
     "Take the field out."},
    {Code::kIgnoredField, "IGNORED-FIELD", Severity::kWarning,
     "The field does not belong there, and the library drops it.",
     "Take the field out."},
    {Code::kSuperiorList, "SUPERIOR-LIST", Severity::kError,
     "An attribute type has one superior; the words of a list take the place "
     "of the OID.",
     "Name one superior, by its OID and without parentheses."},
    {Code::kOidInList, "OID-IN-LIST", Severity::kError,
     "An OID in a list of an object class ends the list for the library, and "
     "takes the place of the OID of the object class.",
     "Write the name."},
    {Code::kMissingValue, "MISSING-VALUE", Severity::kError,
     "A field has no value, so that the library takes what follows for it.",
     "Add the value, or take the field out."},
    {Code::kBadValue, "BAD-VALUE", Severity::kError,
     "A value is not in the form that the field has, and the library does not "
     "keep it.",
     "Write it in the form that the message names."},
    {Code::kBadForm, "BAD-FORM", Severity::kWarning,
     "A number or a length is not in the form that the field has; the library "
     "keeps it as it is.",
     "Write it in the form that the message names."},
    {Code::kListForm, "LIST-FORM", Severity::kWarning,
     "A list is not written as ( a $ b ); the library reads it all the same.",
     "Write it in this form."},
    {Code::kQuotes, "QUOTES", Severity::kWarning,
     "Quotes are missing, or stand where they do not belong; the library reads "
     "the value all the same.",
     "Quote names and descriptions, and nothing else."},
    {Code::kRuleByName, "RULE-BY-NAME", Severity::kWarning,
     "The library keeps matching rules by OID and drops those by name.",
     "Write the OID of the matching rule."},
    {Code::kSuperiorByName, "SUPERIOR-BY-NAME", Severity::kWarning,
     "The library keeps the superior of an attribute type by OID and drops one "
     "by name.",
     "Write the OID of the superior."},
    {Code::kSuperiorByNumber, "SUPERIOR-BY-NUMBER", Severity::kWarning,
     "The library keeps the superiors of an object class by name and drops one "
     "by OID.",
     "Write the name of the superior."},
    {Code::kSecondSuperior, "SECOND-SUPERIOR", Severity::kError,
     "An attribute type with two superiors is written in a form in which the "
     "second takes the place of the OID.",
     "Name one superior."},
    {Code::kRepeatedField, "REPEATED-FIELD", Severity::kWarning,
     "A field is there twice. The last value counts; of lists, both.",
     "Write it once."},
    {Code::kReverse, "REVERSE", Severity::kWarning,
     "The library drops REVERSE.", "None, if the server can do without it."},
    {Code::kSpelling, "SPELLING", Severity::kWarning,
     "A name that is the keyword of a section, such as objectClasses, is kept "
     "in the spelling of the keyword.",
     "None: names are compared in any case."},
    {Code::kRewriting, "REWRITING", Severity::kError,
     "The library writes the definition in a form that it reads as another "
     "one; a value that stands in quotes is written without them, for "
     "instance.",
     "Write the value in the form of the field, as a name or a number without "
     "quotes."},
    {Code::kDiffers, "DIFFERS", Severity::kError,
     "The library keeps something else than the file says, for a reason that "
     "has no code of its own.",
     "Write the definition in the form of the others."},
    {Code::kNoOid, "NO-OID", Severity::kError,
     "A definition has no OID. The library drops it in a block, and files it "
     "under the empty OID otherwise.",
     "Add the OID."},
    {Code::kNoName, "NO-NAME", Severity::kWarning,
     "An attribute type has no name; the library files all such under the "
     "empty name and keeps the first.",
     "Add a name."},
    {Code::kNamelessClass, "NAMELESS-CLASS", Severity::kError,
     "An object class without a name is written in a form that cannot be read.",
     "Add a name."},
    {Code::kShadowed, "SHADOWED", Severity::kError,
     "Another definition of the kind has the same first name in any case, or "
     "for storage definitions the same OID, and comes first; this one is "
     "ignored.",
     "Keep one of the two."},
    {Code::kRepeatedDefinition, "REPEATED-DEFINITION", Severity::kWarning,
     "The same definition stands in the files twice.",
     "None; the first counts."},
    {Code::kOidTwice, "OID-TWICE", Severity::kError,
     "Another definition of the kind has the same OID and comes first; this "
     "one is not written.",
     "Give it an OID of its own."},
    {Code::kOidOfTwoKinds, "OID-OF-TWO-KINDS", Severity::kError,
     "An attribute type and an object class have the same OID; only the object "
     "class is written.",
     "Give each an OID of its own."},
    {Code::kNameTwice, "NAME-TWICE", Severity::kWarning,
     "Two definitions of the kind share a name that is not the first of both; "
     "who uses it gets one of them.",
     "Take the name out of one of them."},
    {Code::kStorageWithoutType, "STORAGE-WITHOUT-TYPE", Severity::kError,
     "No attribute type has the OID of a storage definition, which is "
     "therefore not written.",
     "Add the attribute type, or take the storage definition out."},
    {Code::kStorageApart, "STORAGE-APART", Severity::kWarning,
     "A storage definition stands in another file than its attribute type; the "
     "library writes the attribute type into both files.",
     "Put both into one file."},
    {Code::kNoStorage, "NO-STORAGE", Severity::kWarning,
     "The directory has storage definitions, but none for this attribute type.",
     "Add one if the server needs it."},
    {Code::kSharedColumn, "SHARED-COLUMN", Severity::kWarning,
     "Two attribute types are stored in a column of the same name.",
     "Give each a column of its own."},
    {Code::kWrongFile, "WRONG-FILE", Severity::kWarning,
     "A definition stands in a file for definitions of another kind, and is "
     "written there again.",
     "Move it to the file for its kind."},
    {Code::kUndefinedSuperior, "UNDEFINED-SUPERIOR", Severity::kWarning,
     "Nothing in the directory has the name or OID of the superior.",
     "Add the definition, or correct the reference."},
    {Code::kSuperiorCycle, "SUPERIOR-CYCLE", Severity::kWarning,
     "A definition is its own superior, through others or directly.",
     "Break the cycle."},
    {Code::kUndefinedAttribute, "UNDEFINED-ATTRIBUTE", Severity::kWarning,
     "No attribute type in the directory has a name that an object class "
     "requires or allows.",
     "Add the attribute type, or correct the name."},
    {Code::kUnknownSyntax, "UNKNOWN-SYNTAX", Severity::kWarning,
     "The syntax is none of the standard ones.",
     "Make sure that the server has it."},
    {Code::kUnknownRule, "UNKNOWN-RULE", Severity::kWarning,
     "The matching rule is none of the standard ones.",
     "Make sure that the server has it."},
    {Code::kRequiredAndOptional, "REQUIRED-AND-OPTIONAL", Severity::kWarning,
     "An object class requires an attribute and allows it, too.",
     "Take it out of MAY."},
    {Code::kBadOid, "BAD-OID", Severity::kWarning,
     "The OID is not made of numbers and dots as RFC 4512 section 1.4 has it.",
     "Write the numeric OID."},
    {Code::kBadName, "BAD-NAME", Severity::kWarning,
     "A name is not a letter followed by letters, digits and hyphens, as RFC "
     "4512 section 1.4 has it.",
     "Choose another name."},
    {Code::kBadUsage, "BAD-USAGE", Severity::kWarning,
     "USAGE is none of userApplications, directoryOperation, "
     "distributedOperation and dSAOperation.",
     "Write one of these."},
    {Code::kNameOtherOid, "NAME-OTHER-OID", Severity::kError,
     "The release has a definition of this name with another OID, which a "
     "merge would drive out.",
     "Exclude the OID, or rename the definition."},
    {Code::kOidOtherName, "OID-OTHER-NAME", Severity::kError,
     "The release has this OID for another definition, or two definitions to "
     "be carried have it; one of them would not be written.",
     "Exclude the OID, or give the definition another one."},
    {Code::kNotMergeable, "NOT-MERGEABLE", Severity::kError,
     "The release lacks a definition from a config file or from "
     "V3.modifiedschema, or a storage definition whose attribute type it has "
     "already; a merge cannot add such.",
     "Exclude the OID, or move the definition to another file."},
    {Code::kInCopiedFile, "IN-COPIED-FILE", Severity::kError,
     "The release has another form of the definition in a config file, which "
     "is copied unchanged, so that the form of the old installation would be "
     "lost.",
     "Exclude the OID."},
    {Code::kChangedByBoth, "CHANGED-BY-BOTH", Severity::kError,
     "The administrator and the release have both changed what has an OID "
     "since the old release, and the side that has changed it is preferred.",
     "Decide on the OID in the file of decisions."},
    {Code::kPreferenceSplit, "PREFERENCE-SPLIT", Severity::kError,
     "The release's side is preferred, but the release has only a part of what "
     "has the OID, the attribute type without its storage definition for "
     "instance; an OID is carried as a whole or not at all.",
     "Decide on the OID in the file of decisions."},
    {Code::kListUnterminated, "LIST-UNTERMINATED", Severity::kError,
     "A list of OIDs does not end in a newline: the library ignores the last "
     "word, and does not return from a comment there.",
     "End the list with a newline."},
    {Code::kListUnknown, "LIST-UNKNOWN", Severity::kWarning,
     "No definition has an OID of the list.", "Correct it, or take it out."},
    {Code::kListRepeated, "LIST-REPEATED", Severity::kWarning,
     "An OID stands in the list twice.", "Take one out."},
    {Code::kListBadOid, "LIST-BAD-OID", Severity::kWarning,
     "A word of the list is no OID, and no definition has it for one.",
     "Write the OID; begin comments with #."},
}};

constexpr bool isInOrder() {
  for (std::size_t i = 0; i < kCodes; ++i) {
    if (kDescriptions[i].code != static_cast<Code>(i)) {
      return false;
    }
  }
  return true;
}

static_assert(isInOrder(), "one description for each code, in their order");

}  // namespace

const std::array<CodeDescription, kCodes> &allCodes() { return kDescriptions; }

const CodeDescription &describe(Code code) {
  return kDescriptions[static_cast<std::size_t>(code)];
}

}  // namespace schemacheck
