// host/animation/interpolation.hpp: values between two others.
#pragma once

#include "host/geometry/geometry.hpp"

namespace wispen::animation {

/// `from` at 0 and `to` at 1, both exactly; progress beyond them goes on in a straight line, as springs need.
inline double interpolated(double from, double to, double progress) {
  return progress == 1 ? to : from + (to - from) * progress;
}

inline Point interpolated(const Point& from, const Point& to, double progress) {
  return {interpolated(from.x, to.x, progress), interpolated(from.y, to.y, progress)};
}

inline Size interpolated(const Size& from, const Size& to, double progress) {
  return {interpolated(from.width, to.width, progress), interpolated(from.height, to.height, progress)};
}

inline Rect interpolated(const Rect& from, const Rect& to, double progress) {
  return {interpolated(from.origin, to.origin, progress), interpolated(from.size, to.size, progress)};
}

}  // namespace wispen::animation
