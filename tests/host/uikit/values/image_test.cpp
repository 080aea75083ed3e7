// tests/host/uikit/values/image_test.cpp: UIImage by its selectors.

#include "host/uikit/values/image.hpp"

#include <string>

#include "host/graphics/image_file.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "tests/host/graphics/pictures.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

using graphics::flat_picture;

std::string png(int width, int height, std::uint32_t argb) {
  return *graphics::encode_png(flat_picture(width, height, argb)->view());
}

UIImage flat(int width, int height, std::uint32_t argb, double scale = 1) {
  return uikit::image_from(graphics::Image(flat_picture(width, height, argb), scale));
}

class ImageTest : public HostTest {};

TEST_F(ImageTest, HasItsSizeInPointsAndItsPixelsInTheCGImage) {
  const UIImage image = flat(6, 4, 0xFF112233, 2);
  EXPECT_EQ(image.size(), CGSizeMake(3, 2));
  EXPECT_EQ(image.scale(), 2);
  EXPECT_EQ(CGImageGetWidth(image.CGImage()), 6u);
  EXPECT_EQ(CGImageGetHeight(image.CGImage()), 4u);
  EXPECT_EQ(image.CGImage(), image.CGImage());
}

TEST_F(ImageTest, WithoutPixelsIsEmpty) {
  const UIImage image = objc::make<UIImage>();
  ASSERT_TRUE(image);
  EXPECT_EQ(image.size(), CGSizeZero);
  EXPECT_EQ(image.CGImage(), nullptr);
  EXPECT_FALSE(UIImagePNGRepresentation(image));
  EXPECT_FALSE(UIImagePNGRepresentation(UIImage()));
}

TEST_F(ImageTest, IsReadFromDataOrNil) {
  const std::string bytes = png(3, 2, 0xFF00FF00);
  const UIImage image = UIImage::imageWithData(NSData::dataWithBytes(bytes.data(), bytes.size()), 2);
  EXPECT_EQ(image.size(), CGSizeMake(1.5, 1));
  EXPECT_FALSE(UIImage::imageWithData(NSData::dataWithBytes("no image", 8)));
  EXPECT_FALSE(UIImage::imageWithData(NSData()));
  EXPECT_FALSE(objc::allocate<UIImage>().initialize<"initWithData:">(NSData()));
}

TEST_F(ImageTest, OfAFileIsFoundBelowTheDeviceRoot) {
  write_file(device_path("/var/mobile/picture.png"), png(3, 2, 0xFF00FF00));
  EXPECT_EQ(UIImage::imageWithContentsOfFile("/var/mobile/picture.png"_ns).size(), CGSizeMake(3, 2));
  EXPECT_FALSE(UIImage::imageWithContentsOfFile("/var/mobile/missing.png"_ns));
  EXPECT_FALSE(UIImage::imageWithContentsOfFile(NSString()));
  EXPECT_EQ(problems().size(), 1u);
}

TEST_F(ImageTest, OfAFileTakesTheVariantOfTheDisplaysScale) {
  write_file(device_path("/var/mobile/icon.png"), png(10, 10, 0xFF000000));
  write_file(device_path("/var/mobile/icon@2x.png"), png(20, 20, 0xFF000000));
  const UIImage image = UIImage::imageWithContentsOfFile("/var/mobile/icon.png"_ns);
  EXPECT_EQ(image.size(), CGSizeMake(10, 10));
  EXPECT_EQ(image.scale(), 2);
}

TEST_F(ImageTest, IsMadeOfAnotherImagesPixels) {
  const UIImage image = flat(6, 4, 0xFF112233);
  EXPECT_EQ(UIImage::imageWithCGImage(image.CGImage()).size(), CGSizeMake(6, 4));
  const UIImage turned = UIImage::imageWithCGImage(image.CGImage(), 2, UIImageOrientation::Right);
  EXPECT_EQ(turned.size(), CGSizeMake(2, 3));
  EXPECT_EQ(turned.imageOrientation(), UIImageOrientation::Right);
  EXPECT_EQ(CGImageGetWidth(turned.CGImage()), 6u);
}

TEST_F(ImageTest, ChangesItsRenderingModeInACopy) {
  const UIImage image = flat(1, 1, 0xFF112233);
  const UIImage stencil = image.imageWithRenderingMode(UIImageRenderingMode::AlwaysTemplate);
  EXPECT_EQ(stencil.renderingMode(), UIImageRenderingMode::AlwaysTemplate);
  EXPECT_TRUE(uikit::image_of(stencil)->is_template());
  EXPECT_EQ(image.renderingMode(), UIImageRenderingMode::Automatic);
}

TEST_F(ImageTest, TakesATintWhereverItHasAnyColour) {
  const UIImage tinted =
      flat(1, 1, 0x80808080)
          .imageWithTintColor(UIColor::colorWithRed(1, 0, 0, 1), UIImageRenderingMode::AlwaysOriginal);
  EXPECT_EQ(uikit::image_of(tinted)->pixels()->at(0, 0), 0x80800000u);
  EXPECT_EQ(tinted.renderingMode(), UIImageRenderingMode::AlwaysOriginal);
}

TEST_F(ImageTest, FollowsTheAppearanceWithADynamicTint) {
  const UIImage tinted = flat(1, 1, 0xFF123456).imageWithTintColor(UIColor::labelColor());
  EXPECT_EQ(uikit::image_of(tinted)->pixels()->at(0, 0), 0xFF000000u);
  auto dark = uikit::display_settings();
  dark.appearance = graphics::Appearance::Dark;
  uikit::set_display_settings(dark);
  EXPECT_EQ(uikit::image_of(tinted)->pixels()->at(0, 0), 0xFFFFFFFFu);
}

TEST_F(ImageTest, KeepsItsCapsWhenItIsTinted) {
  const UIImage image = flat(9, 9, 0xFF112233)
                            .resizableImageWithCapInsets({1, 2, 3, 4}, UIImageResizingMode::Stretch)
                            .imageWithTintColor(UIColor::redColor());
  EXPECT_EQ(image.capInsets(), UIEdgeInsetsMake(1, 2, 3, 4));
  EXPECT_EQ(image.resizingMode(), UIImageResizingMode::Stretch);
  EXPECT_EQ(uikit::image_of(image)->resizing()->caps.left, 2);
}

TEST_F(ImageTest, BecomesAPngAndBack) {
  const UIImage image = flat(3, 2, 0xFF112233);
  const NSData bytes = UIImagePNGRepresentation(image);
  const UIImage back = UIImage::imageWithData(bytes);
  ASSERT_TRUE(back);
  EXPECT_EQ(uikit::image_of(back)->pixels()->at(2, 1), 0xFF112233u);
}

TEST_F(ImageTest, OfNothingIsNothing) { EXPECT_EQ(uikit::image_of(UIImage()), nullptr); }

}  // namespace
}  // namespace wispen::testing
