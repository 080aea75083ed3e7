// host/uikit/values/geometry.hpp: the platform's structures and the host's, which are laid out alike.
#pragma once

#include "host/geometry/geometry.hpp"
#include "platform/CoreGraphics/CGAffineTransform.hpp"
#include "platform/UIKit/UIGeometry.hpp"

namespace wispen::uikit {

constexpr Point from_platform(CGPoint point) { return {point.x, point.y}; }
constexpr Size from_platform(CGSize size) { return {size.width, size.height}; }
constexpr Rect from_platform(CGRect rect) { return {from_platform(rect.origin), from_platform(rect.size)}; }
constexpr EdgeInsets from_platform(UIEdgeInsets insets) {
  return {insets.top, insets.left, insets.bottom, insets.right};
}
constexpr AffineTransform from_platform(const CGAffineTransform& t) {
  return {t.a, t.b, t.c, t.d, t.tx, t.ty};
}

constexpr CGPoint to_platform(Point point) { return {point.x, point.y}; }
constexpr CGSize to_platform(Size size) { return {size.width, size.height}; }
constexpr CGRect to_platform(const Rect& rect) { return {to_platform(rect.origin), to_platform(rect.size)}; }
constexpr UIEdgeInsets to_platform(const EdgeInsets& insets) {
  return {insets.top, insets.left, insets.bottom, insets.right};
}
constexpr CGAffineTransform to_platform(const AffineTransform& t) { return {t.a, t.b, t.c, t.d, t.tx, t.ty}; }

}  // namespace wispen::uikit
