// host/uikit/controls/activity_indicator.cpp: UIActivityIndicatorView: something is under way.

#include <algorithm>
#include <array>
#include <numbers>

#include "host/uikit/controls/controls.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/view.hpp"
#include "host/uikit/view/window.hpp"

namespace wispen::uikit {

namespace {

constexpr int kSpokes = 8;
constexpr auto kStep = std::chrono::milliseconds(100);  // from one spoke to the next

/// The host's UIActivityIndicatorView. It turns by the host's clock, and only while it is in a window.
class ActivityIndicator : public objc::Implementation<ActivityIndicator, UIActivityIndicatorView> {
 public:
  static UIActivityIndicatorView initWithFrame(objc::Allocated<UIActivityIndicatorView> self,
                                               const Rect& frame) {
    UIActivityIndicatorView view = super_init<"initWithFrame:">(std::move(self), frame);
    if (!view) return view;
    view.setUserInteractionEnabled(false);
    view.setHidden(true);
    return view;
  }
  static UIActivityIndicatorView initWithStyle(objc::Allocated<UIActivityIndicatorView> self,
                                               UIActivityIndicatorViewStyle style) {
    UIActivityIndicatorView view = std::move(self).initialize<"initWithFrame:">(Rect{});
    if (!view) return view;
    of(view).style_ = style;
    view.sizeToFit();
    return view;
  }
  Size sizeThatFits(const Size&) {
    using enum UIActivityIndicatorViewStyle;
    return style_ == Large || style_ == WhiteLarge ? Size{37, 37} : Size{20, 20};
  }
  Size intrinsicContentSize() { return sizeThatFits({}); }
  UIColor colour() {
    if (colour_) return colour_;
    using enum UIActivityIndicatorViewStyle;
    return style_ == White || style_ == WhiteLarge ? UIColor::whiteColor() : UIColor::systemGrayColor();
  }
  void paint(graphics::Canvas& canvas, const Rect& bounds) {
    const Size size = sizeThatFits({});
    const double radius = size.width / 2;
    const auto steps = animating_ ? main_loop().clock().now() / kStep : 0;
    const graphics::Colour own = colour_of(colour());
    const double alpha = own.rgba(canvas.appearance()).alpha;
    // Spokes from the rim to a little over half way in, the leading one the strongest.
    const double width = radius * 0.22;
    const graphics::Path spoke =
        graphics::Path::rounded_rect({{-width / 2, -radius * 0.95}, {width, radius * 0.5}}, width / 2);
    for (int i = 0; i < kSpokes; ++i) {
      const auto behind = static_cast<int>(((steps - i) % kSpokes + kSpokes) % kSpokes);
      const double strength = std::max(0.25, 1 - behind * 0.125);
      const double angle = 2 * std::numbers::pi * i / kSpokes;
      const auto turned =
          AffineTransform::rotation(angle).then(AffineTransform::translation(bounds.mid_x(), bounds.mid_y()));
      canvas.fill(spoke.transformed(turned), own.with_alpha(alpha * strength));
    }
  }
  void turn_or_rest() {
    const bool turns = animating_ && self().window();
    if (turns == turning_) return;
    turning_ = turns;
    if (!turns) {
      if (Session::current() != nullptr) main_loop().cancel(timer_);
      return;
    }
    const objc::Weak<UIActivityIndicatorView> weak(self());
    timer_ = main_loop().add_timer(
        kStep,
        [weak] {
          if (const UIActivityIndicatorView alive = weak.lock()) alive.setNeedsDisplay();
        },
        kStep);
  }
  void setStyle(UIActivityIndicatorViewStyle style) {
    style_ = style;
    self().invalidateIntrinsicContentSize();
    self().setNeedsDisplay();
  }
  void setColor(const UIColor& colour) {
    colour_ = colour;
    self().setNeedsDisplay();
  }
  void setHidesWhenStopped(bool hides) {
    hides_when_stopped_ = hides;
    if (!animating_) self().setHidden(hides);
  }
  void startAnimating() {
    animating_ = true;
    self().setHidden(false);
    turn_or_rest();
  }
  void stopAnimating() {
    animating_ = false;
    if (hides_when_stopped_) self().setHidden(true);
    turn_or_rest();
    self().setNeedsDisplay();
  }
  ~ActivityIndicator() {
    if (turning_ && Session::current() != nullptr) main_loop().cancel(timer_);
  }

 private:
  friend void wispen::uikit::define_activity_indicator();

  UIActivityIndicatorViewStyle style_ = UIActivityIndicatorViewStyle::Medium;
  UIColor colour_;
  bool animating_ = false;
  bool hides_when_stopped_ = true;
  bool turning_ = false;  // it has a timer
  TimerId timer_{};
};

}  // namespace

void define_activity_indicator() {
  objc::Class<UIActivityIndicatorView>::implemented_by<ActivityIndicator>()
      .initializer<"initWithFrame:", &ActivityIndicator::initWithFrame>()
      .initializer<"initWithActivityIndicatorStyle:", &ActivityIndicator::initWithStyle>()
      .method<"startAnimating", &ActivityIndicator::startAnimating>()
      .method<"stopAnimating", &ActivityIndicator::stopAnimating>()
      .getter<"isAnimating", &ActivityIndicator::animating_>()
      .getter<"activityIndicatorViewStyle", &ActivityIndicator::style_>()
      .method<"setActivityIndicatorViewStyle:", &ActivityIndicator::setStyle>()
      .method<"color", &ActivityIndicator::colour>()
      .method<"setColor:", &ActivityIndicator::setColor>()
      .getter<"hidesWhenStopped", &ActivityIndicator::hides_when_stopped_>()
      .method<"setHidesWhenStopped:", &ActivityIndicator::setHidesWhenStopped>()
      .method<"sizeThatFits:", &ActivityIndicator::sizeThatFits>()
      .method<"intrinsicContentSize", &ActivityIndicator::intrinsicContentSize>()
      .method<"didMoveToWindow", &ActivityIndicator::turn_or_rest>()
      .register_class();
  set_painter<&ActivityIndicator::paint>();
}

}  // namespace wispen::uikit
