// host/app/window/toolbar.hpp: the strip of buttons above the device's screen.
#pragma once

#include <optional>
#include <vector>

#include "host/app/window/trait_switches.hpp"
#include "host/graphics/canvas.hpp"

namespace wispen {

/// Paints itself in pixels, at a density, and knows what lies where.
class Toolbar {
 public:
  explicit Toolbar(std::vector<TraitSwitch> switches) : switches_(std::move(switches)) {}

  const std::vector<TraitSwitch>& switches() const { return switches_; }
  /// Over the area of the canvas, whose units are pixels.
  void paint(const Host& host, graphics::Canvas& canvas, const Rect& area, double density);
  /// Nothing between the buttons.
  std::optional<std::size_t> switch_at(Point pixel) const;

 private:
  std::vector<TraitSwitch> switches_;
  std::vector<Rect> buttons_;
};

}  // namespace wispen
