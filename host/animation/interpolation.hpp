// host/animation/interpolation.hpp: values between two others.
#pragma once

#include "host/layout/geometry.hpp"

namespace wispen::animation {

/// `from` at 0 and `to` at 1, both exactly; progress beyond them goes on in a straight line, as springs need.
inline double interpolated(double from, double to, double progress) {
  return progress == 1 ? to : from + (to - from) * progress;
}

inline layout::Point interpolated(const layout::Point& from, const layout::Point& to, double progress) {
  return {interpolated(from.x, to.x, progress), interpolated(from.y, to.y, progress)};
}

inline layout::Size interpolated(const layout::Size& from, const layout::Size& to, double progress) {
  return {interpolated(from.width, to.width, progress), interpolated(from.height, to.height, progress)};
}

inline layout::Rect interpolated(const layout::Rect& from, const layout::Rect& to, double progress) {
  return {interpolated(from.x, to.x, progress), interpolated(from.y, to.y, progress),
          interpolated(from.width, to.width, progress), interpolated(from.height, to.height, progress)};
}

}  // namespace wispen::animation
