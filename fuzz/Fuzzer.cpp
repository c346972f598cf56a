// Lets the fuzzer run the target FUZZ_TARGET.
#include <cstddef>
#include <cstdint>

#include "Targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data,
                                      std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data,
                                      std::size_t size) {
  FUZZ_TARGET({reinterpret_cast<const char *>(data), size});
  return 0;
}
