// host/uikit/values/symbol_configuration.hpp: UIImageSymbolConfiguration.
#pragma once

#include <optional>

#include "host/graphics/symbol.hpp"
#include "platform/UIKit/UIImageSymbolConfiguration.hpp"

namespace wispen::uikit {

/// What a configuration says of a symbol; the rest is left open.
struct SymbolLook {
  std::optional<double> point_size = std::nullopt;
  std::optional<double> weight = std::nullopt;
  std::optional<graphics::SymbolScale> scale = std::nullopt;
  friend bool operator==(const SymbolLook&, const SymbolLook&) = default;

  /// `over` where it says something, else this.
  SymbolLook applying(const SymbolLook& over) const;
  /// With the platform's defaults for what is open, for the display.
  graphics::SymbolConfiguration resolved() const;
};

UIImageSymbolConfiguration symbol_configuration_from(const SymbolLook& look);
/// Nothing said for nil and for configurations of another kind.
SymbolLook symbol_look_of(const NSObject& configuration);

void define_symbol_configurations();

}  // namespace wispen::uikit
