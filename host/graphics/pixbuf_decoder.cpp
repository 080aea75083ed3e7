// host/graphics/pixbuf_decoder.cpp: pictures of every kind that the drawing library reads.

#include "host/graphics/pixbuf_decoder.hpp"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <cstdlib>
#include <string>
#include <utility>

#include "host/graphics/gobject_ref.hpp"
#include "host/graphics/premultiply.hpp"

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
    for (int x = 0; x < view.width; ++x, in += channels) {
      out[x] = premultiplied(has_alpha ? in[3] : 255, in[0], in[1], in[2]);
    }
  }
  return pixels;
}

}  // namespace

Result<PixbufPicture> decode_with_pixbuf(std::string_view bytes, const ImageHeader& header) {
  GError* error = nullptr;
  const GObjectRef<GdkPixbufLoader> loader(gdk_pixbuf_loader_new_with_type(header.format, &error));
  if (loader == nullptr) return decode_error(error);
  g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(refuse_other_size),
                   const_cast<ImageHeader*>(&header));

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
  return PixbufPicture{*std::move(pixels), orientation};
}

}  // namespace wispen::graphics
