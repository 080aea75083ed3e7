// host/app/c_interface_screen.cpp: the C interface's screen: pages, touches, keys, pictures.

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "host/app/c_interface.hpp"
#include "host/app/settings/settings_app.hpp"
#include "host/app/view_tree.hpp"
#include "host/graphics/image_file.hpp"
#include "host/uikit/containers/tables/scroll_view.hpp"
#include "host/uikit/view/application.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/painting/frame_buffer.hpp"
#include "host/wispen_host.h"

namespace {

using namespace wispen;
using c_interface::done;
using c_interface::done_or_failed;
using c_interface::failed;
using c_interface::give;
using c_interface::guarded;
using c_interface::is_running;

Host& host() { return *c_interface::running_host(); }

std::string text(const char* given) { return given != nullptr ? given : ""; }

std::optional<std::string> look(std::string_view name) {
  const HostOptions& options = host().options();
  if (name == "appearance") return options.appearance;
  if (name == "device") return options.device;
  if (name == "orientation") return options.landscape ? "landscape" : "portrait";
  if (name == "text-size") return options.text_size;
  if (name == "language") {
    std::string all;
    for (const std::string& language : options.languages) all += (all.empty() ? "" : ",") + language;
    return all;
  }
  if (name == "direction") {
    if (!options.right_to_left) return "natural";
    return *options.right_to_left ? "rtl" : "ltr";
  }
  return std::nullopt;
}

struct KeyName {
  std::string_view name;
  uikit::KeyCode code;
};
constexpr std::array kKeyNames{
    KeyName{"tab", uikit::KeyCode::Tab},           KeyName{"return", uikit::KeyCode::Return},
    KeyName{"escape", uikit::KeyCode::Escape},     KeyName{"backspace", uikit::KeyCode::Backspace},
    KeyName{"delete", uikit::KeyCode::Delete},     KeyName{"left", uikit::KeyCode::Left},
    KeyName{"right", uikit::KeyCode::Right},       KeyName{"up", uikit::KeyCode::Up},
    KeyName{"down", uikit::KeyCode::Down},         KeyName{"home", uikit::KeyCode::Home},
    KeyName{"end", uikit::KeyCode::End},           KeyName{"page-up", uikit::KeyCode::PageUp},
    KeyName{"page-down", uikit::KeyCode::PageDown}};

/// Where the UTF-8 character at that place ends.
std::size_t end_of_character(std::string_view utf8, std::size_t at) {
  ++at;
  while (at < utf8.size() && (static_cast<unsigned char>(utf8[at]) & 0xC0U) == 0x80U) ++at;
  return at;
}

std::optional<uikit::KeyPress> key_from(std::string_view name) {
  uikit::KeyPress key;
  for (bool modified = true; modified;) {
    modified = false;
    if (name.starts_with("shift+")) {
      key.shift = modified = true;
      name.remove_prefix(6);
    } else if (name.starts_with("command+")) {
      key.command = modified = true;
      name.remove_prefix(8);
    }
  }
  const auto known = std::ranges::find(kKeyNames, name, &KeyName::name);
  if (known != kKeyNames.end()) {
    key.code = known->code;
    return key;
  }
  if (name == "space") name = " ";
  if (name.empty() || end_of_character(name, 0) != name.size()) return std::nullopt;
  key.text = name;
  return key;
}

/// Runs `body` in a pool, on the application as it is when every change so far is laid out.
template <class Body>
int on_screen(Body body) {
  if (!is_running()) return 0;
  const objc::AutoreleasePool pool;
  return guarded(0, [&] {
    if (!host().options().own_windows) host().settings();
    uikit::Application::shared().lay_out_windows();
    return body();
  });
}

/// The same, with the Settings application on it.
template <class Body>
int on_settings(Body body) {
  if (is_running() && host().options().own_windows)
    return failed("this host shows windows of its own program");
  return on_screen(body);
}

Result<graphics::Image> picture(double scale, bool whole_page) {
  if (!host().options().own_windows) return host().settings().picture(scale, whole_page);
  if (whole_page) return Error{"only pages of Settings have a length"};
  return uikit::take_picture(host().session(), scale);
}

bool is_place(double x, double y) { return std::isfinite(x) && std::isfinite(y); }

}  // namespace

extern "C" {

[[gnu::visibility("default")]] int wispen_host_set_look(const char* name, const char* value) {
  if (!is_running()) return 0;
  const objc::AutoreleasePool pool;
  return guarded(0, [&] { return done_or_failed(host().set_look(text(name), text(value))); });
}

[[gnu::visibility("default")]] const char* wispen_host_look(const char* name) {
  if (!is_running()) return nullptr;
  auto value = look(text(name));
  return value ? give(*std::move(value)) : nullptr;
}

[[gnu::visibility("default")]] const char* wispen_host_devices(void) { return give(uikit::device_names()); }

[[gnu::visibility("default")]] wispen_host_screen_size wispen_host_screen(void) {
  if (!is_running()) return {};
  const uikit::DeviceModel& device = host().session().device();
  return {device.size().width, device.size().height, device.scale};
}

[[gnu::visibility("default")]] int wispen_host_offer_bundle(const char* path) {
  return on_settings([&] { return done_or_failed(host().settings().offer(text(path))); });
}

[[gnu::visibility("default")]] int wispen_host_show_page(const char* page) {
  return on_settings([&] { return done_or_failed(host().settings().show(text(page))); });
}

[[gnu::visibility("default")]] const char* wispen_host_shown_page(void) {
  const char* name = nullptr;
  on_settings([&] {
    name = give(objc::class_of(host().settings().top()).name());
    return done();
  });
  return name;
}

[[gnu::visibility("default")]] int wispen_host_reload_pages(void) {
  return on_settings([] {
    host().settings().reload();
    return done();
  });
}

[[gnu::visibility("default")]] int wispen_host_follow_files(const char* bundle) {
  return on_settings([&] { return done_or_failed(host().follow_files(text(bundle))); });
}

[[gnu::visibility("default")]] int wispen_host_settle(double at_most) {
  if (!(at_most >= 0 && at_most <= 3600)) return failed("settling takes between 0 and 3600 seconds");
  return on_settings([&] { return done_or_failed(host().settings().settle(at_most)); });
}

[[gnu::visibility("default")]] int wispen_host_touch(enum wispen_host_touch_phase phase, double x, double y) {
  if (!is_place(x, y)) return failed("a touch needs a place");
  return on_screen([&] {
    uikit::TouchDispatcher& touches = host().session().touches();
    switch (phase) {
      case WISPEN_HOST_TOUCH_BEGAN:
        touches.began({x, y});
        break;
      case WISPEN_HOST_TOUCH_MOVED:
        touches.moved({x, y});
        break;
      case WISPEN_HOST_TOUCH_ENDED:
        touches.ended({x, y});
        break;
      default:
        touches.cancel();
        break;
    }
    return done();
  });
}

[[gnu::visibility("default")]] int wispen_host_wheel(double x, double y, double points) {
  if (!is_place(x, y) || !std::isfinite(points)) return failed("a wheel needs a place and a way");
  return on_screen([&] {
    if (const UIScrollView scroll = uikit::scroll_view_at({x, y}))
      uikit::ScrollView::of(scroll).wheel(points);
    return done();
  });
}

[[gnu::visibility("default")]] int wispen_host_type(const char* given) {
  return on_screen([&] {
    const std::string all = text(given);
    for (std::size_t at = 0; at < all.size();) {
      const std::size_t end = end_of_character(all, at);
      uikit::KeyPress key;
      key.text = all.substr(at, end - at);
      if (key.text == "\n")
        key = {.code = uikit::KeyCode::Return, .text = {}, .shift = false, .command = false};
      uikit::press_key(key);
      at = end;
    }
    return done();
  });
}

[[gnu::visibility("default")]] int wispen_host_key(const char* name) {
  const auto key = key_from(text(name));
  if (!key) {
    std::string known;
    for (const KeyName& each : kKeyNames) known += std::string(each.name) + ", ";
    return failed("there is no key \"" + text(name) + "\": " + known +
                  "space and single characters are known");
  }
  return on_screen([&] {
    uikit::press_key(*key);
    return done();
  });
}

[[gnu::visibility("default")]] int wispen_host_snapshot(const char* path, double scale, int whole_page) {
  if (scale != 0 && !(scale >= 0.5 && scale <= 4)) return failed("a picture's scale is 0.5 to 4");
  if (path == nullptr || *path == '\0') return failed("a picture needs a file to be written to");
  return on_screen([&] {
    const auto taken = picture(scale, whole_page != 0);
    if (!taken) return failed(taken.error().message);
    return done_or_failed(graphics::write_png(taken->upright_pixels()->view(), path));
  });
}

[[gnu::visibility("default")]] int wispen_host_frame(wispen_host_frame_pixels* frame) {
  if (frame == nullptr) return failed("a frame needs a place to be told in");
  return on_screen([&] {
    const auto changed = host().frame_buffer().update();
    if (!changed) return failed(changed.error().message);
    const graphics::PixelView pixels = host().frame_buffer().pixels();
    *frame = {reinterpret_cast<const unsigned char*>(pixels.pixels),
              pixels.width,
              pixels.height,
              static_cast<size_t>(pixels.stride) * sizeof(std::uint32_t),
              0,
              0,
              0,
              0};
    Rect all;
    for (const Rect& rect : *changed) all = all.empty() ? rect : all.united(rect);
    if (all.empty()) return done();
    const double scale = host().frame_buffer().scale();
    const int left = std::max(0, static_cast<int>(std::floor(all.min_x() * scale)));
    const int top = std::max(0, static_cast<int>(std::floor(all.min_y() * scale)));
    const int right = std::min(pixels.width, static_cast<int>(std::ceil(all.max_x() * scale)));
    const int bottom = std::min(pixels.height, static_cast<int>(std::ceil(all.max_y() * scale)));
    frame->changed_x = left;
    frame->changed_y = top;
    frame->changed_width = std::max(0, right - left);
    frame->changed_height = std::max(0, bottom - top);
    return done();
  });
}

[[gnu::visibility("default")]] int wispen_host_set_frame_scale(double scale) {
  if (scale != 0 && !(scale >= 0.5 && scale <= 4)) return failed("a frame's scale is 0.5 to 4");
  return on_screen([&] {
    host().frame_buffer().set_scale(scale);
    return done();
  });
}

[[gnu::visibility("default")]] int wispen_host_frame_stale(void) {
  return on_screen([] { return host().frame_buffer().stale() ? 1 : 0; });
}

[[gnu::visibility("default")]] const char* wispen_host_view_tree(void) {
  const char* tree = nullptr;
  on_screen([&] {
    tree = give(view_tree().dump());
    return done();
  });
  return tree;
}

}  // extern "C"
