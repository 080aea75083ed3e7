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

class ImageConfiguration : public objc::Authored<ImageConfiguration, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIImageConfiguration"};
  using Authored::Authored;
  static void define();
  ImageConfiguration copy() const { return *this; }
};

class SymbolConfiguration : public objc::Authored<SymbolConfiguration, ImageConfiguration> {
 public:
  static constexpr objc::FixedString kClass{"UIImageSymbolConfiguration"};
  using Authored::Authored;

  static void define();
  static SymbolConfiguration make(const SymbolLook& look);

  const SymbolLook& look() const { return state<SymbolLook>(); }
  SymbolConfiguration configurationByApplyingConfiguration(const NSObject& other) const;
  bool isEqual(const NSObject& other) const;
  NSUInteger hash() const;
};

/// Nothing said for nil and for configurations of another kind.
SymbolLook symbol_look_of(const NSObject& configuration);

}  // namespace wispen::uikit
