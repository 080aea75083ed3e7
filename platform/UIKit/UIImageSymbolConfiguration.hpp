// platform/UIKit/UIImageSymbolConfiguration.hpp: the size and weight that a symbol is drawn in.
#pragma once

#include "platform/UIKit/UIFont.hpp"

enum class UIImageSymbolWeight : NSInteger {
  Unspecified = 0,
  UltraLight = 1,
  Thin = 2,
  Light = 3,
  Regular = 4,
  Medium = 5,
  Semibold = 6,
  Bold = 7,
  Heavy = 8,
  Black = 9
};

enum class UIImageSymbolScale : NSInteger { Default = -1, Unspecified = 0, Small = 1, Medium = 2, Large = 3 };

class UIImageConfiguration : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIImageConfiguration"};
  using NSObject::NSObject;
};

class UIImageSymbolConfiguration : public UIImageConfiguration {
 public:
  using Base = UIImageConfiguration;
  static constexpr objc::FixedString kClass{"UIImageSymbolConfiguration"};
  using UIImageConfiguration::UIImageConfiguration;

  static UIImageSymbolConfiguration configurationWithPointSize(CGFloat size) {
    return with<"configurationWithPointSize:">(size);
  }
  static UIImageSymbolConfiguration configurationWithPointSize(CGFloat size, UIImageSymbolWeight weight) {
    return with<"configurationWithPointSize:weight:">(size, weight);
  }
  static UIImageSymbolConfiguration configurationWithPointSize(CGFloat size, UIImageSymbolWeight weight,
                                                               UIImageSymbolScale scale) {
    return with<"configurationWithPointSize:weight:scale:">(size, weight, scale);
  }
  static UIImageSymbolConfiguration configurationWithWeight(UIImageSymbolWeight weight) {
    return with<"configurationWithWeight:">(weight);
  }
  static UIImageSymbolConfiguration configurationWithScale(UIImageSymbolScale scale) {
    return with<"configurationWithScale:">(scale);
  }
  static UIImageSymbolConfiguration configurationWithTextStyle(const UIFontTextStyle& style) {
    return with<"configurationWithTextStyle:">(style);
  }
  static UIImageSymbolConfiguration configurationWithFont(const UIFont& font) {
    return with<"configurationWithFont:">(font);
  }
  /// What the other says, and what this one says where the other leaves it open.
  UIImageSymbolConfiguration configurationByApplyingConfiguration(const UIImageConfiguration& other) const {
    return objc::send<"configurationByApplyingConfiguration:", UIImageSymbolConfiguration>(*this, other);
  }

 private:
  template <objc::FixedString Sel, class... A>
  static UIImageSymbolConfiguration with(const A&... arguments) {
    return objc::send<Sel, UIImageSymbolConfiguration>(objc::class_for<UIImageSymbolConfiguration>(),
                                                       arguments...);
  }
};
