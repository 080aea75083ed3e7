// host/core/timer_list.cpp: timers in the order in which they are due.

#include "host/core/timer_list.hpp"

namespace wispen {

TimerId TimerList::add(Nanoseconds due, Nanoseconds interval, Job job) {
  const TimerId id = next_number_++;
  const Place place{due, id};
  timers_.emplace(place, Timer{id, interval, std::make_shared<Job>(std::move(job))});
  places_.emplace(id, place);
  return id;
}

std::shared_ptr<Job> TimerList::cancel(TimerId id) {
  const auto place = places_.find(id);
  if (place == places_.end()) return nullptr;
  auto node = timers_.extract(place->second);
  places_.erase(place);
  return std::move(node.mapped().job);
}

std::optional<Nanoseconds> TimerList::next_due() const {
  if (timers_.empty()) return std::nullopt;
  return timers_.begin()->first.first;
}

std::shared_ptr<Job> TimerList::take_due(Nanoseconds now) {
  if (timers_.empty() || timers_.begin()->first.first > now) return nullptr;
  auto node = timers_.extract(timers_.begin());
  Timer& timer = node.mapped();
  std::shared_ptr<Job> job = timer.job;
  if (timer.interval <= Nanoseconds::zero()) {
    places_.erase(timer.id);
    return job;
  }
  const Nanoseconds due = node.key().first;
  const auto periods = (now - due) / timer.interval + 1;
  node.key() = Place{due + periods * timer.interval, next_number_++};
  places_[timer.id] = node.key();
  timers_.insert(std::move(node));
  return job;
}

}  // namespace wispen
