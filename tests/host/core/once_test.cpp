// tests/host/core/once_test.cpp: run once, with the phone's token.

#include "host/core/once.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

void count(void* context) { ++*static_cast<std::atomic<int>*>(context); }

TEST(Once, RunsTheFunctionOnceAndMarksTheTokenDone) {
  std::intptr_t token = 0;
  std::atomic<int> calls = 0;
  for (int i = 0; i < 3; ++i) dispatch_once_f(&token, &calls, count);
  wispen::once(&token, &calls, count);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(token, ~std::intptr_t{0});
}

TEST(Once, LetsNobodyPassBeforeTheFunctionHasEnded) {
  for (int round = 0; round < 200; ++round) {
    std::intptr_t token = 0;
    int result = 0;  // plain on purpose: only the token may order these accesses
    std::atomic<int> calls = 0;
    std::atomic<int> wrong = 0;
    std::latch start(16);
    struct Context {
      int* result;
      std::atomic<int>* calls;
    } context{&result, &calls};
    std::vector<std::thread> threads;
    for (int i = 0; i < 16; ++i) {
      threads.emplace_back([&] {
        start.arrive_and_wait();
        wispen::once(&token, &context, [](void* raw) {
          auto* shared = static_cast<Context*>(raw);
          ++*shared->calls;
          std::this_thread::yield();
          *shared->result = 42;
        });
        if (result != 42) ++wrong;
      });
    }
    for (auto& thread : threads) thread.join();
    ASSERT_EQ(calls, 1);
    ASSERT_EQ(wrong, 0);
  }
}

TEST(Once, MayBeTriedAgainAfterAnException) {
  std::intptr_t token = 0;
  int calls = 0;
  const auto fail_first = [](void* context) {
    if (++*static_cast<int*>(context) == 1) throw std::runtime_error("first");
  };
  EXPECT_THROW(dispatch_once_f(&token, &calls, fail_first), std::runtime_error);
  EXPECT_EQ(token, 0);
  dispatch_once_f(&token, &calls, fail_first);
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(token, ~std::intptr_t{0});
}

TEST(OnceDeathTest, EndsTheProcessWithASentenceWhenItWaitsForItself) {
  static std::intptr_t token = 0;
  const auto again = [](void*) { dispatch_once_f(&token, nullptr, [](void*) {}); };
  EXPECT_DEATH(dispatch_once_f(&token, nullptr, again), "waits for itself");
}

}  // namespace
