// host/uikit/effects/backdrop_view.hpp: _UIBackdropView: the older frosted pane, which sheets still use.
#pragma once

#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

/// The host's _UIBackdropViewSettings: 0 light, 1 dark, 2 blur alone, by the styles' numbers.
class BackdropSettings : public objc::Authored<BackdropSettings, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"_UIBackdropViewSettings"};
  using Authored::Authored;
  static void define();
  static BackdropSettings make(NSInteger style);
  NSInteger style() const;
};

struct BackdropState;

/// The host's _UIBackdropView. One that autosizes fills its superview from the moment that it is put there.
class BackdropView : public objc::Authored<BackdropView, View> {
 public:
  static constexpr objc::FixedString kClass{"_UIBackdropView"};
  using Authored::Authored;
  static void define();
  BackdropSettings settings() const;

 private:
  friend struct BackdropMethods;
  BackdropState& parts() const;
};

}  // namespace wispen::uikit
