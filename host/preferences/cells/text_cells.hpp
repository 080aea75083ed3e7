// host/preferences/cells/text_cells.hpp: rows to write in, and a row that waits.
#pragma once

#include "host/preferences/cells/table_cell.hpp"
#include "host/uikit/controls/text_field.hpp"

namespace wispen::preferences {

struct EditCellState {
  uikit::TextField field;
};

/// The host's PSEditableTableCell: a text field beside the title. What is written is stored when writing
/// ends.
class EditCell : public objc::Authored<EditCell, Cell> {
 public:
  static constexpr objc::FixedString kClass{"PSEditableTableCell"};
  using Authored::Authored;
  static void define();
  uikit::TextField text_field() const { return state<EditCellState>().field; }

 private:
  friend struct EditCellMethods;
};

struct SpinnerCellState {
  uikit::View indicator;
};

/// The host's PSSpinnerTableCell: a title with an indicator that turns.
class SpinnerCell : public objc::Authored<SpinnerCell, Cell> {
 public:
  static constexpr objc::FixedString kClass{"PSSpinnerTableCell"};
  using Authored::Authored;
  static void define();

 private:
  friend struct SpinnerCellMethods;
};

}  // namespace wispen::preferences
