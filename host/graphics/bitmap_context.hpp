// host/graphics/bitmap_context.hpp: draws images into memory of the caller, byte for byte as told.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/core/result.hpp"
#include "host/geometry/geometry.hpp"
#include "host/graphics/image.hpp"
#include "host/graphics/pixels.hpp"

namespace wispen::graphics {

/// A context over device RGB: 8 bits a component, alpha premultiplied and last, big-endian, so that a pixel's
/// bytes in memory are red, green, blue, alpha, and rows follow each other from the top. Coordinates are the
/// platform's: the origin at the bottom left, y upwards. The memory is what the caller left in it, and is
/// drawn over.
class BitmapContext {
 public:
  /// Over the caller's memory, which must outlive the context and hold height * bytes_per_row bytes. Fails
  /// for sizes that are not positive, for rows shorter than 4 * width, and for more than kMaximumPixels.
  static Result<BitmapContext> over(void* data, std::size_t width, std::size_t height,
                                    std::size_t bytes_per_row);
  /// Over zero-filled memory of its own, rows of exactly 4 * width.
  static Result<BitmapContext> create(std::size_t width, std::size_t height);

  std::size_t width() const { return width_; }
  std::size_t height() const { return height_; }
  std::size_t bytes_per_row() const { return bytes_per_row_; }
  std::uint8_t* data() const { return data_; }

  /// Scales the bare pixels into the rectangle, their first row uppermost, and lays them over what is there.
  void draw(const PixelView& pixels, const Rect& where);
  /// The same for an image that stands upright first: its stored orientation is undone.
  void draw(const Image& image, const Rect& where);
  /// Replaces the rectangle's pixels with transparent ones, by whole pixels.
  void clear(const Rect& where);

  /// A copy of the contents as an image of one pixel a point.
  Result<Image> make_image() const;

 private:
  BitmapContext(std::uint8_t* data, std::size_t width, std::size_t height, std::size_t bytes_per_row)
      : data_(data), width_(width), height_(height), bytes_per_row_(bytes_per_row) {}
  /// From y upwards to y downwards.
  Rect in_memory(const Rect& where) const;

  std::vector<std::uint8_t> own_;
  std::uint8_t* data_;
  std::size_t width_;
  std::size_t height_;
  std::size_t bytes_per_row_;
};

}  // namespace wispen::graphics
