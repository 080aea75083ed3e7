// host/uikit/view/device/device_model.hpp: the devices that the host can be.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/geometry/geometry.hpp"
#include "host/graphics/appearance.hpp"

namespace wispen::uikit {

enum class Orientation { Portrait, Landscape };

/// A device's screen, as its user holds it. Lengths in points.
struct DeviceModel {
  std::string name;
  std::string description;
  graphics::Idiom idiom = graphics::Idiom::Phone;
  Size portrait;
  double scale = 2;
  EdgeInsets portrait_safe_area;
  EdgeInsets landscape_safe_area;
  double corner_radius = 0;  // of the screen's glass
  Orientation orientation = Orientation::Portrait;

  Size size() const {
    return orientation == Orientation::Portrait ? portrait : Size{portrait.height, portrait.width};
  }
  EdgeInsets safe_area() const {
    return orientation == Orientation::Portrait ? portrait_safe_area : landscape_safe_area;
  }
  bool is_pad() const { return idiom == graphics::Idiom::Pad; }
  /// Pads, and the largest phones held sideways, lay out in two columns.
  bool is_regular_width() const {
    return is_pad() || (orientation == Orientation::Landscape && portrait.width >= 414);
  }
  friend bool operator==(const DeviceModel&, const DeviceModel&) = default;
};

/// All of them; "phone" and "pad" are the usual ones.
const std::vector<DeviceModel>& device_models();
/// Null for a name that is none.
const DeviceModel* find_device(std::string_view name);
/// "phone, phone-small, ...", for messages.
std::string device_names();

}  // namespace wispen::uikit
