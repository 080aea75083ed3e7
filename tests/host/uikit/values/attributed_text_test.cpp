// tests/host/uikit/values/attributed_text_test.cpp: attributed strings, and paragraph styles.

#include "host/uikit/values/attributed_text.hpp"

#include "host/uikit/values/color.hpp"
#include "host/uikit/values/font.hpp"
#include "platform/UIKit.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

class AttributedTextTest : public HostTest {
 protected:
  static NSMutableAttributedString text(const char* utf8) {
    return NSMutableAttributedString::alloc().initWithString(NSString(utf8));
  }
};

TEST_F(AttributedTextTest, TakesWhatTheStringSaysAndTheRestFromTheDefaults) {
  const auto string = text("one two");
  string.addAttribute(NSFontAttributeName, UIFont::boldSystemFontOfSize(20), {4, 3});
  string.addAttribute(NSForegroundColorAttributeName, UIColor::redColor(), {4, 3});
  string.addAttribute(NSKernAttributeName, NSNumber::numberWithDouble(1.5), {0, 3});
  graphics::TextAttributes defaults;
  defaults.font = graphics::Font::system(11);
  const graphics::AttributedText drawn = uikit::attributed_text_of(string, defaults);
  EXPECT_EQ(drawn.utf8(), "one two");
  ASSERT_EQ(drawn.runs().size(), 3u);
  EXPECT_EQ(drawn.attributes_at(0).font, graphics::Font::system(11));
  EXPECT_EQ(drawn.attributes_at(0).kern, 1.5);
  EXPECT_EQ(drawn.attributes_at(3), defaults);
  EXPECT_EQ(drawn.attributes_at(4).font, graphics::Font::bold_system(20));
  EXPECT_EQ(drawn.attributes_at(4).colour, graphics::Colour::rgb(1, 0, 0));
}

TEST_F(AttributedTextTest, ReadsEveryAttributeThatIsDrawn) {
  const auto string = text("x");
  string.addAttribute(NSBackgroundColorAttributeName, UIColor::blueColor(), {0, 1});
  string.addAttribute(NSUnderlineStyleAttributeName, NSNumber::numberWithInteger(1), {0, 1});
  string.addAttribute(NSStrikethroughStyleAttributeName, NSNumber::numberWithInteger(1), {0, 1});
  string.addAttribute(NSBaselineOffsetAttributeName, NSNumber::numberWithDouble(-2), {0, 1});
  const auto drawn = uikit::attributed_text_of(string, {}).attributes_at(0);
  EXPECT_EQ(drawn.background, graphics::Colour::rgb(0, 0, 1));
  EXPECT_TRUE(drawn.underline);
  EXPECT_TRUE(drawn.strikethrough);
  EXPECT_EQ(drawn.baseline_offset, -2);
}

TEST_F(AttributedTextTest, CountsPlacesInUtf16) {
  const auto string = text("\xF0\x9F\x8E\x88x");
  string.addAttribute(NSUnderlineStyleAttributeName, NSNumber::numberWithInteger(1), {2, 1});
  const auto drawn = uikit::attributed_text_of(string, {});
  EXPECT_EQ(drawn.length(), 3u);
  EXPECT_FALSE(drawn.attributes_at(0).underline);
  EXPECT_TRUE(drawn.attributes_at(2).underline);
}

TEST_F(AttributedTextTest, PassesOverValuesOfTheWrongKind) {
  const auto string = text("x");
  string.addAttribute(NSFontAttributeName, "no font"_ns, {0, 1});
  string.addAttribute(NSForegroundColorAttributeName, NSNumber::numberWithInt(1), {0, 1});
  string.addAttribute(NSParagraphStyleAttributeName, "no style"_ns, {0, 1});
  EXPECT_EQ(uikit::attributed_text_of(string, {}).attributes_at(0), graphics::TextAttributes());
  EXPECT_FALSE(uikit::paragraph_look_of(string));
}

TEST_F(AttributedTextTest, OfNothingIsEmpty) {
  EXPECT_TRUE(uikit::attributed_text_of(NSAttributedString(), {}).empty());
  EXPECT_TRUE(uikit::attributed_text_of(text(""), {}).empty());
  EXPECT_FALSE(uikit::paragraph_look_of(NSAttributedString()));
}

TEST_F(AttributedTextTest, GivesItsFirstParagraphsStyle) {
  const auto style = objc::make<NSMutableParagraphStyle>();
  style.setAlignment(NSTextAlignment::Center);
  style.setLineSpacing(4);
  const auto string = text("one");
  string.addAttribute(NSParagraphStyleAttributeName, style, {0, 3});
  const auto look = uikit::paragraph_look_of(string);
  ASSERT_TRUE(look);
  EXPECT_EQ(look->alignment, NSTextAlignment::Center);
  EXPECT_EQ(look->line_spacing, 4);
}

TEST_F(AttributedTextTest, AStylesCopyStaysAsItIs) {
  const auto style = objc::make<NSMutableParagraphStyle>();
  style.setLineBreakMode(NSLineBreakMode::ByTruncatingTail);
  const auto copy = objc::send<"copy", NSParagraphStyle>(style);
  EXPECT_TRUE(copy.isEqual(style));
  style.setParagraphSpacing(3);
  EXPECT_EQ(copy.paragraphSpacing(), 0);
  EXPECT_FALSE(copy.isEqual(style));
  const NSMutableParagraphStyle changed = copy.mutableCopy();
  changed.setLineSpacing(2);
  EXPECT_EQ(changed.lineBreakMode(), NSLineBreakMode::ByTruncatingTail);
  EXPECT_EQ(NSParagraphStyle::defaultParagraphStyle().alignment(), NSTextAlignment::Natural);
}

TEST_F(AttributedTextTest, ExportsThePlatformsNames) {
  EXPECT_EQ(NSFontAttributeName.utf8(), "NSFont");
  EXPECT_EQ(NSForegroundColorAttributeName.utf8(), "NSColor");
  EXPECT_EQ(NSUnderlineStyleAttributeName.utf8(), "NSUnderline");
}

}  // namespace
}  // namespace wispen::testing
