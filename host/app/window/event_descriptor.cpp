// host/app/window/event_descriptor.cpp: where the window system tells that something happened.

#include "host/app/window/event_descriptor.hpp"

#include <SDL2/SDL_syswm.h>
#include <X11/Xlib.h>

namespace wispen {

std::optional<int> event_descriptor(const SdlLibrary& sdl, SDL_Window* window) {
  SDL_SysWMinfo info;
  SDL_VERSION(&info.version);
  if (sdl.GetWindowWMInfo(window, &info) != SDL_TRUE || info.subsystem != SDL_SYSWM_X11) return std::nullopt;
  return ConnectionNumber(info.info.x11.display);
}

}  // namespace wispen
