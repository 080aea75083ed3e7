// host/uikit/view/painting/damage.hpp: which parts of the screen the next frame has to paint.
#pragma once

#include <vector>

#include "host/geometry/geometry.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

/// Rectangles of whole pixels that hold all that was added, few enough to be painted one by one. They may
/// overlap.
class DamageList {
 public:
  /// `scale` is the pixels of a point, `screen` what there is, in points.
  DamageList(double scale, const Rect& screen) : scale_(scale), screen_(screen) {}

  void add(const Rect& rect);
  /// Every rectangle that touches a pane is made to hold it whole: its pixels follow from all that is behind.
  void grow_around(const std::vector<Rect>& panes);
  const std::vector<Rect>& rects() const { return rects_; }
  const Rect& screen() const { return screen_; }

 private:
  Rect on_pixels(const Rect& rect) const;
  void merge(Rect rect);
  void limit();

  double scale_;
  Rect screen_;
  std::vector<Rect> rects_;
};

/// Adds what has changed in a window since it was last asked, in the screen's coordinates, and records where
/// its views are seen from now on.
void collect_damage(const UIWindow& window, DamageList& damage);

/// Whether collect_damage() has anything to look at.
bool has_marks(const UIWindow& window);

/// What the view showed is uncovered: it leaves its place in the picture, with all in it.
void leave_picture(const UIView& view);

}  // namespace wispen::uikit
