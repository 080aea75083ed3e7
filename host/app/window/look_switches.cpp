// host/app/window/look_switches.cpp: the looks that a window's toolbar and keys go through.

#include "host/app/window/look_switches.hpp"

#include <algorithm>

#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/device/device_model.hpp"

namespace wispen {

std::vector<LookSwitch> look_switches(const std::vector<std::string>& languages) {
  std::vector<std::string> devices;
  for (const uikit::DeviceModel& model : uikit::device_models()) devices.push_back(model.name);
  std::vector<LookSwitch> all{{"appearance", 2, {"light", "dark"}}};
  if (languages.size() > 1) all.push_back({"language", 3, languages});
  all.push_back({"direction", 4, {"ltr", "rtl"}});
  all.push_back({"text-size",
                 5,
                 {"XS", "S", "M", "L", "XL", "XXL", "XXXL", "AccessibilityM", "AccessibilityL",
                  "AccessibilityXL", "AccessibilityXXL", "AccessibilityXXXL"}});
  all.push_back({"device", 6, std::move(devices)});
  all.push_back({"orientation", 7, {"portrait", "landscape"}});
  return all;
}

std::string current_look(const Host& host, const std::string& look) {
  const HostOptions& options = host.options();
  if (look == "appearance") return options.appearance;
  if (look == "language") return options.languages.front();
  if (look == "direction") return uikit::display_settings().right_to_left ? "rtl" : "ltr";
  if (look == "text-size") return options.text_size;
  if (look == "device") return options.device;
  return options.landscape ? "landscape" : "portrait";
}

Result<void> step_look(Host& host, const LookSwitch& look, bool forward) {
  const auto count = look.values.size();
  const auto here = std::ranges::find(look.values, current_look(host, look.look));
  const auto index = static_cast<std::size_t>(here - look.values.begin());
  // A value that is none of them counts as the last: the next is the first.
  const std::size_t next = index == count ? 0 : (index + (forward ? 1 : count - 1)) % count;
  return host.set_look(look.look, look.values[next]);
}

}  // namespace wispen
