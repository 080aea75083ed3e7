// host/graphics/pixels.cpp: memory that holds premultiplied pixels, and views of it.

#include "host/graphics/pixels.hpp"

#include <string>

namespace wispen::graphics {

Result<Pixels> Pixels::create(std::int64_t width, std::int64_t height) {
  // The drawing library counts pixels in 16 bits, with a sign.
  constexpr std::int64_t kMaximumSide = 32767;
  if (width < 1 || height < 1 || width > kMaximumSide || height > kMaximumSide ||
      width * height > kMaximumPixels) {
    return Error{"a picture of " + std::to_string(width) + " x " + std::to_string(height) +
                 " pixels cannot be made"};
  }
  return Pixels(static_cast<int>(width), static_cast<int>(height));
}

}  // namespace wispen::graphics
