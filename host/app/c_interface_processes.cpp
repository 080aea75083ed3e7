// host/app/c_interface_processes.cpp: the C interface's processes of the device.

#include <string>
#include <utility>

#include "host/app/c_interface.hpp"
#include "host/foundation/problems.hpp"
#include "host/wispen_host.h"

using namespace wispen;

extern "C" {

[[gnu::visibility("default")]] int wispen_host_start_processes(const char* programs,
                                                               const char* const* home_screen_arguments,
                                                               wispen_host_process_listener listener,
                                                               void* context) {
  if (!c_interface::is_running()) return 0;
  DeviceProcesses::Options options;
  if (programs != nullptr) options.programs = programs;
  for (const char* const* word = home_screen_arguments; word != nullptr && *word != nullptr; ++word) {
    options.home_screen_arguments.emplace_back(*word);
  }
  options.lost = [listener, context](const std::string& why) {
    report_problem(why);
    if (listener == nullptr) return;
    try {
      listener(why.c_str(), context);
    } catch (...) {
      c_interface::listener_raised();
    }
  };
  return c_interface::done_or_failed(c_interface::running_host()->start_processes(std::move(options)));
}

[[gnu::visibility("default")]] int wispen_host_process(const char* name) {
  if (!c_interface::is_running() || name == nullptr) return 0;
  const DeviceProcesses* const processes = c_interface::running_host()->processes();
  const auto living = processes != nullptr ? processes->processes(name) : std::vector<pid_t>();
  return living.empty() ? 0 : living.front();
}

}  // extern "C"
