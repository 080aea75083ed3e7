// host/uikit/containers/controllers/navigation_transition.cpp: how a change of a navigation controller's
// stack is seen: one page slides over the other, by itself or under a finger, and both are told what becomes
// of them.

#include <algorithm>
#include <utility>

#include "host/uikit/containers/controllers/navigation_bar.hpp"
#include "host/uikit/containers/controllers/navigation_controller.hpp"
#include "host/uikit/containers/controllers/view_controller.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/animation.hpp"
#include "host/uikit/view/events/gesture_recognizer.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

constexpr double kTransitionSeconds = 0.35;
constexpr double kParallax = 0.3;       // how far the page below moves, of the width
constexpr double kDimming = 0.1;        // of the page below
constexpr double kThrowVelocity = 300;  // points a second that finish a way back whatever its length

}  // namespace

void NavigationController::pose(const Transition& transition, double progress) {
  const double width = container_.bounds().size.width;
  const double side = is_right_to_left(self().viewIfLoaded()) ? -1 : 1;
  const UIView upper = transition.back ? transition.from.view() : transition.to.view();
  const UIView lower = transition.back ? transition.to.view() : transition.from.view();
  const double out = transition.back ? progress : 1 - progress;  // how far the upper page is out of sight
  upper.setTransform(AffineTransform::translation(side * width * out, 0));
  lower.setTransform(AffineTransform::translation(-side * width * kParallax * (1 - out), 0));
  transition.dim.setAlpha(1 - out);
}

NavigationController::SharedTransition NavigationController::begin_transition(const UIViewController& from,
                                                                              const UIViewController& to,
                                                                              bool back) {
  auto transition = std::make_shared<Transition>();
  transition->from = from;
  transition->to = to;
  transition->back = back;
  put_in_place(to);
  transition->dim = UIView::alloc().initWithFrame(container_.bounds());
  transition->dim.setBackgroundColor(UIColor::colorWithWhite(0, kDimming));
  transition->dim.setUserInteractionEnabled(false);
  container_.addSubview(transition->dim);
  container_.addSubview(back ? from.view() : to.view());
  transition_ = transition;
  return transition;
}

void NavigationController::complete(const SharedTransition& transition) {
  if (std::exchange(transition->finished, true)) return;
  const UINavigationController kept = self();
  if (transition_ == transition) transition_.reset();
  transition->dim.removeFromSuperview();
  const UIViewController from = transition->from;
  const UIViewController to = transition->to;
  const bool gone = std::ranges::find(stack_, from) == stack_.end();
  if (from && from != top()) {
    from.view().removeFromSuperview();
    from.view().setTransform(AffineTransform());
  }
  to.view().setTransform(AffineTransform());
  if (from) from.endAppearanceTransition();
  to.endAppearanceTransition();
  objc::send<"didMoveToParentViewController:">(to, kept);
  if (gone && from && ViewController::of(from).parent() == kept) let_go_of(from);
}

void NavigationController::settle_way_back(bool goes, double progress) {
  const SharedTransition transition = transition_;
  const std::vector<UIViewController> before = std::exchange(before_way_back_, {});
  if (goes) {
    show_items(true);
  } else {
    stack_ = before;  // who stayed is told so
    ViewController::of(transition->from).set_moving_from_parent(false);
    transition->to.beginAppearanceTransition(false, true);
    transition->from.beginAppearanceTransition(true, true);
  }
  const double rest = goes ? 1 - progress : progress;
  AnimationEngine::current()->animate(
      {.duration = kTransitionSeconds * rest}, [&] { pose(*transition, goes ? 1 : 0); },
      [kept = self(), transition, goes](bool) {
        if (!goes) std::swap(transition->from, transition->to);
        of(kept).complete(transition);
      });
}

void NavigationController::put_in_place(const UIViewController& controller) {
  const UIView view = controller.view();
  view.setTransform(AffineTransform());
  view.setFrame(container_.bounds());
  view.setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  if (view.superview() != container_) container_.addSubview(view);
}

void NavigationController::show_items(bool animated) {
  std::vector<UINavigationItem> items;
  for (const UIViewController& controller : stack_) items.push_back(controller.navigationItem());
  NavigationBar::of(bar_).set_items(std::move(items), animated);
  self().viewIfLoaded().setNeedsLayout();
}

void NavigationController::finish_transition() {
  if (const SharedTransition running = transition_) complete(running);
}

void NavigationController::show_change(const UIViewController& from, const UIViewController& to, bool back,
                                       bool animated) {
  const UIView view = self().viewIfLoaded();
  const bool visible = view && view.window() && ViewController::of(self()).is_visible();
  to.view();
  if (!visible) {
    show_items(false);
    if (view) {
      if (from) from.view().removeFromSuperview();
      put_in_place(to);
    }
    if (from && back) let_go_of(from);
    return;
  }
  animated = animated && AnimationEngine::current()->enabled();
  if (from) from.beginAppearanceTransition(false, animated);
  to.beginAppearanceTransition(true, animated);
  show_items(animated);
  if (!from || !animated) {
    put_in_place(to);
    auto transition = std::make_shared<Transition>();
    transition->from = from;
    transition->to = to;
    transition->back = back;
    view.layoutIfNeeded();
    complete(transition);
    return;
  }
  const SharedTransition transition = begin_transition(from, to, back);
  pose(*transition, 0);
  view.layoutIfNeeded();
  AnimationEngine::current()->animate(
      {.duration = kTransitionSeconds}, [&] { pose(*transition, 1); },
      [kept = self(), transition](bool) { of(kept).complete(transition); });
}

void NavigationController::follow_way_back(const UIScreenEdgePanGestureRecognizer& pan) {
  const double width = std::max(1.0, container_.bounds().size.width);
  const double side = display_settings().right_to_left ? -1 : 1;
  const auto progress = [&] {
    return std::clamp(side * PanGestureRecognizer::of(pan).way().x / width, 0.0, 1.0);
  };
  const UIGestureRecognizerState state = pan.state();
  switch (state) {
    case UIGestureRecognizerState::Began: {
      if (stack_.size() < 2 || transition_) return;
      before_way_back_ = stack_;
      const UIViewController from = stack_.back();
      stack_.pop_back();
      ViewController::of(from).set_moving_from_parent(true);
      from.beginAppearanceTransition(false, true);
      top().beginAppearanceTransition(true, true);
      pose(*begin_transition(from, top(), true), 0);
      break;
    }
    case UIGestureRecognizerState::Changed:
      if (!before_way_back_.empty()) pose(*transition_, progress());
      break;
    case UIGestureRecognizerState::Ended:
    case UIGestureRecognizerState::Cancelled: {
      if (before_way_back_.empty()) return;
      const double velocity = side * pan.velocityInView(UIView()).x;
      const bool goes = state == UIGestureRecognizerState::Ended && velocity > -kThrowVelocity &&
                        (progress() > 0.5 || velocity > kThrowVelocity);
      settle_way_back(goes, progress());
      break;
    }
    default:
      break;
  }
}

}  // namespace wispen::uikit
