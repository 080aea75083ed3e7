// host/core/job.hpp: what queues, timers and watchers run.
#pragma once

#include <functional>

namespace wispen {

using Job = std::function<void()>;

/// Runs `body(context)` inside whatever a floor above needs around each job (an autorelease pool). Must
/// call it exactly once; exceptions pass through.
using JobScope = void (*)(void (*body)(void*), void* context);

inline void run_in_scope(JobScope scope, Job& job) {
  if (!scope) return job();
  scope([](void* context) { (*static_cast<Job*>(context))(); }, &job);
}

}  // namespace wispen
