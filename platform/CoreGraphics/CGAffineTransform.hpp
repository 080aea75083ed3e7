// platform/CoreGraphics/CGAffineTransform.hpp: moves, scalings and turns of the plane.
#pragma once

#include <cmath>

#include "platform/CoreGraphics/CGGeometry.hpp"

/// x' = a x + c y + tx, y' = b x + d y + ty.
struct CGAffineTransform {
  CGFloat a;
  CGFloat b;
  CGFloat c;
  CGFloat d;
  CGFloat tx;
  CGFloat ty;
  friend constexpr bool operator==(const CGAffineTransform&, const CGAffineTransform&) = default;
};

template <>
struct objc::Encoding<CGAffineTransform> {
  static constexpr FixedString value{"{CGAffineTransform=dddddd}"};
};

inline constexpr CGAffineTransform CGAffineTransformIdentity{1, 0, 0, 1, 0, 0};

constexpr CGAffineTransform CGAffineTransformMakeTranslation(CGFloat tx, CGFloat ty) {
  return {1, 0, 0, 1, tx, ty};
}
constexpr CGAffineTransform CGAffineTransformMakeScale(CGFloat sx, CGFloat sy) {
  return {sx, 0, 0, sy, 0, 0};
}
/// Radians; positive turns from the x axis towards the y axis.
inline CGAffineTransform CGAffineTransformMakeRotation(CGFloat angle) {
  const CGFloat sine = std::sin(angle);
  const CGFloat cosine = std::cos(angle);
  return {cosine, sine, -sine, cosine, 0, 0};
}
/// `first`, then `second`.
constexpr CGAffineTransform CGAffineTransformConcat(CGAffineTransform first, CGAffineTransform second) {
  return {first.a * second.a + first.b * second.c,
          first.a * second.b + first.b * second.d,
          first.c * second.a + first.d * second.c,
          first.c * second.b + first.d * second.d,
          first.tx * second.a + first.ty * second.c + second.tx,
          first.tx * second.b + first.ty * second.d + second.ty};
}
constexpr bool CGAffineTransformIsIdentity(CGAffineTransform transform) {
  return transform == CGAffineTransformIdentity;
}
constexpr bool CGAffineTransformEqualToTransform(CGAffineTransform a, CGAffineTransform b) { return a == b; }
