// host/uikit/events/key.hpp: a key of the keyboard, on its way along the responder chain.
#pragma once

#include <string>

#include "platform/Foundation.hpp"

namespace wispen::uikit {

class Responder;

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

struct KeyState {
  KeyCode code = KeyCode::Text;
  std::string text;  // UTF-8
  bool shift = false;
  bool command = false;  // control on a desktop keyboard
};

class Key : public objc::Authored<Key, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIKey"};
  using Authored::Authored;

  static void define();
  static Key make(KeyState key);
  const KeyState& key() const { return state<KeyState>(); }
  KeyCode code() const { return key().code; }
  bool is_space() const { return code() == KeyCode::Text && key().text == " "; }
};

/// Brings a key to the first responder, else to the view with the focus, and up their chains until somebody
/// answers `_handleKey:` with yes. Tab moves the focus when nobody wants it. False where nobody did.
bool press_key(const KeyState& key);

}  // namespace wispen::uikit
