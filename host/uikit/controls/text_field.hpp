// host/uikit/controls/text_field.hpp: UITextField: a line of text to write.
#pragma once

#include <memory>
#include <string>

#include "host/geometry/geometry.hpp"
#include "host/graphics/canvas.hpp"
#include "host/graphics/text_layout.hpp"
#include "host/uikit/controls/controls.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

std::u16string utf16(const NSString& text);
NSString string_of(const std::u16string& units);

/// The host's UITextField. Places in the text count UTF-16 units and never part a character.
class TextField : public objc::Implementation<TextField, UITextField> {
 public:
  void setFont(const UIFont& font);
  UIColor textColor();
  void setTextColor(const UIColor& colour);
  void paint_border(graphics::Canvas& canvas, const Rect& bounds);
  void paint(graphics::Canvas& canvas, const Rect& bounds);
  Size sizeThatFits(const Size&);
  Size intrinsicContentSize() { return sizeThatFits({}); }
  bool canBecomeFocused() { return self().isEnabled(); }
  void setPlaceholder(const NSString& text);
  NSObject delegate() { return delegate_.lock(); }
  void setDelegate(const NSObject& delegate) { delegate_ = delegate; }
  template <auto Member, class V>
  void set(V value) {
    this->*Member = value;
    self().setNeedsDisplay();
  }
  bool canBecomeFirstResponder();
  bool canResignFirstResponder();
  bool becomeFirstResponder();
  bool resignFirstResponder();
  void touchesBegan(const NSObject& touches, const UIEvent&);
  void touchesMoved(const NSObject& touches, const UIEvent&);
  void touchesEnded(const NSObject&, const UIEvent&) {}
  void move_caret(std::size_t to, bool extend);
  bool handleKey(const UIKey& key);
  void insertText(const NSString& text) { insert(utf16(text)); }
  void deleteBackward();
  bool hasText() { return !text_.empty(); }
  void selectAll(const NSObject&);
  UIFont font();
  /// What is seen in place of the text.
  std::u16string shown_text();
  std::shared_ptr<const graphics::TextLayout> line_with(const std::u16string& text);
  Rect text_area(const Rect& bounds);
  /// Where a line of that width begins.
  double line_start(const Rect& area, double width);
  void keep_caret_in_sight();
  NSString text() { return string_of(text_); }
  void setText(const NSString& text);
  /// What copying takes: empty where nothing is selected, and where the text is a secret.
  NSString selected_text();
  /// Replaces the selection as the keyboard does: the delegate may refuse, and is told.
  bool insert(const std::u16string& added);

 private:
  friend void define_text_field();

  bool ask_delegate(auto selector_constant) const;
  template <objc::FixedString Sel>
  void tell_delegate() const;
  std::size_t index_at(const UITouch& touch);
  bool press_return();

  std::u16string text_;
  NSString placeholder_;
  UIFont font_;
  UIColor colour_;
  NSTextAlignment alignment_ = NSTextAlignment::Natural;
  UITextBorderStyle border_style_ = UITextBorderStyle::None;
  UIKeyboardType keyboard_type_ = UIKeyboardType::Default;
  UIReturnKeyType return_key_type_ = UIReturnKeyType::Default;
  UITextAutocapitalizationType capitalization_ = UITextAutocapitalizationType::Sentences;
  UITextAutocorrectionType autocorrection_ = UITextAutocorrectionType::Default;
  UITextFieldViewMode clear_button_mode_ = UITextFieldViewMode::Never;
  bool secure_ = false;
  bool clears_on_begin_ = false;
  objc::Weak<NSObject> delegate_;
  std::size_t anchor_ = 0;  // the selection's fixed end
  std::size_t caret_ = 0;
  double scrolled_ = 0;  // points of the text that are out of sight on the left
  bool editing_ = false;
};

}  // namespace wispen::uikit
