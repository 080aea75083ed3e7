// host/uikit/tables/table_view.cpp: UITableView: what lies where, and which cells exist.

#include "host/uikit/tables/table_view.hpp"

#include <algorithm>

#include "host/uikit/tables/header_footer_view.hpp"
#include "host/uikit/tables/table_methods.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/views/animation.hpp"

namespace wispen::uikit {

namespace {

// The platform's inset-grouped metrics, in points.
constexpr double kFirstHeader = 35;
constexpr double kGap = 17.5;
constexpr double kCornerRadius = 10;
// Longer tables than this are not measured row by row before they are seen.
constexpr std::size_t kMeasuredAtOnce = 400;
constexpr double kUpdateSeconds = 0.3;

}  // namespace

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

void TableMethods::count_items(const Self& self) {
  TableState& state = self.table();
  state.items.clear();
  state.section_starts.clear();
  const NSObject source = state.data_source.lock();
  const NSInteger sections = !source ? 0
                             : objc::responds_to(source, objc::selector<"numberOfSectionsInTableView:">())
                                 ? objc::send<"numberOfSectionsInTableView:", NSInteger>(source, self)
                                 : 1;
  for (NSInteger section = 0; section < sections; ++section) {
    state.section_starts.push_back(state.items.size());
    state.items.push_back({section, TableItem::kHeader});
    const NSInteger rows = objc::send<"tableView:numberOfRowsInSection:", NSInteger>(source, self, section);
    for (NSInteger row = 0; row < rows; ++row) state.items.push_back({section, row});
    state.items.push_back({section, TableItem::kFooter});
  }
  state.measured.assign(state.items.size(), false);
  std::vector<double> estimates;
  estimates.reserve(state.items.size());
  for (const TableItem& item : state.items) {
    estimates.push_back(item.row >= 0 ? (state.row_height > 0 ? state.row_height : kDefaultRowHeight) : kGap);
  }
  state.heights.assign(std::move(estimates));
  state.loaded = true;
}

std::size_t TableMethods::item_of(const Self& self, RowPath path) {
  const TableState& state = self.table();
  const auto section = static_cast<std::size_t>(path.section);
  if (path.section < 0 || section >= state.section_starts.size()) return state.items.size();
  const std::size_t first = state.section_starts[section];
  if (path.row == TableItem::kHeader) return first;
  const std::size_t next =
      section + 1 < state.section_starts.size() ? state.section_starts[section + 1] : state.items.size();
  if (path.row == TableItem::kFooter) return next - 1;
  const std::size_t item = first + 1 + static_cast<std::size_t>(path.row);
  return path.row >= 0 && item < next - 1 ? item : state.items.size();
}

double TableMethods::measure(const Self& self, const TableItem& item) {
  TableState& state = self.table();
  const NSObject delegate = objc::send<"delegate", NSObject>(self);
  if (item.row >= 0) {
    double height = state.row_height;
    if (objc::responds_to(delegate, objc::selector<"tableView:heightForRowAtIndexPath:">())) {
      height = objc::send<"tableView:heightForRowAtIndexPath:", double>(delegate, self,
                                                                        index_path({item.section, item.row}));
    }
    if (height >= 0) return height;
    const TableCell cell = cell_at(self, {item.section, item.row});
    const double width = self.bounds().width() - 2 * self.side_margin();
    return cell ? cell.sizeThatFits({width, 0}).height : kDefaultRowHeight;
  }
  const bool header = item.row == TableItem::kHeader;
  double height = TableView::kAutomaticHeight;
  if (header && objc::responds_to(delegate, objc::selector<"tableView:heightForHeaderInSection:">())) {
    height = objc::send<"tableView:heightForHeaderInSection:", double>(delegate, self, item.section);
  } else if (!header &&
             objc::responds_to(delegate, objc::selector<"tableView:heightForFooterInSection:">())) {
    height = objc::send<"tableView:heightForFooterInSection:", double>(delegate, self, item.section);
  }
  if (height >= 0) return height;
  const NSString title = title_of(self, item);
  if (!title || title.length() == 0) {
    if (state.style == TableStyle::Plain) return 0;
    return header && item.section == 0 && !state.header ? kFirstHeader : kGap;
  }
  const double room = self.bounds().width() - 2 * (self.side_margin() + kCellMargin);
  const double text = section_label(title, header).sizeThatFits({room, 0}).height;
  if (!header) return kFooterTextTop + text + kSectionTextPadding + kGap - kSectionTextPadding;
  return (item.section == 0 && !state.header ? kFirstHeader - kGap : 0) + kGap + text + kSectionTextPadding -
         2;
}

NSString TableMethods::title_of(const Self& self, const TableItem& item) {
  const NSObject source = self.table().data_source.lock();
  if (item.row == TableItem::kHeader &&
      objc::responds_to(source, objc::selector<"tableView:titleForHeaderInSection:">())) {
    return objc::send<"tableView:titleForHeaderInSection:", NSString>(source, self, item.section);
  }
  if (item.row == TableItem::kFooter &&
      objc::responds_to(source, objc::selector<"tableView:titleForFooterInSection:">())) {
    return objc::send<"tableView:titleForFooterInSection:", NSString>(source, self, item.section);
  }
  return NSString();
}

NSString TableMethods::shown_title(const NSString& title, bool header) {
  return header ? objc::send<"uppercaseString", NSString>(title) : title;
}

Label TableMethods::section_label(const NSString& title, bool header) {
  const Label label = Label::make();
  label.setNumberOfLines(0);
  label.setFont(
      font_from(graphics::text_style_font(graphics::TextStyle::Footnote, display_settings().content_size)));
  label.setTextColor(UIColor::secondaryLabelColor());
  label.setText(shown_title(title, header));
  return label;
}

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

Rect TableMethods::item_rect(const Self& self, std::size_t item) {
  const TableState& state = self.table();
  const double above = state.header ? state.header.bounds().height() : 0;
  const double margin = state.items[item].row >= 0 ? self.side_margin() : 0;
  const EdgeInsets safe = self.safeAreaInsets();
  const double left = margin + (margin > 0 ? safe.left : 0);
  const double right = margin + (margin > 0 ? safe.right : 0);
  return {{left, above + state.heights.offset(item)},
          {self.bounds().width() - left - right, state.heights.height(item)}};
}

void TableMethods::update_content_size(const Self& self) {
  const TableState& state = self.table();
  double height = state.heights.total();
  if (state.header) height += state.header.bounds().height();
  if (state.footer) height += state.footer.bounds().height();
  self.setContentSize({self.bounds().width(), height});
}

void TableMethods::measure_item(const Self& self, std::size_t item) {
  TableState& state = self.table();
  if (state.measured[item]) return;
  const double height = measure(self, state.items[item]);
  state.measured[item] = true;
  state.heights.set_height(item, height);
}

void TableMethods::place_cell(const Self& self, std::size_t item) {
  TableState& state = self.table();
  const TableItem& at = state.items[item];
  const RowPath path{at.section, at.row};
  const TableCell cell = cell_at(self, path);
  const Rect frame = item_rect(self, item);
  const bool first = state.items[item - 1].row == TableItem::kHeader;
  const bool last = state.items[item + 1].row == TableItem::kFooter;
  cell.cell().last_in_section = (last && state.style != TableStyle::Plain) || state.separator_style == 0;
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

void TableView::begin_updates() const { ++table().updates.depth; }

void TableView::end_updates() const {
  TableState& state = table();
  if (state.updates.depth == 0 || --state.updates.depth > 0) return;
  TableUpdates updates = std::exchange(state.updates, {});
  if (!updates.any() || !state.loaded) {
    state.loaded = state.loaded && !updates.any();
    heights_changed();
    return;
  }
  TableMethods::apply(*this, std::move(updates));
}

void TableMethods::apply(const Self& self, TableUpdates updates) {
  TableState& state = self.table();
  std::ranges::sort(updates.deleted);
  std::ranges::sort(updates.inserted);
  const auto moved = [&](RowPath path) -> std::optional<RowPath> {
    NSInteger row = path.row;
    for (const RowPath& gone : updates.deleted) {
      if (gone == path) return std::nullopt;
      if (gone.section == path.section && gone.row < path.row) --row;
    }
    for (const RowPath& added : updates.inserted) {
      if (added.section == path.section && added.row <= row) ++row;
    }
    return RowPath{path.section, row};
  };
  std::map<RowPath, TableCell> kept;
  std::vector<TableCell> leaving;
  for (const auto& [path, cell] : state.cells) {
    if (const auto place = moved(path)) {
      kept.emplace(*place, cell);
    } else {
      leaving.push_back(cell);
    }
  }
  if (state.selected) state.selected = moved(*state.selected);
  state.cells = std::move(kept);
  count_items(self);
  AnimationEngine* const engine = AnimationEngine::current();
  const auto lay_out = [&] {
    objc::send<"layoutSubviews">(self);
    for (const TableCell& cell : leaving) cell.setAlpha(0);
  };
  if (!updates.animated || engine == nullptr) {
    lay_out();
    for (const TableCell& cell : leaving) recycle(self, cell);
    return;
  }
  engine->animate({.duration = kUpdateSeconds}, lay_out, [self = Self(self), leaving](bool) {
    for (const TableCell& cell : leaving) {
      cell.setAlpha(1);
      recycle(self, cell);
    }
  });
  // Those that came in start where they end, and are faded in.
  for (const RowPath& path : updates.inserted) {
    const auto cell = state.cells.find(path);
    if (cell == state.cells.end()) continue;
    engine->remove_all(cell->second);
    cell->second.setAlpha(0);
    const TableCell shown = cell->second;
    engine->animate({.duration = kUpdateSeconds}, [&] { shown.setAlpha(1); });
  }
}

void TableView::insert_rows(const std::vector<RowPath>& paths, bool animated) const {
  begin_updates();
  TableUpdates& updates = table().updates;
  updates.inserted.insert(updates.inserted.end(), paths.begin(), paths.end());
  updates.animated = updates.animated || animated;
  end_updates();
}

void TableView::delete_rows(const std::vector<RowPath>& paths, bool animated) const {
  begin_updates();
  TableUpdates& updates = table().updates;
  updates.deleted.insert(updates.deleted.end(), paths.begin(), paths.end());
  updates.animated = updates.animated || animated;
  end_updates();
}

void TableView::reload_rows(const std::vector<RowPath>& paths) const {
  TableState& state = table();
  for (const RowPath& path : paths) {
    const auto cell = state.cells.find(path);
    if (cell != state.cells.end()) {
      cell->second.removeFromSuperview();
      state.cells.erase(cell);
    }
    const std::size_t item = TableMethods::item_of(*this, path);
    if (item < state.items.size()) state.measured[item] = false;
  }
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
