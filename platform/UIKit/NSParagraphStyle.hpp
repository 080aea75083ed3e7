// platform/UIKit/NSParagraphStyle.hpp: how the lines of a paragraph lie.
#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation.hpp"

enum class NSTextAlignment : NSInteger { Left = 0, Center = 1, Right = 2, Justified = 3, Natural = 4 };

enum class NSLineBreakMode : NSInteger {
  ByWordWrapping = 0,
  ByCharWrapping = 1,
  ByClipping = 2,
  ByTruncatingHead = 3,
  ByTruncatingTail = 4,
  ByTruncatingMiddle = 5
};

class NSMutableParagraphStyle;

class NSParagraphStyle : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSParagraphStyle"};
  using NSObject::NSObject;

  static NSParagraphStyle defaultParagraphStyle() {
    return objc::send<"defaultParagraphStyle", NSParagraphStyle>(objc::class_for<NSParagraphStyle>());
  }
  NSTextAlignment alignment() const { return objc::send<"alignment", NSTextAlignment>(*this); }
  NSLineBreakMode lineBreakMode() const { return objc::send<"lineBreakMode", NSLineBreakMode>(*this); }
  /// Points between one line and the next.
  CGFloat lineSpacing() const { return objc::send<"lineSpacing", CGFloat>(*this); }
  /// Points after the paragraph.
  CGFloat paragraphSpacing() const { return objc::send<"paragraphSpacing", CGFloat>(*this); }
  NSMutableParagraphStyle mutableCopy() const;
};

class NSMutableParagraphStyle : public NSParagraphStyle {
 public:
  using Base = NSParagraphStyle;
  static constexpr objc::FixedString kClass{"NSMutableParagraphStyle"};
  using NSParagraphStyle::NSParagraphStyle;

  static objc::Allocated<NSMutableParagraphStyle> alloc() {
    return objc::allocate<NSMutableParagraphStyle>();
  }
  void setAlignment(NSTextAlignment alignment) const { objc::send<"setAlignment:">(*this, alignment); }
  void setLineBreakMode(NSLineBreakMode mode) const { objc::send<"setLineBreakMode:">(*this, mode); }
  void setLineSpacing(CGFloat points) const { objc::send<"setLineSpacing:">(*this, points); }
  void setParagraphSpacing(CGFloat points) const { objc::send<"setParagraphSpacing:">(*this, points); }
};

inline NSMutableParagraphStyle NSParagraphStyle::mutableCopy() const {
  return objc::send<"mutableCopy", NSMutableParagraphStyle>(*this);
}
