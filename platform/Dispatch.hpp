// platform/Dispatch.hpp: queues, and work that is done once.
#pragma once

#include <utility>

#include "platform/System.h"

extern "C" {
struct dispatch_queue_s;
using dispatch_queue_t = dispatch_queue_s*;
extern dispatch_queue_s _dispatch_main_q;  // NOLINT: the platform's name
/// Priority 0 is the usual one; flags are 0.
dispatch_queue_t dispatch_get_global_queue(long priority, unsigned long flags);
void dispatch_async_f(dispatch_queue_t queue, void* context, void (*work)(void*));
}

inline dispatch_queue_t dispatch_get_main_queue() { return &_dispatch_main_q; }

/// Runs the work on the queue, soon; it keeps what it captures alive until it has run.
template <class Work>
void dispatch_async(dispatch_queue_t queue, Work work) {
  dispatch_async_f(queue, new Work(std::move(work)), [](void* context) {
    Work* const own = static_cast<Work*>(context);
    (*own)();
    delete own;
  });
}

using dispatch_once_t = platform_once_t;

/// Runs the function once in the token's life; callers that come meanwhile wait. The token begins as 0.
inline void dispatch_once(dispatch_once_t* token, void (*function)()) {
  platform_dispatch_once_f(token, reinterpret_cast<void*>(function),
                           [](void* context) { reinterpret_cast<void (*)()>(context)(); });
}
