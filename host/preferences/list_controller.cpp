// host/preferences/list_controller.cpp: PSListController: a page that lists specifiers.

#include "host/preferences/list_controller.hpp"

#include <algorithm>

#include "host/preferences/specifier.hpp"
#include "host/preferences/specifier_list.hpp"

namespace wispen::preferences {

NSMutableArray ListController::specifiers() {
  if (!list()) list() = NSMutableArray::array();
  return list();
}

void ListController::setSpecifiers(const NSArray& specifiers) {
  list() = specifiers ? specifiers.mutableCopy() : NSMutableArray();
  grouped_ = false;
  record(ListChange::Kind::Reload, 0, PSSpecifier(), false);
}

NSMutableArray ListController::loadSpecifiersFromPlistName(const NSString& name, const NSObject& target) {
  return loadSpecifiersFromPlistNameInBundle(name, target, self().bundle());
}

NSMutableArray ListController::loadSpecifiersFromPlistNameInBundle(const NSString& name,
                                                                   const NSObject& target,
                                                                   const NSBundle& bundle) {
  const SpecifierList loaded = load_specifier_list(bundle, name, target);
  // A page that a row opened bears the row's label; only the first page takes its list's title.
  if (loaded.title && !self().specifier()) self().setTitle(loaded.title);
  grouped_ = false;
  return loaded.specifiers;
}

void ListController::record(ListChange::Kind kind, std::size_t index, const PSSpecifier& specifier,
                            bool animated) {
  auto& changes = changes_;
  if (changes.size() == kMostChanges) changes.pop_front();
  changes.push_back({kind, index, specifier, animated});
  if (table_) show_change(ListChange(changes.back()));
}

void ListController::reloadSpecifiers() {
  list() = NSMutableArray();
  grouped_ = false;
  cursor_ = 0;
  shown();
  reload();
}

void ListController::reloadSpecifier(const PSSpecifier& specifier) {
  reloadSpecifierAnimated(specifier, false);
}

void ListController::reloadSpecifierAnimated(const PSSpecifier& specifier, bool animated) {
  const NSInteger index = indexOfSpecifier(specifier);
  if (index != static_cast<NSInteger>(NSNotFound)) {
    record(ListChange::Kind::Replace, static_cast<std::size_t>(index), specifier, animated);
  }
}

void ListController::reloadSpecifierID(const NSString& identifier) {
  reloadSpecifier(specifierForID(identifier));
}

void ListController::insert(const PSSpecifier& specifier, std::size_t index, bool animated) {
  shown().insertObject(specifier, index);
  grouped_ = false;
  cursor_ = index;
  record(ListChange::Kind::Insert, index, specifier, animated);
}

void ListController::remove(std::size_t index, bool animated) {
  const NSMutableArray rows = shown();
  const auto specifier = rows.objectAtIndex<PSSpecifier>(index);
  rows.removeObjectAtIndex(index);
  grouped_ = false;
  cursor_ = index;
  record(ListChange::Kind::Remove, index, specifier, animated);
}

void ListController::addSpecifier(const PSSpecifier& specifier) { addSpecifierAnimated(specifier, false); }

void ListController::addSpecifierAnimated(const PSSpecifier& specifier, bool animated) {
  insert(specifier, shown().count(), animated);
}

void ListController::insertSpecifierAtIndex(const PSSpecifier& specifier, NSInteger index, bool animated) {
  insert(specifier, static_cast<std::size_t>(index), animated);
}

void ListController::insertSpecifierAfter(const PSSpecifier& specifier, const PSSpecifier& anchor) {
  insertSpecifierAfterAnimated(specifier, anchor, false);
}

void ListController::insertSpecifierAfterAnimated(const PSSpecifier& specifier, const PSSpecifier& anchor,
                                                  bool animated) {
  const NSInteger index = indexOfSpecifier(anchor);
  const bool found = index != static_cast<NSInteger>(NSNotFound);
  insert(specifier, found ? static_cast<std::size_t>(index) + 1 : shown().count(), animated);
}

void ListController::insertSpecifierAfterID(const PSSpecifier& specifier, const NSString& identifier,
                                            bool animated) {
  insertSpecifierAfterAnimated(specifier, specifierForID(identifier), animated);
}

void ListController::insertContiguousAfter(const NSArray& added, const PSSpecifier& anchor, bool animated) {
  const NSInteger index = indexOfSpecifier(anchor);
  const bool found = index != static_cast<NSInteger>(NSNotFound);
  insertContiguousAtIndex(added, found ? index + 1 : static_cast<NSInteger>(shown().count()), animated);
}

void ListController::insertContiguousAtIndex(const NSArray& added, NSInteger index, bool animated) {
  for (NSUInteger i = 0, count = added.count(); i < count; ++i) {
    insert(added.objectAtIndex<PSSpecifier>(i), static_cast<std::size_t>(index) + i, animated);
  }
}

void ListController::removeSpecifier(const PSSpecifier& specifier) {
  removeSpecifierAnimated(specifier, false);
}

void ListController::removeSpecifierAnimated(const PSSpecifier& specifier, bool animated) {
  const NSInteger index = indexOfSpecifier(specifier);
  if (index != static_cast<NSInteger>(NSNotFound)) remove(static_cast<std::size_t>(index), animated);
}

void ListController::removeSpecifierID(const NSString& identifier) {
  removeSpecifier(specifierForID(identifier));
}

void ListController::removeSpecifierIDAnimated(const NSString& identifier, bool animated) {
  removeSpecifierAnimated(specifierForID(identifier), animated);
}

void ListController::removeContiguous(const NSArray& removed, bool animated) {
  // A copy: the caller may hand over the list itself.
  const NSArray specifiers = removed.copy();
  for (NSUInteger i = 0, count = specifiers.count(); i < count; ++i) {
    removeSpecifierAnimated(specifiers.objectAtIndex<PSSpecifier>(i), animated);
  }
}

void ListController::replaceContiguous(const NSArray& removed, const NSArray& added, bool animated) {
  const NSInteger index = indexOfSpecifier(removed.firstObject<PSSpecifier>());
  const bool found = index != static_cast<NSInteger>(NSNotFound);
  removeContiguous(removed, animated);
  insertContiguousAtIndex(added, found ? index : static_cast<NSInteger>(shown().count()), animated);
}

void ListController::replaceContiguousPlain(const NSArray& removed, const NSArray& added) {
  replaceContiguous(removed, added, false);
}

bool ListController::containsSpecifier(const PSSpecifier& specifier) {
  return indexOfSpecifier(specifier) != static_cast<NSInteger>(NSNotFound);
}

NSInteger ListController::indexOfSpecifier(const PSSpecifier& specifier) {
  const NSMutableArray rows = shown();
  const NSUInteger count = rows.count();
  if (!specifier) return static_cast<NSInteger>(NSNotFound);
  const NSUInteger start = std::min<NSUInteger>(cursor_, count);
  const auto search = [&](NSUInteger from, NSUInteger to) {
    for (NSUInteger i = from; i < to; ++i) {
      if (rows.objectAtIndex(i) == specifier) {
        cursor_ = i;
        return static_cast<NSInteger>(i);
      }
    }
    return static_cast<NSInteger>(NSNotFound);
  };
  const NSInteger ahead = search(start, count);
  return ahead != static_cast<NSInteger>(NSNotFound) ? ahead : search(0, start);
}

NSInteger ListController::indexOfSpecifierID(const NSString& identifier) {
  return indexOfSpecifier(specifierForID(identifier));
}

PSSpecifier ListController::specifierForID(const NSString& identifier) {
  const NSMutableArray rows = shown();
  for (NSUInteger i = 0, count = rows.count(); i < count; ++i) {
    const auto specifier = rows.objectAtIndex<PSSpecifier>(i);
    if (specifier.identifier().isEqual(identifier)) return specifier;
  }
  return PSSpecifier();
}

PSSpecifier ListController::specifierAtIndex(NSInteger index) {
  const NSMutableArray rows = shown();
  const bool inside = index >= 0 && static_cast<NSUInteger>(index) < rows.count();
  return inside ? rows.objectAtIndex<PSSpecifier>(static_cast<NSUInteger>(index)) : PSSpecifier();
}

const std::vector<std::size_t>& ListController::group_starts() {
  const NSMutableArray rows = shown();  // may build the list, which makes the groups stale
  if (grouped_) return group_starts_;
  group_starts_.clear();
  for (NSUInteger i = 0, count = rows.count(); i < count; ++i) {
    const bool head =
        rows.objectAtIndex<PSSpecifier>(i).cellType() == static_cast<NSInteger>(CellType::Group);
    if (head || i == 0) group_starts_.push_back(i);
  }
  grouped_ = true;
  return group_starts_;
}

NSArray ListController::specifiersInGroup(NSInteger group) {
  NSMutableArray members = NSMutableArray::array();
  const auto& starts = group_starts();
  if (group < 0 || static_cast<std::size_t>(group) >= starts.size()) return members;
  const auto index = static_cast<std::size_t>(group);
  const NSMutableArray rows = shown();
  const std::size_t end = index + 1 < starts.size() ? starts[index + 1] : rows.count();
  for (std::size_t i = starts[index]; i < end; ++i) members.addObject(rows.objectAtIndex(i));
  return members;
}

PSSpecifier ListController::group_head(NSInteger group) {
  const auto& starts = group_starts();
  if (group < 0 || static_cast<std::size_t>(group) >= starts.size()) return PSSpecifier();
  const PSSpecifier first = specifierAtIndex(static_cast<NSInteger>(starts[static_cast<std::size_t>(group)]));
  return first.cellType() == static_cast<NSInteger>(CellType::Group) ? first : PSSpecifier();
}

NSInteger ListController::rowsForGroup(NSInteger group) {
  const auto& starts = group_starts();
  if (group < 0 || static_cast<std::size_t>(group) >= starts.size()) return 0;
  const auto index = static_cast<std::size_t>(group);
  const std::size_t end = index + 1 < starts.size() ? starts[index + 1] : shown().count();
  return static_cast<NSInteger>(end - starts[index]) - (group_head(group) ? 1 : 0);
}

PSSpecifier ListController::specifier_at(uikit::RowPath path) {
  if (path.row < 0 || path.row >= rowsForGroup(path.section)) return PSSpecifier();
  const auto start = static_cast<NSInteger>(group_starts()[static_cast<std::size_t>(path.section)]);
  return specifierAtIndex(start + path.row + (group_head(path.section) ? 1 : 0));
}

uikit::RowPath ListController::path_of(const PSSpecifier& specifier) {
  uikit::RowPath path;
  if (!getGroupRow(&path.section, &path.row, specifier) || path.row < 0) return {-1, -1};
  return path;
}

bool ListController::getGroupRow(NSInteger* group, NSInteger* row, const PSSpecifier& specifier) {
  const NSInteger index = indexOfSpecifier(specifier);
  if (index == static_cast<NSInteger>(NSNotFound)) return false;
  const auto& starts = group_starts();
  const auto after = std::ranges::upper_bound(starts, static_cast<std::size_t>(index));
  const auto start = static_cast<NSInteger>(*(after - 1));
  const bool headed = specifierAtIndex(start).cellType() == static_cast<NSInteger>(CellType::Group);
  if (group != nullptr) *group = after - starts.begin() - 1;
  if (row != nullptr) *row = index - start - (headed ? 1 : 0);  // a head has row -1
  return true;
}

NSIndexPath ListController::indexPathForSpecifier(const PSSpecifier& specifier) {
  const uikit::RowPath path = path_of(specifier);
  return path.section >= 0 ? uikit::index_path(path) : NSIndexPath();
}

std::vector<ListChange> ListController::changes() { return {changes_.begin(), changes_.end()}; }

NSArray ListController::specifierChanges() {
  NSMutableArray result = NSMutableArray::array();
  for (const ListChange& change : changes_) {
    NSMutableDictionary entry = NSMutableDictionary::dictionary();
    static constexpr const char* kNames[] = {"insert", "remove", "replace", "reload"};
    entry.setObject(NSString(kNames[static_cast<std::size_t>(change.kind)]), "change"_ns);
    entry.setObject(NSNumber::numberWithInteger(static_cast<NSInteger>(change.index)), "index"_ns);
    entry.setObject(NSNumber::numberWithBool(change.animated), "animated"_ns);
    if (change.specifier) entry.setObject(change.specifier, "specifier"_ns);
    result.addObject(entry);
  }
  return result;
}

void define_list_controller() {
  auto page = objc::Class<PSListController>::implemented_by<ListController>();
  page.variable(ListController::kSpecifiers)
      .method<"specifiers", &ListController::specifiers>()
      .method<"setSpecifiers:", &ListController::setSpecifiers>()
      .method<"loadSpecifiersFromPlistName:target:", &ListController::loadSpecifiersFromPlistName>()
      .method<"loadSpecifiersFromPlistName:target:bundle:",
              &ListController::loadSpecifiersFromPlistNameInBundle>()
      .method<"bundle", &ListController::bundle>()
      .method<"reloadSpecifiers", &ListController::reloadSpecifiers>()
      .method<"reload", &ListController::reload>()
      .method<"reloadSpecifier:", &ListController::reloadSpecifier>()
      .method<"reloadSpecifier:animated:", &ListController::reloadSpecifierAnimated>()
      .method<"reloadSpecifierID:", &ListController::reloadSpecifierID>()
      .method<"addSpecifier:", &ListController::addSpecifier>()
      .method<"addSpecifier:animated:", &ListController::addSpecifierAnimated>()
      .method<"insertSpecifier:atIndex:animated:", &ListController::insertSpecifierAtIndex>()
      .method<"insertSpecifier:afterSpecifier:", &ListController::insertSpecifierAfter>()
      .method<"insertSpecifier:afterSpecifier:animated:", &ListController::insertSpecifierAfterAnimated>()
      .method<"insertSpecifier:afterSpecifierID:animated:", &ListController::insertSpecifierAfterID>()
      .method<"insertContiguousSpecifiers:afterSpecifier:animated:", &ListController::insertContiguousAfter>()
      .method<"insertContiguousSpecifiers:atIndex:animated:", &ListController::insertContiguousAtIndex>()
      .method<"removeSpecifier:", &ListController::removeSpecifier>()
      .method<"removeSpecifier:animated:", &ListController::removeSpecifierAnimated>()
      .method<"removeSpecifierID:", &ListController::removeSpecifierID>()
      .method<"removeSpecifierID:animated:", &ListController::removeSpecifierIDAnimated>()
      .method<"removeContiguousSpecifiers:animated:", &ListController::removeContiguous>()
      .method<"replaceContiguousSpecifiers:withSpecifiers:", &ListController::replaceContiguousPlain>()
      .method<"replaceContiguousSpecifiers:withSpecifiers:animated:", &ListController::replaceContiguous>()
      .method<"updateSpecifiers:withSpecifiers:", &ListController::replaceContiguousPlain>()
      .method<"containsSpecifier:", &ListController::containsSpecifier>()
      .method<"indexOfSpecifier:", &ListController::indexOfSpecifier>()
      .method<"indexOfSpecifierID:", &ListController::indexOfSpecifierID>()
      .method<"specifierForID:", &ListController::specifierForID>()
      .method<"specifierAtIndex:", &ListController::specifierAtIndex>()
      .method<"numberOfGroups", &ListController::numberOfGroups>()
      .method<"rowsForGroup:", &ListController::rowsForGroup>()
      .method<"specifiersInGroup:", &ListController::specifiersInGroup>()
      .method<"getGroup:row:ofSpecifier:", &ListController::getGroupRow>()
      .method<"indexPathForSpecifier:", &ListController::indexPathForSpecifier>()
      .method<"specifierChanges", &ListController::specifierChanges>()
      .method<"clearSpecifierChanges", &ListController::clearChanges>();
  define_list_table(page);
  page.register_class();
}

}  // namespace wispen::preferences
