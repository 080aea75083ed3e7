// host/uikit/values/named_images.cpp: images by name, remembered while their files stay as they are.

#include <map>
#include <mutex>
#include <utility>

#include "host/foundation/problems.hpp"
#include "host/graphics/file_state.hpp"
#include "host/graphics/image_file.hpp"
#include "host/graphics/image_name.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/image_sources.hpp"

namespace wispen::uikit {

namespace {

struct Remembered {
  graphics::FileState state;
  UIImage image;
};

/// Enough for every image of a bundle; a program that makes up names must not fill the memory.
constexpr std::size_t kMostRemembered = 512;

struct Cache {
  std::mutex mutex;
  std::map<std::string, Remembered> by_path;
};

// Its images must not be released while the runtime goes down.
Cache& cache() {
  static auto* const kept = new Cache();
  return *kept;
}

}  // namespace

UIImage named_image(const std::string& folder, const std::string& name) {
  const DisplaySettings display = display_settings();
  const auto path = graphics::find_image(folder, name, static_cast<double>(display.scale), display.idiom);
  if (!path) {
    report_problem("there is no image named \"" + name + "\" in " + folder);
    return {};
  }
  const auto state = graphics::FileState::of(*path);
  {
    const std::lock_guard lock(cache().mutex);
    const auto found = cache().by_path.find(*path);
    if (found != cache().by_path.end() && found->second.state == state) return found->second.image;
  }
  auto loaded = graphics::load_image(*path);
  if (!loaded) {
    report_problem(loaded.error().message);
    return {};
  }
  UIImage image = image_from(*std::move(loaded));
  const std::lock_guard lock(cache().mutex);
  if (cache().by_path.size() >= kMostRemembered) cache().by_path.clear();
  cache().by_path.insert_or_assign(*path, Remembered{state, image});
  return image;
}

}  // namespace wispen::uikit
