// bench/settings_screen.hpp: the Settings application over lists of a benchmark's own.
#pragma once

#include <string>

#include "host/wispen_host.h"
#include "platform/Preferences.hpp"
#include "platform/UIKit.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::bench {

/// A page without any code of the shipped bundle: it shows the list "Root" of its bundle's folder.
class PlainPage : public objc::Authored<PlainPage, PSListController> {
 public:
  static constexpr objc::FixedString kClass{"WispenBenchPlainPage"};
  using Authored::Authored;
  static void define();
  /// Where pages made from now on find their list.
  static void set_bundle(const std::string& folder);

 private:
  NSBundle bundle() const;
  NSMutableArray specifiers() const;
};

/// Property lists of rows, numbered from 0.
std::string list_of_rows(long count, const char* cell, const char* cell_class = nullptr);
/// The shipped root page's list, each row of the framework's own class.
std::string shipped_list_without_classes();

/// A host on a root in memory with the Settings application up, 780 by 1688 pixels, light.
class SettingsScreen {
 public:
  explicit SettingsScreen(bool wall_clock = false);
  SettingsScreen(const SettingsScreen&) = delete;
  SettingsScreen& operator=(const SettingsScreen&) = delete;
  ~SettingsScreen();

  /// Offers the shipped bundle, as it is.
  void offer_shipped() const;
  /// Offers the shipped code with that list on its root page, or a plain page with it.
  void offer(const std::string& name, const std::string& list, bool plain);
  /// What offer() has made.
  std::string folder_of(const std::string& name) const { return folder_ / (name + ".bundle"); }

  static void show(const char* page);
  static void settle();
  static void advance(double seconds);
  /// Paints what changed; gives the number of pixels around all of it.
  static long frame();
  static void damage_all();
  static void tap(CGPoint place);
  static UIWindow window();
  static PSListController page();
  static UITableView table() { return page().table(); }
  static void scroll_to(double y);
  /// The farthest that the page can be scrolled.
  static double end_of_page();
  /// A shown row's cell.
  static UITableViewCell cell(NSInteger row, NSInteger section = 0);
  static CGPoint middle_of(const UIView& view);

 private:
  const objc::AutoreleasePool pool_;
  testing::TemporaryFolder folder_;
};

}  // namespace wispen::bench
