// host/graphics/image_memory.cpp: the pictures decoded last.

#include "host/graphics/image_memory.hpp"

#include <algorithm>
#include <list>
#include <mutex>

#include "host/graphics/file_state.hpp"
#include "host/graphics/image_file.hpp"

namespace wispen::graphics {

namespace {

struct Remembered {
  std::string path;
  FileState state;
  Image image;
};

std::size_t pixels_in(const Image& image) {
  const PixelsRef& pixels = image.pixels();
  return pixels ? static_cast<std::size_t>(pixels->width()) * static_cast<std::size_t>(pixels->height()) : 0;
}

class ImageMemory {
 public:
  static ImageMemory& shared() {
    static ImageMemory memory;
    return memory;
  }

  std::optional<Image> find(const std::string& path, const FileState& state) {
    const std::lock_guard lock(mutex_);
    const auto found = std::ranges::find(images_, path, &Remembered::path);
    if (found == images_.end() || found->state != state) return std::nullopt;
    images_.splice(images_.begin(), images_, found);
    return found->image;
  }

  void add(Remembered image) {
    if (pixels_in(image.image) > kMaximumRememberedPixels) return;
    const std::lock_guard lock(mutex_);
    std::erase_if(images_, [&](const Remembered& known) { return known.path == image.path; });
    images_.push_front(std::move(image));
    std::size_t pixels = 0;
    std::size_t count = 0;
    const auto fits = [&](const Remembered& each) {
      pixels += pixels_in(each.image);
      return ++count <= kMostImages && pixels <= kMaximumRememberedPixels;
    };
    images_.erase(std::ranges::find_if_not(images_, fits), images_.end());
  }

 private:
  static constexpr std::size_t kMostImages = 32;
  std::mutex mutex_;
  std::list<Remembered> images_;  // the last one used first
};

}  // namespace

Result<Image> remembered_image(const std::string& path) {
  // Before it is read: a file that is written meanwhile is read again next time.
  const FileState state = FileState::of(path);
  if (auto known = ImageMemory::shared().find(path, state)) return *std::move(known);
  auto image = load_image(path);
  if (image) ImageMemory::shared().add({path, state, *image});
  return image;
}

}  // namespace wispen::graphics
