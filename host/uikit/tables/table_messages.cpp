// host/uikit/tables/table_messages.cpp: UITableView's table of messages.

#include "host/uikit/events/focus.hpp"
#include "host/uikit/events/key.hpp"
#include "host/uikit/tables/table_methods.hpp"

namespace wispen::uikit {

void TableMethods::set_selected(const Self& self, RowPath path, bool animated) {
  TableState& state = self.table();
  if (state.selected) {
    const TableCell old = self.cell_for_row(*state.selected);
    if (old) objc::send<"setSelected:animated:">(old, false, animated);
  }
  state.selected.reset();
  if (path.section < 0) return;
  state.selected = path;
  if (const TableCell cell = self.cell_for_row(path))
    objc::send<"setSelected:animated:">(cell, true, animated);
}

namespace {

using Self = TableView;

std::vector<RowPath> paths_of(const NSArray& index_paths) {
  std::vector<RowPath> paths;
  for (NSUInteger i = 0, count = index_paths.count(); i < count; ++i) {
    paths.push_back(row_path(index_paths.objectAtIndex(i)));
  }
  return paths;
}

struct Messages {
  static Self initWithStyle(objc::Allocated<Self> self, const Rect& frame, NSInteger style) {
    Self table = std::move(self).initialize_super<"initWithFrame:">(frame);
    if (!table) return table;
    table.table().style = static_cast<TableStyle>(style);
    table.setBackgroundColor(style == 0 ? UIColor::systemBackgroundColor()
                                        : UIColor::systemGroupedBackgroundColor());
    objc::send<"setAlwaysBounceVertical:">(table, true);
    return table;
  }
  static Self initWithFrame(objc::Allocated<Self> self, const Rect& frame) {
    return std::move(self).initialize<"initWithFrame:style:">(frame, NSInteger{0});
  }
  static void layoutSubviews(const Self& self) {
    objc::send_super<"layoutSubviews">(self, objc::class_for<ScrollView>());
    TableMethods::tile(self);
    // The content's size may have come out otherwise, and with it where it can rest.
    if (!self.is_moving()) self.setContentOffset(self.nearest_resting_offset(self.contentOffset()));
  }

  static NSObject dataSource(const Self& self) { return self.table().data_source.lock(); }
  static NSInteger style(const Self& self) { return static_cast<NSInteger>(self.table().style); }
  static double rowHeight(const Self& self) { return self.table().row_height; }
  static void setRowHeight(const Self& self, double height) {
    self.table().row_height = height;
    self.heights_changed();
  }
  static View header(const Self& self) { return self.table().header; }
  static void setHeader(const Self& self, const View& view) {
    if (self.table().header) self.table().header.removeFromSuperview();
    self.table().header = view;
    self.heights_changed();
  }
  static View footer(const Self& self) { return self.table().footer; }
  static void setFooter(const Self& self, const View& view) {
    if (self.table().footer) self.table().footer.removeFromSuperview();
    self.table().footer = view;
    self.heights_changed();
  }
  static NSInteger separatorStyle(const Self& self) { return self.table().separator_style; }
  static void setSeparatorStyle(const Self& self, NSInteger style) {
    self.table().separator_style = style;
    self.setNeedsLayout();
  }
  static UIColor separatorColor(const Self& self) { return self.table().separator_colour; }
  static void setSeparatorColor(const Self& self, const UIColor& colour) {
    self.table().separator_colour = colour;
    self.setNeedsDisplay();
  }
  static bool allowsSelection(const Self& self) { return self.table().allows_selection; }
  static void setAllowsSelection(const Self& self, bool allows) { self.table().allows_selection = allows; }

  static NSInteger numberOfSections(const Self& self) {
    if (!self.table().loaded) TableMethods::count_items(self);
    return static_cast<NSInteger>(self.table().section_starts.size());
  }
  static NSInteger numberOfRows(const Self& self, NSInteger section) {
    if (!self.table().loaded) TableMethods::count_items(self);
    const auto footer = TableMethods::item_of(self, {section, TableItem::kFooter});
    const auto header = TableMethods::item_of(self, {section, TableItem::kHeader});
    return footer > header ? static_cast<NSInteger>(footer - header - 1) : 0;
  }

  static void registerClass(const Self& self, objc::ClassRef cls, const NSString& identifier) {
    self.table().registered[identifier.utf8()] = cls;
  }
  static TableCell dequeue(const Self& self, const NSString& identifier) {
    if (!identifier) return TableCell();
    auto& pool = self.table().reusable[identifier.utf8()];
    if (!pool.empty()) {
      TableCell cell = std::move(pool.back());
      pool.pop_back();
      objc::send<"prepareForReuse">(cell);
      return cell;
    }
    const auto registered = self.table().registered.find(identifier.utf8());
    if (registered == self.table().registered.end() || !registered->second) return TableCell();
    const auto raw = reinterpret_cast<objc::abi::id>(registered->second.borrow());
    return objc::Allocated<TableCell>(objc::abi::call<objc::abi::id>(raw, objc::selector<"alloc">().borrow()))
        .initialize<"initWithStyle:reuseIdentifier:">(NSInteger{0}, identifier);
  }
  static TableCell dequeueForPath(const Self& self, const NSString& identifier, const NSObject&) {
    return dequeue(self, identifier);
  }

  static void registerSectionClass(const Self& self, objc::ClassRef cls, const NSString& identifier) {
    self.table().registered_sections[identifier.utf8()] = cls;
  }
  static HeaderFooterView dequeueSection(const Self& self, const NSString& identifier) {
    if (!identifier) return HeaderFooterView();
    auto& pool = self.table().reusable_sections[identifier.utf8()];
    if (!pool.empty()) {
      HeaderFooterView view = std::move(pool.back());
      pool.pop_back();
      objc::send<"prepareForReuse">(view);
      return view;
    }
    const auto registered = self.table().registered_sections.find(identifier.utf8());
    if (registered == self.table().registered_sections.end() || !registered->second)
      return HeaderFooterView();
    const auto raw = reinterpret_cast<objc::abi::id>(registered->second.borrow());
    return objc::Allocated<HeaderFooterView>(
               objc::abi::call<objc::abi::id>(raw, objc::selector<"alloc">().borrow()))
        .initialize<"initWithReuseIdentifier:">(identifier);
  }

  static TableCell cellForRow(const Self& self, const NSObject& path) {
    return self.cell_for_row(row_path(path));
  }
  static NSObject indexPathForCell(const Self& self, const TableCell& cell) {
    const auto path = self.path_of(cell);
    return path ? index_path(*path) : NSObject();
  }
  static NSArray visibleCells(const Self& self) {
    NSMutableArray all = NSMutableArray::array();
    for (const TableCell& cell : self.visible_cells()) all.addObject(cell);
    return all;
  }
  static NSArray visiblePaths(const Self& self) {
    NSMutableArray all = NSMutableArray::array();
    for (const auto& [path, cell] : self.table().cells) all.addObject(index_path(path));
    return all;
  }
  static View headerView(const Self& self, NSInteger section) {
    const auto found = self.table().headers.find(section);
    return found != self.table().headers.end() ? found->second : View();
  }
  static View footerView(const Self& self, NSInteger section) {
    const auto found = self.table().footers.find(section);
    return found != self.table().footers.end() ? found->second : View();
  }
  static Rect rectForRow(const Self& self, const NSObject& path) { return self.rect_for_row(row_path(path)); }
  static Rect rectForHeader(const Self& self, NSInteger section) {
    return self.rect_for_row({section, TableItem::kHeader});
  }

  static void insertRows(const Self& self, const NSArray& paths, NSInteger animation) {
    self.insert_rows(paths_of(paths), animation != 5);  // 5 is none
  }
  static void deleteRows(const Self& self, const NSArray& paths, NSInteger animation) {
    self.delete_rows(paths_of(paths), animation != 5);
  }
  static void reloadRows(const Self& self, const NSArray& paths, NSInteger) {
    self.reload_rows(paths_of(paths));
  }
  static void performUpdates(const Self& self, const objc::Block<void()>& updates,
                             const objc::Block<void(bool)>& completion) {
    self.begin_updates();
    updates();
    self.end_updates();
    completion(true);
  }

  static NSObject indexPathForSelectedRow(const Self& self) {
    return self.table().selected ? index_path(*self.table().selected) : NSObject();
  }
  static void selectRow(const Self& self, const NSObject& path, bool animated, NSInteger position) {
    TableMethods::set_selected(self, row_path(path), animated);
    if (path && position != 0) self.scroll_to_row(row_path(path), animated);
  }
  static void deselectRow(const Self& self, const NSObject& path, bool animated) {
    if (self.table().selected && *self.table().selected == row_path(path)) {
      TableMethods::set_selected(self, {-1, -1}, animated);
    }
  }
  static void scrollToRow(const Self& self, const NSObject& path, NSInteger, bool animated) {
    self.scroll_to_row(row_path(path), animated);
  }
  static void traitCollectionDidChange(const Self& self, const NSObject&) {
    TableState& state = self.table();
    for (auto* const views : {&state.headers, &state.footers}) {
      for (const auto& [section, view] : *views) {
        if (view) view.removeFromSuperview();
      }
      views->clear();
    }
    self.heights_changed();
  }
  static bool handleKey(const Self& self, const Key& key) {
    const View focused = focused_view();
    const bool inside = focused && focused.isDescendantOfView(self);
    if (inside && (key.code() == KeyCode::Down || key.code() == KeyCode::Up)) {
      return move_focus(key.code() == KeyCode::Down);
    }
    return objc::send_super<"_handleKey:", bool>(self, objc::class_for<ScrollView>(), key);
  }
};

}  // namespace

void TableView::define() {
  using M = Messages;
  define_index_path();
  objc::Class<TableView> table;
  table.state<TableState>()
      .initializer<"initWithFrame:style:", &M::initWithStyle>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .method<"layoutSubviews", &M::layoutSubviews>()
      .method<"style", &M::style>()
      .method<"dataSource", &M::dataSource>()
      .method<"setDataSource:", &TableView::set_data_source>()
      .method<"setDelegate:", &TableView::set_delegate>()
      .method<"rowHeight", &M::rowHeight>()
      .method<"setRowHeight:", &M::setRowHeight>()
      .method<"tableHeaderView", &M::header>()
      .method<"setTableHeaderView:", &M::setHeader>()
      .method<"tableFooterView", &M::footer>()
      .method<"setTableFooterView:", &M::setFooter>()
      .method<"separatorStyle", &M::separatorStyle>()
      .method<"setSeparatorStyle:", &M::setSeparatorStyle>()
      .method<"separatorColor", &M::separatorColor>()
      .method<"setSeparatorColor:", &M::setSeparatorColor>()
      .method<"allowsSelection", &M::allowsSelection>()
      .method<"setAllowsSelection:", &M::setAllowsSelection>()
      .method<"numberOfSections", &M::numberOfSections>()
      .method<"numberOfRowsInSection:", &M::numberOfRows>()
      .method<"registerClass:forCellReuseIdentifier:", &M::registerClass>()
      .method<"dequeueReusableCellWithIdentifier:", &M::dequeue>()
      .method<"dequeueReusableCellWithIdentifier:forIndexPath:", &M::dequeueForPath>()
      .method<"registerClass:forHeaderFooterViewReuseIdentifier:", &M::registerSectionClass>()
      .method<"dequeueReusableHeaderFooterViewWithIdentifier:", &M::dequeueSection>()
      .method<"reloadData", &TableView::reloadData>();
  table.method<"cellForRowAtIndexPath:", &M::cellForRow>()
      .method<"indexPathForCell:", &M::indexPathForCell>()
      .method<"visibleCells", &M::visibleCells>()
      .method<"indexPathsForVisibleRows", &M::visiblePaths>()
      .method<"headerViewForSection:", &M::headerView>()
      .method<"footerViewForSection:", &M::footerView>()
      .method<"rectForRowAtIndexPath:", &M::rectForRow>()
      .method<"rectForHeaderInSection:", &M::rectForHeader>()
      .method<"beginUpdates", &TableView::begin_updates>()
      .method<"endUpdates", &TableView::end_updates>()
      .method<"performBatchUpdates:completion:", &M::performUpdates>()
      .method<"insertRowsAtIndexPaths:withRowAnimation:", &M::insertRows>()
      .method<"deleteRowsAtIndexPaths:withRowAnimation:", &M::deleteRows>()
      .method<"reloadRowsAtIndexPaths:withRowAnimation:", &M::reloadRows>()
      .method<"indexPathForSelectedRow", &M::indexPathForSelectedRow>()
      .method<"selectRowAtIndexPath:animated:scrollPosition:", &M::selectRow>()
      .method<"deselectRowAtIndexPath:animated:", &M::deselectRow>()
      .method<"scrollToRowAtIndexPath:atScrollPosition:animated:", &M::scrollToRow>()
      .method<"traitCollectionDidChange:", &M::traitCollectionDidChange>()
      .method<"_handleKey:", &M::handleKey>()
      .register_class();
}

}  // namespace wispen::uikit
