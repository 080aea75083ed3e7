// host/preferences/cells/control_cells.hpp: rows with a control: switch, slider, segments.
#pragma once

namespace wispen::preferences {

/// PSControlTableCell: it makes its control by `newControl`, shows the row's value in it, and gives what the
/// user sets there to the row's setter.
void define_control_cell();
/// PSSwitchTableCell: a switch at the trailing edge.
void define_switch_cell();
/// PSSliderTableCell: a slider over the whole row.
void define_slider_cell();
/// PSSegmentTableCell: one segment for each of the row's values.
void define_segment_cell();

}  // namespace wispen::preferences
