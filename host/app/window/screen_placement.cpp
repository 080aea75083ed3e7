// host/app/window/screen_placement.cpp: where in a window the device's screen lies, and at which size.

#include "host/app/window/screen_placement.hpp"

#include <algorithm>
#include <cmath>

namespace wispen {

namespace {

constexpr double kSmallestScale = 0.1;
constexpr double kLargestScale = 4;
constexpr double kDesktopMargin = 60;  // for the window's own frame, and a little of what is behind

}  // namespace

ScreenPlacement ScreenPlacement::fit(Size window_pixels, double density, Size screen) {
  ScreenPlacement placement;
  placement.density = density;
  const double bar = std::round(kToolbarHeight * density);
  placement.toolbar = {{0, 0}, {window_pixels.width, std::min(bar, window_pixels.height)}};
  const Size room{window_pixels.width, std::max(0.0, window_pixels.height - bar)};
  placement.scale = std::clamp(std::min(room.width / screen.width, room.height / screen.height),
                               kSmallestScale, kLargestScale);
  placement.origin.x = std::max(0.0, std::floor((room.width - screen.width * placement.scale) / 2));
  placement.origin.y = bar + std::max(0.0, std::floor((room.height - screen.height * placement.scale) / 2));
  return placement;
}

Size window_size_for(Size screen, Size desktop) {
  const Size room{desktop.width - kDesktopMargin, desktop.height - kDesktopMargin - kToolbarHeight};
  const double zoom = std::clamp(std::min(room.width / screen.width, room.height / screen.height), 0.25, 1.0);
  return {std::round(screen.width * zoom), std::round(screen.height * zoom) + kToolbarHeight};
}

}  // namespace wispen
