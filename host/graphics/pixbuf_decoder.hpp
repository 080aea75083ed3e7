// host/graphics/pixbuf_decoder.hpp: pictures of every kind that the drawing library reads.
#pragma once

#include <string_view>

#include "host/core/result.hpp"
#include "host/graphics/image.hpp"
#include "host/graphics/image_header.hpp"

namespace wispen::graphics {

/// Pixels as a file holds them, and which way up they are.
struct PixbufPicture {
  Pixels pixels;
  Orientation orientation = Orientation::Up;
};

/// The picture in a file's bytes, by gdk-pixbuf. `header` is what the file's first bytes promised. Fails for
/// damaged data, for a picture of another size than promised, and for kinds of pixel that are not known here.
Result<PixbufPicture> decode_with_pixbuf(std::string_view bytes, const ImageHeader& header);

}  // namespace wispen::graphics
