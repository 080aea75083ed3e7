// host/uikit/containers/tables/scroll_motion.hpp: how content follows a finger beyond its ends, and goes on
// by itself when the finger has left it. Plain numbers: points and seconds along one axis.
#pragma once

#include <algorithm>

namespace wispen::uikit {

/// Where content may come to rest, and whether it may be seen beyond that.
struct ScrollRange {
  double least = 0;
  double most = 0;  ///< not below `least`
  bool bounces = true;

  double nearest(double offset) const { return std::clamp(offset, least, most); }
  bool holds(double offset) const { return nearest(offset) == offset; }
};

/// Where content stands whose finger wants it at `wanted`: the further beyond an end, the less it follows,
/// and never by more than what is seen of it (`visible`, in points).
double offset_under_finger(double wanted, const ScrollRange& range, double visible);

/// Content that moves by itself: thrown with a velocity that fades, and drawn back by a spring from beyond an
/// end.
class ScrollMotion {
 public:
  static constexpr double kFrame = 1.0 / 60;  ///< seconds of a step
  static constexpr double kSlowest = 15;      ///< points a second at which content stands still

  ScrollMotion() = default;
  explicit ScrollMotion(double velocity) : velocity_(velocity) {}

  struct Step {
    double offset = 0;
    bool finished = false;
  };
  /// Where the content stands one frame later. The range may change from step to step.
  Step step(double offset, const ScrollRange& range);

 private:
  double velocity_ = 0;  // points a second
  double spring_from_ = 0;
  double spring_seconds_ = -1;  // since it began; below 0 while there is none
};

}  // namespace wispen::uikit
