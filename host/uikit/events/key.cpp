// host/uikit/events/key.cpp: a key of the keyboard, on its way along the responder chain.

#include "host/uikit/events/key.hpp"

#include "host/uikit/controllers/view_controller.hpp"
#include "host/uikit/events/focus.hpp"
#include "host/uikit/views/application.hpp"
#include "host/uikit/views/responder.hpp"

namespace wispen::uikit {

Key Key::make(KeyState key) {
  Key made = objc::make<Key>();
  made.state<KeyState>() = std::move(key);
  return made;
}

void Key::define() { objc::Class<Key>().state<KeyState>().register_class(); }

namespace {

bool offer(Responder responder, const Key& key) {
  for (; responder; responder = responder.next()) {
    if (objc::responds_to(responder, objc::selector<"_handleKey:">()) &&
        objc::send<"_handleKey:", bool>(responder, key)) {
      return true;
    }
  }
  return false;
}

Responder topmost_controller() {
  ViewController controller = Application::shared().key_window().rootViewController();
  while (controller && controller.presented()) controller = controller.presented();
  return controller;
}

}  // namespace

bool press_key(const KeyState& state) {
  const Key key = Key::make(state);
  const Responder first = Responder::first();
  if (first && offer(first, key)) return true;
  if (state.code == KeyCode::Tab) return move_focus(!state.shift);
  const View focused = focused_view();
  if (focused && focused != first && offer(focused, key)) return true;
  if (first || focused) return false;
  const std::vector<View> candidates = focusable_views();
  if (!candidates.empty()) return offer(candidates.front().superview(), key);
  // Nothing there takes the focus, as on a sheet of text: the page itself may know the key.
  return offer(topmost_controller(), key);
}

}  // namespace wispen::uikit
