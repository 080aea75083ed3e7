// controllers/WispRootListController.cpp: the page that the bundle opens on.

#include "controllers/WispRootListController.hpp"

namespace wispen {

NSMutableArray WispRootListController::specifiers() const {
  NSMutableArray& shown = specifiers_variable();
  if (!shown) shown = objc::send<"dynamicSpecifiersFromPlist:", NSMutableArray>(*this, "Root"_ns);
  return shown;
}

void WispRootListController::define() {
  objc::Class<WispRootListController>()
      .method<"specifiers", &WispRootListController::specifiers>()
      .register_class();
}

}  // namespace wispen
