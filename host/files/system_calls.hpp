// host/files/system_calls.hpp: the kernel's file calls as a table that a test can replace.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <string>

namespace wispen::files {

/// The calls that reading and replacing a file make. Each follows the convention of its namesake in the C
/// library: a negative result means failure and sets errno. Tests pass a table whose calls fail on purpose.
struct SystemCalls {
  int (*openat)(int folder, const char* path, int flags, mode_t mode);
  int (*fstat)(int file, struct stat* status);
  int (*fstatat)(int folder, const char* path, struct stat* status, int flags);
  ssize_t (*readlinkat)(int folder, const char* path, char* target, std::size_t capacity);
  ssize_t (*read)(int file, void* bytes, std::size_t count);
  ssize_t (*write)(int file, const void* bytes, std::size_t count);
  int (*fchown)(int file, uid_t owner, gid_t group);
  int (*fchmod)(int file, mode_t mode);
  int (*fsync)(int file);
  int (*renameat)(int from_folder, const char* from, int to_folder, const char* to);
  int (*unlinkat)(int folder, const char* path, int flags);
  int (*close)(int file);

  /// The kernel's own.
  static const SystemCalls& real();
};

/// A descriptor that is closed, through the table it came from, when it goes out of scope.
class Descriptor {
 public:
  Descriptor(int number, const SystemCalls& calls) : number_(number), calls_(&calls) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.release()), calls_(other.calls_) {}
  Descriptor& operator=(Descriptor&& other) noexcept;
  ~Descriptor();

  int number() const { return number_; }
  bool valid() const { return number_ >= 0; }
  /// Hands the descriptor over; it is no longer closed here.
  int release();
  /// Closes now; false (with errno) when the kernel reports that something written was lost.
  bool close();

 private:
  int number_;
  const SystemCalls* calls_;
};

/// openat, tried again for as long as a signal interrupts it.
int open_retrying(const SystemCalls& calls, int folder, const char* path, int flags, mode_t mode = 0);

/// "cannot <verb> <path>: <what errno means>"
std::string failure(const char* verb, const std::string& path, int error_number);

}  // namespace wispen::files
