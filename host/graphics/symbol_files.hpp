// host/graphics/symbol_files.hpp: the drawings of the symbols, as they are built into the library.
#pragma once

#include <span>
#include <string_view>

namespace wispen::graphics {

/// A drawing is 120 units tall, of which 100 are the point size; capitals stand centred in it. Lines have the
/// class "line", lines that are cut out of a shape "cut".
struct SymbolFile {
  std::string_view name;
  std::string_view svg;
};

/// Sorted by name.
std::span<const SymbolFile> symbol_files();

}  // namespace wispen::graphics
