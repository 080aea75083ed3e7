// host/core/timer_list.hpp: timers in the order in which they are due.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>

#include "host/core/clock.hpp"
#include "host/core/job.hpp"

namespace wispen {

/// Names one timer for the life of its loop; 0 names none.
using TimerId = std::uint64_t;

/// Timers by due time; those due at the same moment in the order in which they were added. Not locked.
class TimerList {
 public:
  /// `interval` of zero or less is a timer that fires once.
  TimerId add(Nanoseconds due, Nanoseconds interval, Job job);
  /// The timer's job, for the caller to drop where that does no harm; null when there is no such timer.
  std::shared_ptr<Job> cancel(TimerId id);
  std::optional<Nanoseconds> next_due() const;
  /// The job of the first timer that is due at `now`, or null. A repeating timer is put back for its next
  /// due moment after `now`: what was missed meanwhile is left out, and the rhythm does not drift.
  std::shared_ptr<Job> take_due(Nanoseconds now);
  std::size_t size() const { return timers_.size(); }

 private:
  struct Timer {
    TimerId id;
    Nanoseconds interval;
    std::shared_ptr<Job> job;
  };
  using Place = std::pair<Nanoseconds, std::uint64_t>;

  std::map<Place, Timer> timers_;
  std::unordered_map<TimerId, Place> places_;
  std::uint64_t next_number_ = 1;
};

}  // namespace wispen
