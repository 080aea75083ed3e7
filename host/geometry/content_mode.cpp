// host/geometry/content_mode.cpp: where content of one size lies in a box of another.

#include "host/geometry/content_mode.hpp"

#include <algorithm>

namespace wispen {

namespace {

/// `across` and `down`: 0 at the near edge, 0.5 in the middle, 1 at the far edge.
Rect placed(const Rect& box, Size size, double across, double down) {
  return {
      {box.min_x() + (box.width() - size.width) * across, box.min_y() + (box.height() - size.height) * down},
      size};
}

Rect scaled(const Rect& box, Size content, bool fill) {
  if (content.empty() || box.empty()) return placed(box, {}, 0.5, 0.5);
  const double across = box.width() / content.width;
  const double down = box.height() / content.height;
  const double scale = fill ? std::max(across, down) : std::min(across, down);
  return placed(box, {content.width * scale, content.height * scale}, 0.5, 0.5);
}

}  // namespace

Rect content_rect(ContentMode mode, Size content, const Rect& box) {
  switch (mode) {
    case ContentMode::ScaleToFill:
    case ContentMode::Redraw:
      return box;
    case ContentMode::AspectFit:
      return scaled(box, content, false);
    case ContentMode::AspectFill:
      return scaled(box, content, true);
    case ContentMode::Centre:
      return placed(box, content, 0.5, 0.5);
    case ContentMode::Top:
      return placed(box, content, 0.5, 0);
    case ContentMode::Bottom:
      return placed(box, content, 0.5, 1);
    case ContentMode::Left:
      return placed(box, content, 0, 0.5);
    case ContentMode::Right:
      return placed(box, content, 1, 0.5);
    case ContentMode::TopLeft:
      return placed(box, content, 0, 0);
    case ContentMode::TopRight:
      return placed(box, content, 1, 0);
    case ContentMode::BottomLeft:
      return placed(box, content, 0, 1);
    case ContentMode::BottomRight:
      return placed(box, content, 1, 1);
  }
  return box;
}

}  // namespace wispen
