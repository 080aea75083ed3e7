// host/uikit/containers/tables/table_tiling.cpp: which of a table's items have views, and where these are.

#include <algorithm>
#include <map>
#include <utility>

#include "host/uikit/containers/tables/header_footer_view.hpp"
#include "host/uikit/containers/tables/table_cell.hpp"
#include "host/uikit/containers/tables/table_view.hpp"
#include "host/uikit/view/animation.hpp"
#include "host/uikit/view/responder.hpp"

namespace wispen::uikit {

namespace {

constexpr double kCornerRadius = 10;  // the platform's, in points
// Longer tables than this are not measured row by row before they are seen.
constexpr std::size_t kMeasuredAtOnce = 400;

}  // namespace

UITableViewCell TableView::cell_at(RowPath path) {
  const auto known = cells_.find(path);
  if (known != cells_.end()) return known->second;
  const NSObject source = data_source_.lock();
  UITableViewCell cell =
      objc::send<"tableView:cellForRowAtIndexPath:", UITableViewCell>(source, self(), index_path(path));
  if (!cell) {
    NSException::raise("NSInternalInconsistencyException"_ns,
                       "UITableView dataSource returned a nil cell for row at index path"_ns);
  }
  TableCell::of(cell).set_table(self());
  cells_.emplace(path, cell);
  return cell;
}

void TableView::recycle(const UITableViewCell& cell) {
  cell.removeFromSuperview();
  TableCell::of(cell).set_table(UITableView());
  const NSString identifier = TableCell::of(cell).reuse_identifier();
  if (!identifier) return;
  auto& pool = reusable_[identifier.utf8()];
  constexpr std::size_t kMostReusable = 16;
  if (pool.size() < kMostReusable) pool.push_back(cell);
}

void TableView::recycle_section_view(const UIView& view) {
  view.removeFromSuperview();
  const auto known = objc::cast_or_nil<UITableViewHeaderFooterView>(view);
  if (!known || !known.reuseIdentifier()) return;
  auto& pool = reusable_sections_[known.reuseIdentifier().utf8()];
  constexpr std::size_t kMostReusable = 8;
  if (pool.size() < kMostReusable) pool.push_back(known);
}

void TableView::place_cell(std::size_t item) {
  const TableItem& at = items_[item];
  const RowPath path{at.section, at.row};
  const UITableViewCell cell = cell_at(path);
  const Rect frame = item_rect(item);
  const bool first = items_[item - 1].row == TableItem::kHeader;
  const bool last = items_[item + 1].row == TableItem::kFooter;
  const bool without_line =
      (last && style_ != UITableViewStyle::Plain) || separator_style_ == UITableViewCellSeparatorStyle::None;
  TableCell::of(cell).set_last_in_section(without_line);
  if (style_ == UITableViewStyle::InsetGrouped) {
    cell.layer().setCornerRadius(first || last ? kCornerRadius : 0);
    constexpr CACornerMask kUpper = kCALayerMinXMinYCorner | kCALayerMaxXMinYCorner;
    constexpr CACornerMask kLower = kCALayerMinXMaxYCorner | kCALayerMaxXMaxYCorner;
    cell.layer().setMaskedCorners((first ? kUpper : 0) | (last ? kLower : 0));
    cell.setClipsToBounds(first || last);
  }
  cell.setFrame(frame);
  if (cell.superview() == self()) return;
  AnimationEngine::current()->without_animation([&] {
    self().insertSubview(cell, 0);
    const bool selected = selected_ == path;
    if (cell.isSelected() != selected) cell.setSelected(selected, false);
    cell.layoutIfNeeded();
  });
  const NSObject delegate = self().delegate();
  if (objc::responds_to(delegate, objc::selector<"tableView:willDisplayCell:forRowAtIndexPath:">())) {
    objc::send<"tableView:willDisplayCell:forRowAtIndexPath:">(delegate, self(), cell, index_path(path));
  }
}

UIView TableView::make_section_view(const TableItem& item) {
  const NSObject delegate = self().delegate();
  const bool header = item.row == TableItem::kHeader;
  if (header && objc::responds_to(delegate, objc::selector<"tableView:viewForHeaderInSection:">())) {
    if (const auto view =
            objc::send<"tableView:viewForHeaderInSection:", UIView>(delegate, self(), item.section)) {
      return view;
    }
  }
  if (!header && objc::responds_to(delegate, objc::selector<"tableView:viewForFooterInSection:">())) {
    if (const auto view =
            objc::send<"tableView:viewForFooterInSection:", UIView>(delegate, self(), item.section)) {
      return view;
    }
  }
  const NSString title = title_of(item);
  if (!title || title.length() == 0) return UIView();
  const auto view = UITableViewHeaderFooterView::alloc().initWithReuseIdentifier(NSString());
  view.textLabel().setText(shown_title(title, header));
  set_is_header(view, header);
  return view;
}

void TableView::place_section_view(std::size_t item) {
  const TableItem& at = items_[item];
  auto& known = at.row == TableItem::kHeader ? headers_ : footers_;
  auto found = known.find(at.section);
  if (found == known.end()) {
    const UIView view = make_section_view(at);
    found = known.emplace(at.section, view).first;
    if (view) self().insertSubview(view, 0);
  }
  const UIView view = found->second;
  if (!view) return;
  // At the rows' margin; a page's own view with its own height where that is larger.
  Rect frame = item_rect(item);
  const double margin = side_margin();
  frame.origin.x = margin;
  frame.size.width = self().bounds().size.width - 2 * margin;
  if (!objc::cast_or_nil<UITableViewHeaderFooterView>(view)) {
    frame.size.height = std::max(frame.size.height, view.bounds().size.height);
  }
  view.setFrame(frame);
}

void TableView::tile() {
  if (!loaded_) {
    count_items();
    if (items_.size() <= kMeasuredAtOnce) {
      for (std::size_t i = 0; i < items_.size(); ++i) measure_item(i);
    }
  }
  if (laid_out_width_ != self().bounds().size.width) {
    laid_out_width_ = self().bounds().size.width;
    measured_.assign(items_.size(), false);
  }
  place_edges();
  if (items_.empty()) {
    update_content_size();
    drop_all();
    return;
  }
  const double above = header_ ? header_.bounds().size.height : 0;
  const Rect bounds = self().bounds();
  std::size_t first = heights_.item_at(std::max(0.0, bounds.min_y() - above));
  // Cells that went out of sight first, so that those which come in and are measured are made of them.
  drop_outside(first, heights_.item_at(std::max(0.0, bounds.max_y() - above)));
  // Rows above that come out otherwise than they were estimated do not move what is seen.
  std::size_t last = first;
  for (std::size_t i = first; i < items_.size(); ++i) {
    measure_item(i);
    last = i;
    if (above + heights_.offset(i + 1) >= bounds.max_y()) break;
  }
  if (items_.size() <= kMeasuredAtOnce) {
    for (std::size_t i = 0; i < items_.size(); ++i) measure_item(i);
  }
  update_content_size();
  drop_outside(first, last);
  for (std::size_t i = first; i <= last; ++i) {
    if (items_[i].row >= 0) {
      place_cell(i);
    } else {
      place_section_view(i);
    }
  }
}

void TableView::place_edges() {
  if (header_) {
    header_.setFrame(Rect{{0, 0}, {self().bounds().size.width, header_.bounds().size.height}});
    if (header_.superview() != self()) self().addSubview(header_);
  }
  if (footer_) {
    const double y = (header_ ? header_.bounds().size.height : 0) + heights_.total();
    footer_.setFrame(Rect{{0, y}, {self().bounds().size.width, footer_.bounds().size.height}});
    if (footer_.superview() != self()) self().addSubview(footer_);
  }
}

void TableView::drop_outside(std::size_t first, std::size_t last) {
  const NSObject delegate = self().delegate();
  for (auto cell = cells_.begin(); cell != cells_.end();) {
    const std::size_t item = item_of(cell->first);
    // A row that is being written in stays, or the writing would end.
    const bool stays = (item >= first && item <= last) || holds_first_responder(cell->second);
    if (stays) {
      ++cell;
      continue;
    }
    const auto [path, leaving] = *cell;
    cell = cells_.erase(cell);
    const bool shown = leaving.superview() == self();
    recycle(leaving);
    if (shown &&
        objc::responds_to(delegate, objc::selector<"tableView:didEndDisplayingCell:forRowAtIndexPath:">())) {
      objc::send<"tableView:didEndDisplayingCell:forRowAtIndexPath:">(delegate, self(), leaving,
                                                                      index_path(path));
    }
  }
  for (auto* const views : {&headers_, &footers_}) {
    const NSInteger row = views == &headers_ ? TableItem::kHeader : TableItem::kFooter;
    std::erase_if(*views, [&](const auto& entry) {
      const std::size_t item = item_of({entry.first, row});
      if (item >= first && item <= last) return false;
      if (entry.second) recycle_section_view(entry.second);
      return true;
    });
  }
}

bool TableView::holds_first_responder(const UITableViewCell& cell) {
  const auto first = objc::cast_or_nil<UIView>(first_responder());
  return first && first.isDescendantOfView(cell);
}

void TableView::drop_all() {
  for (const auto& [path, cell] : std::map<RowPath, UITableViewCell>(cells_)) recycle(cell);
  cells_.clear();
  for (auto* const views : {&headers_, &footers_}) {
    for (const auto& [section, view] : *views) {
      if (view) view.removeFromSuperview();
    }
    views->clear();
  }
}

}  // namespace wispen::uikit
