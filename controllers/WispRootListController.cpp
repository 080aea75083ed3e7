// controllers/WispRootListController.cpp: the page that the bundle opens on.

#include "controllers/WispRootListController.hpp"

namespace wispen {

NSMutableArray WispRootListController::specifiers() const {
  NSMutableArray& shown = specifiers_variable();
  if (!shown) shown = objc::send<"dynamicSpecifiersFromPlist:", NSMutableArray>(*this, "Root"_ns);
  return shown;
}

void WispRootListController::loadView() const { super<"loadView">(); }

void WispRootListController::viewWillDisappear(bool animated) const {
  super<"viewWillDisappear:">(animated);
  if (navigationController().viewControllers().count() == 1) {
    navigationItem().navigationBar().setTintColor(UIColor::colorWithRed(0.0, 0.78, 0.78, 1.0));
  }
}

void WispRootListController::define() {
  objc::Class<WispRootListController>()
      .method<"viewWillDisappear:", &WispRootListController::viewWillDisappear>()
      .method<"specifiers", &WispRootListController::specifiers>()
      .method<"loadView", &WispRootListController::loadView>()
      .register_class();
}

}  // namespace wispen
