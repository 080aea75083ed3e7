// home_screen/main.cpp: SpringBoard: the other end of the preference domain.
//
// It reads the whole file at its start and at every notification, and shows what came of it: in a window, or
// without a display in a picture.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <string>
#include <string_view>

#include "home_screen/screen.hpp"
#include "host/processes/end_with_host.hpp"
#include "host/processes/stand_in_mark.hpp"
#include "host/wispen_host.h"
#include "platform/CoreFoundation.hpp"

namespace {

using namespace wispen::home_screen;

constexpr char kDomainFile[] = "/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist";
constexpr char kChanged[] = "com.m0rrow5.vitrelle3dtouch/prefschanged";
constexpr char kBundle[] = "/Library/PreferenceBundles/3dvitrelleprefs.bundle";
// Whoever needs a picture that is surely up to date posts the first, and hears the second once. The second is
// heard unasked when the first picture is there.
constexpr char kPaint[] = "wispen.home-screen.paint";
constexpr char kPainted[] = "wispen.home-screen.painted";

struct Options {
  std::string root;
  std::string bundle;   // empty: the installed one
  std::string picture;  // empty: a window
  double scale = 0;     // 0: the device's
  bool once = false;
  std::string appearance;
  std::string device;
  std::string orientation;
};

int fail(const std::string& why) {
  std::fprintf(stderr, "SpringBoard: %s\n", why.c_str());
  return 1;
}

struct HomeScreen {
  const Options& options;
  Screen screen;

  bool refresh(bool animated) const {
    const objc::AutoreleasePool pool;
    const char* const file = wispen_host_jailbreak_path(kDomainFile);
    if (file == nullptr) return false;
    screen.show(read_settings(NSDictionary::dictionaryWithContentsOfFile(NSString(file))), animated);
    return options.picture.empty() || wispen_host_snapshot(options.picture.c_str(), options.scale, 0) != 0;
  }
};

void tell_painted() {
  const objc::AutoreleasePool pool;
  CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(), NSString(kPainted),
                                       nullptr, NSDictionary(), true);
}

void changed(const char* name, unsigned long long, void* context) {
  const auto* const home = static_cast<HomeScreen*>(context);
  const bool asked = std::string_view(name) == kPaint;
  if (!home->refresh(home->options.picture.empty())) fail(wispen_host_last_error());
  if (asked) tell_painted();
}

bool start(const Options& options) {
  wispen_host_options host{};
  host.size = sizeof host;
  host.root = options.root.c_str();
  host.wall_clock = 1;
  host.own_windows = 1;
  if (wispen_host_start(&host) == 0) return false;
  const std::pair<const char*, const std::string*> looks[] = {{"appearance", &options.appearance},
                                                              {"device", &options.device},
                                                              {"orientation", &options.orientation}};
  for (const auto& [name, value] : looks) {
    // The home screen of a phone does not turn with it.
    if (std::string_view(name) == "orientation" && !options.device.starts_with("pad")) continue;
    if (!value->empty() && wispen_host_set_look(name, value->c_str()) == 0) return false;
  }
  return true;
}

/// The colours of icons come from the bundle; the screen is plain where there is none.
void load_bundle(const Options& options) {
  const char* const installed = wispen_host_jailbreak_path(kBundle);
  const std::string bundle = options.bundle.empty() && installed != nullptr ? installed : options.bundle;
  if (wispen_host_load_bundle(bundle.c_str()) == nullptr) {
    fail(std::string("everything stays plain, for ") + wispen_host_last_error());
  }
}

int run(const Options& options) {
  const objc::AutoreleasePool pool;
  if (!start(options)) return fail(wispen_host_last_error());
  load_bundle(options);
  Screen::define();
  HomeScreen home{options, Screen::make()};
  const UIWindow window = UIWindow::alloc().initWithFrame(UIScreen::mainScreen().bounds());
  window.setRootViewController(home.screen);
  window.makeKeyAndVisible();
  // First heard and then read: what is written between the two would else be missed.
  for (const char* const name : {kChanged, kPaint}) {
    if (!options.once && wispen_host_listen(name, changed, &home) == 0) return fail(wispen_host_last_error());
  }
  if (!home.refresh(false)) return fail(wispen_host_last_error());
  if (!options.picture.empty() && !options.once) tell_painted();
  if (options.picture.empty()) {
    home.screen.brighten();
    if (wispen_host_run_window_at("Home Screen", nullptr, WISPEN_HOST_WINDOW_RIGHT) == 0) {
      return fail(wispen_host_last_error());
    }
  }
  // Also after its window was closed: it comes back with the next restart.
  while (!options.once) {
    if (wispen_host_run_for(3600) == 0) return fail(wispen_host_last_error());
  }
  wispen_host_stop();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {  // NOLINT(bugprone-exception-escape): only memory can run out
  wispen::keep_stand_in_mark();
  wispen::end_with_host();
  CLI::App app{"The home screen of a device root, as the settings say.", "SpringBoard"};
  Options options;
  app.add_option("--root", options.root, "The folder that plays the phone's file system")->required();
  app.add_option("--bundle", options.bundle, "The settings bundle (the installed one)");
  app.add_option("--picture", options.picture,
                 "Paint into this file, anew after each change, and open no window");
  app.add_option("--scale", options.scale, "Pixels a point of the picture, 0.5 to 4 (the device's)");
  app.add_flag("--once", options.once, "Paint once and end");
  app.add_option("--appearance", options.appearance, "light or dark");
  app.add_option("--device", options.device, "phone, phone-small, pad, ...");
  app.add_option("--orientation", options.orientation, "portrait or landscape");
  CLI11_PARSE(app, argc, argv);
  try {
    return run(options);
  } catch (...) {  // the platform's exceptions do not tell C++ what they are
    return fail("the bundle raised an exception");
  }
}
