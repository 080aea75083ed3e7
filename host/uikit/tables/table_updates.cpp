// host/uikit/tables/table_updates.cpp: rows that come and go while their table is shown.

#include <algorithm>
#include <map>
#include <utility>

#include "host/uikit/tables/table_methods.hpp"
#include "host/uikit/views/animation.hpp"

namespace wispen::uikit {

namespace {

constexpr double kUpdateSeconds = 0.3;

}  // namespace

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

}  // namespace wispen::uikit
