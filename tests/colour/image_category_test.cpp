// tests/colour/image_category_test.cpp: UIImage(Wispen) by its selectors.

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <vector>

#include "platform/CoreGraphics.hpp"
#include "platform/UIKit.hpp"
#include "tests/colour/random_pictures.hpp"
#include "tests/colour/slow_colours.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;
constexpr CGBitmapInfo kLayout = kCGImageAlphaPremultipliedLast | kCGBitmapByteOrder32Big;

/// The names of the exceptions that were raised. Asking a caught one of them for its type would crash.
std::vector<std::string> raised_names;
objc::Original<void()> raise;
void note_and_raise(const NSException& exception) {
  raised_names.push_back(objc::send<"name", NSString>(exception).utf8());
  raise(exception);
}

/// An image of these premultiplied bytes: red, green, blue, alpha.
UIImage image_of(Bytes bytes, std::size_t width, std::size_t height, CGFloat scale = 1) {
  const CGContextRef context = CGBitmapContextCreate(bytes.data(), width, height, 8, 4 * width,
                                                     CGColorSpaceCreateDeviceRGB(), kLayout);
  const CGImageRef pixels = CGBitmapContextCreateImage(context);
  const UIImage image = UIImage::imageWithCGImage(pixels, scale, UIImageOrientation::Up);
  CGImageRelease(pixels);
  CGContextRelease(context);
  return image;
}

using Pixel = std::array<std::uint8_t, 4>;
constexpr Pixel kRed{255, 0, 0, 255};
constexpr Pixel kBlue{0, 0, 255, 255};
constexpr Pixel kWhite{255, 255, 255, 255};
constexpr Pixel kOrange{255, 128, 0, 255};
constexpr Pixel kNone{0, 0, 0, 0};

UIImage painted(std::size_t width, std::size_t height,
                const std::function<Pixel(std::size_t x, std::size_t y)>& pixel, CGFloat scale = 1) {
  Bytes bytes;
  for (std::size_t y = 0; y < height; ++y) {
    for (std::size_t x = 0; x < width; ++x) {
      const Pixel one = pixel(x, y);
      bytes.insert(bytes.end(), one.begin(), one.end());
    }
  }
  return image_of(std::move(bytes), width, height, scale);
}

UIImage flat(std::size_t width, std::size_t height, const Pixel& pixel) {
  return painted(width, height, [&](std::size_t, std::size_t) { return pixel; });
}

std::array<double, 4> components(const UIColor& color) {
  std::array<double, 4> values{-1, -1, -1, -1};
  color.getRed(&values[0], &values[1], &values[2], &values[3]);
  return values;
}

class ImageCategoryTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    load_shipped_bundle();
  }
  static UIColor dominant(const UIImage& image) { return objc::send<"wispDominantColor", UIColor>(image); }
  static UIColor second(const UIImage& image) {
    return objc::send<"wispSecondDominantColor", UIColor>(image);
  }
  /// Whether the message raised the platform's exception.
  static bool second_raises(const UIImage& image) {
    try {
      second(image);
    } catch (...) {
      return true;
    }
    return false;
  }
};

constexpr std::array<double, 4> kRedComponents{1, 0, 0, 1};
constexpr std::array<double, 4> kBlueComponents{0, 0, 1, 1};

TEST_F(ImageCategoryTest, OneColourDominatesAsRedAndIsItsOwnSecond) {
  const UIImage image = flat(10, 10, kBlue);
  EXPECT_EQ(dominant(image), UIColor::redColor());
  EXPECT_EQ(components(second(image)), kBlueComponents);
}

TEST_F(ImageCategoryTest, NothingOpaqueIsRedAndRaisesOnPurpose) {
  for (const UIImage& image : {flat(10, 10, kNone), flat(10, 10, {127, 0, 0, 127}), objc::make<UIImage>()}) {
    EXPECT_EQ(dominant(image), UIColor::redColor());
    EXPECT_TRUE(second_raises(image));
  }
}

TEST_F(ImageCategoryTest, RaisesTheExceptionOfAnIndexOutOfRange) {
  if (!raise) objc::Category<NSException>().method<"raise", &note_and_raise>(raise);
  raised_names.clear();
  EXPECT_TRUE(second_raises(flat(2, 2, kNone)));
  EXPECT_THAT(raised_names, ::testing::ElementsAre("NSRangeException"));
}

TEST_F(ImageCategoryTest, OfTwoHalvesTheFirstInOrderLeads) {
  const auto halves = [](const Pixel& left, const Pixel& right) {
    return painted(20, 20, [&](std::size_t x, std::size_t) { return x < 10 ? left : right; });
  };
  EXPECT_EQ(components(dominant(halves(kRed, kBlue))), kRedComponents);
  EXPECT_EQ(components(dominant(halves(kBlue, kRed))), kBlueComponents);
  EXPECT_EQ(components(second(halves(kRed, kBlue))), kRedComponents);
}

TEST_F(ImageCategoryTest, AVividRunnerUpWinsOverPlainWhite) {
  const UIImage image = painted(10, 10, [](std::size_t, std::size_t y) { return y < 7 ? kWhite : kOrange; });
  const std::array<double, 4> orange{1, static_cast<double>(128 / 255.0F), 0, 1};
  EXPECT_EQ(components(dominant(image)), orange);
  EXPECT_EQ(components(second(image)), orange);
  EXPECT_NEAR(orange[1], 0.501960813999176, 1e-15);
}

TEST_F(ImageCategoryTest, ARunnerUpOfAnEighthOrLessIsNotConsidered) {
  // The leader's count is 80; the runner-up's count must be above 10, and begins at 0 with its first pixel.
  const auto with_blue = [](std::size_t blue) {
    return painted(81 + blue, 1, [](std::size_t x, std::size_t) { return x < 81 ? kWhite : kBlue; });
  };
  EXPECT_EQ(components(dominant(with_blue(11))), (std::array<double, 4>{1, 1, 1, 1}));
  EXPECT_EQ(components(dominant(with_blue(12))), kBlueComponents);
}

TEST_F(ImageCategoryTest, TheLeaderKeepsAboveThreeFifthsOnlyBySharesOfAllPositions) {
  // 61 of 100 is above the share, 60 is not; transparent positions count for the share.
  const auto image = [](std::size_t white, std::size_t blue) {
    return painted(100, 1, [=](std::size_t x, std::size_t) {
      return x < white ? kWhite : x < white + blue ? kBlue : kNone;
    });
  };
  EXPECT_EQ(components(second(image(61, 39))), kBlueComponents);
  EXPECT_EQ(components(second(image(60, 40))), (std::array<double, 4>{1, 1, 1, 1}));
  EXPECT_EQ(components(second(image(60, 1))), (std::array<double, 4>{1, 1, 1, 1}));
}

TEST_F(ImageCategoryTest, GroupsAtAStrictDistance) {
  const auto pair = [](std::uint8_t apart) {
    return painted(2, 1, [apart](std::size_t x, std::size_t) {
      return x == 0 ? Pixel{100, 100, 100, 255}
                    : Pixel{100, 100, static_cast<std::uint8_t>(100 + apart), 255};
    });
  };
  EXPECT_EQ(dominant(pair(26)), UIColor::redColor());
  EXPECT_NE(dominant(pair(27)), UIColor::redColor());
}

TEST_F(ImageCategoryTest, TakesPremultipliedValuesAsTheyAre) {
  const UIImage image = flat(4, 4, {128, 64, 0, 128});
  EXPECT_EQ(components(second(image)), (std::array<double, 4>{static_cast<double>(128 / 255.0F),
                                                              static_cast<double>(64 / 255.0F), 0, 1}));
}

TEST_F(ImageCategoryTest, ALargePortraitIsNotLookedAtOnPurpose) {
  const UIImage image = painted(60, 61, [](std::size_t, std::size_t y) { return y < 20 ? kBlue : kOrange; });
  EXPECT_EQ(dominant(image), UIColor::redColor());
  EXPECT_TRUE(second_raises(image));
  const UIImage small = painted(40, 50, [](std::size_t, std::size_t y) { return y < 35 ? kWhite : kOrange; });
  EXPECT_EQ(components(dominant(small))[1], static_cast<double>(128 / 255.0F));
}

TEST_F(ImageCategoryTest, LooksAtPointsAndNotAtPixels) {
  // At 4 pixels a point a small image of 30 x 31, at 2 a large portrait of 60 x 62.
  const auto image = [](CGFloat scale) {
    return painted(
        120, 124, [](std::size_t x, std::size_t) { return x < 80 ? kWhite : kOrange; }, scale);
  };
  EXPECT_NE(dominant(image(4)), UIColor::redColor());
  EXPECT_EQ(dominant(image(2)), UIColor::redColor());
}

TEST_F(ImageCategoryTest, MeasuresATurnedImageAsItIsShown) {
  const UIImage wide = painted(61, 33, [](std::size_t x, std::size_t) { return x < 40 ? kWhite : kOrange; });
  EXPECT_NE(dominant(wide), UIColor::redColor());
  const UIImage turned = UIImage::imageWithCGImage(wide.CGImage(), 1, UIImageOrientation::Right);
  EXPECT_EQ(dominant(turned), UIColor::redColor());  // a large portrait now
}

TEST_F(ImageCategoryTest, KeepsOneColourAndHalvesWhenItShrinks) {
  const UIImage one = flat(256, 256, {200, 100, 50, 255});
  EXPECT_EQ(components(second(one)),
            (std::array<double, 4>{static_cast<double>(200 / 255.0F), static_cast<double>(100 / 255.0F),
                                   static_cast<double>(50 / 255.0F), 1}));
  const UIImage halves = painted(256, 256, [](std::size_t, std::size_t y) { return y < 128 ? kBlue : kRed; });
  EXPECT_EQ(components(dominant(halves)), kBlueComponents);
}

TEST_F(ImageCategoryTest, MeasuresTheCityBlockDistance) {
  const objc::ClassRef cls = objc::class_named<"RGBPixel">();
  const auto pixel = [cls](int r, int g, int b) {
    const auto made = objc::send<"new", NSObject>(cls);
    objc::send<"setR:">(made, r);
    objc::send<"setG:">(made, g);
    objc::send<"setB:">(made, b);
    return made;
  };
  const UIImage image = flat(1, 1, kRed);
  const auto distance = [&image](const NSObject& a, const NSObject& b) {
    return objc::send<"colourDistance:andB:", int>(image, a, b);
  };
  EXPECT_EQ(distance(pixel(0, 0, 0), pixel(255, 255, 255)), 765);
  EXPECT_EQ(distance(pixel(10, 20, 30), pixel(13, 16, 30)), 7);
  EXPECT_EQ(distance(pixel(1, 2, 3), NSObject()), 6);
  EXPECT_EQ(distance(pixel(-1, 0, 0), pixel(1, 0, 0)), 2);
}

TEST_F(ImageCategoryTest, APixelRecordBeginsAtZeroAndAnswersByKey) {
  const auto made = objc::send<"new", NSObject>(objc::class_named<"RGBPixel">());
  EXPECT_EQ((objc::send<"r", int>(made)), 0);
  EXPECT_EQ((objc::send<"g", int>(made)), 0);
  EXPECT_EQ((objc::send<"b", int>(made)), 0);
  EXPECT_EQ((objc::send<"d", int>(made)), 0);
  objc::send<"setD:">(made, 7);
  const auto number = objc::send<"valueForKey:", NSNumber>(made, "d"_ns);
  EXPECT_EQ(number.intValue(), 7);
  objc::send<"setValue:forKey:">(made, NSNumber::numberWithInt(-3), "g"_ns);
  EXPECT_EQ((objc::send<"g", int>(made)), -3);
}

TEST_F(ImageCategoryTest, AgreesWithTheSlowOperationsOverRandomPictures) {
  std::mt19937 random(21);
  for (int run = 0; run < 3000; ++run) {
    const objc::AutoreleasePool pool;
    const std::size_t width = 1 + random() % 60;
    const std::size_t height = 1 + random() % 30;
    const Bytes bytes = random_picture(random, width * height);
    const UIImage image = image_of(bytes, width, height);
    const slow::Rgba expected = slow::dominant(bytes);
    ASSERT_EQ(components(dominant(image)),
              (std::array<double, 4>{expected.red, expected.green, expected.blue, 1}))
        << run;
    const auto expected_second = slow::second(bytes);
    if (!expected_second) {
      ASSERT_TRUE(second_raises(image)) << run;
      continue;
    }
    ASSERT_EQ(components(second(image)),
              (std::array<double, 4>{expected_second->red, expected_second->green, expected_second->blue, 1}))
        << run;
  }
}

TEST_F(ImageCategoryTest, TheOrderOfThePixelsCountsAndNotTheShapeOfTheImage) {
  std::mt19937 random(22);
  for (int run = 0; run < 200; ++run) {
    const objc::AutoreleasePool pool;
    const Bytes bytes = random_picture(random, 400);
    EXPECT_TRUE(dominant(image_of(bytes, 20, 20)).isEqual(dominant(image_of(bytes, 40, 10))));
  }
}

TEST_F(ImageCategoryTest, TransparentPixelsCountForNothingButTheShare) {
  std::mt19937 random(23);
  for (int run = 0; run < 200; ++run) {
    const objc::AutoreleasePool pool;
    const Bytes bytes = random_picture(random, 300);
    Bytes more;
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
      more.insert(more.end(), bytes.begin() + static_cast<std::ptrdiff_t>(i),
                  bytes.begin() + static_cast<std::ptrdiff_t>(i) + 4);
      more.insert(more.end(), {0, 0, 0, static_cast<std::uint8_t>(random() % 128)});
    }
    EXPECT_TRUE(dominant(image_of(bytes, 300, 1)).isEqual(dominant(image_of(more, 600, 1))));
  }
}

}  // namespace
}  // namespace wispen::testing
