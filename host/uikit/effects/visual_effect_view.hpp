// host/uikit/effects/visual_effect_view.hpp: UIVisualEffectView and UIBlurEffect: frosted panes.
#pragma once

#include "host/graphics/material.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

/// The host's UIVisualEffect: a value that says what a pane does to what lies behind it.
class VisualEffect : public objc::Authored<VisualEffect, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIVisualEffect"};
  using Authored::Authored;
  static void define();
};

/// The host's UIBlurEffect.
class BlurEffect : public objc::Authored<BlurEffect, VisualEffect> {
 public:
  static constexpr objc::FixedString kClass{"UIBlurEffect"};
  using Authored::Authored;
  static void define();
  /// The platform's styles, 0 to 20.
  static BlurEffect make(NSInteger style);
  NSInteger style() const;
};

struct VisualEffectState;

/// The host's UIVisualEffectView. What is to be seen on it belongs into its content view.
class VisualEffectView : public objc::Authored<VisualEffectView, View> {
 public:
  static constexpr objc::FixedString kClass{"UIVisualEffectView"};
  using Authored::Authored;
  static void define();
  static VisualEffectView make(const VisualEffect& effect);
  VisualEffect effect() const;
  void setEffect(const VisualEffect& effect) const;
  View contentView() const;

 private:
  friend struct VisualEffectMethods;
  VisualEffectState& parts() const;
};

}  // namespace wispen::uikit
