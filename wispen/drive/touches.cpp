// wispen/drive/touches.cpp: what a finger and a wheel do, on the host's driven clock.

#include "wispen/drive/touches.hpp"

#include "host/wispen_host.h"
#include "wispen/drive/views.hpp"

namespace wispen::program {

namespace {

constexpr double kLongestSettling = 20;
constexpr double kFrame = 1.0 / 60;
constexpr int kDragFrames = 12;

}  // namespace

Result<void> done_or_why(int status) {
  if (status == 0) return Error{wispen_host_last_error()};
  return {};
}

Result<void> settle() { return done_or_why(wispen_host_settle(kLongestSettling)); }

Result<void> touch_at(CGPoint point, double seconds) {
  if (wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, point.x, point.y) == 0 ||
      wispen_host_advance(seconds) == 0 ||
      wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, point.x, point.y) == 0) {
    return Error{wispen_host_last_error()};
  }
  return settle();
}

Result<void> drag_between(CGPoint from, CGPoint to) {
  int status = wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, from.x, from.y);
  for (int i = 1; i <= kDragFrames && status != 0; ++i) {
    const double part = static_cast<double>(i) / kDragFrames;
    status = wispen_host_advance(kFrame);
    if (status == 0) break;
    status = wispen_host_touch(WISPEN_HOST_TOUCH_MOVED, from.x + (to.x - from.x) * part,
                               from.y + (to.y - from.y) * part);
  }
  if (status == 0 || wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, to.x, to.y) == 0) {
    return Error{wispen_host_last_error()};
  }
  return settle();
}

bool turn_wheel(double points) {
  const auto screen = wispen_host_screen();
  const CGPoint over{screen.width / 2, screen.height * 0.6};
  UIScrollView scroll;
  for (UIView view = view_at(over); view && !scroll; view = view.superview()) {
    scroll = objc::cast_or_nil<UIScrollView>(view);
  }
  const CGPoint before = scroll.contentOffset();
  wispen_host_wheel(over.x, over.y, points);
  wispen_host_settle(kLongestSettling);
  return !(scroll.contentOffset() == before);
}

}  // namespace wispen::program
