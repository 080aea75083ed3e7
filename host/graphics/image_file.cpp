#include "host/graphics/image_file.hpp"

#include <cairo.h>

#include <utility>

#include "host/files/read_file.hpp"
#include "host/files/replace_file.hpp"
#include "host/graphics/gobject_ref.hpp"
#include "host/graphics/image_header.hpp"
#include "host/graphics/image_name.hpp"
#include "host/graphics/pixbuf_decoder.hpp"
#include "host/graphics/true_colour_png.hpp"

namespace wispen::graphics {

namespace {

cairo_status_t append_bytes(void* closure, const unsigned char* data, unsigned int length) {
  static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
  return CAIRO_STATUS_SUCCESS;
}

}  // namespace

Result<Image> decode_image(std::string_view bytes, double scale) {
  auto header = read_image_header(bytes);
  if (!header) return Error{"the data is no PNG, JPEG or WebP image"};
  if (header->width < 1 || header->height < 1 || header->width > kMaximumPixels / header->height) {
    return Error{"the image of " + std::to_string(header->width) + " x " + std::to_string(header->height) +
                 " pixels is larger than can be shown"};
  }
  // The decoder of broken animations complains on standard error and trips over its own feet.
  if (header->animated) return Error{"the image is an animation, which is not shown"};
  if (!image_is_complete(bytes)) return Error{"the image is cut off"};
  auto pixels = decode_true_colour_png(bytes);
  if (!pixels) return pixels.error();
  if (*pixels) return Image(std::make_shared<const Pixels>(**std::move(pixels)), scale);
  auto picture = decode_with_pixbuf(bytes, *header);
  if (!picture) return picture.error();
  return Image(std::make_shared<const Pixels>(std::move(picture->pixels)), scale, picture->orientation);
}

Result<Image> load_image(const std::string& path) {
  auto bytes = files::read(path, kMaximumImageFileSize);
  if (!bytes) return bytes.error();
  auto image = decode_image(bytes->view(), parse_image_name(path).scale);
  if (!image) return Error{image.error().message + " (" + path + ")"};
  return image;
}

Result<std::string> encode_png(const PixelView& pixels) {
  if (pixels.empty()) return Error{"an empty image has no PNG"};
  // The library asks for writable memory even to read it.
  auto* data = const_cast<unsigned char*>(reinterpret_cast<const unsigned char*>(pixels.pixels));
  const CairoSurface surface(cairo_image_surface_create_for_data(
      data, CAIRO_FORMAT_ARGB32, pixels.width, pixels.height, static_cast<int>(pixels.stride * 4)));
  std::string bytes;
  const cairo_status_t status = cairo_surface_write_to_png_stream(surface.get(), append_bytes, &bytes);
  if (status != CAIRO_STATUS_SUCCESS) {
    return Error{std::string("the image cannot be written as PNG: ") + cairo_status_to_string(status)};
  }
  return bytes;
}

Result<std::string> encode_png(const Image& image) {
  if (image.empty()) return Error{"an empty image has no PNG"};
  return encode_png(image.upright_pixels()->view());
}

Result<void> write_png(const PixelView& pixels, const std::string& path) {
  auto bytes = encode_png(pixels);
  if (!bytes) return bytes.error();
  return files::replace(path, *bytes);
}

}  // namespace wispen::graphics
