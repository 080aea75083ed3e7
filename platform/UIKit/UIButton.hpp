// platform/UIKit/UIButton.hpp: words or a picture to press.
#pragma once

#include "platform/UIKit/UIControl.hpp"
#include "platform/UIKit/UIImageView.hpp"
#include "platform/UIKit/UILabel.hpp"

enum class UIButtonType : NSInteger {
  Custom = 0,
  System = 1,
  DetailDisclosure = 2,
  InfoLight = 3,
  InfoDark = 4,
  ContactAdd = 5,
  Close = 7
};

class UIButton : public UIControl {
 public:
  using Base = UIControl;
  static constexpr objc::FixedString kClass{"UIButton"};
  using UIControl::UIControl;

  static UIButton buttonWithType(UIButtonType type) {
    return objc::send<"buttonWithType:", UIButton>(objc::class_for<UIButton>(), type);
  }

  UIButtonType buttonType() const { return objc::send<"buttonType", UIButtonType>(*this); }
  UILabel titleLabel() const { return objc::send<"titleLabel", UILabel>(*this); }
  UIImageView imageView() const { return objc::send<"imageView", UIImageView>(*this); }
  NSString currentTitle() const { return objc::send<"currentTitle", NSString>(*this); }
  NSString titleForState(UIControlState state) const {
    return objc::send<"titleForState:", NSString>(*this, state);
  }
  // What a state lacks is the normal one's.
  void setTitle(const NSString& title, UIControlState state) const {
    objc::send<"setTitle:forState:">(*this, title, state);
  }
  void setTitleColor(const UIColor& color, UIControlState state) const {
    objc::send<"setTitleColor:forState:">(*this, color, state);
  }
  void setImage(const UIImage& image, UIControlState state) const {
    objc::send<"setImage:forState:">(*this, image, state);
  }
};
