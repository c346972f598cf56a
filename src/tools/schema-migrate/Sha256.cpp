#include "Sha256.h"

#include <openssl/evp.h>

#include <cerrno>
#include <cstddef>
#include <fstream>
#include <memory>

#include "Disk.h"
#include "Trouble.h"

namespace {

struct Free {
  void operator()(EVP_MD_CTX *context) const { EVP_MD_CTX_free(context); }
};

}  // namespace

std::string sha256Of(const std::filesystem::path &path) {
  errno = 0;
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    failAt(path, "cannot open");
  }
  const std::unique_ptr<EVP_MD_CTX, Free> context(EVP_MD_CTX_new());
  bool good = context != nullptr &&
              EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) == 1;
  char buffer[1 << 16];
  while (good && in.good()) {
    in.read(buffer, sizeof buffer);
    good = EVP_DigestUpdate(context.get(), buffer,
                            static_cast<std::size_t>(in.gcount())) == 1;
  }
  if (good && !in.eof()) {
    failAt(path, "cannot read");
  }
  unsigned char sum[EVP_MAX_MD_SIZE];
  unsigned int length = 0;
  if (!good || EVP_DigestFinal_ex(context.get(), sum, &length) != 1) {
    throw Trouble(kFileError,
                  errorAt(path, 0, "cannot compute the SHA-256 sum"));
  }
  std::string text;
  for (unsigned int i = 0; i < length; ++i) {
    constexpr char kDigits[] = "0123456789abcdef";
    text += kDigits[sum[i] >> 4U];
    text += kDigits[sum[i] & 0xFU];
  }
  return text;
}
