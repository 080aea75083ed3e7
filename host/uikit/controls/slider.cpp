// host/uikit/controls/slider.cpp: UISlider: a value between two others.

#include <algorithm>
#include <cmath>

#include "host/uikit/controls/control.hpp"
#include "host/uikit/controls/controls.hpp"
#include "host/uikit/controls/image_view.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/image.hpp"
#include "host/uikit/view/animation.hpp"
#include "host/uikit/view/events/focus.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/look.hpp"
#include "host/uikit/view/view.hpp"
#include "host/uikit/view/window.hpp"

namespace wispen::uikit {

namespace {

constexpr double kHeight = 31;
constexpr double kTrack = 4;
constexpr double kTrackMargin = 2;
constexpr double kThumb = 28;
constexpr double kImageGap = 10;
constexpr double kTouchReach = 10;  // around the thumb
constexpr double kSlideSeconds = 0.25;
// Of the range, for one press of a key, and with the shift key.
constexpr float kKeyStep = 1.0F / 20;
constexpr float kFineKeyStep = 1.0F / 100;

/// The host's UISlider. Only its thumb takes a finger. A drag sends valueChanged whenever the value changes,
/// if it is continuous, and always when the finger lifts; setting it from code sends nothing.
class Slider : public objc::Implementation<Slider, UISlider> {
 public:
  static UISlider initWithFrame(objc::Allocated<UISlider> self, const Rect& frame) {
    UISlider view = super_init<"initWithFrame:">(std::move(self), frame);
    if (!view) return view;
    of(view).build();
    return view;
  }
  void build() {
    body_ = objc::make<UIView>();
    body_.setUserInteractionEnabled(false);
    self().addSubview(body_);
    for (UIView* const part : {&maximum_track_, &minimum_track_, &thumb_}) {
      *part = objc::make<UIView>();
      part->layer().setCornerRadius(part == &thumb_ ? kThumb / 2 : kTrack / 2);
      body_.addSubview(*part);
    }
    for (UIImageView* const image : {&minimum_image_, &maximum_image_}) {
      *image = objc::make<UIImageView>();
      body_.addSubview(*image);
    }
    look::cast_thumb_shadow(thumb_.layer(), look::kSliderThumbShadow);
    apply_colours();
  }
  void apply_colours() {
    const auto or_else = [](const UIColor& own, const UIColor& other) { return own ? own : other; };
    minimum_track_.setBackgroundColor(or_else(minimum_tint_, self().tintColor()));
    maximum_track_.setBackgroundColor(or_else(maximum_tint_, UIColor::systemFillColor()));
    thumb_.setBackgroundColor(or_else(thumb_tint_, UIColor::whiteColor()));
    body_.setAlpha(self().isEnabled() ? 1 : look::kDisabledAlpha);
  }
  static Size image_size(const UIImageView& view) {
    const graphics::Image* const image = image_of(view.image());
    return image != nullptr ? image->size() : Size{};
  }
  // The platform's three questions, which subclasses may answer otherwise.
  Rect trackRect(const Rect& bounds) {
    const double before = image_size(minimum_image_).width;
    const double after = image_size(maximum_image_).width;
    double left = before > 0 ? before + kImageGap : kTrackMargin;
    double right = after > 0 ? after + kImageGap : kTrackMargin;
    if (is_right_to_left(self())) std::swap(left, right);
    const double y = round_to_pixel(bounds.mid_y() - kTrack / 2, display_settings().scale);
    return {{bounds.min_x() + left, y}, {std::max(0.0, bounds.width() - left - right), kTrack}};
  }
  Rect thumbRect(const Rect& bounds, const Rect& track, float value) {
    const double range = double{maximum_} - double{minimum_};
    double part = range > 0 ? (double{value} - double{minimum_}) / range : 0;
    if (is_right_to_left(self())) part = 1 - part;
    // Up to the track's ends with its own ends, a little beyond where nothing stands beside it.
    const double way = std::max(0.0, track.width() + 2 * kTrackMargin - kThumb);
    const double y = round_to_pixel(bounds.mid_y() - kThumb / 2, display_settings().scale);
    return {{track.min_x() - kTrackMargin + part * way, y}, {kThumb, kThumb}};
  }
  Rect imageRect(const Rect& bounds, bool leading) {
    const Size size = image_size(leading ? minimum_image_ : maximum_image_);
    const bool left = leading != is_right_to_left(self());
    const double y = round_to_pixel(bounds.mid_y() - size.height / 2, display_settings().scale);
    return {{left ? bounds.min_x() : bounds.max_x() - size.width, y}, size};
  }
  Rect minimumImageRect(const Rect& bounds) { return imageRect(bounds, true); }
  Rect maximumImageRect(const Rect& bounds) { return imageRect(bounds, false); }
  Rect track_rect() { return self().trackRectForBounds(self().bounds()); }
  void place_parts() {
    const Rect bounds = self().bounds();
    const Rect track = track_rect();
    const Rect thumb = thumb_rect();
    body_.setFrame(bounds);
    thumb_.setFrame(thumb);
    maximum_track_.setFrame(track);
    Rect passed = track;
    if (is_right_to_left(self())) passed.origin.x = thumb.mid_x();
    passed.size.width = is_right_to_left(self()) ? std::max(0.0, track.max_x() - thumb.mid_x())
                                                 : std::max(0.0, thumb.mid_x() - track.min_x());
    minimum_track_.setFrame(passed);
    minimum_image_.setFrame(self().minimumValueImageRectForBounds(bounds));
    maximum_image_.setFrame(self().maximumValueImageRectForBounds(bounds));
  }
  void layoutSubviews() {
    super<"layoutSubviews">();
    place_parts();
  }
  Size sizeThatFits(const Size& size) {
    const double images = std::max(image_size(minimum_image_).height, image_size(maximum_image_).height);
    return {size.width, std::max(kHeight, images)};
  }
  Size intrinsicContentSize() { return {UIViewNoIntrinsicMetric, sizeThatFits({}).height}; }
  void set_by_user(float value, bool tell, const NSObject& event) {
    const UISlider kept = self();
    const float old = kept.value();
    kept.setValue(value, false);
    if (tell && kept.value() != old) send_actions(kept, UIControlEventValueChanged, event);
  }
  bool beginTracking(const UITouch& touch, const UIEvent&) {
    const Rect thumb = thumb_rect();
    const Point point = touch.locationInView(self());
    if (!thumb.inset(-kTouchReach, -kTouchReach).contains(point)) return false;
    grip_ = point.x - thumb.mid_x();
    return true;
  }
  bool continueTracking(const UITouch& touch, const UIEvent& event) {
    // Where the thumb would stand at either end, as a subclass may place it.
    const Rect bounds = self().bounds();
    const Rect track = track_rect();
    const auto centre_at = [&](float value) {
      return Rect(self().thumbRectForBounds(bounds, track, value)).mid_x();
    };
    const double from = centre_at(minimum_);
    const double to = centre_at(maximum_);
    if (from == to) return true;
    const double part = std::clamp((touch.locationInView(self()).x - grip_ - from) / (to - from), 0.0, 1.0);
    const double range = double{maximum_} - double{minimum_};
    set_by_user(static_cast<float>(double{minimum_} + part * range), continuous_, event);
    return true;
  }
  void endTracking(const UITouch&, const UIEvent& event) {
    send_actions(self(), UIControlEventValueChanged, event);
  }
  bool keepsDrags() { return true; }
  bool handleKey(const UIKey& key) {
    if (!self().isEnabled() || focused_view() != self()) return false;
    const float step = (maximum_ - minimum_) * (key.press().shift ? kFineKeyStep : kKeyStep);
    const float forward = is_right_to_left(self()) ? -step : step;
    float wanted = value_;
    switch (key.press().code) {
      case KeyCode::Right:
        wanted += forward;
        break;
      case KeyCode::Left:
        wanted -= forward;
        break;
      case KeyCode::Home:
        wanted = minimum_;
        break;
      case KeyCode::End:
        wanted = maximum_;
        break;
      default:
        return false;
    }
    set_by_user(wanted, true, NSObject());
    return true;
  }
  void stateChanged() { apply_colours(); }
  void tintColorDidChange() {
    super<"tintColorDidChange">();
    apply_colours();
  }
  void set_value_at_once(float value) { setValue(value, false); }
  template <auto Member>
  UIImage image() {
    return (this->*Member).image();
  }
  NSString accessibilityValue() {
    const float range = maximum_ - minimum_;
    const int percent = range > 0 ? static_cast<int>(std::lround((value_ - minimum_) / range * 100)) : 0;
    return NSString((std::to_string(percent) + "%").c_str());
  }
  /// In the slider's coordinates.
  Rect thumb_rect() { return self().thumbRectForBounds(self().bounds(), track_rect(), value_); }
  /// Clamped to the range; a value that is not a number is ignored.
  void setValue(float value, bool animated) {
    if (std::isnan(value)) return;
    value = std::clamp(value, minimum_, std::max(minimum_, maximum_));
    if (value == value_) return;
    value_ = value;
    AnimationEngine* const engine = AnimationEngine::current();
    if (animated && engine != nullptr && self().window()) {
      engine->animate({.duration = kSlideSeconds}, [&] { place_parts(); });
    } else {
      place_parts();
    }
  }
  /// The other end moves along when it would be passed.
  void setMinimumValue(float value) {
    if (!std::isfinite(value)) return;
    minimum_ = value;
    maximum_ = std::max(maximum_, value);
    value_ = std::clamp(value_, minimum_, maximum_);
    self().setNeedsLayout();
  }
  void setMaximumValue(float value) {
    if (!std::isfinite(value)) return;
    maximum_ = value;
    minimum_ = std::min(minimum_, value);
    value_ = std::clamp(value_, minimum_, maximum_);
    self().setNeedsLayout();
  }
  void setMinimumTrackTintColor(const UIColor& colour) {
    minimum_tint_ = colour;
    apply_colours();
  }
  void setMaximumTrackTintColor(const UIColor& colour) {
    maximum_tint_ = colour;
    apply_colours();
  }
  void setThumbTintColor(const UIColor& colour) {
    thumb_tint_ = colour;
    apply_colours();
  }
  /// At the ends of the track; nil for none.
  void setMinimumValueImage(const UIImage& image) {
    minimum_image_.setImage(image);
    self().setNeedsLayout();
  }
  void setMaximumValueImage(const UIImage& image) {
    maximum_image_.setImage(image);
    self().setNeedsLayout();
  }

 private:
  friend void wispen::uikit::define_slider();

  float value_ = 0;
  float minimum_ = 0;
  float maximum_ = 1;
  bool continuous_ = true;
  double grip_ = 0;  // from the thumb's centre to where the finger holds it
  UIColor minimum_tint_;
  UIColor maximum_tint_;
  UIColor thumb_tint_;
  UIView body_;  // around the parts: they fade as one
  UIView minimum_track_;
  UIView maximum_track_;
  UIView thumb_;
  UIImageView minimum_image_;
  UIImageView maximum_image_;
};

}  // namespace

void define_slider() {
  auto slider = objc::Class<UISlider>::implemented_by<Slider>();
  slider.initializer<"initWithFrame:", &Slider::initWithFrame>()
      .getter<"value", &Slider::value_>()
      .method<"setValue:", &Slider::set_value_at_once>()
      .method<"setValue:animated:", &Slider::setValue>()
      .getter<"minimumValue", &Slider::minimum_>()
      .method<"setMinimumValue:", &Slider::setMinimumValue>()
      .getter<"maximumValue", &Slider::maximum_>()
      .method<"setMaximumValue:", &Slider::setMaximumValue>()
      .property<"isContinuous", "setContinuous:", &Slider::continuous_>()
      .getter<"minimumTrackTintColor", &Slider::minimum_tint_>()
      .method<"setMinimumTrackTintColor:", &Slider::setMinimumTrackTintColor>()
      .getter<"maximumTrackTintColor", &Slider::maximum_tint_>()
      .method<"setMaximumTrackTintColor:", &Slider::setMaximumTrackTintColor>()
      .getter<"thumbTintColor", &Slider::thumb_tint_>()
      .method<"setThumbTintColor:", &Slider::setThumbTintColor>()
      .method<"minimumValueImage", &Slider::image<&Slider::minimum_image_>>()
      .method<"setMinimumValueImage:", &Slider::setMinimumValueImage>()
      .method<"maximumValueImage", &Slider::image<&Slider::maximum_image_>>()
      .method<"setMaximumValueImage:", &Slider::setMaximumValueImage>();
  slider.method<"trackRectForBounds:", &Slider::trackRect>()
      .method<"thumbRectForBounds:trackRect:value:", &Slider::thumbRect>()
      .method<"minimumValueImageRectForBounds:", &Slider::minimumImageRect>()
      .method<"maximumValueImageRectForBounds:", &Slider::maximumImageRect>()
      .method<"sizeThatFits:", &Slider::sizeThatFits>()
      .method<"intrinsicContentSize", &Slider::intrinsicContentSize>()
      .method<"layoutSubviews", &Slider::layoutSubviews>()
      .method<"beginTrackingWithTouch:withEvent:", &Slider::beginTracking>()
      .method<"continueTrackingWithTouch:withEvent:", &Slider::continueTracking>()
      .method<"endTrackingWithTouch:withEvent:", &Slider::endTracking>()
      .method<"tintColorDidChange", &Slider::tintColorDidChange>()
      .method<"accessibilityValue", &Slider::accessibilityValue>()
      .method<hooks::kControlStateChanged, &Slider::stateChanged>()
      .method<hooks::kKeepsDrags, &Slider::keepsDrags>()
      .method<hooks::kHandleKey, &Slider::handleKey>()
      .register_class();
}

}  // namespace wispen::uikit
