// host/app/window/window_input.hpp: the desktop's mouse and keyboard, as touches and keys.
#pragma once

#include <optional>
#include <string>

#include "host/app/window/sdl_library.hpp"
#include "host/uikit/view/events/key.hpp"

namespace wispen {

/// What a key of the desktop means to the views; nothing for keys that write text, which comes by itself, and
/// for those that mean nothing.
std::optional<uikit::KeyPress> key_press(const SDL_KeyboardEvent& event);

/// The number of a function key; 0 for any other.
int function_key(const SDL_KeyboardEvent& event);

/// Points to scroll by for a turn of the wheel, up and down.
double wheel_points(const SDL_MouseWheelEvent& event);

}  // namespace wispen
