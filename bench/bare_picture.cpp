// bench/bare_picture.cpp: starts the text library, draws one line, and writes a picture: nothing else.
//
//   bare_picture PIXELS WIDTH HEIGHT PNG
//
// PIXELS holds the picture as it lies in memory, 32 bits a pixel.

#include <pango/pangocairo.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

int main(int count, char** words) {
  if (count != 5) return 2;
  const int width = std::atoi(words[2]);
  const int height = std::atoi(words[3]);
  std::vector<unsigned char> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
  std::FILE* const file = std::fopen(words[1], "rb");
  if (file == nullptr || std::fread(pixels.data(), 1, pixels.size(), file) != pixels.size()) return 1;
  std::fclose(file);
  cairo_surface_t* const surface =
      cairo_image_surface_create_for_data(pixels.data(), CAIRO_FORMAT_ARGB32, width, height, width * 4);
  cairo_t* const cairo = cairo_create(surface);
  PangoLayout* const layout = pango_cairo_create_layout(cairo);
  PangoFontDescription* const font = pango_font_description_from_string("Inter 17");
  pango_layout_set_font_description(layout, font);
  pango_layout_set_text(layout, "Settings", -1);
  pango_cairo_show_layout(cairo, layout);
  const bool written = cairo_surface_write_to_png(surface, words[4]) == CAIRO_STATUS_SUCCESS;
  pango_font_description_free(font);
  g_object_unref(layout);
  cairo_destroy(cairo);
  cairo_surface_destroy(surface);
  return written ? 0 : 1;
}
