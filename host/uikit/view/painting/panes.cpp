// host/uikit/view/painting/panes.cpp: views that show what lies behind them, softened.

#include "host/uikit/view/painting/panes.hpp"

#include "host/uikit/view/layer.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

std::vector<objc::Unowned<UIView>>& all_panes() {
  static std::vector<objc::Unowned<UIView>> all;
  return all;
}

}  // namespace

void paint_pane(const UIView& view, graphics::Canvas& canvas, const Rect& bounds,
                const graphics::Material& material) {
  graphics::Material own = material;
  own.bounded = true;
  const CALayer& layer = View::of(view).layer_if_made();
  const double radius = layer ? Layer::of(layer).style().corner_radius : 0;
  canvas.draw_material(
      radius > 0 ? graphics::Path::rounded_rect(bounds, radius) : graphics::Path::rect(bounds), own);
}

void note_pane(const UIView& view) {
  auto& all = all_panes();
  std::erase_if(all, [&](const objc::Unowned<UIView>& known) { return known.refers_to(view); });
  if (View::of(view).window()) all.emplace_back(view);
}

std::vector<Rect> panes_in(const UIWindow& window) {
  std::vector<Rect> found;
  for (const objc::Unowned<UIView>& pane : all_panes()) {
    const UIView view = pane.get();
    const PaintRecord& record = View::of(view).record();
    if (View::of(view).window() == window && record.shown && !record.seen.empty()) {
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
