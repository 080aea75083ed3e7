// cells/WispToggle.hpp: a switch row in the accent colour, over blur.
#pragma once

#include "platform/Preferences.hpp"

namespace wispen {

/// Always laid out in the subtitle style, whatever style is asked for.
class WispToggle : public objc::Authored<WispToggle, PSSwitchTableCell> {
 public:
  static constexpr objc::FixedString kClass{"WispToggle"};
  using Authored::Authored;

  static void define();
  static WispToggle initWithStyle(objc::Allocated<WispToggle> self, NSInteger style,
                                  const NSString& identifier, const PSSpecifier& specifier);
};

}  // namespace wispen
