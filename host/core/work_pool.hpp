// host/core/work_pool.hpp: the threads behind the concurrent background queue.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

#include "host/core/job.hpp"

namespace wispen {

/// What a floor above needs done on each worker, e.g. to register it with the object layer. Null is nothing.
struct WorkPoolHooks {
  void (*thread_started)() = nullptr;
  void (*thread_ending)() = nullptr;
  JobScope job_scope = nullptr;
};

/// Runs jobs on up to `max_threads` threads, which start when they are needed and live until stop().
/// Jobs start in the order they were added. All functions may be called from any thread. An exception
/// that leaves a job ends the process, as it does on the phone.
class WorkPool {
 public:
  explicit WorkPool(std::size_t max_threads = 16);
  WorkPool(const WorkPool&) = delete;
  WorkPool& operator=(const WorkPool&) = delete;
  /// As stop() with the default bound.
  ~WorkPool();

  /// For threads that start after this call.
  void set_hooks(WorkPoolHooks hooks);
  /// Called on a worker when its job was the last outstanding one; empty for nothing.
  void set_idle_handler(std::function<void()> handler);

  void add(Job job);
  /// Jobs that wait or run.
  std::size_t outstanding() const;
  /// Threads that live.
  std::size_t threads() const;

  /// Drops the jobs that wait, waits for those that run at most `bound` of real time, and ends the
  /// threads. True when no thread is left. A job that overstays keeps its own thread and state until it
  /// returns; the pool is usable again at once either way. Not from inside a job of this pool.
  bool stop(std::chrono::milliseconds bound = std::chrono::seconds(10));

 private:
  struct Crew;

  const std::size_t max_threads_;
  mutable std::mutex mutex_;
  WorkPoolHooks hooks_;
  std::function<void()> idle_handler_;
  std::shared_ptr<Crew> crew_;
};

}  // namespace wispen
