// cells/WispHeader.hpp: the banner at the top of the root page: the product's name and its version.
#pragma once

#include "platform/Preferences.hpp"

namespace wispen {

class WispHeader : public objc::Authored<WispHeader, PSTableCell> {
 public:
  static constexpr objc::FixedString kClass{"WispHeader"};
  using Authored::Authored;

  static void define();

  static WispHeader initWithSpecifier(objc::Allocated<WispHeader> self, const PSSpecifier& specifier);
  /// 100 points, whatever the width.
  CGFloat preferredHeightForWidth(CGFloat width) const;
};

}  // namespace wispen
