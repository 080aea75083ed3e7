#include "host/uikit/containers/tables/scroll_motion.hpp"

#include <cmath>

#include "host/animation/interpolation.hpp"
#include "host/animation/timing_curve.hpp"

namespace wispen::uikit {

namespace {

// The platform's normal deceleration keeps this part of the speed every millisecond.
constexpr double kDeceleration = 0.998;
constexpr double kRubber = 0.55;  // how much a finger still moves content beyond its ends
constexpr double kSpringSeconds = 0.4;

}  // namespace

double offset_under_finger(double wanted, const ScrollRange& range, double visible) {
  const double resting = range.nearest(wanted);
  const double over = wanted - resting;
  if (over == 0 || !range.bounces) return resting;
  const double room = std::max(1.0, visible);
  const double given = (1 - 1 / (std::abs(over) * kRubber / room + 1)) * room;
  return resting + std::copysign(given, over);
}

ScrollMotion::Step ScrollMotion::step(double offset, const ScrollRange& range) {
  if (spring_seconds_ < 0 && !range.holds(offset)) {
    spring_seconds_ = 0;
    spring_from_ = offset;
  }
  if (spring_seconds_ >= 0) {
    spring_seconds_ += kFrame;
    static const animation::TimingCurve kEaseOut(animation::NamedCurve::EaseOut);
    const double progress = kEaseOut.progress(std::min(1.0, spring_seconds_ / kSpringSeconds));
    return {animation::interpolated(spring_from_, range.nearest(offset), progress), progress >= 1};
  }
  double next = offset + velocity_ * kFrame;
  velocity_ *= std::pow(kDeceleration, kFrame * 1000);
  // Thrown over an end it goes a little beyond, and the spring takes over.
  if (!range.bounces) next = range.nearest(next);
  return {next, std::abs(velocity_) <= kSlowest && range.holds(next)};
}

}  // namespace wispen::uikit
