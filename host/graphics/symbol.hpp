// host/graphics/symbol.hpp: symbols by the platform's names, in drawings of our own.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/core/result.hpp"
#include "host/graphics/font.hpp"
#include "host/graphics/image.hpp"

namespace wispen::graphics {

/// The platform's numbers.
enum class SymbolScale : std::int8_t { Default = -1, Unspecified = 0, Small = 1, Medium = 2, Large = 3 };

struct SymbolConfiguration {
  double point_size = Font::kSystemSize;  ///< of the text that it stands beside
  double weight = font_weight::kRegular;
  SymbolScale scale = SymbolScale::Default;
  double display_scale = 2;    ///< pixels a point
  bool right_to_left = false;  ///< turns "forward" and "backward" round
  friend bool operator==(const SymbolConfiguration&, const SymbolConfiguration&) = default;
};

struct Symbol {
  Image image;         ///< a template with a baseline
  bool known = false;  ///< false: the name is not known, and the image is a dashed box with a question mark
};

/// Fails only for sizes that cannot be drawn. From a cache when it was drawn before; any thread may ask.
Result<Symbol> symbol_image(std::string_view name, const SymbolConfiguration& configuration = {});
bool is_known_symbol(std::string_view name);
std::vector<std::string_view> symbol_names();

}  // namespace wispen::graphics
