// tests/host/uikit/values/core_graphics_test.cpp: CoreGraphics' C functions.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "platform/CoreGraphics.hpp"

namespace wispen::testing {
namespace {

constexpr CGBitmapInfo kLayout = kCGImageAlphaPremultipliedLast | kCGBitmapByteOrder32Big;

template <auto Release>
struct Releaser {
  template <class T>
  void operator()(T* object) const {
    Release(object);
  }
};
using Context = std::unique_ptr<CGContext, Releaser<&CGContextRelease>>;
using Image = std::unique_ptr<CGImage, Releaser<&CGImageRelease>>;
using Color = std::unique_ptr<CGColor, Releaser<&CGColorRelease>>;

Context context_over(std::vector<std::uint8_t>& memory, std::size_t width, std::size_t height) {
  memory.assign(width * height * 4, 0);
  return Context(CGBitmapContextCreate(memory.data(), width, height, 8, width * 4,
                                       CGColorSpaceCreateDeviceRGB(), kLayout));
}

/// An image of these bytes: red, green, blue, alpha, rows from the top.
Image image_of(std::vector<std::uint8_t> bytes, std::size_t width, std::size_t height) {
  std::vector<std::uint8_t> memory;
  const Context context = context_over(memory, width, height);
  std::memcpy(memory.data(), bytes.data(), bytes.size());
  return Image(CGBitmapContextCreateImage(context.get()));
}

TEST(CGColor, KeepsItsComponentsAndAlphaLast) {
  const std::array<CGFloat, 4> values{0.25, 2, -1, 0.5};
  const Color color(CGColorCreate(CGColorSpaceCreateDeviceRGB(), values.data()));
  ASSERT_EQ(CGColorGetNumberOfComponents(color.get()), 4u);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(CGColorGetComponents(color.get())[i], values[i]);
  EXPECT_EQ(CGColorGetAlpha(color.get()), 0.5);
  EXPECT_EQ(CGColorSpaceGetNumberOfComponents(CGColorGetColorSpace(color.get())), 3u);
}

TEST(CGColor, OfGreyHasTwoComponents) {
  const std::array<CGFloat, 2> values{0.25, 0.5};
  const Color color(CGColorCreate(CGColorSpaceCreateDeviceGray(), values.data()));
  ASSERT_EQ(CGColorGetNumberOfComponents(color.get()), 2u);
  EXPECT_EQ(CGColorGetComponents(color.get())[1], 0.5);
  EXPECT_EQ(CGColorSpaceGetModel(CGColorGetColorSpace(color.get())), kCGColorSpaceModelMonochrome);
}

TEST(CGColor, LivesUntilItsLastReferenceGoes) {
  const std::array<CGFloat, 4> values{1, 0, 0, 1};
  Color color(CGColorCreate(CGColorSpaceCreateDeviceRGB(), values.data()));
  const Color second(CGColorRetain(color.get()));
  const Color faded(CGColorCreateCopyWithAlpha(color.get(), 0.5));
  EXPECT_FALSE(CGColorEqualToColor(second.get(), faded.get()));
  color.reset();
  EXPECT_EQ(CGColorGetComponents(second.get())[0], 1);
}

TEST(CGColor, OfNothingIsNothing) {
  EXPECT_EQ(CGColorCreate(nullptr, nullptr), nullptr);
  EXPECT_EQ(CGColorGetComponents(nullptr), nullptr);
  EXPECT_EQ(CGColorGetNumberOfComponents(nullptr), 0u);
  EXPECT_EQ(CGColorSpaceGetModel(nullptr), kCGColorSpaceModelUnknown);
  CGColorRelease(nullptr);
  CGColorSpaceRelease(nullptr);
}

TEST(CGBitmapContext, IsRefusedForEveryOtherLayout) {
  std::vector<std::uint8_t> memory(400);
  const auto create = [&](std::size_t width, std::size_t bits, std::size_t row, CGColorSpaceRef space,
                          CGBitmapInfo info) {
    return Context(CGBitmapContextCreate(memory.data(), width, 10, bits, row, space, info));
  };
  const CGColorSpaceRef rgb = CGColorSpaceCreateDeviceRGB();
  EXPECT_TRUE(create(10, 8, 40, rgb, kLayout));
  EXPECT_FALSE(create(0, 8, 0, rgb, kLayout));
  EXPECT_FALSE(create(10, 16, 80, rgb, kLayout));
  EXPECT_FALSE(create(10, 8, 39, rgb, kLayout));
  EXPECT_FALSE(create(SIZE_MAX / 2, 8, 40, rgb, kLayout));
  EXPECT_FALSE(create(10, 8, 40, nullptr, kLayout));
  EXPECT_FALSE(create(10, 8, 40, CGColorSpaceCreateDeviceGray(), kLayout));
  EXPECT_FALSE(create(10, 8, 40, rgb, kCGImageAlphaPremultipliedLast));
}

TEST(CGBitmapContext, TakesTheWidthOfZeroAndTheHeightWithoutEnd) {
  EXPECT_EQ(CGBitmapContextCreate(nullptr, 0, 2147483647, 8, 0, CGColorSpaceCreateDeviceRGB(), kLayout),
            nullptr);
}

TEST(CGBitmapContext, HasZeroFilledMemoryOfItsOwn) {
  const Context context(CGBitmapContextCreate(nullptr, 3, 2, 8, 0, CGColorSpaceCreateDeviceRGB(), kLayout));
  ASSERT_TRUE(context);
  EXPECT_EQ(CGBitmapContextGetWidth(context.get()), 3u);
  EXPECT_EQ(CGBitmapContextGetHeight(context.get()), 2u);
  EXPECT_EQ(CGBitmapContextGetBytesPerRow(context.get()), 12u);
  const auto* const bytes = static_cast<const std::uint8_t*>(CGBitmapContextGetData(context.get()));
  EXPECT_EQ(std::vector<std::uint8_t>(bytes, bytes + 24), std::vector<std::uint8_t>(24));
}

TEST(CGBitmapContext, KeepsTheBytesOfAnImageOfItsSize) {
  const std::vector<std::uint8_t> bytes{255, 0, 0, 255, 0, 128, 0, 128, 1, 2, 3, 255, 0, 0, 0, 0};
  const Image image = image_of(bytes, 2, 2);
  std::vector<std::uint8_t> memory;
  const Context context = context_over(memory, 2, 2);
  CGContextDrawImage(context.get(), CGRectMake(0, 0, 2, 2), image.get());
  EXPECT_EQ(memory, bytes);
}

TEST(CGBitmapContext, AveragesAreasWhenItShrinks) {
  const Image image = image_of({255, 0, 0, 255, 0, 0, 255, 255, 255, 0, 0, 255, 0, 0, 255, 255}, 2, 2);
  std::vector<std::uint8_t> memory;
  const Context context = context_over(memory, 1, 1);
  CGContextDrawImage(context.get(), CGRectMake(0, 0, 1, 1), image.get());
  EXPECT_NEAR(memory[0], 127.5, 0.5);
  EXPECT_EQ(memory[1], 0);
  EXPECT_NEAR(memory[2], 127.5, 0.5);
  EXPECT_EQ(memory[3], 255);
}

TEST(CGBitmapContext, HasItsOriginAtTheBottomLeft) {
  const Image image = image_of({9, 9, 9, 255}, 1, 1);
  std::vector<std::uint8_t> memory;
  const Context context = context_over(memory, 1, 2);
  CGContextDrawImage(context.get(), CGRectMake(0, 0, 1, 1), image.get());
  EXPECT_EQ(memory, (std::vector<std::uint8_t>{0, 0, 0, 0, 9, 9, 9, 255}));
}

TEST(CGBitmapContext, TurnsARectangleOfNegativeSizeRound) {
  const Image image = image_of({9, 9, 9, 255}, 1, 1);
  std::vector<std::uint8_t> memory;
  const Context context = context_over(memory, 2, 2);
  CGContextDrawImage(context.get(), CGRectMake(2, 2, -2, -2), image.get());
  CGContextClearRect(context.get(), CGRectMake(1, 2, -1, -2));
  EXPECT_EQ(memory, (std::vector<std::uint8_t>{0, 0, 0, 0, 9, 9, 9, 255, 0, 0, 0, 0, 9, 9, 9, 255}));
}

TEST(CGBitmapContext, DoesNothingForNothing) {
  CGContextDrawImage(nullptr, CGRectZero, nullptr);
  CGContextClearRect(nullptr, CGRectZero);
  CGContextRelease(nullptr);
  EXPECT_EQ(CGBitmapContextCreateImage(nullptr), nullptr);
  EXPECT_EQ(CGImageGetWidth(nullptr), 0u);
}

TEST(CGImage, OutlivesTheContextItCameFrom) {
  const Image image = image_of({1, 2, 3, 255}, 1, 1);
  const Image second(CGImageRetain(image.get()));
  EXPECT_EQ(CGImageGetWidth(second.get()), 1u);
  EXPECT_EQ(CGImageGetHeight(second.get()), 1u);
}

TEST(CGGeometry, LooksAtRectanglesAsIfTheirSizesWerePositive) {
  static_assert(CGRectGetMinX(CGRectMake(10, 0, -4, 2)) == 6);
  static_assert(CGRectGetMaxY(CGRectMake(0, 10, 1, -4)) == 10);
  static_assert(CGRectEqualToRect(CGRectMake(10, 10, -4, -4), CGRectMake(6, 6, 4, 4)));
  static_assert(CGRectContainsPoint(CGRectMake(0, 0, 1, 1), {0, 0}));
  static_assert(!CGRectContainsPoint(CGRectMake(0, 0, 1, 1), {1, 0}));
  static_assert(CGRectUnion(CGRectMake(0, 0, 1, 1), CGRectMake(4, 5, 1, 1)) == CGRectMake(0, 0, 5, 6));
  static_assert(
      CGAffineTransformConcat(CGAffineTransformMakeScale(2, 2), CGAffineTransformMakeTranslation(1, 0)) ==
      CGAffineTransform{2, 0, 0, 2, 1, 0});
  EXPECT_STREQ(objc::Encoding<CGRect>::value.value, "{CGRect={CGPoint=dd}{CGSize=dd}}");
}

}  // namespace
}  // namespace wispen::testing
