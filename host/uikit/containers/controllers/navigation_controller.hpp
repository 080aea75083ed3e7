// host/uikit/containers/controllers/navigation_controller.hpp: UINavigationController: pages on a stack, and
// their bar.
#pragma once

#include <memory>
#include <vector>

#include "host/geometry/geometry.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

class NavigationController : public objc::Implementation<NavigationController, UINavigationController> {
 public:
  static UINavigationController init(objc::Allocated<UINavigationController> self);
  static UINavigationController initWithRoot(objc::Allocated<UINavigationController> self,
                                             const UIViewController& root);

  void loadView();
  void viewDidLayoutSubviews();
  EdgeInsets insets_for_content();
  void viewWillAppear(bool animated);
  void viewDidAppear(bool animated);
  void viewWillDisappear(bool animated);
  void viewDidDisappear(bool animated);

  void push(const UIViewController& controller, bool animated);
  /// Nil where only the root is left.
  UIViewController pop(bool animated);
  NSArray pop_to(const UIViewController& controller, bool animated);
  NSArray pop_to_root(bool animated);
  NSArray viewControllers() const;
  void setViewControllers(const NSArray& controllers);
  void set_view_controllers_animated(const NSArray& controllers, bool animated);
  UIViewController top() const;
  UIViewController visible() const;
  void setBarHidden(bool hidden) { set_bar_hidden_animated(hidden, false); }
  void set_bar_hidden_animated(bool hidden, bool animated);
  NSObject delegate() const { return delegate_.lock(); }
  void setDelegate(const NSObject& delegate) { delegate_ = delegate; }
  void go_back();
  void content_scrolled(const UIView& scroll, double distance);
  bool handleKey(const UIKey& key);
  /// The way back under a finger that came from the edge.
  void follow_way_back(const UIScreenEdgePanGestureRecognizer& pan);

 private:
  friend void define_navigation_controller();

  /// One change of the page that is seen.
  struct Transition {
    UIViewController from;
    UIViewController to;
    bool back = false;
    UIView dim;
    bool finished = false;
  };
  using SharedTransition = std::shared_ptr<Transition>;

  void prepare();
  double bar_height() const;
  void adopt(const UIViewController& controller);
  /// Ends the parenthood of a page that has left the stack.
  void let_go_of(const UIViewController& controller);
  /// Puts a page's view where pages are seen.
  void put_in_place(const UIViewController& controller);
  /// Lets the bar show the stack's items.
  void show_items(bool animated);
  /// The stack has changed already, from one top page (nil at first) to another; makes that seen.
  void show_change(const UIViewController& from, const UIViewController& to, bool back, bool animated);
  SharedTransition begin_transition(const UIViewController& from, const UIViewController& to, bool back);
  /// Where the pages stand when `progress` of the way is done.
  void pose(const Transition& transition, double progress);
  void complete(const SharedTransition& transition);
  /// Ends a change that is under way, as if its time were over.
  void finish_transition();
  void settle_way_back(bool goes, double progress);

  std::vector<UIViewController> stack_;
  UINavigationBar bar_;
  UIView container_;
  SharedTransition transition_;
  UIScreenEdgePanGestureRecognizer edge_pan_;
  std::vector<UIViewController> before_way_back_;  // the stack, while a finger leads back
  bool bar_hidden_ = false;
  objc::Weak<NSObject> delegate_;
};

void define_navigation_controller();

}  // namespace wispen::uikit
