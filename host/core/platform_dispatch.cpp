// host/core/platform_dispatch.cpp: the phone's queue functions, by the phone's names.

#include "host/core/platform_dispatch.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <mutex>
#include <unordered_set>

#include "host/core/queues.hpp"

using wispen::Job;
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

/// What was handed over and has not been run. Only running it frees it, so that what a host drops when it
/// stops is not freed; it stays known here, or a leak checker would take it for lost.
class WaitingWork {
 public:
  static WaitingWork& shared() {
    // Never destroyed: other threads may still add work while the process ends.
    static WaitingWork* const instance = std::make_unique<WaitingWork>().release();
    return *instance;
  }
  Job job(void* context, void (*function)(void*)) {
    {
      const std::lock_guard lock(mutex_);
      contexts_.insert(context);
    }
    return [this, context, function] {
      forget(context);
      function(context);
    };
  }

 private:
  void forget(void* context) {
    const std::lock_guard lock(mutex_);
    const auto place = contexts_.find(context);
    if (place != contexts_.end()) contexts_.erase(place);
  }

  std::mutex mutex_;
  std::unordered_multiset<void*> contexts_;  // the same may be handed over more than once
};

std::uint64_t now() { return static_cast<std::uint64_t>(Queues::shared().now().count()); }

}  // namespace

dispatch_queue_s* dispatch_get_global_queue(std::intptr_t priority, std::uintptr_t flags) {
  // The four priorities, then the service classes from unspecified to user interactive.
  constexpr std::array<std::intptr_t, 9> kKnown = {2, 0, -2, -32768, 0x09, 0x11, 0x15, 0x19, 0x21};
  return flags == 0 && std::ranges::find(kKnown, priority) != kKnown.end() ? &background_queue : nullptr;
}

void dispatch_async_f(dispatch_queue_s* queue, void* context, void (*function)(void*)) {
  Queues::shared().add(target_of(queue), WaitingWork::shared().job(context, function));
}

void dispatch_sync_f(dispatch_queue_s* queue, void* context, void (*function)(void*)) {
  Queues::shared().run_and_wait(target_of(queue), [context, function] { function(context); });
}

void dispatch_after_f(std::uint64_t when, dispatch_queue_s* queue, void* context, void (*function)(void*)) {
  if (when >= kLast) return;
  const std::uint64_t base = now();
  const Nanoseconds delay(when > base ? static_cast<std::int64_t>(when - base) : 0);
  Queues::shared().add_after(delay, target_of(queue), WaitingWork::shared().job(context, function));
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
