// host/uikit/painting/panes.cpp: views that show what lies behind them, softened.

#include "host/uikit/painting/panes.hpp"

#include "host/uikit/views/view_state.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::uikit {

namespace {

std::vector<objc::Unowned<View>>& all_panes() {
  static std::vector<objc::Unowned<View>> all;
  return all;
}

}  // namespace

void paint_pane(const View& view, graphics::Canvas& canvas, const Rect& bounds,
                const graphics::Material& material) {
  graphics::Material own = material;
  own.bounded = true;
  const Layer& layer = view.parts().layer;
  const double radius = layer ? layer.style().corner_radius : 0;
  canvas.draw_material(
      radius > 0 ? graphics::Path::rounded_rect(bounds, radius) : graphics::Path::rect(bounds), own);
}

void note_pane(const View& view) {
  auto& all = all_panes();
  std::erase_if(all, [&](const objc::Unowned<View>& known) { return known.refers_to(view); });
  if (view.window()) all.emplace_back(view);
}

std::vector<Rect> panes_in(const Window& window) {
  std::vector<Rect> found;
  for (const objc::Unowned<View>& pane : all_panes()) {
    const View view = pane.get();
    const PaintRecord& record = view.parts().record;
    if (view.window() == window && record.shown && !record.seen.empty()) {
      found.push_back(record.place.apply(record.bounds));
    }
  }
  return found;
}

Rect around_panes(Rect rect, const std::vector<Rect>& panes) {
  for (bool grown = true; grown;) {
    grown = false;
    for (const Rect& pane : panes) {
      if (!pane.intersects(rect) || rect.contains(pane)) continue;
      rect = rect.united(pane);
      grown = true;
    }
  }
  return rect;
}

}  // namespace wispen::uikit
