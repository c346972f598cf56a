// Access lists as the system keeps them, in extended attributes.
#ifndef TESTS_MIGRATE_ACCESSLISTTESTING_H_
#define TESTS_MIGRATE_ACCESSLISTTESTING_H_

#include <sys/xattr.h>

#include <filesystem>
#include <string>

constexpr char kAccess[] = "system.posix_acl_access";
// What is made in a directory with it gets the same list.
constexpr char kDefault[] = "system.posix_acl_default";

// User 3000 may read, besides what the mode 0640 says.
inline const std::string kAccessList =
    std::string("\2\0\0\0", 4) + std::string("\x01\0\6\0\xff\xff\xff\xff", 8) +
    std::string("\x02\0\4\0\xb8\x0b\0\0", 8) +
    std::string("\x04\0\4\0\xff\xff\xff\xff", 8) +
    std::string("\x10\0\4\0\xff\xff\xff\xff", 8) +
    std::string("\x20\0\0\0\xff\xff\xff\xff", 8);

// False where the file system knows no access lists.
inline bool setAccessList(const std::filesystem::path &path,
                          const char *which) {
  return setxattr(path.c_str(), which, kAccessList.data(), kAccessList.size(),
                  0) == 0;
}

#endif  // TESTS_MIGRATE_ACCESSLISTTESTING_H_
