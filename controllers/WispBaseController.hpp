// controllers/WispBaseController.hpp: a page whose rows come and go.
#pragma once

#include "platform/OnBoardingKit.hpp"
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

  // The page's look (page_look.cpp).
  void loadView() const;
  void viewWillAppear(bool animated) const;
  /// Makes the banner's views, those that are not there yet, and lays them out.
  void headerCell() const;
  void layoutUI() const;
  /// By the section's number alone: what the list says of its groups is never shown.
  UIView tableViewForHeader(const UITableView& table, NSInteger section) const;
  CGFloat tableHeightForHeader(const UITableView& table, NSInteger section) const;
  void tableWillDisplayCell(const UITableView& table, const UITableViewCell& cell,
                            const NSIndexPath& path) const;

  // The two sheets (information_sheets.cpp). Each is made once for a page, and shown again as it is.
  void showWtfChangedInThisVersion() const;
  void showWtfChangedInThisVersion2() const;

  /// Restarts the home screen (respring.cpp).
  void respring() const;

 private:
  static constexpr objc::InstanceVariable<"_label", UILabel> kLabel{};
  static constexpr objc::InstanceVariable<"_underLabel", UILabel> kUnderLabel{};
  static constexpr objc::InstanceVariable<"headerView1", UIView> kHeaderView1{};
  static constexpr objc::InstanceVariable<"headerView2", UIView> kHeaderView2{};
  static constexpr objc::InstanceVariable<"iconImageView", UIImageView> kIconImageView{};
  static constexpr objc::InstanceVariable<"headerImageView", UIImageView> kHeaderImageView{};
  static constexpr objc::InstanceVariable<"headerImageView2", UIImageView> kHeaderImageView2{};
  static constexpr objc::InstanceVariable<"changelogController", OBWelcomeController> kChangelogController{};
  static constexpr objc::InstanceVariable<"changelogController2", OBWelcomeController>
      kChangelogController2{};
  static constexpr objc::InstanceVariable<"_savedSpecifiers", NSArray> kSavedSpecifiers{};

  UIView& banner() const { return variable(kHeaderView1); }
  UIView& second_banner() const { return variable(kHeaderView2); }
  UIImageView& icon_view() const { return variable(kIconImageView); }
  UIImageView& banner_image() const { return variable(kHeaderImageView); }
  UIImageView& second_banner_image() const { return variable(kHeaderImageView2); }
  OBWelcomeController& feature_sheet() const { return variable(kChangelogController); }
  OBWelcomeController& changelog_sheet() const { return variable(kChangelogController2); }
  void show_visible_rows() const;
  bool is_visible(const PSSpecifier& specifier) const {
    return objc::send<"isSpecifierVisible:", bool>(*this, specifier);
  }
};

}  // namespace wispen
