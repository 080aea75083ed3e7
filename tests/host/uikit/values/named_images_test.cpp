// tests/host/uikit/values/named_images_test.cpp: images by name in a bundle.

#include <string>

#include "host/graphics/image_file.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/image.hpp"
#include "tests/host/graphics/pictures.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string png(int width, int height) {
  return *graphics::encode_png(graphics::flat_picture(width, height, 0xFF000000)->view());
}

class NamedImageTest : public HostTest {
 protected:
  /// Below the root: what opens a bundle by a path from inside finds it there.
  std::string own_folder() const { return folder_ / "root/test.bundle"; }
  void save(const char* name, const std::string& bytes) const {
    write_file(own_folder() + "/" + name, bytes);
  }
  UIImage named(const char* name) const {
    const NSBundle bundle = NSBundle::bundleWithPath(NSString(own_folder().c_str()));
    return UIImage::imageNamed(NSString(name), bundle, NSObject());
  }
  static void display(float scale, graphics::Idiom idiom) {
    auto settings = uikit::display_settings();
    settings.scale = scale;
    settings.idiom = idiom;
    uikit::set_display_settings(settings);
  }
};

TEST_F(NamedImageTest, IsTheVariantForTheDisplay) {
  save("Info.plist", plist("<dict/>"));
  save("a.png", png(1, 1));
  save("a@2x.png", png(2, 2));
  save("a@3x~ipad.png", png(9, 9));
  EXPECT_EQ(CGImageGetWidth(named("a").CGImage()), 2u);
  display(1, graphics::Idiom::Phone);
  EXPECT_EQ(CGImageGetWidth(named("a").CGImage()), 1u);
  display(3, graphics::Idiom::Pad);
  EXPECT_EQ(CGImageGetWidth(named("a").CGImage()), 9u);
  EXPECT_EQ(named("a").size(), CGSizeMake(3, 3));
}

TEST_F(NamedImageTest, IsRememberedUntilItsFileIsSavedAgain) {
  save("Info.plist", plist("<dict/>"));
  save("a.png", png(1, 1));
  const UIImage first = named("a");
  EXPECT_EQ(named("a"), first);
  save("a.png", png(4, 4));
  EXPECT_EQ(named("a").size(), CGSizeMake(4, 4));
}

TEST_F(NamedImageTest, IsNilAndReportedWhenMissingOrBroken) {
  save("Info.plist", plist("<dict/>"));
  save("broken.png", "no image");
  EXPECT_FALSE(named("missing"));
  EXPECT_FALSE(named("broken"));
  EXPECT_FALSE(named(""));
  EXPECT_FALSE(UIImage::imageNamed(NSString()));
  EXPECT_THAT(problems(), ElementsAre(HasSubstr("missing"), HasSubstr("broken")));
}

TEST_F(NamedImageTest, ByAWholePathIsFoundBelowTheDeviceRoot) {
  write_file(device_path("/var/mobile/b.png"), png(5, 5));
  EXPECT_EQ(UIImage::imageNamed("/var/mobile/b.png"_ns).size(), CGSizeMake(5, 5));
}

}  // namespace
}  // namespace wispen::testing
