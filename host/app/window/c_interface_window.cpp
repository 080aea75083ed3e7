// host/app/window/c_interface_window.cpp: the C interface's window.

#include "host/app/c_interface.hpp"
#include "host/app/settings/settings_app.hpp"
#include "host/app/window/window.hpp"
#include "host/core/text_list.hpp"
#include "host/wispen_host.h"

using namespace wispen;

extern "C" {

[[gnu::visibility("default")]] int wispen_host_run_window_at(const char* title, const char* languages,
                                                             enum wispen_host_window_place place) {
  if (!c_interface::is_running()) return 0;
  return c_interface::guarded(0, [&] {
    Host& host = *c_interface::running_host();
    WindowOptions options;
    if (title != nullptr) options.title = title;
    if (languages != nullptr) options.languages = split_list(languages, ',');
    if (place == WISPEN_HOST_WINDOW_LEFT) options.place = WindowPlace::LeftHalf;
    if (place == WISPEN_HOST_WINDOW_RIGHT) options.place = WindowPlace::RightHalf;
    if (!host.options().own_windows) host.settings();
    const auto window = Window::open(host, std::move(options));
    if (!window) return c_interface::failed(window.error().message);
    return c_interface::done_or_failed((*window)->run());
  });
}

[[gnu::visibility("default")]] int wispen_host_run_window(const char* title, const char* languages) {
  return wispen_host_run_window_at(title, languages, WISPEN_HOST_WINDOW_CENTRE);
}

}  // extern "C"
