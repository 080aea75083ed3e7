// host/app/window/sdl_library.cpp: the library that windows come from, loaded only when one is opened.

#include "host/app/window/sdl_library.hpp"

#include <dlfcn.h>

#include <string>

namespace wispen {

namespace {

constexpr const char* kFile = "libSDL2-2.0.so.0";

Result<SdlLibrary> resolve() {
  void* const library = dlopen(kFile, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    return Error{std::string("a window needs the library SDL 2, which cannot be loaded: ") + dlerror()};
  }
  SdlLibrary all{};
  std::string missing;
  const auto find = [&](auto& function, const char* name) {
    function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(dlsym(library, name));
    if (function == nullptr && missing.empty()) missing = name;
  };
  find(all.InitSubSystem, "SDL_InitSubSystem");
  find(all.QuitSubSystem, "SDL_QuitSubSystem");
  find(all.GetError, "SDL_GetError");
  find(all.SetHint, "SDL_SetHint");
  find(all.CreateWindow, "SDL_CreateWindow");
  find(all.DestroyWindow, "SDL_DestroyWindow");
  find(all.SetWindowMinimumSize, "SDL_SetWindowMinimumSize");
  find(all.SetWindowSize, "SDL_SetWindowSize");
  find(all.SetWindowTitle, "SDL_SetWindowTitle");
  find(all.GetWindowSize, "SDL_GetWindowSize");
  find(all.GetWindowSizeInPixels, "SDL_GetWindowSizeInPixels");
  find(all.GetWindowDisplayIndex, "SDL_GetWindowDisplayIndex");
  find(all.GetDisplayUsableBounds, "SDL_GetDisplayUsableBounds");
  find(all.GetWindowSurface, "SDL_GetWindowSurface");
  find(all.UpdateWindowSurfaceRects, "SDL_UpdateWindowSurfaceRects");
  find(all.ConvertPixels, "SDL_ConvertPixels");
  find(all.GetWindowWMInfo, "SDL_GetWindowWMInfo");
  find(all.PollEvent, "SDL_PollEvent");
  find(all.CaptureMouse, "SDL_CaptureMouse");
  find(all.StartTextInput, "SDL_StartTextInput");
  find(all.GetClipboardText, "SDL_GetClipboardText");
  find(all.SetClipboardText, "SDL_SetClipboardText");
  find(all.free, "SDL_free");
  if (!missing.empty())
    return Error{std::string("the library ") + kFile + " is too old: it has no " + missing};
  return all;
}

}  // namespace

Result<const SdlLibrary*> SdlLibrary::load() {
  static const Result<SdlLibrary> kLibrary = resolve();
  if (!kLibrary) return kLibrary.error();
  return &*kLibrary;
}

}  // namespace wispen
