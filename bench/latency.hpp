// bench/latency.hpp: how long it takes from a post in this process until others are awake.
#pragma once

#include <sys/types.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <vector>

namespace wispen::bench {

/// Memory shared with the listeners.
struct Board {
  static constexpr int kMaxListeners = 20;
  std::atomic<std::int64_t> awake[kMaxListeners];  // when each woke, steady ns; 0 while it waits
  std::atomic<std::uint32_t> counter;              // for the futex
};

/// Makes a Board shared with every process forked later.
Board& new_board();

/// Forked listeners of one kind. Each calls `make` with its number and then, for ever, the waiter it got.
class Listeners {
 public:
  using Waiter = std::function<void()>;
  Listeners(int count, const std::function<Waiter(int)>& make);
  Listeners(const Listeners&) = delete;
  Listeners& operator=(const Listeners&) = delete;
  ~Listeners();

  struct Sample {
    double post;      // us inside the post
    double listener;  // us until the median listener was awake
    double last;      // us until the last one was
  };
  /// Posts once and waits until every listener is awake.
  Sample measure(const std::function<void()>& post);

 private:
  Board& board_;
  std::vector<pid_t> processes_;
};

/// Median and 99th percentile; sorts its argument.
struct Spread {
  double median;
  double p99;
};
Spread spread(std::vector<double>& values);

}  // namespace wispen::bench
