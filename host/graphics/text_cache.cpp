// host/graphics/text_cache.cpp: the last layouts of a thread, so that drawing a page twice sets it once.

#include <functional>
#include <list>
#include <unordered_map>

#include "host/graphics/text_engine.hpp"
#include "host/graphics/text_layout.hpp"

namespace wispen::graphics {

namespace {

class LayoutCache {
 public:
  static LayoutCache& current() {
    TextEngine::current();  // made first, so that it outlives the layouts when the thread ends
    thread_local LayoutCache cache;
    return cache;
  }

  std::shared_ptr<const TextLayout> get(const AttributedText& text, const TextConstraints& constraints) {
    const std::size_t key = text.hash() * 31 + std::hash<double>{}(constraints.width) +
                            static_cast<std::size_t>(constraints.maximum_lines);
    const auto [begin, end] = by_key_.equal_range(key);
    for (auto each = begin; each != end; ++each) {
      const Entry& entry = *each->second;
      if (entry.layout->constraints() == constraints && entry.layout->text() == text) {
        entries_.splice(entries_.begin(), entries_, each->second);
        return entry.layout;
      }
    }
    entries_.push_front({key, TextLayout::create(text, constraints)});
    by_key_.emplace(key, entries_.begin());
    if (entries_.size() > kCapacity) drop_oldest();
    return entries_.front().layout;
  }

 private:
  // Several pages of rows with two labels each.
  static constexpr std::size_t kCapacity = 512;

  struct Entry {
    std::size_t key;
    std::shared_ptr<const TextLayout> layout;
  };

  void drop_oldest() {
    const auto oldest = std::prev(entries_.end());
    const auto [begin, end] = by_key_.equal_range(oldest->key);
    for (auto each = begin; each != end; ++each) {
      if (each->second != oldest) continue;
      by_key_.erase(each);
      break;
    }
    entries_.pop_back();
  }

  std::list<Entry> entries_;
  std::unordered_multimap<std::size_t, std::list<Entry>::iterator> by_key_;
};

}  // namespace

std::shared_ptr<const TextLayout> layout_text(const AttributedText& text,
                                              const TextConstraints& constraints) {
  return LayoutCache::current().get(text, constraints);
}

}  // namespace wispen::graphics
