// host/layout/content_mode.cpp

#include "host/layout/content_mode.hpp"

#include <algorithm>

namespace wispen::layout {

namespace {

/// `across` and `down`: 0 at the near edge, 0.5 in the middle, 1 at the far edge.
Rect placed(const Rect& bounds, Size size, double across, double down) {
  return {bounds.x + (bounds.width - size.width) * across, bounds.y + (bounds.height - size.height) * down,
          size.width, size.height};
}

Rect scaled(const Rect& bounds, Size content, bool fill) {
  if (content.width <= 0 || content.height <= 0) return placed(bounds, {}, 0.5, 0.5);
  const double across = bounds.width / content.width;
  const double down = bounds.height / content.height;
  const double scale = fill ? std::max(across, down) : std::min(across, down);
  return placed(bounds, {content.width * scale, content.height * scale}, 0.5, 0.5);
}

}  // namespace

Rect content_rect(ContentMode mode, const Rect& bounds, Size content) {
  switch (mode) {
    case ContentMode::ScaleToFill:
    case ContentMode::Redraw:
      return bounds;
    case ContentMode::ScaleAspectFit:
      return scaled(bounds, content, false);
    case ContentMode::ScaleAspectFill:
      return scaled(bounds, content, true);
    case ContentMode::Center:
      return placed(bounds, content, 0.5, 0.5);
    case ContentMode::Top:
      return placed(bounds, content, 0.5, 0);
    case ContentMode::Bottom:
      return placed(bounds, content, 0.5, 1);
    case ContentMode::Left:
      return placed(bounds, content, 0, 0.5);
    case ContentMode::Right:
      return placed(bounds, content, 1, 0.5);
    case ContentMode::TopLeft:
      return placed(bounds, content, 0, 0);
    case ContentMode::TopRight:
      return placed(bounds, content, 1, 0);
    case ContentMode::BottomLeft:
      return placed(bounds, content, 0, 1);
    case ContentMode::BottomRight:
      return placed(bounds, content, 1, 1);
  }
  return bounds;
}

}  // namespace wispen::layout
