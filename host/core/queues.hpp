// host/core/queues.hpp: the process's main queue and its background queue.
#pragma once

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "host/core/job.hpp"
#include "host/core/main_loop.hpp"
#include "host/core/work_pool.hpp"

namespace wispen {

/// One for the process, because the platform's queues are. All functions may be called from any thread
/// unless they say otherwise.
class Queues {
 public:
  enum class Target { Main, Background };

  static Queues& shared();

  WorkPool& background() { return background_; }

  /// Makes `loop` the one that drains the main queue and that counts background work as its own. What
  /// was added to the main queue before is handed to it in order. On the loop's thread; the loop must
  /// outlive the attachment.
  void attach(MainLoop& loop);
  /// Takes the loop away, and with it whatever of the main queue it has not run. On the loop's thread.
  void detach();

  void add(Target target, Job job);
  /// Runs `job` on `target` when `delay` has passed on the attached loop's clock (the wall's without one).
  void add_after(Nanoseconds delay, Target target, Job job);
  /// Runs `job` and returns when it has run. On the main thread for the main queue it could never return,
  /// so the process is ended with a sentence, as the phone does. If the loop goes away first, it returns
  /// with the job dropped.
  void run_and_wait(Target target, Job job);

  /// The attached loop's time, or the wall clock's.
  Nanoseconds now();

  /// Ends everything: detaches, drops what waits, and waits for running jobs at most `bound`. False when
  /// one of them overstays. The queues are usable again at once. On the main thread.
  bool stop(std::chrono::milliseconds bound = std::chrono::seconds(10));

 private:
  struct Delayed {
    Nanoseconds due;
    Target target;
    Job job;
  };

  // Its threads use what is below, so it is declared last and ends first.
  std::mutex mutex_;
  MainLoop* loop_ = nullptr;
  std::vector<Job> early_;
  std::vector<Delayed> early_delayed_;
  WorkPool background_;
};

}  // namespace wispen
