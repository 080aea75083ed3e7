// tests/host/graphics/image_test.cpp: an image as views hold it: pixels, and what they mean.

#include "host/graphics/image.hpp"

#include <gtest/gtest.h>

#include "tests/host/graphics/pictures.hpp"

namespace wispen::graphics {
namespace {

// A picture whose four corners differ, as it is stored for each number that cameras write, so that all of
// them show the same: red, green above; blue, white below.
constexpr std::uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF, kWhite = 0xFFFFFFFF;

PixelsRef stored_for(int exif) {
  const auto upright = [](int x, int y) {
    return y == 0 ? (x < 2 ? kRed : kGreen) : (x < 2 ? kBlue : kWhite);
  };
  switch (exif) {
    case 2:
      return picture(4, 2, [&](int x, int y) { return upright(3 - x, y); });
    case 3:
      return picture(4, 2, [&](int x, int y) { return upright(3 - x, 1 - y); });
    case 4:
      return picture(4, 2, [&](int x, int y) { return upright(x, 1 - y); });
    case 5:
      return picture(2, 4, [&](int x, int y) { return upright(y, x); });
    case 6:
      return picture(2, 4, [&](int x, int y) { return upright(3 - y, x); });
    case 7:
      return picture(2, 4, [&](int x, int y) { return upright(3 - y, 1 - x); });
    case 8:
      return picture(2, 4, [&](int x, int y) { return upright(y, 1 - x); });
    default:
      return picture(4, 2, upright);
  }
}

TEST(Images, StandUprightWhateverTheCameraWrote) {
  for (int exif = 1; exif <= 8; ++exif) {
    const Image image(stored_for(exif), 2, orientation_from_exif(exif));
    EXPECT_EQ(image.size(), (Size{2, 1})) << exif;
    EXPECT_EQ(*image.upright_pixels(), *stored_for(1)) << exif;
  }
  EXPECT_EQ(orientation_from_exif(0), Orientation::Up);
  EXPECT_EQ(orientation_from_exif(9), Orientation::Up);
}

TEST(Images, MeasureInPointsByTheirScale) {
  EXPECT_EQ(Image(flat_picture(30, 60, 0), 3).size(), (Size{10, 20}));
  EXPECT_EQ(Image().size(), (Size{}));
  EXPECT_EQ(Image(flat_picture(3, 3, 0), 0).scale(), 1);
}

TEST(Images, AreTemplatesWhenTheySaySoOrAreSymbols) {
  const Image image(flat_picture(1, 1, 0));
  EXPECT_FALSE(image.is_template());
  EXPECT_TRUE(image.with_rendering_mode(RenderingMode::AlwaysTemplate).is_template());
  EXPECT_TRUE(image.as_symbol(3).is_template());
  EXPECT_FALSE(image.as_symbol(3).with_rendering_mode(RenderingMode::AlwaysOriginal).is_template());
}

TEST(Images, ShareTheirPixelsWithTheirCopies) {
  const Image image(flat_picture(1, 1, 0));
  EXPECT_EQ(image.with_scale(2).pixels(), image.pixels());
  EXPECT_EQ(image.pixels(), image.upright_pixels());
}

TEST(Pictures, AreRefusedWhenTheyAreTooLarge) {
  EXPECT_FALSE(Pixels::create(0, 5));
  EXPECT_FALSE(Pixels::create(5, -1));
  EXPECT_FALSE(Pixels::create(40000, 1));
  EXPECT_FALSE(Pixels::create(32000, 32000));
}

}  // namespace
}  // namespace wispen::graphics
