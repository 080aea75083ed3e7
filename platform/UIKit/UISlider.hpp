// platform/UIKit/UISlider.hpp: a value between two others.
#pragma once

#include "platform/UIKit/UIControl.hpp"
#include "platform/UIKit/UIImage.hpp"

class UISlider : public UIControl {
 public:
  using Base = UIControl;
  static constexpr objc::FixedString kClass{"UISlider"};
  using UIControl::UIControl;
  static UIViewAllocated<UISlider> alloc() { return UIViewAllocated<UISlider>(objc::allocate<UISlider>()); }

  float value() const { return objc::send<"value", float>(*this); }
  /// Clamped to the range.
  void setValue(float value) const { objc::send<"setValue:">(*this, value); }
  void setValue(float value, bool animated) const {
    objc::send<"setValue:animated:">(*this, value, animated);
  }
  float minimumValue() const { return objc::send<"minimumValue", float>(*this); }
  void setMinimumValue(float value) const { objc::send<"setMinimumValue:">(*this, value); }
  float maximumValue() const { return objc::send<"maximumValue", float>(*this); }
  void setMaximumValue(float value) const { objc::send<"setMaximumValue:">(*this, value); }
  /// Whether a drag reports every value on its way.
  bool isContinuous() const { return objc::send<"isContinuous", bool>(*this); }
  void setContinuous(bool continuous) const { objc::send<"setContinuous:">(*this, continuous); }
  // Where the parts lie; a subclass may answer otherwise.
  CGRect trackRectForBounds(CGRect bounds) const {
    return objc::send<"trackRectForBounds:", CGRect>(*this, bounds);
  }
  CGRect thumbRectForBounds(CGRect bounds, CGRect track, float value) const {
    return objc::send<"thumbRectForBounds:trackRect:value:", CGRect>(*this, bounds, track, value);
  }
  CGRect minimumValueImageRectForBounds(CGRect bounds) const {
    return objc::send<"minimumValueImageRectForBounds:", CGRect>(*this, bounds);
  }
  CGRect maximumValueImageRectForBounds(CGRect bounds) const {
    return objc::send<"maximumValueImageRectForBounds:", CGRect>(*this, bounds);
  }
  UIColor minimumTrackTintColor() const { return objc::send<"minimumTrackTintColor", UIColor>(*this); }
  void setMinimumTrackTintColor(const UIColor& color) const {
    objc::send<"setMinimumTrackTintColor:">(*this, color);
  }
  void setMaximumTrackTintColor(const UIColor& color) const {
    objc::send<"setMaximumTrackTintColor:">(*this, color);
  }
  void setThumbTintColor(const UIColor& color) const { objc::send<"setThumbTintColor:">(*this, color); }
  void setMinimumValueImage(const UIImage& image) const { objc::send<"setMinimumValueImage:">(*this, image); }
  void setMaximumValueImage(const UIImage& image) const { objc::send<"setMaximumValueImage:">(*this, image); }
};
