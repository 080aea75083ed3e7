// wispen/run_command.cpp: wispen run: a window on the pages.

#include <cstdio>
#include <cstdlib>

#include "host/wispen_host.h"
#include "wispen/commands.hpp"
#include "wispen/home_screen.hpp"
#include "wispen/output.hpp"
#include "wispen/screen.hpp"

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
  const auto session = Session::start_with_screen(options, what.traits, true);
  if (!session || !show_page(*session, what.page)) return kFailed;
  const auto facts = bundle_facts(options);
  if (!facts) return fail(facts.error().message);
  const std::string& bundle = session->bundle();
  if (wispen_host_follow_files(bundle.c_str()) == 0) return fail(wispen_host_last_error());
  std::printf("The phone's file system is played by %s.\nThe pages follow the files in %s.\n",
              wispen_host_root(), bundle.c_str());
  std::fflush(stdout);
  bool beside = !what.without_home_screen && !facts->companion.empty();
  if (beside) {
    const auto home = start_home_screen(options, what.traits, "");
    if (!home) tell_without_home_screen(home.error().message);
    beside = home.ok();
  }
  std::string languages;
  for (const std::string& one : facts->languages) languages += (languages.empty() ? "" : ",") + one;
  if (wispen_host_run_window_at(facts->name.c_str(), languages.c_str(),
                                beside ? WISPEN_HOST_WINDOW_LEFT : WISPEN_HOST_WINDOW_CENTRE) == 0)
    return fail(wispen_host_last_error());
  print_problems();
  return kDone;
}

}  // namespace

int run(const CommonOptions& options, const RunOptions& what) {
  const auto used = with_installed_bundle(options);
  if (!used) return fail(used.error().message);
  if (what.without_window || !has_display()) return tour(*used, what);
  return open_window(*used, what);
}

}  // namespace wispen::program
