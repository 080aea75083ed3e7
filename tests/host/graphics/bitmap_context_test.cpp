// tests/host/graphics/bitmap_context_test.cpp: draws images into memory of the caller, byte for byte as told.

#include "host/graphics/bitmap_context.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "host/graphics/resample.hpp"
#include "tests/host/graphics/pictures.hpp"

namespace wispen::graphics {
namespace {

using Bytes = std::array<std::uint8_t, 4>;

Bytes pixel(const BitmapContext& context, std::size_t x, std::size_t y) {
  const std::uint8_t* at = context.data() + y * context.bytes_per_row() + x * 4;
  return {at[0], at[1], at[2], at[3]};
}

Rect whole(const BitmapContext& context) {
  return Rect::make(0, 0, static_cast<double>(context.width()), static_cast<double>(context.height()));
}

TEST(BitmapContexts, HoldRedGreenBlueAlphaInMemory) {
  auto context = BitmapContext::create(2, 1);
  ASSERT_TRUE(context);
  EXPECT_EQ(context->bytes_per_row(), 8u);
  context->draw(flat_picture(2, 1, 0xFF112233)->view(), whole(*context));
  EXPECT_EQ(pixel(*context, 1, 0), (Bytes{0x11, 0x22, 0x33, 0xFF}));
}

TEST(BitmapContexts, KeepOneColourExactlyAtEveryScale) {
  for (const std::uint32_t colour : {0xFF010203u, 0xFFFEFDFCu, 0x80402010u, 0xFFFFFFFFu, 0x01010101u}) {
    for (const int size : {1, 3, 44, 57, 256, 301}) {
      const auto source = flat_picture(size, size, colour);
      for (const std::size_t target : {1u, 7u, 44u, 100u}) {
        auto context = BitmapContext::create(target, target);
        ASSERT_TRUE(context);
        context->draw(source->view(), whole(*context));
        const Bytes expected{static_cast<std::uint8_t>(colour >> 16), static_cast<std::uint8_t>(colour >> 8),
                             static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(colour >> 24)};
        for (std::size_t y = 0; y < target; ++y) {
          for (std::size_t x = 0; x < target; ++x) ASSERT_EQ(pixel(*context, x, y), expected);
        }
      }
    }
  }
}

TEST(BitmapContexts, KeepHalvesHalves) {
  const auto source = picture(256, 256, [](int x, int) { return x < 128 ? 0xFFFF0000u : 0xFF0000FFu; });
  auto context = BitmapContext::create(44, 44);
  ASSERT_TRUE(context);
  context->draw(source->view(), whole(*context));
  EXPECT_EQ(pixel(*context, 21, 10), (Bytes{255, 0, 0, 255}));
  EXPECT_EQ(pixel(*context, 22, 10), (Bytes{0, 0, 255, 255}));
}

TEST(BitmapContexts, AverageByArea) {
  const auto source =
      picture(3, 1, [](int x, int) { return 0xFF000000u | static_cast<std::uint32_t>(x * 90); });
  auto context = BitmapContext::create(2, 1);
  ASSERT_TRUE(context);
  context->draw(source->view(), whole(*context));
  EXPECT_EQ(pixel(*context, 0, 0)[2], 30);   // (0 + 90 / 2) / 1.5
  EXPECT_EQ(pixel(*context, 1, 0)[2], 150);  // (90 / 2 + 180) / 1.5
}

TEST(BitmapContexts, AveragePremultipliedSoThatTransparentPixelsHaveNoColour) {
  const auto source = picture(2, 1, [](int x, int) { return x == 0 ? 0xFFFF0000u : 0u; });
  auto context = BitmapContext::create(1, 1);
  ASSERT_TRUE(context);
  context->draw(source->view(), whole(*context));
  EXPECT_EQ(pixel(*context, 0, 0), (Bytes{128, 0, 0, 128}));
}

TEST(BitmapContexts, DrawTheFirstRowUppermostAndCountYUpwards) {
  const auto source = picture(1, 2, [](int, int y) { return y == 0 ? 0xFFFF0000u : 0xFF00FF00u; });
  auto context = BitmapContext::create(1, 4);
  ASSERT_TRUE(context);
  context->draw(source->view(), Rect::make(0, 0, 1, 2));
  EXPECT_EQ(pixel(*context, 0, 0), (Bytes{0, 0, 0, 0}));
  EXPECT_EQ(pixel(*context, 0, 2), (Bytes{255, 0, 0, 255}));
  EXPECT_EQ(pixel(*context, 0, 3), (Bytes{0, 255, 0, 255}));
}

TEST(BitmapContexts, CoverPixelsInPart) {
  auto context = BitmapContext::create(3, 1);
  ASSERT_TRUE(context);
  context->draw(flat_picture(8, 8, 0xFFFFFFFF)->view(), Rect::make(0.5, 0, 2, 1));
  EXPECT_EQ(pixel(*context, 0, 0)[3], 128);
  EXPECT_EQ(pixel(*context, 1, 0)[3], 255);
  EXPECT_EQ(pixel(*context, 2, 0)[3], 128);
}

TEST(BitmapContexts, LayTranslucentPicturesOverWhatIsThere) {
  auto context = BitmapContext::create(1, 1);
  ASSERT_TRUE(context);
  context->draw(flat_picture(1, 1, 0xFF0000FF)->view(), whole(*context));
  context->draw(flat_picture(1, 1, 0x80800000)->view(), whole(*context));
  EXPECT_EQ(pixel(*context, 0, 0), (Bytes{128, 0, 127, 255}));
}

TEST(BitmapContexts, UndoTheOrientationOfAnImageAndNotOfBarePixels) {
  const auto stored = picture(2, 1, [](int x, int) { return x == 0 ? 0xFFFF0000u : 0xFF00FF00u; });
  const Image image(stored, 1, Orientation::Right);
  auto context = BitmapContext::create(1, 2);
  ASSERT_TRUE(context);
  context->draw(image, whole(*context));
  EXPECT_EQ(pixel(*context, 0, 0), (Bytes{255, 0, 0, 255}));
  EXPECT_EQ(pixel(*context, 0, 1), (Bytes{0, 255, 0, 255}));
}

TEST(BitmapContexts, StayInsideTheCallersRows) {
  std::vector<std::uint8_t> memory(3 * 20, 0xAA);
  auto context = BitmapContext::over(memory.data(), 4, 3, 20);
  ASSERT_TRUE(context);
  context->draw(flat_picture(9, 9, 0xFFFFFFFF)->view(), Rect::make(-100, -100, 300, 300));
  for (std::size_t row = 0; row < 3; ++row) {
    EXPECT_EQ(memory[row * 20 + 15], 0xFF);
    EXPECT_EQ(memory[row * 20 + 16], 0xAA);
  }
}

TEST(BitmapContexts, RefuseSizesThatMakeNoSense) {
  EXPECT_FALSE(BitmapContext::create(0, 10));
  EXPECT_FALSE(BitmapContext::create(0, 2147483647));
  EXPECT_FALSE(BitmapContext::create(2147483647, 2147483647));
  EXPECT_FALSE(BitmapContext::create(SIZE_MAX, 2));
  std::uint8_t byte = 0;
  EXPECT_FALSE(BitmapContext::over(&byte, 1, 1, 3));
  EXPECT_FALSE(BitmapContext::over(nullptr, 1, 1, 4));
}

TEST(BitmapContexts, DrawNothingIntoRectanglesThatAreNone) {
  auto context = BitmapContext::create(4, 4);
  ASSERT_TRUE(context);
  const auto source = flat_picture(4, 4, 0xFFFFFFFF);
  for (const Rect& rect : {Rect::make(0, 0, 0, 4), Rect::make(0, 0, -4, 4), Rect::make(NAN, 0, 4, 4),
                           Rect::make(0, 0, INFINITY, 4), Rect::make(900, 0, 4, 4)}) {
    context->draw(source->view(), rect);
  }
  EXPECT_EQ(pixel(*context, 1, 1), (Bytes{0, 0, 0, 0}));
}

TEST(BitmapContexts, GiveBackWhatTheyHold) {
  auto context = BitmapContext::create(5, 4);
  ASSERT_TRUE(context);
  const auto source = noise(5, 4, 7);
  context->draw(source->view(), whole(*context));
  EXPECT_EQ(*context->make_image()->pixels(), *source);
  context->clear(whole(*context));
  EXPECT_EQ(pixel(*context, 2, 2), (Bytes{0, 0, 0, 0}));
}

TEST(Resampling, GivesTheSameBytesWithEveryKernel) {
  int compared = 0;
  for (const auto& [from, to] : {std::pair{256, 44}, {257, 45}, {31, 7}, {7, 31}, {44, 44}, {1, 9}, {9, 1}}) {
    const auto source = noise(from, from + 3, static_cast<std::uint32_t>(from * to));
    auto portable = Pixels::create(to, to + 1);
    auto sse2 = Pixels::create(to, to + 1);
    auto fastest = Pixels::create(to, to + 1);
    const Rect where = Rect::make(0.25, -0.5, to - 0.75, to + 1);
    resample(source->view(), where, portable->mutable_view(), ResampleKernel::Portable);
    resample(source->view(), where, fastest->mutable_view());
    EXPECT_EQ(*portable, *fastest);
    if (fastest_resample_kernel() == ResampleKernel::Portable) continue;
    resample(source->view(), where, sse2->mutable_view(), ResampleKernel::Sse2);
    EXPECT_EQ(*portable, *sse2);
    ++compared;
  }
  EXPECT_TRUE(compared == 7 || fastest_resample_kernel() == ResampleKernel::Portable);
}

TEST(Resampling, NeverMakesAColourStrongerThanItsAlpha) {
  const auto source = noise(100, 80, 3);
  for (const int size : {13, 64, 150}) {
    auto target = Pixels::create(size, size);
    resample(source->view(), Rect::make(0.3, 0.4, size - 0.6, size), target->mutable_view());
    for (int y = 0; y < size; ++y) {
      for (int x = 0; x < size; ++x) {
        const std::uint32_t argb = target->at(x, y);
        for (const int shift : {0, 8, 16}) ASSERT_LE((argb >> shift) & 0xFF, argb >> 24);
      }
    }
  }
}

TEST(Resampling, ComesNearToTheExactAreaAverage) {
  const auto source = noise(97, 97, 11);
  constexpr int kSize = 23;
  auto target = Pixels::create(kSize, kSize);
  resample(source->view(), Rect::make(0, 0, kSize, kSize), target->mutable_view());
  const double step = 97.0 / kSize;
  for (int y = 0; y < kSize; ++y) {
    for (int x = 0; x < kSize; ++x) {
      double sum = 0;
      for (int v = 0; v < 97; ++v) {
        for (int u = 0; u < 97; ++u) {
          const double across = std::min(u + 1.0, (x + 1) * step) - std::max<double>(u, x * step);
          const double down = std::min(v + 1.0, (y + 1) * step) - std::max<double>(v, y * step);
          if (across > 0 && down > 0) sum += across * down * static_cast<double>(source->at(u, v) >> 24);
        }
      }
      ASSERT_NEAR(static_cast<double>(target->at(x, y) >> 24), sum / (step * step), 0.6);
    }
  }
}

}  // namespace
}  // namespace wispen::graphics
