// platform/UIKit/UILabel.hpp: text that is read only.
#pragma once

#include "platform/UIKit/NSAttributedString.hpp"
#include "platform/UIKit/NSParagraphStyle.hpp"
#include "platform/UIKit/UIFont.hpp"
#include "platform/UIKit/UIView.hpp"

class UILabel : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"UILabel"};
  using UIView::UIView;
  static UIViewAllocated<UILabel> alloc() { return UIViewAllocated<UILabel>(objc::allocate<UILabel>()); }

  NSString text() const { return objc::send<"text", NSString>(*this); }
  void setText(const NSString& text) const { objc::send<"setText:">(*this, text); }
  NSAttributedString attributedText() const {
    return objc::send<"attributedText", NSAttributedString>(*this);
  }
  void setAttributedText(const NSAttributedString& text) const {
    objc::send<"setAttributedText:">(*this, text);
  }
  UIFont font() const { return objc::send<"font", UIFont>(*this); }
  void setFont(const UIFont& font) const { objc::send<"setFont:">(*this, font); }
  UIColor textColor() const { return objc::send<"textColor", UIColor>(*this); }
  void setTextColor(const UIColor& color) const { objc::send<"setTextColor:">(*this, color); }
  UIColor highlightedTextColor() const { return objc::send<"highlightedTextColor", UIColor>(*this); }
  void setHighlightedTextColor(const UIColor& color) const {
    objc::send<"setHighlightedTextColor:">(*this, color);
  }
  bool isHighlighted() const { return objc::send<"isHighlighted", bool>(*this); }
  void setHighlighted(bool highlighted) const { objc::send<"setHighlighted:">(*this, highlighted); }
  NSTextAlignment textAlignment() const { return objc::send<"textAlignment", NSTextAlignment>(*this); }
  void setTextAlignment(NSTextAlignment alignment) const {
    objc::send<"setTextAlignment:">(*this, alignment);
  }
  /// 0 is as many as there are.
  NSInteger numberOfLines() const { return objc::send<"numberOfLines", NSInteger>(*this); }
  void setNumberOfLines(NSInteger lines) const { objc::send<"setNumberOfLines:">(*this, lines); }
  void setLineBreakMode(NSLineBreakMode mode) const { objc::send<"setLineBreakMode:">(*this, mode); }
};
