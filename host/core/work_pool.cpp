// host/core/work_pool.cpp: the threads behind the concurrent background queue.

#include "host/core/work_pool.hpp"

#include <list>
#include <thread>
#include <utility>
#include <vector>

namespace wispen {

/// The threads between two stops, and what they share. Each thread holds it, so one that overstays a
/// stop() touches nothing of the pool, which may be gone by then.
struct WorkPool::Crew {
  std::mutex mutex;
  std::condition_variable work;
  std::condition_variable ended;
  std::deque<Job> waiting;
  std::list<std::thread> threads;
  std::vector<std::thread> finished;
  std::size_t running = 0;
  bool stopping = false;
  WorkPoolHooks hooks;
  std::function<void()> idle_handler;

  void start_thread(const std::shared_ptr<Crew>& self) {
    const auto place = threads.emplace(threads.end());
    *place = std::thread([self, place] { self->live(place); });
  }

  void live(std::list<std::thread>::iterator place) {
    std::unique_lock lock(mutex);
    const WorkPoolHooks mine = hooks;
    lock.unlock();
    if (mine.thread_started) mine.thread_started();
    lock.lock();
    while (true) {
      work.wait(lock, [this] { return stopping || !waiting.empty(); });
      if (stopping) break;
      Job job = std::move(waiting.front());
      waiting.pop_front();
      ++running;
      lock.unlock();
      run_in_scope(mine.job_scope, job);
      job = nullptr;  // what it captured dies here, on its own thread and outside the lock
      lock.lock();
      --running;
      if (running + waiting.size() == 0 && idle_handler) {
        const auto handler = idle_handler;
        lock.unlock();
        handler();
        lock.lock();
      }
    }
    lock.unlock();
    if (mine.thread_ending) mine.thread_ending();
    lock.lock();
    finished.push_back(std::move(*place));
    threads.erase(place);
    ended.notify_all();
  }
};

WorkPool::WorkPool(std::size_t max_threads) : max_threads_(max_threads), crew_(std::make_shared<Crew>()) {}

WorkPool::~WorkPool() { stop(); }

void WorkPool::set_hooks(WorkPoolHooks hooks) {
  const std::lock_guard lock(mutex_);
  hooks_ = hooks;
  const std::lock_guard crew_lock(crew_->mutex);
  crew_->hooks = hooks;
}

void WorkPool::set_idle_handler(std::function<void()> handler) {
  const std::lock_guard lock(mutex_);
  idle_handler_ = handler;
  const std::lock_guard crew_lock(crew_->mutex);
  crew_->idle_handler = std::move(handler);
}

void WorkPool::add(Job job) {
  const std::lock_guard lock(mutex_);
  Crew& crew = *crew_;
  const std::lock_guard crew_lock(crew.mutex);
  crew.waiting.push_back(std::move(job));
  // Every thread that runs no job is about to take one, whether it rests, starts or has just finished.
  const std::size_t free_threads = crew.threads.size() - crew.running;
  if (crew.waiting.size() > free_threads && crew.threads.size() < max_threads_) crew.start_thread(crew_);
  crew.work.notify_one();
}

std::size_t WorkPool::outstanding() const {
  const std::lock_guard lock(mutex_);
  const std::lock_guard crew_lock(crew_->mutex);
  return crew_->running + crew_->waiting.size();
}

std::size_t WorkPool::threads() const {
  const std::lock_guard lock(mutex_);
  const std::lock_guard crew_lock(crew_->mutex);
  return crew_->threads.size();
}

bool WorkPool::stop(std::chrono::milliseconds bound) {
  std::shared_ptr<Crew> crew = std::make_shared<Crew>();
  {
    const std::lock_guard lock(mutex_);
    crew->hooks = hooks_;
    crew->idle_handler = idle_handler_;
    std::swap(crew, crew_);
  }
  std::unique_lock lock(crew->mutex);
  crew->stopping = true;
  crew->idle_handler = nullptr;
  std::deque<Job> dropped = std::exchange(crew->waiting, {});
  crew->work.notify_all();
  const bool all_ended = crew->ended.wait_for(lock, bound, [&crew] { return crew->threads.empty(); });
  for (std::thread& overstaying : crew->threads) overstaying.detach();
  std::vector<std::thread> finished = std::exchange(crew->finished, {});
  lock.unlock();
  for (std::thread& thread : finished) thread.join();
  return all_ended;
}

}  // namespace wispen
