// host/uikit/view/events/key.hpp: a key of the keyboard, on its way along the responder chain.
#pragma once

#include <string>

#include "platform/Foundation.hpp"

namespace wispen::uikit {

enum class KeyCode : NSInteger {
  Text,  // what it writes is in `text`
  Tab,
  Return,
  Escape,
  Backspace,
  Delete,
  Left,
  Right,
  Up,
  Down,
  Home,
  End,
  PageUp,
  PageDown,
};

/// What was pressed.
struct KeyPress {
  KeyCode code = KeyCode::Text;
  std::string text;  // UTF-8
  bool shift = false;
  bool command = false;  // control on a desktop keyboard

  bool is_space() const { return code == KeyCode::Text && text == " "; }
};

/// A key on its way along the responder chain.
class UIKey : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIKey"};
  using NSObject::NSObject;

  const KeyPress& press() const;
};

void define_key();

/// Brings a key to the first responder, else to the view with the focus, and up their chains until somebody
/// answers hooks::kHandleKey with yes. Tab moves the focus when nobody wants it. False where nobody did.
bool press_key(const KeyPress& key);

}  // namespace wispen::uikit
