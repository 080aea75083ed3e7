// host/uikit/values/font.cpp: UIFont.

#include "host/uikit/values/font.hpp"

#include <array>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

#include "host/uikit/values/display_settings.hpp"

#pragma GCC visibility push(default)
const UIFontWeight UIFontWeightUltraLight = wispen::graphics::font_weight::kUltraLight;
const UIFontWeight UIFontWeightThin = wispen::graphics::font_weight::kThin;
const UIFontWeight UIFontWeightLight = wispen::graphics::font_weight::kLight;
const UIFontWeight UIFontWeightRegular = wispen::graphics::font_weight::kRegular;
const UIFontWeight UIFontWeightMedium = wispen::graphics::font_weight::kMedium;
const UIFontWeight UIFontWeightSemibold = wispen::graphics::font_weight::kSemibold;
const UIFontWeight UIFontWeightBold = wispen::graphics::font_weight::kBold;
const UIFontWeight UIFontWeightHeavy = wispen::graphics::font_weight::kHeavy;
const UIFontWeight UIFontWeightBlack = wispen::graphics::font_weight::kBlack;
#pragma GCC visibility pop

namespace wispen::uikit {

namespace {

class Font : public objc::Implementation<Font, UIFont> {
 public:
  static UIFont with(const graphics::Font& font) {
    UIFont made = objc::allocate<UIFont>().init();
    if (made) of(made).font_ = font;
    return made;
  }

  const graphics::Font& font() const { return font_; }
  UIFont fontWithSize(double size) const { return with(font_.with_size(size)); }
  NSString fontName() const { return {font_.face_name().c_str()}; }
  NSString familyName() const { return {font_.family_name().c_str()}; }
  double pointSize() const { return font_.size(); }
  double ascender() const { return font_.metrics().ascender; }
  double descender() const { return font_.metrics().descender; }
  double lineHeight() const { return font_.metrics().line_height; }
  double capHeight() const { return font_.metrics().cap_height; }
  double xHeight() const { return font_.metrics().x_height; }
  double leading() const { return font_.metrics().leading; }
  bool isEqual(const NSObject& other) const {
    const auto theirs = objc::cast_or_nil<UIFont>(other);
    return theirs && of(theirs).font_ == font_;
  }
  NSUInteger hash() const;
  NSString description() const;
  UIFont copy() const { return self(); }

 private:
  graphics::Font font_;
};

// Kept apart from the platform's smaller sizes for other uses; each is what a class method of UIFont gives.
constexpr double kLabelSize = 17;
constexpr double kButtonSize = 18;
constexpr double kSystemSize = 14;
constexpr double kSmallSystemSize = 12;

struct NamedStyle {
  std::string_view name;
  graphics::TextStyle style;
};
using graphics::TextStyle;
constexpr std::array<NamedStyle, 11> kStyles{{{"UICTFontTextStyleTitle0", TextStyle::LargeTitle},
                                              {"UICTFontTextStyleTitle1", TextStyle::Title1},
                                              {"UICTFontTextStyleTitle2", TextStyle::Title2},
                                              {"UICTFontTextStyleTitle3", TextStyle::Title3},
                                              {"UICTFontTextStyleHeadline", TextStyle::Headline},
                                              {"UICTFontTextStyleBody", TextStyle::Body},
                                              {"UICTFontTextStyleCallout", TextStyle::Callout},
                                              {"UICTFontTextStyleSubhead", TextStyle::Subheadline},
                                              {"UICTFontTextStyleFootnote", TextStyle::Footnote},
                                              {"UICTFontTextStyleCaption1", TextStyle::Caption1},
                                              {"UICTFontTextStyleCaption2", TextStyle::Caption2}}};

UIFont system_font(objc::ClassRef, double size) { return Font::with(graphics::Font::system(size)); }
UIFont system_font_of_weight(objc::ClassRef, double size, double weight) {
  return Font::with(graphics::Font::system(size, weight));
}
UIFont bold_system_font(objc::ClassRef, double size) { return Font::with(graphics::Font::bold_system(size)); }
UIFont italic_system_font(objc::ClassRef, double size) {
  return Font::with(graphics::Font::italic_system(size));
}
UIFont monospaced_digit_font(objc::ClassRef, double size, double weight) {
  return Font::with(graphics::Font::monospaced_digits(size, weight));
}
UIFont font_with_name(objc::ClassRef, const NSString& name, double size) {
  const auto found = name ? graphics::Font::named(name.utf8(), size) : std::nullopt;
  return found ? Font::with(*found) : UIFont();
}
UIFont preferred_font(objc::ClassRef, const NSString& style) {
  const TextStyle wanted = text_style_of(style).value_or(TextStyle::Body);
  return Font::with(graphics::text_style_font(wanted, display_settings().content_size));
}

double label_size(objc::ClassRef) { return kLabelSize; }
double button_size(objc::ClassRef) { return kButtonSize; }
double system_size(objc::ClassRef) { return kSystemSize; }
double small_system_size(objc::ClassRef) { return kSmallSystemSize; }

NSUInteger Font::hash() const {
  const std::hash<double> of;
  return of(font_.size()) * 31 + of(font_.weight()) + (font_.italic() ? 7 : 0) +
         static_cast<NSUInteger>(font_.family());
}

NSString Font::description() const {
  std::array<char, 32> size{};
  std::snprintf(size.data(), size.size(), "%gpt", font_.size());
  const std::string text = "<UIFont: family \"" + font_.family_name() + "\", name \"" + font_.face_name() +
                           "\", " + size.data() + ">";
  return {text.c_str()};
}

}  // namespace

void define_font() {
  objc::Class<UIFont>::implemented_by<Font>()
      .class_method<"systemFontOfSize:", &system_font>()
      .class_method<"systemFontOfSize:weight:", &system_font_of_weight>()
      .class_method<"boldSystemFontOfSize:", &bold_system_font>()
      .class_method<"italicSystemFontOfSize:", &italic_system_font>()
      .class_method<"monospacedDigitSystemFontOfSize:weight:", &monospaced_digit_font>()
      .class_method<"fontWithName:size:", &font_with_name>()
      .class_method<"preferredFontForTextStyle:", &preferred_font>()
      .class_method<"labelFontSize", &label_size>()
      .class_method<"buttonFontSize", &button_size>()
      .class_method<"systemFontSize", &system_size>()
      .class_method<"smallSystemFontSize", &small_system_size>()
      .method<"fontWithSize:", &Font::fontWithSize>()
      .method<"fontName", &Font::fontName>()
      .method<"familyName", &Font::familyName>()
      .method<"pointSize", &Font::pointSize>()
      .method<"ascender", &Font::ascender>()
      .method<"descender", &Font::descender>()
      .method<"lineHeight", &Font::lineHeight>()
      .method<"capHeight", &Font::capHeight>()
      .method<"xHeight", &Font::xHeight>()
      .method<"leading", &Font::leading>()
      .method<"isEqual:", &Font::isEqual>()
      .method<"hash", &Font::hash>()
      .method<"description", &Font::description>()
      .copying<&Font::copy>()
      .register_class();
}

graphics::Font font_of(const UIFont& font) {
  return objc::cast_or_nil<UIFont>(font) ? Font::of(font).font() : graphics::Font();
}

UIFont font_from(const graphics::Font& font) { return Font::with(font); }

std::optional<TextStyle> text_style_of(const NSString& name) {
  const std::string wanted = name.utf8();
  for (const NamedStyle& each : kStyles) {
    if (each.name == wanted) return each.style;
  }
  return std::nullopt;
}

}  // namespace wispen::uikit
