// tests/host/graphics/symbol_test.cpp: symbols by the platform's names, in drawings of our own.

#include "host/graphics/symbol.hpp"

#include <gtest/gtest.h>

#include <array>

#include "tests/host/graphics/pictures.hpp"

namespace wispen::graphics {
namespace {

double ink(const Image& image) {
  double sum = 0;
  const PixelView view = image.pixels()->view();
  for (int y = 0; y < view.height; ++y) {
    for (int x = 0; x < view.width; ++x) sum += static_cast<double>(view.at(x, y) >> 24) / 255;
  }
  return sum / (view.width * view.height);
}

TEST(Symbols, AreAllDrawn) {
  for (const std::string_view name : symbol_names()) {
    const auto symbol = symbol_image(name);
    ASSERT_TRUE(symbol) << name;
    EXPECT_TRUE(symbol->known) << name;
    EXPECT_TRUE(symbol->image.is_template()) << name;
    EXPECT_GT(ink(symbol->image), 0.02) << name;
    EXPECT_LT(ink(symbol->image), 0.85) << name;
  }
}

TEST(Symbols, ThatThePagesAskForAreThere) {
  for (const char* name : {"applelogo", "exclamationmark.circle.fill", "wrench.fill", "chevron.forward",
                           "checkmark", "info.circle", "xmark.circle.fill"}) {
    EXPECT_TRUE(is_known_symbol(name)) << name;
  }
}

TEST(Symbols, OfUnknownNamesAreAPlaceholderThatSaysSo) {
  const auto symbol = symbol_image("no.such.symbol");
  ASSERT_TRUE(symbol);
  EXPECT_FALSE(symbol->known);
  EXPECT_EQ(*symbol->image.pixels(), *symbol_image("questionmark.square.dashed")->image.pixels());
}

TEST(Symbols, GrowWithThePointSizeAndTheDisplay) {
  SymbolConfiguration configuration;
  const Size normal = symbol_image("gear", configuration)->image.size();
  configuration.point_size *= 2;
  EXPECT_NEAR(symbol_image("gear", configuration)->image.size().width, normal.width * 2, 1);
  configuration.display_scale = 3;
  EXPECT_NEAR(symbol_image("gear", configuration)->image.size().width, normal.width * 2, 1);
  EXPECT_EQ(symbol_image("gear", configuration)->image.scale(), 3);
}

TEST(Symbols, GetHeavierWithTheWeight) {
  SymbolConfiguration configuration;
  configuration.weight = font_weight::kLight;
  const double light = ink(symbol_image("xmark", configuration)->image);
  configuration.weight = font_weight::kBold;
  EXPECT_GT(ink(symbol_image("xmark", configuration)->image), light * 1.4);
}

TEST(Symbols, TurnForwardAndBackwardRoundFromRightToLeft) {
  SymbolConfiguration mirrored;
  mirrored.right_to_left = true;
  EXPECT_EQ(*symbol_image("chevron.forward", mirrored)->image.pixels(),
            *symbol_image("chevron.backward")->image.pixels());
  EXPECT_EQ(*symbol_image("chevron.right", mirrored)->image.pixels(),
            *symbol_image("chevron.right")->image.pixels());
}

TEST(Symbols, CutTheirSignsOut) {
  SymbolConfiguration configuration;
  configuration.point_size = 100;
  configuration.display_scale = 1;
  const auto symbol = symbol_image("exclamationmark.circle.fill", configuration);
  EXPECT_EQ(symbol->image.pixels()->at(60, 50), 0u);
  EXPECT_EQ(symbol->image.pixels()->at(20, 60), 0xFF000000u);
}

TEST(Symbols, OfImpossibleSizesAreAnError) {
  SymbolConfiguration configuration;
  for (const double size : {0.0, -4.0, 1e9}) {
    configuration.point_size = size;
    EXPECT_FALSE(symbol_image("gear", configuration));
  }
}

}  // namespace
}  // namespace wispen::graphics
