// host/graphics/material.hpp: the frosted panes that show what lies behind them.
#pragma once

#include "host/graphics/colour.hpp"

namespace wispen::graphics {

/// What is done to the pixels behind a pane: blurred, their colours strengthened, and tinted.
struct Material {
  double sigma = 0;  ///< of the blur, in points
  double saturation = 1;
  Colour tint;
  bool bounded = false;  ///< sees only what lies under the pane itself, as if its rim went on outside
  friend bool operator==(const Material&, const Material&) = default;
};

/// The material of the platform's blur effect styles 0 to 20; that of 4, the regular one, for any other.
Material blur_effect_material(int style);

/// The material of the older backdrop view's styles: 0 light, 1 dark, 2 blur alone; others as 0.
Material backdrop_material(int style);

}  // namespace wispen::graphics
