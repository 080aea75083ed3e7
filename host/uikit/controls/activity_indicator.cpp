// host/uikit/controls/activity_indicator.cpp: UIActivityIndicatorView: something is under way.

#include "host/uikit/controls/activity_indicator.hpp"

#include <algorithm>
#include <array>
#include <numbers>

#include "host/uikit/painting/painter.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::uikit {

namespace {

constexpr int kSpokes = 8;
constexpr auto kStep = std::chrono::milliseconds(100);  // from one spoke to the next

}  // namespace

struct ActivityState {
  ActivityStyle style = ActivityStyle::Medium;
  UIColor colour;
  bool animating = false;
  bool hides_when_stopped = true;
  bool turning = false;  // it has a timer
  TimerId timer{};
};

ActivityState& ActivityIndicator::parts() const { return state<ActivityState>(); }

ActivityIndicator ActivityIndicator::make(ActivityStyle style) {
  return alloc().initialize<"initWithActivityIndicatorStyle:">(static_cast<NSInteger>(style));
}

bool ActivityIndicator::isAnimating() const { return parts().animating; }

struct ActivityMethods {
  using Self = ActivityIndicator;

  static Self initWithFrame(objc::Allocated<Self> self, const Rect& frame) {
    Self view = std::move(self).initialize_super<"initWithFrame:">(frame);
    if (!view) return view;
    view.setUserInteractionEnabled(false);
    view.setHidden(true);
    return view;
  }
  static Self initWithStyle(objc::Allocated<Self> self, NSInteger style) {
    Self view = std::move(self).initialize<"initWithFrame:">(Rect{});
    if (!view) return view;
    view.parts().style = static_cast<ActivityStyle>(style);
    view.sizeToFit();
    return view;
  }
  static Size sizeThatFits(const Self& self, const Size&) {
    const ActivityStyle style = self.parts().style;
    const bool large = style == ActivityStyle::Large || style == ActivityStyle::WhiteLarge;
    return large ? Size{37, 37} : Size{20, 20};
  }
  static Size intrinsicContentSize(const Self& self) { return sizeThatFits(self, {}); }

  static UIColor colour(const Self& self) {
    const ActivityState& state = self.parts();
    if (state.colour) return state.colour;
    const bool white = state.style == ActivityStyle::White || state.style == ActivityStyle::WhiteLarge;
    return white ? UIColor::whiteColor() : UIColor::systemGrayColor();
  }

  static void paint(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    const Self self = view.as<Self>();
    const Size size = sizeThatFits(self, {});
    const double radius = size.width / 2;
    const auto steps = self.isAnimating() ? main_loop().clock().now() / kStep : 0;
    const graphics::Colour own = colour_of(colour(self));
    const double alpha = own.rgba(canvas.appearance()).alpha;
    // Spokes from the rim to a little over half way in, the leading one the strongest.
    const double width = radius * 0.22;
    const graphics::Path spoke =
        graphics::Path::rounded_rect({{-width / 2, -radius * 0.95}, {width, radius * 0.5}}, width / 2);
    for (int i = 0; i < kSpokes; ++i) {
      const auto behind = static_cast<int>(((steps - i) % kSpokes + kSpokes) % kSpokes);
      const double strength = std::max(0.25, 1 - behind * 0.125);
      const double angle = 2 * std::numbers::pi * i / kSpokes;
      const auto place =
          AffineTransform::rotation(angle).then(AffineTransform::translation(bounds.mid_x(), bounds.mid_y()));
      canvas.fill(spoke.transformed(place), own.with_alpha(alpha * strength));
    }
  }

  static void turn_or_rest(const Self& self) {
    ActivityState& state = self.parts();
    const bool turns = state.animating && self.window();
    if (turns == state.turning) return;
    state.turning = turns;
    if (!turns) {
      if (Session::current() != nullptr) main_loop().cancel(state.timer);
      return;
    }
    const objc::Weak<Self> weak(self);
    state.timer = main_loop().add_timer(
        kStep,
        [weak] {
          if (const Self alive = weak.lock()) alive.setNeedsDisplay();
        },
        kStep);
  }
  static void didMoveToWindow(const Self& self) { turn_or_rest(self); }

  static NSInteger style(const Self& self) { return static_cast<NSInteger>(self.parts().style); }
  static void setStyle(const Self& self, NSInteger style) {
    self.parts().style = static_cast<ActivityStyle>(style);
    self.invalidateIntrinsicContentSize();
    self.setNeedsDisplay();
  }
  static void setColor(const Self& self, const UIColor& colour) {
    self.parts().colour = colour;
    self.setNeedsDisplay();
  }
  static bool hidesWhenStopped(const Self& self) { return self.parts().hides_when_stopped; }
  static void setHidesWhenStopped(const Self& self, bool hides) {
    self.parts().hides_when_stopped = hides;
    if (!self.isAnimating()) self.setHidden(hides);
  }
};

void ActivityIndicator::startAnimating() const {
  parts().animating = true;
  setHidden(false);
  ActivityMethods::turn_or_rest(*this);
}
void ActivityIndicator::stopAnimating() const {
  parts().animating = false;
  if (parts().hides_when_stopped) setHidden(true);
  ActivityMethods::turn_or_rest(*this);
  setNeedsDisplay();
}
void ActivityIndicator::farewell() {
  if (parts().turning && Session::current() != nullptr) main_loop().cancel(parts().timer);
}

void ActivityIndicator::define() {
  using M = ActivityMethods;
  objc::Class<ActivityIndicator>()
      .state<ActivityState>()
      .on_dealloc<&ActivityIndicator::farewell>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .initializer<"initWithActivityIndicatorStyle:", &M::initWithStyle>()
      .method<"startAnimating", &ActivityIndicator::startAnimating>()
      .method<"stopAnimating", &ActivityIndicator::stopAnimating>()
      .method<"isAnimating", &ActivityIndicator::isAnimating>()
      .method<"activityIndicatorViewStyle", &M::style>()
      .method<"setActivityIndicatorViewStyle:", &M::setStyle>()
      .method<"color", &M::colour>()
      .method<"setColor:", &M::setColor>()
      .method<"hidesWhenStopped", &M::hidesWhenStopped>()
      .method<"setHidesWhenStopped:", &M::setHidesWhenStopped>()
      .method<"sizeThatFits:", &M::sizeThatFits>()
      .method<"intrinsicContentSize", &M::intrinsicContentSize>()
      .method<"didMoveToWindow", &M::didMoveToWindow>()
      .register_class();
  set_painter(objc::class_for<ActivityIndicator>(), &M::paint);
}

}  // namespace wispen::uikit
