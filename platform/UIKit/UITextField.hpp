// platform/UIKit/UITextField.hpp: a line of text to write.
#pragma once

#include "platform/UIKit/NSParagraphStyle.hpp"
#include "platform/UIKit/UIControl.hpp"
#include "platform/UIKit/UIFont.hpp"

enum class UIKeyboardType : NSInteger {
  Default = 0,
  ASCIICapable = 1,
  NumbersAndPunctuation = 2,
  URL = 3,
  NumberPad = 4,
  PhonePad = 5,
  NamePhonePad = 6,
  EmailAddress = 7,
  DecimalPad = 8
};

class UITextField : public UIControl {
 public:
  using Base = UIControl;
  static constexpr objc::FixedString kClass{"UITextField"};
  using UIControl::UIControl;
  static UIViewAllocated<UITextField> alloc() {
    return UIViewAllocated<UITextField>(objc::allocate<UITextField>());
  }

  NSString text() const { return objc::send<"text", NSString>(*this); }
  void setText(const NSString& text) const { objc::send<"setText:">(*this, text); }
  NSString placeholder() const { return objc::send<"placeholder", NSString>(*this); }
  void setPlaceholder(const NSString& text) const { objc::send<"setPlaceholder:">(*this, text); }
  UIFont font() const { return objc::send<"font", UIFont>(*this); }
  void setFont(const UIFont& font) const { objc::send<"setFont:">(*this, font); }
  UIColor textColor() const { return objc::send<"textColor", UIColor>(*this); }
  void setTextColor(const UIColor& color) const { objc::send<"setTextColor:">(*this, color); }
  NSTextAlignment textAlignment() const { return objc::send<"textAlignment", NSTextAlignment>(*this); }
  void setTextAlignment(NSTextAlignment alignment) const {
    objc::send<"setTextAlignment:">(*this, alignment);
  }
  UIKeyboardType keyboardType() const { return objc::send<"keyboardType", UIKeyboardType>(*this); }
  void setKeyboardType(UIKeyboardType type) const { objc::send<"setKeyboardType:">(*this, type); }
  bool isSecureTextEntry() const { return objc::send<"isSecureTextEntry", bool>(*this); }
  void setSecureTextEntry(bool secure) const { objc::send<"setSecureTextEntry:">(*this, secure); }
};
