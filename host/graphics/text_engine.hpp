// host/graphics/text_engine.hpp: the fonts that text is drawn with, the same on every machine.
#pragma once

#include <pango/pango.h>

#include <string>

#include "host/core/result.hpp"
#include "host/graphics/font.hpp"
#include "host/graphics/gobject_ref.hpp"

namespace wispen::graphics {

/// How a stand-in face is bent towards the font that it stands for.
struct FaceAdjustment {
  double size = 1;      ///< factor that gives the platform font's height of capitals
  double tracking = 0;  ///< added after each character, as a fraction of the size
  double stem = 0;  ///< added to the thickness of strokes, as a fraction of the size; thinner when negative
};

/// Which of the installed fonts stands in for a font: Inter and, from 20 points, Inter Display for the system
/// font; TeX Gyre Heros for Helvetica Neue, its lighter and medium weights made from the regular outlines;
/// Noto and Droid faces for the scripts and emoji that these lack. Only files that this floor names are seen,
/// whatever else the machine has; nothing is hinted, and glyphs are placed at fractions of a pixel.
class TextEngine {
 public:
  /// The calling thread's own; everything made with it stays on that thread.
  static TextEngine& current();

  /// Fails with the names of the packages to install when a font is missing. Text is then drawn with what
  /// there is.
  static Result<void> check_fonts();

  PangoContext* context(PangoDirection direction) const;
  static PangoDescription description(const Font& font);
  static FaceAdjustment adjustment(const Font& font);

  TextEngine(const TextEngine&) = delete;
  TextEngine& operator=(const TextEngine&) = delete;

 private:
  TextEngine();

  GObjectRef<PangoFontMap> font_map_;
  GObjectRef<PangoContext> left_to_right_;
  GObjectRef<PangoContext> right_to_left_;
};

}  // namespace wispen::graphics
