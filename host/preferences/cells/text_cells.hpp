// host/preferences/cells/text_cells.hpp: rows to write in, and a row that waits.
#pragma once

namespace wispen::preferences {

/// PSEditableTableCell: a text field beside the title. What is written is stored when writing ends.
void define_edit_cell();
/// PSSpinnerTableCell: a title with an indicator that turns.
void define_spinner_cell();

}  // namespace wispen::preferences
