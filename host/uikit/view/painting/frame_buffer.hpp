// host/uikit/view/painting/frame_buffer.hpp: the screen's pixels, kept from frame to frame.
#pragma once

#include <optional>
#include <vector>

#include "host/core/result.hpp"
#include "host/graphics/canvas.hpp"
#include "host/uikit/view/painting/damage.hpp"
#include "host/uikit/view/session.hpp"

namespace wispen::uikit {

/// All visible windows, painted over each other; only what changed is painted again.
class FrameBuffer {
 public:
  explicit FrameBuffer(Session& session) : session_(session) {}

  /// Lays out and paints what changed since the last call. The rectangles that did, in points; none when the
  /// picture stayed. Fails for a screen that cannot be made.
  Result<std::vector<Rect>> update();
  /// Pixels a point in place of the device's, for a window that shows it larger or smaller; the views stay
  /// where the device has them. 0 for the device's own.
  void set_scale(double scale) { wanted_scale_ = scale; }
  /// All of it, next time.
  void forget() { canvas_.reset(); }
  /// Whether update() would paint.
  bool stale() const;
  graphics::PixelView pixels() const { return canvas_->pixels(); }
  double scale() const { return canvas_ ? canvas_->scale() : 1; }

 private:
  /// Whether the canvas is what it was; makes a new one otherwise.
  Result<bool> fit(const Rect& screen);
  double pixels_a_point() const;
  bool stacking_changed();
  void add_ring(DamageList& damage);

  Session& session_;
  double wanted_scale_ = 0;
  std::optional<graphics::Canvas> canvas_;
  Size painted_size_;                  // points; the canvas's own is rounded up to whole pixels
  std::vector<const void*> stacking_;  // of the windows that were shown; only compared
  Rect ring_;                          // around the focus, where it was shown
};

/// One picture of the screen as it is now, at the device's scale or another (0.5 to 4). Nothing that a window
/// keeps is touched.
Result<graphics::Image> take_picture(Session& session, double scale = 0);

}  // namespace wispen::uikit
