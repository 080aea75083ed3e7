// home_screen/notification_view.hpp: a notification that was pressed, with its actions.
#pragma once

#include "home_screen/pieces.hpp"

namespace wispen::home_screen {

/// At the origin, that many points wide and as high as it needs.
UIView make_notification(const App& app, const Settings& settings, bool dark, double width);

}  // namespace wispen::home_screen
