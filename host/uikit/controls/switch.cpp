// host/uikit/controls/switch.cpp: UISwitch: something that is on or off.

#include <cmath>

#include "host/uikit/controls/control.hpp"
#include "host/uikit/controls/controls.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/view/animation.hpp"
#include "host/uikit/view/events/focus.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/look.hpp"
#include "host/uikit/view/view.hpp"
#include "host/uikit/view/window.hpp"

namespace wispen::uikit {

namespace {

constexpr Size kSize{51, 31};
constexpr double kThumb = 27;
constexpr double kThumbMargin = 2;
constexpr double kPressedGrowth = 7;  // the thumb's, along the track
constexpr double kSlideSeconds = 0.25;
constexpr double kDragDistance = 10;  // from where the finger came down, until the thumb follows it

UIColor off_track() {
  return color_from(
      graphics::Colour::dynamic(graphics::Colour::hex(0xE9E9EA), graphics::Colour::hex(0x39393D)));
}

/// The host's UISwitch. It has one size, whatever frame it is given. A user's change sends valueChanged,
/// before the touch's own actions; setting it from code sends nothing.
class Switch : public objc::Implementation<Switch, UISwitch> {
 public:
  static UISwitch initWithFrame(objc::Allocated<UISwitch> self, const Rect& frame) {
    UISwitch view = super_init<"initWithFrame:">(std::move(self), Rect{frame.origin, kSize});
    if (!view) return view;
    view.layer().setCornerRadius(kSize.height / 2);  // of the ring that shows the focus
    of(view).build();
    return view;
  }
  void build() {
    body_ = UIView::alloc().initWithFrame(Rect{{0, 0}, kSize});
    body_.setUserInteractionEnabled(false);
    track_ = UIView::alloc().initWithFrame(Rect{{0, 0}, kSize});
    thumb_ = objc::make<UIView>();
    body_.addSubview(track_);
    body_.addSubview(thumb_);
    self().addSubview(body_);
    track_.layer().setCornerRadius(kSize.height / 2);
    const CALayer thumb = thumb_.layer();
    thumb.setCornerRadius(kThumb / 2);
    look::cast_thumb_shadow(thumb, look::kSwitchThumbShadow);
    show();
  }
  void setFrame(const Rect& frame) { super<"setFrame:">(Rect{frame.origin, kSize}); }
  void setBounds(const Rect& bounds) { super<"setBounds:">(Rect{bounds.origin, kSize}); }
  Size sizeThatFits(const Size&) { return kSize; }
  Size intrinsicContentSize() { return kSize; }
  /// Places and colours the parts by the state.
  void show() {
    const double width = kThumb + (self().isHighlighted() ? kPressedGrowth : 0);
    const bool right = shown_on_ != is_right_to_left(self());
    const double x = right ? kSize.width - kThumbMargin - width : kThumbMargin;
    thumb_.setFrame(CGRect{{x, kThumbMargin}, {width, kThumb}});
    const UIColor on = on_tint_ ? on_tint_ : UIColor::systemGreenColor();
    track_.setBackgroundColor(shown_on_ ? on : off_track());
    thumb_.setBackgroundColor(thumb_tint_ ? thumb_tint_ : UIColor::whiteColor());
    body_.setAlpha(self().isEnabled() ? 1 : look::kDisabledAlpha);
  }
  void slide() {
    AnimationEngine* const engine = AnimationEngine::current();
    if (engine == nullptr || !self().window()) return show();
    engine->animate({.duration = kSlideSeconds}, [&] { show(); });
  }
  void layoutSubviews() {
    super<"layoutSubviews">();
    show();
  }
  void stateChanged() { slide(); }
  void set_by_user(bool on, const NSObject& event) {
    const UISwitch kept = self();
    on_ = shown_on_ = on;
    slide();
    send_actions(kept, UIControlEventValueChanged, event);
  }
  bool beginTracking(const UITouch& touch, const UIEvent&) {
    dragged_ = false;
    start_x_ = touch.locationInView(self()).x;
    return true;
  }
  bool continueTracking(const UITouch& touch, const UIEvent&) {
    const double x = touch.locationInView(self()).x;
    if (std::abs(x - start_x_) < kDragDistance) return true;
    const bool on = (x > start_x_) != is_right_to_left(self());
    dragged_ = true;
    start_x_ = x;
    if (on != shown_on_) {
      shown_on_ = on;
      slide();
    }
    return true;
  }
  void endTracking(const UITouch&, const UIEvent& event) {
    const bool wanted = dragged_ ? shown_on_ : !on_;
    if (!dragged_ && !self().isTouchInside()) return;
    if (wanted != on_) set_by_user(wanted, event);
  }
  void cancelTracking(const UIEvent&) {
    shown_on_ = on_;
    slide();
  }
  bool handleKey(const UIKey& key) {
    if (!self().isEnabled() || focused_view() != self()) return false;
    if (!key.press().is_space() && key.press().code != KeyCode::Return) return false;
    set_by_user(!isOn(), NSObject());
    return true;
  }
  void set_on_at_once(bool on) { setOn(on, false); }
  NSString accessibilityValue() { return isOn() ? "1"_ns : "0"_ns; }
  bool isOn() { return on_; }
  void setOn(bool on, bool animated) {
    if (on_ == on && shown_on_ == on) return;
    on_ = shown_on_ = on;
    animated ? slide() : show();
  }
  void setOnTintColor(const UIColor& colour) {
    on_tint_ = colour;
    show();
  }
  void setThumbTintColor(const UIColor& colour) {
    thumb_tint_ = colour;
    show();
  }

 private:
  friend void wispen::uikit::define_switch();

  bool on_ = false;
  bool shown_on_ = false;  // while a finger drags the thumb it may stand on the other side
  bool dragged_ = false;
  double start_x_ = 0;
  UIColor on_tint_;
  UIColor thumb_tint_;
  UIView body_;  // around the two below: they fade as one, or the track would shine through a faint thumb
  UIView track_;
  UIView thumb_;
};

}  // namespace

void define_switch() {
  objc::Class<UISwitch>::implemented_by<Switch>()
      .initializer<"initWithFrame:", &Switch::initWithFrame>()
      .method<"setFrame:", &Switch::setFrame>()
      .method<"setBounds:", &Switch::setBounds>()
      .method<"sizeThatFits:", &Switch::sizeThatFits>()
      .method<"intrinsicContentSize", &Switch::intrinsicContentSize>()
      .method<"layoutSubviews", &Switch::layoutSubviews>()
      .method<"isOn", &Switch::isOn>()
      .method<"setOn:", &Switch::set_on_at_once>()
      .method<"setOn:animated:", &Switch::setOn>()
      .getter<"onTintColor", &Switch::on_tint_>()
      .method<"setOnTintColor:", &Switch::setOnTintColor>()
      .getter<"thumbTintColor", &Switch::thumb_tint_>()
      .method<"setThumbTintColor:", &Switch::setThumbTintColor>()
      .method<"beginTrackingWithTouch:withEvent:", &Switch::beginTracking>()
      .method<"continueTrackingWithTouch:withEvent:", &Switch::continueTracking>()
      .method<"endTrackingWithTouch:withEvent:", &Switch::endTracking>()
      .method<"cancelTrackingWithEvent:", &Switch::cancelTracking>()
      .method<"accessibilityValue", &Switch::accessibilityValue>()
      .method<hooks::kControlStateChanged, &Switch::stateChanged>()
      .method<hooks::kHandleKey, &Switch::handleKey>()
      .register_class();
}

}  // namespace wispen::uikit
