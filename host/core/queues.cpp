// host/core/queues.cpp: the process's main queue and its background queue.

#include "host/core/queues.hpp"

#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>

namespace wispen {
namespace {

/// Lets one thread wait until a job has run, or can never run because it was dropped: the job holds the
/// only long-lived reference, so the end of the reference is the end of both stories.
class Completion {
 public:
  void done() {
    const std::lock_guard lock(mutex_);
    done_ = true;
    changed_.notify_all();
  }
  void wait() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return done_; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool done_ = false;
};

}  // namespace

Queues& Queues::shared() {
  // Never destroyed: workers of other libraries may still add jobs while the process ends.
  static Queues* const instance = std::make_unique<Queues>().release();
  return *instance;
}

void Queues::attach(MainLoop& loop) {
  std::vector<Job> early;
  std::vector<Delayed> delayed;
  {
    const std::lock_guard lock(mutex_);
    loop_ = &loop;
    // Posted under the lock, so that a job added by another thread now comes after these.
    for (Job& job : std::exchange(early_, {})) loop.post(std::move(job));
    delayed = std::exchange(early_delayed_, {});
  }
  loop.set_busy_check([this] { return background_.outstanding() > 0; });
  background_.set_idle_handler([this] {
    const std::lock_guard lock(mutex_);
    if (loop_) loop_->wake();
  });
  for (Delayed& entry : delayed) {
    add_after(entry.due - Clock::steady_now(), entry.target, std::move(entry.job));
  }
}

void Queues::detach() {
  background_.set_idle_handler({});
  const std::lock_guard lock(mutex_);
  if (loop_) loop_->set_busy_check({});
  loop_ = nullptr;
}

void Queues::add(Target target, Job job) {
  if (target == Target::Background) return background_.add(std::move(job));
  const std::lock_guard lock(mutex_);
  if (loop_) {
    loop_->post(std::move(job));
  } else {
    early_.push_back(std::move(job));
  }
}

void Queues::add_after(Nanoseconds delay, Target target, Job job) {
  if (delay <= Nanoseconds::zero()) return add(target, std::move(job));
  const std::lock_guard lock(mutex_);
  if (!loop_) {
    early_delayed_.push_back({Clock::steady_now() + delay, target, std::move(job)});
  } else if (target == Target::Main) {
    loop_->add_timer(delay, std::move(job));
  } else {
    loop_->add_timer(delay, [this, job = std::move(job)] { background_.add(job); });
  }
}

void Queues::run_and_wait(Target target, Job job) {
  // The background queue is concurrent: the caller's own thread is as good as any.
  if (target == Target::Background) return job();
  {
    const std::lock_guard lock(mutex_);
    if (loop_ && loop_->on_loop_thread()) {
      std::fputs("wispen: the main thread waits for a job of its own queue, which can never run\n", stderr);
      std::abort();
    }
  }
  Completion completion;
  {
    const std::shared_ptr<Completion> held(&completion, [](Completion* waited) { waited->done(); });
    add(Target::Main, [held, job = std::move(job)] { job(); });
  }
  completion.wait();
}

Nanoseconds Queues::now() {
  const std::lock_guard lock(mutex_);
  return loop_ ? loop_->clock().now() : Clock::steady_now();
}

bool Queues::stop(std::chrono::milliseconds bound) {
  detach();
  const bool all_ended = background_.stop(bound);
  std::vector<Job> dropped;
  std::vector<Delayed> delayed;
  const std::lock_guard lock(mutex_);
  std::swap(dropped, early_);
  std::swap(delayed, early_delayed_);
  return all_ended;
}

}  // namespace wispen
