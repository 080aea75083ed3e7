// host/uikit/tables/table_view.cpp: UITableView: its rows, asked for and chosen.

#include "host/uikit/tables/table_view.hpp"

#include "host/uikit/tables/table_methods.hpp"

namespace wispen::uikit {

TableState& TableView::table() const { return state<TableState>(); }

TableView TableView::make(const Rect& frame, TableStyle style) {
  return alloc().initialize<"initWithFrame:style:">(frame, static_cast<NSInteger>(style));
}

void TableView::set_data_source(const NSObject& source) const {
  table().data_source = source;
  reloadData();
}

void TableView::set_delegate(const NSObject& delegate) const {
  objc::send_super<"setDelegate:">(*this, objc::class_for<ScrollView>(), delegate);
  reloadData();
}

double TableView::side_margin() const {
  if (table().style != TableStyle::InsetGrouped) return 0;
  return bounds().width() >= 414 ? 20 : 16;
}

void TableView::reloadData() const {
  TableMethods::drop_all(*this);
  table().loaded = false;
  table().selected.reset();
  setNeedsLayout();
}

void TableView::heights_changed() const {
  TableState& state = table();
  state.measured.assign(state.items.size(), false);
  setNeedsLayout();
}

TableCell TableView::cell_for_row(RowPath path) const {
  const auto cell = table().cells.find(path);
  return cell != table().cells.end() ? cell->second : TableCell();
}

std::optional<RowPath> TableView::path_of(const TableCell& cell) const {
  for (const auto& [path, known] : table().cells) {
    if (known == cell) return path;
  }
  return std::nullopt;
}

std::vector<TableCell> TableView::visible_cells() const {
  std::vector<TableCell> all;
  for (const auto& [path, cell] : table().cells) all.push_back(cell);
  return all;
}

Rect TableView::rect_for_row(RowPath path) const {
  if (!table().loaded) TableMethods::tile(*this);
  const std::size_t item = TableMethods::item_of(*this, path);
  if (item >= table().items.size()) return {};
  TableMethods::measure_item(*this, item);
  return TableMethods::item_rect(*this, item);
}

void TableView::scroll_to_row(RowPath path, bool animated) const {
  scrollRectToVisible(rect_for_row(path), animated);
}

bool TableView::may_highlight(const TableCell& cell) const {
  const auto path = path_of(cell);
  if (!path || !table().allows_selection) return false;
  const NSObject delegate = objc::send<"delegate", NSObject>(*this);
  if (objc::responds_to(delegate, objc::selector<"tableView:shouldHighlightRowAtIndexPath:">())) {
    return objc::send<"tableView:shouldHighlightRowAtIndexPath:", bool>(delegate, *this, index_path(*path));
  }
  return cell.cell().selection_style != 0 &&
         objc::responds_to(delegate, objc::selector<"tableView:didSelectRowAtIndexPath:">());
}

void TableView::select(const TableCell& cell) const {
  const auto path = path_of(cell);
  if (!path) return;
  const NSObject delegate = objc::send<"delegate", NSObject>(*this);
  NSObject wanted = index_path(*path);
  if (objc::responds_to(delegate, objc::selector<"tableView:willSelectRowAtIndexPath:">())) {
    wanted = objc::send<"tableView:willSelectRowAtIndexPath:", NSObject>(delegate, *this, wanted);
    if (!wanted) return;
  }
  TableMethods::set_selected(*this, row_path(wanted), false);
  if (objc::responds_to(delegate, objc::selector<"tableView:didSelectRowAtIndexPath:">())) {
    objc::send<"tableView:didSelectRowAtIndexPath:">(delegate, *this, wanted);
  }
}

}  // namespace wispen::uikit
