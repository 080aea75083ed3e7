// host/uikit/view/geometry.hpp: the geometry of views, as messages carry it.
#pragma once

#include "host/geometry/geometry.hpp"
#include "platform/objc/objc.hpp"

template <>
struct objc::Encoding<wispen::Point> {
  static constexpr FixedString value{"{CGPoint=dd}"};
};
template <>
struct objc::Encoding<wispen::Size> {
  static constexpr FixedString value{"{CGSize=dd}"};
};
template <>
struct objc::Encoding<wispen::Rect> {
  static constexpr FixedString value{"{CGRect={CGPoint=dd}{CGSize=dd}}"};
};
template <>
struct objc::Encoding<wispen::EdgeInsets> {
  static constexpr FixedString value{"{UIEdgeInsets=dddd}"};
};
template <>
struct objc::Encoding<wispen::AffineTransform> {
  static constexpr FixedString value{"{CGAffineTransform=dddddd}"};
};
