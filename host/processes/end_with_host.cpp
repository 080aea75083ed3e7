// host/processes/end_with_host.cpp: a process of a device ends when its host does.

#include "host/processes/end_with_host.hpp"

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace wispen {

void end_with_host() {
  const char* const host = std::getenv(kHostProcessVariable);
  if (host == nullptr) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  // It may have ended before the kernel was asked.
  if (getppid() != static_cast<pid_t>(std::strtol(host, nullptr, 10))) _exit(0);
}

}  // namespace wispen
