// host/preferences/cells/control_cells.hpp: rows with a control: switch, slider, segments.
#pragma once

#include "host/preferences/cells/table_cell.hpp"
#include "host/uikit/controls/control.hpp"
#include "host/uikit/controls/label.hpp"

namespace wispen::preferences {

struct ControlCellState {
  uikit::Control control;
};

/// The host's PSControlTableCell: it makes its control by `newControl`, shows the row's value in it, and
/// gives what the user sets there to the row's setter.
class ControlCell : public objc::Authored<ControlCell, Cell> {
 public:
  static constexpr objc::FixedString kClass{"PSControlTableCell"};
  using Authored::Authored;
  static void define();

  uikit::Control control() const { return state<ControlCellState>().control; }
  void setControl(const uikit::Control& control) const;
  /// Whether the control lies in the row's content, where the cell places it; a page may have moved it.
  bool places_control() const;

 private:
  friend struct ControlCellMethods;
};

/// The host's PSSwitchTableCell: a switch at the trailing edge.
class SwitchCell : public objc::Authored<SwitchCell, ControlCell> {
 public:
  static constexpr objc::FixedString kClass{"PSSwitchTableCell"};
  using Authored::Authored;
  static void define();
};

struct SliderCellState {
  uikit::Label value_label;  // only where the row shows its value
};

/// The host's PSSliderTableCell: a slider over the whole row.
class SliderCell : public objc::Authored<SliderCell, ControlCell> {
 public:
  static constexpr objc::FixedString kClass{"PSSliderTableCell"};
  using Authored::Authored;
  static void define();

 private:
  friend struct SliderCellMethods;
};

/// The host's PSSegmentTableCell: one segment for each of the row's values.
class SegmentCell : public objc::Authored<SegmentCell, ControlCell> {
 public:
  static constexpr objc::FixedString kClass{"PSSegmentTableCell"};
  using Authored::Authored;
  static void define();
};

}  // namespace wispen::preferences
