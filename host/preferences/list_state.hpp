// host/preferences/list_state.hpp: what a page of specifiers knows of itself.
#pragma once

#include <deque>
#include <map>
#include <vector>

#include "host/preferences/cells/table_cell.hpp"
#include "host/preferences/list_controller.hpp"

namespace wispen::preferences {

struct ListControllerState {
  std::deque<ListChange> changes;
  // Where each group starts, for the list as it stood when `grouped` was set.
  std::vector<std::size_t> group_starts;
  bool grouped = false;
  // Where a specifier was last found: pages walk their rows in order, and a search that starts there makes
  // the walk linear.
  std::size_t cursor = 0;

  uikit::TableView table;
  // Cells of rows' own classes that were made to ask their height, until the table takes them over.
  std::map<const void*, Cell> measured_cells;  // by specifier
};

}  // namespace wispen::preferences
