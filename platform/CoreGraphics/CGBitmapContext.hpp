// platform/CoreGraphics/CGBitmapContext.hpp: drawing into memory of the caller.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/CoreGraphics/CGColor.hpp"
#include "platform/CoreGraphics/CGImage.hpp"

struct CGContext;
using CGContextRef = CGContext*;

using CGBitmapInfo = std::uint32_t;
inline constexpr CGBitmapInfo kCGImageAlphaPremultipliedLast = 1;
inline constexpr CGBitmapInfo kCGBitmapByteOrder32Big = 4U << 12;

extern "C" {
/// The pixels' origin is at the bottom left; the memory's first row is the uppermost. With null data the
/// context has zero-filled memory of its own. Null for a size or a layout that cannot be drawn into. On the
/// desktop there is one layout, red, green, blue and premultiplied alpha in four bytes in that order:
/// device RGB, 8 bits, kCGImageAlphaPremultipliedLast | kCGBitmapByteOrder32Big.
CGContextRef CGBitmapContextCreate(void* data, std::size_t width, std::size_t height,
                                   std::size_t bits_per_component, std::size_t bytes_per_row,
                                   CGColorSpaceRef space, CGBitmapInfo info);
void* CGBitmapContextGetData(CGContextRef context);
std::size_t CGBitmapContextGetWidth(CGContextRef context);
std::size_t CGBitmapContextGetHeight(CGContextRef context);
std::size_t CGBitmapContextGetBytesPerRow(CGContextRef context);
/// A copy of the pixels. The caller's to release.
CGImageRef CGBitmapContextCreateImage(CGContextRef context);

CGContextRef CGContextRetain(CGContextRef context);
void CGContextRelease(CGContextRef context);
/// Scales the image into the rectangle and lays it over what is there.
void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image);
/// Makes the rectangle transparent.
void CGContextClearRect(CGContextRef context, CGRect rect);
}
