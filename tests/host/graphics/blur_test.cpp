// tests/host/graphics/blur_test.cpp: softens pixels, and changes how strong their colours are.

#include "host/graphics/blur.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "host/graphics/material.hpp"
#include "tests/host/graphics/pictures.hpp"

namespace wispen::graphics {
namespace {

TEST(Blurs, KeepAFlatColourExactly) {
  for (const std::uint32_t colour : {0xFF123456u, 0x80402010u, 0xFFFFFFFFu, 0x01010101u, 0u}) {
    for (const double sigma : {0.5, 1.0, 3.0, 7.7, 20.0, 60.0, 5000.0}) {
      Pixels pixels = *flat_picture(67, 41, colour);
      blur(pixels.mutable_view(), sigma);
      saturate(pixels.mutable_view(), 1);
      EXPECT_EQ(pixels, *flat_picture(67, 41, colour)) << sigma;
    }
  }
}

TEST(Blurs, SpreadAPointAlikeInAllDirections) {
  constexpr int kMiddle = 60;
  Pixels pixels = *picture(121, 121, [](int x, int y) {
    return std::abs(x - kMiddle) <= 4 && std::abs(y - kMiddle) <= 4 ? 0xFFFFFFFFu : 0xFF000000u;
  });
  blur(pixels.mutable_view(), 5);
  for (int d = 1; d < 20; ++d) {
    EXPECT_EQ(pixels.at(kMiddle + d, kMiddle), pixels.at(kMiddle - d, kMiddle));
    EXPECT_NEAR(static_cast<double>(pixels.at(kMiddle + d, kMiddle) & 0xFF),
                static_cast<double>(pixels.at(kMiddle, kMiddle + d) & 0xFF), 1);
    EXPECT_LE(pixels.at(kMiddle + d, kMiddle) & 0xFF, pixels.at(kMiddle + d - 1, kMiddle) & 0xFF);
  }
  EXPECT_GT(pixels.at(kMiddle + 8, kMiddle) & 0xFF, 5u);
  EXPECT_EQ(pixels.at(kMiddle + 40, kMiddle) & 0xFF, 0u);
}

TEST(Blurs, SoftenAnEdgeAsAGaussianDoes) {
  for (const double sigma : {4.0, 16.0}) {
    Pixels pixels = *picture(200, 8, [](int x, int) { return x < 100 ? 0xFF000000u : 0xFFFFFFFFu; });
    blur(pixels.mutable_view(), sigma);
    for (const double place : {-2.0, -1.0, -0.5, 0.5, 1.0, 2.0}) {
      const int x = 100 + static_cast<int>(place * sigma);
      const double expected = 127.5 * (1 + std::erf((x + 0.5 - 100) / sigma / std::sqrt(2.0)));
      EXPECT_NEAR(static_cast<double>(pixels.at(x, 4) & 0xFF), expected, 6) << sigma << " at " << place;
    }
  }
}

TEST(Blurs, LeaveTinyPicturesWhole) {
  for (const int size : {1, 2, 3}) {
    Pixels pixels = *noise(size, size, 4);
    blur(pixels.mutable_view(), 30);
    const std::uint32_t argb = pixels.at(0, 0);
    EXPECT_LE(argb & 0xFF, argb >> 24);
  }
}

TEST(Saturation, MovesColoursAndLeavesGreys) {
  Pixels grey = *flat_picture(2, 2, 0xFF808080);
  saturate(grey.mutable_view(), 1.8);
  EXPECT_EQ(grey.at(0, 0), 0xFF808080u);
  Pixels red = *flat_picture(2, 2, 0xFF804040);
  saturate(red.mutable_view(), 1.8);
  EXPECT_GT((red.at(0, 0) >> 16) & 0xFF, 0x90u);
  EXPECT_LT(red.at(0, 0) & 0xFF, 0x40u);
  saturate(red.mutable_view(), 0);
  EXPECT_EQ((red.at(0, 0) >> 16) & 0xFF, red.at(0, 0) & 0xFF);
}

TEST(Materials, GetDenserFromThinToThickAndFollowTheAppearance) {
  for (int style = 7; style <= 9; ++style) {
    for (const Appearance appearance : {Appearance::Light, Appearance::Dark}) {
      EXPECT_GT(blur_effect_material(style).tint.rgba(appearance).alpha,
                blur_effect_material(style - 1).tint.rgba(appearance).alpha);
    }
  }
  EXPECT_TRUE(blur_effect_material(6).tint.is_dynamic());
  EXPECT_EQ(blur_effect_material(11).tint.rgba(Appearance::Dark),
            blur_effect_material(6).tint.rgba(Appearance::Light));
  EXPECT_EQ(blur_effect_material(16).tint.rgba(Appearance::Light),
            blur_effect_material(6).tint.rgba(Appearance::Dark));
  EXPECT_EQ(blur_effect_material(99), blur_effect_material(4));
  EXPECT_EQ(backdrop_material(2).tint.rgba().alpha, 0);
}

}  // namespace
}  // namespace wispen::graphics
