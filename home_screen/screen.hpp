// home_screen/screen.hpp: the home screen: an icon's menu and a notification, both open.
#pragma once

#include "home_screen/apps.hpp"
#include "home_screen/settings.hpp"

namespace wispen::home_screen {

/// The controller of a window's screen. It is built anew when it is told of other settings, another size or
/// another appearance.
class Screen : public objc::Authored<Screen, UIViewController> {
 public:
  static constexpr objc::FixedString kClass{"WispenHomeScreen"};
  using Authored::Authored;

  /// Once in a process, before the first make().
  static void define();
  static Screen make();

  /// `animated` where the change may be seen as one.
  void show(const Settings& settings, bool animated) const;
  /// Comes up out of the dark, as after a restart.
  void brighten() const;

  void viewDidLayoutSubviews() const;
  void traitCollectionDidChange(const NSObject& previous) const;

 private:
  struct Parts;
  Parts& parts() const;
  void build(bool animated) const;
};

}  // namespace wispen::home_screen
