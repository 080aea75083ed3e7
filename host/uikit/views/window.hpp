// host/uikit/views/window.hpp: UIWindow: the root of what is on the screen.
#pragma once

#include <vector>

#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

struct WindowState;
class ViewController;

class Window : public objc::Authored<Window, View> {
 public:
  static constexpr objc::FixedString kClass{"UIWindow"};
  using Authored::Authored;

  static void define();
  /// Fills the screen.
  static Window make();

  ViewController rootViewController() const;
  void setRootViewController(const ViewController& controller) const;
  double windowLevel() const;
  void setWindowLevel(double level) const;
  bool isKeyWindow() const;
  void makeKeyWindow() const;
  void makeKeyAndVisible() const;

  EdgeInsets device_insets() const;

  /// This part of it is to be painted again, whatever its views know of that.
  void add_damage(const Rect& rect) const;
  /// The same in the screen's coordinates: a view has left that was seen there.
  void uncovered(const Rect& rect) const;
  /// All of these, in the screen's coordinates; asked once, they are forgotten.
  std::vector<Rect> take_damage() const;
  bool damaged() const;

 private:
  friend struct WindowMethods;
  WindowState& parts() const;
  void farewell();
};

}  // namespace wispen::uikit
