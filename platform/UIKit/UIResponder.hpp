// platform/UIKit/UIResponder.hpp: what events travel along.
#pragma once

#include "platform/Foundation.hpp"

class UIResponder : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIResponder"};
  using NSObject::NSObject;

  UIResponder nextResponder() const { return objc::send<"nextResponder", UIResponder>(*this); }
  bool isFirstResponder() const { return objc::send<"isFirstResponder", bool>(*this); }
  bool canBecomeFirstResponder() const { return objc::send<"canBecomeFirstResponder", bool>(*this); }
  bool canResignFirstResponder() const { return objc::send<"canResignFirstResponder", bool>(*this); }
  bool becomeFirstResponder() const { return objc::send<"becomeFirstResponder", bool>(*this); }
  bool resignFirstResponder() const { return objc::send<"resignFirstResponder", bool>(*this); }
};
