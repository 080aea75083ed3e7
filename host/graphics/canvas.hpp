// host/graphics/canvas.hpp: what views are painted on.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/core/result.hpp"
#include "host/geometry/content_mode.hpp"
#include "host/geometry/geometry.hpp"
#include "host/graphics/appearance.hpp"
#include "host/graphics/colour.hpp"
#include "host/graphics/image.hpp"
#include "host/graphics/material.hpp"
#include "host/graphics/path.hpp"
#include "host/graphics/pixels.hpp"
#include "host/graphics/text_layout.hpp"

using cairo_t = struct _cairo;  // NOLINT(bugprone-reserved-identifier): the library chose it

namespace wispen::graphics {

struct StrokeStyle {
  double width = 1;  ///< points, half on either side of the path
  bool round_caps = false;
  std::vector<double> dashes = {};  ///< lengths on and off, in points; none for a whole line
};

struct GradientStop {
  double place = 0;  ///< 0 at the start, 1 at the end
  Colour colour;
};

struct Shadow {
  Colour colour;
  double sigma = 0;  ///< of the blur, in points
  Size offset;
};

/// Draws in points, y downwards, onto pixels at a scale. Colours that differ by appearance are resolved when
/// they are drawn. Drawing outside the clip costs next to nothing. A canvas belongs to one thread.
class Canvas {
 public:
  /// Over transparent pixels of its own, the size rounded up to whole ones. Fails for sizes that cannot be
  /// made.
  static Result<Canvas> create(Size size, double scale, Appearance appearance = Appearance::Light);
  /// Over pixels of the caller, which must outlive the canvas and keep what they held.
  static Result<Canvas> over(const MutablePixelView& pixels, double scale,
                             Appearance appearance = Appearance::Light);
  Canvas(Canvas&&) noexcept;
  Canvas& operator=(Canvas&&) noexcept;
  ~Canvas();

  Size size() const;
  double scale() const;
  Appearance appearance() const;
  void set_appearance(Appearance appearance);

  /// The clip and the transform are put back by restore(); appearance too. What is left open is closed when
  /// the pixels are asked for no more.
  void save();
  void restore();
  void transform(const AffineTransform& transform);
  void translate(double dx, double dy) { transform(AffineTransform::translation(dx, dy)); }
  void clip(const Rect& rect);
  void clip(const Path& path);
  /// Around all that can still be drawn on.
  Rect clip_bounds() const;
  bool shows(const Rect& rect) const { return clip_bounds().intersects(rect); }

  /// What follows is drawn apart, and laid over the rest with this opacity at end_group(). Groups nest.
  void begin_group();
  /// The same for drawing that stays within that rectangle: the group is no larger.
  void begin_group(const Rect& around);
  void end_group(double alpha);

  /// Makes the clip transparent.
  void clear();
  void fill(const Rect& rect, const Colour& colour);
  void fill(const Path& path, const Colour& colour);
  void fill_gradient(const Path& path, Point from, Point to, const std::vector<GradientStop>& stops);
  void stroke(const Path& path, const Colour& colour, const StrokeStyle& style);
  /// Only the shadow; what throws it is drawn over it.
  void draw_shadow(const Path& path, const Shadow& shadow);
  /// Replaces what was drawn inside the path by what the material makes of it.
  void draw_material(const Path& path, const Material& material);

  /// Fills the rectangle; a resizable image keeps its caps, others are scaled. Stencils take `tint`, or
  /// black.
  void draw(const Image& image, const Rect& where, const std::optional<Colour>& tint = std::nullopt);
  /// Lays it into the box and clips nothing.
  void draw(const Image& image, const Rect& box, ContentMode mode,
            const std::optional<Colour>& tint = std::nullopt) {
    draw(image, content_rect(mode, image.size(), box), tint);
  }
  /// The layout's box with its top left corner at `origin`. Runs without a colour of their own take `colour`.
  void draw(const TextLayout& text, Point origin, const Colour& colour);

  /// All that was drawn, down to the last call. Open groups are not in it.
  PixelView pixels() const;
  /// A copy of that.
  Result<Image> make_image() const;

  /// For painting that has no verb here. State changed on it must be put back.
  cairo_t* native() const;

 private:
  struct State;
  explicit Canvas(std::unique_ptr<State> state);
  static Result<Canvas> with_state(std::unique_ptr<State> state);
  void set_source(const Colour& colour);
  void add_path(const Path& path);
  void draw_pixels(const PixelsRef& pixels, const Rect& where, const std::optional<Colour>& tint);
  void draw_resizable(const Image& image, const Rect& where, const std::optional<Colour>& tint);

  std::unique_ptr<State> state_;
};

}  // namespace wispen::graphics
