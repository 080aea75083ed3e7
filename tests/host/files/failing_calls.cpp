#include "tests/host/files/failing_calls.hpp"

#include <algorithm>
#include <cerrno>

namespace wispen::files::testing {

namespace {

/// Whether this call is the one that fails.
bool strikes(const char* name) {
  Plan& current = plan();
  current.log.emplace_back(name);
  if (!current.only.empty() && current.only != name) return false;
  ++current.calls;
  if (current.fail_at == 0 || current.calls < current.fail_at) return false;
  if (current.calls > current.fail_at && !current.keeps_failing) return false;
  errno = current.error_number;
  return true;
}

const SystemCalls& real() { return SystemCalls::real(); }

int failing_open(int folder, const char* path, int flags, mode_t mode) {
  if (strikes("openat") && errno != 0) return -1;
  const int file = real().openat(folder, path, flags, mode);
  if (file >= 0) ++plan().open_files;
  return file;
}

int failing_close(int file) {
  const bool failed = strikes("close") && errno != 0;
  const int error_number = errno;
  real().close(file);  // even a close that reports an error has closed
  --plan().open_files;
  errno = error_number;
  return failed ? -1 : 0;
}

ssize_t failing_read(int file, void* bytes, std::size_t count) {
  const bool failed = strikes("read");
  if (failed && errno != 0) return -1;
  return real().read(file, bytes, failed ? std::min<std::size_t>(count, 1) : count);
}

ssize_t failing_write(int file, const void* bytes, std::size_t count) {
  const bool failed = strikes("write");
  if (failed && errno != 0) return -1;
  return real().write(file, bytes, failed ? std::min<std::size_t>(count, 1) : count);
}

}  // namespace

Plan& plan() {
  static Plan current;
  return current;
}

const SystemCalls& failing_calls() {
  static constexpr SystemCalls calls = {
      .openat = failing_open,
      .fstat =
          [](int file, struct stat* status) {
            return strikes("fstat") && errno != 0 ? -1 : real().fstat(file, status);
          },
      .fstatat =
          [](int folder, const char* path, struct stat* status, int flags) {
            return strikes("fstatat") && errno != 0 ? -1 : real().fstatat(folder, path, status, flags);
          },
      .readlinkat = [](int folder, const char* path, char* target, std::size_t capacity) -> ssize_t {
        return strikes("readlinkat") && errno != 0 ? -1 : real().readlinkat(folder, path, target, capacity);
      },
      .read = failing_read,
      .write = failing_write,
      .fchown =
          [](int file, uid_t owner, gid_t group) {
            return strikes("fchown") && errno != 0 ? -1 : real().fchown(file, owner, group);
          },
      .fchmod = [](int file,
                   mode_t mode) { return strikes("fchmod") && errno != 0 ? -1 : real().fchmod(file, mode); },
      .fsync = [](int file) { return strikes("fsync") && errno != 0 ? -1 : real().fsync(file); },
      .renameat =
          [](int from_folder, const char* from, int to_folder, const char* to) {
            return strikes("renameat") && errno != 0 ? -1 : real().renameat(from_folder, from, to_folder, to);
          },
      .unlinkat =
          [](int folder, const char* path, int flags) {
            return strikes("unlinkat") && errno != 0 ? -1 : real().unlinkat(folder, path, flags);
          },
      .close = failing_close,
  };
  return calls;
}

}  // namespace wispen::files::testing
