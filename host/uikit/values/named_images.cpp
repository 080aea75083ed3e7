// host/uikit/values/named_images.cpp: images by name, remembered while their files stay as they are.

#include <sys/stat.h>

#include <cstdint>
#include <map>
#include <mutex>
#include <utility>

#include "host/foundation/problems.hpp"
#include "host/graphics/image_file.hpp"
#include "host/graphics/image_name.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/image_sources.hpp"

namespace wispen::uikit {

namespace {

/// A file as it was read. An editor that saves may write into the file or put another in its place.
struct FileState {
  std::int64_t seconds = 0;
  std::int64_t nanoseconds = 0;
  std::int64_t bytes = 0;
  std::uint64_t number = 0;
  friend bool operator==(const FileState&, const FileState&) = default;
};

FileState state_of(const std::string& path) {
  struct stat found {};
  if (::stat(path.c_str(), &found) != 0) return {};
  return {found.st_mtim.tv_sec, found.st_mtim.tv_nsec, found.st_size, found.st_ino};
}

struct Remembered {
  FileState state;
  Image image;
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

Image named_image(const std::string& folder, const std::string& name) {
  const DisplaySettings display = display_settings();
  const auto path = graphics::find_image(folder, name, static_cast<double>(display.scale), display.idiom);
  if (!path) {
    report_problem("there is no image named \"" + name + "\" in " + folder);
    return {};
  }
  const FileState state = state_of(*path);
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
  Image image = Image::make({.image = *std::move(loaded)});
  const std::lock_guard lock(cache().mutex);
  if (cache().by_path.size() >= kMostRemembered) cache().by_path.clear();
  cache().by_path.insert_or_assign(*path, Remembered{state, image});
  return image;
}

}  // namespace wispen::uikit
