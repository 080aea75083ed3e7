// platform/UIKit/UISwitch.hpp: something that is on or off.
#pragma once

#include "platform/UIKit/UIControl.hpp"

/// 51 by 31 points, whatever frame it is given.
class UISwitch : public UIControl {
 public:
  using Base = UIControl;
  static constexpr objc::FixedString kClass{"UISwitch"};
  using UIControl::UIControl;
  static UIViewAllocated<UISwitch> alloc() { return UIViewAllocated<UISwitch>(objc::allocate<UISwitch>()); }

  bool isOn() const { return objc::send<"isOn", bool>(*this); }
  void setOn(bool on) const { objc::send<"setOn:">(*this, on); }
  void setOn(bool on, bool animated) const { objc::send<"setOn:animated:">(*this, on, animated); }
  UIColor onTintColor() const { return objc::send<"onTintColor", UIColor>(*this); }
  void setOnTintColor(const UIColor& color) const { objc::send<"setOnTintColor:">(*this, color); }
  UIColor thumbTintColor() const { return objc::send<"thumbTintColor", UIColor>(*this); }
  void setThumbTintColor(const UIColor& color) const { objc::send<"setThumbTintColor:">(*this, color); }
};
