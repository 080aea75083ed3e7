// host/core/platform_dispatch.hpp: the phone's queue functions, by the phone's names.
//
// Two queues are there: the main one, drained by the attached main loop, and one concurrent background
// queue for every priority. Times are nanoseconds of the main loop's clock, so that a driven clock drives
// delayed jobs too; wall-clock times are not offered.
#pragma once

#include <cstdint>

/// A queue; opaque to callers.
struct dispatch_queue_s {
  const char* label;
};

extern "C" {

/// The main queue is this object itself.
[[gnu::visibility("default")]] extern dispatch_queue_s _dispatch_main_q;  // NOLINT: the platform's name

/// The background queue for the platform's priorities (2, 0, -2, -32768) and service classes; null for
/// any other number and for flags, which are reserved.
[[gnu::visibility("default")]] dispatch_queue_s* dispatch_get_global_queue(std::intptr_t priority,
                                                                           std::uintptr_t flags);
[[gnu::visibility("default")]] void dispatch_async_f(dispatch_queue_s* queue, void* context,
                                                     void (*function)(void*));
/// From the main thread to the main queue it would wait for ever: the process ends with a sentence.
[[gnu::visibility("default")]] void dispatch_sync_f(dispatch_queue_s* queue, void* context,
                                                    void (*function)(void*));
/// At a time that dispatch_time() made; 0 is now, ~0 is never.
[[gnu::visibility("default")]] void dispatch_after_f(std::uint64_t when, dispatch_queue_s* queue,
                                                     void* context, void (*function)(void*));
/// `delta` nanoseconds after `when`; 0 is now, ~0 is never and stays so.
[[gnu::visibility("default")]] std::uint64_t dispatch_time(std::uint64_t when, std::int64_t delta);
}
