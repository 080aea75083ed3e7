// host/uikit/values/symbol_configuration.cpp: UIImageSymbolConfiguration.

#include "host/uikit/values/symbol_configuration.hpp"

#include <algorithm>
#include <array>
#include <functional>

#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"

namespace wispen::uikit {

namespace {

namespace font_weight = graphics::font_weight;

class ImageConfiguration : public objc::Implementation<ImageConfiguration, UIImageConfiguration> {
 public:
  UIImageConfiguration copy() const { return self(); }
};

class SymbolConfiguration : public objc::Implementation<SymbolConfiguration, UIImageSymbolConfiguration> {
 public:
  const SymbolLook& look() const { return look_; }
  void set_look(const SymbolLook& look) { look_ = look; }
  UIImageSymbolConfiguration configurationByApplyingConfiguration(const NSObject& other) const {
    return symbol_configuration_from(look_.applying(symbol_look_of(other)));
  }
  bool isEqual(const NSObject& other) const {
    const auto theirs = objc::cast_or_nil<UIImageSymbolConfiguration>(other);
    return theirs && of(theirs).look_ == look_;
  }
  NSUInteger hash() const {
    const std::hash<double> hashed;
    return hashed(look_.point_size.value_or(0)) * 31 + hashed(look_.weight.value_or(0));
  }

 private:
  SymbolLook look_;
};

/// The platform numbers symbol weights from 1, lightest first; 0 leaves it open.
std::optional<double> weight_of(NSInteger number) {
  constexpr std::array kWeights{font_weight::kUltraLight, font_weight::kThin,   font_weight::kLight,
                                font_weight::kRegular,    font_weight::kMedium, font_weight::kSemibold,
                                font_weight::kBold,       font_weight::kHeavy,  font_weight::kBlack};
  if (number < 1 || number > static_cast<NSInteger>(kWeights.size())) return std::nullopt;
  return kWeights[static_cast<std::size_t>(number - 1)];
}

std::optional<graphics::SymbolScale> scale_of(NSInteger number) {
  if (number == 0) return std::nullopt;
  return static_cast<graphics::SymbolScale>(std::clamp<NSInteger>(number, -1, 3));
}

UIImageSymbolConfiguration with_size(objc::ClassRef, double size) {
  return symbol_configuration_from({.point_size = size});
}
UIImageSymbolConfiguration with_size_and_weight(objc::ClassRef, double size, NSInteger weight) {
  return symbol_configuration_from({.point_size = size, .weight = weight_of(weight)});
}
UIImageSymbolConfiguration with_all(objc::ClassRef, double size, NSInteger weight, NSInteger scale) {
  return symbol_configuration_from(
      {.point_size = size, .weight = weight_of(weight), .scale = scale_of(scale)});
}
UIImageSymbolConfiguration with_weight(objc::ClassRef, NSInteger weight) {
  return symbol_configuration_from({.weight = weight_of(weight)});
}
UIImageSymbolConfiguration with_scale(objc::ClassRef, NSInteger scale) {
  return symbol_configuration_from({.scale = scale_of(scale)});
}
SymbolLook look_of(const graphics::Font& font) {
  return {.point_size = font.size(), .weight = font.weight()};
}
SymbolLook look_of_style(const NSString& style) {
  const auto known = text_style_of(style).value_or(graphics::TextStyle::Body);
  return look_of(graphics::text_style_font(known, display_settings().content_size));
}
UIImageSymbolConfiguration with_text_style(objc::ClassRef, const NSString& style) {
  return symbol_configuration_from(look_of_style(style));
}
UIImageSymbolConfiguration with_text_style_and_scale(objc::ClassRef, const NSString& style, NSInteger scale) {
  SymbolLook look = look_of_style(style);
  look.scale = scale_of(scale);
  return symbol_configuration_from(look);
}
UIImageSymbolConfiguration with_font(objc::ClassRef, const UIFont& font) {
  return symbol_configuration_from(look_of(font_of(font)));
}
UIImageSymbolConfiguration unspecified(objc::ClassRef) { return symbol_configuration_from({}); }

}  // namespace

SymbolLook SymbolLook::applying(const SymbolLook& over) const {
  return {.point_size = over.point_size ? over.point_size : point_size,
          .weight = over.weight ? over.weight : weight,
          .scale = over.scale ? over.scale : scale};
}

graphics::SymbolConfiguration SymbolLook::resolved() const {
  const DisplaySettings display = display_settings();
  graphics::SymbolConfiguration result;
  result.point_size = point_size.value_or(result.point_size);
  result.weight = weight.value_or(result.weight);
  result.scale = scale.value_or(result.scale);
  result.display_scale = static_cast<double>(display.scale);
  result.right_to_left = display.right_to_left;
  return result;
}

UIImageSymbolConfiguration symbol_configuration_from(const SymbolLook& look) {
  UIImageSymbolConfiguration made = objc::allocate<UIImageSymbolConfiguration>().init();
  if (made) SymbolConfiguration::of(made).set_look(look);
  return made;
}

void define_symbol_configurations() {
  objc::Class<UIImageConfiguration>::implemented_by<ImageConfiguration>()
      .copying<&ImageConfiguration::copy>()
      .register_class();
  objc::Class<UIImageSymbolConfiguration>::implemented_by<SymbolConfiguration>()
      .class_method<"configurationWithPointSize:", &with_size>()
      .class_method<"configurationWithPointSize:weight:", &with_size_and_weight>()
      .class_method<"configurationWithPointSize:weight:scale:", &with_all>()
      .class_method<"configurationWithWeight:", &with_weight>()
      .class_method<"configurationWithScale:", &with_scale>()
      .class_method<"configurationWithTextStyle:", &with_text_style>()
      .class_method<"configurationWithTextStyle:scale:", &with_text_style_and_scale>()
      .class_method<"configurationWithFont:", &with_font>()
      .class_method<"unspecifiedConfiguration", &unspecified>()
      .method<"configurationByApplyingConfiguration:",
              &SymbolConfiguration::configurationByApplyingConfiguration>()
      .method<"isEqual:", &SymbolConfiguration::isEqual>()
      .method<"hash", &SymbolConfiguration::hash>()
      .register_class();
}

SymbolLook symbol_look_of(const NSObject& configuration) {
  const auto ours = objc::cast_or_nil<UIImageSymbolConfiguration>(configuration);
  return ours ? SymbolConfiguration::of(ours).look() : SymbolLook();
}

}  // namespace wispen::uikit
