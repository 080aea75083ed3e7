// host/uikit/view/painting/frame_buffer.cpp: the screen's pixels, kept from frame to frame.

#include "host/uikit/view/painting/frame_buffer.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/application.hpp"
#include "host/uikit/view/painting/damage.hpp"
#include "host/uikit/view/painting/focus_ring.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/painting/panes.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

double FrameBuffer::pixels_a_point() const {
  return wanted_scale_ > 0 ? wanted_scale_ : display_settings().scale;
}

bool FrameBuffer::stale() const {
  if (!canvas_ || canvas_->scale() != pixels_a_point() || session_.animations().active()) return true;
  return std::ranges::any_of(Application::shared().windows(), [](const UIWindow& window) {
    const View& view = View::of(window);
    return has_marks(window) || (!view.isHidden() && view.awaits_layout());
  });
}

Result<bool> FrameBuffer::fit(const Rect& screen) {
  const DisplaySettings settings = display_settings();
  const double scale = pixels_a_point();
  if (canvas_ && painted_size_ == screen.size && canvas_->scale() == scale &&
      canvas_->appearance() == settings.appearance) {
    return true;
  }
  auto canvas = graphics::Canvas::create(screen.size, scale, settings.appearance);
  if (!canvas) return canvas.error();
  canvas_ = *std::move(canvas);
  painted_size_ = screen.size;
  return false;
}

bool FrameBuffer::stacking_changed() {
  std::vector<const void*> order;
  for (const UIWindow& window : Application::shared().windows()) {
    if (!window.isHidden()) order.push_back(objc::borrow(window));
  }
  return std::exchange(stacking_, order) != order;
}

void FrameBuffer::add_ring(DamageList& damage) {
  const Rect ring = focus_ring_place();
  if (ring == ring_) return;
  damage.add(ring_);
  damage.add(ring);
  ring_ = ring;
}

Result<std::vector<Rect>> FrameBuffer::update() {
  const Rect screen{{0, 0}, session_.device().size()};
  const auto fits = fit(screen);
  if (!fits) return fits.error();
  Application::shared().lay_out_windows();
  session_.animations().mark_moving_views();
  DamageList damage(canvas_->scale(), screen);
  std::vector<Rect> panes;
  const std::vector<UIWindow> windows = Application::shared().windows();
  for (const UIWindow& window : windows) {
    collect_damage(window, damage);
    std::ranges::copy(panes_in(window), std::back_inserter(panes));
  }
  add_ring(damage);
  const bool stacked = stacking_changed();
  if (!*fits || stacked) damage.add(screen);
  damage.grow_around(panes);
  for (const Rect& rect : damage.rects()) paint_part(windows, *canvas_, rect);
  return damage.rects();
}

Result<graphics::Image> take_picture(Session& session, double scale) {
  const DisplaySettings settings = display_settings();
  auto canvas = graphics::Canvas::create(session.device().size(), scale > 0 ? scale : settings.scale,
                                         settings.appearance);
  if (!canvas) return canvas.error();
  Application::shared().lay_out_windows();
  for (const UIWindow& window : Application::shared().windows()) paint_view(window, *canvas);
  return canvas->make_image();
}

}  // namespace wispen::uikit
