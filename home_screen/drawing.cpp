// home_screen/drawing.cpp: pictures made of a formula for each place.

#include "home_screen/drawing.hpp"

#include <cmath>

#include "platform/CoreGraphics/CGBitmapContext.hpp"

namespace wispen::home_screen {

UIImage painted(CGSize size, double scale, const std::function<Tone(double x, double y)>& tone_at) {
  const auto width = static_cast<std::size_t>(std::lround(size.width * scale));
  const auto height = static_cast<std::size_t>(std::lround(size.height * scale));
  const CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  const CGContextRef context = CGBitmapContextCreate(
      nullptr, width, height, 8, 4 * width, space, kCGImageAlphaPremultipliedLast | kCGBitmapByteOrder32Big);
  CGColorSpaceRelease(space);
  if (context == nullptr) return UIImage();
  auto* byte = static_cast<unsigned char*>(CGBitmapContextGetData(context));
  const auto to_byte = [](double part) {
    return static_cast<unsigned char>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
  };
  for (std::size_t y = 0; y < height; ++y) {
    for (std::size_t x = 0; x < width; ++x) {
      const Tone tone =
          tone_at((static_cast<double>(x) + 0.5) / scale, (static_cast<double>(y) + 0.5) / scale);
      for (const double part : {tone.red, tone.green, tone.blue, 1.0}) *byte++ = to_byte(part * tone.alpha);
    }
  }
  const CGImageRef pixels = CGBitmapContextCreateImage(context);
  CGContextRelease(context);
  const UIImage image = UIImage::imageWithCGImage(pixels, scale, UIImageOrientation::Up);
  CGImageRelease(pixels);
  return image;
}

}  // namespace wispen::home_screen
