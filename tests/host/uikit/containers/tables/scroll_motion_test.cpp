#include "host/uikit/containers/tables/scroll_motion.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace wispen::uikit {
namespace {

const ScrollRange kRange{.least = -100, .most = 1000, .bounces = true};
const ScrollRange kHardRange{.least = -100, .most = 1000, .bounces = false};

/// Every place of a motion, from the first step to the one that finished it.
std::vector<double> places(ScrollMotion motion, double from, const ScrollRange& range) {
  std::vector<double> all;
  for (double now = from; all.size() < 1000;) {
    const ScrollMotion::Step step = motion.step(now, range);
    all.push_back(now = step.offset);
    if (step.finished) return all;
  }
  ADD_FAILURE() << "the motion does not end";
  return all;
}

TEST(ScrollMotion, ThatIsThrownGoesEverSlowerAndEndsWithinTheRange) {
  const std::vector<double> all = places(ScrollMotion(800), 0, kRange);
  ASSERT_GT(all.size(), 30u);
  double last_way = 800 * ScrollMotion::kFrame + 0.001;
  double before = 0;
  for (const double place : all) {
    EXPECT_GT(place, before);
    EXPECT_LT(place - before, last_way);
    last_way = place - before;
    before = place;
  }
  // What a speed that loses 0.2 % each millisecond covers until it is slow: about half of its points a
  // second.
  EXPECT_NEAR(all.back(), 400, 20);
}

TEST(ScrollMotion, ThatIsThrownOverAnEndIsDrawnBackToIt) {
  const std::vector<double> all = places(ScrollMotion(3000), 900, kRange);
  EXPECT_GT(*std::max_element(all.begin(), all.end()), 1000);
  EXPECT_DOUBLE_EQ(all.back(), 1000);
}

TEST(ScrollMotion, ThatDoesNotBounceNeverLeavesTheRange) {
  for (const double velocity : {3000.0, -3000.0}) {
    for (const double place : places(ScrollMotion(velocity), 500, kHardRange)) {
      EXPECT_TRUE(kHardRange.holds(place)) << place;
    }
  }
}

TEST(ScrollMotion, FromBeyondAnEndTakesTheSpringsTime) {
  const std::vector<double> all = places(ScrollMotion(), -180, kRange);
  EXPECT_EQ(all.size(), 24u);  // 0.4 seconds of sixty frames each
  EXPECT_DOUBLE_EQ(all.back(), -100);
  EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
}

TEST(ScrollMotion, GoesToWhereTheEndHasMoved) {
  ScrollMotion motion;
  double now = motion.step(-180, kRange).offset;
  const ScrollRange moved{.least = -60, .most = 1000, .bounces = true};
  ScrollMotion::Step step;
  while (!(step = motion.step(now, moved)).finished) now = step.offset;
  EXPECT_DOUBLE_EQ(step.offset, -60);
}

TEST(ScrollMotion, UnderAFingerFollowsItWithinTheRange) {
  for (const double wanted : {-100.0, 0.0, 1000.0}) {
    EXPECT_EQ(offset_under_finger(wanted, kRange, 600), wanted);
  }
}

TEST(ScrollMotion, UnderAFingerFollowsEverLessBeyondAnEnd) {
  double before = 1000;
  double way_before = 10;
  for (double wanted = 1010; wanted < 9000; wanted += 10) {
    const double place = offset_under_finger(wanted, kRange, 600);
    EXPECT_GT(place, before);
    EXPECT_LT(place - before, way_before);
    way_before = place - before;
    before = place;
  }
  EXPECT_LT(before, 1600);
  EXPECT_NEAR(offset_under_finger(-150, kRange, 600) + 100, -(offset_under_finger(1050, kRange, 600) - 1000),
              1e-9);
  EXPECT_EQ(offset_under_finger(1050, kHardRange, 600), 1000);
}

}  // namespace
}  // namespace wispen::uikit
