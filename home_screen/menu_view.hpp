// home_screen/menu_view.hpp: the menu that opens when an icon is pressed.
#pragma once

#include "home_screen/pieces.hpp"

namespace wispen::home_screen {

inline constexpr double kMenuWidth = 250;  // points

/// The app's widget, at the origin; as wide as the menu.
UIView make_widget(const App& app, const Settings& settings, bool dark);

/// The menu, at the origin, as high as its rows need.
UIView make_menu(const App& app, const Settings& settings, bool dark);

}  // namespace wispen::home_screen
