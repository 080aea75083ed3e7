// host/core/clock.hpp: time as the host sees it, real or driven.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

namespace wispen {

using Nanoseconds = std::chrono::nanoseconds;

enum class ClockKind {
  Wall,    ///< The machine's steady clock: it runs by itself and never backwards.
  Driven,  ///< Starts at 0, stands still, and moves only when told.
};

/// Time since an arbitrary start, from any thread.
class Clock {
 public:
  explicit Clock(ClockKind kind) : kind_(kind) {}

  ClockKind kind() const { return kind_; }
  bool driven() const { return kind_ == ClockKind::Driven; }

  Nanoseconds now() const { return driven() ? Nanoseconds(driven_now_.load()) : steady_now(); }

  /// Moves a driven clock on; an earlier time and a wall clock are left alone.
  void move_to(Nanoseconds time) {
    if (time > Nanoseconds(driven_now_.load())) driven_now_.store(time.count());
  }

  static Nanoseconds steady_now() { return std::chrono::steady_clock::now().time_since_epoch(); }

 private:
  const ClockKind kind_;
  std::atomic<std::int64_t> driven_now_ = 0;
};

}  // namespace wispen
