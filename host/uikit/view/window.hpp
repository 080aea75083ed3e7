// host/uikit/view/window.hpp: UIWindow: the root of what is on the screen.
#pragma once

#include <utility>
#include <vector>

#include "host/geometry/geometry.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

/// The host's UIWindow. Made with `init` it fills the screen.
class Window : public objc::Implementation<Window, UIWindow> {
 public:
  ~Window();
  static UIWindow init(objc::Allocated<UIWindow> self);
  static UIWindow initWithFrame(objc::Allocated<UIWindow> self, const Rect& frame);

  const UIViewController& rootViewController() const { return root_; }
  void setRootViewController(const UIViewController& controller);
  double windowLevel() const { return level_; }
  void setWindowLevel(double level);
  bool isKeyWindow() const;
  void makeKeyWindow();
  void makeKeyAndVisible();
  UIWindow window() const { return self(); }
  UIResponder nextResponder() const;
  void setHidden(bool hidden);
  EdgeInsets safeAreaInsets() const;

  /// This part of it is to be painted again, whatever its views know of that.
  void add_damage(const Rect& rect);
  /// The same in the screen's coordinates: a view has left that was seen there.
  void uncovered(const Rect& rect);
  /// All of these, in the screen's coordinates; asked once, they are forgotten.
  std::vector<Rect> take_damage() { return std::exchange(damage_, {}); }
  bool damaged() const { return !damage_.empty(); }

 private:
  UIViewController root_;
  double level_ = 0;
  std::vector<Rect> damage_;
};

}  // namespace wispen::uikit
