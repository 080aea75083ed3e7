// host/uikit/views/responder.cpp: UIResponder: the chain along which touches, keys and actions travel.

#include "host/uikit/views/responder.hpp"

namespace wispen::uikit {

namespace {

constinit objc::Unowned<Responder> first_responder;

Responder next_responder(const Responder&) { return Responder(); }
bool can_become_first(const Responder&) { return false; }
bool can_resign_first(const Responder&) { return true; }

bool become_first(const Responder& self) {
  if (self.isFirstResponder()) return true;
  if (!objc::send<"canBecomeFirstResponder", bool>(self)) return false;
  if (const Responder current = Responder::first()) {
    if (!current.resignFirstResponder()) return false;
  }
  first_responder = objc::Unowned<Responder>(self);
  return true;
}

bool resign_first(const Responder& self) {
  if (!self.isFirstResponder()) return true;
  if (!objc::send<"canResignFirstResponder", bool>(self)) return false;
  first_responder = objc::Unowned<Responder>();
  return true;
}

// What a responder does not handle goes on to the next one.
template <objc::FixedString Sel>
void pass_on(const Responder& self, const NSObject& touches, const NSObject& event) {
  objc::send<Sel>(self.next(), touches, event);
}

}  // namespace

Responder Responder::first() { return first_responder.get(); }

bool Responder::isFirstResponder() const { return first_responder.get() == *this; }

bool Responder::becomeFirstResponder() const { return objc::send<"becomeFirstResponder", bool>(*this); }
bool Responder::resignFirstResponder() const { return objc::send<"resignFirstResponder", bool>(*this); }

void Responder::forgetFirst() {
  // Compared without retaining: the object is going away.
  if (first_responder.refers_to(*this)) first_responder = objc::Unowned<Responder>();
}

void Responder::define() {
  objc::Class<Responder>()
      .on_dealloc<&Responder::forgetFirst>()
      .method<"nextResponder", &next_responder>()
      .method<"canBecomeFirstResponder", &can_become_first>()
      .method<"canResignFirstResponder", &can_resign_first>()
      .method<"isFirstResponder", &Responder::isFirstResponder>()
      .method<"becomeFirstResponder", &become_first>()
      .method<"resignFirstResponder", &resign_first>()
      .method<"touchesBegan:withEvent:", &pass_on<"touchesBegan:withEvent:">>()
      .method<"touchesMoved:withEvent:", &pass_on<"touchesMoved:withEvent:">>()
      .method<"touchesEnded:withEvent:", &pass_on<"touchesEnded:withEvent:">>()
      .method<"touchesCancelled:withEvent:", &pass_on<"touchesCancelled:withEvent:">>()
      .register_class();
}

}  // namespace wispen::uikit
