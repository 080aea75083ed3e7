// tests/host/core/work_pool_test.cpp: the threads behind the concurrent background queue.

#include "host/core/work_pool.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <latch>
#include <memory>
#include <mutex>
#include <vector>

namespace wispen {
namespace {

using namespace std::chrono_literals;

TEST(WorkPool, StartsNoThreadBeforeThereIsWork) {
  WorkPool pool;
  EXPECT_EQ(pool.threads(), 0u);
  EXPECT_TRUE(pool.stop());
}

TEST(WorkPool, StartsJobsInTheOrderInWhichTheyWereAdded) {
  WorkPool pool(1);
  std::vector<int> order;
  std::promise<void> last;
  for (int i = 0; i < 100; ++i) pool.add([&order, i] { order.push_back(i); });
  pool.add([&last] { last.set_value(); });
  last.get_future().wait();
  ASSERT_EQ(order.size(), 100u);
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(WorkPool, RunsBlockingJobsSideBySideUpToItsLimit) {
  WorkPool pool(4);
  std::latch all(5);
  for (int i = 0; i < 4; ++i) pool.add([&all] { all.arrive_and_wait(); });
  all.arrive_and_wait();  // would hang if they ran one after the other
  for (int i = 0; i < 100; ++i) pool.add([] {});
  EXPECT_LE(pool.threads(), 4u);
}

TEST(WorkPool, ReusesAThreadThatRests) {
  WorkPool pool(8);
  for (int i = 0; i < 50; ++i) {
    std::promise<void> idle;
    pool.set_idle_handler([&idle] { idle.set_value(); });
    pool.add([] {});
    idle.get_future().wait();
    pool.set_idle_handler({});
  }
  EXPECT_EQ(pool.threads(), 1u);
}

TEST(WorkPool, DropsWhatWaitsAndFinishesWhatRunsWhenStopped) {
  WorkPool pool(1);
  std::promise<void> started;
  std::promise<void> go;
  std::atomic<bool> finished = false;
  std::atomic<int> dropped = 0;
  auto alive = std::make_shared<int>(1);
  pool.add([&] {
    started.set_value();
    go.get_future().wait();
    finished = true;
  });
  for (int i = 0; i < 10; ++i) pool.add([&dropped, alive] { ++dropped; });
  started.get_future().wait();
  std::thread release([&go] { go.set_value(); });
  EXPECT_TRUE(pool.stop());
  release.join();
  EXPECT_TRUE(finished);
  // The one running thread may not take another job once the pool was told to stop.
  EXPECT_LE(dropped, 10);
  EXPECT_EQ(alive.use_count(), 1);
  EXPECT_EQ(pool.threads(), 0u);
}

std::atomic<bool> overstayer_left = false;

TEST(WorkPool, SaysThatAJobOverstaysAndGoesOnWithoutIt) {
  std::promise<void> started;
  std::promise<void> go;
  {
    WorkPool pool(1);
    pool.set_hooks({.thread_ending = [] {
      overstayer_left = true;
      overstayer_left.notify_all();
    }});
    pool.add([&] {
      started.set_value();
      go.get_future().wait();
    });
    started.get_future().wait();
    EXPECT_FALSE(pool.stop(1ms));
    pool.set_hooks({});
    std::promise<void> usable;
    pool.add([&usable] { usable.set_value(); });
    usable.get_future().wait();
  }
  go.set_value();
  overstayer_left.wait(false);
}

TEST(WorkPool, StopsAndStartsAHundredTimesWithoutLeavingAThread) {
  WorkPool pool;
  std::atomic<int> ran = 0;
  for (int i = 0; i < 100; ++i) {
    std::promise<void> done;
    pool.add([&ran] { ++ran; });
    pool.add([&done] { done.set_value(); });
    done.get_future().wait();
    ASSERT_TRUE(pool.stop());
    ASSERT_EQ(pool.threads(), 0u);
  }
  EXPECT_GE(ran, 1);
}

std::atomic<int> started_threads = 0;
std::atomic<int> ended_threads = 0;
std::atomic<int> scoped_jobs = 0;

TEST(WorkPool, CallsTheHooksAroundEveryThreadAndEveryJob) {
  started_threads = ended_threads = scoped_jobs = 0;
  WorkPool pool(3);
  pool.set_hooks({[] { ++started_threads; }, [] { ++ended_threads; },
                  [](void (*body)(void*), void* context) {
                    ++scoped_jobs;
                    body(context);
                  }});
  std::latch done(20);
  for (int i = 0; i < 20; ++i) pool.add([&done] { done.count_down(); });
  done.wait();
  EXPECT_TRUE(pool.stop());
  EXPECT_EQ(scoped_jobs, 20);
  EXPECT_GE(started_threads, 1);
  EXPECT_EQ(started_threads, ended_threads);
}

TEST(WorkPool, CountsWhatIsOutstandingAndTellsWhenNothingIs) {
  WorkPool pool(2);
  std::promise<void> go;
  std::promise<void> idle;
  auto ready = go.get_future().share();
  pool.set_idle_handler([&idle] { idle.set_value(); });
  for (int i = 0; i < 6; ++i) pool.add([ready] { ready.wait(); });
  EXPECT_EQ(pool.outstanding(), 6u);
  go.set_value();
  idle.get_future().wait();
  EXPECT_EQ(pool.outstanding(), 0u);
}

TEST(WorkPool, TakesJobsFromManyThreadsAndFromItsOwn) {
  WorkPool pool(4);
  std::atomic<int> ran = 0;
  std::latch done(4 * 250 * 2);
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 250; ++i) {
        pool.add([&] {
          pool.add([&] {
            ++ran;
            done.count_down();
          });
          ++ran;
          done.count_down();
        });
      }
    });
  }
  for (auto& thread : threads) thread.join();
  done.wait();
  EXPECT_EQ(ran, 2000);
}

}  // namespace
}  // namespace wispen
