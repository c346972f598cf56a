// What the command says when a system call of apply fails.
#ifndef TESTS_MIGRATE_FAULTMESSAGES_H_
#define TESTS_MIGRATE_FAULTMESSAGES_H_

#include <map>
#include <regex>
#include <set>
#include <string>
#include <utility>

// A message without its newline, with one word for all files, definitions and
// reasons of a kind: INPUT is a file that is read, MADE one of those that the
// library writes, WRITTEN its copy in the new directory, CARRIED what comes
// from the former one, COMPLETE the new directory before it has its name.
inline std::string kindOfMessage(std::string message) {
  static const std::pair<std::regex, const char *> kKinds[] = {
      {std::regex("\n$"), ""},
      {std::regex("Input/output error|No space left on device|Disk quota "
                  "exceeded"),
       "REASON"},
      {std::regex("(attribute type '[abc]'|object class 'top') \\([0-9.]+\\)"),
       "DEFINITION"},
      {std::regex(" \\(and [0-9] more\\)"), ""},
      {std::regex("(old|new)/V3\\.[a-z]+(\\.(at|oc))?(:[0-9])?"), "INPUT"},
      {std::regex("out/schema-migrate\\.tmp/V3\\.[a-z]+(\\.(at|oc))?"), "MADE"},
      {std::regex("out/(V3\\.[a-z]+(\\.(at|oc))?|schema-migrate\\.manifest)"),
       "WRITTEN"},
      {std::regex("out/(more/link|more|notes)"), "CARRIED"},
      {std::regex("out\\.backup-[0-9]{8}-[0-9]{6}"), "BACKUP"},
      {std::regex("\\.out\\.partial-complete-[0-9]+"), "COMPLETE"},
  };
  for (const auto &[pattern, kind] : kKinds) {
    message = std::regex_replace(message, pattern, kind);
  }
  return message;
}

// All kinds of messages when single ones of a call fail, each one line.
inline std::set<std::string> messagesOf(const std::string &call) {
  constexpr char kNothing[] =
      "; nothing was written, since the files do not read back as they should; "
      "is there room on the disk?";
  constexpr char kBackupNotSynced[] =
      "; out is replaced; what was there is in BACKUP, which may not be on "
      "disk yet";
  constexpr char kNoBackupYet[] =
      "; out is replaced; what was there is in COMPLETE, which the next run "
      "makes a backup";
  using Messages = std::set<std::string>;
  static const Messages kOfSyncing = {
      "CARRIED: error: cannot write to disk: REASON",
      "ROOT: error: cannot write to disk: REASON",
      std::string("ROOT: error: cannot write to disk: REASON") +
          kBackupNotSynced,
      "WRITTEN: error: cannot write to disk: REASON",
      "out: error: cannot write to disk: REASON"};
  static const Messages kOfListing = {
      "CARRIED: error: cannot read the directory: REASON",
      "ROOT: error: cannot read the directory: REASON",
      std::string("ROOT: error: cannot read the directory: REASON") +
          kNoBackupYet,
      "new: error: [NOT-A-DIRECTORY] expected a directory that can be read, "
      "found: REASON",
      "old: error: [NOT-A-DIRECTORY] expected a directory that can be read, "
      "found: REASON",
      "out/schema-migrate.tmp: error: cannot read the directory: REASON",
      "out/schema-migrate.tmp: error: cannot remove: REASON",
      "out: error: cannot read the directory: REASON",
      std::string("out: error: cannot read the file back") + kNothing};
  const auto listingAnd = [](Messages others) {
    others.insert(kOfListing.begin(), kOfListing.end());
    return others;
  };
  static const std::map<std::string, Messages> kMessages = {
      {"chmod",
       {"CARRIED: error: cannot keep the mode: REASON",
        "WRITTEN: error: cannot keep the mode: REASON",
        "out: error: cannot keep the mode: REASON"}},
      {"close", kOfSyncing},
      {"fchmod",
       {"CARRIED: error: cannot set the mode: REASON",
        "WRITTEN: error: cannot set the mode: REASON"}},
      {"flock", {"out: error: cannot lock a file beside it: REASON"}},
      {"fsync", kOfSyncing},
      {"getdents64", kOfListing},
      {"lchown", {"CARRIED: error: cannot keep the owner and group: REASON"}},
      {"mkdir",
       {".out.partial-new/schema-migrate.tmp: error: cannot create the "
        "directory: REASON",
        ".out.partial-new: error: cannot create the directory: REASON",
        "CARRIED: error: cannot create the directory: REASON"}},
      {"newfstatat",
       listingAnd(
           {".out.partial-lock: error: cannot look at it: REASON",
            ".out.partial-new/schema-migrate.tmp: error: cannot look at it: "
            "REASON",
            "CARRIED: error: cannot copy: REASON",
            "CARRIED: error: cannot look at it: REASON",
            "INPUT: error: [UNREADABLE-FILE] expected a file that can be read, "
            "found: No such file or directory",
            "INPUT: error: [UNREADABLE-FILE] expected a file that can be read, "
            "found: REASON",
            "INPUT: error: cannot look at it: REASON",
            "INPUT: error: was changed while the migration ran; run it again "
            "when "
            "nothing changes the file",
            "MADE: error: cannot look at it: REASON",
            "ROOT: error: cannot look at it: REASON",
            std::string("ROOT: error: cannot look at it: REASON") +
                kBackupNotSynced,
            "WRITTEN: error: cannot look at it: REASON",
            std::string("WRITTEN: error: cannot read the file back") + kNothing,
            "out/schema-migrate.tmp: error: cannot look at it: REASON",
            "out: error: REASON",
            "out: error: cannot lock a file beside it: REASON",
            "out: error: cannot look at it: REASON"})},
      {"openat",
       listingAnd(
           {"CARRIED: error: cannot open: REASON",
            "INPUT: error: [UNREADABLE-FILE] expected a file that can be read, "
            "found: REASON",
            "INPUT: error: cannot open: REASON",
            "INPUT: error: cannot read the file; was it changed just now?",
            "INPUT: error: was changed while the migration ran; run it again "
            "when "
            "nothing changes the file",
            "MADE: error: cannot open the file for writing",
            "MADE: error: cannot open: REASON",
            "MADE: error: cannot remove: REASON",
            "ROOT: error: cannot open: REASON",
            std::string("ROOT: error: cannot open: REASON") + kBackupNotSynced,
            "WRITTEN: error: cannot open: REASON",
            std::string("WRITTEN: error: cannot read the file back") + kNothing,
            "out: error: cannot make a file beside it: REASON",
            "out: error: cannot open: REASON"})},
      {"read",
       {"CARRIED: error: cannot read: REASON",
        std::string(
            "INPUT: error: DEFINITION is not in the result as it stands here") +
            kNothing,
        "INPUT: error: [UNREADABLE-FILE] expected a file that can be read, "
        "found: REASON",
        "INPUT: error: cannot read the file; was it changed just now?",
        "INPUT: error: cannot read: REASON",
        "INPUT: error: was changed while the migration ran; run it again when "
        "nothing changes the file",
        "MADE: error: cannot read: REASON",
        std::string("WRITTEN: error: cannot read the file back") + kNothing,
        "WRITTEN: error: cannot read: REASON"}},
      {"readlink",
       {"CARRIED: error: cannot copy: REASON", "out: error: REASON"}},
      {"removexattr",
       {"CARRIED: error: cannot remove the access list: REASON",
        "WRITTEN: error: cannot remove the access list: REASON",
        "out: error: cannot remove the access list: REASON"}},
      {"renameat2",
       {std::string("BACKUP: error: cannot create the directory: REASON") +
            kNoBackupYet,
        "COMPLETE: error: cannot create the directory: REASON",
        "out: error: cannot replace the directory: REASON"}},
      {"rmdir", {"out/schema-migrate.tmp: error: cannot remove: REASON"}},
      {"setxattr",
       {"CARRIED: error: cannot keep the extended attribute user.origin: "
        "REASON"}},
      {"statx", {"out: error: cannot look at it: REASON"}},
      {"symlink", {"CARRIED: error: cannot copy: REASON"}},
      {"unlink",
       {"MADE: error: cannot remove: REASON",
        "out/schema-migrate.tmp: error: cannot remove: REASON"}},
      {"utimensat",
       {"CARRIED: error: cannot keep the time of modification: REASON"}},
      {"write",
       {"CARRIED: error: cannot write: REASON",
        std::string(
            "INPUT: error: DEFINITION is not in the result as it stands here") +
            kNothing,
        "WRITTEN: error: cannot write: REASON",
        "error: cannot write to standard output; the result is complete in "
        "out"}},
      {"writev",
       {std::string(
            "INPUT: error: DEFINITION is not in the result as it stands here") +
        kNothing}},
  };
  const auto found = kMessages.find(call);
  return found == kMessages.end() ? Messages() : found->second;
}

#endif  // TESTS_MIGRATE_FAULTMESSAGES_H_
