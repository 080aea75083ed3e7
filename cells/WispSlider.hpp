// cells/WispSlider.hpp: a slider row in the accent colour.
#pragma once

#include "platform/Preferences.hpp"

namespace wispen {

/// Always laid out in the subtitle style, whatever style is asked for.
class WispSlider : public objc::Authored<WispSlider, PSSliderTableCell> {
 public:
  static constexpr objc::FixedString kClass{"WispSlider"};
  using Authored::Authored;

  static void define();
  static WispSlider initWithStyle(objc::Allocated<WispSlider> self, NSInteger style,
                                  const NSString& identifier, const PSSpecifier& specifier);
};

}  // namespace wispen
