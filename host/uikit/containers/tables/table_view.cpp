// host/uikit/containers/tables/table_view.cpp: UITableView: its rows, asked for and chosen.

#include "host/uikit/containers/tables/table_view.hpp"

namespace wispen::uikit {

void TableView::set_data_source(const NSObject& source) {
  data_source_ = source;
  reloadData();
}

void TableView::set_delegate(const NSObject& delegate) {
  super<"setDelegate:">(delegate);
  reloadData();
}

double TableView::side_margin() {
  if (style_ != UITableViewStyle::InsetGrouped) return 0;
  return self().bounds().size.width >= 414 ? 20 : 16;
}

void TableView::reloadData() {
  drop_all();
  loaded_ = false;
  selected_.reset();
  self().setNeedsLayout();
}

void TableView::heights_changed() {
  measured_.assign(items_.size(), false);
  self().setNeedsLayout();
}

UITableViewCell TableView::cell_for_row(RowPath path) {
  const auto cell = cells_.find(path);
  return cell != cells_.end() ? cell->second : UITableViewCell();
}

std::optional<RowPath> TableView::path_of(const UITableViewCell& cell) {
  for (const auto& [path, known] : cells_) {
    if (known == cell) return path;
  }
  return std::nullopt;
}

std::vector<UITableViewCell> TableView::visible_cells() {
  std::vector<UITableViewCell> all;
  for (const auto& [path, cell] : cells_) all.push_back(cell);
  return all;
}

Rect TableView::rect_for_row(RowPath path) {
  if (!loaded_) tile();
  const std::size_t item = item_of(path);
  if (item >= items_.size()) return {};
  measure_item(item);
  return item_rect(item);
}

void TableView::scroll_to_row(RowPath path, bool animated) {
  self().scrollRectToVisible(rect_for_row(path), animated);
}

bool TableView::may_highlight(const UITableViewCell& cell) {
  const auto path = path_of(cell);
  if (!path || !allows_selection_) return false;
  const NSObject delegate = self().delegate();
  if (objc::responds_to(delegate, objc::selector<"tableView:shouldHighlightRowAtIndexPath:">())) {
    return objc::send<"tableView:shouldHighlightRowAtIndexPath:", bool>(delegate, self(), index_path(*path));
  }
  return cell.selectionStyle() != UITableViewCellSelectionStyle::None &&
         objc::responds_to(delegate, objc::selector<"tableView:didSelectRowAtIndexPath:">());
}

void TableView::select(const UITableViewCell& cell) {
  const auto path = path_of(cell);
  if (!path) return;
  const NSObject delegate = self().delegate();
  NSIndexPath wanted = index_path(*path);
  if (objc::responds_to(delegate, objc::selector<"tableView:willSelectRowAtIndexPath:">())) {
    wanted = objc::send<"tableView:willSelectRowAtIndexPath:", NSIndexPath>(delegate, self(), wanted);
    if (!wanted) return;
  }
  set_selected(row_path(wanted), false);
  if (objc::responds_to(delegate, objc::selector<"tableView:didSelectRowAtIndexPath:">())) {
    objc::send<"tableView:didSelectRowAtIndexPath:">(delegate, self(), wanted);
  }
}

}  // namespace wispen::uikit
