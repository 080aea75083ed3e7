// host/animation/timing_curve.hpp: from the fraction of time that has passed to the fraction of the way.
#pragma once

namespace wispen::animation {

/// The platform's values.
enum class NamedCurve { EaseInOut = 0, EaseIn = 1, EaseOut = 2, Linear = 3 };

/// A cubic Bezier curve from (0, 0) to (1, 1), time along x and progress along y.
class TimingCurve {
 public:
  /// The control points' x are brought into 0 to 1, so that there is one progress for every time.
  TimingCurve(double x1, double y1, double x2, double y2);
  explicit TimingCurve(NamedCurve curve);

  /// Progress at that fraction of the duration: 0 up to its begin, 1 from its end on.
  double progress(double fraction) const;

 private:
  double x1_;
  double y1_;
  double x2_;
  double y2_;
};

}  // namespace wispen::animation
