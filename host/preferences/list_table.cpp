// host/preferences/list_table.cpp: a page of specifiers as a table: its source, its delegate, what taps do.

#include <algorithm>
#include <optional>
#include <utility>

#include "host/preferences/cells/table_cell.hpp"
#include "host/preferences/confirmation.hpp"
#include "host/preferences/list_controller.hpp"
#include "host/preferences/named_method.hpp"
#include "host/preferences/specifier.hpp"
#include "host/uikit/containers/tables/table_cell.hpp"
#include "host/uikit/containers/tables/table_view.hpp"

namespace wispen::preferences {

namespace {

NSString text_property(const PSSpecifier& specifier, const NSString& key) {
  return objc::cast_or_nil<NSString>(specifier.propertyForKey(key));
}

/// The height that a cell or a header of a page's own class asks for; nothing where it does not care.
std::optional<double> preferred_height(const UIView& view, double width, const UITableView& table) {
  if (objc::responds_to(view, objc::selector<"preferredHeightForWidth:">())) {
    return objc::send<"preferredHeightForWidth:", double>(view, width);
  }
  if (objc::responds_to(view, objc::selector<"preferredHeightForWidth:inTableView:">())) {
    return objc::send<"preferredHeightForWidth:inTableView:", double>(view, width, table);
  }
  return std::nullopt;
}

/// A view of the class that the group names for its head or foot; nil where it names none.
UIView section_view(const PSSpecifier& head, const NSString& key) {
  const auto name = head ? text_property(head, key) : NSString();
  const auto cls = name ? objc::ClassRef::named(name.utf8().c_str()) : objc::ClassRef();
  if (!cls || !cls.is_subclass_of(objc::class_for<UIView>())) return UIView();
  objc::Allocated<UIView> blank = objc::allocate<UIView>(cls);
  if (cls.instances_respond_to(objc::selector<"initWithSpecifier:">())) {
    return std::move(blank).initialize<"initWithSpecifier:">(head);
  }
  return std::move(blank).initialize<"initWithFrame:">(Rect{});
}

UIView aligned_footer(const UITableView& table, const NSString& text, NSInteger alignment) {
  const UILabel label = objc::make<UILabel>();
  label.setNumberOfLines(0);
  label.setFont(UIFont::preferredFontForTextStyle(UIFontTextStyleFootnote));
  label.setTextColor(UIColor::secondaryLabelColor());
  label.setText(text);
  label.setTextAlignment(static_cast<NSTextAlignment>(alignment));
  const double width = table.bounds().size.width - 2 * uikit::TableView::of(table).side_margin();
  const double room = std::max(0.0, width - 2 * uikit::kCellMargin);
  constexpr double kTop = 7;
  label.setFrame(Rect{{uikit::kCellMargin, kTop}, {room, label.sizeThatFits(Size{room, 0}).height}});
  label.setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
  const UIView holder = UIView::alloc().initWithFrame(Rect{{0, 0}, {width, Rect(label.frame()).max_y()}});
  holder.addSubview(label);
  return holder;
}

double section_height(const UIView& view, const UITableView& table) {
  if (!view) return UITableViewAutomaticDimension;
  const double width = table.bounds().size.width - 2 * uikit::TableView::of(table).side_margin();
  return preferred_height(view, width, table)
      .value_or(view.bounds().size.height > 0 ? view.bounds().size.height : UITableViewAutomaticDimension);
}

bool acts(const PSSpecifier& specifier) {
  if (specifier.propertyForKey("enabled"_ns) && !is_set(specifier, "enabled"_ns)) return false;
  switch (type_of(specifier)) {
    case CellType::Button:
    case CellType::Link:
    case CellType::LinkList:
    case CellType::ListItem:
    case CellType::EditText:
    case CellType::SecureEditText:
    case CellType::EditTextView:
    case CellType::Giant:
    case CellType::GiantIcon:
      return true;
    default:
      return specifier.action() ? true : false;
  }
}

}  // namespace

void ListController::loadView() {
  const UIView view = UIView::alloc().initWithFrame(Rect{{0, 0}, {320, 480}});
  view.setBackgroundColor(UIColor::systemGroupedBackgroundColor());
  const UITableView table = UITableView::alloc().initWithFrame(view.bounds(), self().tableStyle());
  table.setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  table.setBackgroundColor(UIColor::systemGroupedBackgroundColor());
  view.addSubview(table);
  table_ = table;
  self().setView(view);
  table.setDataSource(self());
  table.setDelegate(self());
  // Only the list of Settings itself has its title in large letters.
  self().navigationItem().setLargeTitleDisplayMode(UINavigationItemLargeTitleDisplayMode::Never);
  shown();  // gives the page its title
}

void ListController::viewWillAppear(bool animated) {
  super<"viewWillAppear:">(animated);
  if (!table_) return;
  table_.deselectRow(table_.indexPathForSelectedRow(), animated);
  refresh_shown_rows();
}

void ListController::refresh_shown_rows() {
  for (const UITableViewCell& shown : uikit::TableView::of(table_).visible_cells()) {
    const auto cell = objc::cast_or_nil<PSTableCell>(shown);
    if (cell && cell.specifier()) {
      cell.refreshCellContentsWithSpecifier(cell.specifier());
      mark_choice(cell);
    }
  }
}

// The source.
NSInteger ListController::numberOfSections(const UITableView&) { return self().numberOfGroups(); }

NSInteger ListController::numberOfRows(const UITableView&, NSInteger section) {
  return self().rowsForGroup(section);
}

NSString ListController::titleForHeader(const UITableView&, NSInteger section) {
  const PSSpecifier head = group_head(section);
  return head ? head.name() : NSString();
}

NSString ListController::titleForFooter(const UITableView&, NSInteger section) {
  const PSSpecifier head = group_head(section);
  return head ? text_property(head, "footerText"_ns) : NSString();
}

PSTableCell ListController::take_cell(const PSSpecifier& specifier) {
  auto& measured = measured_cells_;
  if (const auto found = measured.find(objc::borrow(specifier)); found != measured.end()) {
    return std::exchange(found->second, PSTableCell());
  }
  auto cell = objc::cast_or_nil<PSTableCell>(table_.dequeueReusableCell(reuse_identifier(specifier)));
  return cell ? cell : make_cell(specifier);
}

UITableViewCell ListController::cellForRow(const UITableView&, const NSIndexPath& path) {
  const PSSpecifier specifier = specifier_at(uikit::row_path(path));
  if (!specifier) return UITableViewCell();
  const PSTableCell taken = take_cell(specifier);
  measured_cells_.erase(objc::borrow(specifier));
  if (!taken) return UITableViewCell();
  taken.refreshCellContentsWithSpecifier(specifier);
  mark_choice(taken);
  return taken;
}

PSTableCell ListController::cachedCell(const PSSpecifier& specifier) {
  if (!table_) return PSTableCell();
  return objc::cast_or_nil<PSTableCell>(uikit::TableView::of(table_).cell_for_row(path_of(specifier)));
}

// The delegate.
double ListController::heightForRow(const UITableView& table, const NSIndexPath& path) {
  const PSSpecifier specifier = specifier_at(uikit::row_path(path));
  if (!specifier) return UITableViewAutomaticDimension;
  if (specifier.propertyForKey("cellClass"_ns)) {
    // Such a cell may know its height, or write it into its row when it is made.
    PSTableCell cell = cachedCell(specifier);
    if (!cell || cell.specifier() != specifier) {
      cell = take_cell(specifier);
      measured_cells_[objc::borrow(specifier)] = cell;
    }
    const double width = table.bounds().size.width - 2 * uikit::TableView::of(table).side_margin();
    if (const auto height = preferred_height(cell, width, table)) return *height;
  }
  const NSObject height = specifier.propertyForKey("height"_ns);
  if (height && objc::responds_to(height, objc::selector<"doubleValue">())) {
    const auto points = objc::send<"doubleValue", double>(height);
    if (points > 0) return points;
  }
  return UITableViewAutomaticDimension;
}

UIView ListController::viewForHeader(const UITableView&, NSInteger section) {
  return section_view(group_head(section), "headerCellClass"_ns);
}

UIView ListController::viewForFooter(const UITableView& table, NSInteger section) {
  const PSSpecifier head = group_head(section);
  if (const UIView own = section_view(head, "footerCellClass"_ns)) return own;
  const NSObject alignment = head ? head.propertyForKey("footerAlignment"_ns) : NSObject();
  const NSString text = head ? text_property(head, "footerText"_ns) : NSString();
  if (!text || !alignment || !objc::responds_to(alignment, objc::selector<"integerValue">())) {
    return UIView();
  }
  return aligned_footer(table, text, objc::send<"integerValue", NSInteger>(alignment));
}

double ListController::heightForHeader(const UITableView& table, NSInteger section) {
  return section_height(section_view(group_head(section), "headerCellClass"_ns), table);
}

double ListController::heightForFooter(const UITableView& table, NSInteger section) {
  const PSSpecifier head = group_head(section);
  if (!head || !text_property(head, "footerCellClass"_ns)) return UITableViewAutomaticDimension;
  return section_height(section_view(head, "footerCellClass"_ns), table);
}

bool ListController::shouldHighlightRow(const UITableView&, const NSIndexPath& path) {
  const PSSpecifier specifier = specifier_at(uikit::row_path(path));
  return specifier && acts(specifier);
}

void ListController::didSelectRow(const UITableView& table, const NSIndexPath& path) {
  const PSSpecifier specifier = specifier_at(uikit::row_path(path));
  if (!specifier || !acts(specifier)) return;
  const PSListController kept = self();
  act(specifier);
  // A row that opened a page stays marked until the page is left.
  const CellType type = type_of(specifier);
  if (type != CellType::Link && type != CellType::LinkList && type != CellType::Giant &&
      type != CellType::GiantIcon) {
    table.deselectRow(path, true);
  }
}

// One of several: rows of a radio group, whose head holds the value.
PSSpecifier ListController::radio_group_of(const PSSpecifier& specifier) {
  const uikit::RowPath path = path_of(specifier);
  const PSSpecifier head = path.section >= 0 ? group_head(path.section) : PSSpecifier();
  return head && is_set(head, "isRadioGroup"_ns) ? head : PSSpecifier();
}

void ListController::mark_choice(const PSTableCell& cell) {
  const PSSpecifier specifier = cell.specifier();
  if (type_of(specifier) != CellType::ListItem) return;
  const PSSpecifier head = radio_group_of(specifier);
  const NSObject value = specifier.propertyForKey("value"_ns);
  const NSObject current = head ? head.performGetter() : NSObject();
  cell.setChecked(value && current && current.isEqual(value));
}

void ListController::choose(const PSSpecifier& specifier) {
  const PSSpecifier head = radio_group_of(specifier);
  if (!head) return;
  head.performSetterWithValue(specifier.propertyForKey("value"_ns));
  for (const UITableViewCell& shown : uikit::TableView::of(table_).visible_cells()) {
    if (const auto cell = objc::cast_or_nil<PSTableCell>(shown)) mark_choice(cell);
  }
}

void ListController::perform_action(const PSSpecifier& specifier, objc::Selector action) {
  const NSObject target = specifier.target() ? specifier.target() : NSObject(self());
  if (!may_perform(target, action, MethodRole::Action)) return;
  objc::perform<void>(target, action, specifier);
}

void ListController::press(const PSSpecifier& specifier) {
  const auto action = specifier.action();
  if (!has_confirmation(specifier)) return perform_action(specifier, action);
  const auto confirmed_name = text_property(specifier, "confirmationAction"_ns);
  const objc::Selector confirmed =
      confirmed_name ? objc::Selector::named(confirmed_name.utf8().c_str()) : action;
  const PSListController kept = self();
  confirm(specifier, [kept, specifier, confirmed] { of(kept).perform_action(specifier, confirmed); }, {});
}

void ListController::open(const PSSpecifier& specifier) {
  if (const UIViewController page = self().controllerForSpecifier(specifier)) {
    self().pushController(page, true);
  } else if (const auto action = specifier.action()) {
    perform_action(specifier, action);
  }
}

void ListController::scroll_to(const PSSpecifier& specifier, bool animated) {
  const uikit::RowPath path = path_of(specifier);
  if (path.section >= 0 && table_) uikit::TableView::of(table_).scroll_to_row(path, animated);
}

// The list's changes, as the table is to show them. Heads make sections, which are shown anew.
void ListController::insert_row(const ListChange& change) {
  const uikit::RowPath path = path_of(change.specifier);
  uikit::TableView::of(table_).insert_rows({path}, change.animated);
}

void ListController::remove_row(const ListChange& change) {
  // Where it was: behind the row that is now before its place.
  measured_cells_.erase(objc::borrow(change.specifier));
  uikit::RowPath path{0, 0};
  if (change.index > 0) {
    getGroupRow(&path.section, &path.row, specifierAtIndex(static_cast<NSInteger>(change.index) - 1));
    ++path.row;
  }
  uikit::TableView::of(table_).delete_rows({path}, change.animated);
}

void ListController::replace_row(const ListChange& change) {
  if (const PSTableCell cell = cachedCell(change.specifier)) {
    cell.refreshCellContentsWithSpecifier(change.specifier);
    mark_choice(cell);
    uikit::TableView::of(table_).heights_changed();
  }
}

void ListController::show_change(const ListChange& change) {
  const bool head = change.specifier && type_of(change.specifier) == CellType::Group;
  const bool first_row_without_head = change.index == 0 && change.kind != ListChange::Kind::Replace;
  if (change.kind == ListChange::Kind::Reload || head || first_row_without_head) {
    measured_cells_.clear();
    table_.reloadData();
    return;
  }
  switch (change.kind) {
    case ListChange::Kind::Insert:
      return insert_row(change);
    case ListChange::Kind::Remove:
      return remove_row(change);
    default:
      return replace_row(change);
  }
}

void ListController::act(const PSSpecifier& specifier) {
  switch (type_of(specifier)) {
    case CellType::Button:
      return press(specifier);
    case CellType::ListItem:
      choose(specifier);
      break;
    case CellType::EditText:
    case CellType::SecureEditText:
    case CellType::EditTextView:
      if (const PSTableCell cell = cachedCell(specifier)) cell.becomeFirstResponder();
      return;
    case CellType::Link:
    case CellType::LinkList:
    case CellType::Giant:
    case CellType::GiantIcon:
      return open(specifier);
    default:
      break;
  }
  perform_action(specifier, specifier.action());
}

UIViewController ListController::page_for(const PSSpecifier& specifier) {
  const CellType type = type_of(specifier);
  auto cls = specifier.detailControllerClass();
  if (!cls && type == CellType::LinkList) cls = objc::class_for<PSListItemsController>();
  if (!cls || !cls.is_subclass_of(objc::class_for<UIViewController>())) return UIViewController();
  const auto page = objc::allocate<UIViewController>(cls).init();
  if (objc::responds_to(page, objc::selector<"setSpecifier:">())) {
    page.as<PSViewController>().setSpecifier(specifier);
  }
  return page;
}

void define_list_table(objc::Class<PSListController>& page) {
  page.method<"loadView", &ListController::loadView>()
      .method<"tableStyle", &ListController::tableStyle>()
      .getter<"table", &ListController::table_>()
      .method<"viewWillAppear:", &ListController::viewWillAppear>()
      .method<"numberOfSectionsInTableView:", &ListController::numberOfSections>()
      .method<"tableView:numberOfRowsInSection:", &ListController::numberOfRows>()
      .method<"tableView:titleForHeaderInSection:", &ListController::titleForHeader>()
      .method<"tableView:titleForFooterInSection:", &ListController::titleForFooter>()
      .method<"tableView:cellForRowAtIndexPath:", &ListController::cellForRow>()
      .method<"tableView:heightForRowAtIndexPath:", &ListController::heightForRow>()
      .method<"tableView:viewForHeaderInSection:", &ListController::viewForHeader>()
      .method<"tableView:viewForFooterInSection:", &ListController::viewForFooter>()
      .method<"tableView:heightForHeaderInSection:", &ListController::heightForHeader>()
      .method<"tableView:heightForFooterInSection:", &ListController::heightForFooter>()
      .method<"tableView:shouldHighlightRowAtIndexPath:", &ListController::shouldHighlightRow>()
      .method<"tableView:didSelectRowAtIndexPath:", &ListController::didSelectRow>()
      .method<"cachedCellForSpecifier:", &ListController::cachedCell>()
      .method<"controllerForSpecifier:", &ListController::page_for>()
      .method<"scrollToSpecifier:animated:", &ListController::scroll_to>();
}

}  // namespace wispen::preferences
