// host/app/window/sdl_library.hpp: the library that windows come from, loaded only when one is opened.
//
// Pictures and scripts need no window: they are spared the library's start, and machines without it still
// make them.
#pragma once

#include <SDL2/SDL.h>

#include "host/core/result.hpp"

// Its header brings the window systems' own, and with them macros of everyday names.
struct SDL_SysWMinfo;

namespace wispen {

/// The functions of SDL 2 that a window uses, by their own names without the prefix.
struct SdlLibrary {
  decltype(&SDL_InitSubSystem) InitSubSystem;
  decltype(&SDL_QuitSubSystem) QuitSubSystem;
  decltype(&SDL_GetError) GetError;
  decltype(&SDL_SetHint) SetHint;
  decltype(&SDL_CreateWindow) CreateWindow;
  decltype(&SDL_DestroyWindow) DestroyWindow;
  decltype(&SDL_SetWindowMinimumSize) SetWindowMinimumSize;
  decltype(&SDL_SetWindowSize) SetWindowSize;
  decltype(&SDL_SetWindowTitle) SetWindowTitle;
  decltype(&SDL_GetWindowSize) GetWindowSize;
  decltype(&SDL_GetWindowSizeInPixels) GetWindowSizeInPixels;
  decltype(&SDL_GetWindowDisplayIndex) GetWindowDisplayIndex;
  decltype(&SDL_GetDisplayUsableBounds) GetDisplayUsableBounds;
  decltype(&SDL_GetWindowSurface) GetWindowSurface;
  decltype(&SDL_UpdateWindowSurfaceRects) UpdateWindowSurfaceRects;
  decltype(&SDL_ConvertPixels) ConvertPixels;
  SDL_bool (*GetWindowWMInfo)(SDL_Window*, SDL_SysWMinfo*);
  decltype(&SDL_PollEvent) PollEvent;
  decltype(&SDL_CaptureMouse) CaptureMouse;
  decltype(&SDL_StartTextInput) StartTextInput;
  decltype(&SDL_GetClipboardText) GetClipboardText;
  decltype(&SDL_SetClipboardText) SetClipboardText;
  decltype(&SDL_free) free;

  /// Loaded once and kept. Fails where the library is not installed or too old.
  static Result<const SdlLibrary*> load();
};

}  // namespace wispen
