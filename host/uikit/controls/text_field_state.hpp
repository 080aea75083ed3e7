// host/uikit/controls/text_field_state.hpp: what a text field knows, for the sources that make it.
#pragma once

#include <memory>
#include <string>

#include "host/uikit/controls/text_field.hpp"
#include "host/uikit/events/key.hpp"

namespace wispen::uikit {

struct TextFieldState {
  std::u16string text;
  NSString placeholder;
  UIFont font;
  UIColor colour;
  NSInteger alignment = 4;
  NSInteger border_style = 0;  // 0 none, 1 line, 2 bezel, 3 rounded
  NSInteger keyboard_type = 0;
  NSInteger return_key_type = 0;
  NSInteger capitalization = 2;  // 0 none, 1 words, 2 sentences, 3 all
  NSInteger autocorrection = 0;
  NSInteger clear_button_mode = 0;
  bool secure = false;
  bool clears_on_begin = false;
  bool shrinks = false;
  objc::Weak<NSObject> delegate;
  std::size_t anchor = 0;  // the selection's fixed end
  std::size_t caret = 0;
  double scrolled = 0;  // points of the text that are out of sight on the left
  bool editing = false;
};

std::u16string utf16(const NSString& text);
NSString string_of(const std::u16string& units);

/// The one line of a field: how it is set, and where it lies.
struct TextFieldLine {
  using Self = TextField;

  static UIFont font(const Self& self);
  /// What is seen in place of the text.
  static std::u16string shown(const Self& self);
  static std::shared_ptr<const graphics::TextLayout> set(const Self& self, const std::u16string& text);
  static Rect area(const Self& self, const Rect& bounds);
  /// Where a line of that width begins.
  static double x(const Self& self, const Rect& area, double width);
  static void keep_caret_in_sight(const Self& self);

  static constexpr double kCaretWidth = 2;
};

/// Writing: who is asked and told, the caret, the keys.
struct TextEditing {
  using Self = TextField;

  static bool canBecomeFirstResponder(const Self& self);
  static bool canResignFirstResponder(const Self& self);
  static bool becomeFirstResponder(const Self& self);
  static bool resignFirstResponder(const Self& self);
  static void touchesBegan(const Self& self, const NSObject& touches, const Event& event);
  static void touchesMoved(const Self& self, const NSObject& touches, const Event& event);
  static void touchesEnded(const Self& self, const NSObject& touches, const Event& event);
  static bool handleKey(const Self& self, const Key& key);
  static void insertText(const Self& self, const NSString& text);
  static void deleteBackward(const Self& self);
  static bool hasText(const Self& self);
  static void selectAll(const Self& self, const NSObject& sender);
  static void move_caret(const Self& self, std::size_t to, bool extend);
};

}  // namespace wispen::uikit
