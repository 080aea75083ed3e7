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
    field_ = TextField::make();
    field_.addTarget(listener_, objc::selector<"first:">(), control_event::kEditingDidBegin);
    field_.addTarget(listener_, objc::selector<"changed:">(), control_event::kEditingChanged);
    field_.addTarget(listener_, objc::selector<"second:">(), control_event::kEditingDidEnd);
    show(field_, {{20, 100}, {200, 34}});
  }
  void TearDown() override {
    field_ = TextField();
    ScreenTest::TearDown();
  }
  std::string text() const { return field_.text().utf8(); }
  TextField field_;
};

TEST_F(TextFieldTest, WritesFromATapToTheReturnKey) {
  tap(middle(field_));
  EXPECT_TRUE(field_.is_editing());
  type("h");
  type("\xC3\xA9");
  type("\xF0\x9F\x98\x80");
  EXPECT_EQ(text(), "h\xC3\xA9\xF0\x9F\x98\x80");
  field_.resignFirstResponder();
  EXPECT_FALSE(field_.is_editing());
  EXPECT_THAT(listener_.take(), ElementsAre("first", "changed", "changed", "changed", "second"));
}

TEST_F(TextFieldTest, TellsNobodyWhenCodeSetsIt) {
  field_.set_text("set"_ns);
  EXPECT_TRUE(listener_.heard().empty());
}

TEST_F(TextFieldTest, NeverPartsACharacter) {
  field_.set_text("a\xF0\x9F\x98\x80z"_ns);
  objc::send<"becomeFirstResponder", bool>(field_);
  key(KeyCode::Left);
  key(KeyCode::Backspace);
  EXPECT_EQ(text(), "az");
  key(KeyCode::Delete);
  EXPECT_EQ(text(), "a");
}

TEST_F(TextFieldTest, SelectsWithShiftAndReplacesWhatIsSelected) {
  field_.set_text("value"_ns);
  objc::send<"becomeFirstResponder", bool>(field_);
  key(KeyCode::Left, true);
  key(KeyCode::Left, true);
  type("id");
  EXPECT_EQ(text(), "valid");
  press_key({.code = KeyCode::Text, .text = "a", .shift = false, .command = true});
  type("x");
  EXPECT_EQ(text(), "x");
}

TEST_F(TextFieldTest, MovesToItsEnds) {
  field_.set_text("mid"_ns);
  objc::send<"becomeFirstResponder", bool>(field_);
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
  EXPECT_TRUE(field_.is_editing());
  type("k");
  EXPECT_EQ(text(), "k");
}

TEST_F(TextFieldTest, HidesWhatIsSecure) {
  objc::send<"setSecureTextEntry:">(field_, true);
  field_.set_text("wide words"_ns);
  const double hidden = field_.intrinsicContentSize().width;
  field_.set_text("iiiiiiiiii"_ns);
  EXPECT_EQ(field_.intrinsicContentSize().width, hidden);
}

TEST_F(TextFieldTest, IsDeafWhileDisabled) {
  field_.setEnabled(false);
  tap(middle(field_));
  EXPECT_FALSE(field_.is_editing());
}

}  // namespace
}  // namespace wispen::uikit
