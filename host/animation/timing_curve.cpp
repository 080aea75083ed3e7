// host/animation/timing_curve.cpp: from the fraction of time that has passed to the fraction of the way.

#include "host/animation/timing_curve.hpp"

#include <algorithm>
#include <cmath>

namespace wispen::animation {

namespace {

struct Controls {
  double x1, y1, x2, y2;
};

Controls controls_of(NamedCurve curve) {
  switch (curve) {
    case NamedCurve::EaseInOut:
      return {0.42, 0, 0.58, 1};
    case NamedCurve::EaseIn:
      return {0.42, 0, 1, 1};
    case NamedCurve::EaseOut:
      return {0, 0, 0.58, 1};
    case NamedCurve::Linear:
      break;
  }
  return {0, 0, 1, 1};
}

/// One coordinate of the curve, whose ends are 0 and 1.
double at(double one, double two, double s) {
  const double rest = 1 - s;
  return 3 * rest * rest * s * one + 3 * rest * s * s * two + s * s * s;
}

double slope(double one, double two, double s) {
  const double rest = 1 - s;
  return 3 * rest * rest * one + 6 * rest * s * (two - one) + 3 * s * s * (1 - two);
}

double within_unit(double number) { return std::isnan(number) ? 0 : std::clamp(number, 0.0, 1.0); }

double finite(double number) { return std::isfinite(number) ? number : 0; }

}  // namespace

TimingCurve::TimingCurve(double x1, double y1, double x2, double y2)
    : x1_(within_unit(x1)), y1_(finite(y1)), x2_(within_unit(x2)), y2_(finite(y2)) {}

TimingCurve::TimingCurve(NamedCurve curve)
    : TimingCurve(controls_of(curve).x1, controls_of(curve).y1, controls_of(curve).x2,
                  controls_of(curve).y2) {}

double TimingCurve::progress(double fraction) const {
  if (!(fraction > 0)) return 0;
  if (fraction >= 1) return 1;
  if (x1_ == y1_ && x2_ == y2_) return fraction;
  // Newton's steps, and halves of the interval where these would leave it: time never runs backwards along
  // the curve, so that the interval always holds the answer.
  double low = 0;
  double high = 1;
  double s = fraction;
  for (int i = 0; i < 100 && high - low > 1e-15; ++i) {
    const double excess = at(x1_, x2_, s) - fraction;
    if (excess == 0) break;
    (excess > 0 ? high : low) = s;
    const double steepness = slope(x1_, x2_, s);
    const double newton = s - excess / steepness;
    s = steepness > 0 && newton > low && newton < high ? newton : (low + high) / 2;
  }
  return at(y1_, y2_, s);
}

}  // namespace wispen::animation
