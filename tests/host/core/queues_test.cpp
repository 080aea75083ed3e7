// tests/host/core/queues_test.cpp: the process's main queue and its background queue.

#include "host/core/queues.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <optional>
#include <thread>
#include <vector>

#include "host/core/platform_dispatch.hpp"

namespace wispen {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

/// A function of the platform's kind that runs what its context points to.
void call(void* context) { (*static_cast<std::function<void()>*>(context))(); }

class QueuesTest : public ::testing::Test {
 protected:
  void SetUp() override { Queues::shared().attach(loop); }
  void TearDown() override { EXPECT_TRUE(Queues::shared().stop()); }

  MainLoop loop{ClockKind::Driven};
};

TEST_F(QueuesTest, RunMainJobsOnTheMainThreadInOrder) {
  std::vector<int> order;
  const auto main_thread = std::this_thread::get_id();
  std::function<void()> first = [&] { order.push_back(std::this_thread::get_id() == main_thread ? 1 : -1); };
  std::function<void()> second = [&] { order.push_back(2); };
  dispatch_async_f(&_dispatch_main_q, &first, call);
  dispatch_async_f(&_dispatch_main_q, &second, call);
  EXPECT_TRUE(order.empty());
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_THAT(order, ElementsAre(1, 2));
}

TEST_F(QueuesTest, HandAResultBackFromTheBackgroundBeforeTheLoopIsIdle) {
  for (int round = 0; round < 200; ++round) {
    bool shown = false;
    std::function<void()> show = [&] { shown = true; };
    std::function<void()> work = [&] { dispatch_async_f(&_dispatch_main_q, &show, call); };
    dispatch_async_f(dispatch_get_global_queue(0, 0), &work, call);
    ASSERT_TRUE(loop.run_until_idle());
    ASSERT_TRUE(shown);
  }
}

TEST_F(QueuesTest, FireDelayedJobsOnTheDrivenClock) {
  std::vector<Nanoseconds> fired;
  std::function<void()> note = [&] { fired.push_back(loop.clock().now()); };
  dispatch_after_f(dispatch_time(0, 2'000'000), &_dispatch_main_q, &note, call);
  dispatch_after_f(dispatch_time(dispatch_time(0, 1'000'000), 500'000), &_dispatch_main_q, &note, call);
  dispatch_after_f(~std::uint64_t{0}, &_dispatch_main_q, &note, call);
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_TRUE(fired.empty());
  EXPECT_TRUE(loop.advance(1s));
  EXPECT_THAT(fired, ElementsAre(1'500us, 2ms));
}

TEST_F(QueuesTest, FireDelayedBackgroundJobsToo) {
  std::promise<bool> ran;
  const auto main_thread = std::this_thread::get_id();
  std::function<void()> note = [&] { ran.set_value(std::this_thread::get_id() != main_thread); };
  dispatch_after_f(dispatch_time(0, 1'000'000), dispatch_get_global_queue(0, 0), &note, call);
  EXPECT_TRUE(loop.advance(1ms));
  EXPECT_TRUE(loop.run_until_idle());
  EXPECT_TRUE(ran.get_future().get());
}

TEST_F(QueuesTest, WaitForAJobOfTheMainThreadFromAnother) {
  int value = 0;
  std::function<void()> set = [&] { value = 7; };
  std::atomic<int> seen = 0;
  std::thread other([&] {
    dispatch_sync_f(&_dispatch_main_q, &set, call);
    seen = value;
    loop.post([&] { loop.stop(); });
  });
  loop.run();
  other.join();
  EXPECT_EQ(seen, 7);
}

TEST_F(QueuesTest, LetAWaitingThreadGoWhenItsJobIsDropped) {
  Queues::shared().detach();
  bool ran = false;
  std::function<void()> set = [&] { ran = true; };
  std::atomic<bool> released = false;
  std::thread other([&] {
    dispatch_sync_f(&_dispatch_main_q, &set, call);
    released = true;
  });
  // A stop drops what has come so far, so it is said until the thread has come.
  while (!released) {
    EXPECT_TRUE(Queues::shared().stop());
    std::this_thread::yield();
  }
  other.join();
  EXPECT_FALSE(ran);
}

TEST_F(QueuesTest, RunASynchronousBackgroundJobOnTheCallersThread) {
  std::thread::id seen;
  std::function<void()> note = [&] { seen = std::this_thread::get_id(); };
  dispatch_sync_f(dispatch_get_global_queue(0, 0), &note, call);
  EXPECT_EQ(seen, std::this_thread::get_id());
}

TEST_F(QueuesTest, KeepWhatComesBeforeTheLoopAndHandItOverInOrder) {
  Queues::shared().detach();
  std::vector<int> order;
  for (int i = 1; i <= 3; ++i)
    Queues::shared().add(Queues::Target::Main, [&order, i] { order.push_back(i); });
  MainLoop late(ClockKind::Driven);
  Queues::shared().attach(late);
  EXPECT_TRUE(late.run_until_idle());
  EXPECT_THAT(order, ElementsAre(1, 2, 3));
  Queues::shared().detach();
}

TEST_F(QueuesTest, SayThatBackgroundWorkDoesNotEndWithinTheBound) {
  std::promise<void> go;
  Queues::shared().add(Queues::Target::Background, [&go] { go.get_future().wait(); });
  EXPECT_FALSE(loop.run_until_idle({.real_time = 5ms}).ok());
  go.set_value();
  EXPECT_TRUE(loop.run_until_idle());
}

TEST_F(QueuesTest, StopAndStartAHundredTimes) {
  for (int i = 0; i < 100; ++i) {
    std::atomic<int> ran = 0;
    std::function<void()> work = [&] { ++ran; };
    for (int job = 0; job < 4; ++job) dispatch_async_f(dispatch_get_global_queue(0, 0), &work, call);
    ASSERT_TRUE(loop.run_until_idle());
    ASSERT_EQ(ran, 4);
    ASSERT_TRUE(Queues::shared().stop());
    ASSERT_EQ(Queues::shared().background().threads(), 0u);
    Queues::shared().attach(loop);
  }
}

TEST(QueuesDeathTest, EndTheProcessWhenTheMainThreadWaitsForItself) {
  const auto wait_for_itself = [] {
    MainLoop loop(ClockKind::Driven);
    Queues::shared().attach(loop);
    dispatch_sync_f(&_dispatch_main_q, nullptr, [](void*) {});
  };
  EXPECT_DEATH(wait_for_itself(), "can never run");
}

TEST(DispatchTime, StaysNeverAndNeverOverflows) {
  constexpr auto kForever = ~std::uint64_t{0};
  EXPECT_EQ(dispatch_time(kForever, -5), kForever);
  EXPECT_EQ(dispatch_time(100, INT64_MAX), kForever);
  EXPECT_EQ(dispatch_time(100, 50), 150u);
  EXPECT_EQ(dispatch_time(100, -50), 50u);
  EXPECT_EQ(dispatch_time(100, INT64_MIN), 1u);
}

TEST(GlobalQueue, IsOneForEveryPriorityAndNoneForUnknownNumbers) {
  EXPECT_NE(dispatch_get_global_queue(0, 0), nullptr);
  EXPECT_EQ(dispatch_get_global_queue(2, 0), dispatch_get_global_queue(-32768, 0));
  EXPECT_EQ(dispatch_get_global_queue(0x15, 0), dispatch_get_global_queue(0, 0));
  EXPECT_EQ(dispatch_get_global_queue(1, 0), nullptr);
  EXPECT_EQ(dispatch_get_global_queue(0, 1), nullptr);
}

}  // namespace
}  // namespace wispen
