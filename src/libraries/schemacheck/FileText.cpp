#include "FileText.h"

#include <cerrno>
#include <fstream>
#include <string>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace schemacheck {

namespace {

std::string kindOf(fs::file_type type) {
  switch (type) {
    case fs::file_type::not_found:
      return "a link that leads nowhere";
    case fs::file_type::directory:
      return "a directory";
    default:
      return "something else";
  }
}

// The bytes of the file, but no more than one above the limit; nothing when it
// cannot be read.
std::optional<std::string> readBytes(const fs::path &path, std::uintmax_t size,
                                     std::uintmax_t sizeLimit) {
  std::ifstream in(path, std::ios::binary);
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(size));
  char buffer[1 << 16];
  while (in.good() && bytes.size() <= sizeLimit) {
    in.read(buffer, sizeof buffer);
    bytes.append(buffer, static_cast<std::size_t>(in.gcount()));
  }
  return in.good() || in.eof() ? std::optional(std::move(bytes)) : std::nullopt;
}

}  // namespace

std::optional<SourceText> readFileText(const fs::path &path,
                                       std::uintmax_t sizeLimit,
                                       std::vector<Finding> *findings) {
  const auto refuse = [&path, findings](Code code, const std::string &message) {
    findings->push_back(findingOn(code, path.string(), message));
    return std::nullopt;
  };
  std::error_code error;
  std::error_code ignored;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::none ||
      fs::symlink_status(path, ignored).type() == fs::file_type::not_found) {
    return refuse(
        Code::kUnreadableFile,
        "expected a file that can be read, found: " + error.message());
  }
  if (!fs::is_regular_file(status)) {
    return refuse(Code::kNotAFile,
                  "expected a regular file, found " + kindOf(status.type()));
  }
  const std::uintmax_t size = fs::file_size(path, error);
  if (!error && size > sizeLimit) {
    return refuse(Code::kLargeFile,
                  "expected at most " + std::to_string(sizeLimit) +
                      " bytes, found " + std::to_string(size));
  }
  errno = 0;
  std::optional<std::string> bytes =
      readBytes(path, error ? 0 : size, sizeLimit);
  if (!bytes) {
    return refuse(Code::kUnreadableFile,
                  "expected a file that can be read, found: " +
                      std::generic_category().message(errno));
  }
  if (!error && bytes->size() < size) {  // it shrinks
    return refuse(Code::kUnreadableFile,
                  "expected " + std::to_string(size) + " bytes, found " +
                      std::to_string(bytes->size()) +
                      "; was the file changed just now?");
  }
  if (bytes->size() > sizeLimit) {  // it grows
    return refuse(
        Code::kLargeFile,
        "expected at most " + std::to_string(sizeLimit) + " bytes, found more");
  }
  SourceText text(path.string(), std::move(*bytes));
  const std::size_t zero = text.bytes().find('\0');
  if (zero != std::string::npos) {
    findings->push_back(findingAt(Code::kBinaryFile, text, zero,
                                  "expected text, found a zero byte; the file "
                                  "is not checked"));
    return std::nullopt;
  }
  return text;
}

}  // namespace schemacheck
