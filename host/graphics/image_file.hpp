// host/graphics/image_file.hpp: images from the bytes of PNG, JPEG and WebP files, and back into PNG.
#pragma once

#include <string>
#include <string_view>

#include "host/core/result.hpp"
#include "host/graphics/image.hpp"

namespace wispen::graphics {

/// Files above this are not read.
inline constexpr std::size_t kMaximumImageFileSize = std::size_t{256} << 20;

/// The image in a file's bytes. The orientation that a camera wrote is kept beside the pixels as stored.
/// Fails for other formats, for damaged or incomplete data, and for more than kMaximumPixels, which is judged
/// by the file's header before anything is decoded.
Result<Image> decode_image(std::string_view bytes, double scale = 1);

/// The image in a regular file. A name that ends in @2x or @3x (before the extension and ~ipad or ~iphone)
/// tells the scale; otherwise it is 1.
Result<Image> load_image(const std::string& path);

/// The bytes of a PNG file: the upright pixels, the same bytes for the same pixels. Fails for an empty image.
Result<std::string> encode_png(const Image& image);
Result<std::string> encode_png(const PixelView& pixels);

/// Writes encode_png() beside `path` and renames it into place.
Result<void> write_png(const PixelView& pixels, const std::string& path);

}  // namespace wispen::graphics
