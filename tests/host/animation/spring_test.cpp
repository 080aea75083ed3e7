// tests/host/animation/spring_test.cpp: springs from 0 to 1, solved in closed form.

#include "host/animation/spring.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace wispen::animation {
namespace {

/// The same motion in small steps, as an answer that owes nothing to the closed form.
double stepped(double mass, double stiffness, double damping, double velocity, double seconds) {
  const int steps = 20'000;
  const double dt = seconds / steps;
  double x = -1;
  double v = velocity;
  const auto acceleration = [&](double at, double speed) {
    return (-stiffness * at - damping * speed) / mass;
  };
  for (int i = 0; i < steps; ++i) {
    const double v1 = v, a1 = acceleration(x, v1);
    const double v2 = v + a1 * dt / 2, a2 = acceleration(x + v1 * dt / 2, v2);
    const double v3 = v + a2 * dt / 2, a3 = acceleration(x + v2 * dt / 2, v3);
    const double v4 = v + a3 * dt, a4 = acceleration(x + v3 * dt, v4);
    x += (v1 + 2 * v2 + 2 * v3 + v4) * dt / 6;
    v += (a1 + 2 * a2 + 2 * a3 + a4) * dt / 6;
  }
  return 1 + x;
}

TEST(Spring, MovesAsTheEquationOfMotionSays) {
  for (const double damping : {1.0, 10.0, 20.0, 20.000001, 45.0}) {
    for (const double velocity : {0.0, 8.0, -3.0}) {
      const Spring spring = Spring::of_mass(1, 100, damping, velocity);
      for (const double seconds : {0.05, 0.3, 1.0}) {
        EXPECT_NEAR(spring.progress(seconds), stepped(1, 100, damping, velocity, seconds), 1e-7)
            << damping << ' ' << velocity << ' ' << seconds;
      }
    }
  }
}

TEST(Spring, RestsAfterItsDuration) {
  for (const double duration : {0.2, 0.5, 2.0}) {
    for (const double ratio : {0.2, 0.5, 0.8, 1.0}) {
      for (const double velocity : {0.0, 5.0, -5.0}) {
        const Spring spring = Spring::lasting(duration, ratio, velocity);
        EXPECT_EQ(spring.progress(0), 0);
        for (int i = 0; i < 100; ++i) {
          ASSERT_NEAR(spring.progress(duration * (1 + i / 50.0)), 1, 0.00101);
        }
        EXPECT_LE(spring.settling_time(), duration * 1.001);
        // It also uses its time: half of it is not enough.
        EXPECT_GT(spring.settling_time(), duration / 2);
      }
    }
  }
}

TEST(Spring, SwingsBeyondUnlessItIsDampedCritically) {
  const auto highest = [](const Spring& spring) {
    double most = 0;
    for (int i = 0; i <= 1000; ++i) most = std::max(most, spring.progress(i / 1000.0));
    return most;
  };
  EXPECT_GT(highest(Spring::lasting(1, 0.3, 0)), 1.3);
  EXPECT_GT(highest(Spring::lasting(1, 0.7, 0)), 1.01);
  EXPECT_LE(highest(Spring::lasting(1, 1, 0)), 1);
}

TEST(Spring, StartsWithItsVelocity) {
  const Spring spring = Spring::lasting(1, 0.5, 3);
  EXPECT_NEAR(spring.progress(1e-6) / 1e-6, 3, 1e-3);
}

TEST(Spring, StaysFiniteWithNumbersThatAreNone) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double bad : {nan, infinity, -infinity, 0.0, -1.0}) {
    for (const Spring& spring : {Spring::of_mass(bad, bad, bad, bad), Spring::lasting(bad, bad, bad)}) {
      for (const double seconds : {0.0, 0.5, 1e9, infinity, nan}) {
        EXPECT_TRUE(std::isfinite(spring.progress(seconds)));
      }
      EXPECT_TRUE(std::isfinite(spring.settling_time()));
    }
  }
}

}  // namespace
}  // namespace wispen::animation
