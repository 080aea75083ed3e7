// platform/UIKit/UITraitCollection.hpp: idiom, appearance, size classes and text size.
#pragma once

#include "platform/Foundation.hpp"

enum class UIUserInterfaceStyle : NSInteger { Unspecified = 0, Light = 1, Dark = 2 };
enum class UIUserInterfaceSizeClass : NSInteger { Unspecified = 0, Compact = 1, Regular = 2 };

class UITraitCollection : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UITraitCollection"};
  using NSObject::NSObject;

  UIUserInterfaceStyle userInterfaceStyle() const {
    return objc::send<"userInterfaceStyle", UIUserInterfaceStyle>(*this);
  }
  UIUserInterfaceSizeClass horizontalSizeClass() const {
    return objc::send<"horizontalSizeClass", UIUserInterfaceSizeClass>(*this);
  }
};
