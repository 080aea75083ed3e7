// host/uikit/containers/controllers/navigation_controller.cpp: UINavigationController: pages on a stack, and
// their bar.

#include "host/uikit/containers/controllers/navigation_controller.hpp"

#include <algorithm>
#include <utility>

#include "host/foundation/arrays.hpp"
#include "host/uikit/containers/controllers/navigation_bar.hpp"
#include "host/uikit/containers/controllers/navigation_item.hpp"
#include "host/uikit/containers/controllers/view_controller.hpp"
#include "host/uikit/view/hooks.hpp"

namespace wispen::uikit {

void NavigationController::prepare() {
  bar_ = objc::make<UINavigationBar>();
  NavigationBar::of(bar_).set_back_target(self());
  container_ = objc::make<UIView>();
  container_.setClipsToBounds(true);
  edge_pan_ =
      UIScreenEdgePanGestureRecognizer::alloc().initWithTarget(self(), objc::selector<"_edgePanned:">());
}

double NavigationController::bar_height() const {
  if (bar_hidden_) return 0;
  const double large = NavigationBar::of(bar_).shows_large_title() ? NavigationBar::kLargeTitleHeight : 0;
  return NavigationBar::row_height() + large;
}

EdgeInsets NavigationController::insets_for_content() {
  EdgeInsets insets = self().additionalSafeAreaInsets();
  insets.top += bar_height();
  return insets;
}

void NavigationController::adopt(const UIViewController& controller) {
  objc::send<"willMoveToParentViewController:">(controller, self());
  ViewController::of(self()).child_list().push_back(controller);
  ViewController& page = ViewController::of(controller);
  page.set_parent(self());
  page.set_moving_to_parent(true);
  NavigationItem::of(controller.navigationItem()).set_bar(bar_);
}

void NavigationController::let_go_of(const UIViewController& controller) {
  std::erase(ViewController::of(self()).child_list(), controller);
  ViewController::of(controller).set_parent(UIViewController());
  objc::send<"didMoveToParentViewController:">(controller, UIViewController());
}

NSArray NavigationController::viewControllers() const { return array_of(stack_); }

void NavigationController::setViewControllers(const NSArray& controllers) {
  set_view_controllers_animated(controllers, false);
}

void NavigationController::set_view_controllers_animated(const NSArray& controllers, bool animated) {
  finish_transition();
  const std::vector<UIViewController> old = stack_;
  const UIViewController from = top();
  stack_ = objects_of<UIViewController>(controllers);
  const auto has = [](const std::vector<UIViewController>& all, const UIViewController& one) {
    return std::ranges::find(all, one) != all.end();
  };
  for (const UIViewController& controller : std::vector<UIViewController>(stack_)) {
    if (!has(old, controller)) adopt(controller);
  }
  for (const UIViewController& controller : old) {
    if (!has(stack_, controller) && controller != from) let_go_of(controller);
  }
  const UIViewController to = top();
  if (!to) return;
  if (to == from) return show_items(animated);
  if (from && !has(stack_, from)) ViewController::of(from).set_moving_from_parent(true);
  show_change(from, to, has(old, to), animated);
}

UIViewController NavigationController::visible() const {
  const UIViewController shown = ViewController::of(self()).presented_by_itself();
  return shown ? shown : top();
}

UINavigationController NavigationController::init(objc::Allocated<UINavigationController> self) {
  UINavigationController navigation = super_init<"init">(std::move(self));
  if (navigation) of(navigation).prepare();
  return navigation;
}

UINavigationController NavigationController::initWithRoot(objc::Allocated<UINavigationController> self,
                                                          const UIViewController& root) {
  UINavigationController navigation = std::move(self).initialize<"init">();
  if (navigation && root) navigation.pushViewController(root, false);
  return navigation;
}

void NavigationController::loadView() {
  super<"loadView">();
  const UIView view = self().viewIfLoaded();
  view.setBackgroundColor(UIColor::systemBackgroundColor());
  container_.setFrame(view.bounds());
  container_.setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  view.addSubview(container_);
  view.addSubview(bar_);
  view.addGestureRecognizer(edge_pan_);
  if (!stack_.empty()) put_in_place(top());
}

void NavigationController::viewDidLayoutSubviews() {
  const UIView view = self().viewIfLoaded();
  const double top = view.safeAreaInsets().top;
  bar_.setHidden(bar_hidden_);
  bar_.setFrame(Rect{{0, 0}, {view.bounds().size.width, top + bar_height()}});
}

// Appearing is passed on to the page that is seen.
void NavigationController::viewWillAppear(bool animated) {
  if (!stack_.empty()) top().beginAppearanceTransition(true, animated);
}

void NavigationController::viewDidAppear(bool) {
  if (!stack_.empty()) top().endAppearanceTransition();
}

void NavigationController::viewWillDisappear(bool animated) {
  finish_transition();
  if (!stack_.empty()) top().beginAppearanceTransition(false, animated);
}

void NavigationController::viewDidDisappear(bool) {
  if (!stack_.empty()) top().endAppearanceTransition();
}

NSArray NavigationController::pop_to_root(bool animated) {
  return stack_.empty() ? NSArray::array() : pop_to(stack_.front(), animated);
}

void NavigationController::go_back() { self().popViewController(true); }

void NavigationController::set_bar_hidden_animated(bool hidden, bool) {
  bar_hidden_ = hidden;
  if (const UIView view = self().viewIfLoaded()) view.setNeedsLayout();
}

void NavigationController::content_scrolled(const UIView& scroll, double distance) {
  const auto note = [&](const UIViewController& page) {
    if (!page || !scroll.isDescendantOfView(page.viewIfLoaded())) return;
    NavigationItem::of(page.navigationItem()).set_scrolled(distance);
  };
  for (const UIViewController& page : stack_) note(page);
  if (const SharedTransition running = transition_) note(running->from);
  follow_content();
}

void NavigationController::follow_content() {
  if (stack_.empty()) return;
  const auto scrolled = [](const UIViewController& page) {
    return page ? NavigationItem::of(page.navigationItem()).scrolled() : 0;
  };
  double furthest = scrolled(top());
  if (const SharedTransition running = transition_) {
    furthest = std::max({furthest, scrolled(running->from), scrolled(running->to)});
  }
  NavigationBar::of(bar_).set_content_scrolled(scrolled(top()), furthest);
}

bool NavigationController::handleKey(const UIKey& key) {
  const bool back =
      key.press().code == KeyCode::Escape || (key.press().command && key.press().code == KeyCode::Left);
  if (back && stack_.size() > 1) {
    go_back();
    return true;
  }
  return super<hooks::kHandleKey, bool>(key);
}

UIViewController NavigationController::top() const {
  return stack_.empty() ? UIViewController() : stack_.back();
}

void NavigationController::push(const UIViewController& controller, bool animated) {
  if (!controller) return;
  finish_transition();
  if (std::ranges::find(stack_, controller) != stack_.end()) {
    NSException::raise("NSInvalidArgumentException"_ns,
                       "Pushing the same view controller instance more than once is not supported"_ns);
  }
  const UIViewController from = top();
  stack_.push_back(controller);
  adopt(controller);
  show_change(from, controller, false, animated);
}

UIViewController NavigationController::pop(bool animated) {
  finish_transition();
  if (stack_.size() < 2) return UIViewController();
  const UIViewController from = top();
  stack_.pop_back();
  ViewController::of(from).set_moving_from_parent(true);
  show_change(from, top(), true, animated);
  return from;
}

NSArray NavigationController::pop_to(const UIViewController& controller, bool animated) {
  finish_transition();
  NSMutableArray popped = NSMutableArray::array();
  const auto found = std::ranges::find(stack_, controller);
  if (found == stack_.end() || controller == top()) return popped;
  const UIViewController from = top();
  for (auto leaving = found + 1; leaving != stack_.end(); ++leaving) popped.addObject(*leaving);
  const std::vector<UIViewController> between(found + 1, stack_.end() - 1);
  stack_.erase(found + 1, stack_.end());
  for (const UIViewController& skipped : between) let_go_of(skipped);
  ViewController::of(from).set_moving_from_parent(true);
  show_change(from, controller, true, animated);
  return popped;
}

void define_navigation_controller() {
  auto navigation = objc::Class<UINavigationController>::implemented_by<NavigationController>();
  navigation.initializer<"init", &NavigationController::init>()
      .initializer<"initWithRootViewController:", &NavigationController::initWithRoot>()
      .method<"loadView", &NavigationController::loadView>()
      .method<"viewDidLayoutSubviews", &NavigationController::viewDidLayoutSubviews>()
      .method<"viewWillAppear:", &NavigationController::viewWillAppear>()
      .method<"viewDidAppear:", &NavigationController::viewDidAppear>()
      .method<"viewWillDisappear:", &NavigationController::viewWillDisappear>()
      .method<"viewDidDisappear:", &NavigationController::viewDidDisappear>()
      .method<hooks::kSafeAreaForContent, &NavigationController::insets_for_content>()
      .method<"pushViewController:animated:", &NavigationController::push>()
      .method<"popViewControllerAnimated:", &NavigationController::pop>()
      .method<"popToViewController:animated:", &NavigationController::pop_to>()
      .method<"popToRootViewControllerAnimated:", &NavigationController::pop_to_root>()
      .method<"viewControllers", &NavigationController::viewControllers>()
      .method<"setViewControllers:", &NavigationController::setViewControllers>()
      .method<"setViewControllers:animated:", &NavigationController::set_view_controllers_animated>()
      .method<"topViewController", &NavigationController::top>()
      .method<"visibleViewController", &NavigationController::visible>()
      .getter<"navigationBar", &NavigationController::bar_>()
      .getter<"isNavigationBarHidden", &NavigationController::bar_hidden_>()
      .method<"setNavigationBarHidden:", &NavigationController::setBarHidden>()
      .method<"setNavigationBarHidden:animated:", &NavigationController::set_bar_hidden_animated>()
      .getter<"interactivePopGestureRecognizer", &NavigationController::edge_pan_>()
      .method<"delegate", &NavigationController::delegate>()
      .method<"setDelegate:", &NavigationController::setDelegate>()
      .method<hooks::kGoBack, &NavigationController::go_back>()
      .method<"_edgePanned:", &NavigationController::follow_way_back>()
      .method<hooks::kContentScrolled, &NavigationController::content_scrolled>()
      .method<hooks::kHandleKey, &NavigationController::handleKey>();
  navigation.register_class();
}

}  // namespace wispen::uikit
