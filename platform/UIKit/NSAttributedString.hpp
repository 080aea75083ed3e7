// platform/UIKit/NSAttributedString.hpp: text with attributes, and the attributes that UIKit draws.
#pragma once

#include "platform/Foundation.hpp"

// The platform's exported string objects. A handle has the layout of the pointer that the symbol is, so the
// symbol is declared as what it means. On the desktop they are nil until the host has started.
extern "C" {
extern const NSString NSFontAttributeName;                // UIFont
extern const NSString NSForegroundColorAttributeName;     // UIColor
extern const NSString NSBackgroundColorAttributeName;     // UIColor
extern const NSString NSKernAttributeName;                // NSNumber: points
extern const NSString NSUnderlineStyleAttributeName;      // NSNumber: NSUnderlineStyle
extern const NSString NSStrikethroughStyleAttributeName;  // NSNumber: NSUnderlineStyle
extern const NSString NSBaselineOffsetAttributeName;      // NSNumber: points, upwards
extern const NSString NSParagraphStyleAttributeName;      // NSParagraphStyle
}

enum class NSUnderlineStyle : NSInteger { None = 0, Single = 1, Thick = 2, Double = 9 };

class NSMutableAttributedString;

class NSAttributedString : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSAttributedString"};
  using NSObject::NSObject;

  class Allocated : public objc::Allocated<NSAttributedString> {
   public:
    explicit Allocated(objc::Allocated<NSAttributedString>&& fresh)
        : objc::Allocated<NSAttributedString>(std::move(fresh)) {}
    NSAttributedString initWithString(const NSString& text) && {
      return std::move(*this).initialize<"initWithString:">(text);
    }
    NSAttributedString initWithString(const NSString& text, const NSDictionary& attributes) && {
      return std::move(*this).initialize<"initWithString:attributes:">(text, attributes);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<NSAttributedString>()); }

  NSString string() const { return objc::send<"string", NSString>(*this); }
  NSAttributedString copy() const { return objc::send<"copy", NSAttributedString>(*this); }
  /// UTF-16 units.
  NSUInteger length() const { return objc::send<"length", NSUInteger>(*this); }
  /// The attributes at a place and, unless `range` is null, how far they reach. Raises the platform's range
  /// exception beyond the end.
  NSDictionary attributesAtIndex(NSUInteger index, NSRange* range) const {
    return objc::send<"attributesAtIndex:effectiveRange:", NSDictionary>(*this, index, range);
  }
  NSMutableAttributedString mutableCopy() const;
};

class NSMutableAttributedString : public NSAttributedString {
 public:
  using Base = NSAttributedString;
  static constexpr objc::FixedString kClass{"NSMutableAttributedString"};
  using NSAttributedString::NSAttributedString;

  class Allocated : public objc::Allocated<NSMutableAttributedString> {
   public:
    explicit Allocated(objc::Allocated<NSMutableAttributedString>&& fresh)
        : objc::Allocated<NSMutableAttributedString>(std::move(fresh)) {}
    NSMutableAttributedString initWithString(const NSString& text) && {
      return std::move(*this).initialize<"initWithString:">(text);
    }
    NSMutableAttributedString initWithString(const NSString& text, const NSDictionary& attributes) && {
      return std::move(*this).initialize<"initWithString:attributes:">(text, attributes);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<NSMutableAttributedString>()); }

  /// Changes between these two are made as one.
  void beginEditing() const { objc::send<"beginEditing">(*this); }
  void endEditing() const { objc::send<"endEditing">(*this); }
  void addAttribute(const NSString& name, const objc::Object& value, NSRange range) const {
    objc::send<"addAttribute:value:range:">(*this, name, value, range);
  }
  void removeAttribute(const NSString& name, NSRange range) const {
    objc::send<"removeAttribute:range:">(*this, name, range);
  }
  void setAttributes(const NSDictionary& attributes, NSRange range) const {
    objc::send<"setAttributes:range:">(*this, attributes, range);
  }
  void appendAttributedString(const NSAttributedString& text) const {
    objc::send<"appendAttributedString:">(*this, text);
  }
};

inline NSMutableAttributedString NSAttributedString::mutableCopy() const {
  return objc::send<"mutableCopy", NSMutableAttributedString>(*this);
}
