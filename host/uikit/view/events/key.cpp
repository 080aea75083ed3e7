// host/uikit/view/events/key.cpp: a key of the keyboard, on its way along the responder chain.

#include "host/uikit/view/events/key.hpp"

#include "host/uikit/view/application.hpp"
#include "host/uikit/view/events/focus.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/responder.hpp"

namespace wispen::uikit {

namespace {

class Key : public objc::Implementation<Key, UIKey> {
 public:
  KeyPress press;
};

bool offer(UIResponder responder, const UIKey& key) {
  for (; responder; responder = responder.nextResponder()) {
    if (objc::responds_to(responder, objc::selector<hooks::kHandleKey>()) &&
        objc::send<hooks::kHandleKey, bool>(responder, key)) {
      return true;
    }
  }
  return false;
}

UIResponder topmost_controller() {
  UIViewController controller = Application::shared().key_window().rootViewController();
  while (controller && controller.presentedViewController())
    controller = controller.presentedViewController();
  return controller;
}

}  // namespace

const KeyPress& UIKey::press() const { return Key::of(*this).press; }

void define_key() { objc::Class<UIKey>::implemented_by<Key>().register_class(); }

bool press_key(const KeyPress& press) {
  const UIKey key = objc::make<UIKey>();
  Key::of(key).press = press;
  const UIResponder first = first_responder();
  if (first && offer(first, key)) return true;
  if (press.code == KeyCode::Tab) return move_focus(!press.shift);
  const UIView focused = focused_view();
  if (focused && focused != first && offer(focused, key)) return true;
  if (first || focused) return false;
  const std::vector<UIView> candidates = focusable_views();
  if (!candidates.empty()) return offer(candidates.front().superview(), key);
  // Nothing there takes the focus, as on a sheet of text: the page itself may know the key.
  return offer(topmost_controller(), key);
}

}  // namespace wispen::uikit
