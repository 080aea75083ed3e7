// bench/bare_page.hpp: the shapes and texts of a page, drawn by the drawing library alone.
#pragma once

#include <cairo.h>

#include <memory>
#include <vector>

#include "host/graphics/canvas_state.hpp"
#include "host/graphics/text_layout.hpp"
#include "platform/UIKit.hpp"

namespace wispen::bench {

/// What a window shows, taken once: plain lists of rectangles and of text that is set already, without any
/// view. So it is what someone would write who draws this one page and nothing else.
class BarePage {
 public:
  explicit BarePage(const UIWindow& window);
  /// On pixels of its own, 780 by 1688.
  void paint() const;
  std::size_t shapes() const { return shapes_.size(); }
  std::size_t texts() const { return texts_.size(); }

 private:
  struct Colour {
    double red = 0, green = 0, blue = 0, alpha = 0;
  };
  struct Shape {
    CGRect rect;
    Colour colour;
    double radius = 0;
    NSUInteger corners = 0;
    bool shadow = false;
  };
  struct Text {
    std::shared_ptr<const graphics::TextLayout> set;
    CGPoint origin;
    Colour colour;
  };
  static Colour colour_from(const UIColor& colour);
  void take(const UIView& view, CGPoint origin);
  void take_text(const UILabel& label, CGPoint origin);
  void make_shadow();
  void paint(const Shape& shape) const;

  std::vector<Shape> shapes_;
  std::vector<Text> texts_;
  graphics::CairoSurface surface_;
  graphics::CairoSurface shadow_;  // of a switch's thumb, blurred once
  graphics::CairoContext cairo_;
};

}  // namespace wispen::bench
