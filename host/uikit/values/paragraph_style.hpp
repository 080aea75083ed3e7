// host/uikit/values/paragraph_style.hpp: NSParagraphStyle and its mutable subclass.
#pragma once

#include "platform/UIKit/NSParagraphStyle.hpp"

namespace wispen::uikit {

struct ParagraphLook {
  NSTextAlignment alignment = NSTextAlignment::Natural;
  NSLineBreakMode line_break_mode = NSLineBreakMode::ByWordWrapping;
  double line_spacing = 0;       ///< points between lines
  double paragraph_spacing = 0;  ///< points after the paragraph
  friend bool operator==(const ParagraphLook&, const ParagraphLook&) = default;
};

class MutableParagraphStyle;

class ParagraphStyle : public objc::Authored<ParagraphStyle, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"NSParagraphStyle"};
  using Authored::Authored;

  static void define();

  ParagraphLook& look() const { return state<ParagraphLook>(); }
  NSTextAlignment alignment() const { return look().alignment; }
  NSLineBreakMode lineBreakMode() const { return look().line_break_mode; }
  double lineSpacing() const { return look().line_spacing; }
  double paragraphSpacing() const { return look().paragraph_spacing; }
  bool isEqual(const NSObject& other) const;
  NSUInteger hash() const;
  ParagraphStyle copy() const;
  MutableParagraphStyle mutable_copy() const;
};

class MutableParagraphStyle : public objc::Authored<MutableParagraphStyle, ParagraphStyle> {
 public:
  static constexpr objc::FixedString kClass{"NSMutableParagraphStyle"};
  using Authored::Authored;

  static void define();

  void setAlignment(NSTextAlignment alignment) const { look().alignment = alignment; }
  void setLineBreakMode(NSLineBreakMode mode) const { look().line_break_mode = mode; }
  void setLineSpacing(double points) const { look().line_spacing = points; }
  void setParagraphSpacing(double points) const { look().paragraph_spacing = points; }
};

}  // namespace wispen::uikit
