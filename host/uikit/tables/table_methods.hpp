// host/uikit/tables/table_methods.hpp: a table's inner workings, shared by its sources.
#pragma once

#include "host/uikit/controls/label.hpp"
#include "host/uikit/tables/table_state.hpp"

namespace wispen::uikit {

struct TableMethods {
  using Self = TableView;

  // Items and their heights.
  static void count_items(const Self& self);
  /// The number of items for a path that is none.
  static std::size_t item_of(const Self& self, RowPath path);
  static double measure(const Self& self, const TableItem& item);
  static void measure_item(const Self& self, std::size_t item);
  static Rect item_rect(const Self& self, std::size_t item);
  static void update_content_size(const Self& self);
  static NSString title_of(const Self& self, const TableItem& item);
  static NSString shown_title(const NSString& title, bool header);
  static Label section_label(const NSString& title, bool header);

  // What is in sight.
  static void tile(const Self& self);
  static TableCell cell_at(const Self& self, RowPath path);
  static void place_cell(const Self& self, std::size_t item);
  static View make_section_view(const Self& self, const TableItem& item);
  static void place_section_view(const Self& self, std::size_t item);
  static void recycle_section_view(const Self& self, const View& view);
  static void place_edges(const Self& self);
  static void drop_outside(const Self& self, std::size_t first, std::size_t last);
  static void drop_all(const Self& self);
  static void recycle(const Self& self, const TableCell& cell);
  static bool holds_first_responder(const TableCell& cell);

  static void apply(const Self& self, TableUpdates updates);
  /// Section -1 selects nothing.
  static void set_selected(const Self& self, RowPath path, bool animated);
};

}  // namespace wispen::uikit
