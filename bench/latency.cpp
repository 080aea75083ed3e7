// bench/latency.cpp: how long it takes from a post in this process until others are awake.

#include "bench/latency.hpp"

#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <new>

namespace wispen::bench {
namespace {

std::int64_t now() { return std::chrono::steady_clock::now().time_since_epoch().count(); }

void pause_for(long nanoseconds) {
  const timespec time{0, nanoseconds};
  nanosleep(&time, nullptr);
}

}  // namespace

Board& new_board() {
  void* memory = mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) std::abort();
  return *::new (memory) Board{};
}

Listeners::Listeners(int count, const std::function<Waiter(int)>& make) : board_(new_board()) {
  for (int number = 0; number < count; ++number) {
    const pid_t process = fork();
    if (process == 0) {
      const Waiter wait = make(number);
      board_.awake[number] = now();
      while (true) {
        wait();
        board_.awake[number] = now();
      }
    }
    processes_.push_back(process);
  }
  for (int number = 0; number < count; ++number) {
    while (board_.awake[number] == 0) pause_for(100'000);
  }
}

Listeners::~Listeners() {
  for (const pid_t process : processes_) {
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
  }
}

Listeners::Sample Listeners::measure(const std::function<void()>& post) {
  for (auto& awake : board_.awake) awake = 0;
  pause_for(400'000);  // so that every listener waits again
  const std::int64_t start = now();
  post();
  const std::int64_t posted = now();
  std::vector<double> times;
  for (std::size_t number = 0; number < processes_.size(); ++number) {
    while (board_.awake[number] == 0) pause_for(50'000);
    times.push_back(static_cast<double>(board_.awake[number] - start) / 1000);
  }
  std::ranges::sort(times);
  return {static_cast<double>(posted - start) / 1000, times[times.size() / 2], times.back()};
}

Spread spread(std::vector<double>& values) {
  std::ranges::sort(values);
  return {values[values.size() / 2], values[values.size() * 99 / 100]};
}

}  // namespace wispen::bench
