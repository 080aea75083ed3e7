// tests/host/layout/autoresizing_test.cpp: frames that follow their superview's size without constraints.

#include "host/layout/autoresizing.hpp"

#include <gtest/gtest.h>

#include "tests/host/geometry/near_rect.hpp"

namespace wispen::layout {
namespace {

struct Case {
  unsigned mask;
  double x, width;  // of (20, 60) in 100 after it became 150
};

class EveryHorizontalMask : public testing::TestWithParam<Case> {};

TEST_P(EveryHorizontalMask, SharesGrowthInProportionOnEitherAxis) {
  const auto& [mask, x, width] = GetParam();
  EXPECT_THAT(autoresized({{20, 7}, {60, 9}}, {100, 40}, {150, 40}, mask), NearRect(x, 7, width, 9));
  EXPECT_THAT(autoresized({{7, 20}, {9, 60}}, {40, 100}, {40, 150}, mask << 3), NearRect(7, x, 9, width));
  // And back again, so that going there and back changes nothing.
  EXPECT_THAT(autoresized({{x, 7}, {width, 9}}, {150, 40}, {100, 40}, mask), NearRect(20, 7, 60, 9));
}

INSTANTIATE_TEST_SUITE_P(Masks, EveryHorizontalMask,
                         testing::Values(Case{0, 20, 60}, Case{kFlexibleLeftMargin, 70, 60},
                                         Case{kFlexibleWidth, 20, 110},
                                         Case{kFlexibleLeftMargin | kFlexibleWidth, 32.5, 97.5},
                                         Case{kFlexibleRightMargin, 20, 60},
                                         Case{kFlexibleLeftMargin | kFlexibleRightMargin, 45, 60},
                                         Case{kFlexibleWidth | kFlexibleRightMargin, 20, 97.5},
                                         Case{7, 30, 90}));

TEST(Autoresizing, SharesEquallyWhereAllFlexiblePartsAreZero) {
  EXPECT_THAT(
      autoresized({{0, 0}, {100, 50}}, {100, 50}, {160, 50}, kFlexibleLeftMargin | kFlexibleRightMargin),
      NearRect(30, 0, 100, 50));
  EXPECT_THAT(autoresized({{0, 0}, {0, 0}}, {0, 0}, {90, 60}, 2 | 16), NearRect(0, 0, 90, 60));
  EXPECT_THAT(autoresized({{0, 0}, {0, 0}}, {0, 0}, {90, 60}, 7 | 56), NearRect(30, 20, 30, 20));
}

TEST(Autoresizing, GivesAFlexiblePartOfNoLengthNothingBesideOneThatHasSome) {
  EXPECT_THAT(
      autoresized({{0, 0}, {60, 10}}, {100, 10}, {140, 10}, kFlexibleLeftMargin | kFlexibleRightMargin),
      NearRect(0, 0, 60, 10));
}

TEST(Autoresizing, CountsAPartThatReachesOutsideAsZero) {
  EXPECT_THAT(autoresized({{-10, 0}, {60, 10}}, {100, 10}, {140, 10}, kFlexibleLeftMargin | kFlexibleWidth),
              NearRect(-10, 0, 100, 10));
}

TEST(Autoresizing, NeverMakesASizeNegative) {
  EXPECT_THAT(autoresized({{20, 20}, {60, 60}}, {100, 100}, {10, 10}, kFlexibleWidth | kFlexibleHeight),
              NearRect(20, 20, 0, 0));
}

}  // namespace
}  // namespace wispen::layout
