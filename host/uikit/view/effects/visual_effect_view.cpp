// host/uikit/view/effects/visual_effect_view.cpp: UIVisualEffectView and UIBlurEffect: frosted panes.

#include "host/graphics/material.hpp"
#include "host/uikit/view/effects/effects.hpp"
#include "host/uikit/view/geometry.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/painting/panes.hpp"

namespace wispen::uikit {

namespace {

class BlurEffect : public objc::Implementation<BlurEffect, UIBlurEffect> {
 public:
  static UIBlurEffect with_style(objc::ClassRef, UIBlurEffectStyle style) {
    const UIBlurEffect effect = objc::make<UIBlurEffect>();
    of(effect).style = style;
    return effect;
  }
  UIBlurEffectStyle style = UIBlurEffectStyle::Regular;
};

class VisualEffectView : public objc::Implementation<VisualEffectView, UIVisualEffectView> {
 public:
  static UIVisualEffectView initWithFrame(objc::Allocated<UIVisualEffectView> self, const Rect& frame) {
    UIVisualEffectView view = super_init<"initWithFrame:">(std::move(self), frame);
    if (!view) return view;
    UIView& content = of(view).content;
    content = UIView::alloc().initWithFrame(view.bounds());
    content.setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    view.addSubview(content);
    return view;
  }
  static UIVisualEffectView initWithEffect(objc::Allocated<UIVisualEffectView> self,
                                           const UIVisualEffect& effect) {
    UIVisualEffectView view = std::move(self).initialize<"initWithFrame:">(Rect{});
    if (view) view.setEffect(effect);
    return view;
  }
  void setEffect(const UIVisualEffect& value) {
    effect = value;
    self().setNeedsDisplay();
  }
  void didMoveToWindow() { note_pane(self()); }
  void paint(graphics::Canvas& canvas, const Rect& bounds) {
    const auto blur = objc::cast_or_nil<UIBlurEffect>(effect);
    if (!blur) return;
    const auto style = static_cast<int>(BlurEffect::of(blur).style);
    paint_pane(self(), canvas, bounds, graphics::blur_effect_material(style));
  }

  UIVisualEffect effect;
  UIView content;
};

}  // namespace

void define_visual_effects() {
  objc::Class<UIVisualEffect>().register_class();
  objc::Class<UIBlurEffect>::implemented_by<BlurEffect>()
      .class_method<"effectWithStyle:", &BlurEffect::with_style>()
      .getter<"_style", &BlurEffect::style>()
      .register_class();
  objc::Class<UIVisualEffectView>::implemented_by<VisualEffectView>()
      .initializer<"initWithFrame:", &VisualEffectView::initWithFrame>()
      .initializer<"initWithEffect:", &VisualEffectView::initWithEffect>()
      .getter<"effect", &VisualEffectView::effect>()
      .method<"setEffect:", &VisualEffectView::setEffect>()
      .getter<"contentView", &VisualEffectView::content>()
      .method<"didMoveToWindow", &VisualEffectView::didMoveToWindow>()
      .register_class();
  set_painter<&VisualEffectView::paint>();
}

}  // namespace wispen::uikit
