// host/uikit/views/responder.hpp: UIResponder: the chain along which touches, keys and actions travel.
#pragma once

#include "platform/Foundation.hpp"

namespace wispen::uikit {

class Responder : public objc::Authored<Responder, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIResponder"};
  using Authored::Authored;

  static void define();

  /// The next in the chain, nil at its end. Sent as a message, since every kind of responder answers
  /// otherwise.
  Responder next() const { return objc::send<"nextResponder", Responder>(*this); }

  bool isFirstResponder() const;
  // Messages too: text fields take part.
  bool becomeFirstResponder() const;
  bool resignFirstResponder() const;

  /// Who gets the keys; nil when nobody.
  static Responder first();

 private:
  void forgetFirst();
};

}  // namespace wispen::uikit
