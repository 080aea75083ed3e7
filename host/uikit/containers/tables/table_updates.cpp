// host/uikit/containers/tables/table_updates.cpp: rows that come and go while their table is shown.

#include <algorithm>
#include <map>
#include <utility>

#include "host/uikit/containers/tables/table_view.hpp"
#include "host/uikit/view/animation.hpp"

namespace wispen::uikit {

namespace {

constexpr double kUpdateSeconds = 0.3;

}  // namespace

void TableView::apply(TableUpdates updates) {
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
  std::map<RowPath, UITableViewCell> kept;
  std::vector<UITableViewCell> leaving;
  for (const auto& [path, cell] : cells_) {
    if (const auto place = moved(path)) {
      kept.emplace(*place, cell);
    } else {
      leaving.push_back(cell);
    }
  }
  if (selected_) selected_ = moved(*selected_);
  cells_ = std::move(kept);
  count_items();
  AnimationEngine* const engine = AnimationEngine::current();
  const auto lay_out = [&] {
    objc::send<"layoutSubviews">(self());
    for (const UITableViewCell& cell : leaving) cell.setAlpha(0);
  };
  if (!updates.animated || engine == nullptr) {
    lay_out();
    for (const UITableViewCell& cell : leaving) recycle(cell);
    return;
  }
  engine->animate({.duration = kUpdateSeconds}, lay_out, [kept = self(), leaving](bool) {
    for (const UITableViewCell& cell : leaving) {
      cell.setAlpha(1);
      of(kept).recycle(cell);
    }
  });
  // Those that came in start where they end, and are faded in.
  for (const RowPath& path : updates.inserted) {
    const auto cell = cells_.find(path);
    if (cell == cells_.end()) continue;
    engine->remove_all(cell->second);
    cell->second.setAlpha(0);
    const UITableViewCell shown = cell->second;
    engine->animate({.duration = kUpdateSeconds}, [&] { shown.setAlpha(1); });
  }
}

void TableView::end_updates() {
  if (updates_.depth == 0 || --updates_.depth > 0) return;
  TableUpdates updates = std::exchange(updates_, {});
  if (!updates.any() || !loaded_) {
    loaded_ = loaded_ && !updates.any();
    heights_changed();
    return;
  }
  apply(std::move(updates));
}

void TableView::insert_rows(const std::vector<RowPath>& paths, bool animated) {
  begin_updates();
  TableUpdates& updates = updates_;
  updates.inserted.insert(updates.inserted.end(), paths.begin(), paths.end());
  updates.animated = updates.animated || animated;
  end_updates();
}

void TableView::delete_rows(const std::vector<RowPath>& paths, bool animated) {
  begin_updates();
  TableUpdates& updates = updates_;
  updates.deleted.insert(updates.deleted.end(), paths.begin(), paths.end());
  updates.animated = updates.animated || animated;
  end_updates();
}

void TableView::reload_rows(const std::vector<RowPath>& paths) {
  for (const RowPath& path : paths) {
    const auto cell = cells_.find(path);
    if (cell != cells_.end()) {
      cell->second.removeFromSuperview();
      cells_.erase(cell);
    }
    const std::size_t item = item_of(path);
    if (item < items_.size()) measured_[item] = false;
  }
  self().setNeedsLayout();
}

}  // namespace wispen::uikit
