// host/animation/spring.cpp: springs from 0 to 1, solved in closed form.

#include "host/animation/spring.hpp"

#include <algorithm>
#include <cmath>

namespace wispen::animation {

namespace {

constexpr double kAtRest = 0.001;
constexpr double kLeast = 1e-4;
constexpr double kLongest = 3600;
// Nearer than this to the critical ratio the two general formulas lose their digits.
constexpr double kCritical = 1e-6;

double usable(double number, double least, double most) {
  return std::isnan(number) ? least : std::clamp(number, least, most);
}

/// The place in [low, high] where a falling function crosses `level`.
double crossing(const auto& falling, double level, double low, double high) {
  for (int i = 0; i < 100; ++i) {
    const double middle = (low + high) / 2;
    (falling(middle) > level ? low : high) = middle;
  }
  return high;
}

}  // namespace

Spring Spring::of_mass(double mass, double stiffness, double damping, double velocity) {
  const double m = usable(mass, kLeast, 1e9);
  const double k = usable(stiffness, kLeast, 1e9);
  const double c = usable(damping, 0, 1e9);
  return {std::sqrt(k / m), c / (2 * std::sqrt(k * m)),
          std::isnan(velocity) ? 0 : std::clamp(velocity, -1e6, 1e6)};
}

Spring Spring::lasting(double duration, double damping_ratio, double velocity) {
  const double seconds = usable(duration, kLeast, kLongest);
  Spring spring(1, usable(damping_ratio, 0.01, 1),
                std::isnan(velocity) ? 0 : std::clamp(velocity, -1e6, 1e6));
  spring.frequency_ = crossing(
      [&](double frequency) {
        spring.frequency_ = frequency;
        return spring.largest_distance(seconds);
      },
      kAtRest, kLeast, 1e4 / (seconds * spring.ratio_));
  return spring;
}

double Spring::progress(double seconds) const {
  if (!(seconds > 0)) return 0;
  const double w = frequency_;
  const double decay = ratio_ * w;
  double distance = 0;
  if (std::abs(ratio_ - 1) < kCritical) {
    distance = std::exp(-w * seconds) * (1 + (w - velocity_) * seconds);
  } else if (ratio_ < 1) {
    const double swing = w * std::sqrt(1 - ratio_ * ratio_);
    distance = std::exp(-decay * seconds) *
               (std::cos(swing * seconds) + (decay - velocity_) / swing * std::sin(swing * seconds));
  } else {
    const double spread = w * std::sqrt(ratio_ * ratio_ - 1);
    const double slow = decay - spread;
    const double fast = decay + spread;
    const double share = (fast - velocity_) / (fast - slow);
    distance = share * std::exp(-slow * seconds) + (1 - share) * std::exp(-fast * seconds);
  }
  return std::isfinite(distance) ? 1 - distance : 1;
}

double Spring::largest_distance(double seconds) const {
  const double w = frequency_;
  const double decay = ratio_ * w;
  if (std::abs(ratio_ - 1) < kCritical) {
    return std::exp(-w * seconds) * (1 + std::abs(w - velocity_) * seconds);
  }
  if (ratio_ < 1) {
    const double swing = w * std::sqrt(1 - ratio_ * ratio_);
    return std::exp(-decay * seconds) * std::hypot(1, (decay - velocity_) / swing);
  }
  const double spread = w * std::sqrt(ratio_ * ratio_ - 1);
  const double share = (decay + spread - velocity_) / (2 * spread);
  return (std::abs(share) + std::abs(1 - share)) * std::exp(-(decay - spread) * seconds);
}

double Spring::settling_time() const {
  if (largest_distance(kLongest) > kAtRest) return kLongest;
  // The bound of the critical spring rises before it falls; past its peak it only falls.
  const double peak = std::abs(ratio_ - 1) < kCritical ? 1 / frequency_ : 0;
  if (largest_distance(peak) <= kAtRest) return peak;
  return crossing([this](double seconds) { return largest_distance(seconds); }, kAtRest, peak, kLongest);
}

}  // namespace wispen::animation
