// host/uikit/view/animation.hpp: values that reach their views over time, on the host's clock.
//
// A view's own values change at once. What is painted is asked for at the moment of painting, and follows
// from the clock alone: every moment is exact, and skipping some changes nothing.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "host/animation/interpolation.hpp"
#include "host/animation/spring.hpp"
#include "host/animation/timing_curve.hpp"
#include "host/core/clock.hpp"
#include "host/core/main_loop.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit/UIView.hpp"

namespace wispen::uikit {

struct AnimationTiming {
  double duration = 0;  // seconds
  double delay = 0;
  animation::TimingCurve curve{animation::NamedCurve::EaseInOut};
  std::optional<animation::Spring> spring = std::nullopt;  // in place of the curve
};

/// All that one call of an animation method set going.
struct AnimationGroup {
  AnimationTiming timing;
  Nanoseconds start{};
  bool interrupted = false;  // another animation took over a value of it
  bool animates = false;

  /// 0 to 1, and beyond it for springs.
  double progress(Nanoseconds now) const;
  bool over(Nanoseconds now) const;
  Nanoseconds end() const;
};

/// One value on its way to the model's: what is still missing at the start, and fades to nothing. So a model
/// that moves on meanwhile, because the view is laid out, takes the animation along, as on the platform.
template <class T>
struct AnimatedValue {
  T offset;  // for a colour: where it came from
  std::shared_ptr<AnimationGroup> group;
};

struct ViewAnimations {
  std::optional<AnimatedValue<Rect>> bounds;
  std::optional<AnimatedValue<Point>> center;
  std::optional<AnimatedValue<double>> alpha;
  std::optional<AnimatedValue<AffineTransform>> transform;
  std::optional<AnimatedValue<UIColor>> background;
};

/// The animations of one host.
class AnimationEngine {
 public:
  explicit AnimationEngine(MainLoop& loop) : loop_(loop) {}
  static AnimationEngine* current();
  static void set_current(AnimationEngine* engine);

  Nanoseconds now() const { return loop_.clock().now(); }

  /// Runs `changes` at once; what it sets is seen to change over the timing. `completion` is told whether
  /// nothing interrupted it, from the loop, also when nothing was animated.
  void animate(const AnimationTiming& timing, const std::function<void()>& changes,
               std::function<void(bool finished)> completion = nullptr);
  /// Runs `changes` with nothing in it animated.
  void without_animation(const std::function<void()>& changes);
  bool enabled() const { return enabled_; }
  void set_enabled(bool enabled) { enabled_ = enabled; }

  /// The group that a change made now belongs to; null outside of animation blocks.
  std::shared_ptr<AnimationGroup> joining();
  /// `view` is painted anew until the group ends.
  void add(const UIView& view, const std::shared_ptr<AnimationGroup>& group);
  void forget(const UIView& view);
  /// Whether anything moves now, so that the next frame will look different.
  bool active();
  /// Marks what moved since the last call to be painted again.
  void mark_moving_views();
  /// Ends all animations of the view: it is seen as it is.
  static void remove_all(const UIView& view);

 private:
  struct Moving {
    objc::Unowned<UIView> view;
    std::shared_ptr<AnimationGroup> group;
  };

  MainLoop& loop_;
  bool enabled_ = true;
  std::vector<std::shared_ptr<AnimationGroup>> open_;  // innermost last; null where animation is switched off
  std::vector<Moving> moving_;
};

}  // namespace wispen::uikit
