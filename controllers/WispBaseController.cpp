// controllers/WispBaseController.cpp: building and refreshing the shown rows.

#include "controllers/WispBaseController.hpp"

#include "controllers/WispRootListController.hpp"
#include "controllers/preference_store.hpp"
#include "controllers/specifier_visibility.hpp"

namespace wispen {

namespace {

/// The rows that a page shows, with a quick answer to whether one is among them: asking the list itself
/// for every row of a long page would cost the square of its length.
class ShownRows {
 public:
  explicit ShownRows(const PSListController& page) : page_(page) { look_up(); }

  bool contains(const PSSpecifier& specifier) const { return members_.containsObject(specifier); }
  PSSpecifier last() const { return page_.specifiers().lastObject<PSSpecifier>(); }

  void remove(const PSSpecifier& specifier) {
    page_.removeSpecifier(specifier, true);
    members_.removeObject(specifier);
    verify(count_ - 1);
  }
  void insert(const PSSpecifier& specifier, const PSSpecifier& anchor) {
    page_.insertSpecifierAfterSpecifier(specifier, anchor, true);
    members_.addObject(specifier);
    verify(count_ + 1);
  }

 private:
  // The list is the framework's: where it did not do as told, it is read again.
  void verify(NSUInteger expected) {
    count_ = expected;
    if (page_.specifiers().count() != expected) look_up();
  }
  void look_up() {
    const NSArray shown = page_.specifiers();
    members_ = NSMutableSet::setWithArray(shown);
    count_ = shown.count();
  }

  const PSListController& page_;
  NSMutableSet members_;
  NSUInteger count_ = 0;
};

}  // namespace

NSMutableArray WispBaseController::specifiers() const {
  NSMutableArray& shown = specifiers_variable();
  if (!shown) shown = loadSpecifiersFromPlistName("Root"_ns, *this);
  return shown;
}

NSMutableArray WispBaseController::dynamicSpecifiersFromPlist(const NSString& name) const {
  const NSMutableArray all = loadSpecifiersFromPlistName(name, *this).mutableCopy();
  setSavedSpecifiers(all.copy());
  if (!all) return all;  // the framework had none to give

  // From the last row to the first, as rows would be removed; collected instead, because removing each
  // hidden row from the list would cost the square of its length.
  const NSMutableArray visible_backwards = NSMutableArray::array();
  for (NSUInteger i = all.count(); i-- > 0;) {
    const auto specifier = all.objectAtIndex<PSSpecifier>(i);
    if (is_visible(specifier)) visible_backwards.addObject(specifier);
  }
  NSMutableArray visible = NSMutableArray::array();
  for (NSUInteger i = visible_backwards.count(); i-- > 0;)
    visible.addObject(visible_backwards.objectAtIndex(i));
  return visible;
}

void WispBaseController::updateSpecifiers() const {
  // Before the first filtered build there is nothing to bring in line, and asking for the shown rows would
  // load them.
  if (savedSpecifiers().count() > 0) show_visible_rows();
  if (isKindOfClass(objc::class_for<WispRootListController>())) reloadSpecifiers();
}

void WispBaseController::show_visible_rows() const {
  const NSArray saved = savedSpecifiers();
  ShownRows shown(*this);
  int i = 0;
  for (NSUInteger position = 0, count = saved.count(); position < count; ++position, ++i) {
    const auto specifier = saved.objectAtIndex<PSSpecifier>(position);
    const bool visible = is_visible(specifier);
    if (shown.contains(specifier)) {
      if (!visible) shown.remove(specifier);
      continue;
    }
    // The anchor is looked for even when the row stays hidden, and only one row back: a row whose
    // predecessor is hidden goes to the end of the page. For the first row the index wraps, and the
    // array raises: the first row of such a page must never be hidden.
    const auto predecessor = static_cast<NSUInteger>(i - 1);
    PSSpecifier anchor = saved.objectAtIndex<PSSpecifier>(predecessor);
    anchor = shown.contains(anchor) ? saved.objectAtIndex<PSSpecifier>(predecessor) : shown.last();
    if (visible) shown.insert(specifier, anchor);
  }
}

NSArray WispBaseController::savedSpecifiers() const { return variable(kSavedSpecifiers); }

void WispBaseController::setSavedSpecifiers(const NSArray& specifiers) const {
  variable(kSavedSpecifiers) = specifiers;
}

void WispBaseController::define() {
  objc::Class<WispBaseController> page;
  page.variable(kLabel)
      .variable(kUnderLabel)
      .variable(kHeaderView1)
      .variable(kHeaderView2)
      .variable(kIconImageView)
      .variable(kHeaderImageView)
      .variable(kHeaderImageView2)
      .variable(kChangelogController)
      .variable(kChangelogController2)
      .variable(kSavedSpecifiers)
      .method<"specifiers", &WispBaseController::specifiers>()
      .method<"dynamicSpecifiersFromPlist:", &WispBaseController::dynamicSpecifiersFromPlist>()
      .method<"updateSpecifiers", &WispBaseController::updateSpecifiers>()
      .method<"savedSpecifiers", &WispBaseController::savedSpecifiers>()
      .method<"setSavedSpecifiers:", &WispBaseController::setSavedSpecifiers>()
      .method<"loadView", &WispBaseController::loadView>()
      .method<"viewWillAppear:", &WispBaseController::viewWillAppear>()
      .method<"headerCell", &WispBaseController::headerCell>()
      .method<"layoutUI", &WispBaseController::layoutUI>()
      .method<"tableView:viewForHeaderInSection:", &WispBaseController::tableViewForHeader>()
      .method<"tableView:heightForHeaderInSection:", &WispBaseController::tableHeightForHeader>()
      .method<"tableView:willDisplayCell:forRowAtIndexPath:", &WispBaseController::tableWillDisplayCell>()
      .method<"showWtfChangedInThisVersion", &WispBaseController::showWtfChangedInThisVersion>()
      .method<"showWtfChangedInThisVersion2", &WispBaseController::showWtfChangedInThisVersion2>()
      .method<"respring", &WispBaseController::respring>();
  PreferenceStore<WispBaseController>::add_to(page);
  SpecifierVisibility<WispBaseController>::add_to(page);
  page.register_class();
}

}  // namespace wispen
