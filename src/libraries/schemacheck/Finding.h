// What a check has to say.
#ifndef SCHEMACHECK_FINDING_H_
#define SCHEMACHECK_FINDING_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "FindingCodes.h"
#include "SourceText.h"

namespace schemacheck {

// One thing that is wrong, or looks wrong, at one place.
struct Finding {
  Code code;
  std::string file;  // the path as the user gave it
  // The place: line and column, from 1, the column in bytes; both are 0 when
  // the finding is about the file or the directory as a whole.
  int line = 0;
  int column = 0;
  // What was expected and what was found; begins in lower case and has no final
  // period.
  std::string message;
  // The line of the file that the place lies in, without its end; of a long one
  // the part around the place, with "..." for what is left out.
  std::string sourceLine;
  std::size_t caret = 0;  // where in it the place is

  Severity severity() const { return describe(code).severity; }
};

// A finding at `offset` of a file, or one about a file as a whole. A very long
// message is cut.
Finding findingAt(Code code, const SourceText &text, std::size_t offset,
                  std::string message);
Finding findingOn(Code code, std::string file, std::string message);

// "'text'", in a message.
std::string inQuotes(std::string_view text);

// The finding for the user, each line with its end:
//
//   FILE:LINE:COL: error: [CODE] message
//   the source line, tabs expanded to eight columns
//        ^
//
// A finding without a place is the first line, with the file alone before it.
// There is no caret below a line with bytes outside ASCII, whose width is not
// known. Control characters are shown as '?'.
std::string toText(const Finding &finding);

// Sorts by place, files in the order in which they are read; findings on a
// directory or a file as a whole come before those on its lines. Removes what
// is said twice.
void sortFindings(std::vector<Finding> *findings);

}  // namespace schemacheck

#endif  // SCHEMACHECK_FINDING_H_
