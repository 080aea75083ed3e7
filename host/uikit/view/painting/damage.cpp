// host/uikit/view/painting/damage.cpp: which parts of the screen the next frame has to paint.

#include "host/uikit/view/painting/damage.hpp"

#include <algorithm>

#include "host/uikit/view/layer.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/painting/panes.hpp"
#include "host/uikit/view/view.hpp"
#include "host/uikit/view/window.hpp"

namespace wispen::uikit {

namespace {

// In square points: what one more walk through the views costs, in pixels that could be painted in its place.
constexpr double kCostOfRectangle = 1500;
constexpr std::size_t kMostRectangles = 12;

double area(const Rect& rect) { return rect.empty() ? 0 : rect.width() * rect.height(); }

/// What is painted in vain if the two become one.
double waste(const Rect& one, const Rect& other) {
  return area(one.united(other)) - area(one) - area(other) + area(one.intersection(other));
}

class Collector {
 public:
  explicit Collector(DamageList& damage) : damage_(damage) {}

  /// `above` leads from the superview's coordinates to the screen's. With `forced` something around the view
  /// has moved; with `repainted` all in it is painted again.
  void visit(View& view, const AffineTransform& above, const Rect& clip, bool forced, bool repainted) {
    PaintRecord& record = view.record();
    if (!forced && !repainted && !record.marked()) return;
    const double alpha = view.isHidden() ? 0 : view.presented_alpha();
    if (alpha < kInvisibleAlpha) {
      hide(view);
      record.clear_marks();
      return;
    }
    const Rect bounds = view.presented_bounds();
    const AffineTransform place = place_of(view, bounds).then(above);
    const bool moved = !record.shown || place != record.place || bounds != record.bounds;
    const bool faded = !record.shown || alpha != record.alpha;
    const CALayer& layer = view.layer_if_made();
    const bool rounded = view.clipsToBounds() && layer && Layer::of(layer).style().corner_radius > 0;
    // What is inside a rounded clip, or fades with its view, looks different although it stays where it is.
    const bool whole = repainted || record.whole || (record.shown && faded) || (rounded && moved);
    const Rect seen = place.apply(painted_extent(view, bounds)).intersection(clip);
    if (moved || faded || whole || record.look || seen != record.seen) {
      damage_.add(record.seen);
      damage_.add(seen);
    }
    const bool walk_all = forced || record.moved || moved;
    const AffineTransform inside = place;
    const Rect inner_clip = view.clipsToBounds() ? clip.intersection(place.apply(bounds)) : clip;
    record.shown = true;
    record.place = place;
    record.bounds = bounds;
    record.alpha = alpha;
    record.seen = seen;
    record.clear_marks();
    Rect around = seen;
    for (const UIView& handle : view.subviews()) {
      View& subview = View::of(handle);
      visit(subview, inside, inner_clip, walk_all, whole);
      around = around.united(subview.record().around);
    }
    record.around = around;
  }

  void hide(View& view) {
    PaintRecord& record = view.record();
    if (!record.shown) return;
    damage_.add(record.seen);
    record.shown = false;
    record.seen = record.around = {};
    for (const UIView& subview : view.subviews()) hide(View::of(subview));
  }

 private:
  static AffineTransform place_of(View& view, const Rect& bounds) {
    const Point center = view.presented_center();
    return AffineTransform::translation(-bounds.mid_x(), -bounds.mid_y())
        .then(view.presented_transform())
        .then(AffineTransform::translation(center.x, center.y));
  }

  DamageList& damage_;
};

void leave(Window& window, View& view) {
  PaintRecord& record = view.record();
  if (!record.shown) return;
  window.uncovered(record.seen);
  record.shown = false;
  record.seen = record.around = {};
  for (const UIView& subview : view.subviews()) leave(window, View::of(subview));
}

}  // namespace

Rect DamageList::on_pixels(const Rect& rect) const {
  return rect.empty() ? Rect{} : rect.pixel_aligned(scale_).intersection(screen_.pixel_aligned(scale_));
}

void DamageList::add(const Rect& rect) {
  const Rect whole = on_pixels(rect);
  if (!whole.empty()) merge(whole);
}

void DamageList::merge(Rect rect) {
  for (auto known = rects_.begin(); known != rects_.end();) {
    if (known->contains(rect)) return;
    if (waste(*known, rect) > kCostOfRectangle) {
      ++known;
      continue;
    }
    rect = rect.united(*known);
    rects_.erase(known);
    known = rects_.begin();  // the grown one may have reached others
  }
  rects_.push_back(rect);
  limit();
}

void DamageList::limit() {
  if (rects_.size() <= kMostRectangles) return;
  std::size_t first = 0;
  std::size_t second = 1;
  for (std::size_t i = 0; i < rects_.size(); ++i) {
    for (std::size_t j = i + 1; j < rects_.size(); ++j) {
      if (waste(rects_[i], rects_[j]) < waste(rects_[first], rects_[second])) {
        first = i;
        second = j;
      }
    }
  }
  const Rect both = rects_[first].united(rects_[second]);
  rects_.erase(rects_.begin() + static_cast<std::ptrdiff_t>(second));
  rects_.erase(rects_.begin() + static_cast<std::ptrdiff_t>(first));
  merge(both);
}

void DamageList::grow_around(const std::vector<Rect>& panes) {
  std::vector<Rect> whole;
  for (const Rect& pane : panes) whole.push_back(on_pixels(pane));
  for (bool grown = true; grown;) {
    grown = false;
    for (const Rect rect : std::vector<Rect>(rects_)) {
      const Rect wanted = around_panes(rect, whole);
      if (wanted == rect) continue;
      std::erase(rects_, rect);
      merge(wanted);
      grown = true;
    }
  }
}

void collect_damage(const UIWindow& window, DamageList& damage) {
  Collector(damage).visit(View::of(window), {}, damage.screen(), false, false);
  for (const Rect& rect : Window::of(window).take_damage()) damage.add(rect);
  // Over all views it shows the focus, which is nobody's own.
  PaintRecord& record = View::of(window).record();
  if (record.shown) record.around = record.around.united(record.place.apply(record.bounds));
}

bool has_marks(const UIWindow& window) {
  const View& view = View::of(window);
  return Window::of(window).damaged() ||
         ((view.record().shown || !view.isHidden()) && view.record().marked());
}

void leave_picture(const UIView& view) {
  View& leaving = View::of(view);
  if (const UIView window = leaving.window()) leave(Window::of(window.as<UIWindow>()), leaving);
}

}  // namespace wispen::uikit
