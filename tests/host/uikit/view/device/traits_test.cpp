// tests/host/uikit/view/device/traits_test.cpp: the traits' table, and what setting them does.

#include "host/uikit/view/device/traits.hpp"

#include <gmock/gmock.h>

#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

using ::testing::HasSubstr;

TEST(TraitFields, GiveBackEveryValueThatTheyTake) {
  for (const TraitField& field : trait_fields()) {
    for (const std::string& value : field.values()) {
      Traits traits;
      ASSERT_TRUE(set_trait(traits, std::string(field.name), value)) << value;
      EXPECT_EQ(field.get(traits), value);
    }
    EXPECT_EQ(field.values().empty(), field.name == "language");
  }
}

TEST(TraitFields, RefuseUnknownNamesAndValuesAndChangeNothing) {
  Traits traits;
  traits.languages = {"de"};
  const Traits before = traits;
  const auto why = [&](const char* name, const char* value) {
    const auto set = set_trait(traits, name, value);
    EXPECT_EQ(traits, before);
    return set ? std::string() : set.error().message;
  };
  EXPECT_EQ(why("colour", "red"),
            "there is no trait \"colour\": appearance, language, direction, text-size, device "
            "and orientation are known");
  EXPECT_EQ(why("appearance", "blue"), "there is no appearance \"blue\": light and dark are known");
  EXPECT_EQ(why("direction", ""), "there is no direction \"\": ltr, rtl and natural are known");
  EXPECT_EQ(why("language", " , "), "the trait \"language\" needs at least one value");
  EXPECT_THAT(why("device", "toaster"), HasSubstr("\"toaster\": phone, phone-small, "));
  EXPECT_THAT(why("text-size", "huge"), HasSubstr("AccessibilityXXL and AccessibilityXXXL are known"));
}

TEST(TraitFields, AreReadInTheFirstLanguagesDirection) {
  Traits traits;
  EXPECT_FALSE(traits.is_right_to_left());
  ASSERT_TRUE(set_trait(traits, "language", "ar-EG, en"));
  EXPECT_TRUE(traits.is_right_to_left());
  ASSERT_TRUE(set_trait(traits, "direction", "ltr"));
  EXPECT_FALSE(traits.is_right_to_left());
}

class TraitsTest : public ScreenTest {};

TEST_F(TraitsTest, AreSeenByWhateverAsks) {
  set_trait("appearance", "dark");
  set_trait("text-size", "XL");
  set_trait("device", "pad");
  set_trait("orientation", "landscape");
  set_trait("language", "ar");
  EXPECT_EQ(display_settings(), session().traits().display_settings());
  EXPECT_EQ(display_settings(), (DisplaySettings{.scale = 2,
                                                 .idiom = graphics::Idiom::Pad,
                                                 .appearance = graphics::Appearance::Dark,
                                                 .content_size = graphics::ContentSize::ExtraLarge,
                                                 .right_to_left = true}));
  EXPECT_EQ(window_.bounds().size, (Size{1080, 810}));
  EXPECT_STREQ(wispen_host_look("language"), "ar");
  ASSERT_EQ(wispen_host_set_languages("de, en"), 1);
  EXPECT_STREQ(wispen_host_look("language"), "de,en");
  EXPECT_FALSE(display_settings().right_to_left);
  EXPECT_EQ(wispen_host_look("colour"), nullptr);
}

TEST_F(TraitsTest, AreListedByTheLibrary) {
  ASSERT_EQ(wispen_host_trait_count(), trait_fields().size());
  EXPECT_STREQ(wispen_host_trait_at(0).name, "appearance");
  EXPECT_STREQ(wispen_host_trait_at(0).values, "light,dark");
  EXPECT_STREQ(wispen_host_trait_at(1).values, "");
  EXPECT_EQ(wispen_host_trait_at(99).name, nullptr);
  EXPECT_THAT(wispen_host_devices(), HasSubstr("phone, phone-small, "));
}

}  // namespace
}  // namespace wispen::uikit
