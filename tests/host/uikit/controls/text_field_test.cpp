// tests/host/uikit/controls/text_field_test.cpp: writing, by keyboard.

#include "host/uikit/controls/text_field.hpp"

#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

using ::testing::ElementsAre;

class TextFieldTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    field_ = objc::make<UITextField>();
    field_.addTarget(listener_, objc::selector<"first:">(), UIControlEventEditingDidBegin);
    field_.addTarget(listener_, objc::selector<"changed:">(), UIControlEventEditingChanged);
    field_.addTarget(listener_, objc::selector<"second:">(), UIControlEventEditingDidEnd);
    show(field_, {{20, 100}, {200, 34}});
  }
  void TearDown() override {
    field_ = UITextField();
    ScreenTest::TearDown();
  }
  std::string text() const { return field_.text().utf8(); }
  UITextField field_;
};

TEST_F(TextFieldTest, WritesFromATapToTheReturnKey) {
  tap(middle(field_));
  EXPECT_TRUE(field_.isEditing());
  type("h");
  type("\xC3\xA9");
  type("\xF0\x9F\x98\x80");
  EXPECT_EQ(text(), "h\xC3\xA9\xF0\x9F\x98\x80");
  field_.resignFirstResponder();
  EXPECT_FALSE(field_.isEditing());
  EXPECT_THAT(listener_.take(), ElementsAre("first", "changed", "changed", "changed", "second"));
}

TEST_F(TextFieldTest, TellsNobodyWhenCodeSetsIt) {
  field_.setText("set"_ns);
  EXPECT_TRUE(listener_.heard().empty());
}

TEST_F(TextFieldTest, NeverPartsACharacter) {
  field_.setText("a\xF0\x9F\x98\x80z"_ns);
  field_.becomeFirstResponder();
  key(KeyCode::Left);
  key(KeyCode::Backspace);
  EXPECT_EQ(text(), "az");
  key(KeyCode::Delete);
  EXPECT_EQ(text(), "a");
}

TEST_F(TextFieldTest, SelectsWithShiftAndReplacesWhatIsSelected) {
  field_.setText("value"_ns);
  field_.becomeFirstResponder();
  key(KeyCode::Left, true);
  key(KeyCode::Left, true);
  type("id");
  EXPECT_EQ(text(), "valid");
  press_key({.code = KeyCode::Text, .text = "a", .shift = false, .command = true});
  type("x");
  EXPECT_EQ(text(), "x");
}

TEST_F(TextFieldTest, MovesToItsEnds) {
  field_.setText("mid"_ns);
  field_.becomeFirstResponder();
  key(KeyCode::Home);
  type("<");
  key(KeyCode::End);
  type(">");
  EXPECT_EQ(text(), "<mid>");
}

TEST_F(TextFieldTest, IsReachedByTabAndOpenedByReturn) {
  key(KeyCode::Tab);
  EXPECT_EQ(focused_view(), field_);
  key(KeyCode::Return);
  EXPECT_TRUE(field_.isEditing());
  type("k");
  EXPECT_EQ(text(), "k");
}

TEST_F(TextFieldTest, HidesWhatIsSecure) {
  objc::send<"setSecureTextEntry:">(field_, true);
  field_.setText("wide words"_ns);
  const double hidden = field_.intrinsicContentSize().width;
  field_.setText("iiiiiiiiii"_ns);
  EXPECT_EQ(field_.intrinsicContentSize().width, hidden);
}

TEST_F(TextFieldTest, IsDeafWhileDisabled) {
  field_.setEnabled(false);
  tap(middle(field_));
  EXPECT_FALSE(field_.isEditing());
}

}  // namespace
}  // namespace wispen::uikit
