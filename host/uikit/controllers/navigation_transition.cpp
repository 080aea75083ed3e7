#include "host/uikit/controllers/navigation_transition.hpp"

#include <algorithm>
#include <utility>

#include "host/uikit/controllers/navigation_state.hpp"
#include "host/uikit/controllers/view_controller_state.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/views/view_state.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::uikit {

namespace {

constexpr double kTransitionSeconds = 0.35;
constexpr double kParallax = 0.3;       // how far the page below moves, of the width
constexpr double kDimming = 0.1;        // of the page below
constexpr double kThrowVelocity = 300;  // points a second that finish a way back whatever its length

// Where the pages stand when `progress` of the way is done.
void pose(const NavigationController& self, const Transition& transition, double progress) {
  const double width = self.navigation().container.bounds().width();
  const double side = self.view_if_loaded().is_right_to_left() ? -1 : 1;
  const View upper = transition.back ? transition.from.view() : transition.to.view();
  const View lower = transition.back ? transition.to.view() : transition.from.view();
  const double out = transition.back ? progress : 1 - progress;  // how far the upper page is out of sight
  upper.setTransform(AffineTransform::translation(side * width * out, 0));
  lower.setTransform(AffineTransform::translation(-side * width * kParallax * (1 - out), 0));
  transition.dim.setAlpha(1 - out);
}

std::shared_ptr<Transition> begin(const NavigationController& self, const ViewController& from,
                                  const ViewController& to, bool back) {
  auto transition = std::make_shared<Transition>();
  transition->from = from;
  transition->to = to;
  transition->back = back;
  const View container = self.navigation().container;
  put_in_place(self, to);
  const View upper = back ? from.view() : to.view();
  transition->dim = View::make(container.bounds());
  transition->dim.setBackgroundColor(UIColor::colorWithWhite(0, kDimming));
  transition->dim.setUserInteractionEnabled(false);
  container.addSubview(transition->dim);
  container.addSubview(upper);
  self.navigation().transition = transition;
  return transition;
}

void complete(const NavigationController& self, const std::shared_ptr<Transition>& transition,
              bool animated) {
  if (std::exchange(transition->finished, true)) return;
  const NavigationController kept = self;
  if (kept.navigation().transition == transition) kept.navigation().transition.reset();
  transition->dim ? transition->dim.removeFromSuperview() : void();
  const bool gone = std::ranges::find(kept.stack(), transition->from) == kept.stack().end();
  if (transition->from && transition->from != kept.top()) {
    transition->from.view().removeFromSuperview();
    transition->from.view().setTransform({});
  }
  transition->to.view().setTransform({});
  if (transition->from) transition->from.did_disappear(animated);
  transition->to.did_appear(animated);
  objc::send<"didMoveToParentViewController:">(transition->to, kept);
  if (gone && transition->from && transition->from.parent() == kept) let_go_of(kept, transition->from);
}

void settle_way_back(const NavigationController& self, bool goes, double progress) {
  NavigationState& state = self.navigation();
  const auto transition = state.transition;
  const std::vector<ViewController> before = std::exchange(state.before_way_back, {});
  if (goes) {
    show_items(self, true);
  } else {
    state.stack = before;  // who stayed is told so
    transition->from.set_moving_from_parent(false);
    transition->to.will_disappear(true);
    transition->from.will_appear(true);
  }
  const double rest = goes ? 1 - progress : progress;
  AnimationEngine::current()->animate(
      {.duration = kTransitionSeconds * rest}, [&] { pose(self, *transition, goes ? 1 : 0); },
      [self = NavigationController(self), transition, goes](bool) {
        if (!goes) std::swap(transition->from, transition->to);
        complete(self, transition, true);
      });
}

}  // namespace

void put_in_place(const NavigationController& self, const ViewController& controller) {
  const View container = self.navigation().container;
  const View view = controller.view();
  view.setTransform({});
  view.setFrame(container.bounds());
  view.setAutoresizingMask(18);
  if (view.superview() != container) container.addSubview(view);
}

void let_go_of(const NavigationController& self, const ViewController& controller) {
  std::erase(self.ViewController::parts().children, controller);
  controller.set_parent(ViewController());
  objc::send<"didMoveToParentViewController:">(controller, ViewController());
}

void show_items(const NavigationController& self, bool animated) {
  std::vector<NavigationItem> items;
  for (const ViewController& controller : self.stack()) items.push_back(controller.navigationItem());
  self.bar().set_items(std::move(items), animated);
  self.view_if_loaded() ? self.view_if_loaded().setNeedsLayout() : void();
}

void finish_transition(const NavigationController& self) {
  if (const auto running = self.navigation().transition) complete(self, running, true);
}

void show_change(const NavigationController& self, const ViewController& from, const ViewController& to,
                 bool back, bool animated) {
  const View view = self.view_if_loaded();
  const bool visible = view && view.window() && self.is_visible();
  to.view();
  if (!visible) {
    show_items(self, false);
    if (view) {
      if (from) from.view().removeFromSuperview();
      put_in_place(self, to);
    }
    if (from && back) let_go_of(self, from);
    return;
  }
  animated = animated && AnimationEngine::current()->enabled();
  if (from) from.will_disappear(animated);
  to.will_appear(animated);
  show_items(self, animated);
  if (!from || !animated) {
    put_in_place(self, to);
    auto transition = std::make_shared<Transition>();
    transition->from = from;
    transition->to = to;
    transition->back = back;
    view.layoutIfNeeded();
    complete(self, transition, false);
    return;
  }
  const auto transition = begin(self, from, to, back);
  pose(self, *transition, 0);
  view.layoutIfNeeded();
  AnimationEngine::current()->animate(
      {.duration = kTransitionSeconds}, [&] { pose(self, *transition, 1); },
      [self = NavigationController(self), transition](bool) { complete(self, transition, true); });
}

void follow_way_back(const NavigationController& self, const ScreenEdgePanGestureRecognizer& pan) {
  NavigationState& state = self.navigation();
  const double width = std::max(1.0, state.container.bounds().width());
  const double side = display_settings().right_to_left ? -1 : 1;
  switch (pan.gesture_state()) {
    case GestureState::Began: {
      if (state.stack.size() < 2 || state.transition) return;
      state.before_way_back = state.stack;
      const ViewController from = state.stack.back();
      state.stack.pop_back();
      from.set_moving_from_parent(true);
      from.will_disappear(true);
      self.top().will_appear(true);
      pose(self, *begin(self, from, self.top(), true), 0);
      break;
    }
    case GestureState::Changed:
      if (state.before_way_back.empty()) return;
      pose(self, *state.transition, std::clamp(side * pan.way().x / width, 0.0, 1.0));
      break;
    case GestureState::Ended:
    case GestureState::Cancelled: {
      if (state.before_way_back.empty()) return;
      const double progress = std::clamp(side * pan.way().x / width, 0.0, 1.0);
      const double velocity = side * pan.velocityInView(View()).x;
      const bool goes = pan.gesture_state() == GestureState::Ended && velocity > -kThrowVelocity &&
                        (progress > 0.5 || velocity > kThrowVelocity);
      settle_way_back(self, goes, progress);
      break;
    }
    default:
      break;
  }
}

}  // namespace wispen::uikit
