// host/uikit/tables/table_cell_layout.hpp: where a row's icon, title and value stand, and how high it is for
// them.
#pragma once

#include "host/uikit/tables/table_cell.hpp"

namespace wispen::uikit {

inline constexpr double kCellImageSize = 29;  ///< an icon's place, whatever its own size
inline constexpr double kCellImageGap = 15;
inline constexpr double kCellAccessoryWidth = 8;
inline constexpr double kCellAccessoryMargin = 16;

/// Room on the trailing side that is not the content's.
double accessory_room(const TableCell& cell);

/// Lays out what the cell made of its content view, whose frame is set.
void place_cell_content(const TableCell& cell);

/// The size that its content, or the constraints in it, need in the width of `size`.
Size fitting_cell_size(const TableCell& cell, const Size& size);

}  // namespace wispen::uikit
