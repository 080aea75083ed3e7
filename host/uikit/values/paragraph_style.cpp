// host/uikit/values/paragraph_style.cpp: NSParagraphStyle and its mutable subclass.

#include "host/uikit/values/paragraph_style.hpp"

#include <functional>

namespace wispen::uikit {

namespace {

class ParagraphStyle : public objc::Implementation<ParagraphStyle, NSParagraphStyle> {
 public:
  static NSParagraphStyle defaultParagraphStyle(objc::ClassRef) {
    static const auto* const kept = new NSParagraphStyle(objc::make<NSParagraphStyle>());
    return *kept;
  }

  const ParagraphLook& look() const { return look_; }
  void set_look(const ParagraphLook& look) { look_ = look; }
  NSTextAlignment alignment() const { return look_.alignment; }
  NSLineBreakMode lineBreakMode() const { return look_.line_break_mode; }
  double lineSpacing() const { return look_.line_spacing; }
  double paragraphSpacing() const { return look_.paragraph_spacing; }
  bool isEqual(const NSObject& other) const {
    const auto theirs = objc::cast_or_nil<NSParagraphStyle>(other);
    return theirs && of(theirs).look_ == look_;
  }
  NSUInteger hash() const {
    return std::hash<double>()(look_.line_spacing) * 31 + static_cast<NSUInteger>(look_.alignment);
  }
  NSParagraphStyle copy() const { return copied<NSParagraphStyle>(); }
  NSMutableParagraphStyle mutable_copy() const { return copied<NSMutableParagraphStyle>(); }

 private:
  template <class Style>
  Style copied() const {
    const auto made = objc::make<Style>();
    of(made).look_ = look_;
    return made;
  }

  ParagraphLook look_;
};

/// The look is in the base; this is what may change it.
template <class T, T ParagraphLook::*Member>
void set(const NSMutableParagraphStyle& style, T value) {
  ParagraphLook look = look_of(style);
  look.*Member = value;
  ParagraphStyle::of(style).set_look(look);
}

}  // namespace

ParagraphLook look_of(const NSParagraphStyle& style) {
  return style ? ParagraphStyle::of(style).look() : ParagraphLook();
}

void define_paragraph_styles() {
  objc::Class<NSParagraphStyle>::implemented_by<ParagraphStyle>()
      .class_method<"defaultParagraphStyle", &ParagraphStyle::defaultParagraphStyle>()
      .method<"alignment", &ParagraphStyle::alignment>()
      .method<"lineBreakMode", &ParagraphStyle::lineBreakMode>()
      .method<"lineSpacing", &ParagraphStyle::lineSpacing>()
      .method<"paragraphSpacing", &ParagraphStyle::paragraphSpacing>()
      .method<"isEqual:", &ParagraphStyle::isEqual>()
      .method<"hash", &ParagraphStyle::hash>()
      .copying<&ParagraphStyle::copy>()
      .copying<&ParagraphStyle::mutable_copy, "mutableCopyWithZone:">()
      .register_class();
  objc::Class<NSMutableParagraphStyle>()
      .method<"setAlignment:", &set<NSTextAlignment, &ParagraphLook::alignment>>()
      .method<"setLineBreakMode:", &set<NSLineBreakMode, &ParagraphLook::line_break_mode>>()
      .method<"setLineSpacing:", &set<double, &ParagraphLook::line_spacing>>()
      .method<"setParagraphSpacing:", &set<double, &ParagraphLook::paragraph_spacing>>()
      .register_class();
}

}  // namespace wispen::uikit
