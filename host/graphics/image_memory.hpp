// host/graphics/image_memory.hpp: the pictures decoded last, since pages ask for theirs at every visit.
#pragma once

#include <string>

#include "host/core/result.hpp"
#include "host/graphics/image.hpp"

namespace wispen::graphics {

/// load_image(), without decoding a file anew that has stayed as it was. Some are remembered, no more than
/// kMaximumRememberedPixels together. From any thread.
Result<Image> remembered_image(const std::string& path);

inline constexpr std::size_t kMaximumRememberedPixels = std::size_t{4} << 20;

}  // namespace wispen::graphics
