// tests/colour/pixel_groups_test.cpp: the grouping of pixels, by every kernel that this processor can run.

#include "colour/pixel_groups.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>
#include <random>
#include <vector>

#include "tests/colour/random_pictures.hpp"
#include "tests/colour/slow_colours.hpp"

namespace wispen::colour {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes pixels(std::initializer_list<std::initializer_list<std::uint8_t>> all) {
  Bytes bytes;
  for (const auto& pixel : all) bytes.insert(bytes.end(), pixel);
  return bytes;
}

class PixelGroups : public ::testing::TestWithParam<GroupingKernel> {
 protected:
  static std::vector<Group> group(const Bytes& bytes, int threshold) {
    return GetParam().group(bytes.data(), bytes.size() / 4, threshold);
  }
};

bool same(const std::vector<Group>& fast, const testing::slow::Buckets& slow) {
  if (fast.size() != slow.size()) return false;
  for (std::size_t i = 0; i < fast.size(); ++i) {
    if (fast[i] != Group{slow[i]->r, slow[i]->g, slow[i]->b, slow[i]->d}) return false;
  }
  return true;
}

TEST_P(PixelGroups, OfNothingAreNone) {
  EXPECT_TRUE(group({}, 27).empty());
  EXPECT_TRUE(group(pixels({{255, 255, 255, 127}, {0, 0, 0, 0}}), 27).empty());
}

TEST_P(PixelGroups, CountPixelsFromAnAlphaOf128) {
  EXPECT_EQ(group(pixels({{9, 8, 7, 128}}), 27), (std::vector<Group>{{9, 8, 7, 0}}));
}

TEST_P(PixelGroups, JoinBelowTheThresholdAndNotAtIt) {
  EXPECT_EQ(group(pixels({{100, 100, 100, 255}, {109, 109, 108, 255}}), 27).size(), 1u);
  EXPECT_EQ(group(pixels({{100, 100, 100, 255}, {109, 109, 109, 255}}), 27).size(), 2u);
}

TEST_P(PixelGroups, AverageWithTheNewestPixelAndTruncate) {
  EXPECT_EQ(group(pixels({{10, 10, 10, 255}, {13, 10, 11, 255}}), 27), (std::vector<Group>{{11, 10, 10, 1}}));
  EXPECT_EQ(group(pixels({{10, 0, 0, 255}, {13, 0, 0, 255}, {20, 0, 0, 255}}), 27),
            (std::vector<Group>{{15, 0, 0, 2}}));
}

TEST_P(PixelGroups, TakeTheFirstWithinReachAndNotTheNearest) {
  const auto groups = group(pixels({{0, 0, 0, 255}, {40, 0, 0, 255}, {24, 0, 0, 255}}), 27);
  EXPECT_EQ(groups, (std::vector<Group>{{12, 0, 0, 1}, {40, 0, 0, 0}}));
}

TEST_P(PixelGroups, FollowTheSamePixelUntilTheMeanStandsStill) {
  Bytes bytes = pixels({{0, 0, 0, 255}});
  for (int i = 0; i < 100; ++i) bytes.insert(bytes.end(), {20, 10, 5, 255});
  EXPECT_EQ(group(bytes, 50), (std::vector<Group>{{19, 9, 4, 100}}));
}

TEST_P(PixelGroups, AreNotDisturbedByTransparentPixelsBetween) {
  Bytes with;
  Bytes without;
  std::mt19937 random(3);
  for (int i = 0; i < 500; ++i) {
    const auto one = static_cast<std::uint8_t>(random() % 64);
    with.insert(with.end(), {one, one, 0, 255});
    without.insert(without.end(), {one, one, 0, 255});
    for (std::size_t gap = random() % 40; gap > 0; --gap) with.insert(with.end(), {255, 255, 255, 127});
  }
  EXPECT_EQ(group(with, 27), group(without, 27));
}

TEST_P(PixelGroups, ReachOverEveryVectorsEnd) {
  // One group a pixel, far enough apart, at every count around the vectors' widths; then one more of each.
  for (std::size_t count = 1; count <= 70; ++count) {
    Bytes bytes;
    for (int twice = 0; twice < 2; ++twice) {
      for (std::size_t i = 0; i < count; ++i) {
        bytes.insert(bytes.end(), {static_cast<std::uint8_t>(i % 8 * 32),
                                   static_cast<std::uint8_t>(i / 8 * 28), 128, 255});
      }
    }
    const auto groups = group(bytes, 27);
    ASSERT_EQ(groups.size(), count);
    for (const Group& each : groups) EXPECT_EQ(each.d, 1);
  }
}

TEST_P(PixelGroups, FindThePlainBlackThatUnusedLanesLookLike) {
  EXPECT_EQ(group(pixels({{255, 255, 255, 255}, {0, 0, 0, 255}, {0, 0, 0, 255}}), 27),
            (std::vector<Group>{{255, 255, 255, 0}, {0, 0, 0, 1}}));
}

TEST_P(PixelGroups, AreTheSlowOnesOverRandomPictures) {
  std::mt19937 random(7);
  for (int run = 0; run < 100'000; ++run) {
    const Bytes bytes = testing::random_picture(random, random() % 120);
    const int threshold = run % 2 == 0 ? 27 : 50;
    ASSERT_TRUE(same(group(bytes, threshold), testing::slow::group(bytes, threshold))) << run;
  }
}

TEST_P(PixelGroups, AreTheSlowOnesOverPicturesOfTheFullSize) {
  std::mt19937 random(8);
  for (int run = 0; run < 300; ++run) {
    const Bytes bytes = testing::random_picture(random, 1936);
    const int threshold = run % 2 == 0 ? 27 : 50;
    ASSERT_TRUE(same(group(bytes, threshold), testing::slow::group(bytes, threshold))) << run;
  }
}

TEST_P(PixelGroups, CountEveryOpaquePixelOnce) {
  std::mt19937 random(9);
  for (int run = 0; run < 100; ++run) {
    const Bytes bytes = testing::random_picture(random, 1936);
    int opaque = 0;
    for (std::size_t i = 3; i < bytes.size(); i += 4) opaque += bytes[i] >= 128 ? 1 : 0;
    const auto groups = group(bytes, 50);
    EXPECT_EQ(std::accumulate(groups.begin(), groups.end(), 0,
                              [](int sum, const Group& each) { return sum + each.d + 1; }),
              opaque);
  }
}

TEST_P(PixelGroups, TakeAnyThresholdOfAByte) {
  std::mt19937 random(10);
  for (int threshold = 1; threshold <= 255; ++threshold) {
    const Bytes bytes = testing::random_picture(random, 300);
    ASSERT_TRUE(same(group(bytes, threshold), testing::slow::group(bytes, threshold))) << threshold;
  }
}

INSTANTIATE_TEST_SUITE_P(EveryKernel, PixelGroups, ::testing::ValuesIn(grouping_kernels()),
                         [](const auto& kernel) { return std::string(kernel.param.name); });

TEST(GroupingKernels, TheLastOneIsWhatIsUsed) {
  std::mt19937 random(11);
  const Bytes bytes = testing::random_picture(random, 1936);
  EXPECT_EQ(group_pixels(bytes.data(), 1936, 27), grouping_kernels().back().group(bytes.data(), 1936, 27));
  EXPECT_STREQ(grouping_kernels().front().name, "plain");
  EXPECT_GE(grouping_kernels().size(), 2u);
}

TEST(Leaders, AreTheLargestAndEqualOnesInOrderOfCreation) {
  const std::vector<Group> groups{{1, 0, 0, 3}, {2, 0, 0, 5}, {3, 0, 0, 5}, {4, 0, 0, 3}, {5, 0, 0, 4}};
  const Leaders found = leaders(groups);
  EXPECT_EQ(found.first->r, 2);
  EXPECT_EQ(found.second->r, 3);
}

TEST(Leaders, MayBeMissing) {
  EXPECT_EQ(leaders({}).first, nullptr);
  const std::vector<Group> one{{1, 0, 0, 0}};
  EXPECT_EQ(leaders(one).first, one.data());
  EXPECT_EQ(leaders(one).second, nullptr);
}

TEST(Leaders, AreTheFirstTwoOfAStableSort) {
  std::mt19937 random(12);
  for (int run = 0; run < 2000; ++run) {
    std::vector<Group> groups(2 + random() % 9);
    for (Group& each : groups)
      each = {static_cast<std::int32_t>(random() % 256), 0, 0, static_cast<std::int32_t>(random() % 4)};
    const Leaders found = leaders(groups);
    const Group first = *found.first;
    const Group second = *found.second;
    std::stable_sort(groups.begin(), groups.end(), [](const Group& a, const Group& b) { return a.d > b.d; });
    EXPECT_EQ(first, groups[0]);
    EXPECT_EQ(second, groups[1]);
  }
}

}  // namespace
}  // namespace wispen::colour
