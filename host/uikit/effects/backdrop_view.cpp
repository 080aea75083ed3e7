// host/uikit/effects/backdrop_view.cpp: _UIBackdropView: the older frosted pane, which sheets still use.

#include "host/uikit/effects/backdrop_view.hpp"

#include "host/uikit/painting/panes.hpp"

namespace wispen::uikit {

struct BackdropSettingsState {
  NSInteger style = 0;
};

struct BackdropState {
  BackdropSettings settings;
  bool fills_superview = false;
};

BackdropSettings BackdropSettings::make(NSInteger style) {
  const BackdropSettings settings = objc::make<BackdropSettings>();
  settings.state<BackdropSettingsState>().style = style;
  return settings;
}
NSInteger BackdropSettings::style() const { return state<BackdropSettingsState>().style; }

BackdropState& BackdropView::parts() const { return state<BackdropState>(); }
BackdropSettings BackdropView::settings() const { return parts().settings; }

struct BackdropMethods {
  using Self = BackdropView;

  static BackdropSettings settingsForStyle(objc::ClassRef, NSInteger style) {
    return BackdropSettings::make(style);
  }

  static Self initWithSettings(objc::Allocated<Self> self, const Rect& frame, bool fills,
                               const BackdropSettings& settings) {
    Self view = std::move(self).initialize_super<"initWithFrame:">(frame);
    if (!view) return view;
    view.parts().settings = settings;
    view.parts().fills_superview = fills;
    view.setUserInteractionEnabled(false);
    if (fills) view.setAutoresizingMask(18);
    return view;
  }
  static Self initWithFrame(objc::Allocated<Self> self, const Rect& frame) {
    return std::move(self).initialize<"initWithFrame:autosizesToFitSuperview:settings:">(
        frame, false, BackdropSettings::make(0));
  }
  static Self initOfSettings(objc::Allocated<Self> self, const BackdropSettings& settings) {
    return std::move(self).initialize<"initWithFrame:autosizesToFitSuperview:settings:">(Rect{}, true,
                                                                                         settings);
  }
  static bool fills(const Self& self) { return self.parts().fills_superview; }

  static void didMoveToSuperview(const Self& self) {
    const View above = self.superview();
    if (above && self.parts().fills_superview) self.setFrame(above.bounds());
  }
  static void didMoveToWindow(const Self& self) { note_pane(self); }

  static void paint(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    const BackdropSettings settings = view.as<Self>().settings();
    if (!settings) return;
    paint_pane(view, canvas, bounds, graphics::backdrop_material(static_cast<int>(settings.style())));
  }
};

void BackdropSettings::define() {
  objc::Class<BackdropSettings>()
      .state<BackdropSettingsState>()
      .class_method<"settingsForStyle:", &BackdropMethods::settingsForStyle>()
      .method<"style", &BackdropSettings::style>()
      .register_class();
}

void BackdropView::define() {
  using M = BackdropMethods;
  objc::Class<BackdropView>()
      .state<BackdropState>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .initializer<"initWithSettings:", &M::initOfSettings>()
      .initializer<"initWithFrame:autosizesToFitSuperview:settings:", &M::initWithSettings>()
      .method<"inputSettings", &BackdropView::settings>()
      .method<"autosizesToFitSuperview", &M::fills>()
      .method<"didMoveToSuperview", &M::didMoveToSuperview>()
      .method<"didMoveToWindow", &M::didMoveToWindow>()
      .register_class();
  set_painter(objc::class_for<BackdropView>(), &M::paint);
}

}  // namespace wispen::uikit
