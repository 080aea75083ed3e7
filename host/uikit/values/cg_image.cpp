// host/uikit/values/cg_image.cpp: images and bitmap contexts of CoreGraphics.

#include "host/uikit/values/core_graphics.hpp"
#include "host/uikit/values/geometry.hpp"

using wispen::graphics::BitmapContext;
using wispen::uikit::Counted;

namespace {

constexpr std::size_t kBytesPerPixel = 4;

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

std::size_t CGImageGetWidth(CGImageRef image) {
  return image != nullptr ? static_cast<std::size_t>(image->pixels->width()) : 0;
}
std::size_t CGImageGetHeight(CGImageRef image) {
  return image != nullptr ? static_cast<std::size_t>(image->pixels->height()) : 0;
}
CGImageRef CGImageRetain(CGImageRef image) { return Counted::retain(image); }
void CGImageRelease(CGImageRef image) { Counted::release(image); }

CGContextRef CGBitmapContextCreate(void* data, std::size_t width, std::size_t height,
                                   std::size_t bits_per_component, std::size_t bytes_per_row,
                                   CGColorSpaceRef space, CGBitmapInfo info) {
  if (CGColorSpaceGetModel(space) != kCGColorSpaceModelRGB || bits_per_component != 8 ||
      info != (kCGImageAlphaPremultipliedLast | kCGBitmapByteOrder32Big) ||
      width > SIZE_MAX / kBytesPerPixel) {
    return nullptr;
  }
  const std::size_t shortest_row = width * kBytesPerPixel;
  if (bytes_per_row == 0) bytes_per_row = shortest_row;
  if (data == nullptr && bytes_per_row != shortest_row) return nullptr;
  auto bitmap = data != nullptr ? BitmapContext::over(data, width, height, bytes_per_row)
                                : BitmapContext::create(width, height);
  return bitmap ? Counted::make<CGContext>(*std::move(bitmap)) : nullptr;
}
void* CGBitmapContextGetData(CGContextRef context) {
  return context != nullptr ? context->bitmap.data() : nullptr;
}
std::size_t CGBitmapContextGetWidth(CGContextRef context) {
  return context != nullptr ? context->bitmap.width() : 0;
}
std::size_t CGBitmapContextGetHeight(CGContextRef context) {
  return context != nullptr ? context->bitmap.height() : 0;
}
std::size_t CGBitmapContextGetBytesPerRow(CGContextRef context) {
  return context != nullptr ? context->bitmap.bytes_per_row() : 0;
}
CGImageRef CGBitmapContextCreateImage(CGContextRef context) {
  if (context == nullptr) return nullptr;
  const auto image = context->bitmap.make_image();
  return image ? Counted::make<CGImage>(image->pixels()) : nullptr;
}

CGContextRef CGContextRetain(CGContextRef context) { return Counted::retain(context); }
void CGContextRelease(CGContextRef context) { Counted::release(context); }

void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image) {
  if (context == nullptr || image == nullptr) return;
  context->bitmap.draw(image->pixels->view(), wispen::uikit::from_platform(CGRectStandardize(rect)));
}
void CGContextClearRect(CGContextRef context, CGRect rect) {
  if (context != nullptr) context->bitmap.clear(wispen::uikit::from_platform(CGRectStandardize(rect)));
}

}  // extern "C"
#pragma GCC visibility pop
