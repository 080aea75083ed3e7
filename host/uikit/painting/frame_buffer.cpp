// host/uikit/painting/frame_buffer.cpp: the screen's pixels, kept from frame to frame.

#include "host/uikit/painting/frame_buffer.hpp"

#include <algorithm>

#include "host/uikit/painting/painter.hpp"
#include "host/uikit/painting/panes.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/views/application.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

namespace {

void paint_windows(graphics::Canvas& canvas) {
  for (const Window& window : Application::shared().windows()) paint_view(window, canvas);
}

void add(std::vector<Rect>& all, const Rect& rect) {
  for (auto known = all.begin(); known != all.end();) {
    if (known->contains(rect)) return;
    known = rect.contains(*known) ? all.erase(known) : known + 1;
  }
  all.push_back(rect);
}

}  // namespace

bool FrameBuffer::stale() const {
  if (!canvas_ || session_.animations().active()) return true;
  return std::ranges::any_of(Application::shared().windows(), [](const Window& window) {
    const ViewState& state = window.View::parts();
    return !state.hidden && (window.damaged() || state.needs_layout || state.subtree_needs_layout);
  });
}

Result<std::vector<Rect>> FrameBuffer::update() {
  const DisplaySettings settings = display_settings();
  const Rect screen{{0, 0}, session_.device().size()};
  const double scale = wanted_scale_ > 0 ? wanted_scale_ : settings.scale;
  const bool fits = canvas_ && painted_size_ == screen.size && canvas_->scale() == scale &&
                    canvas_->appearance() == settings.appearance;
  if (!fits) {
    auto canvas = graphics::Canvas::create(screen.size, scale, settings.appearance);
    if (!canvas) return canvas.error();
    canvas_ = *std::move(canvas);
    painted_size_ = screen.size;
  }
  Application::shared().lay_out_windows();
  std::vector<Rect> changed;
  // What moves now was somewhere else in the last frame; where, only that frame knew.
  const bool moving = session_.animations().active();
  session_.animations().mark_moving_views();
  for (const Window& window : Application::shared().windows()) {
    const Rect frame = window.frame();
    const std::vector<Rect> panes = panes_in(window);
    for (const Rect& rect : window.take_damage()) {
      add(changed, around_panes(rect, panes)
                       .offset(frame.min_x(), frame.min_y())
                       .pixel_aligned(scale)
                       .intersection(screen));
    }
  }
  if (!fits || moving) changed = {screen};
  for (const Rect& rect : changed) {
    canvas_->save();
    canvas_->clip(rect);
    canvas_->clear();
    paint_windows(*canvas_);
    canvas_->restore();
  }
  return changed;
}

Result<graphics::Image> take_picture(Session& session, double scale) {
  const DisplaySettings settings = display_settings();
  auto canvas = graphics::Canvas::create(session.device().size(), scale > 0 ? scale : settings.scale,
                                         settings.appearance);
  if (!canvas) return canvas.error();
  Application::shared().lay_out_windows();
  paint_windows(*canvas);
  return canvas->make_image();
}

}  // namespace wispen::uikit
