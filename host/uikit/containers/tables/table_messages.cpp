// host/uikit/containers/tables/table_messages.cpp: UITableView's table of messages.

#include "host/foundation/arrays.hpp"
#include "host/uikit/containers/tables/scroll_view.hpp"
#include "host/uikit/containers/tables/table_view.hpp"
#include "host/uikit/view/events/focus.hpp"
#include "host/uikit/view/hooks.hpp"

namespace wispen::uikit {

namespace {

std::vector<RowPath> paths_of(const NSArray& index_paths) {
  std::vector<RowPath> paths;
  for (NSUInteger i = 0, count = index_paths.count(); i < count; ++i) {
    paths.push_back(row_path(index_paths.objectAtIndex<NSIndexPath>(i)));
  }
  return paths;
}

}  // namespace

UITableView TableView::initWithStyle(objc::Allocated<UITableView> self, const Rect& frame,
                                     UITableViewStyle style) {
  UITableView table = super_init<"initWithFrame:">(std::move(self), frame);
  if (!table) return table;
  of(table).style_ = style;
  table.setBackgroundColor(style == UITableViewStyle::Plain ? UIColor::systemBackgroundColor()
                                                            : UIColor::systemGroupedBackgroundColor());
  table.setAlwaysBounceVertical(true);
  return table;
}

UITableView TableView::initWithFrame(objc::Allocated<UITableView> self, const Rect& frame) {
  return std::move(self).initialize<"initWithFrame:style:">(frame, UITableViewStyle::Plain);
}

void TableView::layoutSubviews() {
  super<"layoutSubviews">();
  tile();
  // The content's size may have come out otherwise, and with it where it can rest.
  ScrollView& scroll = ScrollView::of(self());
  if (!scroll.is_moving()) self().setContentOffset(scroll.nearest_resting_offset(self().contentOffset()));
}

void TableView::setRowHeight(double height) {
  row_height_ = height;
  heights_changed();
}

void TableView::setHeader(const UIView& view) {
  if (header_) header_.removeFromSuperview();
  header_ = view;
  heights_changed();
}

void TableView::setFooter(const UIView& view) {
  if (footer_) footer_.removeFromSuperview();
  footer_ = view;
  heights_changed();
}

void TableView::setSeparatorStyle(UITableViewCellSeparatorStyle style) {
  separator_style_ = style;
  self().setNeedsLayout();
}

void TableView::setSeparatorColor(const UIColor& colour) {
  separator_colour_ = colour;
  self().setNeedsDisplay();
}

NSInteger TableView::numberOfSections() {
  if (!loaded_) count_items();
  return static_cast<NSInteger>(section_starts_.size());
}

NSInteger TableView::numberOfRows(NSInteger section) {
  if (!loaded_) count_items();
  const auto footer = item_of({section, TableItem::kFooter});
  const auto header = item_of({section, TableItem::kHeader});
  return footer > header ? static_cast<NSInteger>(footer - header - 1) : 0;
}

void TableView::registerClass(objc::ClassRef cls, const NSString& identifier) {
  registered_[identifier.utf8()] = cls;
}

UITableViewCell TableView::dequeue(const NSString& identifier) {
  if (!identifier) return UITableViewCell();
  auto& pool = reusable_[identifier.utf8()];
  if (!pool.empty()) {
    UITableViewCell cell = std::move(pool.back());
    pool.pop_back();
    cell.prepareForReuse();
    return cell;
  }
  const auto registered = registered_.find(identifier.utf8());
  if (registered == registered_.end() || !registered->second) return UITableViewCell();
  return objc::allocate<UITableViewCell>(registered->second)
      .initialize<"initWithStyle:reuseIdentifier:">(UITableViewCellStyle::Default, identifier);
}

UITableViewCell TableView::dequeueForPath(const NSString& identifier, const NSIndexPath&) {
  return dequeue(identifier);
}

void TableView::registerSectionClass(objc::ClassRef cls, const NSString& identifier) {
  registered_sections_[identifier.utf8()] = cls;
}

UITableViewHeaderFooterView TableView::dequeueSection(const NSString& identifier) {
  if (!identifier) return UITableViewHeaderFooterView();
  auto& pool = reusable_sections_[identifier.utf8()];
  if (!pool.empty()) {
    UITableViewHeaderFooterView view = std::move(pool.back());
    pool.pop_back();
    view.prepareForReuse();
    return view;
  }
  const auto registered = registered_sections_.find(identifier.utf8());
  if (registered == registered_sections_.end() || !registered->second) return UITableViewHeaderFooterView();
  return objc::allocate<UITableViewHeaderFooterView>(registered->second)
      .initialize<"initWithReuseIdentifier:">(identifier);
}

UITableViewCell TableView::cellForRow(const NSIndexPath& path) { return cell_for_row(row_path(path)); }

NSIndexPath TableView::indexPathForCell(const UITableViewCell& cell) {
  const auto path = path_of(cell);
  return path ? index_path(*path) : NSIndexPath();
}

NSArray TableView::visibleCells() { return array_of(visible_cells()); }

NSArray TableView::visiblePaths() {
  NSMutableArray all = NSMutableArray::array();
  for (const auto& [path, cell] : cells_) all.addObject(index_path(path));
  return all;
}

UIView TableView::headerView(NSInteger section) {
  const auto found = headers_.find(section);
  return found != headers_.end() ? found->second : UIView();
}

UIView TableView::footerView(NSInteger section) {
  const auto found = footers_.find(section);
  return found != footers_.end() ? found->second : UIView();
}

Rect TableView::rectForHeader(NSInteger section) { return rect_for_row({section, TableItem::kHeader}); }

void TableView::insertRows(const NSArray& paths, UITableViewRowAnimation animation) {
  insert_rows(paths_of(paths), animation != UITableViewRowAnimation::None);
}

void TableView::deleteRows(const NSArray& paths, UITableViewRowAnimation animation) {
  delete_rows(paths_of(paths), animation != UITableViewRowAnimation::None);
}

void TableView::reloadRows(const NSArray& paths, UITableViewRowAnimation) { reload_rows(paths_of(paths)); }

void TableView::performUpdates(const objc::Block<void()>& updates,
                               const objc::Block<void(bool)>& completion) {
  begin_updates();
  updates();
  end_updates();
  completion(true);
}

NSIndexPath TableView::indexPathForSelectedRow() {
  return selected_ ? index_path(*selected_) : NSIndexPath();
}

void TableView::selectRow(const NSIndexPath& path, bool animated, UITableViewScrollPosition position) {
  set_selected(row_path(path), animated);
  if (path && position != UITableViewScrollPosition::None) scroll_to_row(row_path(path), animated);
}

void TableView::deselectRow(const NSIndexPath& path, bool animated) {
  if (selected_ && *selected_ == row_path(path)) {
    set_selected({-1, -1}, animated);
  }
}

void TableView::scrollToRow(const NSIndexPath& path, UITableViewScrollPosition, bool animated) {
  scroll_to_row(row_path(path), animated);
}

void TableView::traitCollectionDidChange(const NSObject&) {
  for (auto* const views : {&headers_, &footers_}) {
    for (const auto& [section, view] : *views) {
      if (view) view.removeFromSuperview();
    }
    views->clear();
  }
  heights_changed();
}

bool TableView::handleKey(const UIKey& key) {
  const UIView focused = focused_view();
  const bool inside = focused && focused.isDescendantOfView(self());
  if (inside && (key.press().code == KeyCode::Down || key.press().code == KeyCode::Up)) {
    return move_focus(key.press().code == KeyCode::Down);
  }
  return super<hooks::kHandleKey, bool>(key);
}

void TableView::set_selected(RowPath path, bool animated) {
  if (selected_) {
    const UITableViewCell old = cell_for_row(*selected_);
    if (old) old.setSelected(false, animated);
  }
  selected_.reset();
  if (path.section < 0) return;
  selected_ = path;
  if (const UITableViewCell cell = cell_for_row(path)) cell.setSelected(true, animated);
}

void define_table_view() {
  define_index_path();
  auto table = objc::Class<UITableView>::implemented_by<TableView>();
  table.initializer<"initWithFrame:style:", &TableView::initWithStyle>()
      .initializer<"initWithFrame:", &TableView::initWithFrame>()
      .method<"layoutSubviews", &TableView::layoutSubviews>()
      .getter<"style", &TableView::style_>()
      .method<"dataSource", &TableView::dataSource>()
      .method<"setDataSource:", &TableView::set_data_source>()
      .method<"setDelegate:", &TableView::set_delegate>()
      .getter<"rowHeight", &TableView::row_height_>()
      .method<"setRowHeight:", &TableView::setRowHeight>()
      .getter<"tableHeaderView", &TableView::header_>()
      .method<"setTableHeaderView:", &TableView::setHeader>()
      .getter<"tableFooterView", &TableView::footer_>()
      .method<"setTableFooterView:", &TableView::setFooter>()
      .getter<"separatorStyle", &TableView::separator_style_>()
      .method<"setSeparatorStyle:", &TableView::setSeparatorStyle>()
      .getter<"separatorColor", &TableView::separator_colour_>()
      .method<"setSeparatorColor:", &TableView::setSeparatorColor>()
      .property<"allowsSelection", "setAllowsSelection:", &TableView::allows_selection_>()
      .method<"numberOfSections", &TableView::numberOfSections>()
      .method<"numberOfRowsInSection:", &TableView::numberOfRows>()
      .method<"registerClass:forCellReuseIdentifier:", &TableView::registerClass>()
      .method<"dequeueReusableCellWithIdentifier:", &TableView::dequeue>()
      .method<"dequeueReusableCellWithIdentifier:forIndexPath:", &TableView::dequeueForPath>()
      .method<"registerClass:forHeaderFooterViewReuseIdentifier:", &TableView::registerSectionClass>()
      .method<"dequeueReusableHeaderFooterViewWithIdentifier:", &TableView::dequeueSection>()
      .method<"reloadData", &TableView::reloadData>();
  table.method<"cellForRowAtIndexPath:", &TableView::cellForRow>()
      .method<"indexPathForCell:", &TableView::indexPathForCell>()
      .method<"visibleCells", &TableView::visibleCells>()
      .method<"indexPathsForVisibleRows", &TableView::visiblePaths>()
      .method<"headerViewForSection:", &TableView::headerView>()
      .method<"footerViewForSection:", &TableView::footerView>()
      .method<"rectForRowAtIndexPath:", &TableView::rectForRow>()
      .method<"rectForHeaderInSection:", &TableView::rectForHeader>()
      .method<"beginUpdates", &TableView::begin_updates>()
      .method<"endUpdates", &TableView::end_updates>()
      .method<"performBatchUpdates:completion:", &TableView::performUpdates>()
      .method<"insertRowsAtIndexPaths:withRowAnimation:", &TableView::insertRows>()
      .method<"deleteRowsAtIndexPaths:withRowAnimation:", &TableView::deleteRows>()
      .method<"reloadRowsAtIndexPaths:withRowAnimation:", &TableView::reloadRows>()
      .method<"indexPathForSelectedRow", &TableView::indexPathForSelectedRow>()
      .method<"selectRowAtIndexPath:animated:scrollPosition:", &TableView::selectRow>()
      .method<"deselectRowAtIndexPath:animated:", &TableView::deselectRow>()
      .method<"scrollToRowAtIndexPath:atScrollPosition:animated:", &TableView::scrollToRow>()
      .method<"traitCollectionDidChange:", &TableView::traitCollectionDidChange>()
      .method<hooks::kHandleKey, &TableView::handleKey>()
      .register_class();
}

}  // namespace wispen::uikit
