// host/core/main_loop.cpp: the one loop that runs timers, posted jobs and descriptors on the main thread.

#include "host/core/main_loop.hpp"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace wispen {
namespace {

/// A poll without an end would be right too, as every change wakes the loop; this keeps arithmetic far
/// from its limits.
constexpr Nanoseconds kLongest = std::chrono::hours(1);

Error endless(std::size_t jobs) {
  return Error{"the main loop did not come to rest within " + std::to_string(jobs) + " jobs"};
}

}  // namespace

MainLoop::MainLoop(ClockKind kind)
    : clock_(kind), thread_(std::this_thread::get_id()), wake_fd_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

MainLoop::~MainLoop() = default;

void MainLoop::post(Job job) {
  {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(job));
  }
  // The loop's own thread looks at the list before it waits.
  if (!on_loop_thread()) wake();
}

TimerId MainLoop::add_timer(Nanoseconds delay, Job job, Nanoseconds interval) {
  const Nanoseconds due = clock_.now() + std::max(delay, Nanoseconds::zero());
  TimerId id = 0;
  {
    const std::lock_guard lock(mutex_);
    id = timers_.add(due, interval, std::move(job));
  }
  if (!on_loop_thread()) wake();
  return id;
}

bool MainLoop::cancel(TimerId id) {
  // What the job captured may come back to this loop when it dies, so it dies outside the lock.
  std::shared_ptr<Job> cancelled;
  const std::lock_guard lock(mutex_);
  cancelled = timers_.cancel(id);
  return cancelled != nullptr;
}

WatchId MainLoop::watch(int fd, short events, std::function<void(short)> job) {
  const WatchId id = next_watch_++;
  watches_.emplace(id, Watch{fd, events, std::make_shared<std::function<void(short)>>(std::move(job))});
  return id;
}

bool MainLoop::unwatch(WatchId id) { return watches_.erase(id) > 0; }

void MainLoop::wake() {
  // One write is enough until the loop has seen it.
  if (woken_.exchange(true)) return;
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t written = write(wake_fd_.get(), &one, sizeof one);
}

void MainLoop::stop() {
  stopping_ = true;
  wake();
}

bool MainLoop::anything_posted() {
  const std::lock_guard lock(mutex_);
  return !posted_.empty();
}

std::optional<Nanoseconds> MainLoop::time_to_next_timer() {
  std::optional<Nanoseconds> due;
  {
    const std::lock_guard lock(mutex_);
    due = timers_.next_due();
  }
  if (!due) return std::nullopt;
  return std::max(*due - clock_.now(), Nanoseconds::zero());
}

std::size_t MainLoop::fire_due_timers() {
  std::size_t fired = 0;
  // A job that makes a timer due now is run in the next turn, so that no timer starves the posted jobs.
  const Nanoseconds now = clock_.now();
  std::size_t left = 0;
  {
    const std::lock_guard lock(mutex_);
    left = timers_.size();
  }
  for (; left > 0; --left) {
    std::shared_ptr<Job> job;
    {
      const std::lock_guard lock(mutex_);
      job = timers_.take_due(now);
    }
    if (!job) break;
    ++fired;
    run_job(*job);
  }
  return fired;
}

std::size_t MainLoop::run_posted() {
  std::size_t ran = 0;
  std::unique_lock lock(mutex_);
  // What these jobs post waits for the next turn. One is taken at a time: a job may run the loop itself.
  for (std::size_t left = posted_.size(); left > 0 && !posted_.empty() && !stopping_; --left) {
    Job job = std::move(posted_.front());
    posted_.pop_front();
    lock.unlock();
    ++ran;
    run_job(job);
    job = nullptr;
    lock.lock();
  }
  return ran;
}

std::size_t MainLoop::run_ready_watches(Nanoseconds wait) {
  std::vector<pollfd> polled{{wake_fd_.get(), POLLIN, 0}};
  std::vector<WatchId> ids{0};
  for (const auto& [id, watch] : watches_) {
    polled.push_back({watch.fd, watch.events, 0});
    ids.push_back(id);
  }
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(wait);
  const timespec timeout{seconds.count(), (wait - seconds).count()};
  if (ppoll(polled.data(), polled.size(), &timeout, nullptr) <= 0) return 0;

  if (polled[0].revents != 0) {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t taken = read(wake_fd_.get(), &count, sizeof count);
    woken_ = false;
  }
  std::size_t ran = 0;
  for (std::size_t i = 1; i < polled.size(); ++i) {
    if (polled[i].revents == 0) continue;
    // An earlier job of this round may have ended this watch.
    const auto found = watches_.find(ids[i]);
    if (found == watches_.end()) continue;
    const auto job = found->second.job;
    const short events = polled[i].revents;
    ++ran;
    Job call = [&job, events] { (*job)(events); };
    run_job(call);
  }
  return ran;
}

std::size_t MainLoop::turn(Nanoseconds wait) {
  std::size_t ran = fire_due_timers();
  ran += run_posted();
  if (ran > 0 || stopping_ || anything_posted()) wait = Nanoseconds::zero();
  if (!clock_.driven()) wait = std::min(wait, time_to_next_timer().value_or(wait));
  // With nothing to watch and nobody to wait for, the kernel need not be asked.
  if (wait > Nanoseconds::zero() || !watches_.empty() || woken_) ran += run_ready_watches(wait);
  return ran;
}

Result<void> MainLoop::run_until_idle(IdleBounds bounds) {
  const Nanoseconds end = Clock::steady_now() + bounds.real_time;
  std::size_t ran = 0;
  while (true) {
    const std::size_t now_ran = turn(Nanoseconds::zero());
    if (take_stop()) return {};
    ran += now_ran;
    if (ran > bounds.jobs) return endless(bounds.jobs);
    const Nanoseconds left = end - Clock::steady_now();
    const bool late = left <= Nanoseconds::zero();
    if (now_ran > 0) {
      if (late) return Error{"the main loop did not come to rest in time"};
      continue;
    }
    // Asked in this order: work that ends posts its result first.
    if (busy_check_ && busy_check_()) {
      if (late) return Error{"background work did not end in time"};
      ran += turn(left);
      continue;
    }
    const auto due = time_to_next_timer();
    if (!anything_posted() && (!due || *due > Nanoseconds::zero())) return {};
  }
}

Result<void> MainLoop::advance(Nanoseconds duration) {
  if (!clock_.driven()) return Error{"the wall clock cannot be moved"};
  const Nanoseconds target = clock_.now() + std::max(duration, Nanoseconds::zero());
  const IdleBounds bounds;
  std::size_t ran = 0;
  while (true) {
    // Everything that belongs to this moment, then the next moment at which something is due.
    std::size_t now_ran = 0;
    do {
      now_ran = turn(Nanoseconds::zero());
      if (take_stop()) return {};
      ran += now_ran;
      if (ran > bounds.jobs) return endless(bounds.jobs);
    } while (now_ran > 0);
    const Nanoseconds now = clock_.now();
    if (now >= target) return {};
    const auto due = time_to_next_timer();
    clock_.move_to(due ? std::min(now + *due, target) : target);
  }
}

Result<void> MainLoop::run_for(Nanoseconds duration) {
  if (clock_.driven()) return advance(duration);
  const Nanoseconds end = clock_.now() + duration;
  do {
    turn(std::max(end - clock_.now(), Nanoseconds::zero()));
  } while (!take_stop() && clock_.now() < end);
  return {};
}

void MainLoop::run() {
  do {
    if (before_wait_) run_job(before_wait_);
    turn(kLongest);
  } while (!take_stop());
}

}  // namespace wispen
