// tests/host/core/main_loop_test.cpp: the one loop that runs timers, posted jobs and descriptors on the
// main thread.

#include "host/core/main_loop.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <thread>
#include <vector>

namespace wispen {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct Pipe {
  Pipe() { EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0); }
  ~Pipe() {
    close(ends[0]);
    close(ends[1]);
  }
  void put() const { EXPECT_EQ(write(ends[1], "x", 1), 1); }
  bool take() const {
    char byte = 0;
    return read(ends[0], &byte, 1) == 1;
  }
  std::array<int, 2> ends;
};

TEST(MainLoop, RunsPostedJobsInOrder) {
  MainLoop loop(ClockKind::Driven);
  std::vector<int> order;
  for (int i = 1; i <= 3; ++i) loop.post([&order, i] { order.push_back(i); });
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST(MainLoop, RunsWhatAJobPostsBeforeItIsIdle) {
  MainLoop loop(ClockKind::Driven);
  std::vector<int> order;
  loop.post([&] {
    order.push_back(1);
    loop.post([&] { order.push_back(3); });
  });
  loop.post([&] { order.push_back(2); });
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST(MainLoop, LeavesADrivenClockAloneUntilToldToMoveIt) {
  MainLoop loop(ClockKind::Driven);
  bool fired = false;
  loop.add_timer(1ns, [&fired] { fired = true; });
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_FALSE(fired);
  EXPECT_EQ(loop.clock().now(), 0ns);
  EXPECT_TRUE(loop.advance(1ns));
  EXPECT_TRUE(fired);
  EXPECT_EQ(loop.clock().now(), 1ns);
}

TEST(MainLoop, FiresTimersInOrderEachAtItsExactMoment) {
  MainLoop loop(ClockKind::Driven);
  std::vector<std::pair<char, Nanoseconds>> fired;
  const auto at = [&](char name) { return [&, name] { fired.emplace_back(name, loop.clock().now()); }; };
  loop.add_timer(30ms, at('c'));
  loop.add_timer(10ms, at('a'));
  loop.add_timer(30ms, at('d'));
  loop.add_timer(20ms, [&] {
    at('b')();
    loop.add_timer(5ms, at('+'));
  });
  EXPECT_TRUE(loop.advance(1s));
  EXPECT_THAT(fired, ElementsAre(std::pair{'a', 10ms}, std::pair{'b', 20ms}, std::pair{'+', 25ms},
                                 std::pair{'c', 30ms}, std::pair{'d', 30ms}));
  EXPECT_EQ(loop.clock().now(), 1s);
}

TEST(MainLoop, RunsWhatATimerPostsBeforeTimeMovesOn) {
  MainLoop loop(ClockKind::Driven);
  Nanoseconds seen{};
  loop.add_timer(10ms, [&] { loop.post([&] { seen = loop.clock().now(); }); });
  loop.add_timer(11ms, [] {});
  EXPECT_TRUE(loop.advance(1s));
  EXPECT_EQ(seen, 10ms);
}

TEST(MainLoop, RepeatsATimerWithoutDrift) {
  MainLoop loop(ClockKind::Driven);
  std::vector<Nanoseconds> fired;
  const TimerId id = loop.add_timer(
      5ms, [&] { fired.push_back(loop.clock().now()); }, 10ms);
  EXPECT_TRUE(loop.advance(26ms));
  EXPECT_THAT(fired, ElementsAre(5ms, 15ms, 25ms));
  EXPECT_TRUE(loop.cancel(id));
  EXPECT_FALSE(loop.cancel(id));
  EXPECT_TRUE(loop.advance(1s));
  EXPECT_EQ(fired.size(), 3u);
}

TEST(MainLoop, LetsARepeatingTimerEndItself) {
  MainLoop loop(ClockKind::Driven);
  int fired = 0;
  TimerId id = 0;
  id = loop.add_timer(
      1ms,
      [&] {
        if (++fired == 2) {
          EXPECT_TRUE(loop.cancel(id));
        }
      },
      1ms);
  EXPECT_TRUE(loop.advance(1s));
  EXPECT_EQ(fired, 2);
}

TEST(MainLoop, MayBePostedToByWhatACancelledTimerHeld) {
  MainLoop loop(ClockKind::Driven);
  int posted = 0;
  std::shared_ptr<int> held(&posted, [&loop](int* count) { loop.post([count] { ++*count; }); });
  const TimerId id = loop.add_timer(1ms, [kept = std::move(held)] {});
  EXPECT_TRUE(loop.cancel(id));
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_EQ(posted, 1);
}

TEST(MainLoop, NeverRunsATimerThatAnotherOneOfTheSameMomentCancelled) {
  MainLoop loop(ClockKind::Driven);
  bool fired = false;
  TimerId second = 0;
  loop.add_timer(1ms, [&] { loop.cancel(second); });
  second = loop.add_timer(1ms, [&] { fired = true; });
  EXPECT_TRUE(loop.advance(1s));
  EXPECT_FALSE(fired);
}

TEST(MainLoop, FiresATimerOfAPastOrPresentMomentAtOnce) {
  MainLoop loop(ClockKind::Driven);
  int fired = 0;
  loop.add_timer(-1s, [&] { ++fired; });
  loop.add_timer(0s, [&] { ++fired; });
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_EQ(fired, 2);
}

TEST(MainLoop, SaysThatWorkIsEndless) {
  MainLoop loop(ClockKind::Driven);
  std::function<void()> again = [&] { loop.post(again); };
  loop.post(again);
  const auto idle = loop.run_until_idle({.jobs = 1000});
  ASSERT_FALSE(idle.ok());
  EXPECT_THAT(idle.error().message, HasSubstr("did not come to rest within 1000 jobs"));
}

TEST(MainLoop, SaysThatTimersOfOneMomentAreEndless) {
  MainLoop loop(ClockKind::Driven);
  std::function<void()> again = [&] { loop.add_timer(0s, again); };
  loop.add_timer(1ms, again);
  EXPECT_FALSE(loop.advance(1s).ok());
  EXPECT_EQ(loop.clock().now(), 1ms);
}

TEST(MainLoop, RefusesToMoveTheWallClock) {
  MainLoop loop(ClockKind::Wall);
  EXPECT_FALSE(loop.advance(1ms).ok());
}

TEST(MainLoop, RunsTheJobOfADescriptorThatIsReady) {
  MainLoop loop(ClockKind::Driven);
  Pipe pipe;
  int seen = 0;
  const WatchId id = loop.watch(pipe.ends[0], POLLIN, [&](short events) {
    EXPECT_TRUE(events & POLLIN);
    seen += pipe.take();
  });
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_EQ(seen, 0);
  pipe.put();
  pipe.put();
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_EQ(seen, 2);
  EXPECT_TRUE(loop.unwatch(id));
  EXPECT_FALSE(loop.unwatch(id));
  pipe.put();
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_EQ(seen, 2);
}

TEST(MainLoop, LetsAWatchEndItselfAndOthersOfTheSameRound) {
  MainLoop loop(ClockKind::Driven);
  Pipe a;
  Pipe b;
  int ran = 0;
  WatchId first = 0;
  WatchId second = 0;
  const auto end_both = [&](short) {
    ++ran;
    loop.unwatch(first);
    loop.unwatch(second);
  };
  first = loop.watch(a.ends[0], POLLIN, end_both);
  second = loop.watch(b.ends[0], POLLIN, end_both);
  a.put();
  b.put();
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_EQ(ran, 1);
}

TEST(MainLoop, WaitsForJobsOfOtherThreadsUntilItIsStopped) {
  MainLoop loop(ClockKind::Wall);
  int ran = 0;
  std::thread other([&] {
    for (int i = 0; i < 1000; ++i) loop.post([&] { ++ran; });
    loop.post([&] { loop.stop(); });
  });
  loop.run();
  other.join();
  EXPECT_EQ(ran, 1000);
}

TEST(MainLoop, ReturnsAtOnceWhenItWasStoppedBefore) {
  MainLoop loop(ClockKind::Wall);
  loop.stop();
  loop.run();
  int ran = 0;
  loop.post([&] { ++ran; });
  loop.post([&] { loop.stop(); });
  loop.post([&] { ++ran; });
  loop.run();
  EXPECT_EQ(ran, 1);
}

TEST(MainLoop, WaitsOnTheWallClockForTimersAndNoLonger) {
  MainLoop loop(ClockKind::Wall);
  const Nanoseconds start = loop.clock().now();
  Nanoseconds fired{};
  loop.add_timer(2ms, [&] {
    fired = loop.clock().now();
    loop.stop();
  });
  loop.run();
  EXPECT_GE(fired - start, 2ms);
  EXPECT_TRUE(loop.run_for(1ms));
  EXPECT_GE(loop.clock().now() - fired, 1ms);
}

TEST(MainLoop, MayBeRunFromInsideAJob) {
  MainLoop loop(ClockKind::Driven);
  std::vector<int> order;
  loop.post([&] {
    order.push_back(1);
    EXPECT_TRUE(loop.run_until_idle());
    order.push_back(3);
  });
  loop.post([&] { order.push_back(2); });
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST(MainLoop, PassesAnExceptionOnAndStaysUsable) {
  MainLoop loop(ClockKind::Driven);
  int ran = 0;
  loop.post([] { throw std::runtime_error("job"); });
  loop.post([&] { ++ran; });
  EXPECT_THROW((void)loop.run_until_idle(), std::runtime_error);
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_EQ(ran, 1);
}

TEST(MainLoop, WaitsWhileSomebodyElseIsBusyUpToItsBound) {
  MainLoop loop(ClockKind::Driven);
  loop.set_busy_check([] { return true; });
  const auto idle = loop.run_until_idle({.real_time = 5ms});
  ASSERT_FALSE(idle.ok());
  EXPECT_THAT(idle.error().message, HasSubstr("background work"));
}

int scopes = 0;

TEST(MainLoop, RunsEveryJobInItsScope) {
  scopes = 0;
  MainLoop loop(ClockKind::Driven);
  loop.set_job_scope([](void (*body)(void*), void* context) {
    ++scopes;
    body(context);
  });
  Pipe pipe;
  pipe.put();
  loop.post([] {});
  loop.add_timer(0s, [] {});
  loop.watch(pipe.ends[0], POLLIN, [&](short) { pipe.take(); });
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_EQ(scopes, 3);
}

TEST(MainLoop, MayBeMadeAndDroppedAHundredTimesWithoutLosingADescriptor) {
  const int before = dup(0);
  close(before);
  for (int i = 0; i < 100; ++i) {
    MainLoop loop(i % 2 ? ClockKind::Wall : ClockKind::Driven);
    loop.post([] {});
    loop.add_timer(1h, [] {});
    EXPECT_TRUE(loop.run_until_idle());
  }
  const int after = dup(0);
  close(after);
  EXPECT_EQ(before, after);
}

TEST(TimerList, LeavesOutWhatARepeatingTimerMissed) {
  TimerList timers;
  timers.add(10ms, 10ms, [] {});
  EXPECT_NE(timers.take_due(35ms), nullptr);
  EXPECT_EQ(timers.next_due(), 40ms);
  EXPECT_EQ(timers.take_due(39ms), nullptr);
}

}  // namespace
}  // namespace wispen
