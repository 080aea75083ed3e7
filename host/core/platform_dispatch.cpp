// host/core/platform_dispatch.cpp

#include "host/core/platform_dispatch.hpp"

#include <algorithm>
#include <array>
#include <limits>

#include "host/core/queues.hpp"

using wispen::Nanoseconds;
using wispen::Queues;

dispatch_queue_s _dispatch_main_q = {"main"};

namespace {

constexpr std::uint64_t kNow = 0;
constexpr std::uint64_t kForever = ~std::uint64_t{0};
constexpr auto kLast = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());

dispatch_queue_s background_queue = {"background"};

Queues::Target target_of(const dispatch_queue_s* queue) {
  return queue == &_dispatch_main_q ? Queues::Target::Main : Queues::Target::Background;
}

std::uint64_t now() { return static_cast<std::uint64_t>(Queues::shared().now().count()); }

}  // namespace

dispatch_queue_s* dispatch_get_global_queue(std::intptr_t priority, std::uintptr_t flags) {
  // The four priorities, then the service classes from unspecified to user interactive.
  constexpr std::array<std::intptr_t, 9> kKnown = {2, 0, -2, -32768, 0x09, 0x11, 0x15, 0x19, 0x21};
  return flags == 0 && std::ranges::find(kKnown, priority) != kKnown.end() ? &background_queue : nullptr;
}

void dispatch_async_f(dispatch_queue_s* queue, void* context, void (*function)(void*)) {
  Queues::shared().add(target_of(queue), [context, function] { function(context); });
}

void dispatch_sync_f(dispatch_queue_s* queue, void* context, void (*function)(void*)) {
  Queues::shared().run_and_wait(target_of(queue), [context, function] { function(context); });
}

void dispatch_after_f(std::uint64_t when, dispatch_queue_s* queue, void* context, void (*function)(void*)) {
  if (when >= kLast) return;
  const std::uint64_t base = now();
  const Nanoseconds delay(when > base ? static_cast<std::int64_t>(when - base) : 0);
  Queues::shared().add_after(delay, target_of(queue), [context, function] { function(context); });
}

std::uint64_t dispatch_time(std::uint64_t when, std::int64_t delta) {
  if (when == kForever) return kForever;
  const std::uint64_t base = when == kNow ? now() : when;
  if (delta < 0) {
    const std::uint64_t back = ~static_cast<std::uint64_t>(delta) + 1;
    return base > back ? base - back : 1;
  }
  const std::uint64_t time = base + static_cast<std::uint64_t>(delta);
  return time >= kLast ? kForever : time;
}
