// host/uikit/controls/switch.cpp: UISwitch: something that is on or off.

#include "host/uikit/controls/switch.hpp"

#include <cmath>

#include "host/uikit/events/focus.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/views/animation.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::uikit {

namespace {

constexpr double kThumb = 27;
constexpr double kThumbMargin = 2;
constexpr double kPressedGrowth = 7;  // the thumb's, along the track
constexpr double kSlideSeconds = 0.25;
constexpr double kDragDistance = 10;  // from where the finger came down, until the thumb follows it
constexpr double kDisabledAlpha = 0.5;

UIColor off_track() {
  return color_from(
      graphics::Colour::dynamic(graphics::Colour::hex(0xE9E9EA), graphics::Colour::hex(0x39393D)));
}

}  // namespace

struct SwitchState {
  bool on = false;
  bool shown_on = false;  // while a finger drags the thumb it may stand on the other side
  bool dragged = false;
  double start_x = 0;
  UIColor on_tint;
  UIColor thumb_tint;
  View body;  // around the two below: they fade as one, or the track would shine through a faint thumb
  View track;
  View thumb;
};

SwitchState& Switch::parts() const { return state<SwitchState>(); }
Switch Switch::make() { return alloc().initialize<"initWithFrame:">(Rect{}); }
bool Switch::isOn() const { return parts().on; }

struct SwitchMethods {
  using Self = Switch;

  static Self initWithFrame(objc::Allocated<Self> self, const Rect& frame) {
    Self view = std::move(self).initialize_super<"initWithFrame:">(Rect{frame.origin, Switch::kSize});
    if (!view) return view;
    SwitchState& state = view.parts();
    view.layer().setCornerRadius(Switch::kSize.height / 2);  // of the ring that shows the focus
    state.body = View::make({{0, 0}, Switch::kSize});
    state.body.setUserInteractionEnabled(false);
    state.track = View::make({{0, 0}, Switch::kSize});
    state.thumb = View::make();
    state.body.addSubview(state.track);
    state.body.addSubview(state.thumb);
    view.addSubview(state.body);
    state.track.layer().setCornerRadius(Switch::kSize.height / 2);
    const Layer thumb = state.thumb.layer();
    thumb.setCornerRadius(kThumb / 2);
    objc::send<"setShadowOpacity:">(thumb, 0.15F);
    objc::send<"setShadowRadius:">(thumb, 4.0);
    objc::send<"setShadowOffset:">(thumb, Size{0, 3});
    show(view);
    return view;
  }

  static void setFrame(const Self& self, const Rect& frame) {
    objc::send_super<"setFrame:">(self, objc::class_for<Control>(), Rect{frame.origin, Switch::kSize});
  }
  static void setBounds(const Self& self, const Rect& bounds) {
    objc::send_super<"setBounds:">(self, objc::class_for<Control>(), Rect{bounds.origin, Switch::kSize});
  }
  static Size sizeThatFits(const Self&, const Size&) { return Switch::kSize; }
  static Size intrinsicContentSize(const Self&) { return Switch::kSize; }

  /// Places and colours the parts by the state.
  static void show(const Self& self) {
    SwitchState& state = self.parts();
    const double width = kThumb + (self.isHighlighted() ? kPressedGrowth : 0);
    const bool right = state.shown_on != self.is_right_to_left();
    const double x = right ? Switch::kSize.width - kThumbMargin - width : kThumbMargin;
    state.thumb.setFrame({{x, kThumbMargin}, {width, kThumb}});
    const UIColor on = state.on_tint ? state.on_tint : UIColor::systemGreenColor();
    state.track.setBackgroundColor(state.shown_on ? on : off_track());
    state.thumb.setBackgroundColor(state.thumb_tint ? state.thumb_tint : UIColor::whiteColor());
    state.body.setAlpha(self.isEnabled() ? 1 : kDisabledAlpha);
  }
  static void slide(const Self& self) {
    AnimationEngine* const engine = AnimationEngine::current();
    if (engine == nullptr || !self.window()) return show(self);
    engine->animate({.duration = kSlideSeconds}, [&] { show(self); });
  }
  static void layoutSubviews(const Self& self) {
    objc::send_super<"layoutSubviews">(self, objc::class_for<Control>());
    show(self);
  }
  static void stateChanged(const Self& self) { slide(self); }

  static void set_by_user(const Self& self, bool on, const NSObject& event) {
    const Self kept = self;
    kept.parts().on = kept.parts().shown_on = on;
    slide(kept);
    kept.send_actions(control_event::kValueChanged, event);
  }

  static bool beginTracking(const Self& self, const Touch& touch, const Event&) {
    SwitchState& state = self.parts();
    state.dragged = false;
    state.start_x = touch.locationInView(self).x;
    return true;
  }
  static bool continueTracking(const Self& self, const Touch& touch, const Event&) {
    SwitchState& state = self.parts();
    const double x = touch.locationInView(self).x;
    if (std::abs(x - state.start_x) < kDragDistance) return true;
    const bool on = (x > state.start_x) != self.is_right_to_left();
    state.dragged = true;
    state.start_x = x;
    if (on != state.shown_on) {
      state.shown_on = on;
      slide(self);
    }
    return true;
  }
  static void endTracking(const Self& self, const Touch&, const Event& event) {
    const SwitchState& state = self.parts();
    const bool wanted = state.dragged ? state.shown_on : !state.on;
    if (!state.dragged && !self.control().inside) return;
    if (wanted != state.on) set_by_user(self, wanted, event);
  }
  static void cancelTracking(const Self& self, const Event&) {
    self.parts().shown_on = self.parts().on;
    slide(self);
  }

  static bool handleKey(const Self& self, const Key& key) {
    if (!self.isEnabled() || focused_view() != self) return false;
    if (!key.is_space() && key.code() != KeyCode::Return) return false;
    set_by_user(self, !self.isOn(), NSObject());
    return true;
  }

  static void setOn(const Self& self, bool on) { self.setOn(on, false); }
  static UIColor onTintColor(const Self& self) { return self.parts().on_tint; }
  static UIColor thumbTintColor(const Self& self) { return self.parts().thumb_tint; }
  static NSString accessibilityValue(const Self& self) { return self.isOn() ? "1"_ns : "0"_ns; }
};

void Switch::setOn(bool on, bool animated) const {
  SwitchState& state = parts();
  if (state.on == on && state.shown_on == on) return;
  state.on = state.shown_on = on;
  animated ? SwitchMethods::slide(*this) : SwitchMethods::show(*this);
}
void Switch::setOnTintColor(const UIColor& colour) const {
  parts().on_tint = colour;
  SwitchMethods::show(*this);
}
void Switch::setThumbTintColor(const UIColor& colour) const {
  parts().thumb_tint = colour;
  SwitchMethods::show(*this);
}

void Switch::define() {
  using M = SwitchMethods;
  objc::Class<Switch>()
      .state<SwitchState>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .method<"setFrame:", &M::setFrame>()
      .method<"setBounds:", &M::setBounds>()
      .method<"sizeThatFits:", &M::sizeThatFits>()
      .method<"intrinsicContentSize", &M::intrinsicContentSize>()
      .method<"layoutSubviews", &M::layoutSubviews>()
      .method<"isOn", &Switch::isOn>()
      .method<"setOn:", &M::setOn>()
      .method<"setOn:animated:", &Switch::setOn>()
      .method<"onTintColor", &M::onTintColor>()
      .method<"setOnTintColor:", &Switch::setOnTintColor>()
      .method<"thumbTintColor", &M::thumbTintColor>()
      .method<"setThumbTintColor:", &Switch::setThumbTintColor>()
      .method<"beginTrackingWithTouch:withEvent:", &M::beginTracking>()
      .method<"continueTrackingWithTouch:withEvent:", &M::continueTracking>()
      .method<"endTrackingWithTouch:withEvent:", &M::endTracking>()
      .method<"cancelTrackingWithEvent:", &M::cancelTracking>()
      .method<"accessibilityValue", &M::accessibilityValue>()
      .method<"_controlStateChanged", &M::stateChanged>()
      .method<"_handleKey:", &M::handleKey>()
      .register_class();
}

}  // namespace wispen::uikit
