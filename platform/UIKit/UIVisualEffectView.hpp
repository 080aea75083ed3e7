// platform/UIKit/UIVisualEffectView.hpp: frosted panes.
#pragma once

#include "platform/UIKit/UIView.hpp"

enum class UIBlurEffectStyle : NSInteger {
  ExtraLight = 0,
  Light = 1,
  Dark = 2,
  Regular = 4,
  Prominent = 5,
  SystemUltraThinMaterial = 6,
  SystemThinMaterial = 7,
  SystemMaterial = 8,
  SystemThickMaterial = 9,
  SystemChromeMaterial = 10
};

class UIVisualEffect : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIVisualEffect"};
  using NSObject::NSObject;
};

class UIBlurEffect : public UIVisualEffect {
 public:
  using Base = UIVisualEffect;
  static constexpr objc::FixedString kClass{"UIBlurEffect"};
  using UIVisualEffect::UIVisualEffect;

  static UIBlurEffect effectWithStyle(UIBlurEffectStyle style) {
    return objc::send<"effectWithStyle:", UIBlurEffect>(objc::class_for<UIBlurEffect>(), style);
  }
};

class UIVisualEffectView : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"UIVisualEffectView"};
  using UIView::UIView;

  class Allocated : public UIViewAllocated<UIVisualEffectView> {
   public:
    using UIViewAllocated::UIViewAllocated;
    UIVisualEffectView initWithEffect(const UIVisualEffect& effect) && {
      return std::move(*this).initialize<"initWithEffect:">(effect);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<UIVisualEffectView>()); }

  UIVisualEffect effect() const { return objc::send<"effect", UIVisualEffect>(*this); }
  void setEffect(const UIVisualEffect& effect) const { objc::send<"setEffect:">(*this, effect); }
  UIView contentView() const { return objc::send<"contentView", UIView>(*this); }
};

/// The older pane's settings; outside of the public interface, as is the pane.
class UIBackdropViewSettings : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"_UIBackdropViewSettings"};
  using NSObject::NSObject;

  static UIBackdropViewSettings settingsForStyle(NSInteger style) {
    return objc::send<"settingsForStyle:", UIBackdropViewSettings>(objc::class_for<UIBackdropViewSettings>(),
                                                                   style);
  }
};

class UIBackdropView : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"_UIBackdropView"};
  using UIView::UIView;

  class Allocated : public UIViewAllocated<UIBackdropView> {
   public:
    using UIViewAllocated::UIViewAllocated;
    UIBackdropView initWithFrame(CGRect frame, bool autosizes_to_fit_superview,
                                 const UIBackdropViewSettings& settings) && {
      return std::move(*this).initialize<"initWithFrame:autosizesToFitSuperview:settings:">(
          frame, autosizes_to_fit_superview, settings);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<UIBackdropView>()); }
};
