// platform/UIKit/UIGeometry.hpp: UIKit's own structures.
#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"

/// Distances inwards from the four edges, in points.
struct UIEdgeInsets {
  CGFloat top;
  CGFloat left;
  CGFloat bottom;
  CGFloat right;
  friend constexpr bool operator==(const UIEdgeInsets&, const UIEdgeInsets&) = default;
};

template <>
struct objc::Encoding<UIEdgeInsets> {
  static constexpr FixedString value{"{UIEdgeInsets=dddd}"};
};

inline constexpr UIEdgeInsets UIEdgeInsetsZero{0, 0, 0, 0};

constexpr UIEdgeInsets UIEdgeInsetsMake(CGFloat top, CGFloat left, CGFloat bottom, CGFloat right) {
  return {top, left, bottom, right};
}
constexpr bool UIEdgeInsetsEqualToEdgeInsets(UIEdgeInsets a, UIEdgeInsets b) { return a == b; }
constexpr CGRect UIEdgeInsetsInsetRect(CGRect rect, UIEdgeInsets insets) {
  return {{rect.origin.x + insets.left, rect.origin.y + insets.top},
          {rect.size.width - insets.left - insets.right, rect.size.height - insets.top - insets.bottom}};
}
