// host/uikit/view/effects/backdrop_view.cpp: _UIBackdropView: the older frosted pane, which sheets still use.

#include "host/graphics/material.hpp"
#include "host/uikit/view/effects/effects.hpp"
#include "host/uikit/view/geometry.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/painting/panes.hpp"

namespace wispen::uikit {

namespace {

class BackdropSettings : public objc::Implementation<BackdropSettings, UIBackdropViewSettings> {
 public:
  static UIBackdropViewSettings for_style(objc::ClassRef, NSInteger style) {
    const UIBackdropViewSettings settings = objc::make<UIBackdropViewSettings>();
    of(settings).style = style;
    return settings;
  }
  NSInteger style = 0;
};

class BackdropView : public objc::Implementation<BackdropView, UIBackdropView> {
 public:
  static UIBackdropView initWithFrame(objc::Allocated<UIBackdropView> self, const Rect& frame) {
    return std::move(self).initialize<"initWithFrame:autosizesToFitSuperview:settings:">(
        frame, false, UIBackdropViewSettings::settingsForStyle(0));
  }
  static UIBackdropView initWithSettings(objc::Allocated<UIBackdropView> self,
                                         const UIBackdropViewSettings& settings) {
    return std::move(self).initialize<"initWithFrame:autosizesToFitSuperview:settings:">(Rect{}, true,
                                                                                         settings);
  }
  static UIBackdropView init(objc::Allocated<UIBackdropView> self, const Rect& frame, bool fills_superview,
                             const UIBackdropViewSettings& settings) {
    UIBackdropView view = super_init<"initWithFrame:">(std::move(self), frame);
    if (!view) return view;
    of(view).settings = settings;
    of(view).fills_superview = fills_superview;
    view.setUserInteractionEnabled(false);
    if (fills_superview)
      view.setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    return view;
  }
  void didMoveToSuperview() {
    const UIView above = self().superview();
    if (above && fills_superview) self().setFrame(above.bounds());
  }
  void didMoveToWindow() { note_pane(self()); }
  void paint(graphics::Canvas& canvas, const Rect& bounds) {
    if (!settings) return;
    const auto style = static_cast<int>(BackdropSettings::of(settings).style);
    paint_pane(self(), canvas, bounds, graphics::backdrop_material(style));
  }

  UIBackdropViewSettings settings;
  bool fills_superview = false;
};

}  // namespace

void define_backdrop_view() {
  objc::Class<UIBackdropViewSettings>::implemented_by<BackdropSettings>()
      .class_method<"settingsForStyle:", &BackdropSettings::for_style>()
      .getter<"style", &BackdropSettings::style>()
      .register_class();
  objc::Class<UIBackdropView>::implemented_by<BackdropView>()
      .initializer<"initWithFrame:", &BackdropView::initWithFrame>()
      .initializer<"initWithSettings:", &BackdropView::initWithSettings>()
      .initializer<"initWithFrame:autosizesToFitSuperview:settings:", &BackdropView::init>()
      .getter<"inputSettings", &BackdropView::settings>()
      .getter<"autosizesToFitSuperview", &BackdropView::fills_superview>()
      .method<"didMoveToSuperview", &BackdropView::didMoveToSuperview>()
      .method<"didMoveToWindow", &BackdropView::didMoveToWindow>()
      .register_class();
  set_painter<&BackdropView::paint>();
}

}  // namespace wispen::uikit
