// host/graphics/pixels.hpp: memory that holds premultiplied pixels, and views of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "host/core/result.hpp"

namespace wispen::graphics {

/// Pictures above this are refused before memory is taken for them: 64 million pixels, 256 MB.
inline constexpr std::int64_t kMaximumPixels = std::int64_t{64} << 20;

/// Pixels that are only read: premultiplied 0xAARRGGBB in the machine's byte order, rows from the top.
struct PixelView {
  const std::uint32_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  std::ptrdiff_t stride = 0;  ///< in pixels

  const std::uint32_t* row(int y) const { return pixels + y * stride; }
  std::uint32_t at(int x, int y) const { return row(y)[x]; }
  bool empty() const { return width <= 0 || height <= 0; }
};

/// The same, to be written.
struct MutablePixelView {
  std::uint32_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  std::ptrdiff_t stride = 0;  ///< in pixels

  std::uint32_t* row(int y) const { return pixels + y * stride; }
  bool empty() const { return width <= 0 || height <= 0; }
  // NOLINTNEXTLINE(google-explicit-constructor): what may be written may be read.
  operator PixelView() const { return {pixels, width, height, stride}; }
};

/// Owns pixels, without gaps between rows. Shared as PixelsRef once they are complete.
class Pixels {
 public:
  /// Transparent pixels. Fails for a side below 1 or above 32767 and for more than kMaximumPixels.
  static Result<Pixels> create(std::int64_t width, std::int64_t height);

  int width() const { return width_; }
  int height() const { return height_; }
  PixelView view() const { return {data_.data(), width_, height_, width_}; }
  MutablePixelView mutable_view() { return {data_.data(), width_, height_, width_}; }
  std::uint32_t at(int x, int y) const { return view().at(x, y); }
  friend bool operator==(const Pixels&, const Pixels&) = default;

 private:
  Pixels(int width, int height)
      : width_(width),
        height_(height),
        data_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

  int width_;
  int height_;
  std::vector<std::uint32_t> data_;
};

/// Complete pixels, which no one changes any more.
using PixelsRef = std::shared_ptr<const Pixels>;

}  // namespace wispen::graphics
