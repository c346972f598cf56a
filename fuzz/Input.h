// Several files in one input.
#ifndef FUZZ_INPUT_H_
#define FUZZ_INPUT_H_

#include <map>
#include <string>
#include <string_view>

// A line that begins with "%" and one of these letters begins a file, which
// goes up to the next such line; the rest of the line is for people:
//
//   %a to %i    the nine files of the old directory, in the order of reading
//   %A to %I    those of the new one
//   %x          the list of excluded OIDs
//   %y          that of modified ones
//   %o          options: digits, on the same line
//
// What stands before the first such line is V3.user.at of the old directory.
struct Input {
  explicit Input(std::string_view text);

  std::map<std::string, std::string> oldFiles;
  std::map<std::string, std::string> newFiles;
  std::string excludedOids;
  std::string modifiedOids;
  std::string options;

 private:
  void begin(char letter, std::string_view line, std::string **file);
};

#endif  // FUZZ_INPUT_H_
