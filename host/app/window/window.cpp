// host/app/window/window.cpp: the host's screen in a window of the desktop.

#include "host/app/window/window.hpp"

#include <poll.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "host/app/window/event_descriptor.hpp"
#include "host/app/window/screen_placement.hpp"
#include "host/app/window/sdl_library.hpp"
#include "host/app/window/toolbar.hpp"
#include "host/app/window/window_input.hpp"
#include "host/graphics/canvas.hpp"
#include "host/uikit/containers/tables/scroll_view.hpp"
#include "host/uikit/controls/text_field.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/responder.hpp"

namespace wispen {

namespace {

using namespace std::chrono_literals;

constexpr Nanoseconds kFrame = 16'666'667ns;
// Of looking for events where the window system tells of them by no descriptor.
constexpr Nanoseconds kLookAgain = 15ms;
constexpr int kSmallestSide = 160;

const graphics::Colour kSurround = graphics::Colour::hex(0x1B1B1D);

bool is_set(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

// The window system counts in whole numbers.
Size size_of(int width, int height) { return {static_cast<double>(width), static_cast<double>(height)}; }
Size size_of(const SDL_Rect& rect) { return size_of(rect.w, rect.h); }
Point place_of(int x, int y) { return {static_cast<double>(x), static_cast<double>(y)}; }

}  // namespace

struct Window::State {
  State(Host& shown, const SdlLibrary& library, const std::vector<std::string>& languages)
      : host(shown), sdl(library), toolbar(look_switches(languages)) {}
  ~State();

  Result<void> open(const WindowOptions& options);
  void watch_events();
  void take_events();
  void handle(const SDL_Event& event);
  void handle_key(const SDL_KeyboardEvent& event);
  void copy_text(bool cut);
  void paste();
  void mouse_down(Point mouse, bool backwards);
  void switch_look(std::size_t index, bool forward);
  Size desktop_size() const;
  SDL_Rect desktop_bounds() const;

  void place();
  void show();
  Result<void> paint();
  void paint_surround();
  void copy(const graphics::PixelView& from, const Rect& part, Point origin);
  void present();

  Host& host;
  const SdlLibrary& sdl;
  Toolbar toolbar;
  SDL_Window* window = nullptr;
  SDL_Surface* surface = nullptr;  // the window's own; asked for anew when its size changed
  const double zoom = desktop_zoom();
  WindowPlace place_on_desktop = WindowPlace::Centre;
  ScreenPlacement placement;
  std::optional<WatchId> watch;
  std::optional<TimerId> looking;
  std::optional<TimerId> next_frame;
  Nanoseconds last_frame{-kFrame};
  bool all_dirty = true;  // surround and screen are to be copied whole
  bool pressed = false;
  std::vector<SDL_Rect> dirty;
  std::optional<Error> failure;
  bool closed = false;
};

Window::State::~State() {
  host.loop().set_before_wait(nullptr);
  if (watch) host.loop().unwatch(*watch);
  if (looking) host.loop().cancel(*looking);
  if (next_frame) host.loop().cancel(*next_frame);
  host.frame_buffer().set_scale(0);
  host.frame_buffer().forget();
  if (window != nullptr) sdl.DestroyWindow(window);
  sdl.QuitSubSystem(SDL_INIT_VIDEO);
}

SDL_Rect Window::State::desktop_bounds() const {
  SDL_Rect bounds{0, 0, 1280, 1024};
  const int display = window != nullptr ? std::max(0, sdl.GetWindowDisplayIndex(window)) : 0;
  sdl.GetDisplayUsableBounds(display, &bounds);
  return bounds;
}

Size Window::State::desktop_size() const {
  Size size = size_of(desktop_bounds());
  if (place_on_desktop != WindowPlace::Centre) size.width /= 2;
  return size;
}

Result<void> Window::State::open(const WindowOptions& options) {
  place_on_desktop = options.place;
  const Size size = window_size_for(host.session().device().size(), desktop_size(), zoom);
  int left = SDL_WINDOWPOS_CENTERED;
  if (options.place != WindowPlace::Centre) {
    const SDL_Rect bounds = desktop_bounds();
    const int half = options.place == WindowPlace::RightHalf ? bounds.x + bounds.w / 2 : bounds.x;
    left = half + std::max(0, (bounds.w / 2 - static_cast<int>(size.width)) / 2);
  }
  window = sdl.CreateWindow(options.title.c_str(), left, SDL_WINDOWPOS_CENTERED, static_cast<int>(size.width),
                            static_cast<int>(size.height), SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI);
  if (window == nullptr) return Error{std::string("no window can be opened: ") + sdl.GetError()};
  sdl.SetWindowMinimumSize(window, kSmallestSide, kSmallestSide);
  sdl.StartTextInput();
  place();
  watch_events();
  host.loop().set_before_wait([this] { show(); });
  return {};
}

void Window::State::watch_events() {
  if (const auto descriptor = event_descriptor(sdl, window)) {
    watch = host.loop().watch(*descriptor, POLLIN, [this](short) { take_events(); });
  } else {
    looking = host.loop().add_timer(
        kLookAgain, [this] { take_events(); }, kLookAgain);
  }
  // What came before anybody watched.
  host.loop().post([this] { take_events(); });
}

void Window::State::take_events() {
  SDL_Event event;
  while (!closed && sdl.PollEvent(&event) != 0) handle(event);
}

void Window::State::place() {
  int width = 0, height = 0, pixel_width = 0, pixel_height = 0;
  sdl.GetWindowSize(window, &width, &height);
  sdl.GetWindowSizeInPixels(window, &pixel_width, &pixel_height);
  const double density = width > 0 ? static_cast<double>(pixel_width) / width : 1;
  placement =
      ScreenPlacement::fit(size_of(pixel_width, pixel_height), density, host.session().device().size(), zoom);
  host.frame_buffer().set_scale(placement.scale);
  surface = nullptr;
  all_dirty = true;
}

/// Before the loop waits: paints what is out of date, at most once a frame.
void Window::State::show() {
  if (closed || failure) return;
  take_events();
  if (!all_dirty && !host.frame_buffer().stale()) return;
  const Nanoseconds now = host.loop().clock().now();
  const Nanoseconds since = now - last_frame;
  if (since < kFrame && !all_dirty) {
    if (!next_frame) next_frame = host.loop().add_timer(kFrame - since, [this] { next_frame.reset(); });
    return;
  }
  last_frame = now;
  if (const auto painted = paint(); !painted) {
    failure = painted.error();
    host.loop().stop();
    return;
  }
  // While it showed the picture the library may have read events that no descriptor will tell of again.
  host.loop().post([this] { take_events(); });
  if (host.session().animations().active() && !next_frame) {
    next_frame = host.loop().add_timer(kFrame, [this] { next_frame.reset(); });
  }
}

Result<void> Window::State::paint() {
  const auto changed = host.frame_buffer().update();
  if (!changed) return changed.error();
  if (surface == nullptr) {
    surface = sdl.GetWindowSurface(window);
    if (surface == nullptr) return Error{std::string("the window cannot be drawn on: ") + sdl.GetError()};
    all_dirty = true;
  }
  const graphics::PixelView screen = host.frame_buffer().pixels();
  const Rect whole{{0, 0}, size_of(screen.width, screen.height)};
  if (std::exchange(all_dirty, false)) {
    paint_surround();
    copy(screen, whole, placement.origin);
    dirty = {{0, 0, surface->w, surface->h}};
  } else {
    for (const Rect& part : *changed) {
      const double scale = host.frame_buffer().scale();
      const Rect pixels{{part.min_x() * scale, part.min_y() * scale},
                        {part.width() * scale, part.height() * scale}};
      copy(screen, pixels.pixel_aligned(1).intersection(whole), placement.origin);
    }
  }
  present();
  return {};
}

void Window::State::paint_surround() {
  const Size size = size_of(surface->w, surface->h);
  auto canvas = graphics::Canvas::create(size, 1);
  if (!canvas) return;
  canvas->fill(Rect{{0, 0}, size}, kSurround);
  toolbar.paint(host, *canvas, placement.toolbar, placement.density * zoom);
  copy(canvas->pixels(), {{0, 0}, size}, {0, 0});
}

void Window::State::copy(const graphics::PixelView& from, const Rect& part, Point origin) {
  const Rect room{{-origin.x, -origin.y}, size_of(surface->w, surface->h)};
  const Rect seen = part.intersection(room);
  if (seen.empty()) return;
  const int x = static_cast<int>(seen.min_x());
  const int y = static_cast<int>(seen.min_y());
  const int width = static_cast<int>(seen.width());
  const int height = static_cast<int>(seen.height());
  const int left = x + static_cast<int>(origin.x);
  const int top = y + static_cast<int>(origin.y);
  auto* const target = static_cast<std::uint8_t*>(surface->pixels) + std::ptrdiff_t{top} * surface->pitch +
                       std::ptrdiff_t{left} * surface->format->BytesPerPixel;
  sdl.ConvertPixels(width, height, SDL_PIXELFORMAT_ARGB8888, from.row(y) + x,
                    static_cast<int>(from.stride * 4), surface->format->format, target, surface->pitch);
  dirty.push_back({left, top, width, height});
}

void Window::State::present() {
  if (dirty.empty()) return;
  sdl.UpdateWindowSurfaceRects(window, dirty.data(), static_cast<int>(dirty.size()));
  dirty.clear();
}

void Window::State::handle(const SDL_Event& event) {
  uikit::TouchDispatcher& touches = host.session().touches();
  switch (event.type) {
    case SDL_QUIT:
      closed = true;
      host.loop().stop();
      break;
    case SDL_WINDOWEVENT:
      if (event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED) place();
      if (event.window.event == SDL_WINDOWEVENT_EXPOSED) all_dirty = true;
      break;
    case SDL_MOUSEBUTTONDOWN:
      mouse_down(place_of(event.button.x, event.button.y), event.button.button == SDL_BUTTON_RIGHT);
      break;
    case SDL_MOUSEMOTION:
      if (pressed) touches.moved(placement.to_screen(place_of(event.motion.x, event.motion.y)));
      break;
    case SDL_MOUSEBUTTONUP:
      if (event.button.button != SDL_BUTTON_LEFT || !std::exchange(pressed, false)) break;
      sdl.CaptureMouse(SDL_FALSE);
      // Whatever the window system left out on the way, the finger goes up where the button did.
      touches.moved(placement.to_screen(place_of(event.button.x, event.button.y)));
      touches.ended(placement.to_screen(place_of(event.button.x, event.button.y)));
      break;
    case SDL_MOUSEWHEEL: {
      const Point place = placement.to_screen(place_of(event.wheel.mouseX, event.wheel.mouseY));
      if (const auto scroll = uikit::scroll_view_at(place))
        uikit::ScrollView::of(scroll).wheel(wheel_points(event.wheel));
      break;
    }
    case SDL_TEXTINPUT:
      uikit::press_key(
          {.code = uikit::KeyCode::Text, .text = event.text.text, .shift = false, .command = false});
      break;
    case SDL_KEYDOWN:
      handle_key(event.key);
      break;
    default:
      break;
  }
}

void Window::State::mouse_down(Point mouse, bool backwards) {
  const Point pixel = placement.to_pixels(mouse);
  if (placement.toolbar.contains(pixel)) {
    if (const auto index = toolbar.switch_at(pixel)) switch_look(*index, !backwards);
    return;
  }
  if (backwards) return;
  pressed = true;
  // The finger is followed outside of the window too.
  sdl.CaptureMouse(SDL_TRUE);
  host.session().touches().began(placement.to_screen(mouse));
}

void Window::State::switch_look(std::size_t index, bool forward) {
  const Size before = host.session().device().size();
  if (const auto done = step_look(host, toolbar.switches()[index], forward); !done) {
    sdl.SetWindowTitle(window, done.error().message.c_str());
    return;
  }
  const Size now = host.session().device().size();
  if (!(before == now)) {
    const Size size = window_size_for(now, desktop_size(), zoom);
    sdl.SetWindowSize(window, static_cast<int>(size.width), static_cast<int>(size.height));
  }
  place();
}

void Window::State::handle_key(const SDL_KeyboardEvent& event) {
  const int number = function_key(event);
  const auto& switches = toolbar.switches();
  const auto wanted = std::ranges::find(switches, number, &LookSwitch::key);
  if (number > 0 && wanted != switches.end()) {
    return switch_look(static_cast<std::size_t>(wanted - switches.begin()),
                       (event.keysym.mod & KMOD_SHIFT) == 0);
  }
  const auto key = key_press(event);
  if (!key) return;
  // Held down they would answer one alert after the other.
  const bool answers = key->code == uikit::KeyCode::Return || key->code == uikit::KeyCode::Escape;
  if (answers && event.repeat != 0) return;
  if (key->command && key->text == "q") {
    closed = true;
    return host.loop().stop();
  }
  if (key->command && key->text == "v") return paste();
  if (key->command && (key->text == "c" || key->text == "x")) return copy_text(key->text == "x");
  uikit::press_key(*key);
}

void Window::State::copy_text(bool cut) {
  const auto field = objc::cast_or_nil<UITextField>(uikit::first_responder());
  if (!field || uikit::TextField::of(field).selected_text().length() == 0) return;
  sdl.SetClipboardText(uikit::TextField::of(field).selected_text().utf8().c_str());
  if (cut) uikit::TextField::of(field).insert(u"");
}

void Window::State::paste() {
  char* const text = sdl.GetClipboardText();
  std::string line = text != nullptr ? text : "";
  sdl.free(text);
  line.resize(std::min(line.size(), line.find_first_of("\r\n")));  // fields have one line
  if (line.empty()) return;
  uikit::press_key({.code = uikit::KeyCode::Text, .text = std::move(line), .shift = false, .command = false});
}

Window::Window(std::unique_ptr<State> state) : state_(std::move(state)) {}
Window::~Window() = default;

Result<std::unique_ptr<Window>> Window::open(Host& host, const WindowOptions& options) {
  if (host.loop().clock().driven()) return Error{"a window needs a host whose time is the wall clock's"};
  const bool has_x = is_set("DISPLAY");
  if (!has_x && !is_set("WAYLAND_DISPLAY")) {
    return Error{
        "no window can be opened, for there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set"};
  }
  const auto library = SdlLibrary::load();
  if (!library) return library.error();
  const SdlLibrary& sdl = **library;
  // X first: only there a descriptor tells of events, and an idle window costs nothing.
  sdl.SetHint(SDL_HINT_VIDEODRIVER, has_x ? "x11" : "wayland");
  // Else the window is made a second time once its surface is asked for, to be drawn by the graphics
  // processor: it flickers at its start, and loses what was pressed in between.
  if (has_x) sdl.SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  sdl.SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
  sdl.SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  sdl.SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
  if (options.place == WindowPlace::RightHalf) sdl.SetHint(SDL_HINT_WINDOW_NO_ACTIVATION_WHEN_SHOWN, "1");
  if (sdl.InitSubSystem(SDL_INIT_VIDEO) != 0) {
    return Error{std::string("no window can be opened: ") + sdl.GetError()};
  }
  auto state = std::make_unique<State>(host, sdl, options.languages);
  if (const auto opened = state->open(options); !opened) return opened.error();
  return std::unique_ptr<Window>(new Window(std::move(state)));
}

Result<void> Window::run() {
  if (!state_->closed) state_->host.loop().run();
  if (state_->failure) return *state_->failure;
  return {};
}

void Window::close() {
  state_->closed = true;
  state_->host.loop().stop();
}

}  // namespace wispen
