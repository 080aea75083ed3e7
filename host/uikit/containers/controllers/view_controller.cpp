// host/uikit/containers/controllers/view_controller.cpp: UIViewController: a screenful of views, and when it
// is seen.

#include "host/uikit/containers/controllers/view_controller.hpp"

#include <algorithm>
#include <string>

#include "host/foundation/arrays.hpp"
#include "host/foundation/problems.hpp"
#include "host/uikit/containers/controllers/navigation_item.hpp"
#include "host/uikit/containers/controllers/presentation.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/trait_collection.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

ViewController::ViewController() = default;

ViewController::~ViewController() {
  if (presentation_) presentation_->abandon();
  for (const UIViewController& child : children_) of(child).set_parent(UIViewController());
  if (presented_) of(presented_).presenting_ = objc::Unowned<UIViewController>();
  if (view_) View::of(view_).set_controller(UIViewController());
}

UIViewController ViewController::initWithNib(objc::Allocated<UIViewController> self, const NSString&,
                                             const NSObject&) {
  return std::move(self).init();
}

UIView ViewController::view() {
  if (view_ || loading_) return view_;
  const UIViewController kept = self();
  loading_ = true;
  objc::send<"loadView">(kept);
  loading_ = false;
  objc::send<"viewDidLoad">(kept);
  return view_;
}

void ViewController::setView(const UIView& view) {
  if (view_) View::of(view_).set_controller(UIViewController());
  view_ = view;
  if (view) View::of(view).set_controller(self());
}

void ViewController::loadView() {
  const UIView view = UIView::alloc().initWithFrame(UIScreen::mainScreen().bounds());
  view.setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  self().setView(view);
}

void ViewController::setTitle(const NSString& title) {
  title_ = title;
  self().navigationItem().setTitle(title);
}

UINavigationItem ViewController::navigationItem() {
  if (!navigation_item_) {
    navigation_item_ = UINavigationItem::alloc().initWithTitle(self().title());
    if (const UINavigationController navigation = navigationController()) {
      NavigationItem::of(navigation_item_).set_bar(navigation.navigationBar());
    }
  }
  return navigation_item_;
}

UINavigationController ViewController::navigationController() const {
  for (UIViewController above = parent(); above; above = of(above).parent()) {
    if (auto navigation = objc::cast_or_nil<UINavigationController>(above)) return navigation;
  }
  return UINavigationController();
}

NSArray ViewController::children() const { return array_of(children_); }

void ViewController::addChild(const UIViewController& child) {
  if (!child) return;
  objc::send<"removeFromParentViewController">(child);
  objc::send<"willMoveToParentViewController:">(child, self());
  children_.push_back(child);
  of(child).set_parent(self());
}

void ViewController::removeFromParent() {
  const UIViewController above = parent();
  if (!above) return;
  const UIViewController kept = self();
  std::erase(of(above).children_, kept);
  set_parent(UIViewController());
  objc::send<"didMoveToParentViewController:">(kept, UIViewController());
}

UIViewController ViewController::outermost() const {
  UIViewController controller = self();
  while (const UIViewController above = of(controller).parent()) controller = above;
  return controller;
}

UIViewController ViewController::presented() const {
  for (UIViewController above = self(); above; above = of(above).parent()) {
    if (of(above).presented_) return of(above).presented_;
  }
  return UIViewController();
}

UIViewController ViewController::presenting() const {
  for (UIViewController above = self(); above; above = of(above).parent()) {
    if (const UIViewController presenter = of(above).presenting_.get()) return presenter;
  }
  return UIViewController();
}

void ViewController::present(const UIViewController& controller, bool animated,
                             const objc::Block<void()>& completion) {
  if (!controller) {
    NSException::raise("NSInvalidArgumentException"_ns,
                       "Application tried to present a nil modal view controller on target"_ns);
  }
  const UIViewController presenter = outermost();
  ViewController& from = of(presenter);
  const UIView view = from.view_if_loaded();
  const char* const problem = !view || !view.window()       ? "whose view is not in the window hierarchy"
                              : from.presented_             ? "which is already presenting"
                              : of(controller).presenting() ? "while it is being presented elsewhere"
                                                            : nullptr;
  if (problem != nullptr) {  // the platform says so in its log, and does nothing
    report_problem(std::string("attempt to present a ") + objc::class_of(controller).name() + " on a " +
                   objc::class_of(self()).name() + " " + problem);
    return;
  }
  from.presented_ = controller;
  of(controller).presenting_ = objc::Unowned<UIViewController>(presenter);
  from.presentation_ = std::make_unique<Presentation>(presenter, controller);
  from.presentation_->show(animated, completion);
}

void ViewController::dismiss(bool animated, const objc::Block<void()>& completion) {
  // What this one presents goes; where it presents nothing it goes itself.
  UIViewController presenter = presented_ ? self() : outermost();
  if (!of(presenter).presented_) presenter = presenting();
  if (!presenter || !of(presenter).presentation_) {
    if (completion) main_loop().post([completion] { completion(); });
    return;
  }
  of(presenter).presentation_->hide(animated, completion);
}

void ViewController::forget_presented() {
  if (presented_) of(presented_).presenting_ = objc::Unowned<UIViewController>();
  presented_ = UIViewController();
  presentation_.reset();
}

void ViewController::beginAppearanceTransition(bool appearing, bool animated) {
  if (is_visible() == appearing) return;
  const UIViewController kept = self();
  appearing_ = appearing ? Appearing::Appearing : Appearing::Disappearing;
  animated_ = animated;
  if (appearing) {
    kept.view();
    objc::send<"viewWillAppear:">(kept, animated);
  } else {
    objc::send<"viewWillDisappear:">(kept, animated);
  }
}

void ViewController::endAppearanceTransition() {
  const UIViewController kept = self();
  if (appearing_ == Appearing::Appearing) {
    appearing_ = Appearing::Appeared;
    objc::send<"viewDidAppear:">(kept, animated_);
    moving_to_parent_ = false;
  } else if (appearing_ == Appearing::Disappearing) {
    appearing_ = Appearing::Disappeared;
    objc::send<"viewDidDisappear:">(kept, animated_);
    moving_from_parent_ = false;
  }
}

bool ViewController::is_visible() const {
  return appearing_ == Appearing::Appearing || appearing_ == Appearing::Appeared;
}

void ViewController::setAdditionalInsets(const EdgeInsets& insets) {
  additional_safe_area_ = insets;
  view_.setNeedsLayout();
}

UIResponder ViewController::nextResponder() const {
  const UIView above = view_ ? view_.superview() : UIView();
  return above ? UIResponder(above) : UIResponder(parent());
}

bool ViewController::handleKey(const UIKey& key) {
  // Escape leaves what was presented, unless that insists.
  if (key.press().code != KeyCode::Escape || !presenting() || modal_in_presentation_) return false;
  self().dismissViewController(true);
  return true;
}

namespace {

void nothing(const UIViewController&) {}
void nothing_animated(const UIViewController&, bool) {}
void nothing_with(const UIViewController&, const NSObject&) {}
void load_view_if_needed(const UIViewController& self) { self.view(); }
UITraitCollection current_traits(const UIViewController&) { return current_trait_collection(); }

}  // namespace

void define_view_controller() {
  auto controller = objc::Class<UIViewController>::implemented_by<ViewController>();
  controller.initializer<"initWithNibName:bundle:", &ViewController::initWithNib>()
      .method<"view", &ViewController::view>()
      .method<"setView:", &ViewController::setView>()
      .method<"viewIfLoaded", &ViewController::view_if_loaded>()
      .method<"isViewLoaded", &ViewController::isViewLoaded>()
      .method<"loadView", &ViewController::loadView>()
      .method<"loadViewIfNeeded", &load_view_if_needed>()
      .method<"viewDidLoad", &nothing>()
      .method<"viewWillAppear:", &nothing_animated>()
      .method<"viewDidAppear:", &nothing_animated>()
      .method<"viewWillDisappear:", &nothing_animated>()
      .method<"viewDidDisappear:", &nothing_animated>()
      .method<"beginAppearanceTransition:animated:", &ViewController::beginAppearanceTransition>()
      .method<"endAppearanceTransition", &ViewController::endAppearanceTransition>()
      .method<"viewWillLayoutSubviews", &nothing>()
      .method<"viewDidLayoutSubviews", &nothing>()
      .method<"viewSafeAreaInsetsDidChange", &nothing>()
      .method<"didReceiveMemoryWarning", &nothing>()
      .method<"setNeedsStatusBarAppearanceUpdate", &nothing>()
      .method<"traitCollectionDidChange:", &nothing_with>()
      .method<"willMoveToParentViewController:", &nothing_with>()
      .method<"didMoveToParentViewController:", &nothing_with>();
  controller.method<"title", &ViewController::title>()
      .method<"setTitle:", &ViewController::setTitle>()
      .method<"navigationItem", &ViewController::navigationItem>()
      .method<"navigationController", &ViewController::navigationController>()
      .method<"parentViewController", &ViewController::parent>()
      .method<"childViewControllers", &ViewController::children>()
      .method<"addChildViewController:", &ViewController::addChild>()
      .method<"removeFromParentViewController", &ViewController::removeFromParent>()
      .getter<"isMovingToParentViewController", &ViewController::moving_to_parent_>()
      .getter<"isMovingFromParentViewController", &ViewController::moving_from_parent_>()
      .getter<"isBeingPresented", &ViewController::being_presented_>()
      .getter<"isBeingDismissed", &ViewController::being_dismissed_>()
      .method<"presentedViewController", &ViewController::presented>()
      .method<"presentingViewController", &ViewController::presenting>()
      .method<"presentViewController:animated:completion:", &ViewController::present>()
      .method<"dismissViewControllerAnimated:completion:", &ViewController::dismiss>()
      .property<"modalPresentationStyle", "setModalPresentationStyle:", &ViewController::modal_style_>()
      .property<"modalTransitionStyle", "setModalTransitionStyle:", &ViewController::modal_transition_>()
      .property<"isModalInPresentation", "setModalInPresentation:", &ViewController::modal_in_presentation_>()
      .property<"preferredContentSize",
                "setPreferredContentSize:", &ViewController::preferred_content_size_>()
      .getter<"additionalSafeAreaInsets", &ViewController::additional_safe_area_>()
      .method<"setAdditionalSafeAreaInsets:", &ViewController::setAdditionalInsets>()
      .getter<hooks::kSafeAreaForContent, &ViewController::additional_safe_area_>()
      .method<"nextResponder", &ViewController::nextResponder>()
      .method<"traitCollection", &current_traits>()
      .method<hooks::kHandleKey, &ViewController::handleKey>();
  controller.register_class();
}

}  // namespace wispen::uikit
