// host/uikit/tables/table_view.hpp: UITableView: rows in sections, of which only those in sight exist.
#pragma once

#include <optional>
#include <vector>

#include "host/uikit/tables/index_path.hpp"
#include "host/uikit/tables/scroll_view.hpp"
#include "host/uikit/tables/table_cell.hpp"

namespace wispen::uikit {

/// The platform's values.
enum class TableStyle : NSInteger { Plain = 0, Grouped = 1, InsetGrouped = 2 };

struct TableState;

class TableView : public objc::Authored<TableView, ScrollView> {
 public:
  static constexpr objc::FixedString kClass{"UITableView"};
  using Authored::Authored;

  static constexpr double kAutomaticHeight = -1;

  static void define();
  static TableView make(const Rect& frame, TableStyle style);
  TableState& table() const;

  void reloadData() const;
  void set_data_source(const NSObject& source) const;
  void set_delegate(const NSObject& delegate) const;
  /// Nil for a row that is not in sight.
  TableCell cell_for_row(RowPath path) const;
  std::optional<RowPath> path_of(const TableCell& cell) const;
  std::vector<TableCell> visible_cells() const;
  /// In the table's coordinates.
  Rect rect_for_row(RowPath path) const;
  void scroll_to_row(RowPath path, bool animated) const;
  /// Structure changes between these two are made together; rows there were are named as they were before,
  /// rows there will be as they will be after.
  void begin_updates() const;
  void end_updates() const;
  void insert_rows(const std::vector<RowPath>& paths, bool animated) const;
  void delete_rows(const std::vector<RowPath>& paths, bool animated) const;
  /// Their cells are made anew.
  void reload_rows(const std::vector<RowPath>& paths) const;
  /// Heights are asked for again; the cells stay.
  void heights_changed() const;

  // By the cells.
  bool may_highlight(const TableCell& cell) const;
  void select(const TableCell& cell) const;
  /// The side margin of an inset table.
  double side_margin() const;

 private:
  friend struct TableMethods;
};

}  // namespace wispen::uikit
