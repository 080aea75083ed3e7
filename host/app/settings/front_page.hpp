// host/app/settings/front_page.hpp: the list of Settings itself, with a row for every installed bundle.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Preferences.hpp"

namespace wispen {

/// A bundle that Settings offers.
struct BundleEntry {
  std::string label;
  std::string folder;  // of the bundle, on the machine
};

/// Loads the bundle of a folder and gives its principal class; nil where that fails.
using BundleLoader = std::function<objc::ClassRef(const std::string& folder)>;

class SettingsFrontPage : public PSListController {
 public:
  using Base = PSListController;
  static constexpr objc::FixedString kClass{"SettingsFrontPage"};
  using PSListController::PSListController;

  /// The class is registered at the first call.
  static SettingsFrontPage make(std::vector<BundleEntry> entries, BundleLoader load);
  const std::vector<BundleEntry>& entries() const;
  /// A row at the end, unless the folder has one already.
  void add(const BundleEntry& entry) const;
  /// The row of a bundle; nil where it has none.
  PSSpecifier row_of(const std::string& folder) const;
};

}  // namespace wispen
