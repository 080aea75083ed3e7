// host/preferences/list_controller.hpp: PSListController: a page that lists specifiers.
#pragma once

#include <cstddef>
#include <vector>

#include "host/preferences/page_controller.hpp"
#include "host/uikit/tables/table_view.hpp"

namespace wispen::preferences {

/// One step by which a page's rows changed, as a table would animate it.
struct ListChange {
  enum class Kind { Insert, Remove, Replace, Reload };
  Kind kind;
  std::size_t index;      // in the list of specifiers, groups included; 0 for a Reload
  PSSpecifier specifier;  // nil for a Reload
  bool animated;
};

struct ListControllerState;

/// The host's PSListController. A subclass fills the variable `_specifiers` in its `specifiers` and returns
/// it; everything else works on that list. Every change is recorded, in order, and shown by the table when
/// there is one: the page is the table's source and delegate (see list_table.cpp).
class ListController : public objc::Authored<ListController, PageController> {
 public:
  static constexpr objc::FixedString kClass{"PSListController"};
  using Authored::Authored;

  static void define();

  NSMutableArray specifiers() const;
  void setSpecifiers(const NSArray& specifiers) const;
  NSMutableArray loadSpecifiersFromPlistName(const NSString& name, const NSObject& target) const;
  NSMutableArray loadSpecifiersFromPlistNameInBundle(const NSString& name, const NSObject& target,
                                                     const NSBundle& bundle) const;
  NSBundle bundle() const;

  /// Drops the list, so that the page builds it again.
  void reloadSpecifiers() const;
  /// Shows the rows that are there again.
  void reload() const;
  void reloadSpecifier(const PSSpecifier& specifier) const;
  void reloadSpecifierAnimated(const PSSpecifier& specifier, bool animated) const;
  void reloadSpecifierID(const NSString& identifier) const;

  void addSpecifier(const PSSpecifier& specifier) const;
  void addSpecifierAnimated(const PSSpecifier& specifier, bool animated) const;
  void insertSpecifierAtIndex(const PSSpecifier& specifier, NSInteger index, bool animated) const;
  /// After an anchor that is not in the list, nil included, means at its end.
  void insertSpecifierAfter(const PSSpecifier& specifier, const PSSpecifier& anchor) const;
  void insertSpecifierAfterAnimated(const PSSpecifier& specifier, const PSSpecifier& anchor,
                                    bool animated) const;
  void insertSpecifierAfterID(const PSSpecifier& specifier, const NSString& identifier, bool animated) const;
  void insertContiguousAfter(const NSArray& added, const PSSpecifier& anchor, bool animated) const;
  void insertContiguousAtIndex(const NSArray& added, NSInteger index, bool animated) const;
  /// A specifier that is not in the list is passed over.
  void removeSpecifier(const PSSpecifier& specifier) const;
  void removeSpecifierAnimated(const PSSpecifier& specifier, bool animated) const;
  void removeSpecifierID(const NSString& identifier) const;
  void removeSpecifierIDAnimated(const NSString& identifier, bool animated) const;
  void removeContiguous(const NSArray& removed, bool animated) const;
  void replaceContiguous(const NSArray& removed, const NSArray& added, bool animated) const;
  void replaceContiguousPlain(const NSArray& removed, const NSArray& added) const;

  bool containsSpecifier(const PSSpecifier& specifier) const;
  /// NSNotFound where it is not in the list.
  NSInteger indexOfSpecifier(const PSSpecifier& specifier) const;
  NSInteger indexOfSpecifierID(const NSString& identifier) const;
  PSSpecifier specifierForID(const NSString& identifier) const;
  /// Nil outside the list.
  PSSpecifier specifierAtIndex(NSInteger index) const;

  /// Groups: every group specifier starts one; rows before the first form one without a head.
  NSInteger numberOfGroups() const;
  NSInteger rowsForGroup(NSInteger group) const;
  /// The group's head, if it has one, and its rows.
  NSArray specifiersInGroup(NSInteger group) const;
  bool getGroupRow(NSInteger* group, NSInteger* row, const PSSpecifier& specifier) const;
  /// Section and row; nil for a group's head and for a specifier that is not in the list.
  NSObject indexPathForSpecifier(const PSSpecifier& specifier) const;

  /// The head of a group; nil for a group without one, and outside the list.
  PSSpecifier group_head(NSInteger group) const;
  /// Nil outside the list.
  PSSpecifier specifier_at(uikit::RowPath path) const;
  /// Section -1 for a head and for a specifier that is not in the list.
  uikit::RowPath path_of(const PSSpecifier& specifier) const;

  /// Nil before the page's view is loaded.
  uikit::TableView table() const;
  /// The variable `_specifiers`.
  NSMutableArray& specifiers_slot() const { return list(); }
  /// What a tap on the row does.
  void act(const PSSpecifier& specifier) const;
  /// The page that the row opens, set up for the row; nil where it opens none.
  uikit::ViewController page_for(const PSSpecifier& specifier) const;

  /// The changes since the last clearChanges, oldest first; only the latest kMostChanges are kept.
  static constexpr std::size_t kMostChanges = 65536;
  std::vector<ListChange> changes() const;
  void clearChanges() const;
  /// The same as dictionaries for callers that only send messages: "change" ("insert", "remove", "replace",
  /// "reload"), "index", "specifier", "animated".
  NSArray specifierChanges() const;

 private:
  friend struct ListTable;
  static void define_table(objc::Class<ListController>& page);
  ListControllerState& parts() const;
  static constexpr objc::InstanceVariable<"_specifiers", NSMutableArray> kSpecifiers{};
  NSMutableArray& list() const { return variable(kSpecifiers); }
  NSMutableArray shown() const;
  void record(ListChange::Kind kind, std::size_t index, const PSSpecifier& specifier, bool animated) const;
  void insert(const PSSpecifier& specifier, std::size_t index, bool animated) const;
  void remove(std::size_t index, bool animated) const;
  void show_change(const ListChange& change) const;
  const std::vector<std::size_t>& group_starts() const;
};

}  // namespace wispen::preferences
