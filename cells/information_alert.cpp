// cells/information_alert.cpp: the explanation that a row gives of itself.

#include "cells/information_alert.hpp"

namespace wispen {

namespace {

/// The first window's in the list, key or not, and without a look at what it presents.
UIViewController presenter_for(const UIView& cell) {
  const UIViewController around = cell.viewControllerForAncestor();
  if (around) return around;
  return UIApplication::sharedApplication().windows().firstObject<UIWindow>().rootViewController();
}

}  // namespace

void present_information(const PSTableCell& cell) {
  const NSBundle bundle = NSBundle::bundleForClass(objc::class_of(cell));
  const PSSpecifier specifier = cell.specifier();
  auto title = specifier.propertyForKey<NSString>("infoTitle"_ns);
  if (!title) title = specifier.propertyForKey<NSString>("label"_ns);
  auto message = specifier.propertyForKey<NSString>("infoMessage"_ns);
  if (!message) message = "No information provided for this cell."_ns;
  // The list and the strings table may both write a line break as a backslash and an n.
  const NSString text =
      bundle.localizedString(message, message, specifier.propertyForKey<NSString>("localizationTable"_ns));
  const auto broken =
      objc::send<"stringByReplacingOccurrencesOfString:withString:", NSString>(text, "\\n"_ns, "\n"_ns);
  const UIAlertController alert =
      UIAlertController::alertController(title, broken, UIAlertControllerStyle::Alert);
  alert.addAction(UIAlertAction::actionWithTitle("Cancel"_ns, UIAlertActionStyle::Cancel));
  presenter_for(cell).presentViewController(alert, true);
}

}  // namespace wispen
