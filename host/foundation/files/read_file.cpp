#include "host/foundation/files/read_file.hpp"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

namespace wispen::files {

namespace {

Error tooLarge(const std::string& path, std::size_t limit) {
  return Error{"cannot read " + path + ": it is larger than " + std::to_string(limit) + " bytes"};
}

Result<Buffer> readAll(const std::string& path, std::size_t limit, const SystemCalls& calls) {
  // O_NONBLOCK: a pipe without a writer would hold the open for ever.
  Descriptor file(openRetrying(calls, AT_FDCWD, path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC), calls);
  if (!file.valid()) return Error{failure("read", path, errno)};

  struct stat status = {};
  if (calls.fstat(file.number(), &status) != 0) return Error{failure("read", path, errno)};
  if (S_ISDIR(status.st_mode)) return Error{failure("read", path, EISDIR)};
  if (!S_ISREG(status.st_mode)) return Error{"cannot read " + path + ": it is not a regular file"};
  const auto expected = static_cast<std::size_t>(status.st_size);
  if (expected > limit) return tooLarge(path, limit);

  // One byte more than expected is asked for: a shorter answer then also says that the end was reached,
  // which saves the read that would return nothing.
  Buffer bytes(expected + 1);
  std::size_t size = 0;
  for (;;) {
    const std::size_t asked = bytes.capacity() - size;
    const ssize_t count = calls.read(file.number(), bytes.data() + size, asked);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return Error{failure("read", path, errno)};
    size += static_cast<std::size_t>(count);
    if (count == 0 || size == expected) break;
    if (size < bytes.capacity()) continue;
    if (size > limit) return tooLarge(path, limit);
    Buffer larger(std::min(limit + 1, size * 2 + 4096));
    std::memcpy(larger.data(), bytes.data(), size);
    bytes = std::move(larger);
  }
  bytes.resize(size);
  return bytes;
}

}  // namespace

Result<Buffer> read(const std::string& path, std::size_t limit, const SystemCalls& calls) {
  try {
    return readAll(path, limit, calls);
  } catch (const std::bad_alloc&) {
    return Error{"out of memory"};
  }
}

}  // namespace wispen::files
