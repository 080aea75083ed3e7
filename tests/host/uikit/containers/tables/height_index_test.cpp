// tests/host/uikit/containers/tables/height_index_test.cpp: heights in a column.

#include "host/uikit/containers/tables/height_index.hpp"

#include <gtest/gtest.h>

#include <random>

namespace wispen::uikit {
namespace {

TEST(HeightIndex, FindsOffsetsAndItemsAsAPlainSumDoes) {
  std::mt19937 random(7);
  std::vector<double> heights(257);
  for (double& height : heights) height = static_cast<double>(random() % 5);  // some are nothing
  HeightIndex index;
  index.assign(heights);
  for (int change = 0; change < 200; ++change) {
    const std::size_t item = random() % heights.size();
    heights[item] = static_cast<double>(random() % 7);
    index.set_height(item, heights[item]);
    double sum = 0;
    for (std::size_t i = 0; i < heights.size(); ++i) {
      ASSERT_EQ(index.offset(i), sum);
      if (heights[i] > 0) {
        ASSERT_EQ(index.item_at(sum + heights[i] / 2), i);
      }
      sum += heights[i];
    }
    ASSERT_EQ(index.total(), sum);
  }
}

TEST(HeightIndex, GivesTheLastItemBelowAll) {
  HeightIndex index;
  EXPECT_EQ(index.item_at(3), 0U);
  index.assign({1, 1});
  EXPECT_EQ(index.item_at(50), 1U);
}

}  // namespace
}  // namespace wispen::uikit
