// host/uikit/controllers/view_controller.cpp: UIViewController: a screenful of views, and when it is seen.

#include "host/uikit/controllers/view_controller.hpp"

#include <algorithm>

#include "host/foundation/problems.hpp"
#include "host/uikit/controllers/navigation_controller.hpp"
#include "host/uikit/controllers/presentation.hpp"
#include "host/uikit/controllers/trait_collection.hpp"
#include "host/uikit/controllers/view_controller_state.hpp"
#include "host/uikit/events/key.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/views/application.hpp"

namespace wispen::uikit {

ViewControllerState::ViewControllerState() = default;
ViewControllerState::~ViewControllerState() = default;

ViewControllerState& ViewController::parts() const { return state<ViewControllerState>(); }

void ViewController::farewell() {
  ViewControllerState& state = parts();
  if (state.presentation) state.presentation->abandon();
  for (const ViewController& child : state.children) child.set_parent(ViewController());
  if (state.presented) state.presented.parts().presenting = objc::Unowned<ViewController>();
  if (state.view) state.view.set_controller(Responder());
}

View ViewController::view_if_loaded() const { return parts().view; }
ViewController ViewController::parent() const { return parts().parent.get(); }
void ViewController::set_parent(const ViewController& parent) const {
  parts().parent = objc::Unowned<ViewController>(parent);
}

ViewController ViewController::outermost() const {
  ViewController controller = *this;
  while (const ViewController above = controller.parent()) controller = above;
  return controller;
}

NavigationController ViewController::navigationController() const {
  for (ViewController above = parent(); above; above = above.parent()) {
    if (auto navigation = objc::cast_or_nil<NavigationController>(above)) return navigation;
  }
  return NavigationController();
}

NavigationItem ViewController::navigationItem() const {
  NavigationItem& item = parts().navigation_item;
  if (!item) {
    item = NavigationItem::make(title());
    if (const NavigationController navigation = navigationController()) item.set_bar(navigation.bar());
  }
  return item;
}

ViewController ViewController::presented() const {
  for (ViewController above = *this; above; above = above.parent()) {
    if (above.parts().presented) return above.parts().presented;
  }
  return ViewController();
}

ViewController ViewController::presenting() const {
  for (ViewController above = *this; above; above = above.parent()) {
    if (const ViewController presenter = above.parts().presenting.get()) return presenter;
  }
  return ViewController();
}

NSInteger ViewController::modal_presentation_style() const {
  return objc::send<"modalPresentationStyle", NSInteger>(*this);
}
bool ViewController::is_modal_in_presentation() const { return parts().modal_in_presentation; }
Size ViewController::preferred_content_size() const { return parts().preferred_content_size; }

void ViewController::present(const ViewController& controller, bool animated,
                             const objc::Block<void()>& completion) const {
  if (!controller) {
    NSException::raise("NSInvalidArgumentException"_ns,
                       "Application tried to present a nil modal view controller on target"_ns);
  }
  const ViewController presenter = outermost();
  const View view = presenter.view_if_loaded();
  const char* const problem = !view || !view.window()       ? "whose view is not in the window hierarchy"
                              : presenter.parts().presented ? "which is already presenting"
                              : controller.presenting()     ? "while it is being presented elsewhere"
                                                            : nullptr;
  if (problem != nullptr) {  // the platform says so in its log, and does nothing
    report_problem(std::string("attempt to present a ") + objc::class_of(controller).name() + " on a " +
                   objc::class_of(*this).name() + " " + problem);
    return;
  }
  presenter.parts().presented = controller;
  controller.parts().presenting = objc::Unowned<ViewController>(presenter);
  presenter.parts().presentation = std::make_unique<Presentation>(presenter, controller);
  presenter.parts().presentation->show(animated, completion);
}

void ViewController::dismiss(bool animated, const objc::Block<void()>& completion) const {
  // What this one presents goes; where it presents nothing it goes itself.
  ViewController presenter = parts().presented ? *this : outermost();
  if (!presenter.parts().presented) presenter = presenting();
  if (!presenter || !presenter.parts().presentation) {
    if (completion) main_loop().post([completion] { completion(); });
    return;
  }
  presenter.parts().presentation->hide(animated, completion);
}

void ViewController::will_appear(bool animated) const {
  Appearing& now = parts().appearing;
  if (now == Appearing::Appearing || now == Appearing::Appeared) return;
  now = Appearing::Appearing;
  view();
  objc::send<"viewWillAppear:">(*this, animated);
}

void ViewController::did_appear(bool animated) const {
  if (parts().appearing != Appearing::Appearing) return;
  parts().appearing = Appearing::Appeared;
  objc::send<"viewDidAppear:">(*this, animated);
  parts().moving_to_parent = false;
}

void ViewController::will_disappear(bool animated) const {
  Appearing& now = parts().appearing;
  if (now == Appearing::Disappearing || now == Appearing::Disappeared) return;
  now = Appearing::Disappearing;
  objc::send<"viewWillDisappear:">(*this, animated);
}

void ViewController::did_disappear(bool animated) const {
  if (parts().appearing != Appearing::Disappearing) return;
  parts().appearing = Appearing::Disappeared;
  objc::send<"viewDidDisappear:">(*this, animated);
  parts().moving_from_parent = false;
}

bool ViewController::is_visible() const {
  return parts().appearing == Appearing::Appearing || parts().appearing == Appearing::Appeared;
}

void ViewController::set_moving_to_parent(bool moving) const { parts().moving_to_parent = moving; }
void ViewController::set_moving_from_parent(bool moving) const { parts().moving_from_parent = moving; }

struct ViewControllerMethods {
  using Self = ViewController;

  static Self initWithNib(objc::Allocated<Self> self, const NSString&, const NSObject&) {
    return std::move(self).initialize<"init">();
  }
  static View view(const Self& self) {
    ViewControllerState& state = self.parts();
    if (state.view || state.loading) return state.view;
    const Self kept = self;
    state.loading = true;
    objc::send<"loadView">(kept);
    state.loading = false;
    objc::send<"viewDidLoad">(kept);
    return state.view;
  }
  static void setView(const Self& self, const View& view) {
    ViewControllerState& state = self.parts();
    if (state.view) state.view.set_controller(Responder());
    state.view = view;
    if (view) view.set_controller(self);
  }
  static void loadView(const Self& self) {
    const View view = View::make(Screen::main().bounds());
    view.setAutoresizingMask(18);
    objc::send<"setView:">(self, view);
  }
  static void loadViewIfNeeded(const Self& self) { self.view(); }
  static bool isViewLoaded(const Self& self) { return bool{self.parts().view}; }
  static void nothing(const Self&) {}
  static void nothing_animated(const Self&, bool) {}
  static void nothing_with(const Self&, const NSObject&) {}

  static NSString title(const Self& self) { return self.parts().title; }
  static void setTitle(const Self& self, const NSString& title) {
    self.parts().title = title;
    objc::send<"setTitle:">(self.navigationItem(), title);
  }
  static NSArray children(const Self& self) {
    NSMutableArray all = NSMutableArray::array();
    for (const Self& child : self.parts().children) all.addObject(child);
    return all;
  }
  static void addChild(const Self& self, const Self& child) {
    if (!child) return;
    objc::send<"removeFromParentViewController">(child);
    objc::send<"willMoveToParentViewController:">(child, self);
    self.parts().children.push_back(child);
    child.set_parent(self);
  }
  static void removeFromParent(const Self& self) {
    const Self above = self.parent();
    if (!above) return;
    const Self kept = self;
    std::erase(above.parts().children, kept);
    kept.set_parent(Self());
    objc::send<"didMoveToParentViewController:">(kept, Self());
  }
  static bool isMovingTo(const Self& self) { return self.parts().moving_to_parent; }
  static bool isMovingFrom(const Self& self) { return self.parts().moving_from_parent; }
  static bool isBeingPresented(const Self& self) { return self.parts().being_presented; }
  static bool isBeingDismissed(const Self& self) { return self.parts().being_dismissed; }

  static EdgeInsets additionalInsets(const Self& self) { return self.parts().additional_safe_area; }
  static void setAdditionalInsets(const Self& self, const EdgeInsets& insets) {
    self.parts().additional_safe_area = insets;
    self.parts().view.setNeedsLayout();
  }
  static Size preferredContentSize(const Self& self) { return self.parts().preferred_content_size; }
  static void setPreferredContentSize(const Self& self, const Size& size) {
    self.parts().preferred_content_size = size;
  }
  static NSInteger modalStyle(const Self& self) { return self.parts().modal_style; }
  static void setModalStyle(const Self& self, NSInteger style) { self.parts().modal_style = style; }
  static NSInteger modalTransition(const Self& self) { return self.parts().modal_transition; }
  static void setModalTransition(const Self& self, NSInteger style) { self.parts().modal_transition = style; }
  static void setModalIn(const Self& self, bool modal) { self.parts().modal_in_presentation = modal; }
  static NSObject nextResponder(const Self& self) {
    const View view = self.view_if_loaded();
    const View above = view ? view.superview() : View();
    return above ? NSObject(above) : NSObject(self.parent());
  }
  static TraitCollection traitCollection(const Self&) { return TraitCollection::current(); }
  static bool handleKey(const Self& self, const Key& key) {
    // Escape leaves what was presented, unless that insists.
    if (key.code() != KeyCode::Escape || !self.presenting() || self.is_modal_in_presentation()) return false;
    self.dismiss(true, {});
    return true;
  }
};

void ViewController::define() {
  using M = ViewControllerMethods;
  objc::Class<ViewController> controller;
  controller.state<ViewControllerState>().on_dealloc<&ViewController::farewell>();
  controller.initializer<"initWithNibName:bundle:", &M::initWithNib>()
      .method<"view", &M::view>()
      .method<"setView:", &M::setView>()
      .method<"viewIfLoaded", &ViewController::view_if_loaded>()
      .method<"isViewLoaded", &M::isViewLoaded>()
      .method<"loadView", &M::loadView>()
      .method<"loadViewIfNeeded", &M::loadViewIfNeeded>()
      .method<"viewDidLoad", &M::nothing>()
      .method<"viewWillAppear:", &M::nothing_animated>()
      .method<"viewDidAppear:", &M::nothing_animated>()
      .method<"viewWillDisappear:", &M::nothing_animated>()
      .method<"viewDidDisappear:", &M::nothing_animated>()
      .method<"viewWillLayoutSubviews", &M::nothing>()
      .method<"viewDidLayoutSubviews", &M::nothing>()
      .method<"viewSafeAreaInsetsDidChange", &M::nothing>()
      .method<"didReceiveMemoryWarning", &M::nothing>()
      .method<"setNeedsStatusBarAppearanceUpdate", &M::nothing>()
      .method<"traitCollectionDidChange:", &M::nothing_with>()
      .method<"willMoveToParentViewController:", &M::nothing_with>()
      .method<"didMoveToParentViewController:", &M::nothing_with>();
  controller.method<"title", &M::title>()
      .method<"setTitle:", &M::setTitle>()
      .method<"navigationItem", &ViewController::navigationItem>()
      .method<"navigationController", &ViewController::navigationController>()
      .method<"parentViewController", &ViewController::parent>()
      .method<"childViewControllers", &M::children>()
      .method<"addChildViewController:", &M::addChild>()
      .method<"removeFromParentViewController", &M::removeFromParent>()
      .method<"isMovingToParentViewController", &M::isMovingTo>()
      .method<"isMovingFromParentViewController", &M::isMovingFrom>()
      .method<"isBeingPresented", &M::isBeingPresented>()
      .method<"isBeingDismissed", &M::isBeingDismissed>()
      .method<"presentedViewController", &ViewController::presented>()
      .method<"presentingViewController", &ViewController::presenting>()
      .method<"presentViewController:animated:completion:", &ViewController::present>()
      .method<"dismissViewControllerAnimated:completion:", &ViewController::dismiss>()
      .method<"modalPresentationStyle", &M::modalStyle>()
      .method<"setModalPresentationStyle:", &M::setModalStyle>()
      .method<"modalTransitionStyle", &M::modalTransition>()
      .method<"setModalTransitionStyle:", &M::setModalTransition>()
      .method<"isModalInPresentation", &ViewController::is_modal_in_presentation>()
      .method<"setModalInPresentation:", &M::setModalIn>()
      .method<"preferredContentSize", &M::preferredContentSize>()
      .method<"setPreferredContentSize:", &M::setPreferredContentSize>()
      .method<"additionalSafeAreaInsets", &M::additionalInsets>()
      .method<"setAdditionalSafeAreaInsets:", &M::setAdditionalInsets>()
      .method<"_safeAreaInsetsForContent", &M::additionalInsets>()
      .method<"nextResponder", &M::nextResponder>()
      .method<"traitCollection", &M::traitCollection>()
      .method<"_handleKey:", &M::handleKey>();
  controller.register_class();
}

}  // namespace wispen::uikit
