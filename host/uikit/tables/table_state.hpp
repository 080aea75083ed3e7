// host/uikit/tables/table_state.hpp: what a table knows of itself.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/uikit/tables/header_footer_view.hpp"
#include "host/uikit/tables/height_index.hpp"
#include "host/uikit/tables/table_view.hpp"

namespace wispen::uikit {

/// What lies below each other: for every section a header, its rows, and a footer.
struct TableItem {
  static constexpr NSInteger kHeader = -1;
  static constexpr NSInteger kFooter = -2;
  NSInteger section = 0;
  NSInteger row = 0;
};

struct TableUpdates {
  int depth = 0;
  bool animated = false;
  std::vector<RowPath> deleted;   // as they were
  std::vector<RowPath> inserted;  // as they will be
  bool any() const { return !deleted.empty() || !inserted.empty(); }
};

struct TableState {
  TableStyle style = TableStyle::Plain;
  objc::Weak<NSObject> data_source;
  double row_height = TableView::kAutomaticHeight;
  NSInteger separator_style = 1;
  UIColor separator_colour;
  bool allows_selection = true;
  View header;
  View footer;

  bool loaded = false;
  std::vector<std::size_t> section_starts;  // of the header's item
  std::vector<TableItem> items;
  std::vector<bool> measured;  // by item: its height is no estimate
  HeightIndex heights;
  double laid_out_width = 0;

  std::map<RowPath, TableCell> cells;  // in sight
  std::map<NSInteger, View> headers;
  std::map<NSInteger, View> footers;
  std::map<std::string, std::vector<TableCell>> reusable;
  std::map<std::string, std::vector<HeaderFooterView>> reusable_sections;
  std::map<std::string, objc::ClassRef> registered;
  std::map<std::string, objc::ClassRef> registered_sections;
  std::optional<RowPath> selected;
  TableUpdates updates;
};

}  // namespace wispen::uikit
