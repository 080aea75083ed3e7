// host/uikit/controllers/navigation_controller.cpp: UINavigationController: a stack of pages, one of them
// seen.

#include "host/uikit/controllers/navigation_controller.hpp"

#include <algorithm>
#include <functional>

#include "host/uikit/controllers/navigation_state.hpp"
#include "host/uikit/controllers/navigation_transition.hpp"
#include "host/uikit/controllers/view_controller_state.hpp"
#include "host/uikit/events/key.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/views/view_state.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::uikit {

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
    finish_transition(self);
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
  finish_transition(*this);
  if (std::ranges::find(stack(), controller) != stack().end()) {
    NSException::raise("NSInvalidArgumentException"_ns,
                       "Pushing the same view controller instance more than once is not supported"_ns);
  }
  const ViewController from = top();
  navigation().stack.push_back(controller);
  NavigationMethods::adopt(*this, controller);
  show_change(*this, from, controller, false, animated);
}

ViewController NavigationController::pop(bool animated) const {
  finish_transition(*this);
  if (stack().size() < 2) return ViewController();
  const ViewController from = top();
  navigation().stack.pop_back();
  from.set_moving_from_parent(true);
  show_change(*this, from, top(), true, animated);
  return from;
}

NSArray NavigationController::pop_to(const ViewController& controller, bool animated) const {
  finish_transition(*this);
  NSMutableArray popped = NSMutableArray::array();
  auto& all = navigation().stack;
  const auto found = std::ranges::find(all, controller);
  if (found == all.end() || controller == top()) return popped;
  const ViewController from = top();
  for (auto leaving = found + 1; leaving != all.end(); ++leaving) popped.addObject(*leaving);
  const std::vector<ViewController> between(found + 1, all.end() - 1);
  all.erase(found + 1, all.end());
  for (const ViewController& skipped : between) let_go_of(*this, skipped);
  from.set_moving_from_parent(true);
  show_change(*this, from, controller, true, animated);
  return popped;
}

void NavigationController::set_stack(std::vector<ViewController> controllers, bool animated) const {
  finish_transition(*this);
  const std::vector<ViewController> old = stack();
  const ViewController from = top();
  navigation().stack = std::move(controllers);
  const auto& now = stack();
  for (const ViewController& controller : now) {
    if (std::ranges::find(old, controller) == old.end()) NavigationMethods::adopt(*this, controller);
  }
  for (const ViewController& controller : old) {
    const bool stays = std::ranges::find(now, controller) != now.end();
    if (!stays && controller != from) let_go_of(*this, controller);
  }
  const ViewController to = top();
  if (!to) return;
  if (to == from) return show_items(*this, animated);
  const bool back = std::ranges::find(old, to) != old.end();
  const bool leaves = from && std::ranges::find(now, from) == now.end();
  if (leaves) from.set_moving_from_parent(true);
  show_change(*this, from, to, back, animated);
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
      .method<"_edgePanned:", &follow_way_back>()
      .method<"_contentOf:scrolled:", &M::contentScrolled>()
      .method<"_handleKey:", &M::handleKey>();
  navigation.register_class();
}

}  // namespace wispen::uikit
