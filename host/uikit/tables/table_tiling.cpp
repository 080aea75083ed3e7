// host/uikit/tables/table_tiling.cpp: which of a table's items have views, and where these are.

#include <algorithm>
#include <map>
#include <utility>

#include "host/uikit/tables/header_footer_view.hpp"
#include "host/uikit/tables/table_methods.hpp"
#include "host/uikit/views/animation.hpp"

namespace wispen::uikit {

namespace {

constexpr double kCornerRadius = 10;  // the platform's, in points
// Longer tables than this are not measured row by row before they are seen.
constexpr std::size_t kMeasuredAtOnce = 400;

}  // namespace

TableCell TableMethods::cell_at(const Self& self, RowPath path) {
  TableState& state = self.table();
  const auto known = state.cells.find(path);
  if (known != state.cells.end()) return known->second;
  const NSObject source = state.data_source.lock();
  TableCell cell = objc::send<"tableView:cellForRowAtIndexPath:", TableCell>(source, self, index_path(path));
  if (!cell) {
    NSException::raise("NSInternalInconsistencyException"_ns,
                       "UITableView dataSource returned a nil cell for row at index path"_ns);
  }
  cell.cell().table = objc::Unowned<View>(self);
  state.cells.emplace(path, cell);
  return cell;
}

void TableMethods::recycle(const Self& self, const TableCell& cell) {
  TableState& state = self.table();
  cell.removeFromSuperview();
  cell.cell().table = objc::Unowned<View>();
  const NSString identifier = cell.cell().reuse_identifier;
  if (!identifier) return;
  auto& pool = state.reusable[identifier.utf8()];
  constexpr std::size_t kMostReusable = 16;
  if (pool.size() < kMostReusable) pool.push_back(cell);
}

void TableMethods::recycle_section_view(const Self& self, const View& view) {
  view.removeFromSuperview();
  const auto known = objc::cast_or_nil<HeaderFooterView>(view);
  if (!known || !known.reuse_identifier()) return;
  auto& pool = self.table().reusable_sections[known.reuse_identifier().utf8()];
  constexpr std::size_t kMostReusable = 8;
  if (pool.size() < kMostReusable) pool.push_back(known);
}

void TableMethods::place_cell(const Self& self, std::size_t item) {
  TableState& state = self.table();
  const TableItem& at = state.items[item];
  const RowPath path{at.section, at.row};
  const TableCell cell = cell_at(self, path);
  const Rect frame = item_rect(self, item);
  const bool first = state.items[item - 1].row == TableItem::kHeader;
  const bool last = state.items[item + 1].row == TableItem::kFooter;
  const bool without_line = (last && state.style != TableStyle::Plain) || state.separator_style == 0;
  if (std::exchange(cell.cell().last_in_section, without_line) != without_line) cell.setNeedsDisplay();
  if (state.style == TableStyle::InsetGrouped) {
    cell.layer().setCornerRadius(first || last ? kCornerRadius : 0);
    objc::send<"setMaskedCorners:">(cell.layer(), NSUInteger{(first ? 3U : 0U) | (last ? 12U : 0U)});
    cell.setClipsToBounds(first || last);
  }
  objc::send<"setFrame:">(cell, frame);
  if (cell.superview() == self) return;
  AnimationEngine::current()->without_animation([&] {
    self.insertSubviewAtIndex(cell, 0);
    const bool selected = state.selected == path;
    if (cell.cell().selected != selected) objc::send<"setSelected:animated:">(cell, selected, false);
    cell.layoutIfNeeded();
  });
  const NSObject delegate = objc::send<"delegate", NSObject>(self);
  if (objc::responds_to(delegate, objc::selector<"tableView:willDisplayCell:forRowAtIndexPath:">())) {
    objc::send<"tableView:willDisplayCell:forRowAtIndexPath:">(delegate, self, cell, index_path(path));
  }
}

View TableMethods::make_section_view(const Self& self, const TableItem& item) {
  const NSObject delegate = objc::send<"delegate", NSObject>(self);
  const bool header = item.row == TableItem::kHeader;
  if (header && objc::responds_to(delegate, objc::selector<"tableView:viewForHeaderInSection:">())) {
    if (const auto view =
            objc::send<"tableView:viewForHeaderInSection:", View>(delegate, self, item.section)) {
      return view;
    }
  }
  if (!header && objc::responds_to(delegate, objc::selector<"tableView:viewForFooterInSection:">())) {
    if (const auto view =
            objc::send<"tableView:viewForFooterInSection:", View>(delegate, self, item.section)) {
      return view;
    }
  }
  const NSString title = title_of(self, item);
  if (!title || title.length() == 0) return View();
  const HeaderFooterView view = HeaderFooterView::make(NSString());
  view.textLabel().setText(shown_title(title, header));
  view.set_is_header(header);
  return view;
}

void TableMethods::place_section_view(const Self& self, std::size_t item) {
  TableState& state = self.table();
  const TableItem& at = state.items[item];
  auto& known = at.row == TableItem::kHeader ? state.headers : state.footers;
  auto found = known.find(at.section);
  if (found == known.end()) {
    const View view = make_section_view(self, at);
    found = known.emplace(at.section, view).first;
    if (view) self.insertSubviewAtIndex(view, 0);
  }
  const View view = found->second;
  if (!view) return;
  // At the rows' margin; a page's own view with its own height where that is larger.
  Rect frame = item_rect(self, item);
  const double margin = self.side_margin();
  frame.origin.x = margin;
  frame.size.width = self.bounds().width() - 2 * margin;
  if (!objc::cast_or_nil<HeaderFooterView>(view)) {
    frame.size.height = std::max(frame.size.height, view.bounds().height());
  }
  view.setFrame(frame);
}

void TableMethods::tile(const Self& self) {
  TableState& state = self.table();
  if (!state.loaded) {
    count_items(self);
    if (state.items.size() <= kMeasuredAtOnce) {
      for (std::size_t i = 0; i < state.items.size(); ++i) measure_item(self, i);
    }
  }
  if (state.laid_out_width != self.bounds().width()) {
    state.laid_out_width = self.bounds().width();
    state.measured.assign(state.items.size(), false);
  }
  place_edges(self);
  if (state.items.empty()) {
    update_content_size(self);
    drop_all(self);
    return;
  }
  const double above = state.header ? state.header.bounds().height() : 0;
  const Rect bounds = self.bounds();
  std::size_t first = state.heights.item_at(std::max(0.0, bounds.min_y() - above));
  // Cells that went out of sight first, so that those which come in and are measured are made of them.
  drop_outside(self, first, state.heights.item_at(std::max(0.0, bounds.max_y() - above)));
  // Rows above that come out otherwise than they were estimated do not move what is seen.
  std::size_t last = first;
  for (std::size_t i = first; i < state.items.size(); ++i) {
    measure_item(self, i);
    last = i;
    if (above + state.heights.offset(i + 1) >= bounds.max_y()) break;
  }
  if (state.items.size() <= kMeasuredAtOnce) {
    for (std::size_t i = 0; i < state.items.size(); ++i) measure_item(self, i);
  }
  update_content_size(self);
  drop_outside(self, first, last);
  for (std::size_t i = first; i <= last; ++i) {
    if (state.items[i].row >= 0) {
      place_cell(self, i);
    } else {
      place_section_view(self, i);
    }
  }
}

void TableMethods::place_edges(const Self& self) {
  TableState& state = self.table();
  if (state.header) {
    state.header.setFrame({{0, 0}, {self.bounds().width(), state.header.bounds().height()}});
    if (state.header.superview() != self) self.addSubview(state.header);
  }
  if (state.footer) {
    const double y = (state.header ? state.header.bounds().height() : 0) + state.heights.total();
    state.footer.setFrame({{0, y}, {self.bounds().width(), state.footer.bounds().height()}});
    if (state.footer.superview() != self) self.addSubview(state.footer);
  }
}

void TableMethods::drop_outside(const Self& self, std::size_t first, std::size_t last) {
  TableState& state = self.table();
  const NSObject delegate = objc::send<"delegate", NSObject>(self);
  for (auto cell = state.cells.begin(); cell != state.cells.end();) {
    const std::size_t item = item_of(self, cell->first);
    // A row that is being written in stays, or the writing would end.
    const bool stays = (item >= first && item <= last) || holds_first_responder(cell->second);
    if (stays) {
      ++cell;
      continue;
    }
    const auto [path, leaving] = *cell;
    cell = state.cells.erase(cell);
    const bool shown = leaving.superview() == self;
    recycle(self, leaving);
    if (shown &&
        objc::responds_to(delegate, objc::selector<"tableView:didEndDisplayingCell:forRowAtIndexPath:">())) {
      objc::send<"tableView:didEndDisplayingCell:forRowAtIndexPath:">(delegate, self, leaving,
                                                                      index_path(path));
    }
  }
  for (auto* const views : {&state.headers, &state.footers}) {
    const NSInteger row = views == &state.headers ? TableItem::kHeader : TableItem::kFooter;
    std::erase_if(*views, [&](const auto& entry) {
      const std::size_t item = item_of(self, {entry.first, row});
      if (item >= first && item <= last) return false;
      if (entry.second) recycle_section_view(self, entry.second);
      return true;
    });
  }
}

bool TableMethods::holds_first_responder(const TableCell& cell) {
  const auto first = objc::cast_or_nil<View>(Responder::first());
  return first && first.isDescendantOfView(cell);
}

void TableMethods::drop_all(const Self& self) {
  TableState& state = self.table();
  for (const auto& [path, cell] : std::map<RowPath, TableCell>(state.cells)) recycle(self, cell);
  state.cells.clear();
  for (auto* const views : {&state.headers, &state.footers}) {
    for (const auto& [section, view] : *views) {
      if (view) view.removeFromSuperview();
    }
    views->clear();
  }
}

}  // namespace wispen::uikit
