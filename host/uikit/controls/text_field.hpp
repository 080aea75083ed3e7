// host/uikit/controls/text_field.hpp: UITextField: a line of text to write.
#pragma once

#include "host/graphics/font.hpp"
#include "host/graphics/text_layout.hpp"
#include "host/uikit/controls/control.hpp"
#include "platform/UIKit/UIFont.hpp"

namespace wispen::uikit {

struct TextFieldState;

/// The host's UITextField. Places in the text count UTF-16 units and never part a character.
class TextField : public objc::Authored<TextField, Control> {
 public:
  static constexpr objc::FixedString kClass{"UITextField"};
  using Authored::Authored;

  static void define();
  static TextField make();
  TextFieldState& field() const;

  NSString text() const;
  void set_text(const NSString& text) const;
  void set_font(const graphics::Font& font) const;
  bool is_editing() const;
  /// What copying takes: empty where nothing is selected, and where the text is a secret.
  NSString selected_text() const;
  /// Replaces the selection as the keyboard does: the delegate may refuse, and is told.
  bool insert(const std::u16string& text) const;

 private:
  friend struct TextFieldMethods;
};

}  // namespace wispen::uikit
