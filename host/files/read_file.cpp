#include "host/files/read_file.hpp"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

namespace wispen::files {

namespace {

constexpr int kNotRegular = EINVAL;

std::string sentence(const std::string& path, std::size_t limit, int error_number) {
  if (error_number == EFBIG) {
    return "cannot read " + path + ": it is larger than " + std::to_string(limit) + " bytes";
  }
  if (error_number == kNotRegular) return "cannot read " + path + ": it is not a regular file";
  return failure("read", path, error_number);
}

/// 0, or the kernel's number for what went wrong.
int read_all(const std::string& path, std::size_t limit, const SystemCalls& calls, Buffer& bytes) {
  // O_NONBLOCK: a pipe without a writer would hold the open for ever.
  const Descriptor file(open_retrying(calls, AT_FDCWD, path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC),
                        calls);
  if (!file.valid()) return errno;

  struct stat status = {};
  if (calls.fstat(file.number(), &status) != 0) return errno;
  if (S_ISDIR(status.st_mode)) return EISDIR;
  if (!S_ISREG(status.st_mode)) return kNotRegular;
  const auto expected = static_cast<std::size_t>(status.st_size);
  if (expected > limit) return EFBIG;

  // One byte more than expected is asked for: a shorter answer then also says that the end was reached,
  // which saves the read that would return nothing.
  bytes = Buffer(expected + 1);
  std::size_t size = 0;
  for (;;) {
    const ssize_t count = calls.read(file.number(), bytes.data() + size, bytes.capacity() - size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    size += static_cast<std::size_t>(count);
    if (count == 0 || size == expected) break;
    if (size < bytes.capacity()) continue;
    if (size > limit) return EFBIG;
    Buffer larger(std::min(limit + 1, size * 2 + 4096));
    std::memcpy(larger.data(), bytes.data(), size);
    bytes = std::move(larger);
  }
  bytes.resize(size);
  return 0;
}

}  // namespace

Result<Buffer> read(const std::string& path, std::size_t limit, const SystemCalls& calls, int* error_number) {
  int unused = 0;
  int& error = error_number != nullptr ? *error_number : unused;
  error = ENOMEM;
  try {
    Buffer bytes;
    error = read_all(path, limit, calls, bytes);
    if (error == 0) return bytes;
    return Error{sentence(path, limit, error)};
  } catch (const std::bad_alloc&) {
    error = ENOMEM;
    return Error{"out of memory"};
  }
}

}  // namespace wispen::files
