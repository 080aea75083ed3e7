// platform/CoreGraphics/CGImage.hpp: bare pixels, as they are stored.
#pragma once

#include <cstddef>

#include "platform/CoreGraphics/CGGeometry.hpp"

struct CGImage;
using CGImageRef = CGImage*;

template <>
struct objc::Encoding<CGImageRef> {
  static constexpr FixedString value{"^{CGImage=}"};
};

extern "C" {
/// In pixels; 0 for null.
std::size_t CGImageGetWidth(CGImageRef image);
std::size_t CGImageGetHeight(CGImageRef image);
CGImageRef CGImageRetain(CGImageRef image);
void CGImageRelease(CGImageRef image);
}
