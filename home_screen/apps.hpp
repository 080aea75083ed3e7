// home_screen/apps.hpp: the apps on the home screen, and what is behind them.
#pragma once

#include <array>
#include <string>

#include "home_screen/drawing.hpp"

namespace wispen::home_screen {

inline constexpr double kIconSize = 60;  // points

struct App {
  std::string name;
  UIImage icon;
  bool came_with_the_device = true;
};

/// In a row above the dock, and in the dock; drawn once, at so many pixels a point.
struct Apps {
  explicit Apps(double scale);

  std::array<App, 4> row;
  std::array<App, 4> dock;
  const App& pressed() const { return row[0]; }     ///< whose menu is open
  const App& notifying() const { return dock[0]; }  ///< whose notification is open
};

/// Hills under a sky, by day or by night.
UIImage wallpaper(CGSize size, bool dark);

}  // namespace wispen::home_screen
