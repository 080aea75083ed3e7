// host/uikit/values/paragraph_style.cpp: NSParagraphStyle and its mutable subclass.

#include "host/uikit/values/paragraph_style.hpp"

#include <functional>

namespace wispen::uikit {

namespace {

ParagraphStyle default_style(objc::ClassRef) {
  static const auto* const kept = new ParagraphStyle(objc::make<ParagraphStyle>());
  return *kept;
}

}  // namespace

bool ParagraphStyle::isEqual(const NSObject& other) const {
  const auto theirs = objc::cast_or_nil<ParagraphStyle>(other);
  return theirs && theirs.look() == look();
}

NSUInteger ParagraphStyle::hash() const {
  return std::hash<double>()(look().line_spacing) * 31 + static_cast<NSUInteger>(look().alignment);
}

ParagraphStyle ParagraphStyle::copy() const {
  const auto made = objc::make<ParagraphStyle>();
  made.look() = look();
  return made;
}

MutableParagraphStyle ParagraphStyle::mutable_copy() const {
  const auto made = objc::make<MutableParagraphStyle>();
  made.look() = look();
  return made;
}

void ParagraphStyle::define() {
  objc::Class<ParagraphStyle>()
      .state<ParagraphLook>()
      .class_method<"defaultParagraphStyle", &default_style>()
      .method<"alignment", &ParagraphStyle::alignment>()
      .method<"lineBreakMode", &ParagraphStyle::lineBreakMode>()
      .method<"lineSpacing", &ParagraphStyle::lineSpacing>()
      .method<"paragraphSpacing", &ParagraphStyle::paragraphSpacing>()
      .method<"isEqual:", &ParagraphStyle::isEqual>()
      .method<"hash", &ParagraphStyle::hash>()
      .copying<&ParagraphStyle::copy>()
      .copying<&ParagraphStyle::mutable_copy, "mutableCopyWithZone:">()
      .register_class();
}

void MutableParagraphStyle::define() {
  objc::Class<MutableParagraphStyle>()
      .method<"setAlignment:", &MutableParagraphStyle::setAlignment>()
      .method<"setLineBreakMode:", &MutableParagraphStyle::setLineBreakMode>()
      .method<"setLineSpacing:", &MutableParagraphStyle::setLineSpacing>()
      .method<"setParagraphSpacing:", &MutableParagraphStyle::setParagraphSpacing>()
      .register_class();
}

}  // namespace wispen::uikit
