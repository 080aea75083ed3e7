// wispen/run_command.cpp: wispen run: a window on the pages.

#include <cstdio>
#include <cstdlib>

#include "host/core/device_root.hpp"
#include "host/wispen_host.h"
#include "wispen/commands.hpp"
#include "wispen/home_screen.hpp"
#include "wispen/output.hpp"
#include "wispen/package/installer.hpp"
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

/// Installs the desktop's package beside the program into the device root, where it is newer than what is
/// there, and gives the bundle as it was installed. Without such a package nothing changes.
Result<CommonOptions> with_installed_bundle(CommonOptions options) {
  const std::string folder = options.root.empty() ? wispen_host_default_root() : options.root;
  auto root = DeviceRoot::open(folder, layout_from_name(options.layout));
  if (!root) return root.error();
  const auto package = package::desktop_package(program_folder() + "/packages", root->layout());
  if (!package) return options;
  const auto installed = package::install_when_newer(*root, *package);
  if (!installed) return installed.error();
  if (*installed) std::printf("Installed %s.\n", package->c_str());
  options.bundle = root->resolve_or_nowhere(std::string(root->device_jbroot()) +
                                            "/Library/PreferenceBundles/3dvitrelleprefs.bundle");
  return options;
}

int open_window(const CommonOptions& options, const RunOptions& what) {
  const objc::AutoreleasePool pool;
  const auto session = Session::start_with_screen(options, what.look, true);
  if (!session || !show_page(*session, what.page)) return kFailed;
  const std::string bundle = bundle_folder(options);
  if (wispen_host_follow_files(bundle.c_str()) == 0) return fail(wispen_host_last_error());
  std::printf("The phone's file system is played by %s.\nThe pages follow the files in %s.\n",
              wispen_host_root(), bundle.c_str());
  std::fflush(stdout);
  bool beside = !what.without_home_screen;
  if (beside) {
    const auto home = start_home_screen(options, what.look, "");
    if (!home) tell_without_home_screen(home.error().message);
    beside = home.ok();
  }
  if (wispen_host_run_window_at("Wispen", "en,de",
                                beside ? WISPEN_HOST_WINDOW_LEFT : WISPEN_HOST_WINDOW_CENTRE) == 0)
    return fail(wispen_host_last_error());
  print_problems();
  return kDone;
}

}  // namespace

int run(const CommonOptions& options, const RunOptions& what) {
  // Whoever names a bundle is writing it, and wants that one.
  const auto used = options.bundle.empty() ? with_installed_bundle(options) : Result<CommonOptions>(options);
  if (!used) return fail(used.error().message);
  if (what.without_window || !has_display()) return tour(*used, what);
  return open_window(*used, what);
}

}  // namespace wispen::program
