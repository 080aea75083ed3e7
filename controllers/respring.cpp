// controllers/respring.cpp: restarting the home screen.

#include "bundle/facts/facts.hpp"
#include "controllers/WispBaseController.hpp"
#include "platform/System.h"

namespace wispen {

namespace {

/// Starts `killall name`, without environment; 0 where it cannot be started.
platform_pid_t start_killall(const char* path, const char* name) {
  char program[] = "killall";
  char* const arguments[] = {program, const_cast<char*>(name), nullptr};
  platform_pid_t process = 0;
  const int failed = platform_posix_spawn(&process, path, nullptr, nullptr, arguments, nullptr);
  return failed == 0 ? process : 0;
}

}  // namespace

// Not asked where the jailbreak is: both are tried, each with its own target, and one of them is not there.
// Only the first is waited for.
void WispBaseController::respring() const {
  const platform_pid_t first = start_killall("/usr/bin/killall", facts::kCompanion);
  int status = 0;
  if (first > 0) platform_waitpid(first, &status, PLATFORM_WEXITED);
  start_killall("/var/jb/usr/bin/killall", "backboardd");
}

}  // namespace wispen
