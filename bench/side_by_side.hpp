// bench/side_by_side.hpp: two ways of doing a thing, timed in turn, so that a drifting machine drifts for
// both.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

namespace wispen::bench {

/// One of the two. `prepare` and `clean` are not timed.
struct Way {
  std::function<void()> run;
  std::function<void()> prepare = nullptr;
  std::function<void()> clean = nullptr;
};

/// The processor's time of the one thread that all of a screen happens on does not depend on who else wants
/// it; programs that are started have none here, and take the wall's.
enum class Clock { Processor, Wall };

/// Seconds of a run.
double timed(const std::function<void()>& run, Clock clock = Clock::Processor);
double median(std::vector<double> values);

/// How a ratio is held to its goal.
enum class Goal { AtMost, AtLeast };

/// Adds the counters `ratio` and `goal`, and says in the label whether it is met.
void judge(benchmark::State& state, double ratio, Goal kind, double goal, const std::string& what);

/// Times `ours` and `peer` in turn for every iteration. The time shown is ours, the counter `peer` the peer's
/// median; the ratio is of the medians.
void side_by_side(benchmark::State& state, const Way& ours, const Way& peer, double goal,
                  const std::string& what, Clock clock = Clock::Processor);

}  // namespace wispen::bench
