// host/graphics/scaled_pixels.cpp: images at the size they are shown at, kept for the next time.

#include "host/graphics/scaled_pixels.hpp"

#include <cmath>
#include <list>

#include "host/graphics/resample.hpp"

namespace wispen::graphics {

namespace {

struct Entry {
  PixelsRef original;  // kept alive, so that its address stays its own
  Rect where;
  Size size;
  PixelsRef scaled;
};

// A page shows a few dozen images; large ones leave sooner.
constexpr std::size_t kMaximumEntries = 64;
constexpr std::int64_t kMaximumKept = std::int64_t{8} << 20;  // pixels

std::int64_t pixel_count(const PixelsRef& pixels) {
  return static_cast<std::int64_t>(pixels->width()) * pixels->height();
}

class Cache {
 public:
  PixelsRef find(const PixelsRef& original, const Rect& where, Size size) {
    for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
      if (entry->original != original || entry->where != where || entry->size != size) continue;
      entries_.splice(entries_.begin(), entries_, entry);
      return entry->scaled;
    }
    return nullptr;
  }

  void keep(Entry entry) {
    kept_ += pixel_count(entry.scaled);
    entries_.push_front(std::move(entry));
    while (entries_.size() > 1 && (entries_.size() > kMaximumEntries || kept_ > kMaximumKept)) {
      kept_ -= pixel_count(entries_.back().scaled);
      entries_.pop_back();
    }
  }

 private:
  std::list<Entry> entries_;
  std::int64_t kept_ = 0;
};

}  // namespace

PixelsRef scaled_pixels(const PixelsRef& pixels, const Rect& where, Size size) {
  const Rect whole{{}, {static_cast<double>(pixels->width()), static_cast<double>(pixels->height())}};
  if (where == whole) return pixels;
  thread_local Cache cache;
  if (auto scaled = cache.find(pixels, where, size)) return scaled;
  auto target = Pixels::create(std::llround(size.width), std::llround(size.height));
  if (!target) return nullptr;
  resample(pixels->view(), where, target->mutable_view());
  auto scaled = std::make_shared<const Pixels>(*std::move(target));
  cache.keep({pixels, where, size, scaled});
  return scaled;
}

}  // namespace wispen::graphics
