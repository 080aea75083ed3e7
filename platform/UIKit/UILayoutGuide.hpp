// platform/UIKit/UILayoutGuide.hpp: a rectangle that takes part in layout and is not a view.
#pragma once

#include "platform/UIKit/UIView.hpp"

class UILayoutGuide : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UILayoutGuide"};
  using NSObject::NSObject;

  UIView owningView() const { return objc::send<"owningView", UIView>(*this); }
  /// In the owner's coordinates.
  CGRect layoutFrame() const { return objc::send<"layoutFrame", CGRect>(*this); }
};
