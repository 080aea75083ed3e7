// host/uikit/controllers/view_controller.hpp: UIViewController: a screenful of views, and when it is seen.
#pragma once

#include <vector>

#include "host/uikit/views/responder.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

class NavigationController;
class NavigationItem;
class Presentation;

/// The platform's values of modal presentation styles.
namespace modal_style {
inline constexpr NSInteger kFullScreen = 0;
inline constexpr NSInteger kPageSheet = 1;
inline constexpr NSInteger kFormSheet = 2;
inline constexpr NSInteger kOverFullScreen = 5;
inline constexpr NSInteger kOverCurrentContext = 6;
inline constexpr NSInteger kPopover = 7;
inline constexpr NSInteger kAutomatic = -2;
}  // namespace modal_style

struct ViewControllerState;

/// The host's UIViewController. What it tells of appearing and disappearing it tells by messages, in the
/// platform's order.
class ViewController : public objc::Authored<ViewController, Responder> {
 public:
  static constexpr objc::FixedString kClass{"UIViewController"};
  using Authored::Authored;

  static void define();
  ViewControllerState& parts() const;

  /// Loaded at the first call.
  View view() const { return objc::send<"view", View>(*this); }
  View view_if_loaded() const;
  NSString title() const { return objc::send<"title", NSString>(*this); }
  NavigationItem navigationItem() const;
  ViewController parent() const;
  void set_parent(const ViewController& parent) const;
  NavigationController navigationController() const;
  /// The furthest ancestor: the one that presents for all in it.
  ViewController outermost() const;
  ViewController presented() const;
  ViewController presenting() const;
  NSInteger modal_presentation_style() const;
  bool is_modal_in_presentation() const;
  Size preferred_content_size() const;

  void present(const ViewController& controller, bool animated, const objc::Block<void()>& completion) const;
  void dismiss(bool animated, const objc::Block<void()>& completion) const;

  /// Sends viewWillAppear: and its kind, once each in turn: a controller that appears already is not told
  /// again.
  void will_appear(bool animated) const;
  void did_appear(bool animated) const;
  void will_disappear(bool animated) const;
  void did_disappear(bool animated) const;
  bool is_visible() const;

  void set_moving_to_parent(bool moving) const;
  void set_moving_from_parent(bool moving) const;

 private:
  friend struct ViewControllerMethods;
  friend class Presentation;
  void farewell();
};

}  // namespace wispen::uikit
