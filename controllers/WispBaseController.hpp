// controllers/WispBaseController.hpp: a page whose rows come and go.
#pragma once

#include "platform/Preferences.hpp"

namespace wispen {

/// The base of the root page: its rows are filtered by the visibility rules, and the whole list is kept
/// aside, so that hidden rows can be put back.
class WispBaseController : public objc::Authored<WispBaseController, PSListController> {
 public:
  static constexpr objc::FixedString kClass{"WispBaseController"};
  using Authored::Authored;

  static void define();

  /// The list "Root", unfiltered; built once, then kept until the framework drops it.
  NSMutableArray specifiers() const;
  /// The visible rows of a list, in its order; keeps the whole list as savedSpecifiers.
  NSMutableArray dynamicSpecifiersFromPlist(const NSString& name) const;
  /// Brings the shown rows in line with the visibility rules, animated. Raises the array's out-of-range
  /// exception where the first row of the list is not shown.
  void updateSpecifiers() const;

  /// The whole list of the page, in its file's order; nil before the first filtered build.
  NSArray savedSpecifiers() const;
  void setSavedSpecifiers(const NSArray& specifiers) const;

 private:
  bool is_visible(const PSSpecifier& specifier) const {
    return objc::send<"isSpecifierVisible:", bool>(*this, specifier);
  }
};

}  // namespace wispen
