// host/preferences/list_controller.hpp: PSListController: a page that lists specifiers.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <vector>

#include "host/uikit/containers/tables/index_path.hpp"
#include "platform/Preferences.hpp"

namespace wispen::preferences {

/// One step by which a page's rows changed, as a table would animate it.
struct ListChange {
  enum class Kind { Insert, Remove, Replace, Reload };
  Kind kind;
  std::size_t index;      // in the list of specifiers, groups included; 0 for a Reload
  PSSpecifier specifier;  // nil for a Reload
  bool animated;
};

/// The host's PSListController. A subclass fills the variable `_specifiers` in its `specifiers` and returns
/// it; everything else works on that list. Every change is recorded, in order, and shown by the table when
/// there is one: the page is the table's source and delegate (see list_table.cpp).
class ListController : public objc::Implementation<ListController, PSListController> {
 public:
  void loadView();
  UITableViewStyle tableStyle() { return UITableViewStyle::InsetGrouped; }
  void viewWillAppear(bool animated);
  NSInteger numberOfSections(const UITableView&);
  NSInteger numberOfRows(const UITableView&, NSInteger section);
  NSString titleForHeader(const UITableView&, NSInteger section);
  NSString titleForFooter(const UITableView&, NSInteger section);
  UITableViewCell cellForRow(const UITableView&, const NSIndexPath& path);
  PSTableCell cachedCell(const PSSpecifier& specifier);
  double heightForRow(const UITableView& table, const NSIndexPath& path);
  UIView viewForHeader(const UITableView&, NSInteger section);
  UIView viewForFooter(const UITableView& table, NSInteger section);
  double heightForHeader(const UITableView& table, NSInteger section);
  double heightForFooter(const UITableView& table, NSInteger section);
  bool shouldHighlightRow(const UITableView&, const NSIndexPath& path);
  void didSelectRow(const UITableView& table, const NSIndexPath& path);
  void scroll_to(const PSSpecifier& specifier, bool animated);
  NSMutableArray specifiers();
  void setSpecifiers(const NSArray& specifiers);
  NSBundle bundle() { return NSBundle::bundleForClass(objc::class_of(self())); }
  NSMutableArray loadSpecifiersFromPlistName(const NSString& name, const NSObject& target);
  NSMutableArray loadSpecifiersFromPlistNameInBundle(const NSString& name, const NSObject& target,
                                                     const NSBundle& bundle);
  /// Drops the list, so that the page builds it again.
  void reloadSpecifiers();
  /// Shows the rows that are there again.
  void reload() { record(ListChange::Kind::Reload, 0, PSSpecifier(), false); }
  void reloadSpecifier(const PSSpecifier& specifier);
  void reloadSpecifierAnimated(const PSSpecifier& specifier, bool animated);
  void reloadSpecifierID(const NSString& identifier);
  void addSpecifier(const PSSpecifier& specifier);
  void addSpecifierAnimated(const PSSpecifier& specifier, bool animated);
  void insertSpecifierAtIndex(const PSSpecifier& specifier, NSInteger index, bool animated);
  /// After an anchor that is not in the list, nil included, means at its end.
  void insertSpecifierAfter(const PSSpecifier& specifier, const PSSpecifier& anchor);
  void insertSpecifierAfterAnimated(const PSSpecifier& specifier, const PSSpecifier& anchor, bool animated);
  void insertSpecifierAfterID(const PSSpecifier& specifier, const NSString& identifier, bool animated);
  void insertContiguousAfter(const NSArray& added, const PSSpecifier& anchor, bool animated);
  void insertContiguousAtIndex(const NSArray& added, NSInteger index, bool animated);
  /// A specifier that is not in the list is passed over.
  void removeSpecifier(const PSSpecifier& specifier);
  void removeSpecifierAnimated(const PSSpecifier& specifier, bool animated);
  void removeSpecifierID(const NSString& identifier);
  void removeSpecifierIDAnimated(const NSString& identifier, bool animated);
  void removeContiguous(const NSArray& removed, bool animated);
  void replaceContiguous(const NSArray& removed, const NSArray& added, bool animated);
  void replaceContiguousPlain(const NSArray& removed, const NSArray& added);
  bool containsSpecifier(const PSSpecifier& specifier);
  /// NSNotFound where it is not in the list.
  NSInteger indexOfSpecifier(const PSSpecifier& specifier);
  NSInteger indexOfSpecifierID(const NSString& identifier);
  PSSpecifier specifierForID(const NSString& identifier);
  /// Nil outside the list.
  PSSpecifier specifierAtIndex(NSInteger index);
  /// Groups: every group specifier starts one; rows before the first form one without a head.
  NSInteger numberOfGroups() { return static_cast<NSInteger>(group_starts().size()); }
  /// The group's head, if it has one, and its rows.
  NSArray specifiersInGroup(NSInteger group);
  /// The head of a group; nil for a group without one, and outside the list.
  PSSpecifier group_head(NSInteger group);
  NSInteger rowsForGroup(NSInteger group);
  /// Nil outside the list.
  PSSpecifier specifier_at(uikit::RowPath path);
  /// Section -1 for a head and for a specifier that is not in the list.
  uikit::RowPath path_of(const PSSpecifier& specifier);
  bool getGroupRow(NSInteger* group, NSInteger* row, const PSSpecifier& specifier);
  /// Section and row; nil for a group's head and for a specifier that is not in the list.
  NSIndexPath indexPathForSpecifier(const PSSpecifier& specifier);
  /// The changes since the last clearChanges, oldest first; only the latest kMostChanges are kept.
  static constexpr std::size_t kMostChanges = 65536;
  std::vector<ListChange> changes();
  void clearChanges() { changes_.clear(); }
  /// The same as dictionaries for callers that only send messages: "change" ("insert", "remove", "replace",
  /// "reload"), "index", "specifier", "animated".
  NSArray specifierChanges();
  /// Nil before the page's view is loaded.
  UITableView table() { return table_; }
  /// What a tap on the row does.
  void act(const PSSpecifier& specifier);
  /// The page that the row opens, set up for the row; nil where it opens none.
  UIViewController page_for(const PSSpecifier& specifier);
  /// The variable `_specifiers`.
  NSMutableArray& list() { return objc::variable_of<PSListController>(self(), kSpecifiers); }

 private:
  friend void define_list_controller();
  friend void define_list_table(objc::Class<PSListController>& page);
  static constexpr objc::InstanceVariable<"_specifiers", NSMutableArray> kSpecifiers{};

  /// A page above may have changed what they show.
  void refresh_shown_rows();
  /// One that was made for this row, or that another has left, or a new one.
  PSTableCell take_cell(const PSSpecifier& specifier);
  PSSpecifier radio_group_of(const PSSpecifier& specifier);
  void mark_choice(const PSTableCell& cell);
  void choose(const PSSpecifier& specifier);
  void perform_action(const PSSpecifier& specifier, objc::Selector action);
  void press(const PSSpecifier& specifier);
  void open(const PSSpecifier& specifier);
  void insert_row(const ListChange& change);
  void remove_row(const ListChange& change);
  void replace_row(const ListChange& change);
  void record(ListChange::Kind kind, std::size_t index, const PSSpecifier& specifier, bool animated);
  void insert(const PSSpecifier& specifier, std::size_t index, bool animated);
  void remove(std::size_t index, bool animated);
  const std::vector<std::size_t>& group_starts();
  void show_change(const ListChange& change);
  NSMutableArray shown() { return self().specifiers(); }

  std::deque<ListChange> changes_;
  // Where each group starts, for the list as it stood when `grouped` was set.
  std::vector<std::size_t> group_starts_;
  bool grouped_ = false;
  // Where a specifier was last found: pages walk their rows in order, and a search that starts there makes
  // the walk linear.
  std::size_t cursor_ = 0;

  UITableView table_;
  // Cells of rows' own classes that were made to ask their height, until the table takes them over.
  std::map<const void*, PSTableCell> measured_cells_;  // by specifier
};

void define_list_controller();
/// The part of its messages that is about the table; `page` is the class under construction.
void define_list_table(objc::Class<PSListController>& page);

}  // namespace wispen::preferences
