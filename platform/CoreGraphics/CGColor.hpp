// platform/CoreGraphics/CGColor.hpp: colour spaces, and colours as components in one.
//
// References follow the platform's rule: what a function with Create or Copy in its name gives is the
// caller's to release, anything else lives as long as the object that it was asked of. Null is allowed
// everywhere, does nothing and gives zero.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/CoreGraphics/CGGeometry.hpp"

struct CGColorSpace;
struct CGColor;
using CGColorSpaceRef = CGColorSpace*;
using CGColorRef = CGColor*;

template <>
struct objc::Encoding<CGColorRef> {
  static constexpr FixedString value{"^{CGColor=}"};
};

enum CGColorSpaceModel : std::int32_t {
  kCGColorSpaceModelUnknown = -1,
  kCGColorSpaceModelMonochrome = 0,
  kCGColorSpaceModelRGB = 1,
};

extern "C" {
CGColorSpaceRef CGColorSpaceCreateDeviceRGB();
CGColorSpaceRef CGColorSpaceCreateDeviceGray();
CGColorSpaceRef CGColorSpaceRetain(CGColorSpaceRef space);
void CGColorSpaceRelease(CGColorSpaceRef space);
CGColorSpaceModel CGColorSpaceGetModel(CGColorSpaceRef space);
/// Without the alpha.
std::size_t CGColorSpaceGetNumberOfComponents(CGColorSpaceRef space);

/// `components` are the space's, then the alpha; taken as they are. Null for a null argument.
CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat* components);
CGColorRef CGColorCreateCopyWithAlpha(CGColorRef color, CGFloat alpha);
CGColorRef CGColorRetain(CGColorRef color);
void CGColorRelease(CGColorRef color);
/// The components and, last, the alpha: CGColorGetNumberOfComponents() values that live with the colour.
const CGFloat* CGColorGetComponents(CGColorRef color);
std::size_t CGColorGetNumberOfComponents(CGColorRef color);
CGFloat CGColorGetAlpha(CGColorRef color);
CGColorSpaceRef CGColorGetColorSpace(CGColorRef color);
bool CGColorEqualToColor(CGColorRef a, CGColorRef b);
}
