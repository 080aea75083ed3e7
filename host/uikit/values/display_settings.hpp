// host/uikit/values/display_settings.hpp: the display, and what its user chose, as images and fonts ask for
// it.
#pragma once

#include "host/graphics/appearance.hpp"
#include "host/graphics/text_style.hpp"

namespace wispen::uikit {

// Aligned to its size, so that every compiler reads and writes it in one piece without a library's help.
struct alignas(8) DisplaySettings {
  float scale = 2;  ///< pixels a point
  graphics::Idiom idiom = graphics::Idiom::Phone;
  graphics::Appearance appearance = graphics::Appearance::Light;
  graphics::ContentSize content_size = graphics::ContentSize::Large;
  bool right_to_left = false;
  friend bool operator==(const DisplaySettings&, const DisplaySettings&) = default;
};

/// Of the process. From any thread.
DisplaySettings display_settings();
void set_display_settings(const DisplaySettings& settings);

}  // namespace wispen::uikit
