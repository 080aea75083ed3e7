#include "host/graphics/content_mode.hpp"

#include <algorithm>

namespace wispen::graphics {

Rect content_rect(ContentMode mode, Size content, const Rect& box) {
  Size size = content;
  switch (mode) {
    case ContentMode::ScaleToFill:
    case ContentMode::Redraw:
      return box;
    case ContentMode::AspectFit:
    case ContentMode::AspectFill: {
      if (content.empty()) return box;
      const double across = box.width() / content.width;
      const double down = box.height() / content.height;
      const double factor = mode == ContentMode::AspectFit ? std::min(across, down) : std::max(across, down);
      size = {content.width * factor, content.height * factor};
      break;
    }
    default:
      break;
  }
  double x = box.mid_x() - size.width / 2;
  double y = box.mid_y() - size.height / 2;
  if (mode == ContentMode::Left || mode == ContentMode::TopLeft || mode == ContentMode::BottomLeft) {
    x = box.min_x();
  }
  if (mode == ContentMode::Right || mode == ContentMode::TopRight || mode == ContentMode::BottomRight) {
    x = box.max_x() - size.width;
  }
  if (mode == ContentMode::Top || mode == ContentMode::TopLeft || mode == ContentMode::TopRight) {
    y = box.min_y();
  }
  if (mode == ContentMode::Bottom || mode == ContentMode::BottomLeft || mode == ContentMode::BottomRight) {
    y = box.max_y() - size.height;
  }
  return {{x, y}, size};
}

}  // namespace wispen::graphics
