// host/core/unique_fd.cpp: a file descriptor that closes itself.

#include "host/core/unique_fd.hpp"

#include <unistd.h>

#include <cerrno>

namespace wispen {

void UniqueFd::reset(int fd) {
  if (fd_ >= 0) {
    const int saved = errno;
    close(fd_);
    errno = saved;
  }
  fd_ = fd;
}

}  // namespace wispen
