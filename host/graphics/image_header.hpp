// host/graphics/image_header.hpp: the kind and size of a picture, read from the first bytes of its file.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace wispen::graphics {

struct ImageHeader {
  const char* format = "";  ///< as the decoding library names it: "png", "jpeg", "webp"
  std::int64_t width = 0;
  std::int64_t height = 0;
  bool animated = false;
};

/// Nothing when the bytes are no PNG, JPEG or WebP file, or end before the size is told.
std::optional<ImageHeader> read_image_header(std::string_view bytes);

/// Whether the file's own marks say that its end is there. Decoders show what they have; a view would then
/// show half a picture, and no one would know.
bool image_is_complete(std::string_view bytes);

}  // namespace wispen::graphics
