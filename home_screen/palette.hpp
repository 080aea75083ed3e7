// home_screen/palette.hpp: which colour a menu or a notification takes, and what can be read on it.
#pragma once

#include "home_screen/apps.hpp"
#include "home_screen/settings.hpp"

namespace wispen::home_screen {

/// The colour that menus (or notifications) of an app take; nil where they are to look as they always do.
/// Icons are asked, and texts read, by the bundle's own categories: without the bundle in the process
/// everything is plain.
UIColor colour_for(const App& app, const Settings& settings, const ColourSettings& place, bool dark);

/// "#RRGGBB", as the bundle reads it; nil without the bundle.
UIColor colour_from_text(const std::string& text);

/// What lies under texts and lines.
struct Ground {
  UIColor fill;           ///< laid over the blur
  UIColor seen;           ///< about what comes of both, opaque
  bool coloured = false;  ///< else the system's own
};
/// `colour` may be nil. Opacities are those of the setting; over bare blur the colour is thinner, so that the
/// blur is seen.
Ground ground_of(const UIColor& colour, double opacity, bool bare_blur, bool dark);

/// The ground where so much of a colour lies on it: of a plate behind an icon.
Ground covered(const Ground& ground, const UIColor& colour, double opacity);

/// For texts without a colour of their own: light or dark, as the ground needs it.
UIColor plain_ink(const Ground& ground);
UIColor plain_secondary_ink(const Ground& ground);
UIColor plain_line(const Ground& ground);
/// For texts and lines in the icon's colour. On a ground of the same colour that is a light or a dark shade
/// of it.
UIColor coloured_ink(const UIColor& colour, const Ground& ground);
UIColor coloured_line(const UIColor& colour, const Ground& ground);

}  // namespace wispen::home_screen
