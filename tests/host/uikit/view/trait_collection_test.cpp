// tests/host/uikit/view/trait_collection_test.cpp: the traits that views ask.

#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

class TraitCollectionTest : public ScreenTest {};

TEST_F(TraitCollectionTest, TraitsAreThoseOfTheDisplay) {
  const objc::ClassRef collections = objc::class_named<"UITraitCollection">();
  const auto traits = objc::send<"currentTraitCollection", NSObject>(collections);
  EXPECT_EQ((objc::send<"displayScale", CGFloat>(traits)), UIScreen::mainScreen().scale());
  EXPECT_EQ((objc::send<"layoutDirection", NSInteger>(traits)), 0);
  EXPECT_EQ((objc::send<"preferredContentSizeCategory", NSString>(traits)).utf8(),
            "UICTContentSizeCategoryL");
  EXPECT_EQ((objc::send<"verticalSizeClass", NSInteger>(traits)), 2);
  const auto dark = objc::send<"traitCollectionWithUserInterfaceStyle:", NSObject>(collections, NSInteger{2});
  EXPECT_TRUE((objc::send<"hasDifferentColorAppearanceComparedToTraitCollection:", bool>(traits, dark)));
  EXPECT_FALSE((objc::send<"hasDifferentColorAppearanceComparedToTraitCollection:", bool>(traits, traits)));
  const auto pad = objc::send<"traitCollectionWithUserInterfaceIdiom:", NSObject>(collections, NSInteger{1});
  EXPECT_EQ((objc::send<"userInterfaceIdiom", NSInteger>(pad)), 1);
}

}  // namespace
}  // namespace wispen::uikit
