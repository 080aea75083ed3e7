// tests/host/uikit/controls/text_input_test.cpp: what fields, segments and sliders say of themselves.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

class TextInputTest : public ScreenTest {};

TEST_F(TextInputTest, AFieldTakesTextByMessage) {
  const UITextField field = objc::make<UITextField>();
  show(field, {{0, 0}, {200, 30}});
  EXPECT_FALSE((objc::send<"hasText", bool>(field)));
  field.becomeFirstResponder();
  objc::send<"insertText:">(field, "abc"_ns);
  objc::send<"deleteBackward">(field);
  EXPECT_EQ(field.text().utf8(), "ab");
  EXPECT_TRUE((objc::send<"hasText", bool>(field)));
  objc::send<"selectAll:">(field, NSObject());
  objc::send<"insertText:">(field, "z"_ns);
  EXPECT_EQ(field.text().utf8(), "z");
}

TEST_F(TextInputTest, AFieldKeepsWhatItIsTold) {
  const UITextField field = objc::make<UITextField>();
  expect_kept<"borderStyle", "setBorderStyle:">(field, NSInteger{3});
  expect_kept<"clearButtonMode", "setClearButtonMode:">(field, NSInteger{3});
  expect_kept<"returnKeyType", "setReturnKeyType:">(field, NSInteger{9});
  expect_kept<"autocapitalizationType", "setAutocapitalizationType:">(field, NSInteger{3});
  expect_kept<"autocorrectionType", "setAutocorrectionType:">(field, NSInteger{1});
}

TEST_F(TextInputTest, AFieldIsEmptiedWhereEditingBeginsSo) {
  const UITextField field = objc::make<UITextField>();
  field.setText("old"_ns);
  expect_kept<"clearsOnBeginEditing", "setClearsOnBeginEditing:">(field, true);
  show(field, {{0, 0}, {200, 30}});
  field.becomeFirstResponder();
  EXPECT_EQ(field.text().utf8(), "");
}

TEST_F(TextInputTest, SegmentsKeepTheirImagesWidthsAndColours) {
  const UISegmentedControl segments = objc::make<UISegmentedControl>();
  const UIImage gear = UIImage::systemImageNamed("gear"_ns);
  objc::send<"insertSegmentWithImage:atIndex:animated:">(segments, gear, NSUInteger{0}, false);
  objc::send<"insertSegmentWithTitle:atIndex:animated:">(segments, "B"_ns, NSUInteger{1}, false);
  objc::send<"setWidth:forSegmentAtIndex:">(segments, 80.0, NSUInteger{1});
  EXPECT_EQ((objc::send<"widthForSegmentAtIndex:", CGFloat>(segments, NSUInteger{1})), 80);
  EXPECT_FALSE((objc::send<"isMomentary", bool>(segments)));
  const UIColor red = UIColor::redColor();
  expect_kept<"selectedSegmentTintColor", "setSelectedSegmentTintColor:">(segments, red);
  expect_kept<"apportionsSegmentWidthsByContent", "setApportionsSegmentWidthsByContent:">(segments, true);
  NSMutableDictionary attributes = NSMutableDictionary::dictionary();
  attributes.setObject(red, NSForegroundColorAttributeName);
  objc::send<"setTitleTextAttributes:forState:">(segments, attributes, NSUInteger{0});
  EXPECT_TRUE((objc::send<"titleTextAttributesForState:", NSDictionary>(segments, NSUInteger{0}))
                  .isEqual(attributes));
}

TEST_F(TextInputTest, ControlsSayTheirValueToWhoCannotSeeThem) {
  const UISlider slider = objc::make<UISlider>();
  slider.setValue(0.25F, false);
  EXPECT_EQ((objc::send<"accessibilityValue", NSString>(slider)).utf8(), "25%");
  const UISwitch control = objc::make<UISwitch>();
  control.setOn(true, false);
  EXPECT_EQ((objc::send<"accessibilityValue", NSString>(control)).utf8(), "1");
}

TEST_F(TextInputTest, ASliderKeepsItsImagesAndItsTrack) {
  const UISlider slider = objc::make<UISlider>();
  const UIImage image = UIImage::systemImageNamed("gear"_ns);
  const UIColor red = UIColor::redColor();
  expect_kept<"minimumValueImage", "setMinimumValueImage:">(slider, image);
  expect_kept<"maximumValueImage", "setMaximumValueImage:">(slider, image);
  expect_kept<"maximumTrackTintColor", "setMaximumTrackTintColor:">(slider, red);
  expect_kept<"contentVerticalAlignment", "setContentVerticalAlignment:">(slider, NSInteger{1});
}

}  // namespace
}  // namespace wispen::uikit
