// host/uikit/controllers/navigation_controller.cpp: UINavigationController: a stack of pages, one of them
// seen.

#include "host/uikit/controllers/navigation_controller.hpp"

#include <algorithm>
#include <functional>

#include "host/uikit/controllers/view_controller_state.hpp"
#include "host/uikit/events/key.hpp"
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

}  // namespace

/// One change of the page that is seen.
struct Transition {
  ViewController from;
  ViewController to;
  bool back = false;
  View dim;
  bool finished = false;
};

struct NavigationState {
  std::vector<ViewController> stack;
  NavigationBar bar;
  View container;
  std::shared_ptr<Transition> transition;
  ScreenEdgePanGestureRecognizer edge_pan;
  std::vector<ViewController> before_way_back;  // the stack, while a finger leads back
  bool bar_hidden = false;
  objc::Weak<NSObject> delegate;
};

NavigationState& NavigationController::navigation() const { return state<NavigationState>(); }
NavigationBar NavigationController::bar() const { return navigation().bar; }
const std::vector<ViewController>& NavigationController::stack() const { return navigation().stack; }
ViewController NavigationController::top() const {
  return navigation().stack.empty() ? ViewController() : navigation().stack.back();
}

struct NavigationMethods {
  using Self = NavigationController;

  static Self init(objc::Allocated<Self> self) {
    Self navigation = std::move(self).initialize_super<"init">();
    if (navigation) prepare(navigation);
    return navigation;
  }
  static Self initWithRoot(objc::Allocated<Self> self, const ViewController& root) {
    Self navigation = std::move(self).initialize<"init">();
    if (navigation && root) navigation.push(root, false);
    return navigation;
  }
  static void prepare(const Self& self) {
    NavigationState& state = self.navigation();
    state.bar = NavigationBar::alloc().initialize<"initWithFrame:">(Rect{});
    state.bar.set_back_target(self);
    state.container = View::make();
    state.container.setClipsToBounds(true);
    state.edge_pan = ScreenEdgePanGestureRecognizer::alloc().initialize<"initWithTarget:action:">(
        NSObject(self), objc::selector<"_edgePanned:">());
  }

  static void loadView(const Self& self) {
    objc::send_super<"loadView">(self, objc::class_for<ViewController>());
    NavigationState& state = self.navigation();
    const View view = self.view_if_loaded();
    view.setBackgroundColor(UIColor::systemBackgroundColor());
    state.container.setFrame(view.bounds());
    state.container.setAutoresizingMask(18);
    view.addSubview(state.container);
    view.addSubview(state.bar);
    view.addGestureRecognizer(state.edge_pan);
    if (const ViewController top = self.top()) put_in_place(self, top);
  }

  static void put_in_place(const Self& self, const ViewController& controller) {
    const View container = self.navigation().container;
    const View view = controller.view();
    view.setTransform({});
    view.setFrame(container.bounds());
    view.setAutoresizingMask(18);
    if (view.superview() != container) container.addSubview(view);
  }

  static double bar_height(const Self& self) {
    if (self.navigation().bar_hidden) return 0;
    const double large = self.bar().shows_large_title() ? NavigationBar::kLargeTitleHeight : 0;
    return NavigationBar::row_height() + large;
  }

  static void viewDidLayoutSubviews(const Self& self) {
    NavigationState& state = self.navigation();
    const View view = self.view_if_loaded();
    const double top = view.safeAreaInsets().top;
    state.bar.setHidden(state.bar_hidden);
    state.bar.setFrame({{0, 0}, {view.bounds().width(), top + bar_height(self)}});
  }

  static EdgeInsets insetsForContent(const Self& self) {
    EdgeInsets insets = objc::send<"additionalSafeAreaInsets", EdgeInsets>(self);
    insets.top += bar_height(self);
    return insets;
  }

  // Appearing is passed on to the page that is seen.
  static void viewWillAppear(const Self& self, bool animated) {
    if (const ViewController top = self.top()) top.will_appear(animated);
  }
  static void viewDidAppear(const Self& self, bool animated) {
    if (const ViewController top = self.top()) top.did_appear(animated);
  }
  static void viewWillDisappear(const Self& self, bool animated) {
    finish_now(self);
    if (const ViewController top = self.top()) top.will_disappear(animated);
  }
  static void viewDidDisappear(const Self& self, bool animated) {
    if (const ViewController top = self.top()) top.did_disappear(animated);
  }

  static void adopt(const Self& self, const ViewController& controller) {
    objc::send<"willMoveToParentViewController:">(controller, self);
    self.ViewController::parts().children.push_back(controller);
    controller.set_parent(self);
    controller.set_moving_to_parent(true);
    controller.navigationItem().set_bar(self.bar());
  }
  static void let_go(const Self& self, const ViewController& controller) {
    std::erase(self.ViewController::parts().children, controller);
    controller.set_parent(ViewController());
    objc::send<"didMoveToParentViewController:">(controller, ViewController());
  }

  static void show_items(const Self& self, bool animated) {
    std::vector<NavigationItem> items;
    for (const ViewController& controller : self.stack()) items.push_back(controller.navigationItem());
    self.bar().set_items(std::move(items), animated);
    self.view_if_loaded() ? self.view_if_loaded().setNeedsLayout() : void();
  }

  /// Where the pages stand when `progress` of the way is done.
  static void pose(const Self& self, const Transition& transition, double progress) {
    const double width = self.navigation().container.bounds().width();
    const double side = self.view_if_loaded().is_right_to_left() ? -1 : 1;
    const View upper = transition.back ? transition.from.view() : transition.to.view();
    const View lower = transition.back ? transition.to.view() : transition.from.view();
    const double out = transition.back ? progress : 1 - progress;  // how far the upper page is out of sight
    upper.setTransform(AffineTransform::translation(side * width * out, 0));
    lower.setTransform(AffineTransform::translation(-side * width * kParallax * (1 - out), 0));
    transition.dim.setAlpha(1 - out);
  }

  static std::shared_ptr<Transition> begin(const Self& self, const ViewController& from,
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

  static void complete(const Self& self, const std::shared_ptr<Transition>& transition, bool animated) {
    if (std::exchange(transition->finished, true)) return;
    const Self kept = self;
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
    if (gone && transition->from && transition->from.parent() == kept) let_go(kept, transition->from);
  }

  static void finish_now(const Self& self) {
    if (const auto running = self.navigation().transition) complete(self, running, true);
  }

  /// The stack has changed already; makes that seen.
  static void move(const Self& self, const ViewController& from, const ViewController& to, bool back,
                   bool animated) {
    const View view = self.view_if_loaded();
    const bool visible = view && view.window() && self.is_visible();
    to.view();
    if (!visible) {
      show_items(self, false);
      if (view) {
        if (from) from.view().removeFromSuperview();
        put_in_place(self, to);
      }
      if (from && back) let_go(self, from);
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
        [self = Self(self), transition](bool) { complete(self, transition, true); });
  }

  // The way back under a finger.
  static void edgePanned(const Self& self, const ScreenEdgePanGestureRecognizer& pan) {
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

  static void settle_way_back(const Self& self, bool goes, double progress) {
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
        [self = Self(self), transition, goes](bool) {
          if (!goes) std::swap(transition->from, transition->to);
          complete(self, transition, true);
        });
  }

  static NSArray viewControllers(const Self& self) {
    NSMutableArray all = NSMutableArray::array();
    for (const ViewController& controller : self.stack()) all.addObject(controller);
    return all;
  }
  static void setViewControllersAnimated(const Self& self, const NSArray& controllers, bool animated) {
    std::vector<ViewController> stack;
    for (NSUInteger i = 0, count = controllers.count(); i < count; ++i) {
      stack.push_back(controllers.objectAtIndex<ViewController>(i));
    }
    self.set_stack(std::move(stack), animated);
  }
  static void setViewControllers(const Self& self, const NSArray& controllers) {
    setViewControllersAnimated(self, controllers, false);
  }
  static NSArray popToRoot(const Self& self, bool animated) {
    return self.stack().empty() ? NSArray::array() : self.pop_to(self.stack().front(), animated);
  }
  static void goBack(const Self& self) {
    objc::send<"popViewControllerAnimated:", ViewController>(self, true);
  }
  static bool isBarHidden(const Self& self) { return self.navigation().bar_hidden; }
  static void setBarHiddenAnimated(const Self& self, bool hidden, bool) {
    self.navigation().bar_hidden = hidden;
    if (const View view = self.view_if_loaded()) view.setNeedsLayout();
  }
  static void setBarHidden(const Self& self, bool hidden) { setBarHiddenAnimated(self, hidden, false); }
  static NSObject delegate(const Self& self) { return self.navigation().delegate.lock(); }
  static void setDelegate(const Self& self, const NSObject& delegate) {
    self.navigation().delegate = delegate;
  }
  static ViewController visible(const Self& self) {
    const ViewController shown = self.ViewController::parts().presented;
    return shown ? shown : self.top();
  }
  static ScreenEdgePanGestureRecognizer edgePan(const Self& self) { return self.navigation().edge_pan; }
  static void contentScrolled(const Self& self, const View& scroll, double distance) {
    const ViewController top = self.top();
    if (top && scroll.isDescendantOfView(top.view())) self.bar().set_content_scrolled(distance);
  }
  static bool handleKey(const Self& self, const Key& key) {
    const bool back = key.code() == KeyCode::Escape || (key.key().command && key.code() == KeyCode::Left);
    if (back && self.stack().size() > 1) {
      goBack(self);
      return true;
    }
    return objc::send_super<"_handleKey:", bool>(self, objc::class_for<ViewController>(), key);
  }
};

NavigationController NavigationController::with_root(const ViewController& root) {
  return alloc().initialize<"initWithRootViewController:">(root);
}

void NavigationController::push(const ViewController& controller, bool animated) const {
  if (!controller) return;
  NavigationMethods::finish_now(*this);
  if (std::ranges::find(stack(), controller) != stack().end()) {
    NSException::raise("NSInvalidArgumentException"_ns,
                       "Pushing the same view controller instance more than once is not supported"_ns);
  }
  const ViewController from = top();
  navigation().stack.push_back(controller);
  NavigationMethods::adopt(*this, controller);
  NavigationMethods::move(*this, from, controller, false, animated);
}

ViewController NavigationController::pop(bool animated) const {
  NavigationMethods::finish_now(*this);
  if (stack().size() < 2) return ViewController();
  const ViewController from = top();
  navigation().stack.pop_back();
  from.set_moving_from_parent(true);
  NavigationMethods::move(*this, from, top(), true, animated);
  return from;
}

NSArray NavigationController::pop_to(const ViewController& controller, bool animated) const {
  NavigationMethods::finish_now(*this);
  NSMutableArray popped = NSMutableArray::array();
  auto& all = navigation().stack;
  const auto found = std::ranges::find(all, controller);
  if (found == all.end() || controller == top()) return popped;
  const ViewController from = top();
  for (auto leaving = found + 1; leaving != all.end(); ++leaving) popped.addObject(*leaving);
  const std::vector<ViewController> between(found + 1, all.end() - 1);
  all.erase(found + 1, all.end());
  for (const ViewController& skipped : between) NavigationMethods::let_go(*this, skipped);
  from.set_moving_from_parent(true);
  NavigationMethods::move(*this, from, controller, true, animated);
  return popped;
}

void NavigationController::set_stack(std::vector<ViewController> controllers, bool animated) const {
  NavigationMethods::finish_now(*this);
  const std::vector<ViewController> old = stack();
  const ViewController from = top();
  navigation().stack = std::move(controllers);
  const auto& now = stack();
  for (const ViewController& controller : now) {
    if (std::ranges::find(old, controller) == old.end()) NavigationMethods::adopt(*this, controller);
  }
  for (const ViewController& controller : old) {
    const bool stays = std::ranges::find(now, controller) != now.end();
    if (!stays && controller != from) NavigationMethods::let_go(*this, controller);
  }
  const ViewController to = top();
  if (!to) return;
  if (to == from) return NavigationMethods::show_items(*this, animated);
  const bool back = std::ranges::find(old, to) != old.end();
  const bool leaves = from && std::ranges::find(now, from) == now.end();
  if (leaves) from.set_moving_from_parent(true);
  NavigationMethods::move(*this, from, to, back, animated);
}

void NavigationController::define() {
  using M = NavigationMethods;
  objc::Class<NavigationController> navigation;
  navigation.state<NavigationState>()
      .initializer<"init", &M::init>()
      .initializer<"initWithRootViewController:", &M::initWithRoot>()
      .method<"loadView", &M::loadView>()
      .method<"viewDidLayoutSubviews", &M::viewDidLayoutSubviews>()
      .method<"viewWillAppear:", &M::viewWillAppear>()
      .method<"viewDidAppear:", &M::viewDidAppear>()
      .method<"viewWillDisappear:", &M::viewWillDisappear>()
      .method<"viewDidDisappear:", &M::viewDidDisappear>()
      .method<"_safeAreaInsetsForContent", &M::insetsForContent>()
      .method<"pushViewController:animated:", &NavigationController::push>()
      .method<"popViewControllerAnimated:", &NavigationController::pop>()
      .method<"popToViewController:animated:", &NavigationController::pop_to>()
      .method<"popToRootViewControllerAnimated:", &M::popToRoot>()
      .method<"viewControllers", &M::viewControllers>()
      .method<"setViewControllers:", &M::setViewControllers>()
      .method<"setViewControllers:animated:", &M::setViewControllersAnimated>()
      .method<"topViewController", &NavigationController::top>()
      .method<"visibleViewController", &M::visible>()
      .method<"navigationBar", &NavigationController::bar>()
      .method<"isNavigationBarHidden", &M::isBarHidden>()
      .method<"setNavigationBarHidden:", &M::setBarHidden>()
      .method<"setNavigationBarHidden:animated:", &M::setBarHiddenAnimated>()
      .method<"interactivePopGestureRecognizer", &M::edgePan>()
      .method<"delegate", &M::delegate>()
      .method<"setDelegate:", &M::setDelegate>()
      .method<"_goBack", &M::goBack>()
      .method<"_edgePanned:", &M::edgePanned>()
      .method<"_contentOf:scrolled:", &M::contentScrolled>()
      .method<"_handleKey:", &M::handleKey>();
  navigation.register_class();
}

}  // namespace wispen::uikit
