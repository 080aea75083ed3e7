// platform/CoreGraphics/CGGeometry.hpp: points, sizes and rectangles.
#pragma once

#include <algorithm>

#include "platform/objc/marshal.hpp"

using CGFloat = double;

struct CGPoint {
  CGFloat x;
  CGFloat y;
  friend constexpr bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
  CGFloat width;
  CGFloat height;
  friend constexpr bool operator==(const CGSize&, const CGSize&) = default;
};

struct CGRect {
  CGPoint origin;
  CGSize size;
  friend constexpr bool operator==(const CGRect&, const CGRect&) = default;
};

template <>
struct objc::Encoding<CGPoint> {
  static constexpr FixedString value{"{CGPoint=dd}"};
};
template <>
struct objc::Encoding<CGSize> {
  static constexpr FixedString value{"{CGSize=dd}"};
};
template <>
struct objc::Encoding<CGRect> {
  static constexpr FixedString value{"{CGRect={CGPoint=dd}{CGSize=dd}}"};
};

inline constexpr CGPoint CGPointZero{0, 0};
inline constexpr CGSize CGSizeZero{0, 0};
inline constexpr CGRect CGRectZero{{0, 0}, {0, 0}};

constexpr CGPoint CGPointMake(CGFloat x, CGFloat y) { return {x, y}; }
constexpr CGSize CGSizeMake(CGFloat width, CGFloat height) { return {width, height}; }
constexpr CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
  return {{x, y}, {width, height}};
}

constexpr bool CGPointEqualToPoint(CGPoint a, CGPoint b) { return a == b; }
constexpr bool CGSizeEqualToSize(CGSize a, CGSize b) { return a == b; }

/// The same area with sizes that are not negative. Every function below looks at rectangles so.
constexpr CGRect CGRectStandardize(CGRect rect) {
  if (rect.size.width < 0)
    rect = {{rect.origin.x + rect.size.width, rect.origin.y}, {-rect.size.width, rect.size.height}};
  if (rect.size.height < 0)
    rect = {{rect.origin.x, rect.origin.y + rect.size.height}, {rect.size.width, -rect.size.height}};
  return rect;
}

constexpr CGFloat CGRectGetWidth(CGRect rect) { return CGRectStandardize(rect).size.width; }
constexpr CGFloat CGRectGetHeight(CGRect rect) { return CGRectStandardize(rect).size.height; }
constexpr CGFloat CGRectGetMinX(CGRect rect) { return CGRectStandardize(rect).origin.x; }
constexpr CGFloat CGRectGetMinY(CGRect rect) { return CGRectStandardize(rect).origin.y; }
constexpr CGFloat CGRectGetMaxX(CGRect rect) { return CGRectGetMinX(rect) + CGRectGetWidth(rect); }
constexpr CGFloat CGRectGetMaxY(CGRect rect) { return CGRectGetMinY(rect) + CGRectGetHeight(rect); }
constexpr CGFloat CGRectGetMidX(CGRect rect) { return CGRectGetMinX(rect) + CGRectGetWidth(rect) / 2; }
constexpr CGFloat CGRectGetMidY(CGRect rect) { return CGRectGetMinY(rect) + CGRectGetHeight(rect) / 2; }

constexpr bool CGRectEqualToRect(CGRect a, CGRect b) { return CGRectStandardize(a) == CGRectStandardize(b); }
constexpr bool CGRectIsEmpty(CGRect rect) { return rect.size.width == 0 || rect.size.height == 0; }
/// The left and the top edge belong to the rectangle, the others do not.
constexpr bool CGRectContainsPoint(CGRect rect, CGPoint point) {
  return point.x >= CGRectGetMinX(rect) && point.x < CGRectGetMaxX(rect) && point.y >= CGRectGetMinY(rect) &&
         point.y < CGRectGetMaxY(rect);
}
constexpr CGRect CGRectOffset(CGRect rect, CGFloat dx, CGFloat dy) {
  const CGRect r = CGRectStandardize(rect);
  return {{r.origin.x + dx, r.origin.y + dy}, r.size};
}
/// Smaller by dx at the left and right and by dy above and below; larger for negative values.
constexpr CGRect CGRectInset(CGRect rect, CGFloat dx, CGFloat dy) {
  const CGRect r = CGRectStandardize(rect);
  return {{r.origin.x + dx, r.origin.y + dy}, {r.size.width - 2 * dx, r.size.height - 2 * dy}};
}
/// The smallest rectangle around both.
constexpr CGRect CGRectUnion(CGRect a, CGRect b) {
  const CGFloat x = std::min(CGRectGetMinX(a), CGRectGetMinX(b));
  const CGFloat y = std::min(CGRectGetMinY(a), CGRectGetMinY(b));
  return {
      {x, y},
      {std::max(CGRectGetMaxX(a), CGRectGetMaxX(b)) - x, std::max(CGRectGetMaxY(a), CGRectGetMaxY(b)) - y}};
}
