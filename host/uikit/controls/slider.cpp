// host/uikit/controls/slider.cpp: UISlider: a value between two others.

#include "host/uikit/controls/slider.hpp"

#include <algorithm>
#include <cmath>

#include "host/uikit/controls/image_view.hpp"
#include "host/uikit/events/focus.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/image.hpp"
#include "host/uikit/views/animation.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::uikit {

namespace {

constexpr double kHeight = 31;
constexpr double kTrack = 4;
constexpr double kTrackMargin = 2;
constexpr double kThumb = 28;
constexpr double kImageGap = 10;
constexpr double kTouchReach = 10;  // around the thumb
constexpr double kSlideSeconds = 0.25;
constexpr double kDisabledAlpha = 0.5;
// Of the range, for one press of a key, and with the shift key.
constexpr float kKeyStep = 1.0F / 20;
constexpr float kFineKeyStep = 1.0F / 100;

}  // namespace

struct SliderState {
  float value = 0;
  float minimum = 0;
  float maximum = 1;
  bool continuous = true;
  double grip = 0;  // from the thumb's centre to where the finger holds it
  UIColor minimum_tint;
  UIColor maximum_tint;
  UIColor thumb_tint;
  View body;  // around the parts: they fade as one
  View minimum_track;
  View maximum_track;
  View thumb;
  ImageView minimum_image;
  ImageView maximum_image;
};

SliderState& Slider::parts() const { return state<SliderState>(); }
Slider Slider::make() { return alloc().initialize<"initWithFrame:">(Rect{}); }
float Slider::value() const { return parts().value; }
float Slider::minimumValue() const { return parts().minimum; }
float Slider::maximumValue() const { return parts().maximum; }
bool Slider::isContinuous() const { return parts().continuous; }
void Slider::setContinuous(bool continuous) const { parts().continuous = continuous; }

struct SliderMethods {
  using Self = Slider;

  static Self initWithFrame(objc::Allocated<Self> self, const Rect& frame) {
    Self view = std::move(self).initialize_super<"initWithFrame:">(frame);
    if (!view) return view;
    SliderState& state = view.parts();
    state.body = View::make();
    state.body.setUserInteractionEnabled(false);
    view.addSubview(state.body);
    for (View* const part : {&state.maximum_track, &state.minimum_track, &state.thumb}) {
      *part = View::make();
      part->layer().setCornerRadius(part == &state.thumb ? kThumb / 2 : kTrack / 2);
      state.body.addSubview(*part);
    }
    for (ImageView* const image : {&state.minimum_image, &state.maximum_image}) {
      *image = ImageView::make(UIImage());
      state.body.addSubview(*image);
    }
    const Layer thumb = state.thumb.layer();
    objc::send<"setShadowOpacity:">(thumb, 0.2F);
    objc::send<"setShadowRadius:">(thumb, 4.0);
    objc::send<"setShadowOffset:">(thumb, Size{0, 2});
    colour(view);
    return view;
  }

  static void colour(const Self& self) {
    const SliderState& state = self.parts();
    const auto or_else = [](const UIColor& own, const UIColor& other) { return own ? own : other; };
    state.minimum_track.setBackgroundColor(or_else(state.minimum_tint, self.tintColor()));
    state.maximum_track.setBackgroundColor(or_else(state.maximum_tint, UIColor::systemFillColor()));
    state.thumb.setBackgroundColor(or_else(state.thumb_tint, UIColor::whiteColor()));
    state.body.setAlpha(self.isEnabled() ? 1 : kDisabledAlpha);
  }

  static Size image_size(const ImageView& view) {
    const graphics::Image* const image = image_of(view.image());
    return image != nullptr ? image->size() : Size{};
  }

  // The platform's three questions, which subclasses may answer otherwise.
  static Rect trackRect(const Self& self, const Rect& bounds) {
    const SliderState& state = self.parts();
    const double before = image_size(state.minimum_image).width;
    const double after = image_size(state.maximum_image).width;
    double left = before > 0 ? before + kImageGap : kTrackMargin;
    double right = after > 0 ? after + kImageGap : kTrackMargin;
    if (self.is_right_to_left()) std::swap(left, right);
    const double y = round_to_pixel(bounds.mid_y() - kTrack / 2, display_settings().scale);
    return {{bounds.min_x() + left, y}, {std::max(0.0, bounds.width() - left - right), kTrack}};
  }
  static Rect thumbRect(const Self& self, const Rect& bounds, const Rect& track, float value) {
    const SliderState& state = self.parts();
    const double range = double{state.maximum} - double{state.minimum};
    double part = range > 0 ? (double{value} - double{state.minimum}) / range : 0;
    if (self.is_right_to_left()) part = 1 - part;
    // Up to the track's ends with its own ends, a little beyond where nothing stands beside it.
    const double way = std::max(0.0, track.width() + 2 * kTrackMargin - kThumb);
    const double y = round_to_pixel(bounds.mid_y() - kThumb / 2, display_settings().scale);
    return {{track.min_x() - kTrackMargin + part * way, y}, {kThumb, kThumb}};
  }
  static Rect imageRect(const Self& self, const Rect& bounds, bool leading) {
    const SliderState& state = self.parts();
    const Size size = image_size(leading ? state.minimum_image : state.maximum_image);
    const bool left = leading != self.is_right_to_left();
    const double y = round_to_pixel(bounds.mid_y() - size.height / 2, display_settings().scale);
    return {{left ? bounds.min_x() : bounds.max_x() - size.width, y}, size};
  }
  static Rect minimumImageRect(const Self& self, const Rect& bounds) { return imageRect(self, bounds, true); }
  static Rect maximumImageRect(const Self& self, const Rect& bounds) {
    return imageRect(self, bounds, false);
  }
  static Rect track_rect(const Self& self) {
    return objc::send<"trackRectForBounds:", Rect>(self, self.bounds());
  }

  static void place(const Self& self) {
    const SliderState& state = self.parts();
    const Rect bounds = self.bounds();
    const Rect track = track_rect(self);
    const Rect thumb = self.thumb_rect();
    state.body.setFrame(bounds);
    state.thumb.setFrame(thumb);
    state.maximum_track.setFrame(track);
    Rect passed = track;
    if (self.is_right_to_left()) passed.origin.x = thumb.mid_x();
    passed.size.width = self.is_right_to_left() ? std::max(0.0, track.max_x() - thumb.mid_x())
                                                : std::max(0.0, thumb.mid_x() - track.min_x());
    state.minimum_track.setFrame(passed);
    state.minimum_image.setFrame(objc::send<"minimumValueImageRectForBounds:", Rect>(self, bounds));
    state.maximum_image.setFrame(objc::send<"maximumValueImageRectForBounds:", Rect>(self, bounds));
  }
  static void layoutSubviews(const Self& self) {
    objc::send_super<"layoutSubviews">(self, objc::class_for<Control>());
    place(self);
  }

  static Size sizeThatFits(const Self& self, const Size& size) {
    const SliderState& state = self.parts();
    const double images =
        std::max(image_size(state.minimum_image).height, image_size(state.maximum_image).height);
    return {size.width, std::max(kHeight, images)};
  }
  static Size intrinsicContentSize(const Self& self) {
    return {kNoIntrinsicMetric, sizeThatFits(self, {}).height};
  }

  static void set_by_user(const Self& self, float value, bool tell, const NSObject& event) {
    const Self kept = self;
    const float old = kept.value();
    kept.setValue(value, false);
    if (tell && kept.value() != old) kept.send_actions(control_event::kValueChanged, event);
  }

  static bool beginTracking(const Self& self, const Touch& touch, const Event&) {
    const Rect thumb = self.thumb_rect();
    const Point place = touch.locationInView(self);
    if (!thumb.inset(-kTouchReach, -kTouchReach).contains(place)) return false;
    self.parts().grip = place.x - thumb.mid_x();
    return true;
  }
  static bool continueTracking(const Self& self, const Touch& touch, const Event& event) {
    const SliderState& state = self.parts();
    // Where the thumb would stand at either end, as a subclass may place it.
    const Rect bounds = self.bounds();
    const Rect track = track_rect(self);
    const auto centre_at = [&](float value) {
      return objc::send<"thumbRectForBounds:trackRect:value:", Rect>(self, bounds, track, value).mid_x();
    };
    const double from = centre_at(state.minimum);
    const double to = centre_at(state.maximum);
    if (from == to) return true;
    const double part =
        std::clamp((touch.locationInView(self).x - state.grip - from) / (to - from), 0.0, 1.0);
    const double range = double{state.maximum} - double{state.minimum};
    set_by_user(self, static_cast<float>(double{state.minimum} + part * range), state.continuous, event);
    return true;
  }
  static void endTracking(const Self& self, const Touch&, const Event& event) {
    self.send_actions(control_event::kValueChanged, event);
  }
  static bool keepsDrags(const Self&) { return true; }

  static bool handleKey(const Self& self, const Key& key) {
    if (!self.isEnabled() || focused_view() != self) return false;
    const SliderState& state = self.parts();
    const float step = (state.maximum - state.minimum) * (key.key().shift ? kFineKeyStep : kKeyStep);
    const float forward = self.is_right_to_left() ? -step : step;
    float wanted = state.value;
    switch (key.code()) {
      case KeyCode::Right:
        wanted += forward;
        break;
      case KeyCode::Left:
        wanted -= forward;
        break;
      case KeyCode::Home:
        wanted = state.minimum;
        break;
      case KeyCode::End:
        wanted = state.maximum;
        break;
      default:
        return false;
    }
    set_by_user(self, wanted, true, NSObject());
    return true;
  }

  static void stateChanged(const Self& self) { colour(self); }
  static void tintColorDidChange(const Self& self) {
    objc::send_super<"tintColorDidChange">(self, objc::class_for<Control>());
    colour(self);
  }
  static void setValue(const Self& self, float value) { self.setValue(value, false); }
  template <auto Member>
  static auto get(const Self& self) {
    return self.parts().*Member;
  }
  template <auto Member>
  static UIImage image(const Self& self) {
    return (self.parts().*Member).image();
  }
  static NSString accessibilityValue(const Self& self) {
    const SliderState& state = self.parts();
    const float range = state.maximum - state.minimum;
    const int percent =
        range > 0 ? static_cast<int>(std::lround((state.value - state.minimum) / range * 100)) : 0;
    return NSString((std::to_string(percent) + "%").c_str());
  }
};

Rect Slider::thumb_rect() const {
  return objc::send<"thumbRectForBounds:trackRect:value:", Rect>(*this, bounds(),
                                                                 SliderMethods::track_rect(*this), value());
}

void Slider::setValue(float value, bool animated) const {
  SliderState& state = parts();
  if (std::isnan(value)) return;
  value = std::clamp(value, state.minimum, std::max(state.minimum, state.maximum));
  if (value == state.value) return;
  state.value = value;
  AnimationEngine* const engine = AnimationEngine::current();
  if (animated && engine != nullptr && window()) {
    engine->animate({.duration = kSlideSeconds}, [&] { SliderMethods::place(*this); });
  } else {
    SliderMethods::place(*this);
  }
}

void Slider::setMinimumValue(float value) const {
  if (!std::isfinite(value)) return;
  SliderState& state = parts();
  state.minimum = value;
  state.maximum = std::max(state.maximum, value);
  state.value = std::clamp(state.value, state.minimum, state.maximum);
  setNeedsLayout();
}
void Slider::setMaximumValue(float value) const {
  if (!std::isfinite(value)) return;
  SliderState& state = parts();
  state.maximum = value;
  state.minimum = std::min(state.minimum, value);
  state.value = std::clamp(state.value, state.minimum, state.maximum);
  setNeedsLayout();
}
void Slider::setMinimumTrackTintColor(const UIColor& colour) const {
  parts().minimum_tint = colour;
  SliderMethods::colour(*this);
}
void Slider::setMaximumTrackTintColor(const UIColor& colour) const {
  parts().maximum_tint = colour;
  SliderMethods::colour(*this);
}
void Slider::setThumbTintColor(const UIColor& colour) const {
  parts().thumb_tint = colour;
  SliderMethods::colour(*this);
}
void Slider::setMinimumValueImage(const UIImage& image) const {
  parts().minimum_image.setImage(image);
  setNeedsLayout();
}
void Slider::setMaximumValueImage(const UIImage& image) const {
  parts().maximum_image.setImage(image);
  setNeedsLayout();
}

void Slider::define() {
  using M = SliderMethods;
  using S = SliderState;
  objc::Class<Slider> slider;
  slider.state<SliderState>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .method<"value", &Slider::value>()
      .method<"setValue:", &M::setValue>()
      .method<"setValue:animated:", &Slider::setValue>()
      .method<"minimumValue", &Slider::minimumValue>()
      .method<"setMinimumValue:", &Slider::setMinimumValue>()
      .method<"maximumValue", &Slider::maximumValue>()
      .method<"setMaximumValue:", &Slider::setMaximumValue>()
      .method<"isContinuous", &Slider::isContinuous>()
      .method<"setContinuous:", &Slider::setContinuous>()
      .method<"minimumTrackTintColor", &M::get<&S::minimum_tint>>()
      .method<"setMinimumTrackTintColor:", &Slider::setMinimumTrackTintColor>()
      .method<"maximumTrackTintColor", &M::get<&S::maximum_tint>>()
      .method<"setMaximumTrackTintColor:", &Slider::setMaximumTrackTintColor>()
      .method<"thumbTintColor", &M::get<&S::thumb_tint>>()
      .method<"setThumbTintColor:", &Slider::setThumbTintColor>()
      .method<"minimumValueImage", &M::image<&S::minimum_image>>()
      .method<"setMinimumValueImage:", &Slider::setMinimumValueImage>()
      .method<"maximumValueImage", &M::image<&S::maximum_image>>()
      .method<"setMaximumValueImage:", &Slider::setMaximumValueImage>();
  slider.method<"trackRectForBounds:", &M::trackRect>()
      .method<"thumbRectForBounds:trackRect:value:", &M::thumbRect>()
      .method<"minimumValueImageRectForBounds:", &M::minimumImageRect>()
      .method<"maximumValueImageRectForBounds:", &M::maximumImageRect>()
      .method<"sizeThatFits:", &M::sizeThatFits>()
      .method<"intrinsicContentSize", &M::intrinsicContentSize>()
      .method<"layoutSubviews", &M::layoutSubviews>()
      .method<"beginTrackingWithTouch:withEvent:", &M::beginTracking>()
      .method<"continueTrackingWithTouch:withEvent:", &M::continueTracking>()
      .method<"endTrackingWithTouch:withEvent:", &M::endTracking>()
      .method<"tintColorDidChange", &M::tintColorDidChange>()
      .method<"accessibilityValue", &M::accessibilityValue>()
      .method<"_controlStateChanged", &M::stateChanged>()
      .method<"_keepsDrags", &M::keepsDrags>()
      .method<"_handleKey:", &M::handleKey>()
      .register_class();
}

}  // namespace wispen::uikit
