// host/uikit/view/responder.cpp: UIResponder: the chain along which touches, keys and actions travel.

#include "host/uikit/view/responder.hpp"

#include "host/uikit/view/views.hpp"

namespace wispen::uikit {

namespace {

constinit objc::Unowned<UIResponder> first;

class Responder : public objc::Implementation<Responder, UIResponder> {
 public:
  // It became the first at some time, or this would not have been made. Compared without retaining: it is
  // going away.
  ~Responder() {
    if (first.refers_to(self())) first = objc::Unowned<UIResponder>();
  }

  UIResponder nextResponder() const { return UIResponder(); }
  bool can_become_first() const { return false; }
  bool can_resign_first() const { return true; }
  bool is_first() const { return first.get() == self(); }

  bool become_first() {
    if (is_first()) return true;
    if (!self().canBecomeFirstResponder()) return false;
    if (const UIResponder current = first_responder()) {
      if (!current.resignFirstResponder()) return false;
    }
    first = objc::Unowned<UIResponder>(self());
    return true;
  }
  bool resign_first() {
    if (!is_first()) return true;
    if (!self().canResignFirstResponder()) return false;
    first = objc::Unowned<UIResponder>();
    return true;
  }

  /// What a responder does not handle goes on to the next one.
  template <objc::FixedString Sel>
  void pass_on(const NSObject& touches, const NSObject& event) {
    objc::send<Sel>(self().nextResponder(), touches, event);
  }
};

}  // namespace

UIResponder first_responder() { return first.get(); }

void define_responder() {
  objc::Class<UIResponder>::implemented_by<Responder>()
      .method<"nextResponder", &Responder::nextResponder>()
      .method<"canBecomeFirstResponder", &Responder::can_become_first>()
      .method<"canResignFirstResponder", &Responder::can_resign_first>()
      .method<"isFirstResponder", &Responder::is_first>()
      .method<"becomeFirstResponder", &Responder::become_first>()
      .method<"resignFirstResponder", &Responder::resign_first>()
      .method<"touchesBegan:withEvent:", &Responder::pass_on<"touchesBegan:withEvent:">>()
      .method<"touchesMoved:withEvent:", &Responder::pass_on<"touchesMoved:withEvent:">>()
      .method<"touchesEnded:withEvent:", &Responder::pass_on<"touchesEnded:withEvent:">>()
      .method<"touchesCancelled:withEvent:", &Responder::pass_on<"touchesCancelled:withEvent:">>()
      .register_class();
}

}  // namespace wispen::uikit
