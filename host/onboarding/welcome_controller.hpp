// host/onboarding/welcome_controller.hpp: OBWelcomeController: a sheet that tells of what is new.
#pragma once

#include <vector>

#include "host/uikit/controllers/view_controller.hpp"
#include "platform/UIKit/UIImage.hpp"

namespace wispen::onboarding {

struct WelcomeItem {
  NSString title;
  NSString description;
  UIImage image;
};

struct WelcomeState;

/// The host's OBWelcomeController: icon, title, a line of detail, and items with a picture beside each, in a
/// column that scrolls.
class WelcomeController : public objc::Authored<WelcomeController, uikit::ViewController> {
 public:
  static constexpr objc::FixedString kClass{"OBWelcomeController"};
  using Authored::Authored;

  static void define();
  const std::vector<WelcomeItem>& items() const;

 private:
  friend struct WelcomeMethods;
  WelcomeState& parts() const;
};

}  // namespace wispen::onboarding
