#include "host/graphics/image_file.hpp"

#include <cairo.h>
#include <gdk-pixbuf/gdk-pixbuf.h>

#include <cstdlib>

#include "host/foundation/files/read_file.hpp"
#include "host/foundation/files/replace_file.hpp"
#include "host/graphics/gobject_ref.hpp"
#include "host/graphics/image_header.hpp"
#include "host/graphics/image_name.hpp"

namespace wispen::graphics {

namespace {

Error decode_error(GError* error) {
  const GErrorOwner owner(error);
  return Error{std::string("the image cannot be decoded: ") +
               (error != nullptr ? error->message : "no picture in it")};
}

// A decoder that was promised another size by the header is stopped before it takes memory.
void refuse_other_size(GdkPixbufLoader* loader, int width, int height, gpointer data) {
  const auto* header = static_cast<const ImageHeader*>(data);
  if (width != header->width || height != header->height) gdk_pixbuf_loader_set_size(loader, 0, 0);
}

std::uint32_t premultiplied(const guint8* pixel, bool has_alpha) {
  const std::uint32_t alpha = has_alpha ? pixel[3] : 255;
  if (alpha == 0) return 0;
  const auto component = [alpha](std::uint32_t value) {
    const std::uint32_t product = value * alpha + 128;
    return (product + (product >> 8)) >> 8;
  };
  return alpha << 24 | component(pixel[0]) << 16 | component(pixel[1]) << 8 | component(pixel[2]);
}

Result<Pixels> pixels_from(const GdkPixbuf* pixbuf) {
  const int channels = gdk_pixbuf_get_n_channels(pixbuf);
  const bool has_alpha = gdk_pixbuf_get_has_alpha(pixbuf) != FALSE;
  if (gdk_pixbuf_get_bits_per_sample(pixbuf) != 8 || channels != (has_alpha ? 4 : 3)) {
    return Error{"the image has a kind of pixel that is not known here"};
  }
  auto pixels = Pixels::create(gdk_pixbuf_get_width(pixbuf), gdk_pixbuf_get_height(pixbuf));
  if (!pixels) return pixels;
  const MutablePixelView view = pixels->mutable_view();
  const guint8* bytes = gdk_pixbuf_read_pixels(pixbuf);
  for (int y = 0; y < view.height; ++y) {
    const guint8* in = bytes + static_cast<std::ptrdiff_t>(y) * gdk_pixbuf_get_rowstride(pixbuf);
    std::uint32_t* out = view.row(y);
    for (int x = 0; x < view.width; ++x, in += channels) out[x] = premultiplied(in, has_alpha);
  }
  return pixels;
}

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
  GError* error = nullptr;
  const GObjectRef<GdkPixbufLoader> loader(gdk_pixbuf_loader_new_with_type(header->format, &error));
  if (loader == nullptr) return decode_error(error);
  g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(refuse_other_size), &*header);

  const bool written = gdk_pixbuf_loader_write(loader.get(), reinterpret_cast<const guchar*>(bytes.data()),
                                               bytes.size(), &error) != FALSE;
  // The loader is closed after a failed write too, or it complains when it dies; the first error is the one
  // told.
  GError* close_error = nullptr;
  const bool closed = gdk_pixbuf_loader_close(loader.get(), &close_error) != FALSE;
  if (!written) {
    const GErrorOwner ignored(close_error);
    return decode_error(error);
  }
  if (!closed) return decode_error(close_error);
  GdkPixbuf* pixbuf = gdk_pixbuf_loader_get_pixbuf(loader.get());
  if (pixbuf == nullptr) return decode_error(nullptr);

  auto pixels = pixels_from(pixbuf);
  if (!pixels) return pixels.error();
  const char* exif = gdk_pixbuf_get_option(pixbuf, "orientation");
  const Orientation orientation = orientation_from_exif(exif != nullptr ? std::atoi(exif) : 1);
  return Image(std::make_shared<const Pixels>(*std::move(pixels)), scale, orientation);
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
