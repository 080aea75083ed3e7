// host/program/run_command.cpp: wispen run: a window on the pages.

#include <cstdio>
#include <cstdlib>

#include "host/program/commands.hpp"
#include "host/program/output.hpp"
#include "host/program/screen.hpp"
#include "host/wispen_host.h"

namespace wispen::program {

namespace {

bool has_display() {
  const auto set = [](const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0';
  };
  return set("DISPLAY") || set("WAYLAND_DISPLAY");
}

int open_window(const CommonOptions& options, const RunOptions& what) {
  const objc::AutoreleasePool pool;
  const auto session = Session::start_with_screen(options, what.look, true);
  if (!session || !show_page(*session, what.page)) return kFailed;
  const std::string bundle = bundle_folder(options);
  if (wispen_host_follow_files(bundle.c_str()) == 0) return fail(wispen_host_last_error());
  std::printf("The phone's file system is played by %s.\nThe pages follow the files in %s.\n", wispen_host_root(),
              bundle.c_str());
  std::fflush(stdout);
  if (wispen_host_run_window("Wispen", "en,de") == 0) return fail(wispen_host_last_error());
  print_problems();
  return kDone;
}

}  // namespace

int run(const CommonOptions& options, const RunOptions& what) {
  if (what.without_window || !has_display()) return tour(options, what);
  return open_window(options, what);
}

}  // namespace wispen::program
