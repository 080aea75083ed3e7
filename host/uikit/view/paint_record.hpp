// host/uikit/view/paint_record.hpp: where a view was seen in the last frame, and what has changed since.
#pragma once

#include "host/uikit/view/geometry.hpp"

namespace wispen::uikit {

/// Only the frame that is painted knows where a view is seen: it may move, or lie in something that moves. So
/// a change is noted when it is made, and what it uncovers and covers is found out when the next frame is.
struct PaintRecord {
  // As of the last frame. Places are the screen's.
  bool shown = false;
  AffineTransform place;  // from the view's coordinates
  Rect bounds;
  double alpha = 1;
  Rect seen;    // around what it paints itself, as far as nothing around it clips that; empty where it is
                // nothing
  Rect around;  // that, and the same of all in it

  // Since then. A view with any of these has all views around it marked with `inside`.
  bool look = false;    // what it paints itself
  bool moved = false;   // its place, its opacity, or its clip
  bool whole = false;   // everything in it is to be painted again
  bool inside = false;  // some view in it has a mark

  bool marked() const { return look || moved || whole || inside; }
  void clear_marks() { look = moved = whole = inside = false; }
};

}  // namespace wispen::uikit
