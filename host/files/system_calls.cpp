#include "host/files/system_calls.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

namespace wispen::files {

const SystemCalls& SystemCalls::real() {
  static constexpr SystemCalls calls = {
      .openat = [](int folder, const char* path, int flags,
                   mode_t mode) { return ::openat(folder, path, flags, mode); },
      .fstat = ::fstat,
      .fstatat = ::fstatat,
      .readlinkat = ::readlinkat,
      .read = ::read,
      .write = ::write,
      .fchown = ::fchown,
      .fchmod = ::fchmod,
      .fsync = ::fsync,
      .renameat = ::renameat,
      .unlinkat = ::unlinkat,
      .close = ::close,
  };
  return calls;
}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  if (this != &other) {
    close();
    number_ = other.release();
    calls_ = other.calls_;
  }
  return *this;
}

Descriptor::~Descriptor() { close(); }

int Descriptor::release() { return std::exchange(number_, -1); }

bool Descriptor::close() {
  const int number = release();
  // After EINTR the kernel has closed the descriptor all the same; closing it again could hit another
  // thread's new file.
  return number < 0 || calls_->close(number) == 0 || errno == EINTR;
}

int open_retrying(const SystemCalls& calls, int folder, const char* path, int flags, mode_t mode) {
  int file = -1;
  do {
    file = calls.openat(folder, path, flags, mode);
  } while (file < 0 && errno == EINTR);
  return file;
}

std::string failure(const char* verb, const std::string& path, int error_number) {
  return "cannot " + std::string(verb) + " " + path + ": " + std::generic_category().message(error_number);
}

}  // namespace wispen::files
