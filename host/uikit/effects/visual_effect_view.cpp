// host/uikit/effects/visual_effect_view.cpp: UIVisualEffectView and UIBlurEffect: frosted panes.

#include "host/uikit/effects/visual_effect_view.hpp"

#include "host/uikit/painting/panes.hpp"

namespace wispen::uikit {

struct BlurEffectState {
  NSInteger style = 4;
};

BlurEffect BlurEffect::make(NSInteger style) {
  const BlurEffect effect = objc::make<BlurEffect>();
  effect.state<BlurEffectState>().style = style;
  return effect;
}
NSInteger BlurEffect::style() const { return state<BlurEffectState>().style; }

namespace {

BlurEffect effect_with_style(objc::ClassRef, NSInteger style) { return BlurEffect::make(style); }

}  // namespace

void VisualEffect::define() { objc::Class<VisualEffect>().register_class(); }

void BlurEffect::define() {
  objc::Class<BlurEffect>()
      .state<BlurEffectState>()
      .class_method<"effectWithStyle:", &effect_with_style>()
      .method<"_style", &BlurEffect::style>()
      .register_class();
}

struct VisualEffectState {
  VisualEffect effect;
  View content;
};

VisualEffectState& VisualEffectView::parts() const { return state<VisualEffectState>(); }
VisualEffectView VisualEffectView::make(const VisualEffect& effect) {
  return alloc().initialize<"initWithEffect:">(effect);
}
VisualEffect VisualEffectView::effect() const { return parts().effect; }
View VisualEffectView::contentView() const { return parts().content; }

void VisualEffectView::setEffect(const VisualEffect& effect) const {
  parts().effect = effect;
  setNeedsDisplay();
}

struct VisualEffectMethods {
  using Self = VisualEffectView;

  static Self initWithFrame(objc::Allocated<Self> self, const Rect& frame) {
    Self view = std::move(self).initialize_super<"initWithFrame:">(frame);
    if (!view) return view;
    VisualEffectState& state = view.parts();
    state.content = View::make(view.bounds());
    state.content.setAutoresizingMask(18);
    view.addSubview(state.content);
    return view;
  }
  static Self initWithEffect(objc::Allocated<Self> self, const VisualEffect& effect) {
    Self view = std::move(self).initialize<"initWithFrame:">(Rect{});
    if (view) view.setEffect(effect);
    return view;
  }
  static void paint(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    const auto blur = objc::cast_or_nil<BlurEffect>(view.as<Self>().effect());
    if (!blur) return;
    paint_pane(view, canvas, bounds, graphics::blur_effect_material(static_cast<int>(blur.style())));
  }
  static void didMoveToWindow(const Self& self) { note_pane(self); }
};

void VisualEffectView::define() {
  using M = VisualEffectMethods;
  objc::Class<VisualEffectView>()
      .state<VisualEffectState>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .initializer<"initWithEffect:", &M::initWithEffect>()
      .method<"effect", &VisualEffectView::effect>()
      .method<"setEffect:", &VisualEffectView::setEffect>()
      .method<"contentView", &VisualEffectView::contentView>()
      .method<"didMoveToWindow", &M::didMoveToWindow>()
      .register_class();
  set_painter(objc::class_for<VisualEffectView>(), &M::paint);
}

}  // namespace wispen::uikit
