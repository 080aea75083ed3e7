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

enum class UITextBorderStyle : NSInteger { None = 0, Line = 1, Bezel = 2, RoundedRect = 3 };
enum class UIReturnKeyType : NSInteger { Default = 0, Go = 1, Next = 4, Search = 6, Send = 7, Done = 9 };
enum class UITextAutocapitalizationType : NSInteger { None = 0, Words = 1, Sentences = 2, AllCharacters = 3 };
enum class UITextAutocorrectionType : NSInteger { Default = 0, No = 1, Yes = 2 };
enum class UITextFieldViewMode : NSInteger { Never = 0, WhileEditing = 1, UnlessEditing = 2, Always = 3 };

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
  void setAutocapitalizationType(UITextAutocapitalizationType type) const {
    objc::send<"setAutocapitalizationType:">(*this, type);
  }
  void setAutocorrectionType(UITextAutocorrectionType type) const {
    objc::send<"setAutocorrectionType:">(*this, type);
  }
  void setReturnKeyType(UIReturnKeyType type) const { objc::send<"setReturnKeyType:">(*this, type); }
  void setBorderStyle(UITextBorderStyle style) const { objc::send<"setBorderStyle:">(*this, style); }
  void setClearButtonMode(UITextFieldViewMode mode) const { objc::send<"setClearButtonMode:">(*this, mode); }
  /// Not kept alive.
  NSObject delegate() const { return objc::send<"delegate", NSObject>(*this); }
  void setDelegate(const objc::Object& delegate) const { objc::send<"setDelegate:">(*this, delegate); }
  bool isEditing() const { return objc::send<"isEditing", bool>(*this); }
  bool isSecureTextEntry() const { return objc::send<"isSecureTextEntry", bool>(*this); }
  void setSecureTextEntry(bool secure) const { objc::send<"setSecureTextEntry:">(*this, secure); }
};
