// host/app/window/window_input.cpp: the desktop's mouse and keyboard, as touches and keys.

#include "host/app/window/window_input.hpp"

namespace wispen {

namespace {

constexpr double kPointsPerNotch = 48;

std::optional<uikit::KeyCode> code_of(SDL_Keycode key) {
  using uikit::KeyCode;
  switch (key) {
    case SDLK_TAB:
      return KeyCode::Tab;
    case SDLK_RETURN:
    case SDLK_KP_ENTER:
      return KeyCode::Return;
    case SDLK_ESCAPE:
      return KeyCode::Escape;
    case SDLK_BACKSPACE:
      return KeyCode::Backspace;
    case SDLK_DELETE:
      return KeyCode::Delete;
    case SDLK_LEFT:
      return KeyCode::Left;
    case SDLK_RIGHT:
      return KeyCode::Right;
    case SDLK_UP:
      return KeyCode::Up;
    case SDLK_DOWN:
      return KeyCode::Down;
    case SDLK_HOME:
      return KeyCode::Home;
    case SDLK_END:
      return KeyCode::End;
    case SDLK_PAGEUP:
      return KeyCode::PageUp;
    case SDLK_PAGEDOWN:
      return KeyCode::PageDown;
    default:
      return std::nullopt;
  }
}

}  // namespace

std::optional<uikit::KeyPress> key_press(const SDL_KeyboardEvent& event) {
  uikit::KeyPress key;
  key.shift = (event.keysym.mod & KMOD_SHIFT) != 0;
  key.command = (event.keysym.mod & (KMOD_CTRL | KMOD_GUI)) != 0;
  if (const auto code = code_of(event.keysym.sym)) {
    key.code = *code;
    return key;
  }
  // With control a letter writes nothing: it is a command.
  const bool letter = event.keysym.sym >= SDLK_a && event.keysym.sym <= SDLK_z;
  if (!key.command || !letter) return std::nullopt;
  key.text = static_cast<char>(event.keysym.sym);
  return key;
}

int function_key(const SDL_KeyboardEvent& event) {
  const SDL_Keycode key = event.keysym.sym;
  return key >= SDLK_F1 && key <= SDLK_F12 ? key - SDLK_F1 + 1 : 0;
}

double wheel_points(const SDL_MouseWheelEvent& event) {
  const double turns = event.preciseY != 0 ? double{event.preciseY} : static_cast<double>(event.y);
  return (event.direction == SDL_MOUSEWHEEL_FLIPPED ? -turns : turns) * kPointsPerNotch;
}

}  // namespace wispen
