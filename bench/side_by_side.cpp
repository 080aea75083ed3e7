// bench/side_by_side.cpp: two ways of doing a thing, timed in turn.

#include "bench/side_by_side.hpp"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace wispen::bench {

namespace {

double now(Clock clock) {
  timespec time{};
  ::clock_gettime(clock == Clock::Processor ? CLOCK_THREAD_CPUTIME_ID : CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double timed_way(const Way& way, Clock clock) {
  if (way.prepare) way.prepare();
  const double seconds = timed(way.run, clock);
  if (way.clean) way.clean();
  return seconds;
}

}  // namespace

double timed(const std::function<void()>& run, Clock clock) {
  const double start = now(clock);
  run();
  return now(clock) - start;
}

double median(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

void judge(benchmark::State& state, double ratio, Goal kind, double goal, const std::string& what) {
  state.counters["ratio"] = ratio;
  state.counters["goal"] = goal;
  const bool met = kind == Goal::AtMost ? ratio <= goal : ratio >= goal;
  char bound[32];
  std::snprintf(bound, sizeof bound, " %s %g: ", kind == Goal::AtMost ? "<=" : ">=", goal);
  state.SetLabel(what + bound + (met ? "met" : "MISSED"));
}

void side_by_side(benchmark::State& state, const Way& ours, const Way& peer, double goal,
                  const std::string& what, Clock clock) {
  std::vector<double> own;
  std::vector<double> other;
  for (auto _ : state) {
    other.push_back(timed_way(peer, clock));
    own.push_back(timed_way(ours, clock));
    state.SetIterationTime(own.back());
  }
  const double peers = median(other);
  const double mine = median(own);
  state.counters["ours_us"] = mine * 1e6;
  state.counters["peer_us"] = peers * 1e6;
  judge(state, peers > 0 ? mine / peers : 0, Goal::AtMost, goal, what);
}

}  // namespace wispen::bench
