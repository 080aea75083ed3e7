// host/preferences/list_table.cpp: a page of specifiers as a table: its source, its delegate, what taps do.

#include <algorithm>
#include <utility>

#include "host/preferences/choice_page.hpp"
#include "host/preferences/confirmation.hpp"
#include "host/preferences/list_state.hpp"
#include "host/preferences/named_method.hpp"
#include "host/uikit/controllers/navigation_item.hpp"

namespace wispen::preferences {

namespace {

constexpr double kAutomatic = uikit::TableView::kAutomaticHeight;

CellType type_of(const PSSpecifier& specifier) { return static_cast<CellType>(specifier.cellType()); }

NSString text_property(const PSSpecifier& specifier, const NSString& key) {
  return objc::cast_or_nil<NSString>(specifier.propertyForKey(key));
}

/// The height that a cell or a header of a page's own class asks for; nothing where it does not care.
std::optional<double> preferred_height(const uikit::View& view, double width, const uikit::TableView& table) {
  if (objc::responds_to(view, objc::selector<"preferredHeightForWidth:">())) {
    return objc::send<"preferredHeightForWidth:", double>(view, width);
  }
  if (objc::responds_to(view, objc::selector<"preferredHeightForWidth:inTableView:">())) {
    return objc::send<"preferredHeightForWidth:inTableView:", double>(view, width, table);
  }
  return std::nullopt;
}

/// A view of the class that the group names for its head or foot; nil where it names none.
uikit::View section_view(const PSSpecifier& head, const NSString& key) {
  const auto name = head ? text_property(head, key) : NSString();
  const auto cls = name ? objc::ClassRef::named(name.utf8().c_str()) : objc::ClassRef();
  if (!cls || !cls.is_subclass_of(objc::class_for<uikit::View>())) return uikit::View();
  const auto raw = reinterpret_cast<objc::abi::id>(cls.borrow());
  objc::Allocated<uikit::View> blank(objc::abi::call<objc::abi::id>(raw, objc::selector<"alloc">().borrow()));
  if (cls.instances_respond_to(objc::selector<"initWithSpecifier:">())) {
    return std::move(blank).initialize<"initWithSpecifier:">(head);
  }
  return std::move(blank).initialize<"initWithFrame:">(Rect{});
}

}  // namespace

struct ListTable {
  using Self = ListController;

  static void loadView(const Self& self) {
    const uikit::View view = uikit::View::make({{0, 0}, {320, 480}});
    view.setBackgroundColor(UIColor::systemGroupedBackgroundColor());
    const auto style = objc::send<"tableStyle", NSInteger>(self);
    const uikit::TableView table =
        uikit::TableView::make(view.bounds(), static_cast<uikit::TableStyle>(style));
    constexpr NSUInteger kFlexibleSize = 2 | 16;
    table.setAutoresizingMask(kFlexibleSize);
    table.setBackgroundColor(UIColor::systemGroupedBackgroundColor());
    view.addSubview(table);
    self.parts().table = table;
    objc::send<"setView:">(self, view);
    table.set_data_source(self);
    table.set_delegate(self);
    // Only the list of Settings itself has its title in large letters.
    objc::send<"setLargeTitleDisplayMode:">(self.navigationItem(), NSInteger{2});
    self.shown();  // gives the page its title
  }
  static NSInteger tableStyle(const Self&) { return static_cast<NSInteger>(uikit::TableStyle::InsetGrouped); }

  static void viewWillAppear(const Self& self, bool animated) {
    objc::send_super<"viewWillAppear:">(self, objc::class_for<PageController>(), animated);
    const uikit::TableView table = self.table();
    if (!table) return;
    objc::send<"deselectRowAtIndexPath:animated:">(
        table, objc::send<"indexPathForSelectedRow", NSObject>(table), animated);
    refresh_shown_rows(self);
  }
  /// A page above may have changed what they show.
  static void refresh_shown_rows(const Self& self) {
    for (const uikit::TableCell& shown : self.table().visible_cells()) {
      const auto cell = objc::cast_or_nil<Cell>(shown);
      if (cell && cell.specifier()) {
        objc::send<"refreshCellContentsWithSpecifier:">(cell, cell.specifier());
        mark_choice(self, cell);
      }
    }
  }

  // The source.
  static NSInteger numberOfSections(const Self& self, const uikit::TableView&) {
    return objc::send<"numberOfGroups", NSInteger>(self);
  }
  static NSInteger numberOfRows(const Self& self, const uikit::TableView&, NSInteger section) {
    return objc::send<"rowsForGroup:", NSInteger>(self, section);
  }
  static NSString titleForHeader(const Self& self, const uikit::TableView&, NSInteger section) {
    const PSSpecifier head = self.group_head(section);
    return head ? head.name() : NSString();
  }
  static NSString titleForFooter(const Self& self, const uikit::TableView&, NSInteger section) {
    const PSSpecifier head = self.group_head(section);
    return head ? text_property(head, "footerText"_ns) : NSString();
  }

  /// One that was made for this row, or that another has left, or a new one.
  static Cell take_cell(const Self& self, const PSSpecifier& specifier) {
    auto& measured = self.parts().measured_cells;
    if (const auto found = measured.find(objc::borrow(specifier)); found != measured.end()) {
      return std::exchange(found->second, Cell());
    }
    auto cell = objc::cast_or_nil<Cell>(objc::send<"dequeueReusableCellWithIdentifier:", NSObject>(
        self.table(), Cell::reuse_identifier(specifier)));
    return cell ? cell : Cell::make(specifier);
  }
  static uikit::TableCell cellForRow(const Self& self, const uikit::TableView&, const NSObject& path) {
    const PSSpecifier specifier = self.specifier_at(uikit::row_path(path));
    if (!specifier) return uikit::TableCell();
    const Cell taken = take_cell(self, specifier);
    self.parts().measured_cells.erase(objc::borrow(specifier));
    if (!taken) return uikit::TableCell();
    objc::send<"refreshCellContentsWithSpecifier:">(taken, specifier);
    mark_choice(self, taken);
    return taken;
  }
  static Cell cachedCell(const Self& self, const PSSpecifier& specifier) {
    const uikit::TableView table = self.table();
    return table ? objc::cast_or_nil<Cell>(table.cell_for_row(self.path_of(specifier))) : Cell();
  }

  // The delegate.
  static double heightForRow(const Self& self, const uikit::TableView& table, const NSObject& path) {
    const PSSpecifier specifier = self.specifier_at(uikit::row_path(path));
    if (!specifier) return kAutomatic;
    if (specifier.propertyForKey("cellClass"_ns)) {
      // Such a cell may know its height, or write it into its row when it is made.
      Cell cell = cachedCell(self, specifier);
      if (!cell || cell.specifier() != specifier) {
        cell = take_cell(self, specifier);
        self.parts().measured_cells[objc::borrow(specifier)] = cell;
      }
      const double width = table.bounds().width() - 2 * table.side_margin();
      if (const auto height = preferred_height(cell, width, table)) return *height;
    }
    const NSObject height = specifier.propertyForKey("height"_ns);
    if (height && objc::responds_to(height, objc::selector<"doubleValue">())) {
      const auto points = objc::send<"doubleValue", double>(height);
      if (points > 0) return points;
    }
    return kAutomatic;
  }
  static uikit::View viewForHeader(const Self& self, const uikit::TableView&, NSInteger section) {
    return section_view(self.group_head(section), "headerCellClass"_ns);
  }
  static uikit::View viewForFooter(const Self& self, const uikit::TableView& table, NSInteger section) {
    const PSSpecifier head = self.group_head(section);
    if (const uikit::View own = section_view(head, "footerCellClass"_ns)) return own;
    const NSObject alignment = head ? head.propertyForKey("footerAlignment"_ns) : NSObject();
    const NSString text = head ? text_property(head, "footerText"_ns) : NSString();
    if (!text || !alignment || !objc::responds_to(alignment, objc::selector<"integerValue">())) {
      return uikit::View();
    }
    return aligned_footer(table, text, objc::send<"integerValue", NSInteger>(alignment));
  }
  static uikit::View aligned_footer(const uikit::TableView& table, const NSString& text,
                                    NSInteger alignment) {
    const uikit::Label label = uikit::Label::make();
    label.setNumberOfLines(0);
    label.setFont(objc::send<"preferredFontForTextStyle:", UIFont>(objc::class_for<UIFont>(),
                                                                   "UICTFontTextStyleFootnote"_ns));
    label.setTextColor(UIColor::secondaryLabelColor());
    label.setText(text);
    label.setTextAlignment(alignment);
    const double width = table.bounds().width() - 2 * table.side_margin();
    const double room = std::max(0.0, width - 2 * uikit::kCellMargin);
    constexpr double kTop = 7;
    label.setFrame({{uikit::kCellMargin, kTop}, {room, label.sizeThatFits({room, 0}).height}});
    constexpr NSUInteger kFlexibleWidth = 2;
    label.setAutoresizingMask(kFlexibleWidth);
    const uikit::View holder = uikit::View::make({{0, 0}, {width, label.frame().max_y()}});
    holder.addSubview(label);
    return holder;
  }
  static double section_height(const uikit::View& view, const uikit::TableView& table) {
    if (!view) return kAutomatic;
    const double width = table.bounds().width() - 2 * table.side_margin();
    return preferred_height(view, width, table)
        .value_or(view.bounds().height() > 0 ? view.bounds().height() : kAutomatic);
  }
  static double heightForHeader(const Self& self, const uikit::TableView& table, NSInteger section) {
    return section_height(section_view(self.group_head(section), "headerCellClass"_ns), table);
  }
  static double heightForFooter(const Self& self, const uikit::TableView& table, NSInteger section) {
    const PSSpecifier head = self.group_head(section);
    if (!head || !text_property(head, "footerCellClass"_ns)) return kAutomatic;
    return section_height(section_view(head, "footerCellClass"_ns), table);
  }

  static bool acts(const PSSpecifier& specifier) {
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
        return objc::send<"action", objc::Selector>(specifier) ? true : false;
    }
  }
  static bool shouldHighlightRow(const Self& self, const uikit::TableView&, const NSObject& path) {
    const PSSpecifier specifier = self.specifier_at(uikit::row_path(path));
    return specifier && acts(specifier);
  }
  static void didSelectRow(const Self& self, const uikit::TableView& table, const NSObject& path) {
    const PSSpecifier specifier = self.specifier_at(uikit::row_path(path));
    if (!specifier || !acts(specifier)) return;
    const Self kept = self;
    kept.act(specifier);
    // A row that opened a page stays marked until the page is left.
    const CellType type = type_of(specifier);
    if (type != CellType::Link && type != CellType::LinkList && type != CellType::Giant &&
        type != CellType::GiantIcon) {
      objc::send<"deselectRowAtIndexPath:animated:">(table, path, true);
    }
  }

  // One of several: rows of a radio group, whose head holds the value.
  static PSSpecifier radio_group_of(const Self& self, const PSSpecifier& specifier) {
    const uikit::RowPath path = self.path_of(specifier);
    const PSSpecifier head = path.section >= 0 ? self.group_head(path.section) : PSSpecifier();
    return head && is_set(head, "isRadioGroup"_ns) ? head : PSSpecifier();
  }
  static void mark_choice(const Self& self, const Cell& cell) {
    const PSSpecifier specifier = cell.specifier();
    if (type_of(specifier) != CellType::ListItem) return;
    const PSSpecifier head = radio_group_of(self, specifier);
    const NSObject value = specifier.propertyForKey("value"_ns);
    const NSObject current = head ? head.performGetter() : NSObject();
    objc::send<"setChecked:">(cell, value && current && current.isEqual(value));
  }
  static void choose(const Self& self, const PSSpecifier& specifier) {
    const PSSpecifier head = radio_group_of(self, specifier);
    if (!head) return;
    head.performSetterWithValue(specifier.propertyForKey("value"_ns));
    for (const uikit::TableCell& shown : self.table().visible_cells()) {
      if (const auto cell = objc::cast_or_nil<Cell>(shown)) mark_choice(self, cell);
    }
  }

  static void perform_action(const Self& self, const PSSpecifier& specifier, objc::Selector action) {
    const NSObject target = specifier.target() ? specifier.target() : NSObject(self);
    if (!may_perform(target, action, MethodRole::Action)) return;
    objc::perform<void>(target, action, specifier);
  }
  static void press(const Self& self, const PSSpecifier& specifier) {
    const auto action = objc::send<"action", objc::Selector>(specifier);
    if (!has_confirmation(specifier)) return perform_action(self, specifier, action);
    const auto confirmed_name = text_property(specifier, "confirmationAction"_ns);
    const objc::Selector confirmed =
        confirmed_name ? objc::Selector::named(confirmed_name.utf8().c_str()) : action;
    const Self kept = self;
    confirm(specifier, [kept, specifier, confirmed] { perform_action(kept, specifier, confirmed); }, {});
  }

  static void open(const Self& self, const PSSpecifier& specifier) {
    const auto page = objc::send<"controllerForSpecifier:", uikit::ViewController>(self, specifier);
    if (page) {
      objc::send<"pushController:animate:">(self, page, true);
    } else if (const auto action = objc::send<"action", objc::Selector>(specifier)) {
      perform_action(self, specifier, action);
    }
  }

  static void scroll_to(const Self& self, const PSSpecifier& specifier, bool animated) {
    const uikit::RowPath path = self.path_of(specifier);
    if (path.section >= 0 && self.table()) self.table().scroll_to_row(path, animated);
  }

  // The list's changes, as the table is to show them. Heads make sections, which are shown anew.
  static void insert_row(const Self& self, const ListChange& change) {
    const uikit::RowPath path = self.path_of(change.specifier);
    self.table().insert_rows({path}, change.animated);
  }
  static void remove_row(const Self& self, const ListChange& change) {
    // Where it was: behind the row that is now before its place.
    self.parts().measured_cells.erase(objc::borrow(change.specifier));
    uikit::RowPath path{0, 0};
    if (change.index > 0) {
      self.getGroupRow(&path.section, &path.row,
                       self.specifierAtIndex(static_cast<NSInteger>(change.index) - 1));
      ++path.row;
    }
    self.table().delete_rows({path}, change.animated);
  }
  static void replace_row(const Self& self, const ListChange& change) {
    if (const Cell cell = cachedCell(self, change.specifier)) {
      objc::send<"refreshCellContentsWithSpecifier:">(cell, change.specifier);
      mark_choice(self, cell);
      self.table().heights_changed();
    }
  }
};

uikit::TableView ListController::table() const { return parts().table; }

void ListController::show_change(const ListChange& change) const {
  const bool head = change.specifier && type_of(change.specifier) == CellType::Group;
  const bool first_row_without_head = change.index == 0 && change.kind != ListChange::Kind::Replace;
  if (change.kind == ListChange::Kind::Reload || head || first_row_without_head) {
    parts().measured_cells.clear();
    table().reloadData();
    return;
  }
  switch (change.kind) {
    case ListChange::Kind::Insert:
      return ListTable::insert_row(*this, change);
    case ListChange::Kind::Remove:
      return ListTable::remove_row(*this, change);
    default:
      return ListTable::replace_row(*this, change);
  }
}

void ListController::act(const PSSpecifier& specifier) const {
  switch (type_of(specifier)) {
    case CellType::Button:
      return ListTable::press(*this, specifier);
    case CellType::ListItem:
      ListTable::choose(*this, specifier);
      break;
    case CellType::EditText:
    case CellType::SecureEditText:
    case CellType::EditTextView:
      objc::send<"becomeFirstResponder", bool>(ListTable::cachedCell(*this, specifier));
      return;
    case CellType::Link:
    case CellType::LinkList:
    case CellType::Giant:
    case CellType::GiantIcon:
      return ListTable::open(*this, specifier);
    default:
      break;
  }
  ListTable::perform_action(*this, specifier, objc::send<"action", objc::Selector>(specifier));
}

uikit::ViewController ListController::page_for(const PSSpecifier& specifier) const {
  const CellType type = type_of(specifier);
  auto cls = objc::send<"detailControllerClass", objc::ClassRef>(specifier);
  if (!cls && type == CellType::LinkList) cls = objc::class_for<ChoicePage>();
  if (!cls || !cls.is_subclass_of(objc::class_for<uikit::ViewController>())) return uikit::ViewController();
  const auto page = objc::send<"new", uikit::ViewController>(cls);
  if (objc::responds_to(page, objc::selector<"setSpecifier:">())) {
    objc::send<"setSpecifier:">(page, specifier);
  }
  return page;
}

void ListController::define_table(objc::Class<ListController>& page) {
  using M = ListTable;
  page.method<"loadView", &M::loadView>()
      .method<"tableStyle", &M::tableStyle>()
      .method<"table", &ListController::table>()
      .method<"viewWillAppear:", &M::viewWillAppear>()
      .method<"numberOfSectionsInTableView:", &M::numberOfSections>()
      .method<"tableView:numberOfRowsInSection:", &M::numberOfRows>()
      .method<"tableView:titleForHeaderInSection:", &M::titleForHeader>()
      .method<"tableView:titleForFooterInSection:", &M::titleForFooter>()
      .method<"tableView:cellForRowAtIndexPath:", &M::cellForRow>()
      .method<"tableView:heightForRowAtIndexPath:", &M::heightForRow>()
      .method<"tableView:viewForHeaderInSection:", &M::viewForHeader>()
      .method<"tableView:viewForFooterInSection:", &M::viewForFooter>()
      .method<"tableView:heightForHeaderInSection:", &M::heightForHeader>()
      .method<"tableView:heightForFooterInSection:", &M::heightForFooter>()
      .method<"tableView:shouldHighlightRowAtIndexPath:", &M::shouldHighlightRow>()
      .method<"tableView:didSelectRowAtIndexPath:", &M::didSelectRow>()
      .method<"cachedCellForSpecifier:", &M::cachedCell>()
      .method<"controllerForSpecifier:", &ListController::page_for>()
      .method<"scrollToSpecifier:animated:", &M::scroll_to>();
}

}  // namespace wispen::preferences
