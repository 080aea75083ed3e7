// host/uikit/values/display_settings.cpp: the display, and what its user chose.

#include "host/uikit/values/display_settings.hpp"

#include <atomic>

namespace wispen::uikit {

namespace {

// Colours are asked for from background queues while a window changes its appearance.
std::atomic<DisplaySettings> current{DisplaySettings{}};
static_assert(std::atomic<DisplaySettings>::is_always_lock_free);

}  // namespace

DisplaySettings display_settings() { return current.load(std::memory_order_relaxed); }

void set_display_settings(const DisplaySettings& settings) {
  current.store(settings, std::memory_order_relaxed);
}

}  // namespace wispen::uikit
