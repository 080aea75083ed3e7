// host/uikit/containers/controllers/view_controller.hpp: UIViewController: a screenful of views, and when it
// is seen.
#pragma once

#include <memory>
#include <vector>

#include "host/geometry/geometry.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

class Presentation;
class UIKey;

enum class Appearing { Disappeared, Appearing, Appeared, Disappearing };

/// The host's UIViewController. What it tells of appearing and disappearing it tells by messages, in the
/// platform's order.
class ViewController : public objc::Implementation<ViewController, UIViewController> {
 public:
  ViewController();
  ~ViewController();
  static UIViewController initWithNib(objc::Allocated<UIViewController> self, const NSString& name,
                                      const NSObject& bundle);

  /// Loaded at the first call.
  UIView view();
  void setView(const UIView& view);
  void loadView();
  const UIView& view_if_loaded() const { return view_; }
  bool isViewLoaded() const { return bool{view_}; }
  NSString title() const { return title_; }
  void setTitle(const NSString& title);
  UINavigationItem navigationItem();
  UINavigationController navigationController() const;

  UIViewController parent() const { return parent_.get(); }
  void set_parent(const UIViewController& parent) { parent_ = objc::Unowned<UIViewController>(parent); }
  NSArray children() const;
  std::vector<UIViewController>& child_list() { return children_; }
  void addChild(const UIViewController& child);
  void removeFromParent();
  /// The furthest ancestor: the one that presents for all in it.
  UIViewController outermost() const;

  /// By it or by one that it is in.
  UIViewController presented() const;
  UIViewController presenting() const;
  const UIViewController& presented_by_itself() const { return presented_; }
  bool is_modal_in_presentation() const { return modal_in_presentation_; }
  Size preferred_content_size() const { return preferred_content_size_; }
  void present(const UIViewController& controller, bool animated, const objc::Block<void()>& completion);
  void dismiss(bool animated, const objc::Block<void()>& completion);
  /// What it presents itself has gone.
  void forget_presented();
  void set_being_presented(bool being) { being_presented_ = being; }
  bool is_being_dismissed() const { return being_dismissed_; }
  void set_being_dismissed(bool being) { being_dismissed_ = being; }

  /// Sends viewWillAppear: or viewWillDisappear:, unless it was told so already.
  void beginAppearanceTransition(bool appearing, bool animated);
  /// Sends viewDidAppear: or viewDidDisappear:, as it began.
  void endAppearanceTransition();
  bool is_visible() const;
  void set_moving_to_parent(bool moving) { moving_to_parent_ = moving; }
  void set_moving_from_parent(bool moving) { moving_from_parent_ = moving; }

  void setAdditionalInsets(const EdgeInsets& insets);
  UIResponder nextResponder() const;
  bool handleKey(const UIKey& key);

 private:
  friend void define_view_controller();

  UIView view_;
  bool loading_ = false;
  NSString title_;
  UINavigationItem navigation_item_;
  objc::Unowned<UIViewController> parent_;  // it owns this one, and clears this when it lets go
  std::vector<UIViewController> children_;
  Appearing appearing_ = Appearing::Disappeared;
  bool animated_ = false;  // the transition that began
  bool moving_to_parent_ = false;
  bool moving_from_parent_ = false;
  EdgeInsets additional_safe_area_;
  Size preferred_content_size_;
  UIModalPresentationStyle modal_style_ = UIModalPresentationStyle::Automatic;
  NSInteger modal_transition_ = 0;
  bool modal_in_presentation_ = false;

  UIViewController presented_;                  // owned while it is shown
  objc::Unowned<UIViewController> presenting_;  // it owns this one
  std::unique_ptr<Presentation> presentation_;  // of `presented_`
  bool being_presented_ = false;
  bool being_dismissed_ = false;
};

void define_view_controller();

}  // namespace wispen::uikit
