// tests/host/animation/timing_curve_test.cpp: from the fraction of time that has passed to the fraction of
// the way.

#include "host/animation/timing_curve.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "host/animation/interpolation.hpp"

namespace wispen::animation {
namespace {

constexpr NamedCurve kAll[] = {NamedCurve::EaseInOut, NamedCurve::EaseIn, NamedCurve::EaseOut,
                               NamedCurve::Linear};

TEST(TimingCurve, BeginsAtZeroAndEndsAtOneExactly) {
  for (const NamedCurve name : kAll) {
    const TimingCurve curve(name);
    EXPECT_EQ(curve.progress(0), 0);
    EXPECT_EQ(curve.progress(1), 1);
    EXPECT_EQ(curve.progress(-3), 0);
    EXPECT_EQ(curve.progress(7), 1);
    EXPECT_EQ(curve.progress(std::numeric_limits<double>::quiet_NaN()), 0);
  }
}

TEST(TimingCurve, NeverGoesBackwards) {
  for (const NamedCurve name : kAll) {
    const TimingCurve curve(name);
    double last = 0;
    for (int i = 1; i <= 10'000; ++i) {
      const double progress = curve.progress(i / 10'000.0);
      ASSERT_GT(progress, last);
      last = progress;
    }
  }
}

TEST(TimingCurve, IsTheStraightLineWhenLinear) {
  const TimingCurve curve(NamedCurve::Linear);
  for (const double t : {0.1, 0.25, 0.5, 0.9}) EXPECT_EQ(curve.progress(t), t);
}

TEST(TimingCurve, MeetsThePointsOfTheCurveItself) {
  // At parameter s both coordinates are known in closed form.
  const TimingCurve curve(NamedCurve::EaseInOut);
  for (int i = 1; i < 100; ++i) {
    const double s = i / 100.0;
    const double x = 3 * (1 - s) * (1 - s) * s * 0.42 + 3 * (1 - s) * s * s * 0.58 + s * s * s;
    const double y = 3 * (1 - s) * s * s + s * s * s;
    ASSERT_NEAR(curve.progress(x), y, 1e-12);
  }
  EXPECT_NEAR(curve.progress(0.5), 0.5, 1e-15);
}

TEST(TimingCurve, MirrorsEaseInIntoEaseOut) {
  const TimingCurve in(NamedCurve::EaseIn);
  const TimingCurve out(NamedCurve::EaseOut);
  for (int i = 1; i < 50; ++i) {
    const double t = i / 50.0;
    EXPECT_NEAR(in.progress(t), 1 - out.progress(1 - t), 1e-12);
    EXPECT_LT(in.progress(t), t);
  }
}

TEST(TimingCurve, SolvesCurvesThatStandUpright) {
  const TimingCurve curve(1, 0, 0, 1);  // its middle is vertical
  EXPECT_NEAR(curve.progress(0.5), 0.5, 1e-4);
  EXPECT_LT(curve.progress(0.499), 0.5);
  EXPECT_GT(curve.progress(0.501), 0.5);
}

TEST(TimingCurve, MayOvershootBetweenItsEnds) {
  const TimingCurve curve(0.3, 1.8, 0.6, 1);
  double largest = 0;
  for (int i = 0; i <= 100; ++i) largest = std::max(largest, curve.progress(i / 100.0));
  EXPECT_GT(largest, 1.05);
  EXPECT_EQ(curve.progress(1), 1);
}

TEST(TimingCurve, MakesSomethingOfNumbersThatAreNone) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  for (const TimingCurve& curve :
       {TimingCurve(nan, nan, nan, nan), TimingCurve(-5, infinity, 9, -infinity)}) {
    for (int i = 0; i <= 10; ++i) EXPECT_TRUE(std::isfinite(curve.progress(i / 10.0)));
  }
}

TEST(Interpolation, ReachesItsEndsExactly) {
  EXPECT_EQ(interpolated(0.1, 0.7, 0), 0.1);
  EXPECT_EQ(interpolated(0.1, 0.7, 1), 0.7);
  const Rect from{{1, 2}, {3, 4}};
  const Rect to{{3, 2}, {1, 8}};
  EXPECT_EQ(interpolated(from, to, 0.5), (Rect{{2, 2}, {2, 6}}));
  EXPECT_EQ(interpolated(from, to, 1), to);
  EXPECT_EQ(interpolated(Point{0, 0}, Point{2, 4}, 1.5), (Point{3, 6}));
  EXPECT_EQ(interpolated(Size{0, 0}, Size{2, 4}, 0.25), (Size{0.5, 1}));
}

}  // namespace
}  // namespace wispen::animation
