// The command check, while what it asks of a file fails.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "FaultTesting.h"

namespace {

class CheckFaultTest : public FaultTest {
 protected:
  // What check prints of a file with the n-th question after its state failing;
  // "as ever" if that is nothing.
  std::string foundWithFault(int n) const {
    const std::string directory = std::filesystem::canonical(path("old"));
    const std::string file = directory + "/V3.user.at";
    const CommandResult result = run({"check", directory}, [&] {
      execTracer({"-o", "/dev/null", "-P", file, "-e", "trace=newfstatat", "-e",
                  "inject=newfstatat:error=EIO:when=" + std::to_string(n)},
                 {"check", directory});
    });
    EXPECT_EQ(result.error, "");
    const bool isSound = result.out == "0 errors, 0 warnings\n";
    EXPECT_EQ(result.status, isSound ? kDone : kFileError);
    return isSound ? "as ever" : result.out;
  }
};

// It is asked four times: whether there is such a name, what kind of file it
// is, what kind without following a link, and the size. Only a file whose kind
// is not known is not read.
TEST_F(CheckFaultTest, AFileOfUnknownSizeIsRead) {
  std::vector<std::string> found;
  for (int n = 1; n <= 5; ++n) {
    found.push_back(foundWithFault(n));
  }
  EXPECT_EQ(found, (std::vector<std::string>{
                       "as ever",
                       "old/V3.user.at: error: [UNREADABLE-FILE] expected a "
                       "file that can be read, found: Input/output error\n"
                       "1 error, 0 warnings\n",
                       "as ever", "as ever", "as ever"}));
}

}  // namespace
