// host/core/main_loop.hpp: the one loop that runs timers, posted jobs and descriptors on the main thread.
#pragma once

#include <atomic>
#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

#include "host/core/clock.hpp"
#include "host/core/job.hpp"
#include "host/core/result.hpp"
#include "host/core/timer_list.hpp"
#include "host/core/unique_fd.hpp"

namespace wispen {

/// Names one watched descriptor for the life of its loop.
using WatchId = std::uint64_t;

/// When work counts as endless.
struct IdleBounds {
  std::size_t jobs = 1'000'000;                 ///< jobs, timers and events in one call
  std::chrono::milliseconds real_time{10'000};  ///< waiting for background work, and all else together
};

/// The loop of the thread that made it. post(), add_timer(), cancel(), wake() and stop() may be called
/// from any thread, everything else from the loop's own, also from inside a job. An exception that
/// leaves a job passes through the call that ran it; the loop stays usable and the job counts as run.
class MainLoop {
 public:
  explicit MainLoop(ClockKind kind = ClockKind::Wall);
  MainLoop(const MainLoop&) = delete;
  MainLoop& operator=(const MainLoop&) = delete;
  ~MainLoop();

  const Clock& clock() const { return clock_; }
  bool on_loop_thread() const { return std::this_thread::get_id() == thread_; }

  /// Around every job; for a floor above. Set while nothing runs.
  void set_job_scope(JobScope scope) { job_scope_ = scope; }
  /// Asked whether work is under way elsewhere that will post here. Whoever answers yes calls wake()
  /// when that ends.
  void set_busy_check(std::function<bool()> check) { busy_check_ = std::move(check); }

  /// Run by run() each time before it waits, so that a screen can show what the jobs before have changed. On
  /// the loop's thread; none takes it away.
  void set_before_wait(Job job) { before_wait_ = std::move(job); }

  /// Runs `job` on the loop, after what was posted before it.
  void post(Job job);
  /// Runs `job` when `delay` has passed on the loop's clock, and then every `interval`, if that is over 0.
  TimerId add_timer(Nanoseconds delay, Job job, Nanoseconds interval = Nanoseconds::zero());
  /// False when the timer is not there any more. After it returned on the loop's thread the job never runs.
  bool cancel(TimerId id);

  /// Runs `job` with poll(2)'s events while any of `events` (or an error) is there. The descriptor stays
  /// the caller's, who ends the watch before closing it.
  WatchId watch(int fd, short events, std::function<void(short)> job);
  bool unwatch(WatchId id);

  /// Runs everything that can run now, without moving the clock, until nothing is left and nobody else
  /// is busy. Fails when that does not come about within the bounds.
  Result<void> run_until_idle(IdleBounds bounds = {});
  /// Driven clocks only: moves time on by `duration`. Every timer fires in order, with the clock exactly
  /// at its due moment, and what those of one moment post runs before time moves on. Fails for a wall clock
  /// and endless work.
  Result<void> advance(Nanoseconds duration);
  /// Runs for `duration` of the loop's clock: waits on a wall clock, advances a driven one.
  Result<void> run_for(Nanoseconds duration);
  /// Runs until stop(). Timers of a driven clock do not become due meanwhile.
  void run();
  /// Ends the run() or run_for() of this moment, or else the next, after the job at hand.
  void stop();
  /// Makes a waiting loop look again.
  void wake();

 private:
  struct Watch {
    int fd;
    short events;
    std::shared_ptr<std::function<void(short)>> job;
  };

  std::size_t turn(Nanoseconds wait);
  std::size_t fire_due_timers();
  std::size_t run_posted();
  std::size_t run_ready_watches(Nanoseconds wait);
  std::optional<Nanoseconds> time_to_next_timer();
  bool take_stop() { return stopping_.exchange(false); }
  bool anything_posted();
  void run_job(Job& job) { run_in_scope(job_scope_, job); }

  Clock clock_;
  const std::thread::id thread_;
  JobScope job_scope_ = nullptr;
  std::function<bool()> busy_check_;
  Job before_wait_;

  std::mutex mutex_;  // guards the two lists that other threads add to
  std::deque<Job> posted_;
  TimerList timers_;

  std::map<WatchId, Watch> watches_;
  WatchId next_watch_ = 1;
  UniqueFd wake_fd_;
  std::atomic<bool> woken_ = false;
  std::atomic<bool> stopping_ = false;
};

}  // namespace wispen
