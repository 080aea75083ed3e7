// host/uikit/view/device/traits.hpp: what the user chose, and what device it is: everything a page adapts to.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/core/result.hpp"
#include "host/graphics/appearance.hpp"
#include "host/graphics/text_style.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/device/device_model.hpp"

namespace wispen::uikit {

/// Natural: as the first language is read.
enum class ReadingDirection { Natural, LeftToRight, RightToLeft };

/// The traits of one running host.
struct Traits {
  graphics::Appearance appearance = graphics::Appearance::Light;
  std::vector<std::string> languages{"en"};  // most wanted first; never empty
  ReadingDirection direction = ReadingDirection::Natural;
  graphics::ContentSize text_size = graphics::ContentSize::Large;
  std::string device = "phone";  // a name of device_models()
  Orientation orientation = Orientation::Portrait;

  bool is_right_to_left() const;
  /// The device as it is held.
  DeviceModel device_model() const;
  DisplaySettings display_settings() const;
  friend bool operator==(const Traits&, const Traits&) = default;
};

/// One trait as text.
struct TraitField {
  std::string_view name;
  std::string_view description;
  /// All values there are; none where it takes any list ("de,en").
  std::vector<std::string> (*values)();
  std::string (*get)(const Traits& traits);
  /// Gets one of the values, or for a list anything. False, and nothing is changed, where it is not usable.
  bool (*set)(Traits& traits, const std::string& value);
};

/// Every trait, in the order in which people are offered them.
std::span<const TraitField> trait_fields();
/// Null for an unknown name.
const TraitField* find_trait(std::string_view name);
/// Fails, changing nothing, if the trait or the value is unknown; the error names those that are known.
Result<void> set_trait(Traits& traits, const std::string& name, const std::string& value);

}  // namespace wispen::uikit
