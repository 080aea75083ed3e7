// tests/colour/sample_size_test.cpp: at how many positions an image is looked at.

#include "colour/sample_size.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace wispen::colour {
namespace {

TEST(SampleSize, OfASmallImageIsItsOwn) {
  EXPECT_EQ(sample_size(40, 50), (SampleSize{40, 50}));
  EXPECT_EQ(sample_size(2000, 1), (SampleSize{2000, 1}));
  EXPECT_EQ(sample_size(29.9, 29.9), (SampleSize{29, 29}));
  EXPECT_EQ(sample_size(0, 0), (SampleSize{0, 0}));
}

TEST(SampleSize, OfALargeSquareIs44) {
  EXPECT_EQ(sample_size(100, 100), (SampleSize{44, 44}));
  EXPECT_EQ(sample_size(1024, 1024), (SampleSize{44, 44}));
}

TEST(SampleSize, TruncatesTheAspectRatioOnPurpose) {
  EXPECT_EQ(sample_size(300, 200), (SampleSize{44, 44}));
  EXPECT_EQ(sample_size(199, 100), (SampleSize{44, 44}));
  EXPECT_EQ(sample_size(200, 100), (SampleSize{63, 31}));
  EXPECT_EQ(sample_size(400, 100), (SampleSize{89, 22}));
}

TEST(SampleSize, OfALargePortraitHasNoWidthOnPurpose) {
  EXPECT_EQ(sample_size(100, 101), (SampleSize{0, std::numeric_limits<std::int32_t>::max()}));
  EXPECT_EQ(sample_size(44, 46), (SampleSize{0, std::numeric_limits<std::int32_t>::max()}));
}

TEST(SampleSize, OfAVeryWideImageHasNoHeight) { EXPECT_EQ(sample_size(3000, 1), (SampleSize{2449, 0})); }

TEST(SampleSize, KeepsWithinTheBudget) {
  for (int width = 1; width < 3000; width += 7) {
    for (int height = 1; height < 300; height += 3) {
      const SampleSize size = sample_size(width, height);
      if (size.width == 0) continue;
      EXPECT_LE(size.width * size.height, kSamplingBudget) << width << " x " << height;
    }
  }
}

TEST(SampleSize, MultipliesIn32Bits) {
  EXPECT_EQ(sample_size(65536, 65536), (SampleSize{65536, 65536}));  // the product wraps to 0
  EXPECT_EQ(sample_size(46341, 46341), (SampleSize{46341, 46341}));  // and here below it
}

TEST(SampleSize, OfNoNumberIsNothing) { EXPECT_EQ(sample_size(std::nan(""), 10), (SampleSize{0, 10})); }

}  // namespace
}  // namespace wispen::colour
