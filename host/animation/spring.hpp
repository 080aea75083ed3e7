// host/animation/spring.hpp: springs from 0 to 1, solved in closed form.
#pragma once

namespace wispen::animation {

/// A damped spring that is released at 0 and comes to rest at 1. Every moment is computed by itself, so that
/// steps of any length give the same motion.
class Spring {
 public:
  /// By physics, as the platform's spring animation objects are. Velocity in ways a second, towards the rest
  /// position. Mass and stiffness below a ten-thousandth, and negative damping, are brought up to that and to
  /// 0.
  static Spring of_mass(double mass, double stiffness, double damping, double velocity);
  /// By its look: within a thousandth of the way at `duration` seconds, and ever closer after. A damping
  /// ratio of 1 or more never swings beyond the rest position unless thrown; it is brought into 0.01 to 1.
  static Spring lasting(double duration, double damping_ratio, double velocity);

  double progress(double seconds) const;
  /// From when on progress stays within a thousandth of 1 (an upper bound); 0 to 3600 seconds.
  double settling_time() const;
  double frequency() const { return frequency_; }
  double damping_ratio() const { return ratio_; }

 private:
  Spring(double frequency, double ratio, double velocity)
      : frequency_(frequency), ratio_(ratio), velocity_(velocity) {}
  double largest_distance(double seconds) const;

  double frequency_;  // undamped, radians a second
  double ratio_;
  double velocity_;
};

}  // namespace wispen::animation
