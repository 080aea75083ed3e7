// host/graphics/png_filter.hpp: a PNG's rows, made whole again from the differences that the file holds.
#pragma once

#include <cstdint>

namespace wispen::graphics {

/// What a row's bytes were taken away from before they were packed (PNG, section 9: Filtering).
enum class PngFilter : std::uint8_t { None, Left, Above, Average, Paeth };

/// Restores one row of `width` pixels of eight bits a channel, `bytes_per_pixel` 3 or 4. A pixel of `row` and
/// of `above`, which is the row restored before or zeros, holds its bytes in the order of memory; of three
/// bytes a fourth, without a meaning, stands beside them. `packed` must be readable one byte beyond the row.
void restore_png_row(PngFilter filter, const std::uint8_t* packed, int bytes_per_pixel,
                     const std::uint32_t* above, std::uint32_t* row, int width);

}  // namespace wispen::graphics
