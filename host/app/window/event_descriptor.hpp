// host/app/window/event_descriptor.hpp: where the window system tells that something happened.
#pragma once

#include <optional>

#include "host/app/window/sdl_library.hpp"

namespace wispen {

/// A descriptor that becomes readable when there are events; nothing where the system has none.
std::optional<int> event_descriptor(const SdlLibrary& sdl, SDL_Window* window);

}  // namespace wispen
